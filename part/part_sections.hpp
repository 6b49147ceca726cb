/// The cross sections of a part of a road.
#pragma once

#include "core/road_design.hpp"
#include "part/part_alignment.hpp"

namespace kesto {

/// Gives a part the plates, the change sections and the section mileages that lie on it. Where a transition is cut, the
/// part gets a change section with the values there. A piece of a linear transition is one again; one of a cubic or a
/// fourth degree becomes a row of linear ones that are less than 1e-6 (per cent or m) away from it, up to differences
/// of 5000. In a stretch of an unknown type the standard values hold as before.
/// @param whole a road whose chain is built
/// @param part  a part of it with its alignment
void CopySections(const RoadDesign& whole, FramedPart& part);

}  // namespace kesto
