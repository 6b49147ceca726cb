/// Points of the road at a stake mileage and offset.
#pragma once

#include "alignment/chainage.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

/// Point of the centre line at a stake mileage.
/// @return nothing where no element covers the mileage in this occurrence or that element cannot be evaluated
std::optional<Position> CentrePoint(const ChainView& chain, StakeMileage stake) noexcept;

inline constexpr double squareAngle = 90;  // degrees

/// An offset from the centre line.
struct Offset {
    double distance = 0;  // m, positive to the right
    double angle =
        squareAngle;  // degrees, from the tangent clockwise to the offset line; outside [0, 180] it counts as 90
};

/// A position moved off the centre line; the azimuth stays that of the centre line.
Position Moved(const Position& centre, Offset offset) noexcept;

/// Point at a stake mileage and offset.
/// @param position out: nothing where no element covers the mileage, all 0 where that element cannot be evaluated
/// @return fails in both cases, and where the result would not be finite
Outcome FindPosition(const ChainView& chain, StakeMileage stake, Offset offset,
                     std::optional<Position>& position) noexcept;

}  // namespace kesto
