/// A curve whose curvature runs evenly with its length. Straights, arcs and spirals are one formula: the integral of
/// the tangent, by quadrature in extended precision.
#pragma once

#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace kesto::second {

using Real = long double;
using Plane = std::complex<Real>;  // northing + i easting: a factor of i turns to the right

constexpr Real degree = std::numbers::pi_v<Real> / 180;

/// Gauss and Legendre's quadrature on [-1, 1].
struct Quadrature {
    static constexpr int order = 16;
    std::array<Real, order> nodes{}, weights{};

    Quadrature() {
        for (std::size_t i = 0; i < order; ++i) {
            Real x = std::cos(std::numbers::pi_v<Real> * (static_cast<Real>(i) + 0.75L) / (order + 0.5L));
            for (int steps = 0; steps < 8; ++steps) x -= std::legendre(order, x) / Slope(x);
            nodes[i] = x;
            weights[i] = 2 / ((1 - x * x) * Slope(x) * Slope(x));
        }
    }

private:
    static Real Slope(Real x) {
        return order * (x * std::legendre(order, x) - std::legendre(order - 1, x)) / (x * x - 1);
    }
};

struct Curve {
    int type{};
    Plane start;
    Real heading{};              // rad
    Real curvature{};            // 1/m at the start, positive to the right
    Real change{};               // 1/m per m
    Real length{};               // m
    Real continuous{}, stake{};  // mileages of the start (m)

    Real CurvatureAt(Real s) const { return curvature + change * s; }
    Real HeadingAt(Real s) const { return heading + s * (curvature + change * s / 2); }
    Plane DirectionAt(Real s) const { return std::polar(Real{1}, HeadingAt(s)); }

    Plane At(Real s) const {
        static const Quadrature rule;
        const Real turn = std::fabs(curvature * s) + std::fabs(change * s * s / 2);
        const int panels = 1 + static_cast<int>(turn);  // at most 1 rad each
        const Real half = s / static_cast<Real>(2 * panels);
        Plane sum = 0;
        for (int panel = 0; panel < panels; ++panel) {
            for (std::size_t i = 0; i < Quadrature::order; ++i) {
                sum += rule.weights[i] * DirectionAt(half * (static_cast<Real>(2 * panel + 1) + rule.nodes[i]));
            }
        }
        return start + half * sum;
    }

    /// The point as seen from the curve at s: real part ahead, imaginary part to the right.
    Plane Seen(Plane point, Real s) const { return std::conj(DirectionAt(s)) * (point - At(s)); }

    /// The rest of the curve from s on.
    Curve From(Real s) const {
        return {type, At(s), HeadingAt(s), CurvatureAt(s), change, length - s, continuous + s, stake + s};
    }
};

}  // namespace kesto::second
