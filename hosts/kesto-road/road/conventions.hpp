/// Numbers that have a meaning in the library's interface: modes, types of elements, and its tolerances.
#pragma once

#include <cstdint>

namespace kesto::host {

inline constexpr double infiniteRadius = 1e-7;   ///< m: a smaller radius stands for infinite
inline constexpr double samePoint = 1e-7;        ///< m: points of a plan that lie no farther apart are one point
inline constexpr double sameMileage = 1e-7;      ///< m: mileages that differ by less are equal
inline constexpr double beyondTolerance = 1e-3;  ///< m: mileages are published to the millimetre
inline constexpr double squareOffset = 90;       ///< degrees from the tangent to an offset line square to it

/// Road design modes.
inline constexpr std::int32_t intersectionMode = 0;
inline constexpr std::int32_t elementMode = 1;
inline constexpr std::int32_t pointMode = 2;
inline constexpr std::int32_t straightsMode = 3;

/// Types of elements.
inline constexpr std::int32_t straightType = 1;
inline constexpr std::int32_t arcType = 2;
inline constexpr std::int32_t spiralType = 3;

/// Vertical curve modes.
inline constexpr std::int32_t radiusMode = 0;
inline constexpr std::int32_t endsMode = 1;

}  // namespace kesto::host
