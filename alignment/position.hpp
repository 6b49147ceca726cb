/// Points of the road at a stake mileage and offset.
#pragma once

#include "alignment/chainage.hpp"
#include "alignment/element_geometry.hpp"

namespace kesto {

/// Point of the centre line at a stake mileage, on the chain as it stands.
/// @return nothing where no element covers the mileage in this occurrence or that element cannot be evaluated
std::optional<Position> CentrePoint(RoadDesign& road, StakeMileage stake) noexcept;

/// An offset from the centre line.
struct Offset {
    double distance = 0;  // m, positive to the right
    double angle = 90;    // degrees, from the tangent clockwise to the offset line; outside [0, 180] it counts as 90
};

/// A position moved off the centre line; the azimuth stays that of the centre line.
Position Moved(const Position& centre, Offset offset) noexcept;

/// Point at a stake mileage and offset, on the chain as it stands.
/// @param position out: nothing where no element covers the mileage, all 0 where that element cannot be evaluated
/// @return fails in both cases, and where the result would not be finite
Outcome FindPosition(RoadDesign& road, StakeMileage stake, Offset offset, std::optional<Position>& position) noexcept;

}  // namespace kesto
