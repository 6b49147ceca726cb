/// Stake mileage and offset of a plane point, searched along the road.
#pragma once

#include "alignment/chainage.hpp"
#include "core/asked_road.hpp"
#include "core/result.hpp"
#include "geometry/projection.hpp"

namespace kesto {

/// A point as the road sees it.
struct Located {
    StakeMileage stake;
    double offset = 0;  // m, positive to the right; at kinks and limits the plain distance
};

/// What searches read.
struct RoadSearch {
    /// Brings what searches keep in a live road up to date.
    /// @param asked  a current road
    /// @param points how many are to be searched for
    explicit RoadSearch(const AskedRoad& asked, std::int32_t points = 1) noexcept;

    ChainView chain;
    const InverseIndex& index;
    const SearchLimits& wholeRoad;
};

/// Builds everything that searches read of a current road.
/// @throws std::bad_alloc
void BuildSearch(RoadDesign& road);

/// Searches the whole road.
/// @param located out: the foot; the road's end with its distance where no element admits the point
/// @return fails where the road's end has no stake mileage (nothing written), and where no element admits the point
Outcome Locate(const RoadSearch& search, Point point, std::optional<Located>& located) noexcept;

/// Searches the whole road; makes it current first.
/// @param located out: as above
/// @return fails as above, and where no road can be built (nothing written)
Outcome Locate(const AskedRoad& asked, Point point, std::optional<Located>& located);

/// Searches between two stake mileages; makes the road current first. A limit that is not on the road is replaced by
/// the road's end on its side.
/// @param located out: as Locate(), with the limits for the road's ends
Outcome LocateBetween(const AskedRoad& asked, Point point, StakeMileage lower, StakeMileage upper,
                      std::optional<Located>& located);

}  // namespace kesto
