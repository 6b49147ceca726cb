/// Distances from a point to the eight boxes of a node of the index, as integers that compare as they do.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "core/derived/inverse_index.hpp"

namespace kesto {

/// Squared distances (m2) as integers in the same order, to within the last bits: these hold the lane of the box.
using BoxKeys = std::array<std::int32_t, boxLanes>;

inline constexpr std::int32_t laneBits = boxLanes - 1;
inline constexpr std::int32_t seenBox = std::numeric_limits<std::int32_t>::max();  // beyond every limit

inline std::int32_t BoxKey(float squared) noexcept { return std::bit_cast<std::int32_t>(squared); }

/// A point as the boxes see it: from the index's origin in single precision, and how far off that may be (m).
struct BoxPoint {
    float x;
    float y;
    float roundingX;
    float roundingY;

    BoxPoint(double fromOriginX, double fromOriginY) noexcept
        : x(static_cast<float>(fromOriginX)),
          y(static_cast<float>(fromOriginY)),
          roundingX(std::fabs(x) * std::numeric_limits<float>::epsilon()),
          roundingY(std::fabs(y) * std::numeric_limits<float>::epsilon()) {}
};

/// The key of the nearest box.
inline std::int32_t LeastOf(const BoxKeys& keys) noexcept {
    std::array<std::int32_t, boxLanes / 2> least;
    for (std::size_t lane = 0; lane < least.size(); ++lane) {
        least[lane] = std::min(keys[lane], keys[lane + least.size()]);
    }
    return std::min(std::min(least[0], least[1]), std::min(least[2], least[3]));
}

/// Finds the keys of a node's boxes. A function of its own: inside a search's loop compilers unroll the lanes before
/// they think of doing four at a time.
/// @return the least
std::int32_t FindKeys(const BoxNode& node, const BoxPoint& point, BoxKeys& keys) noexcept;

}  // namespace kesto
