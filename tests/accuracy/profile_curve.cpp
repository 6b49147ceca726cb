#include "profile_curve.hpp"

#include <cstddef>

namespace reference {

Real ProfileCurve::GradeBehind(std::size_t point) const {
    const GradePoint& from = points[point];
    const GradePoint& to = points[point + 1];
    return (to.elevation - from.elevation) / (to.mileage - from.mileage);
}

Real ProfileCurve::Height(const Real& mileage) const {
    if (mileage <= points.front().mileage) return points.front().elevation;
    if (mileage >= points.back().mileage) return points.back().elevation;
    std::size_t behind = 1;  // the first point that does not lie before the mileage
    while (points[behind].mileage < mileage) ++behind;
    const Real fromPoint = mileage - points[behind - 1].mileage;
    const Real toPoint = points[behind].mileage - mileage;
    const Real tangent = points[behind - 1].elevation + GradeBehind(behind - 1) * fromPoint;
    // The curve leaves the tangent with the square of the distance from its end, up to change x L1 x L2 / (2 (L1 + L2))
    // below or above the point (vertical parabola of two lengths; with equal ones the symmetric parabola).
    const auto departure = [&](std::size_t at, const Real& distance, const Real& reach) -> Real {
        if (at == 0 || at + 1 == points.size() || !(distance < reach)) return 0;
        const GradePoint& point = points[at];
        const Real change = GradeBehind(at) - GradeBehind(at - 1);
        const Real middle = change * point.before * point.after / (2 * (point.before + point.after));
        const Real share = (reach - distance) / reach;
        return middle * share * share;
    };
    return tangent + departure(behind - 1, fromPoint, points[behind - 1].after) +
           departure(behind, toPoint, points[behind].before);
}

}  // namespace reference
