/// The nearest place of the road by an index of boxes: the result of WalkElements(), to the bit, without the walk.
#pragma once

#include "alignment/element_walk.hpp"
#include "core/asked_road.hpp"

namespace kesto {

/// The index of the chain as it stands, built anew when an edit or a rebuild has passed since, or memory ran out the
/// last time. It is not usable where memory runs out, a record is not finite or beyond the sizes that the bounds allow
/// for. A frozen road has its index.
const InverseIndex& CurrentInverseIndex(const AskedRoad& asked) noexcept;

/// Builds that index anew.
/// @throws std::bad_alloc; the index is then not usable
void BuildInverseIndex(RoadDesign& road);

/// The nearest place on the stretch as the index tells it.
/// @param nearest in: no place; out: the nearest
/// @return false where it cannot tell: the point is too far away, or too many elements are about equally near
bool SearchIndex(const RoadDesign& road, const InverseIndex& index, Point point, const Stretch& stretch,
                 Candidate& nearest) noexcept;

/// The nearest place on the stretch: by the index of the chain where it can tell, else by the walk.
Candidate NearestOnRoad(const RoadDesign& road, const InverseIndex& index, Point point,
                        const Stretch& stretch) noexcept;

/// The same by the road's own index, made current.
Candidate NearestOnRoad(RoadDesign& road, Point point, const Stretch& stretch) noexcept;

}  // namespace kesto
