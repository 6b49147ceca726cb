/// Numbers from a fixed seed, the same on every machine: no function of a math library has a part in them.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "real.hpp"

namespace reference {

class Dice {
public:
    explicit Dice(std::uint64_t seed) : random(seed) {}

    double Between(double low, double high) { return low + (high - low) * Unit(); }
    double LogBetween(double low, double high) {
        return static_cast<double>(exp(log(Real(low)) + (log(Real(high)) - log(Real(low))) * Unit()));
    }
    int Below(int count) { return static_cast<int>(Unit() * count); }
    bool Flip() { return Below(2) == 1; }
    /// Whether one of so many throws hits.
    bool OneIn(int throws) { return Below(throws) == 0; }

private:
    double Unit() { return static_cast<double>(random() >> 11U) * 0x1p-53; }

    std::mt19937_64 random;
};

/// Numbers between two limits, ascending.
inline std::vector<double> DrawAscending(Dice& dice, int count, double low, double high) {
    std::vector<double> numbers(static_cast<std::size_t>(count));
    for (double& number : numbers) number = dice.Between(low, high);
    std::ranges::sort(numbers);
    return numbers;
}

/// To whole millimetres (m), as design data are given.
inline double Millimetres(double value) { return std::floor(value * 1000 + 0.5) / 1000; }

}  // namespace reference
