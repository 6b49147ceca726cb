#include "alignment/intersection_method.hpp"

#include <cmath>
#include <numbers>
#include <optional>

#include "alignment/chain_builder.hpp"
#include "alignment/element_generation.hpp"
#include "alignment/generated_elements.hpp"
#include "core/tolerances.hpp"
#include "geometry/angles.hpp"

namespace kesto {

namespace {

inline constexpr std::int32_t fewestPoints = 2;

Point PointOf(const Intersection& intersection) noexcept { return {intersection.x, intersection.y}; }

bool IsLength(double length) noexcept { return length >= 0 && std::isfinite(length); }

bool HasUsableNumbers(const Intersection& it) noexcept {
    return IsLength(it.radius) && IsLength(it.spiralIn) && IsLength(it.spiralOut) && IsLength(it.radiusIn) &&
           IsLength(it.radiusOut);
}

/// Deflection of the polygon at a point: signed, positive to the right (rad).
double Deflection(Point before, Point at, Point after) noexcept {
    const Point in{at.x - before.x, at.y - before.y};
    const Point out{after.x - at.x, after.y - at.y};
    return std::atan2(in.x * out.y - in.y * out.x, in.x * out.x + in.y * out.y);
}

/// A point on the way from one point to another, at a distance from the first (m).
Point Along(Point from, Point to, double distance) noexcept {
    const double share = distance / Distance(from, to);
    return {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
}

/// The pieces of a curve in the order of travel.
std::vector<Piece> PiecesOf(const Intersection& it, const TangentCurve& curve) {
    std::vector<Piece> pieces;
    if (!curve.exists) return pieces;
    const bool right = curve.turnsRight;
    if (it.spiralIn > 0) pieces.push_back({ElementType::Spiral, right, it.radiusIn, it.radius, it.spiralIn});
    if (curve.arcLength > 0) pieces.push_back({ElementType::Arc, right, it.radius, it.radius, curve.arcLength});
    if (it.spiralOut > 0) pieces.push_back({ElementType::Spiral, right, it.radius, it.radiusOut, it.spiralOut});
    return pieces;
}

/// What is left of a polygon side between two curves (m), negative where they overlap.
double Rest(const RoadDesign& road, const std::vector<TangentCurve>& curves, std::int32_t side) noexcept {
    const auto at = static_cast<std::size_t>(side);
    return Distance(PointOf(road.intersections[side]), PointOf(road.intersections[side + 1])) - curves[at].tangentOut -
           curves[at + 1].tangentIn;
}

Failure DoesNotFit(std::int32_t record) noexcept {
    return FailRecord(KESTO_CURVE_DOES_NOT_FIT, KESTO_LIST_INTERSECTIONS, record);
}

Outcome RequireRoom(const RoadDesign& road, const std::vector<TangentCurve>& curves) noexcept {
    for (std::int32_t side = 0; side + 1 < road.intersections.Count(); ++side) {
        const double length = Distance(PointOf(road.intersections[side]), PointOf(road.intersections[side + 1]));
        const double rest = Rest(road, curves, side);
        if (!(length > tolerance::samePoint) || !std::isfinite(length)) return DoesNotFit(side + 1);
        if (!(rest >= -tolerance::tangentOverlap)) {
            // The curve at the side's end is told, or the one at its start where there is none.
            Failure failure = FailLimit(KESTO_CURVE_DOES_NOT_FIT, KESTO_LIMIT_POLYGON_SIDE, length - rest, length);
            failure.list = KESTO_LIST_INTERSECTIONS;
            failure.record = curves[static_cast<std::size_t>(side) + 1].exists ? side + 1 : side;
            return failure;
        }
    }
    return {};
}

/// Writes a curve from its start on; every piece begins where the one before ends.
/// @return whether every piece could be evaluated
bool AddCurve(ElementWriter& writer, const std::vector<Piece>& pieces, Point start, double azimuth) {
    for (const Piece& piece : pieces) {
        writer.Add(piece, start, azimuth);
        const Element& element = writer.Elements()[writer.Elements().Count() - 1];
        const std::optional<LocalPoint> local = EvaluateLocal(element, element.length);
        const Result<Position> end = Evaluate(element, element.length);
        if (!local || !end) return false;
        start = {end->x, end->y};
        // The position's azimuth would not do: one near 0 becomes 0 there, and the pieces behind would be turned.
        azimuth = NormalisedAzimuth(azimuth + ToDegrees(piece.turnsRight ? local->turn : -local->turn));
    }
    return true;
}

/// Whether a straight is left on a polygon side: a short one between curves is left out.
bool HasStraight(const std::vector<TangentCurve>& curves, std::int32_t side, double rest) noexcept {
    const auto at = static_cast<std::size_t>(side);
    const bool atCurve = curves[at].exists || curves[at + 1].exists;
    return rest > (atCurve ? tolerance::shortStraight : 0);
}

}  // namespace

Result<TangentCurve> FitCurve(Point before, const Intersection& intersection, Point after) noexcept {
    const Point at = PointOf(intersection);
    const Failure refused = Fail(KESTO_CURVE_DOES_NOT_FIT);
    if (!(Distance(before, at) > tolerance::samePoint) || !(Distance(at, after) > tolerance::samePoint)) return refused;
    if (!HasUsableNumbers(intersection)) return refused;
    const double signedDeflection = Deflection(before, at, after);
    const double deflection = std::fabs(signedDeflection);
    if (!(std::numbers::pi - deflection > tolerance::deflection)) return refused;
    TangentCurve curve;
    curve.turnsRight = signedDeflection > 0;
    const double radius = intersection.radius;
    if (IsInfiniteRadius(radius) || deflection < tolerance::deflection) return curve;
    const auto in = TransitionTo(intersection.radiusIn, radius, intersection.spiralIn);
    const auto out = TransitionTo(intersection.radiusOut, radius, intersection.spiralOut);
    if (!in || !out) return refused;
    const double arcAngle = deflection - in->end.turn - out->end.turn;
    if (!(arcAngle >= -tolerance::arcAngle)) {
        return FailLimit(KESTO_CURVE_DOES_NOT_FIT, KESTO_LIMIT_DEFLECTION, ToDegrees(in->end.turn + out->end.turn),
                         ToDegrees(deflection));
    }
    // ((R + p2) - (R + p1) cos) / sin, with R (1 - cos) / sin taken together: it would cancel on flat curves.
    const double arcTangent = radius * std::tan(deflection / 2);
    const double cosine = std::cos(deflection);
    const double sine = std::sin(deflection);
    curve.exists = true;
    curve.tangentIn = arcTangent + (out->shift - in->shift * cosine) / sine + in->tangentOffset;
    curve.tangentOut = arcTangent + (in->shift - out->shift * cosine) / sine + out->tangentOffset;
    curve.arcLength = arcAngle * radius > tolerance::arcLength ? arcAngle * radius : 0;
    curve.length = intersection.spiralIn + curve.arcLength + intersection.spiralOut;
    return curve;
}

Result<std::vector<TangentCurve>> FitCurves(const RoadDesign& road) {
    const std::int32_t count = road.intersections.Count();
    if (count < fewestPoints) {
        Failure failure = FailLimit(KESTO_TOO_FEW_ELEMENTS, KESTO_LIMIT_RECORD_COUNT, count, fewestPoints);
        failure.list = KESTO_LIST_INTERSECTIONS;
        return failure;
    }
    std::vector<TangentCurve> curves(static_cast<std::size_t>(count));
    for (std::int32_t i = 1; i + 1 < count; ++i) {
        const Result<TangentCurve> curve =
            FitCurve(PointOf(road.intersections[i - 1]), road.intersections[i], PointOf(road.intersections[i + 1]));
        if (!curve) {
            Failure failure = curve.failure();
            failure.list = KESTO_LIST_INTERSECTIONS;
            failure.record = i;
            return failure;
        }
        curves[static_cast<std::size_t>(i)] = *curve;
    }
    if (const Outcome room = RequireRoom(road, curves); !room) return room.failure();
    return curves;
}

Outcome GenerateFromIntersections(const RoadDesign& road, CountedList<Element>& elements) {
    const Result<std::vector<TangentCurve>> curves = FitCurves(road);
    if (!curves) return curves.failure();
    const CountedList<Intersection>& points = road.intersections;
    ElementWriter writer(road.settings.startMileage);
    writer.Start(PointOf(points[0]), AzimuthBetween(PointOf(points[0]), PointOf(points[1])));
    for (std::int32_t side = 0; side + 1 < points.Count(); ++side) {
        const Point from = PointOf(points[side]);
        const Point to = PointOf(points[side + 1]);
        const double azimuth = AzimuthBetween(from, to);
        const TangentCurve& behind = (*curves)[static_cast<std::size_t>(side)];
        const TangentCurve& ahead = (*curves)[static_cast<std::size_t>(side) + 1];
        const double rest = Rest(road, *curves, side);
        if (HasStraight(*curves, side, rest)) {
            writer.Add({.length = rest}, Along(from, to, behind.tangentOut), azimuth);
        }
        const Point curveStart = Along(to, from, ahead.tangentIn);
        if (!AddCurve(writer, PiecesOf(points[side + 1], ahead), curveStart, azimuth)) return DoesNotFit(side + 1);
    }
    elements.Swap(writer.Elements());
    return {};
}

namespace {

inline constexpr std::int32_t noIntersection = -1;

/// Index of the intersection whose curve covers a continuous mileage (m) of a current road, or -1.
Result<std::int32_t> CurveCovering(const RoadDesign& road, double continuous) {
    const Result<std::vector<TangentCurve>> curves = FitCurves(road);
    if (!curves) return curves.failure();
    double start = road.settings.startMileage;
    std::int32_t found = noIntersection;
    for (std::int32_t i = 1; i < road.intersections.Count(); ++i) {
        const TangentCurve& curve = (*curves)[static_cast<std::size_t>(i)];
        const double rest = Rest(road, *curves, i - 1);
        if (HasStraight(*curves, i - 1, rest)) start += rest;
        const double end = start + curve.length;
        if (curve.exists && continuous - start > -tolerance::mileage && end - continuous > -tolerance::mileage) {
            found = i;
        }
        start = end;
    }
    return found;
}

}  // namespace

Result<std::int32_t> IntersectionIndexAt(const AskedRoad& asked, StakeMileage stake) {
    const auto mode = static_cast<DesignMode>(asked.road.settings.roadDesignMode);
    if (mode != DesignMode::Intersections) return noIntersection;
    const Result<double> continuous = ContinuousMileage(asked, stake);
    if (!continuous) return continuous.failure();
    return CurveCovering(asked.road, *continuous);
}

}  // namespace kesto
