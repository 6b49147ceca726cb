// Checks the plan: the shape of every element, and how it joins the one before.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "checks/checked.hpp"
#include "road/conventions.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double sameRadius = 1e-3;  // m: radii are published to the millimetre
constexpr double fullCircle = 360;   // degrees
constexpr double degrees = 180 / std::numbers::pi;
constexpr int lengthDecimals = 3;  // of metres
constexpr std::int32_t startType = 0;

using ElementInFile = FromFile<Element>;

std::string Metres(double metres) { return FormatReal(metres, lengthDecimals) + " m"; }

/// The elements that coordinate points are made into, without broken chains to split them: the i-th begins at the i-th
/// point.
std::vector<ElementInFile> ElementsOfPoints(const Checked& checked) {
    const auto points = checked.file.Records<Coordinate>(KESTO_LIST_COORDINATES, GetCoordinate);
    const RoadHandle whole = NewRoad();
    SetRoadDesignMode(whole.get(), pointMode);
    for (const auto& it : points) AddCoordinate(whole.get(), &it.record, -1);
    if (!MakeCurrent(whole.get()) || GetElementCount(whole.get()) != static_cast<std::int32_t>(points.size()))
        return {};
    std::vector<ElementInFile> elements;
    Element element{};
    for (std::size_t i = 1; i < points.size() && GetElement(whole.get(), static_cast<std::int32_t>(i), &element); ++i) {
        elements.push_back({element, points[i - 1].line});
    }
    return elements;
}

/// Signed curvature (1/m), positive to the right.
double Curvature(const Element& element, double radius) noexcept {
    if (element.type == straightType || radius < infiniteRadius) return 0;
    return (element.turnDirection == 0 ? -1 : 1) / radius;
}
double StartRadius(const Element& element) noexcept { return element.type < arcType ? 0 : element.startRadius; }
double EndRadius(const Element& element) noexcept {
    return element.type == spiralType ? element.endRadius : StartRadius(element);
}

/// Angle that an element turns (degrees): the length times the mean curvature of its ends.
double TurnedAngle(const Element& element) noexcept {
    const double ends = Curvature(element, StartRadius(element)) + Curvature(element, EndRadius(element));
    return std::fabs(element.length * ends / 2) * degrees;
}

void CheckArc(const Element& it, std::int64_t line, Findings& findings) {
    if (it.startRadius < infiniteRadius) {
        findings.Error(line, "arc-radius", "the arc has no radius and runs straight on");
    } else if (it.endRadius >= infiniteRadius && !(std::fabs(it.endRadius - it.startRadius) <= sameRadius)) {
        findings.Warning(line, "arc-radius",
                         "the arc ends with another radius (" + Metres(it.endRadius) + ") than it begins with (" +
                             Metres(it.startRadius) + "), which holds");
    }
}

void CheckSpiral(const Element& it, std::int64_t line, Findings& findings) {
    if (it.startRadius < infiniteRadius && it.endRadius < infiniteRadius) {
        findings.Error(line, "spiral-radii", "the spiral has no radius at either end and leads nowhere");
    } else if (std::fabs(it.startRadius - it.endRadius) < infiniteRadius) {
        findings.Error(line, "spiral-radii",
                       "the spiral has the same radius at both ends to within a ten-millionth of a metre: " +
                           FormatShort(it.startRadius) + " m and " + FormatShort(it.endRadius) + " m");
    }
}

void CheckShape(RoadDesign* road, const ElementInFile& from, Findings& findings) {
    const Element& it = from.record;
    if (it.type < straightType || it.type > spiralType) {
        findings.Error(from.line, "element-type",
                       "type " + std::to_string(it.type) + " is no straight (1), arc (2) or spiral (3)");
        return;
    }
    if (it.length <= 0) {
        findings.Note(from.line, "element-length",
                      std::string("the ") + ElementName(it) +
                          (it.length < 0 ? " has a negative length: mileages decrease along it" : " has no length"));
    }
    if (it.type == arcType) CheckArc(it, from.line, findings);
    if (it.type == spiralType) CheckSpiral(it, from.line, findings);
    const double turned = TurnedAngle(it);
    if (turned > fullCircle) {
        findings.Error(from.line, "turns-too-far",
                       std::string("the ") + ElementName(it) + " is " + Metres(std::fabs(it.length)) +
                           " long and turns " + FormatReal(turned, 1) + " degrees: more than a full circle");
        return;
    }
    double x = 0;
    double y = 0;
    double azimuth = 0;
    const bool told = findings.HasErrorAt(from.line);
    if (!told && !GetElementPositionAndAzimuth(road, &it, it.length, &x, &y, &azimuth)) {
        findings.Error(from.line, "element-shape",
                       std::string("the ") + ElementName(it) + " cannot be evaluated: " + DescribeLastFailure(road));
    }
}

