/// The coordinate method: a road from the main points that it runs through.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Makes elements from the coordinate points. In the broken-line mode (3) straights join the points; in the
/// coordinate mode (2) every point begins an element of its own type: a straight, the shorter arc of its radius, or the
/// shortest spiral from its radius to the next point's that meets the next point. Azimuths follow from the chords.
/// @param elements out: start record first; untouched on failure
/// @return fails: fewer than two points (KESTO_TOO_FEW_ELEMENTS); neighbouring points that coincide, an arc without a
///         radius or with a chord above its diameter, a spiral between equal radii, between nearly equal ones that
///         cannot be evaluated, or without a solution, an unknown type, a radius of an arc or spiral that is negative
///         or not finite (KESTO_POINT_NOT_JOINED, value = the points' distance). Radii that no piece uses are never
///         read
Outcome GenerateFromCoordinates(const RoadDesign& road, CountedList<Element>& elements);

}  // namespace kesto
