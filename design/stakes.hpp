/// The design stake list: main points and regular stakes along the road.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Makes the stake list anew from the chain as it stands and names every stake. Raises the mileage interval where it
/// would give more than about ten thousand regular stakes.
/// @return fails for an unknown make-stake type (KESTO_UNKNOWN_STAKE_MODE) and for a stake that cannot be computed
///         (KESTO_ELEMENT_NOT_EVALUABLE, with the element); the stakes made so far then stay, unnamed
Outcome MakeStakes(RoadDesign& road);

}  // namespace kesto
