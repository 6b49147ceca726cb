#include "exchange/landxml_alignment.hpp"

#include <cmath>
#include <limits>
#include <utility>

#include "core/tolerances.hpp"
#include "geometry/angles.hpp"
#include "geometry/element_geometry.hpp"
#include "geometry/transition.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

namespace {

inline constexpr double rightAngle = 90;  // degrees

/// An element as the document tells it: by its magnitude, from the end of the lower mileage. One of negative length is
/// thus turned about. Its tangent points towards rising mileages as every other's does, so its turn stays.
struct Stretch {
    Position start, end;
    double startRadius = 0;  // m, below 1e-7 infinite
    double endRadius = 0;
    double length = 0;  // m, not negative
    double chord = 0;   // m
    double turn = 0;    // degrees, not negative: deflection between the tangents at both ends
    bool turnsLeft = false;
};

/// Point at the end of an element in the frame of its start tangent. A spiral without curvature or length evaluates as
/// a point, which has no place on a clothoid: it ends where it starts.
LocalPoint LocalEnd(const Element& element) noexcept {
    return EvaluateLocal(element, element.length).value_or(LocalPoint{});
}

/// Where the tangents at both ends of an element meet (route surveying): u - v / tan(turn) along the start tangent.
/// Half-way to the element's end where no such point exists, on a spiral without any turn.
Position TangentIntersection(const Element& element) noexcept {
    const LocalPoint end = LocalEnd(element);
    const double meeting = end.u - end.v / std::tan(end.turn);
    const double along = std::isfinite(meeting) ? meeting : end.u / 2;
    const double azimuth = ToRadians(element.startAzimuth);
    return {element.startX + along * std::cos(azimuth), element.startY + along * std::sin(azimuth), 0};
}

Result<Stretch> StretchOf(const Element& element) noexcept {
    const Result<Position> start = Evaluate(element, 0);
    const Result<Position> end = Evaluate(element, element.length);
    if (!start || !end) return Fail(KESTO_ELEMENT_NOT_EVALUABLE);
    const LocalPoint local = LocalEnd(element);
    Stretch stretch{.start = *start,
                    .end = *end,
                    .startRadius = element.startRadius,
                    .endRadius = element.endRadius,
                    .length = std::fabs(element.length),
                    .chord = std::hypot(local.u, local.v),
                    .turn = ToDegrees(std::fabs(local.turn)),
                    .turnsLeft = TurnsLeft(element)};
    if (element.length < 0) {
        std::swap(stretch.start, stretch.end);
        std::swap(stretch.startRadius, stretch.endRadius);
    }
    return stretch;
}

/// The centre of an arc: square to its start direction, on the inner side.
Position CentreOf(const Stretch& arc, double radius) noexcept {
    double azimuth = arc.start.azimuth + (arc.turnsLeft ? 3 * rightAngle : rightAngle);
    if (azimuth >= fullCircle) azimuth -= fullCircle;
    return {arc.start.x + radius * std::cos(ToRadians(azimuth)), arc.start.y + radius * std::sin(ToRadians(azimuth)),
            azimuth};
}

/// Parameter A of a clothoid (m): infinite where its curvature does not change.
double ClothoidParameter(const Stretch& spiral) noexcept {
    if (spiral.length < tolerance::distance) return 0;
    const Result<EaseParam> ease = EaseParameters(spiral.startRadius, spiral.endRadius, spiral.length);
    return ease ? std::sqrt(ease->parameterSquared) : std::numeric_limits<double>::infinity();
}

double WrittenRadius(double radius) noexcept {
    return IsInfiniteRadius(radius) ? std::numeric_limits<double>::infinity() : radius;
}

const char* Rotation(const Stretch& stretch) noexcept { return stretch.turnsLeft ? "ccw" : "cw"; }

void WritePoint(const XmlElement& parent, const char* name, const Position& point) {
    parent.Child(name).Numbers(point.x, point.y);
}

void WriteLine(const XmlElement& geometry, const Stretch& line) {
    const XmlElement written = geometry.Child("Line");
    written.Set("dir", line.start.azimuth).Set("length", line.length);
    WritePoint(written, "Start", line.start);
    WritePoint(written, "End", line.end);
}

void WriteCurve(const XmlElement& geometry, const Stretch& arc, double radius) {
    const XmlElement written = geometry.Child("Curve");
    written.Set("length", arc.length)
        .Set("radius", radius)
        .Set("crvType", "arc")
        .Set("rot", Rotation(arc))
        .Set("chord", arc.chord)
        .Set("delta", arc.turn)
        .Set("dirStart", arc.start.azimuth)
        .Set("dirEnd", arc.end.azimuth);
    WritePoint(written, "Start", arc.start);
    WritePoint(written, "End", arc.end);
    WritePoint(written, "Center", CentreOf(arc, radius));
}

void WriteSpiral(const XmlElement& geometry, const Stretch& spiral, const Position& intersection) {
    const XmlElement written = geometry.Child("Spiral");
    written.Set("spiType", "clothoid")
        .Set("length", spiral.length)
        .SetUnbounded("radiusStart", WrittenRadius(spiral.startRadius))
        .SetUnbounded("radiusEnd", WrittenRadius(spiral.endRadius))
        .Set("rot", Rotation(spiral))
        .Set("chord", spiral.chord)
        .SetUnbounded("constant", ClothoidParameter(spiral))
        .Set("dirStart", spiral.start.azimuth)
        .Set("dirEnd", spiral.end.azimuth)
        .Set("theta", spiral.turn);
    WritePoint(written, "Start", spiral.start);
    WritePoint(written, "PI", intersection);
    WritePoint(written, "End", spiral.end);
}

/// Writes one element; a start record and what has no geometry are left out.
Outcome WriteElement(const XmlElement& geometry, const Element& element) {
    const bool spiral = IsType(element, ElementType::Spiral);
    const bool arc = IsType(element, ElementType::Arc);
    if (!spiral && !arc && !IsType(element, ElementType::Straight)) return {};
    const Result<Stretch> stretch = StretchOf(element);
    if (!stretch) return stretch.failure();
    if (spiral) {
        WriteSpiral(geometry, *stretch, TangentIntersection(element));
    } else if (arc && !IsInfiniteRadius(element.startRadius)) {
        WriteCurve(geometry, *stretch, element.startRadius);
    } else {
        WriteLine(geometry, *stretch);
    }
    return {};
}

Outcome WriteElements(const RoadDesign& road, const XmlElement& geometry) {
    for (std::int32_t i = 0; i < road.elements.Count(); ++i) {
        const Outcome written = WriteElement(geometry, road.elements[i]);
        if (!written) return FailRecord(KESTO_ELEMENT_NOT_EVALUABLE, KESTO_LIST_ELEMENTS, i);
        if (!geometry.AllUsable()) return FailRecord(KESTO_RESULT_NOT_FINITE, KESTO_LIST_ELEMENTS, i);
    }
    return {};
}

/// Writes where the stake mileage jumps, or begins to fall or to rise again: read from the built chain, so that a
/// broken chain stands where it acts, and one that misses the road nowhere.
void WriteEquations(const RoadDesign& road, const XmlElement& alignment) {
    bool falling = false;
    double back = road.settings.startMileage;
    double continuous = road.settings.startMileage;
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        const Element& element = road.elements[i];
        if (element.length == 0) continue;  // no station lies on it
        const bool falls = element.length < 0;
        if (element.startMileage != back || falls != falling) {
            alignment.Child("StaEquation")
                .Set("staAhead", element.startMileage)
                .Set("staBack", back)
                .Set("staInternal", continuous)
                .Set("staIncrement", falls ? "decreasing" : "increasing");
        }
        falling = falls;
        back = EndMileage(element);
        continuous += std::fabs(element.length);
    }
}

