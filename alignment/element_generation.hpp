/// Elements from what the host entered, by road design mode.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// What the road design mode says.
enum class DesignMode : std::int32_t { Intersections = 0, Elements = 1, Coordinates = 2, BrokenLine = 3 };

/// Makes elements by a road design mode that has other input than elements.
/// @param elements out: start record first; untouched on failure
/// @return fails: unknown mode (1), fewer than two points (3), an intersection's curve that does not fit (4), a
///         coordinate point that cannot be joined (5)
Outcome GenerateElements(const RoadDesign& road, CountedList<Element>& elements);

}  // namespace kesto
