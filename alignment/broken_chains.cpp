#include "alignment/broken_chains.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/record_lists.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

bool SamePlace(const BrokenChain& one, const BrokenChain& other) noexcept {
    return std::fabs(one.backMileage - other.backMileage) < tolerance::duplicateMileage;
}

/// Index of the stored record at the place of a new one; -1 where there is none.
std::int32_t FindSamePlace(std::span<const BrokenChain> stored, const BrokenChain& chain) noexcept {
    const auto before = [&](const BrokenChain& it) {
        return it.backMileage < chain.backMileage && !SamePlace(it, chain);
    };
    const auto found = std::partition_point(stored.begin(), stored.end(), before);
    if (found == stored.end() || !SamePlace(*found, chain)) return -1;
    return static_cast<std::int32_t>(found - stored.begin());
}

Failure Duplicate(std::int32_t stored, const BrokenChain& chain) noexcept {
    Failure failure = FailRecord(KESTO_DUPLICATE_MILEAGE, KESTO_LIST_BROKEN_CHAINS, stored);
    failure.value = chain.backMileage;
    return failure;
}

}  // namespace

Outcome InsertBrokenChain(RoadDesign& road, const BrokenChain& chain) {
    if (Outcome finite = RequireFinite({chain.backMileage}); !finite) return finite;
    const std::span<const BrokenChain> stored = road.brokenChains.Records();
    const auto next = std::ranges::upper_bound(stored, chain.backMileage, {}, &BrokenChain::backMileage);
    const auto place = static_cast<std::int32_t>(next - stored.begin());
    if (next != stored.end() && SamePlace(*next, chain)) return Duplicate(place, chain);
    if (place > 0 && SamePlace(*std::prev(next), chain)) return Duplicate(place - 1, chain);
    road.brokenChains.Insert(chain, place);
    return {};
}

Outcome InsertBrokenChains(RoadDesign& road, std::span<const BrokenChain> chains) {
    for (const BrokenChain& chain : chains) {
        if (Outcome finite = RequireFinite({chain.backMileage}); !finite) return finite;
        if (const std::int32_t stored = FindSamePlace(road.brokenChains.Records(), chain); stored >= 0) {
            return Duplicate(stored, chain);
        }
    }
    road.brokenChains.Reserve(static_cast<std::int64_t>(chains.size()));
    for (const BrokenChain& chain : chains) {
        static_cast<void>(InsertBrokenChain(road, chain));  // a repeated record is passed over
    }
    return {};
}

Outcome ReplaceBrokenChain(RoadDesign& road, std::int32_t index, const BrokenChain& chain) {
    if (Outcome valid = RequireRecord(road.brokenChains, index); !valid) return valid;
    if (Outcome finite = RequireFinite({chain.backMileage}); !finite) return finite;
    const std::span<BrokenChain> records = road.brokenChains.Edit();
    auto at = static_cast<std::size_t>(index);
    records[at] = chain;
    const auto greater = [&](std::size_t one, std::size_t other) {
        return records[one].backMileage > records[other].backMileage;
    };
    // Moving the one record keeps the others, equal ones among them, in their order.
    for (; at > 0 && greater(at - 1, at); --at) std::swap(records[at - 1], records[at]);
    for (; at + 1 < records.size() && greater(at, at + 1); ++at) std::swap(records[at], records[at + 1]);
    return {};
}

}  // namespace kesto
