/// The tables that a road's cross sections are made from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "tables/rows.hpp"

namespace kesto::host {

struct PlateRow {
    std::int32_t side;
    SectionPlate plate;
};

struct ChangeRow {
    std::int32_t side, kind, type;
    double mileage;  ///< stake mileage (m)
    std::int32_t occurrence;
    std::vector<std::optional<double>> values;  ///< one per plate; nothing stands for the plate's standard value
};

/// As the readers of tables/plan.hpp: one message for each bad line, which is left out.
/// @throws Problem when the table cannot be read at all or lacks a column
std::vector<FromLine<PlateRow>> ReadPlates(const std::string& path, std::vector<std::string>& problems);
std::vector<FromLine<ChangeRow>> ReadChanges(RoadDesign* road, const std::string& path,
                                             std::vector<std::string>& problems);

}  // namespace kesto::host
