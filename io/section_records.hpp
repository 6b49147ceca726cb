/// The cross sections in the project file: plates, change sections with their transition types, section mileages.
///
/// A change section has one line for each plate, all with its stake mileage and occurrence. Where no stake mileage
/// leads back to its place it has its continuous mileage and the occurrence -1 instead. Its transition type stands in
/// the section of types behind, in the same order.
#pragma once

#include <cstdint>

#include "core/road_design.hpp"
#include "io/line_format.hpp"
#include "io/reading.hpp"
#include "io/record_lines.hpp"
#include "section/change_sections.hpp"

namespace kesto {

LineDescription DescribePlates();
bool HasPlates(RoadDesign& road, std::int32_t side) noexcept;
void WritePlates(RoadDesign& road, LineWriter& lines, std::int32_t side);
void ReadPlates(Reading& reading, std::int32_t side);

LineDescription DescribeChanges();
bool HasChanges(RoadDesign& road, ChangeTable which) noexcept;
void WriteChanges(RoadDesign& road, LineWriter& lines, ChangeTable which);
void ReadChanges(Reading& reading, ChangeTable which);
LineDescription DescribeTypes();
void WriteTypes(RoadDesign& road, LineWriter& lines, ChangeTable which);
void ReadTypes(Reading& reading, ChangeTable which);

LineDescription DescribeMileages();
bool HasMileages(RoadDesign& road) noexcept;
void WriteMileages(RoadDesign& road, LineWriter& lines);
void ReadMileages(Reading& reading);

}  // namespace kesto
