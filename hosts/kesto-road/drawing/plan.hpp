/// Draws a road's plan.
#pragma once

#include <string>

#include "drawing/canvas.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Draws the plan into a box, with its legend, north arrow and scale bar into a column beside it. North is up, unless
/// turning the road on its side makes it much larger.
/// @return the plan's scale, "1:2000"
std::string DrawPlan(Canvas& canvas, RoadDesign* road, const RoadLine& line, const Box& box, const Box& column);

}  // namespace kesto::host
