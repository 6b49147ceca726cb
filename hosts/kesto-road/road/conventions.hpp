/// Numbers by which the library's interface tells modes, element types and what counts as infinite.
#pragma once

#include <cstdint>

namespace kesto::host {

inline constexpr double infiniteRadius = 1e-7;  ///< m: a smaller radius stands for infinite
inline constexpr double samePoint = 1e-7;       ///< m: points of a plan as near as this are one

/// Road design modes.
inline constexpr std::int32_t intersectionMode = 0;
inline constexpr std::int32_t elementMode = 1;
inline constexpr std::int32_t pointMode = 2;
inline constexpr std::int32_t straightsMode = 3;

/// Types of elements.
inline constexpr std::int32_t straightType = 1;
inline constexpr std::int32_t arcType = 2;
inline constexpr std::int32_t spiralType = 3;

}  // namespace kesto::host
