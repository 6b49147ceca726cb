/// Stake mileages of a road with broken chains, told by its zones: stretches along which the stake mileage runs on.
#pragma once

#include <optional>
#include <vector>

#include "real.hpp"

namespace reference {

/// A place where the stake mileage jumps: before it and behind it (m).
struct Break {
    double back, ahead;
};

/// A stake mileage (m) and which of its occurrences along the road.
struct Stake {
    double mileage;
    int occurrence;
};

class Zones {
public:
    /// @param start  mileage of the road's start (m)
    /// @param length of the road (m)
    /// @param breaks in their order along the road
    Zones(double start, const Real& length, const std::vector<Break>& breaks);

    /// Continuous mileage of a stake mileage; nothing where it does not occur so often.
    std::optional<Real> Continuous(const Stake& stake) const;
    /// How often a stake mileage occurs. A zone holds its first stake mileage, not the one at its end.
    int Occurrences(double mileage) const;
    /// The stake at a continuous mileage, its mileage rounded to a double.
    Stake StakeAt(const Real& continuous) const;
    /// Whether a stake mileage is that of a zone's end or start, within a margin (m).
    bool IsNearBorder(double mileage, double margin) const;
    Real Start() const { return zones.front().continuous; }
    Real End() const { return end; }

private:
    struct Zone {
        Real continuous, first, last;  // m: where it starts, its stake mileages
    };
    std::vector<Zone> zones;
    Real end;
};

}  // namespace reference
