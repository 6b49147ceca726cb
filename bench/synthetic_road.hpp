/// Roads of any number of elements and points beside them, the same on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kesto_road/kesto_road.hpp"

namespace bench {

/// Numbers that look random, from a fixed seed.
class Random {
public:
    explicit Random(std::uint64_t seed) noexcept : state(seed) {}

    /// Evenly distributed in [lower, upper).
    double Between(double lower, double upper) noexcept;

private:
    std::uint64_t state;
};

/// A designed highway: straight, spiral, arc, spiral, repeated, turns alternating, in coordinates of a national grid.
/// Headings stay within 55 degrees of one direction, so the road never comes back to itself.
/// @param elements number of elements besides the start record
kesto::Road Highway(int elements);

/// A highway with a profile and a cross section: for each ten elements one grade-change point, and one place where the
/// slopes of two plates change.
kesto::Road FurnishedHighway(int elements);

/// A point beside the road and what it was made from.
struct Query {
    double mileage;  // m
    double offset;   // m
    double x, y;     // m
};

/// Points evenly spread along the road, in random order.
/// @param band  largest offset to either side (m)
/// @param count how many; processors learn the turns that a thousand queries take, so quick answers need more
std::vector<Query> Queries(kesto::Road& road, double band, std::size_t count = 1024);

}  // namespace bench
