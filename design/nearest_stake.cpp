#include "design/nearest_stake.hpp"

#include <cmath>

#include "alignment/inverse.hpp"
#include "design/stake_bracket.hpp"

namespace kesto {

Outcome NearestStake(const AskedRoad& asked, Point point, StakeCoordinate& stake, std::int32_t& occurrence) {
    std::optional<Located> foot;
    const Outcome located = Locate(asked, point, foot);
    if (foot) occurrence = foot->stake.occurrence;
    if (!located) return located;
    const std::span<const StakeCoordinate> stakes = asked.road.stakes.Records();
    if (stakes.empty()) return Fail(KESTO_NO_STAKES);
    const double mileage = foot->stake.mileage;
    const std::optional<std::size_t> bracket = FindBracket(asked, mileage);
    const StakeCoordinate& before = bracket ? stakes[*bracket] : stakes.front();
    const StakeCoordinate& after = bracket ? stakes[*bracket + 1] : stakes.back();
    const bool later = std::fabs(after.mileage - mileage) <= std::fabs(before.mileage - mileage);
    stake = later ? after : before;
    return {};
}

}  // namespace kesto
