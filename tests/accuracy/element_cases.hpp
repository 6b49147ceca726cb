/// Positions and feet on single elements, and elements that run backwards.
#pragma once

#include "dice.hpp"
#include "set_writer.hpp"

namespace reference {

/// Writes the cases, kind by kind. A share of 1 makes the whole set, 0.01 a hundredth of it.
void WriteElementCases(SetWriter& set, Dice& dice, double share);

}  // namespace reference
