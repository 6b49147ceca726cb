// Positions and feet on single elements, and elements that run backwards.

#include "element_cases.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "element_curve.hpp"

namespace reference {

namespace {

/// How large the coordinates are: up to 1 km, or those of a national grid (m).
enum class Coordinates { Local, Grid };

/// A road of one element.
struct RoadData {
    double startMileage;
    ElementData element;
};

/// A start point and azimuth for an element; some azimuths are those of the axes.
ElementData DrawStart(Dice& dice, Coordinates coordinates) {
    ElementData element{};
    const bool grid = coordinates == Coordinates::Grid;
    element.x = Millimetres(grid ? dice.Between(3e6, 5.5e6) : dice.Between(-1000, 1000));
    element.y = Millimetres(grid ? dice.Between(2e5, 9e5) : dice.Between(-1000, 1000));
    element.azimuth = dice.OneIn(20) ? 90 * dice.Below(4) : dice.Between(0, 360);
    element.right = dice.Flip();
    return element;
}

void WriteRoad(const SetWriter& set, const RoadData& road) {
    const ElementData& element = road.element;
    set.Begin("road").Given(road.startMileage);
    set.Begin("element")
        .Whole(element.type)
        .Whole(element.right ? 1 : 0)
        .Given(element.x)
        .Given(element.y)
        .Given(element.azimuth)
        .Given(element.startRadius)
        .Given(element.endRadius)
        .Given(element.length);
}

/// A sort of elements: what it is called, how it is drawn, and whether its points have one foot.
struct Family {
    const char* name;
    void (*draw)(Dice&, ElementData&);
    bool hasFeet;
};

void DrawStraight(Dice& dice, ElementData& element) {
    element.type = 1;
    element.length = Millimetres(dice.LogBetween(1, 5000));
}

void DrawArc(Dice& dice, ElementData& element) {
    element.type = 2;
    element.startRadius = element.endRadius = Millimetres(dice.LogBetween(10, 1e6));
    element.length = Millimetres(dice.Between(1, std::min(6 * element.startRadius, 3000.0)));
}

void GiveRadii(Dice& dice, ElementData& element, double one, double other) {
    element.type = 3;
    element.startRadius = Millimetres(one);
    element.endRadius = Millimetres(other);
    if (dice.Flip()) std::swap(element.startRadius, element.endRadius);
}

/// A spiral from or to a straight whose turn lies between two angles (rad).
void DrawTransition(Dice& dice, ElementData& element, double leastTurn, double mostTurn) {
    element.length = Millimetres(dice.Between(20, 300));
    GiveRadii(dice, element, 0, element.length / (2 * dice.Between(leastTurn, mostTurn)));
}

void DrawCommon(Dice& dice, ElementData& element) { DrawTransition(dice, element, 0.005, 1.6); }
void DrawTight(Dice& dice, ElementData& element) { DrawTransition(dice, element, 1.6, 3); }
void DrawWinding(Dice& dice, ElementData& element) { DrawTransition(dice, element, 3, 30); }

/// A spiral between two radii that differ plainly.
void DrawOval(Dice& dice, ElementData& element) {
    constexpr double mostTurn = 1.6;  // rad
    const double radius = dice.LogBetween(30, 2000);
    const double other = radius * dice.LogBetween(1.05, 10);
    const double longest = std::min(150.0, 2 * mostTurn / (1 / radius + 1 / other));
    element.length = Millimetres(dice.Between(10, longest));
    GiveRadii(dice, element, radius, other);
}

/// A spiral between nearly equal radii: a stretch of a clothoid 10 to 70 rad from its origin.
void DrawNearlyEqual(Dice& dice, ElementData& element) {
    const double radius = dice.LogBetween(200, 5000);
    element.length = Millimetres(dice.Between(20, 300));
    GiveRadii(dice, element, radius, radius + element.length / (2 * dice.LogBetween(10, 70)));
}

constexpr std::array<Family, 7> families = {{
    {"straights", DrawStraight, true},
    {"arcs, radius 10 m to 1000 km", DrawArc, true},
    {"spirals from or to a straight, turning up to 1.6 rad", DrawCommon, true},
    {"spirals from or to a straight, turning 1.6 to 3 rad", DrawTight, true},
    {"spirals from or to a straight, turning 3 to 30 rad", DrawWinding, false},
    {"spirals between two radii", DrawOval, true},
    {"spirals between nearly equal radii", DrawNearlyEqual, true},
}};

std::string KindOf(const char* question, const Family& family, Coordinates coordinates) {
    return std::string(question) + " on " + family.name +
           (coordinates == Coordinates::Grid ? ", grid coordinates" : ", local coordinates");
}

/// Distances from the start at which an element's cases lie (m), ascending.
std::vector<double> DrawDistances(Dice& dice, const ElementData& element, int count, double fromEnds) {
    return DrawAscending(dice, count, fromEnds, element.length - fromEnds);
}

constexpr double azimuthZone = 1e-7;  // degrees: an azimuth this near to north is north
constexpr double startZone = 1e-7;    // m: a place this near to an element's start is the start

void WritePosition(SetWriter& set, Dice& dice, double mileage, const ElementCurve& curve, const Place& place) {
    const Real azimuth = ToAzimuth(curve.Direction(place.along));
    if (azimuth != 0 && fmin(azimuth, 360 - azimuth) < azimuthZone) {
        return set.LeaveOut("positions whose azimuth lies within 1e-7 degrees of north, which counts as north");
    }
    const double offset = dice.OneIn(3) ? 0 : dice.Between(-100, 100);
    const Place point = curve.Beside(place, offset);
    set.Begin("position").Given(mileage).Whole(0).Given(offset).Exact(point.x).Exact(point.y).Exact(azimuth);
}

void WritePositions(SetWriter& set, Dice& dice, const RoadData& road, int count) {
    const ElementCurve curve(road.element);
    Place place = curve.Start();
    std::vector<double> distances = DrawDistances(dice, road.element, count, 2 * startZone);
    if (dice.OneIn(4)) distances.front() = 0;
    for (const double distance : distances) {
        const double mileage = road.startMileage + distance;
        place = curve.Advance(place, Real(mileage) - road.startMileage);
        WritePosition(set, dice, mileage, curve, place);
    }
}

/// An offset (m) that is not beyond the centre of curvature: small, large, or towards the centre.
double DrawOffset(Dice& dice, double curvature) {
    constexpr double leastSlope = 1e-3;
    constexpr double farthest = 500;  // m
    const double side = dice.Flip() ? 1 : -1;
    const double bent = curvature == 0 ? side / farthest : curvature;
    double offset = 0;
    switch (dice.Below(8)) {
        case 0: return 0;
        case 1:
        case 2:
        case 3: offset = side * dice.LogBetween(1e-3, 100); break;
        case 4:
        case 5: offset = side * dice.Between(0, 30); break;
        case 6: offset = (1 - dice.Between(0.1, 0.9)) / bent; break;
        default: offset = (1 - dice.LogBetween(leastSlope, 0.1)) / bent; break;
    }
    offset = std::clamp(offset, -farthest, farthest);
    return 1 - curvature * offset < leastSlope ? -offset : offset;
}

/// Tells whether a point has a single foot on an element, by looking at it from places all along the element.
class FootCount {
public:
    FootCount(const ElementCurve& curve, const ElementData& element) {
        const double turn =
            element.length / 2 * static_cast<double>(abs(curve.Curvature(0)) + abs(curve.Curvature(element.length)));
        const int looks = 60 + static_cast<int>(20 * turn);
        step = Real(element.length) / looks;
        Place place = curve.Start();
        for (int i = 0; i <= looks; ++i) {
            place = curve.Advance(place, step * i);
            const Real direction = curve.Direction(place.along);
            tangents.push_back({place.x, place.y, cos(direction), sin(direction), curve.Curvature(place.along)});
        }
    }

