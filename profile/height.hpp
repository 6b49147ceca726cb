/// Design height of the centre line.
#pragma once

#include "alignment/chainage.hpp"
#include "core/result.hpp"

namespace kesto {

/// Height of the profile at a continuous mileage (m): tangents and parabolas (route surveying, vertical curves), level
/// before the first point and after the last. The profile must be derived (CurrentProfile()).
/// @return 0 without grade-change points. Fails off the road, where curves leave a place undefined, and for a curve of
///         an unknown mode. Exact within the rounding of the heights.
Result<double> HeightAtPlace(const RoadDesign& road, double continuous) noexcept;

/// The same at a stake mileage (m). Makes the road current and derives the profile where they are not.
/// @return 0 without grade-change points, touching nothing. Fails as above, where no road can be built, and for a
///         missing occurrence.
Result<double> CentreHeight(const AskedRoad& asked, StakeMileage stake);

}  // namespace kesto
