#include "alignment/inverse.hpp"

#include <cmath>
#include <limits>

#include "alignment/chain_builder.hpp"
#include "alignment/inverse_index.hpp"
#include "alignment/position.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

SearchLimit LimitAt(const ChainView& chain, StakeMileage stake, double continuous) noexcept {
    SearchLimit limit{stake.mileage, stake.occurrence, continuous};
    if (const std::optional<Position> place = CentrePoint(chain, stake)) {
        limit.hasPoint = true;
        limit.x = place->x;
        limit.y = place->y;
    }
    return limit;
}

SearchLimit LowerLimit(const ChainView& chain, StakeMileage wanted) noexcept {
    if (const std::optional<double> found = FindContinuous(chain, wanted)) return LimitAt(chain, wanted, *found);
    const double start = chain.road.settings.startMileage;
    return LimitAt(chain, {start, 0}, start);
}

SearchLimit UpperLimit(const ChainView& chain, StakeMileage wanted) noexcept {
    if (const std::optional<double> found = FindContinuous(chain, wanted)) return LimitAt(chain, wanted, *found);
    const double end = chain.road.settings.startMileage + chain.road.totalLength;
    return LimitAt(chain, StakeMileageAt(chain, end), end);
}

SearchLimits LimitsOf(const ChainView& chain, StakeMileage lower, StakeMileage upper) noexcept {
    return {StampOf(chain.road), lower, upper, LowerLimit(chain, lower), UpperLimit(chain, upper)};
}

/// The limits of a search between two stake mileages; a live road keeps them until others are asked for.
SearchLimits CurrentLimits(const AskedRoad& asked, const ChainView& chain, StakeMileage lower,
                           StakeMileage upper) noexcept {
    if (asked.live == nullptr) return LimitsOf(chain, lower, upper);
    SearchLimits& kept = asked.live->searchLimits;
    const bool hold =
        kept.stamp.SameChain(StampOf(asked.road)) && kept.lowerAsked.IsSame(lower) && kept.upperAsked.IsSame(upper);
    if (!hold) kept = LimitsOf(chain, lower, upper);
    return kept;
}

/// Where the road's end has no stake mileage, the upper limit has no occurrence.
const SearchLimits& CurrentRoadLimits(const AskedRoad& asked, const ChainView& chain) noexcept {
    const RoadDesign& road = asked.road;
    if (asked.live != nullptr && !road.roadLimits.stamp.SameChain(StampOf(road))) {
        const StakeMileage start{road.settings.startMileage, 0};
        const StakeMileage end = StakeMileageAt(chain, road.settings.startMileage + road.totalLength);
        asked.live->roadLimits = LimitsOf(chain, start, end);
    }
    return road.roadLimits;
}

StakeMileage StakeOf(const SearchLimit& limit) noexcept { return {limit.mileage, limit.occurrence}; }

/// Plain distance from a limit's point; infinite where the point cannot be computed.
double DistanceTo(const SearchLimit& limit, Point point) noexcept {
    return limit.hasPoint ? Distance({limit.x, limit.y}, point) : std::numeric_limits<double>::infinity();
}

/// No element admits the point: how far it is from the limit that was given instead.
Failure NoFoot(const Located& limit) noexcept {
    Failure failure = FailValue(KESTO_NO_FOOT, limit.offset);
    failure.bound = limit.stake.mileage;
    return failure;
}

Outcome Search(const RoadSearch& search, Point point, const SearchLimits& limits,
               std::optional<Located>& located) noexcept {
    const Candidate best =
        NearestOnRoad(search.chain.road, search.index, point, {limits.lower.continuous, limits.upper.continuous});
    const double toLower = DistanceTo(limits.lower, point);
    const double toUpper = DistanceTo(limits.upper, point);
    // Lopsided on purpose: the upper limit wins ties against the best element, which wins ties against the lower limit.
    Located result;
    if (!(std::fabs(best.offset) < toUpper)) {
        result = {StakeOf(limits.upper), toUpper};
    } else if (toLower < std::fabs(best.offset)) {
        result = {StakeOf(limits.lower), toLower};
    } else if (best.element >= 0) {
        const LikelyPlace likely{best.element, best.running, best.highestBefore};
        result = {{best.mileage, StakeMileageAt(search.chain, best.continuous, likely).occurrence}, best.offset};
    } else {
        return Fail(KESTO_NO_FOOT);
    }
    if (!std::isfinite(result.stake.mileage) || !std::isfinite(result.offset)) return Fail(KESTO_RESULT_NOT_FINITE);
    located = result;
    if (best.element < 0 || result.stake.occurrence == noOccurrence) return NoFoot(result);
    return {};
}

}  // namespace

RoadSearch::RoadSearch(const AskedRoad& asked, std::int32_t points) noexcept
    : chain(asked, points), index(CurrentInverseIndex(asked)), wholeRoad(CurrentRoadLimits(asked, chain)) {}

void BuildSearch(RoadDesign& road) {
    BuildIndex(road);
    BuildInverseIndex(road);
    CurrentRoadLimits(road, road);
}

Outcome Locate(const RoadSearch& search, Point point, std::optional<Located>& located) noexcept {
    if (search.wholeRoad.upper.occurrence == noOccurrence) return Fail(KESTO_NO_FOOT);
    return Search(search, point, search.wholeRoad, located);
}

Outcome Locate(const AskedRoad& asked, Point point, std::optional<Located>& located) {
    if (Outcome current = EnsureCurrent(asked); !current) return current;
    return Locate(RoadSearch(asked), point, located);
}

Outcome LocateBetween(const AskedRoad& asked, Point point, StakeMileage lower, StakeMileage upper,
                      std::optional<Located>& located) {
    if (Outcome current = EnsureCurrent(asked); !current) return current;
    const RoadSearch search(asked);
    return Search(search, point, CurrentLimits(asked, search.chain, lower, upper), located);
}

}  // namespace kesto
