/// The table of straights, curves and turning angles, for reading and as a file.
#pragma once

#include <string>
#include <vector>

#include "road/curves.hpp"

namespace kesto::host {

/// The table as text: the curves, then their main points with the straights between them.
/// @param road gives the stake prefix
std::string CurveTables(const std::vector<IntersectionFigures>& intersections, RoadDesign* road);

/// Writes one line for each intersection. @throws Problem when the file cannot be written
void WriteCurves(const std::vector<IntersectionFigures>& intersections, const std::string& path, int decimals);

}  // namespace kesto::host
