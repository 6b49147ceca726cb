#include "drawing/broken_chains.hpp"

namespace kesto::host {

void DrawBreak(Canvas& canvas, double x, double top, double bottom) {
    canvas.Line({x, top}, {x, bottom}, {.colour = colours::brokenChain, .width = 0.3, .dashed = true});
}

std::string BreakText(const RoadLine& line, const Break& it) {
    return FormatMileage(line.Road(), {it.back, 0}) + " = " + FormatMileage(line.Road(), {it.ahead, 0});
}

}  // namespace kesto::host
