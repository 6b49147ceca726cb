#include "alignment/inverse.hpp"

#include <cmath>
#include <limits>

#include "alignment/chain_builder.hpp"
#include "alignment/inverse_index.hpp"
#include "alignment/position.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

/// One end of the stretch that is searched.
struct Limit {
    StakeMileage stake;
    double continuous;  // m
};

Limit LowerLimit(RoadDesign& road, StakeMileage wanted) noexcept {
    if (const std::optional<double> continuous = FindContinuous(road, wanted)) return {wanted, *continuous};
    return {{road.settings.startMileage, 0}, road.settings.startMileage};
}

Limit UpperLimit(RoadDesign& road, StakeMileage wanted) noexcept {
    if (const std::optional<double> continuous = FindContinuous(road, wanted)) return {wanted, *continuous};
    const double end = road.settings.startMileage + road.totalLength;
    return {StakeMileageAt(road, end), end};
}

/// Plain distance from a limit's point; infinite where the point cannot be computed, so that it does not compete.
double DistanceTo(RoadDesign& road, const Limit& limit, Point point) noexcept {
    const std::optional<Position> place = CentrePoint(road, limit.stake);
    return place ? Distance({place->x, place->y}, point) : std::numeric_limits<double>::infinity();
}

/// No element admits the point: how far it is from the limit that was given instead.
Failure NoFoot(const Located& limit) noexcept {
    Failure failure = FailValue(KESTO_NO_FOOT, limit.offset);
    failure.bound = limit.stake.mileage;
    return failure;
}

Outcome Search(RoadDesign& road, Point point, const Limit& lower, const Limit& upper,
               std::optional<Located>& located) noexcept {
    const Candidate best = NearestOnRoad(road, point, {lower.continuous, upper.continuous});
    const double toLower = DistanceTo(road, lower, point);
    const double toUpper = DistanceTo(road, upper, point);
    // Lopsided on purpose: the upper limit wins ties against the best element, which wins ties against the lower limit.
    Located result;
    if (!(std::fabs(best.offset) < toUpper)) {
        result = {upper.stake, toUpper};
    } else if (toLower < std::fabs(best.offset)) {
        result = {lower.stake, toLower};
    } else if (best.element >= 0) {
        result = {{best.mileage, StakeMileageAt(road, best.continuous).occurrence}, best.offset};
    } else {
        return Fail(KESTO_NO_FOOT);
    }
    if (!std::isfinite(result.stake.mileage) || !std::isfinite(result.offset)) return Fail(KESTO_RESULT_NOT_FINITE);
    located = result;
    if (best.element < 0 || result.stake.occurrence == noOccurrence) return NoFoot(result);
    return {};
}

}  // namespace

Outcome Locate(RoadDesign& road, Point point, std::optional<Located>& located) {
    if (Outcome current = EnsureCurrent(road); !current) return current;
    const StakeMileage end = StakeMileageAt(road, road.settings.startMileage + road.totalLength);
    if (end.occurrence == noOccurrence) return Fail(KESTO_NO_FOOT);
    return Search(road, point, LowerLimit(road, {road.settings.startMileage, 0}), UpperLimit(road, end), located);
}

Outcome LocateBetween(RoadDesign& road, Point point, StakeMileage lower, StakeMileage upper,
                      std::optional<Located>& located) {
    if (Outcome current = EnsureCurrent(road); !current) return current;
    return Search(road, point, LowerLimit(road, lower), UpperLimit(road, upper), located);
}

Outcome NearestStake(RoadDesign& road, Point point, StakeCoordinate& stake, std::int32_t& occurrence) {
    std::optional<Located> foot;
    const Outcome located = Locate(road, point, foot);
    if (foot) occurrence = foot->stake.occurrence;
    if (!located) return located;
    const std::span<const StakeCoordinate> stakes = road.stakes.Records();
    if (stakes.empty()) return Fail(KESTO_NO_STAKES);
    const double mileage = foot->stake.mileage;
    const StakeCoordinate* before = &stakes.front();
    const StakeCoordinate* after = &stakes.back();
    for (std::size_t i = 0; i + 1 < stakes.size(); ++i) {
        if (stakes[i].mileage <= mileage && mileage <= stakes[i + 1].mileage) {
            before = &stakes[i];
            after = &stakes[i + 1];
            break;
        }
    }
    const bool later = std::fabs(after->mileage - mileage) <= std::fabs(before->mileage - mileage);
    stake = later ? *after : *before;
    return {};
}

}  // namespace kesto