/// Writes the grade-change points. A curve is as long as its ends are apart along the road: the first and the last
/// point, and one whose radius or ends make no curve, are points.
Outcome WriteProfile(RoadDesign& road, const XmlElement& alignment) {
    const XmlElement line =
        alignment.Child("Profile").Set("name", "Profile Name").Child("ProfAlign").Set("name", "VerticalCurve");
    const std::vector<CurveSpan>& spans = CurrentProfile(road).spans;
    for (std::int32_t i = 0; i < road.verticalCurves.Count(); ++i) {
        const CurveSpan& span = spans[static_cast<std::size_t>(i)];
        const double length = span.end - span.start;
        const bool curved = !(length < tolerance::curveLength);  // what is no number is no point either
        const XmlElement point = line.Child(curved ? "ParaCurve" : "PVI");
        if (curved) point.Set("length", length);
        point.Numbers(span.point, road.verticalCurves[i].elevation);
        if (!point.AllUsable()) return FailRecord(KESTO_RESULT_NOT_FINITE, KESTO_LIST_VERTICAL_CURVES, i);
    }
    return {};
}

}  // namespace

Outcome WriteAlignment(RoadDesign& road, const XmlElement& alignments) {
    const XmlElement alignment = alignments.Child("Alignment");
    alignment.Set("name", "Alignment")
        .Set("length", road.totalLength)
        .Set("staStart", road.settings.startMileage)
        .Set("desc", "Plan Curve Design");
    if (Outcome written = WriteElements(road, alignment.Child("CoordGeom")); !written) return written;
    WriteEquations(road, alignment);
    return WriteProfile(road, alignment);
}

}  // namespace kesto
