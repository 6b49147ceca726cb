/// What height queries keep between calls.
#pragma once

#include <cstdint>
#include <vector>

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
    struct Key {
        std::uint64_t curves = ~std::uint64_t{0};    // revision of the vertical curve list
        std::uint64_t elements = ~std::uint64_t{0};  // revision of the element list
        double startMileage = 0;                     // m
        double totalLength = 0;                      // m
        std::int32_t mode = 0;                       // vertical curve mode
        bool operator==(const Key&) const = default;
    };
    /// Where the points lie, for adding more of them. Valid exactly while its key equals theirs.
    struct Places {
        Key key;
        bool onRoad = false;          // whether a road could be built, so that these are continuous mileages
        bool rising = false;          // whether every point lies behind the one before it
        std::vector<double> mileage;  // m: one per vertical curve, in list order
    };
    Key key;                       // spans are valid exactly while it equals theirs: CurrentProfile() sees to it
    std::vector<CurveSpan> spans;  // one per vertical curve, in list order
    Places places;
};

}  // namespace kesto
