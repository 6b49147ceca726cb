/// The tables that a road's plan is made from: its start, elements, broken chains, intersections and main points.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "tables/rows.hpp"

namespace kesto::host {

struct StartRow {
    double mileage = 0;  ///< m
    std::optional<double> x, y, azimuth;
    std::string where;
};

struct ElementRow {
    Element element{};
    std::optional<double> x, y, azimuth;
    std::string where;
};

/// Each reader appends one message for each bad line to the problems and leaves that line out.
/// @throws Problem when the table cannot be read at all or lacks a column
StartRow ReadStart(RoadDesign* road, const std::string& path, std::vector<std::string>& problems);
std::vector<ElementRow> ReadElements(const std::string& path, std::vector<std::string>& problems);
std::vector<FromLine<BrokenChain>> ReadBrokenChains(RoadDesign* road, const std::string& path,
                                                    std::vector<std::string>& problems);
std::vector<FromLine<Intersection>> ReadIntersections(const std::string& path, std::vector<std::string>& problems);

/// @param straights the points are joined by straights: types and radii do not matter
std::vector<FromLine<Coordinate>> ReadPlanPoints(const std::string& path, bool straights,
                                                 std::vector<std::string>& problems);

}  // namespace kesto::host
