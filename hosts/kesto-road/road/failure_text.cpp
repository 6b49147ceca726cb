#include "road/failure_text.hpp"

#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

#include "road/conventions.hpp"
#include "road/mileage_text.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr int lengthDecimals = 3;  // millimetres, in messages
constexpr int angleDecimals = 4;   // of degrees

std::string Metres(double metres) { return FormatReal(metres, lengthDecimals) + " m"; }

std::string Radius(double radius) {
    return radius < infiniteRadius ? "an infinite radius" : "a radius of " + Metres(radius);
}

std::string Degrees(double degrees) { return FormatReal(degrees, angleDecimals) + " degrees"; }

std::string Whole(double number) { return FormatReal(number, 0); }

template <class Record>
std::string Named(const std::string& what, std::int32_t index, bool there, const Record& record) {
    const std::string name = there ? std::string(record.name, strnlen(record.name, sizeof record.name)) : "";
    return what + " " + std::to_string(index + 1) + (name.empty() ? "" : " '" + name + "'");
}

std::string IntersectionText(RoadDesign* road, std::int32_t index) {
    Intersection record{};
    const bool there = GetIntersection(road, index, &record);
    return Named("intersection", index, there, record);
}

std::string PointText(RoadDesign* road, std::int32_t index) {
    Coordinate record{};
    const bool there = GetCoordinate(road, index, &record);
    return Named("point", index, there, record);
}

/// "element 7". Records are counted from 1; the start record, which is the first of the elements, is not counted.
std::string RecordName(RoadDesign* road, const Failure& failure) {
    switch (failure.list) {
        case KESTO_LIST_ELEMENTS: return "element " + std::to_string(failure.record);
        case KESTO_LIST_BROKEN_CHAINS: return "broken chain " + std::to_string(failure.record + 1);
        case KESTO_LIST_VERTICAL_CURVES: return "grade-change point " + std::to_string(failure.record + 1);
        case KESTO_LIST_STAKES: return "stake " + std::to_string(failure.record + 1);
        case KESTO_LIST_INTERSECTIONS: return IntersectionText(road, failure.record);
        case KESTO_LIST_COORDINATES: return PointText(road, failure.record);
        case KESTO_LIST_PLATES: return "plate " + std::to_string(failure.record + 1);
        case KESTO_LIST_CHANGE_SECTIONS: return "change section " + std::to_string(failure.record + 1);
        default: return "record " + std::to_string(failure.record + 1);
    }
}

std::string OffRoad(RoadDesign* road, const Failure& failure) {
    const bool start = failure.limit == KESTO_LIMIT_ROAD_START;
    return "it lies " + Metres(failure.excess) +
           (start ? " before the road's start at " : " beyond the road's end at ") +
           FormatMileage(road, {failure.bound, 0});
}

std::string Occurrences(const Failure& failure) {
    if (failure.bound < 1) return "no stake carries it: it lies in the gap of a broken chain";
    return "it occurs " + (failure.bound < 2 ? std::string("once") : Whole(failure.bound) + " times") +
           ", there is no occurrence " + Whole(failure.value) + " (they count from 0)";
}

/// Length of the polygon side between two intersections; nothing where one of them is not there.
std::optional<double> SideLength(RoadDesign* road, std::int32_t from, std::int32_t to) {
    Intersection a{};
    Intersection b{};
    if (!GetIntersection(road, from, &a) || !GetIntersection(road, to, &b)) return std::nullopt;
    return std::hypot(b.x - a.x, b.y - a.y);
}

/// The neighbour at the other end of the polygon side with the given length.
std::int32_t NeighbourAlong(RoadDesign* road, std::int32_t at, double length) {
    const auto misfit = [&](std::int32_t neighbour) {
        const auto side = SideLength(road, at, neighbour);
        return side ? std::fabs(*side - length) : std::numeric_limits<double>::infinity();
    };
    return misfit(at - 1) <= misfit(at + 1) ? at - 1 : at + 1;
}

