/// An element of the alignment by its definition alone: its curvature runs evenly with its length, and the point is the
/// integral of the tangent.
#pragma once

#include "real.hpp"

namespace reference {

/// An element as the set writes it.
struct ElementData {
    int type;  // 1 straight, 2 arc, 3 spiral
    bool right;
    double x, y;                    // start point (m)
    double azimuth;                 // at the start (degrees)
    double startRadius, endRadius;  // m, 0 for infinite
    double length;                  // m, signed
};

/// A place on an element.
struct Place {
    Real along;  // m from the start
    Real x, y;   // m
};

/// The foot of a point.
struct Foot {
    Real along;   // m from the start
    Real offset;  // m, positive to the right
    Real slope;   // 1 - curvature x offset: by how much the foot's perpendicular turns on the point
};

class ElementCurve {
public:
    explicit ElementCurve(const ElementData& element);

    Place Start() const;
    /// The place at a distance from the start (m), integrated from another place (Gauss-Legendre).
    Place Advance(const Place& from, const Real& to) const;
    /// Angle of the tangent (rad, not reduced) and curvature (1/m, positive to the right).
    Real Direction(const Real& along) const;
    Real Curvature(const Real& along) const;
    /// The point at an offset to the right of a place.
    Place Beside(const Place& place, const Real& offset) const;
    /// The foot of a point on the element's line, by Newton's method from a place close to it.
    Foot FootNear(Place place, double x, double y) const;

private:
    Real x, y, start;      // m, m, rad
    Real curvature, rate;  // at the start (1/m), and its change (1/m^2)
};

}  // namespace reference
