/// The table of grade-change points that a road's profile is made from.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "road/conventions.hpp"
#include "tables/rows.hpp"

namespace kesto::host {

struct ProfileTable {
    std::vector<FromLine<VerticalCurve>> points;
    std::int32_t mode = radiusMode;  ///< or endsMode
};

/// As the readers of tables/plan.hpp: one message for each bad line, which is left out.
/// @throws Problem when the table cannot be read at all or lacks a column
ProfileTable ReadProfile(RoadDesign* road, const std::string& path, std::vector<std::string>& problems);

}  // namespace kesto::host
