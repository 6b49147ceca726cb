/// Broken chains on drawings.
#pragma once

#include <string>

#include "drawing/canvas.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Draws the line of a broken chain across a graph.
void DrawBreak(Canvas& canvas, double x, double top, double bottom);

/// Both mileages of a broken chain: "K0+490.000 = K0+480.000".
std::string BreakText(const RoadLine& line, const Break& it);

/// How that text is written across a graph.
inline const TextStyle breakStyle{.size = 2, .colour = colours::brokenChain, .bold = true, .halo = true};

}  // namespace kesto::host