/// Why the curve of an intersection does not fit.
std::string CurveMisfit(RoadDesign* road, const Failure& failure) {
    const std::int32_t at = failure.record;
    for (const std::int32_t neighbour : {at - 1, at + 1}) {
        const auto side = SideLength(road, at, neighbour);
        if (side && !(*side > samePoint))
            return IntersectionText(road, at) + " lies on " + IntersectionText(road, neighbour);
    }
    const std::string text = "the curve of " + IntersectionText(road, at) + " does not fit: ";
    switch (failure.limit) {
        case KESTO_LIMIT_POLYGON_SIDE:
            return text + "the tangents between it and " +
                   IntersectionText(road, NeighbourAlong(road, at, failure.bound)) + " take " + Metres(failure.value) +
                   " of " + Metres(failure.bound) + ", " + Metres(failure.excess) + " too much";
        case KESTO_LIMIT_DEFLECTION:
            return text + "its spirals turn " + Degrees(failure.value) + " of " + Degrees(failure.bound) + ", " +
                   Degrees(failure.excess) + " too much";
        default:
            return text + "the road turns back there, a spiral joins equal radii, or a radius or length is negative";
    }
}

std::string PointMisfit(RoadDesign* road, const Failure& failure) {
    std::string text = PointText(road, failure.record) + " cannot be joined to " + PointText(road, failure.record + 1) +
                       ", " + Metres(failure.value) + " away";
    if (failure.limit == KESTO_LIMIT_ARC_DIAMETER) {
        return text + ": the diameter of its arc is " + Metres(failure.bound) + ", " + Metres(failure.excess) +
               " too short";
    }
    if (!(failure.value > samePoint)) return text + ": they are one point";
    Coordinate from{};
    Coordinate to{};
    if (!GetCoordinate(road, failure.record, &from) || !GetCoordinate(road, failure.record + 1, &to)) return text;
    if (from.type != spiralType) return text + ": its type is unknown, or its radius is negative";
    return text + ": no spiral from " + Radius(from.radius) + " to " + Radius(to.radius) + " meets it";
}

/// Says how many elements, intersections or points the road has, and how many it needs.
std::string TooFew(const Failure& failure) {
    const char* what = failure.list == KESTO_LIST_INTERSECTIONS ? " intersections"
                       : failure.list == KESTO_LIST_COORDINATES ? " points"
                                                                : " elements with the start record";
    return "it has " + Whole(failure.value) + what + ", a road needs " + Whole(failure.bound);
}

}  // namespace

Failure LastFailure(RoadDesign* road) {
    Failure failure{};
    if (!GetLastFailure(road, &failure)) failure.status = KESTO_SUCCESS;
    return failure;
}

std::string DescribeFailure(RoadDesign* road, std::int32_t status, const Failure& failure) {
    if (failure.status != status) return DescribeStatus(status);
    switch (status) {
        case KESTO_MILEAGE_OFF_ROAD: return OffRoad(road, failure);
        case KESTO_NO_SUCH_OCCURRENCE: return Occurrences(failure);
        case KESTO_RECORDS_SKIPPED:
            return Whole(failure.value) + (std::fabs(failure.value - 1) < 0.5 ? " record" : " records") +
                   " could not be read and were skipped, this line the first: correct or remove it";
        case KESTO_TOO_FEW_ELEMENTS: return TooFew(failure);
        case KESTO_CURVE_DOES_NOT_FIT: return CurveMisfit(road, failure);
        case KESTO_POINT_NOT_JOINED: return PointMisfit(road, failure);
        default: break;
    }
    std::string text = DescribeStatus(status);
    if (failure.record >= 0) text += " (" + RecordName(road, failure) + ")";
    if (failure.excess != 0) text += ", by " + Metres(failure.excess);
    return text;
}

std::string DescribeLastFailure(RoadDesign* road) {
    const Failure failure = LastFailure(road);
    return DescribeFailure(road, failure.status, failure);
}

}  // namespace kesto::host
