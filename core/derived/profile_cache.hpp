/// What height queries keep between calls.
#pragma once

#include <cstdint>
#include <vector>

#include "core/derived/stamp.hpp"

namespace kesto {

/// Place of one grade-change point and its curve, in continuous mileage (m).
struct CurveSpan {
    double start = 0;
    double point = 0;
    double end = 0;
    double reach = 0;  // where the curves and tangents up to this point's end at the latest
};

/// What height queries and additions derive from the vertical curves and the chain.
struct ProfileCache {
    /// Where the points lie, for adding more of them. Valid exactly while the stamp is theirs.
    struct Places {
        Stamp stamp;
        bool onRoad = false;          // whether a road could be built, so that these are continuous mileages
        bool rising = false;          // whether every point lies behind the one before it
        std::vector<double> mileage;  // m: one per vertical curve, in list order
    };
    Stamp stamp;                   // spans are valid exactly while it is theirs: CurrentProfile() sees to it
    std::vector<CurveSpan> spans;  // one per vertical curve, in list order
    Places places;
};

}  // namespace kesto
