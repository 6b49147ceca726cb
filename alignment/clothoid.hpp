/// Points of a clothoid, the curve whose curvature grows evenly with its length.
#pragma once

#include <optional>

namespace kesto {

/// Point in the frame of the tangent where a curve begins.
struct LocalPoint {
    double u = 0;     // m, along the tangent
    double v = 0;     // m, towards the side that the curve turns to
    double turn = 0;  // rad, angle turned so far
};

/// A stretch of a clothoid as an element travels it.
struct ClothoidStretch {
    double rate;      // 1/m2: curvature rate k of the clothoid
    double start;     // m: distance of the stretch's start from the clothoid's origin, along the clothoid
    double sense;     // +1 travelled away from the origin (curvature grows), -1 towards it
    double farAngle;  // rad: tangent angle at the end farther from the origin
};

/// Tangent angle of a clothoid at distance l from its origin: k l^2 / 2 (rad).
double ClothoidAngle(double rate, double distance) noexcept;

/// Point of a clothoid stretch at a distance from its start (Fresnel integrals).
///
/// Up to a tangent angle of 3 rad at the far end the Fresnel integrals are summed as power series of 12 terms; beyond
/// it the series cancel, and the tangent is integrated over the stretch by Gauss-Legendre quadrature.
/// @param stretch  the stretch
/// @param distance s (m), signed, from the stretch's start
/// @return the local point. Against quadrature in extended precision: series within 3e-14 of the distance from the
///         origin, quadrature within 1e-9 m. Nothing where a term of the series exceeds 1e32: such a spiral winds so
///         often that its points mean nothing.
std::optional<LocalPoint> ClothoidPoint(const ClothoidStretch& stretch, double distance) noexcept;

}  // namespace kesto
