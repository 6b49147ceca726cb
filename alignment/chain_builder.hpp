/// Building the element chain: broken chains applied, stake mileages set, lengths summed.
#pragma once

#include "core/asked_road.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Whether a broken chain lies on an element, within 1e-7 m: the first such chain in the list acts behind the place, or
/// behind the whole element where it lies within 1e-5 m of its start. Elements of negative length hold none.
bool HoldsBreak(const Element& element, double backMileage) noexcept;

/// The failure of a road without elements enough: a start record and one element are needed.
Failure TooFewElements(const RoadDesign& road) noexcept;

/// Applies the broken chains to the elements as they stand, sets their start mileages, the total length and the start
/// mileage. The stake list is kept.
/// @return fails with the elements and the start mileage as they were and a total length of 0: fewer than two elements
///         (KESTO_TOO_FEW_ELEMENTS), no start record (KESTO_NO_START_ELEMENT), an element with a length or mileages
///         that are not finite, or whose split point cannot be evaluated (KESTO_ELEMENT_NOT_EVALUABLE)
/// @throws std::bad_alloc with the same state
Outcome BuildChain(RoadDesign& road);

/// The make-current step: discards the stakes, generates the elements by the road design mode and builds the chain.
/// @return fails as GenerateElements() and BuildChain()
Outcome MakeCurrent(RoadDesign& road);

/// What every query begins with: makes the road current when no chain is built. A frozen road is.
/// @return fails as MakeCurrent(), and with KESTO_TOO_FEW_ELEMENTS when the elements are gone although a length
///         is known
Outcome EnsureCurrent(const AskedRoad& asked);

}  // namespace kesto
