/// Points of a clothoid, the curve whose curvature grows evenly with its length.
#pragma once

#include <optional>

#include "core/derived/element_frames.hpp"

namespace kesto {

/// Point in the frame of the tangent where a curve begins.
struct LocalPoint {
    double u = 0;     // m, along the tangent
    double v = 0;     // m, towards the side that the curve turns to
    double turn = 0;  // rad, angle turned so far
};

/// Tangent angle of a clothoid at distance l from its origin: k l^2 / 2 (rad).
double ClothoidAngle(double rate, double distance) noexcept;

/// Whether the points of a stretch come from the series.
bool HasSeries(const ClothoidStretch& stretch) noexcept;

/// Whether they do at a distance s (m) from its start: behind the start the clothoid may wind farther than at its ends.
bool SeriesReaches(const ClothoidStretch& stretch, double distance) noexcept;

/// What the series need at the start of a stretch.
ClothoidFrame FrameOf(const ClothoidStretch& stretch) noexcept;

/// Point at a distance s (m), signed, from the start of a stretch that HasSeries(), by the series.
LocalPoint SeriesPoint(const ClothoidFrame& frame, double distance) noexcept;

/// Point of a clothoid stretch at a distance from its start (Fresnel integrals).
///
/// Up to a tangent angle of 3 rad at the far end, and at s, the Fresnel integrals are summed as power series of 12
/// terms; beyond it the series cancel, and the tangent is integrated over the stretch by Gauss-Legendre quadrature.
/// @param stretch  the stretch
/// @param distance s (m), signed, from the stretch's start
/// @return the local point. Against quadrature in extended precision: series within 3e-14 of the distance from the
///         origin, quadrature within 1e-9 m. Nothing where a term of the series exceeds 1e32: such a spiral winds so
///         often that its points mean nothing.
std::optional<LocalPoint> ClothoidPoint(const ClothoidStretch& stretch, double distance) noexcept;

}  // namespace kesto
