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

/// Derived from the vertical curves and the chain by CurrentProfile(); valid exactly while the key equals theirs.
struct ProfileCache {
    struct Key {
        std::uint64_t curves = ~std::uint64_t{0};    // revision of the vertical curve list
        std::uint64_t elements = ~std::uint64_t{0};  // revision of the element list
        double startMileage = 0;                     // m
        double totalLength = 0;                      // m
        std::int32_t mode = 0;                       // vertical curve mode
        bool operator==(const Key&) const = default;
    };
    Key key;
    std::vector<CurveSpan> spans;  // one per vertical curve, in list order
};

}  // namespace kesto
