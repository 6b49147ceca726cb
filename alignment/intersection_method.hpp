/// The intersection method: a road from the polygon of its tangents.
#pragma once

#include <cstdint>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"
#include "geometry/projection.hpp"
#include "geometry/transition.hpp"

namespace kesto {

/// The curve at an intersection: entry spiral, arc, exit spiral, each of them possibly missing.
struct TangentCurve {
    bool exists = false;
    bool turnsRight = false;
    double tangentIn = 0;   // m: T1, from the curve's start to the intersection
    double tangentOut = 0;  // m: T2, from the intersection to the curve's end
    double arcLength = 0;   // m, 0 where there is no arc
    double length = 0;      // m, of the whole curve
};

/// Fits the curve of an intersection between its tangents (route surveying, unsymmetrical spiralled curves).
/// @param before, after the neighbouring points of the polygon (m)
/// @return no curve for a radius below 1e-7 m or a deflection below 1e-7 rad. Fails with KESTO_CURVE_DOES_NOT_FIT for
///         points that coincide, a deflection of 180 degrees, a negative or not finite radius or length, a spiral
///         between equal radii or between nearly equal ones that cannot be evaluated, and spirals that turn more than
///         the deflection (value = their turn, bound = the deflection, degrees)
Result<TangentCurve> FitCurve(Point before, const Intersection& intersection, Point after) noexcept;

/// Fits all curves of the road's intersections; the first and the last point have none, so nothing but their place is
/// read.
/// @return one for each intersection. Fails with KESTO_TOO_FEW_ELEMENTS for fewer than two intersections, as
///         FitCurve(), and with KESTO_CURVE_DOES_NOT_FIT where two curves overlap by more than 1 mm (value = the
///         tangents' sum, bound = the side, excess = the overlap)
Result<std::vector<TangentCurve>> FitCurves(const RoadDesign& road);

/// Makes elements from the intersections. Curves that overlap by up to a millimetre are joined as they are, and a
/// straight of up to 0.1 mm beside a curve is left out: the road behind is moved by as much when its elements are
/// joined. The start record stays on the first point, so on the first side it is the first curve that moves.
/// @param elements out: start record first; untouched on failure
/// @return fails as FitCurves()
Outcome GenerateFromIntersections(const RoadDesign& road, CountedList<Element>& elements);

/// Index of the intersection whose curve covers a stake mileage, both of its ends included; the later curve on a shared
/// point. Makes the road current.
/// @return -1 where no curve does, or in another design mode. Fails where no road can be built or the mileage is not on
///         it
Result<std::int32_t> IntersectionIndexAt(const AskedRoad& asked, StakeMileage stake);

}  // namespace kesto
