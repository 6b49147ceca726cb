/// What derived data were worked out from.
#pragma once

#include <bit>
#include <cstdint>

namespace kesto {

/// State of a road's data, as its lists count their edits. Whoever derives something keeps the stamp of that moment
/// (StampOf()) beside it: it holds as long as the road's stamp is the same where the derived data look.
struct Stamp {
    static constexpr std::uint64_t never = ~std::uint64_t{0};  // no list has been edited that often

    std::uint64_t elements = never;  // revision of the element list
    std::uint64_t curves = never;    // revision of the vertical curves
    std::uint64_t stakes = never;    // revision of the stake list
    double startMileage = 0;         // m
    double totalLength = 0;          // m
    std::int32_t curveMode = 0;      // vertical curve mode

    /// By bits: a limit of the road becomes a result as it is, the sign of a zero included.
    bool SameChain(const Stamp& now) const noexcept {
        const auto same = [](double one, double other) {
            return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
        };
        return elements == now.elements && same(startMileage, now.startMileage) && same(totalLength, now.totalLength);
    }
    bool SameProfile(const Stamp& now) const noexcept {
        return curves == now.curves && curveMode == now.curveMode && SameChain(now);
    }
    bool SameStakes(const Stamp& now) const noexcept { return stakes == now.stakes; }
};

}  // namespace kesto
