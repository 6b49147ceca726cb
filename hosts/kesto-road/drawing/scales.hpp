/// What plan and profile share: scales, colours and texts of a drawing.
#pragma once

#include <string>

#include "drawing/canvas.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto::host {

/// The smallest usual scale denominator (1, 1.25, 1.5, 2, 2.5, 3, 4, 5, 6, 7.5 times a power of ten) that is at least
/// this.
double UsualScale(double leastDenominator);

/// The smallest of 1, 2, 5 times a power of ten that is at least this.
double UsualStep(double least);

/// Colour of an element by its type.
Colour ElementColour(const Element& element) noexcept;

/// "1:2000".
std::string ScaleText(double denominator);

inline constexpr double millimetresPerMetre = 1000;

}  // namespace kesto::host
