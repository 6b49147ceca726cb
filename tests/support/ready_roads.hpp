/// Roads that work, made by exported functions: what a run of calls begins with, so that the calls behind it find
/// something to answer.
#pragma once

#include <cstdint>

#include "kesto_road/kesto_road.h"

namespace kesto::test {

inline constexpr std::int32_t readyRoads = 6;

/// Adds intersections, which are what a road of design mode 0 is made from.
void AddIntersections(RoadDesign* road);

/// Adds coordinate points and sets the design mode that joins them: 2 by curves, 3 by straights.
void AddPoints(RoadDesign* road, std::int32_t mode);

/// Adds what makes the road of this number to a road, an empty one or any other.
void MakeReady(RoadDesign* road, std::int32_t number);

}  // namespace kesto::test
