#include "zones.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace reference {

Zones::Zones(double start, const Real& length, const std::vector<Break>& breaks) : end(start + length) {
    Zone zone{start, start, 0};
    for (const Break& it : breaks) {
        zone.last = it.back;
        zones.push_back(zone);
        zone = {zone.continuous + (zone.last - zone.first), it.ahead, 0};
    }
    zone.last = zone.first + (end - zone.continuous);
    zones.push_back(zone);
}

std::optional<Real> Zones::Continuous(const Stake& stake) const {
    int before = 0;
    for (const Zone& zone : zones) {
        if (!(zone.first <= stake.mileage && stake.mileage < zone.last)) continue;
        if (before == stake.occurrence) return zone.continuous + (stake.mileage - zone.first);
        ++before;
    }
    return std::nullopt;
}

int Zones::Occurrences(double mileage) const {
    return static_cast<int>(
        std::ranges::count_if(zones, [&](const Zone& zone) { return zone.first <= mileage && mileage < zone.last; }));
}

Stake Zones::StakeAt(const Real& continuous) const {
    std::size_t at = zones.size() - 1;
    while (at > 0 && continuous < zones[at].continuous) --at;
    const auto mileage = static_cast<double>(zones[at].first + (continuous - zones[at].continuous));
    const auto holds = [&](const Zone& zone) { return zone.first <= mileage && mileage < zone.last; };
    const auto before = std::count_if(zones.begin(), zones.begin() + static_cast<std::ptrdiff_t>(at), holds);
    return {mileage, static_cast<int>(before)};
}

bool Zones::IsNearBorder(double mileage, double margin) const {
    return std::ranges::any_of(zones, [&](const Zone& zone) {
        return abs(zone.first - mileage) < margin || abs(zone.last - mileage) < margin;
    });
}

}  // namespace reference
