/// Places of the road as they are written on stakes.
#pragma once

#include <bit>
#include <cstdint>

namespace kesto {

/// A stake mileage and which of its occurrences along the road is meant.
struct StakeMileage {
    double mileage = 0;           // m
    std::int32_t occurrence = 0;  // 0-based; -1: in no occurrence

    /// By bits: the sign of a zero and what is no number count.
    bool IsSame(const StakeMileage& other) const noexcept {
        const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
        return bits(mileage) == bits(other.mileage) && occurrence == other.occurrence;
    }
};

}  // namespace kesto
