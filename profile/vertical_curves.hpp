/// The grade-change points in order along the road, and what is derived of them.
#pragma once

#include <span>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// What the vertical curve mode says.
enum class CurveMode : std::int32_t { Radius = 0, GivenEnds = 1 };

/// Continuous mileage (m) that a stake mileage of the profile means: as it stands where it is not on the road or its
/// occurrence is -1. The road must be current.
double ProfileMileage(RoadDesign& road, StakeMileage stake) noexcept;

/// Inserts a grade-change point in its place along the road (by continuous mileage).
/// @return fails when its mileage is not finite or within 1e-7 m of a stored point's
Outcome InsertVerticalCurve(RoadDesign& road, const VerticalCurve& curve);

/// Inserts several grade-change points, all or none.
/// @return fails, with nothing added, as InsertVerticalCurve() would for one of them
Outcome InsertVerticalCurves(RoadDesign& road, std::span<const VerticalCurve> curves);

/// A grade-change point that was to be inserted.
struct TriedPoint {
    double place = 0;       // m: its continuous mileage, or its mileage as it stands where no road can be built
    bool inserted = false;  // false: another point is at its place, or its mileage is not finite
};

/// Inserts many grade-change points one by one, as InsertVerticalCurve() does, in any order: where the points lie is
/// worked out once.
/// @return one for each of them
std::vector<TriedPoint> InsertEachVerticalCurve(RoadDesign& road, std::span<const VerticalCurve> curves);

/// Overwrites a grade-change point in its place.
/// @return fails when the index addresses no record or the mileage is not finite
Outcome ReplaceVerticalCurve(RoadDesign& road, std::int32_t index, const VerticalCurve& curve);

/// Derives grades, distances, signs and curve ends of every grade-change point, and the places that heights are
/// searched by. The road must be current.
void DeriveProfile(RoadDesign& road);

/// The profile's places; derives first when points, mode or chain of a live road have changed since. The road must be
/// current.
const ProfileCache& CurrentProfile(const AskedRoad& asked);

}  // namespace kesto
