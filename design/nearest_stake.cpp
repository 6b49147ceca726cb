#include "design/nearest_stake.hpp"

#include <cmath>

#include "alignment/inverse.hpp"
#include "design/stake_bracket.hpp"

namespace kesto {

namespace {

template <class Road>
Outcome StakeNearFoot(Road& road, Point point, StakeCoordinate& stake, std::int32_t& occurrence) {
    std::optional<Located> foot;
    const Outcome located = Locate(road, point, foot);
    if (foot) occurrence = foot->stake.occurrence;
    if (!located) return located;
    const std::span<const StakeCoordinate> stakes = DesignOf(road).stakes.Records();
    if (stakes.empty()) return Fail(KESTO_NO_STAKES);
    const double mileage = foot->stake.mileage;
    const std::optional<std::size_t> bracket = FindBracket(road, mileage);
    const StakeCoordinate& before = bracket ? stakes[*bracket] : stakes.front();
    const StakeCoordinate& after = bracket ? stakes[*bracket + 1] : stakes.back();
    const bool later = std::fabs(after.mileage - mileage) <= std::fabs(before.mileage - mileage);
    stake = later ? after : before;
    return {};
}

}  // namespace

Outcome NearestStake(RoadDesign& road, Point point, StakeCoordinate& stake, std::int32_t& occurrence) {
    return StakeNearFoot(road, point, stake, occurrence);
}

Outcome NearestStake(const FrozenRoad& frozen, Point point, StakeCoordinate& stake, std::int32_t& occurrence) noexcept {
    return StakeNearFoot(frozen, point, stake, occurrence);
}

}  // namespace kesto
