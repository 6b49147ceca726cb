/// Roads that work, made by exported functions: what a run of calls begins with, so that the calls behind it find
/// something to answer.
#pragma once

#include <cstdint>

#include "kesto_road/kesto_road.h"

namespace kesto::fuzz {

inline constexpr std::int32_t readyRoads = 6;

/// Adds what makes the road of this number to a road, an empty one or any other.
void MakeReady(RoadDesign* road, std::int32_t number);

}  // namespace kesto::fuzz
