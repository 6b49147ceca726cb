// Checks the grade-change points and their vertical curves.
#include <algorithm>
#include <cmath>
#include <vector>

#include "checks/checked.hpp"
#include "road/conventions.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr int lengthDecimals = 3;  // of metres
constexpr int gradeDecimals = 3;   // of per cent
constexpr double perCent = 100;
constexpr double smallestBreak = 1e-5;  // of grade: a smaller one comes from rounded elevations
constexpr std::int32_t unset = -1;      // occurrence of a curve end that is not given

/// A grade-change point with its line and the ends of its curve, in continuous mileage (m).
struct Point {
    double mileage;
    std::int32_t occurrence;
    std::int64_t line;
    double elevation;  // m
    double radius;     // m; 0 where curves are given by their ends
    double place;
    double start, end;
};

/// Tells of a place of the profile that is not on the road. Before the road's start and behind its end it may be meant,
/// so that is a warning only; continuous mileages are meant to reach beyond the road, so that is a note.
void TellOffRoad(const Checked& checked, std::int64_t line, std::int32_t occurrence, const FilePlace& place,
                 std::string_view code, const std::string& what) {
    if (!checked.line || place.found || StandsAtEnd(checked, place)) return;
    const Severity severity = occurrence < 0 ? Severity::Note : place.beyond ? Severity::Warning : Severity::Error;
    checked.findings.Add(line, severity, code, what + " is not on the road: " + place.why);
}

/// The points of the file, in the order of the road.
std::vector<Point> PointsOfFile(const Checked& checked) {
    std::vector<Point> points;
    for (const auto& [it, line] : checked.file.GradePoints()) {
        const FilePlace place = PlaceOf(checked, it.mileage, it.occurrence);
        const double at = place.continuous;
        points.push_back({it.mileage, it.occurrence, line, it.elevation, it.radius, at, at, at});
        TellOffRoad(checked, line, it.occurrence, place, "grade-point-off-road", "the grade-change point");
    }
    std::stable_sort(points.begin(), points.end(),
                     [](const Point& one, const Point& other) { return one.place < other.place; });
    return points;
}

/// A given end of a curve in continuous mileage (m); one that is not set lies at the neighbouring point.
double GivenEnd(const Checked& checked, const Point& point, double mileage, std::int32_t occurrence,
                const Point& neighbour, const char* what) {
    if (occurrence == unset) return neighbour.place;
    const FilePlace place = PlaceOf(checked, mileage, occurrence);
    TellOffRoad(checked, point.line, occurrence, place, "curve-end-off-road", what);
    return place.continuous;
}

/// The ends of the curves, as the design run has derived or kept them. The first and the last point have no curve.
void FindEnds(const Checked& checked, std::vector<Point>& points) {
    const bool byRadius = GetVerticalCurveMode(checked.road) == radiusMode;
    VerticalCurve curve{};
    for (std::int32_t i = 1; GetVerticalCurve(checked.road, i, &curve); ++i) {
        const auto point = std::find_if(points.begin(), points.end(), [&](const Point& it) {
            return it.mileage == curve.mileage && it.occurrence == curve.occurrence;
        });
        if (point == points.begin() || point == points.end() || point + 1 == points.end()) continue;
        if (byRadius) {
            point->start -= curve.tangentLength;
            point->end += curve.tangentLength;
        } else {
            point->start = GivenEnd(checked, *point, curve.startMileage, curve.startOccurrence, *(point - 1),
                                    "the start of the curve");
            point->end =
                GivenEnd(checked, *point, curve.endMileage, curve.endOccurrence, *(point + 1), "the end of the curve");
        }
    }
}

void CheckCurves(const Checked& checked, const std::vector<Point>& points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Point& it = points[i];
        if (!(it.start <= it.place + sameMileage && it.place <= it.end + sameMileage)) {
            checked.findings.Error(it.line, "curve-ends", "the curve does not hold its grade-change point");
        }
        const double overlap = points[i - 1].end - it.start;
        const auto grade = lengthGrades.Of(overlap);
        if (!grade) continue;
        checked.findings.Add(it.line, *grade, "curves-overlap",
                             "the curve begins " + Distance(overlap) + " before the one of line " +
                                 std::to_string(points[i - 1].line) + " ends");
    }
}

/// Tells of radii that make no curve, and of corners without a curve.
void CheckRadii(const Checked& checked, const std::vector<Point>& points) {
    const auto gradeBehind = [](const Point& it) {
        const Point& next = *(&it + 1);
        return (next.elevation - it.elevation) / (next.place - it.place);
    };
    for (const Point& it : points) {
        if (&it == &points.front() || &it == &points.back()) {
            if (std::fabs(it.radius) < infiniteRadius) continue;
            checked.findings.Note(it.line, "radius-unused",
                                  "the profile begins and ends without a curve: the radius is passed over");
        } else if (it.radius <= -infiniteRadius) {
            checked.findings.Error(it.line, "vertical-radius",
                                   "the radius is negative: the curve bends away from both tangents, and the height "
                                   "jumps at the point");
        } else if (it.end - it.start < sameMileage) {
            const double jump = std::fabs(gradeBehind(it) - gradeBehind(*(&it - 1)));
            if (!(jump >= smallestBreak)) continue;
            checked.findings.Note(it.line, "grade-break",
                                  "the grade-change point has no curve: the grade breaks by " +
                                      FormatReal(jump * perCent, gradeDecimals) + " per cent");
        }
    }
}

void CheckCover(const Checked& checked, const std::vector<Point>& points) {
    if (!checked.line || points.empty()) return;
    const auto tell = [&](double metres, std::int64_t line, const char* where) {
        if (!(metres > beyondTolerance)) return;
        checked.findings.Note(line, "profile-short",
                              std::string(where) + " the profile " + FormatReal(metres, lengthDecimals) +
                                  " m of the road have no grade line: the height stays level there");
    };
    tell(points.front().place - checked.line->Start(), points.front().line, "Before");
    tell(checked.line->End() - points.back().place, points.back().line, "Behind");
}

}  // namespace

void CheckProfile(const Checked& checked) {
    if (checked.findings.FirstLineOf({severalProfiles}) > 0) return;
    std::vector<Point> points = PointsOfFile(checked);
    if (checked.line) {
        FindEnds(checked, points);
        CheckCurves(checked, points);
        CheckRadii(checked, points);
    }
    CheckCover(checked, points);
}

}  // namespace kesto::host
