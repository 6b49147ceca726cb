#include "drawing/length_axis.hpp"

#include <algorithm>

#include "drawing/scales.hpp"

namespace kesto::host {

namespace {

constexpr double axisRoom = 17;  // mm left of the graph, for numbers and the names of the bands
constexpr double endRoom = 4;    // mm right of it

}  // namespace

LengthAxis::LengthAxis(const Box& box, const RoadLine& line)
    : left(box.left + axisRoom), right(box.right - endRoom), start(line.Start()) {
    denominator = UsualScale(line.Length() * millimetresPerMetre / (right - left));
}

double LengthAxis::X(double continuous) const noexcept {
    return left + (continuous - start) * millimetresPerMetre / denominator;
}

bool TextRow::Take(double from, double to) {
    const bool meets = std::any_of(taken.begin(), taken.end(),
                                   [&](const auto& other) { return from < other.second && other.first < to; });
    if (!meets) taken.emplace_back(from, to);
    return !meets;
}

void DrawBreak(Canvas& canvas, double x, double top, double bottom) {
    canvas.Line({x, top}, {x, bottom}, {.colour = colours::brokenChain, .width = 0.3, .dashed = true});
}

std::string BreakText(const RoadLine& line, const Break& it) {
    return FormatMileage(line.Prefix(), {it.back, 0}) + " = " + FormatMileage(line.Prefix(), {it.ahead, 0});
}

}  // namespace kesto::host
