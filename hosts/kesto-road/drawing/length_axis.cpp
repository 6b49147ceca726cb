#include "drawing/length_axis.hpp"

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

}  // namespace kesto::host
