/// The design height from the geometry of the profile: tangents between grade-change points, rounded by parabolas.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "real.hpp"

namespace reference {

/// A grade-change point with the reach of its curve.
struct GradePoint {
    Real mileage;        // continuous (m)
    Real elevation;      // m
    Real before, after;  // m: length of the curve before and behind the point, 0 for none
};

class ProfileCurve {
public:
    /// @param points in their order along the road, the curves apart from each other
    explicit ProfileCurve(std::vector<GradePoint> pointsAlong) : points(std::move(pointsAlong)) {}

    /// Height (m) at a continuous mileage (m); level before the first and behind the last point.
    Real Height(const Real& mileage) const;
    /// Grade from a point to the next (ratio).
    Real GradeBehind(std::size_t point) const;

private:
    std::vector<GradePoint> points;
};

}  // namespace reference
