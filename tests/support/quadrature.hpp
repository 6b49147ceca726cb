/// The point of a curve whose curvature runs evenly with its length, by direct integration in extended precision: an
/// evaluation that shares no formula with the library.
#pragma once

#include <cmath>

#include "support/records.hpp"

namespace kesto::test {

struct Integrated {
    long double x, y;
    long double azimuth;  // radians, not normalised
};

/// Composite Simpson rule over the tangent direction, at least 2000 steps of at most 0.01 rad.
inline Integrated Integrate(const Element& element, long double distance) {
    const auto curvatureOf = [](long double radius) { return radius < 1e-7L ? 0.0L : 1.0L / radius; };
    const long double side = element.turnDirection == 0 ? -1.0L : 1.0L;
    const long double from = element.type == 1 ? 0.0L : side * curvatureOf(element.startRadius);
    const long double to = element.type == 3 ? side * curvatureOf(element.endRadius) : from;
    const long double change = element.type == 3 ? (to - from) / element.length : 0.0L;
    const long double start = element.startAzimuth * std::acos(-1.0L) / 180.0L;
    const auto direction = [&](long double s) { return start + s * (from + change * s / 2); };
    const long double turn = std::fabs(from * distance) + std::fabs(change * distance * distance);
    const long steps = 2000 + 2 * static_cast<long>(turn * 100);
    const long double h = distance / static_cast<long double>(steps);
    long double x = 0;
    long double y = 0;
    for (long i = 0; i <= steps; ++i) {
        const long double weight = i == 0 || i == steps ? 1.0L : (i % 2 == 1 ? 4.0L : 2.0L);
        const long double angle = direction(h * static_cast<long double>(i));
        x += weight * std::cos(angle);
        y += weight * std::sin(angle);
    }
    return {element.startX + x * h / 3, element.startY + y * h / 3, direction(distance)};
}

}  // namespace kesto::test
