/// Scales and steps that are usual on drawings.
#pragma once

#include <string>

namespace kesto::host {

/// The smallest usual scale denominator (1, 1.25, 1.5, 2, 2.5, 3, 4, 5, 6, 7.5 times a power of ten) that is at least
/// this.
double UsualScale(double leastDenominator);

/// The smallest of 1, 2, 5 times a power of ten that is at least this.
double UsualStep(double least);

/// "1:2000".
std::string ScaleText(double denominator);

inline constexpr double millimetresPerMetre = 1000;

}  // namespace kesto::host
