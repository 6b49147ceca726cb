/// Degrees cross the boundary, radians live inside: the two conversions between them.
#pragma once

#include <numbers>

namespace kesto {

inline constexpr double fullCircle = 360.0;  // degrees

constexpr double ToRadians(double degrees) noexcept { return degrees * (std::numbers::pi / 180); }
constexpr double ToDegrees(double radians) noexcept { return radians * (180 / std::numbers::pi); }

}  // namespace kesto
