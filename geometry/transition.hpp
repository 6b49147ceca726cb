/// Transition spirals by themselves: their ease parameters and the circle that they lead to.
#pragma once

#include <optional>

#include "core/result.hpp"
#include "geometry/clothoid.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto {

/// Where a transition ends and how the circle there lies, in the frame of the tangent where the transition begins.
struct Transition {
    LocalPoint end;            // point and angle at the end of the spiral
    double shift = 0;          // m: p, distance from the tangent to the circle where it comes nearest
    double tangentOffset = 0;  // m: q, distance along the tangent to the foot of the circle's centre
};

/// The transition from a radius (below 1e-7: infinite) to a circle over a length (route surveying, transition curves).
/// @param fromRadius, radius, length m; a length of 0 is no transition at all
/// @return nothing for a spiral between equal radii or one that cannot be evaluated, as between nearly equal ones
std::optional<Transition> TransitionTo(double fromRadius, double radius, double length) noexcept;

/// Ease parameters of a spiral; the order of the radii does not matter. Shift and tangent offset belong to the circle
/// of the smaller radius, in the tangent frame at the other end.
/// @param startRadius, endRadius m, below 1e-7 infinite
/// @param length                 m
/// @return fails where an argument is not finite, the length is not above 0, both radii are infinite or both are equal,
///         or the spiral cannot be evaluated
Result<EaseParam> EaseParameters(double startRadius, double endRadius, double length) noexcept;

}  // namespace kesto
