/// Designs from a seed, and the library's road of a design.
#pragma once

#include "second_road.hpp"
#include "support/random_road.hpp"

namespace kesto::second {

using test::Dice;

Design RandomDesign(Dice& dice, Form form);

/// Gives a design to the library, in the form that it names, and runs the design.
test::Road Build(const Design& design, const SecondRoad& second);

}  // namespace kesto::second
