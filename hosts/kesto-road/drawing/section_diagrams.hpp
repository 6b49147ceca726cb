/// Draws superelevation and widths along a road.
#pragma once

#include "drawing/canvas.hpp"
#include "kesto_road/kesto_road.h"
#include "road/road_line.hpp"

namespace kesto::host {

/// Draws the superelevation diagram (cross slope of the innermost plate of both sides, per cent) and below it the width
/// diagram (edges of all plates, m), with the mileages of the change sections between them. Their length axis is that
/// of a profile in a box with the same left and right edge.
/// @param column where the legend goes
void DrawSectionDiagrams(Canvas& canvas, RoadDesign* road, const RoadLine& line, const Box& box, const Box& column);

}  // namespace kesto::host
