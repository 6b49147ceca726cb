/// The design stake nearest to a point.
#pragma once

#include "core/asked_road.hpp"
#include "core/result.hpp"
#include "geometry/projection.hpp"

namespace kesto {

/// The design stake nearest to the foot of a point; on a tie the later one, beyond the list its nearer end.
/// @param stake      out: untouched on failure
/// @param occurrence out: of the foot's stake mileage, written whenever Locate() finds something
/// @return fails as Locate(), and where there is no stake list
Outcome NearestStake(const AskedRoad& asked, Point point, StakeCoordinate& stake, std::int32_t& occurrence);

}  // namespace kesto
