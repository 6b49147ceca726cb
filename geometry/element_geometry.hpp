/// Where a point of one element lies and which way the road runs there.
#pragma once

#include <optional>

#include "core/derived/element_frames.hpp"
#include "core/result.hpp"
#include "geometry/clothoid.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto {

/// A point of the road and the direction there.
struct Position {
    double x = 0;        // m, northing
    double y = 0;        // m, easting
    double azimuth = 0;  // degrees, of the tangent
};

/// What the type field of an element says.
enum class ElementType : std::int32_t { Start = 0, Straight = 1, Arc = 2, Spiral = 3 };

inline bool IsType(const Element& element, ElementType type) noexcept {
    return element.type == static_cast<std::int32_t>(type);
}

inline bool TurnsLeft(const Element& element) noexcept { return element.turnDirection == 0; }

/// A radius that is too small to be one stands for an infinite radius (a straight).
bool IsInfiniteRadius(double radius) noexcept;

/// Stake mileage at the end of an element (m).
inline double EndMileage(const Element& element) noexcept { return element.startMileage + element.length; }

/// The clothoid that a spiral is cut from (route surveying, compound transitions): k from the radii at both ends, and
/// where on it the spiral begins.
/// @return nothing for equal or two infinite radii
std::optional<ClothoidStretch> StretchOf(const Element& spiral) noexcept;

/// The direction of an azimuth (degrees).
Heading HeadingOf(double azimuth) noexcept;

/// Where an element begins and which way it turns.
StartFrame FrameOf(const Element& element) noexcept;

/// The position of a local point of an element.
Position PlaceOn(const StartFrame& start, const LocalPoint& local) noexcept;

/// What Evaluate() can be given so that it need not work it out again.
EvaluationFrame EvaluationFrameOf(const Element& element) noexcept;

/// Point of an element in the frame of its start tangent, v towards the side of the turn.
/// @param distance m, signed; not held against the element's length
/// @return nothing for a spiral between equal or two infinite radii or with diverging series, and for an unknown type
std::optional<LocalPoint> EvaluateLocal(const Element& element, double distance) noexcept;

/// Point and tangent of an element at a signed distance from its start (route surveying: straights, circular arcs and
/// clothoid transitions).
/// @param element  the element; an arc without a radius is a straight
/// @param distance m, signed, at most 1e-7 longer than the element
/// @return the position; straights and arcs within the rounding of the coordinates, spirals as ClothoidPoint() tells.
///         A spiral between two infinite radii gives its start point. Fails beyond the element, for a spiral between
///         equal radii or with diverging series, for an unknown type, and where the result would not be finite.
Result<Position> Evaluate(const Element& element, double distance) noexcept;

/// The same, in every bit, with the element's frame at hand.
Result<Position> Evaluate(const Element& element, const EvaluationFrame& frame, double distance) noexcept;

}  // namespace kesto
