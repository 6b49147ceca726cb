/// The road side: where the plate edges of a cross section lie, and the design height anywhere on it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Whether heights are those of the profile or counted from the centre line.
enum class HeightBase { Profile, CentreLine };

/// The plates of one side with their outer edges: offset, point and height, from the centre line outwards. A plate's
/// step stands at its inner edge. Makes the road current. Side slopes are to continue outwards from the last plate.
/// @return fails as GetSectionAtMileage(), where the profile gives no height, and where an edge would not be finite
Result<std::vector<SectionPlate>> RoadSide(const AskedRoad& asked, StakeMileage stake, std::int32_t side,
                                           HeightBase base);

/// Design height at a stake mileage and offset (m): on the centre line that of the profile, away from it on the plate
/// that holds the offset, the inner one at an edge.
/// @param height out: untouched where an argument is not finite, no road can be built or no section holds the offset;
///               0 where the centre line has no height
Outcome FindHeight(const AskedRoad& asked, StakeMileage stake, double offset, double& height);

/// The same on a current road whose profile is derived: nothing is built.
/// @param height out: nothing where FindHeight() leaves it untouched
Outcome HeightOf(const ChainView& chain, StakeMileage stake, double offset, std::optional<double>& height) noexcept;

}  // namespace kesto
