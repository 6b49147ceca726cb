/// The table of a road's stakes.
#pragma once

#include <cstdint>
#include <string>

#include "kesto_road/kesto_road.h"
#include "road/road_line.hpp"

namespace kesto::host {

/// Writes one line for each stake.
/// @param decimals of coordinates, mileages and heights
/// @return how many stakes there are. @throws Problem when the file cannot be written
std::int32_t WriteStakes(RoadDesign* road, const RoadLine& line, const std::string& path, int decimals);

}  // namespace kesto::host
