/// The cases of the set, kind by kind. A share of 1 makes the whole set, 0.01 a hundredth of it.
#pragma once

#include "dice.hpp"
#include "set_writer.hpp"

namespace reference {

void WriteElementCases(SetWriter& set, Dice& dice, double share);
void WriteChainCases(SetWriter& set, Dice& dice, double share);
void WriteHeightCases(SetWriter& set, Dice& dice, double share);
void WriteSectionCases(SetWriter& set, Dice& dice, double share);

/// A share of a number, at least 1.
inline int ShareOf(int whole, double share) { return whole * share < 1 ? 1 : static_cast<int>(whole * share); }

}  // namespace reference
