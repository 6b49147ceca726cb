/// The foot of a plane point on one element.
#pragma once

#include <optional>

#include "core/road_design.hpp"

namespace kesto {

/// A plane point (m).
struct Point {
    double x = 0;
    double y = 0;
};

/// Where a point lies relative to an element.
struct Foot {
    double along = 0;   // m from the element's start
    double offset = 0;  // m, positive to the right
};

/// Distance between two points (m).
double Distance(Point one, Point other) noexcept;

/// Foot on a straight, whose direction is that from its start point to its end point.
/// @return nothing where the foot lies outside the element, or its end cannot be evaluated. Measured: within 1e-9 m.
std::optional<Foot> ProjectOnLine(const Element& line, Point point) noexcept;

/// Foot on a circular arc (polar angle about its centre). A point on the radius through the start has turned a full
/// circle: the end of the element before it catches it.
/// @return nothing where the foot lies outside the element, or its end cannot be evaluated. Measured: within 1e-9 m.
std::optional<Foot> ProjectOnArc(const Element& arc, Point point) noexcept;

/// Foot on a spiral, by bisection for the place where the tangent is square to the direction to the point.
///
/// The angle is compared in single precision, which stops the search when the foot is within about 1.4e-7 of the
/// offset, divided by 1 - curvature x offset: 0.14 micrometres at 1 m, 20 micrometres at 100 m.
/// @return nothing where the ends of the spiral do not bracket a foot, or a point of it cannot be evaluated
std::optional<Foot> ProjectOnSpiral(const Element& spiral, Point point) noexcept;

/// Foot on an element of any type; nothing for a type without a projection.
std::optional<Foot> Project(const Element& element, Point point) noexcept;

}  // namespace kesto
