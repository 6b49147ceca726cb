#include "element_curve.hpp"

#include <boost/math/quadrature/gauss.hpp>
#include <cstddef>

namespace reference {

namespace {

/// Ten nodes: over half a radian the rule's error is below 1e-30 of the length.
using Rule = boost::math::quadrature::gauss<Real, 10>;
inline const Real panelTurn("0.5");  // rad

Real CurvatureOf(double radius) { return radius == 0 ? Real(0) : 1 / Real(radius); }

}  // namespace

ElementCurve::ElementCurve(const ElementData& element)
    : x(element.x), y(element.y), start(ToRadians(element.azimuth)), curvature(0), rate(0) {
    const int side = element.right ? 1 : -1;
    if (element.type != 1) curvature = side * CurvatureOf(element.startRadius);
    if (element.type == 3) rate = (side * CurvatureOf(element.endRadius) - curvature) / element.length;
}

Place ElementCurve::Start() const { return {0, x, y}; }

Real ElementCurve::Direction(const Real& along) const { return start + along * (curvature + rate * along / 2); }

Real ElementCurve::Curvature(const Real& along) const { return curvature + rate * along; }

Place ElementCurve::Advance(const Place& from, const Real& to) const {
    const Real distance = to - from.along;
    const Real sharpest = fmax(abs(Curvature(from.along)), abs(Curvature(to)));
    const int panels = 1 + static_cast<int>(sharpest * abs(distance) / panelTurn);
    const Real half = distance / (2 * panels);
    Real sumX = 0;
    Real sumY = 0;
    for (int panel = 0; panel < panels; ++panel) {
        const Real middle = from.along + (2 * panel + 1) * half;
        for (std::size_t node = 0; node < Rule::abscissa().size(); ++node) {
            for (const int side : {-1, 1}) {
                const Real direction = Direction(middle + side * half * Rule::abscissa()[node]);
                sumX += Rule::weights()[node] * cos(direction);
                sumY += Rule::weights()[node] * sin(direction);
            }
        }
    }
    return {to, from.x + half * sumX, from.y + half * sumY};
}

Place ElementCurve::Beside(const Place& place, const Real& offset) const {
    const Real direction = Direction(place.along);
    return {place.along, place.x - offset * sin(direction), place.y + offset * cos(direction)};
}

Foot ElementCurve::FootNear(Place place, double pointX, double pointY) const {
    const Real settled("1e-14");  // m: the step after it would be its square
    constexpr int mostSteps = 50;
    for (int steps = 0;; ++steps) {
        const Real direction = Direction(place.along);
        const Real cosine = cos(direction);
        const Real sine = sin(direction);
        const Real dx = pointX - place.x;
        const Real dy = pointY - place.y;
        const Real offset = dy * cosine - dx * sine;
        const Real slope = 1 - Curvature(place.along) * offset;
        const Real step = (dx * cosine + dy * sine) / slope;
        if (abs(step) < settled || steps == mostSteps) return {place.along + step, offset, slope};
        place = Advance(place, place.along + step);
    }
}

}  // namespace reference
