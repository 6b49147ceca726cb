#include "design/stake_bracket.hpp"

#include <algorithm>

namespace kesto {

namespace {

/// Whether the mileages never fall; what is no number counts as a fall.
bool NeverFalls(std::span<const StakeCoordinate> stakes) noexcept {
    const auto falls = [](const StakeCoordinate& one, const StakeCoordinate& next) {
        return !(one.mileage <= next.mileage);
    };
    return std::ranges::adjacent_find(stakes, falls) == stakes.end();
}

/// WalkToBracket() where mileages never fall. The first stake that is not before the mileage ends the first bracket,
/// unless it begins it.
std::optional<std::size_t> BisectToBracket(std::span<const StakeCoordinate> stakes, double mileage) noexcept {
    const auto reached =
        std::ranges::partition_point(stakes, [&](const StakeCoordinate& stake) { return !(stake.mileage >= mileage); });
    if (reached == stakes.end()) return std::nullopt;
    const auto index = static_cast<std::size_t>(reached - stakes.begin());
    if (index > 0) return index - 1;
    if (stakes.size() > 1 && stakes[0].mileage <= mileage) return 0;
    return std::nullopt;
}

}  // namespace

void BuildStakeOrder(RoadDesign& road) noexcept {
    const Stamp now = StampOf(road);
    if (!road.stakeOrder.stamp.SameStakes(now)) road.stakeOrder = {now, NeverFalls(road.stakes.Records())};
}

std::optional<std::size_t> WalkToBracket(std::span<const StakeCoordinate> stakes, double mileage) noexcept {
    for (std::size_t i = 0; i + 1 < stakes.size(); ++i) {
        if (stakes[i].mileage <= mileage && mileage <= stakes[i + 1].mileage) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> FindBracket(const AskedRoad& asked, double mileage) noexcept {
    if (asked.live != nullptr) BuildStakeOrder(*asked.live);
    const std::span<const StakeCoordinate> stakes = asked.road.stakes.Records();
    return asked.road.stakeOrder.neverFalls ? BisectToBracket(stakes, mileage) : WalkToBracket(stakes, mileage);
}

}  // namespace kesto
