/// Draws a road's longitudinal profile.
#pragma once

#include <string>

#include "drawing/canvas.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Draws the profile with its grade-change points, vertical curves and grades into a box, above bands with stakes,
/// heights and the curvature of the plan; its legend goes into a column beside it.
/// @return the scales, "1:2000 / 1:200"
std::string DrawProfile(Canvas& canvas, RoadDesign* road, const RoadLine& line, const Box& box, const Box& column);

}  // namespace kesto::host
