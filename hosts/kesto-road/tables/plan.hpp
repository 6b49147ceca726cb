/// The tables of intersections and of main points that a road's plan is made from.
#pragma once

#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "tables/make_tables.hpp"

namespace kesto::host {

/// As the readers of make_tables.hpp: one message for each bad line, which is left out.
/// @throws Problem when the table cannot be read at all or lacks a column
std::vector<FromLine<Intersection>> ReadIntersections(const std::string& path, std::vector<std::string>& problems);

/// @param straights the points are joined by straights: types and radii do not matter
std::vector<FromLine<Coordinate>> ReadPlanPoints(const std::string& path, bool straights,
                                                 std::vector<std::string>& problems);

}  // namespace kesto::host
