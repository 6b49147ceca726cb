/// Elements from what the host entered, by road design mode.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// What the road design mode says.
enum class DesignMode : std::int32_t { Intersections = 0, Elements = 1, Coordinates = 2, BrokenLine = 3 };

/// Makes elements by a road design mode that has other input than elements.
/// @param elements out: start record first; untouched on failure
/// @return fails for an unknown mode (KESTO_UNKNOWN_DESIGN_MODE), fewer than two points (KESTO_TOO_FEW_ELEMENTS), an
///         intersection's curve that does not fit (KESTO_CURVE_DOES_NOT_FIT) and a coordinate point that cannot be
///         joined (KESTO_POINT_NOT_JOINED)
Outcome GenerateElements(const RoadDesign& road, CountedList<Element>& elements);

}  // namespace kesto
