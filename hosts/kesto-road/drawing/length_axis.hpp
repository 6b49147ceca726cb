/// The road's length across the sheet: what the profile and the diagrams below it share.
#pragma once

#include "drawing/canvas.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Maps continuous mileages onto the sheet. Boxes of the same left and right edge get the same axis.
struct LengthAxis {
    LengthAxis(const Box& box, const RoadLine& line);
    [[nodiscard]] double X(double continuous) const noexcept;  ///< mm

    double left, right;      ///< mm: left of it stand the names of the graph and its bands
    double start;            ///< continuous mileage of the road's start (m)
    double denominator = 1;  ///< of the scale
};

}  // namespace kesto::host
