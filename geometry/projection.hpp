/// The foot of a plane point on one element.
#pragma once

#include <cmath>
#include <numbers>
#include <optional>

#include "core/tolerances.hpp"
#include "geometry/element_geometry.hpp"
#include "kesto_road/kesto_road.h"

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
inline double Distance(Point one, Point other) noexcept {
    const double dx = other.x - one.x;
    const double dy = other.y - one.y;
    return std::sqrt(dx * dx + dy * dy);
}

/// The start point of an element.
inline Point StartOf(const Element& element) noexcept { return {element.startX, element.startY}; }

/// Whether a point counts as an element's start point: its foot is then the start, whatever the element is like.
inline bool IsAtStart(Point start, Point point) noexcept {
    return std::fabs(point.y - start.y) + std::fabs(point.x - start.x) < tolerance::startPoint;
}

/// Foot on a straight, whose direction is that from its start point to its end point. Measured in grid coordinates:
/// within 1e-9 m, or that times offset by length where the offset is the greater one.
/// @return nothing where the foot lies outside the element, or its end cannot be evaluated
std::optional<Foot> ProjectOnLine(const Element& line, Point point) noexcept;

/// Foot on a circular arc (polar angle about its centre). A point on the radius through the start has turned a full
/// circle: the end of the element before it catches it. Measured in grid coordinates: within 3e-9 m; nearly at the
/// centre within 4e-10 m divided by 1 - curvature x offset.
/// @return nothing where the foot lies outside the element, or its end cannot be evaluated
std::optional<Foot> ProjectOnArc(const Element& arc, Point point) noexcept;

/// Foot on a spiral, by bisection for the place where the tangent is square to the direction to the point.
///
/// The angle is compared in single precision, which stops the search when the foot is within about 1.4e-7 of the
/// offset, divided by 1 - curvature x offset: 0.14 micrometres at 1 m, 20 micrometres at 100 m.
/// @return nothing where the ends of the spiral do not bracket a foot, or a point of it cannot be evaluated
std::optional<Foot> ProjectOnSpiral(const Element& spiral, Point point) noexcept;

// The parts, for callers that ask about the same element again

/// What the foot on a straight is computed from.
/// @param end its end, evaluated
FootFrame LineFrameOf(const Element& line, const Position& end) noexcept;

/// What the foot on an arc with a radius is computed from. There is a foot only where its end can be evaluated.
FootFrame ArcFrameOf(const Element& arc) noexcept;

/// Foot of a point that is not at the start, by the frame.
/// @return nothing where it lies outside the element
std::optional<Foot> FootOnLine(const FootFrame& line, Point point) noexcept;
std::optional<Foot> FootOnArc(const FootFrame& arc, Point point) noexcept;

inline constexpr double rightAngle = std::numbers::pi / 2;  // rad
inline constexpr int mostFootHalvings = 100;                // of the bracket around the foot on a spiral

/// How a point is seen from a place of a spiral.
struct Look {
    double ahead;     // m: how far the point lies in front, times the length of the direction vector
    double distance;  // m: to the point, times the length of the direction vector
    float cosine;     // of the angle between the tangent and the vector to the point, in single precision on purpose
};
inline Look LookFrom(Point place, const Heading& heading, double headingLength, Point point) noexcept {
    const double dx = point.x - place.x;
    const double dy = point.y - place.y;
    const double ahead = dx * heading.cosine + dy * heading.sine;
    const double distance = std::sqrt(dx * dx + dy * dy) * headingLength;
    return {ahead, distance, static_cast<float>(ahead / distance)};
}

/// Arc cosine in single precision (rad). Near a right angle, where its last bit decides which places of a spiral count
/// as the foot, it is the exact one, rounded: the same with every mathematical library. (The cubic term is below
/// 1e-19.)
inline float ArcCosine(float cosine) noexcept {
    constexpr float nearRight = 4e-7F;
    if (std::fabs(cosine) > nearRight) return std::acos(cosine);
    return static_cast<float>(rightAngle - static_cast<double>(cosine));
}

/// Length of a direction vector: 1 but for rounding.
inline double LengthOf(const Heading& heading) noexcept {
    return std::sqrt(heading.cosine * heading.cosine + heading.sine * heading.sine);
}

/// The foot at a place of a spiral.
inline Foot FootAt(double along, Point place, const Heading& heading, Point point) noexcept {
    const double distance = Distance(place, point);
    const bool isLeft = heading.cosine * (point.y - place.y) - heading.sine * (point.x - place.x) < 0;
    return {along, isLeft ? -distance : distance};
}

/// Foot on an element of any type; nothing for a type without a projection.
std::optional<Foot> Project(const Element& element, Point point) noexcept;

}  // namespace kesto