void CheckKink(const ElementInFile& before, const ElementInFile& from, double kink, Findings& findings) {
    const auto grade = angleGrades.Of(kink);
    if (!grade) return;
    if (before.record.type == straightType && from.record.type == straightType) {
        // Roads are laid out with corners between straights, but a curve should touch its neighbours: no error here.
        findings.Add(from.line, std::min(*grade, Severity::Warning), "kink",
                     "a corner of " + Degrees(kink) + " between two straights");
        return;
    }
    const char* const name = before.record.type == startType ? "start record" : ElementName(before.record);
    findings.Add(from.line, *grade, "kink",
                 std::string("the ") + ElementName(from.record) + " begins with another azimuth than the " + name +
                     " in line " + std::to_string(before.line) + " ends with: a kink of " + Degrees(kink));
}

/// The neighbour of a spiral should begin with the radius that the spiral ends with. Between other elements the
/// curvature may jump by design.
void CheckRadii(const ElementInFile& before, const ElementInFile& from, Findings& findings) {
    const Element& one = before.record;
    const Element& other = from.record;
    if (one.type < straightType || (one.type != spiralType && other.type != spiralType)) return;
    const double radius = EndRadius(one);
    const double next = StartRadius(other);
    const double curvature = Curvature(one, radius);
    const double nextCurvature = Curvature(other, next);
    const bool sameSide = (curvature < 0) == (nextCurvature < 0) && (curvature > 0) == (nextCurvature > 0);
    if (sameSide && (curvature == 0 || std::fabs(radius - next) <= sameRadius)) return;
    const auto side = [](double bend, double r) {
        return bend == 0 ? std::string("straight") : Metres(r) + (bend < 0 ? " to the left" : " to the right");
    };
    findings.Warning(from.line, "radius-jump",
                     std::string("the ") + ElementName(one) + " in line " + std::to_string(before.line) +
                         " ends with " + side(curvature, radius) + ", the " + ElementName(other) + " begins with " +
                         side(nextCurvature, next));
}

void CheckJoint(RoadDesign* road, const ElementInFile& before, const ElementInFile& from, Findings& findings) {
    double x = 0;
    double y = 0;
    double azimuth = 0;
    if (!GetElementPositionAndAzimuth(road, &before.record, before.record.length, &x, &y, &azimuth)) return;
    const double gap = std::hypot(from.record.startX - x, from.record.startY - y);
    if (const auto grade = lengthGrades.Of(gap)) {
        findings.Add(from.line, *grade, "gap",
                     std::string("the ") + ElementName(from.record) + " begins " + Distance(gap) + " from where line " +
                         std::to_string(before.line) + " ends; the road goes on from there");
    }
    CheckKink(before, from, std::fabs(std::remainder(from.record.startAzimuth - azimuth, fullCircle)), findings);
    CheckRadii(before, from, findings);
}

void CheckElements(const Checked& checked, const std::vector<ElementInFile>& elements) {
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const bool isStart = i == 0 && elements[i].record.type == startType;
        if (!isStart) CheckShape(checked.road, elements[i], checked.findings);
        if (i > 0) CheckJoint(checked.road, elements[i - 1], elements[i], checked.findings);
    }
}

void CheckAzimuths(const Checked& checked) {
    for (const auto& [element, line] : checked.file.Elements()) {
        if (std::fabs(element.startAzimuth) <= fullCircle) continue;
        checked.findings.Warning(
            line, "azimuth-range",
            "the azimuth is more than a full circle: " + FormatShort(element.startAzimuth) + " degrees");
    }
}

/// Tells of intersections without a curve: the road has a corner there.
void CheckCorners(const Checked& checked) {
    const auto points = checked.file.Records<Intersection>(KESTO_LIST_INTERSECTIONS, GetIntersection);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        if (points[i].record.radius >= infiniteRadius) continue;
        const auto azimuth = [&](std::size_t from) {
            const Intersection& one = points[from].record;
            const Intersection& other = points[from + 1].record;
            return std::atan2(other.y - one.y, other.x - one.x) * degrees;
        };
        const double corner = std::fabs(std::remainder(azimuth(i) - azimuth(i - 1), fullCircle));
        if (angleGrades.Of(corner)) {
            checked.findings.Note(points[i].line, "kink",
                                  "the intersection has no curve: a corner of " + Degrees(corner));
        }
    }
}

}  // namespace

void CheckAlignment(const Checked& checked) {
    const std::int32_t mode = GetRoadDesignMode(checked.road);
    if (mode == elementMode) {
        CheckAzimuths(checked);
        CheckElements(checked, checked.file.Elements());
    }
    if (mode == pointMode) CheckElements(checked, ElementsOfPoints(checked));
    if (mode == intersectionMode) CheckCorners(checked);
}

}  // namespace kesto::host
