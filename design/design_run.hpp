/// The design run: from the entered design data to the stakes and the derived profile.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Makes the road current, builds the chain, joins every element to the end of the one before (azimuths stay), makes
/// the stakes and derives the profile.
/// @return fails as MakeCurrent(), with nothing further done; and where an element or a stake cannot be evaluated or
///         the make-stake type is unknown, with the profile derived all the same
Outcome RunDesign(RoadDesign& road);

}  // namespace kesto
