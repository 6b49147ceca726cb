/// The profile of a part of a road.
#pragma once

#include "core/road_design.hpp"
#include "part/part_alignment.hpp"

namespace kesto {

/// Gives a part the grade-change points whose curves and tangents it needs: every height in it stays the same. A point
/// in the part has its stake mileage there, one outside its continuous mileage and the occurrence -1. An end of a curve
/// outside has its continuous mileage and an occurrence that the part does not have, since -1 means an end not given.
/// @param whole a road whose chain is built; its profile is derived
/// @param part  a part of it with its alignment only
void CopyProfile(RoadDesign& whole, FramedPart& part);

}  // namespace kesto