    /// Whether the point is passed just once, going from ahead of the tangent's normal to behind it.
    bool IsOne(const Place& point) const {
        View before = LookFrom(tangents.front(), point);
        if (!(before.ahead > 0)) return false;
        int passed = 0;
        for (const Tangent& it : tangents) {
            const View now = LookFrom(it, point);
            const bool passes = (before.ahead > 0) != (now.ahead > 0);
            const bool mayTurnBack = before.slope < 0 || now.slope < 0;
            const bool near = fmin(abs(before.ahead), abs(now.ahead)) < step * fmax(abs(before.slope), abs(now.slope));
            if (mayTurnBack && near) return false;  // two feet may hide between the two places
            passed += passes ? 1 : 0;
            before = now;
        }
        return passed == 1;
    }

private:
    struct Tangent {
        Real x, y, cosine, sine, curvature;
    };
    /// How far the point lies ahead (m), and how much that falls with each metre.
    struct View {
        Real ahead, slope;
    };
    static View LookFrom(const Tangent& from, const Place& point) {
        const Real dx = point.x - from.x;
        const Real dy = point.y - from.y;
        return {dx * from.cosine + dy * from.sine, 1 - from.curvature * (dy * from.cosine - dx * from.sine)};
    }

    Real step;
    std::vector<Tangent> tangents;
};

void WriteFeet(SetWriter& set, Dice& dice, const RoadData& road, int count) {
    constexpr double fromEnds = 1e-3;  // m: nearer, the ends themselves may be the answer
    const ElementData& element = road.element;
    const ElementCurve curve(element);
    const FootCount feet(curve, element);
    Place place = curve.Start();
    for (const double distance : DrawDistances(dice, element, count, fromEnds)) {
        place = curve.Advance(place, distance);
        const double offset = DrawOffset(dice, static_cast<double>(curve.Curvature(distance)));
        const Place exact = curve.Beside(place, offset);
        const auto x = static_cast<double>(exact.x);
        const auto y = static_cast<double>(exact.y);
        if (element.type == 3 && !feet.IsOne(exact)) {
            set.LeaveOut("points that have, or may have, more than one foot on their spiral");
            continue;
        }
        const Foot foot = curve.FootNear(place, x, y);
        set.Begin("foot")
            .Given(x)
            .Given(y)
            .Whole(element.type)
            .Exact(road.startMileage + foot.along)
            .Whole(0)
            .Exact(foot.offset)
            .Exact(foot.slope);
    }
}

/// Places on elements of negative length, and behind the start of others.
void WriteBackwards(SetWriter& set, Dice& dice, int elements) {
    constexpr int placesEach = 20;
    for (int i = 0; i < elements; ++i) {
        ElementData element = DrawStart(dice, dice.Flip() ? Coordinates::Local : Coordinates::Grid);
        constexpr std::array<void (*)(Dice&, ElementData&), 5> draws = {DrawStraight, DrawArc, DrawCommon, DrawTight,
                                                                        DrawOval};
        draws[static_cast<std::size_t>(dice.Below(5))](dice, element);
        const double length = element.length;
        if (dice.Flip()) element.length = -length;
        WriteRoad(set, {0, element});
        const ElementCurve curve(element);
        Place place = curve.Start();
        std::vector<double> distances = DrawAscending(dice, placesEach, 2 * startZone, length);
        for (const double distance : distances) {
            place = curve.Advance(place, -distance);
            set.Begin("point").Given(-distance).Exact(place.x).Exact(place.y).Exact(
                ToAzimuth(curve.Direction(place.along)));
        }
    }
}

/// A share of a number, at least 1.
int ShareOf(int whole, double share) { return whole * share < 1 ? 1 : static_cast<int>(whole * share); }

}  // namespace

void WriteElementCases(SetWriter& set, Dice& dice, double share) {
    constexpr int casesEach = 20;
    for (const Family& family : families) {
        for (const Coordinates coordinates : {Coordinates::Local, Coordinates::Grid}) {
            const auto write = [&](const char* question, int roads, const auto& writeCases) {
                set.Kind(KindOf(question, family, coordinates));
                for (int i = 0; i < ShareOf(roads, share); ++i) {
                    const double startMileage = dice.Flip() ? 0 : Millimetres(dice.Between(0, 200000));
                    RoadData road{startMileage, DrawStart(dice, coordinates)};
                    family.draw(dice, road.element);
                    WriteRoad(set, road);
                    writeCases(set, dice, road, casesEach);
                }
            };
            write("position", 600, WritePositions);
            if (family.hasFeet) write("foot", 900, WriteFeet);
        }
    }
    set.Kind("position on elements run backwards");
    WriteBackwards(set, dice, ShareOf(1000, share));
}

}  // namespace reference
