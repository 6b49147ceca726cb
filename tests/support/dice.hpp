/// Draws from a fixed seed.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>

namespace kesto::test {

class Dice {
public:
    explicit Dice(std::uint64_t seed) : random(seed) {}

    double Between(double low, double high) { return low + (high - low) * unit(random); }
    double LogBetween(double low, double high) { return std::exp(Between(std::log(low), std::log(high))); }
    int Below(int bound) { return static_cast<int>(unit(random) * bound); }
    /// Whether one of so many throws hits.
    bool In(int times) { return Below(times) == 0; }

    template <class Value, std::size_t count>
    Value Of(const Value (&values)[count]) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(count)))];
    }

private:
    std::mt19937_64 random;
    std::uniform_real_distribution<double> unit{0, 1};
};

}  // namespace kesto::test
