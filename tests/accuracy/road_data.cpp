#include "road_data.hpp"

#include <algorithm>

namespace reference {

namespace {

/// Appends an element that starts where the road ends.
void Append(RoadData& road, int type, bool right, double startRadius, double endRadius, double length) {
    const ElementData& last = road.elements.back();
    const ElementCurve curve(last);
    const Place end = curve.Advance(curve.Start(), last.length);
    road.elements.push_back({type, right, static_cast<double>(end.x), static_cast<double>(end.y),
                             static_cast<double>(ToAzimuth(curve.Direction(last.length))), startRadius, endRadius,
                             length});
}

}  // namespace

ElementData DrawStart(Dice& dice, Coordinates coordinates) {
    ElementData element{};
    const bool grid = coordinates == Coordinates::Grid;
    element.x = Millimetres(grid ? dice.Between(3e6, 5.5e6) : dice.Between(-1000, 1000));
    element.y = Millimetres(grid ? dice.Between(2e5, 9e5) : dice.Between(-1000, 1000));
    element.azimuth = dice.OneIn(20) ? 90 * dice.Below(4) : dice.Between(0, 360);
    element.right = dice.Flip();
    return element;
}

double DrawStartMileage(Dice& dice) { return dice.Flip() ? 0 : Millimetres(dice.Between(0, 200000)); }

RoadData DrawRoad(Dice& dice, Coordinates coordinates, int curves) {
    RoadData road;
    road.startMileage = DrawStartMileage(dice);
    const auto length = [&](double low, double high) { return Millimetres(dice.Between(low, high)); };
    ElementData first = DrawStart(dice, coordinates);
    bool right = first.right;
    first.type = 1;
    first.length = length(20, 400);
    road.elements.push_back(first);
    for (int i = 0; i < curves; ++i) {
        const double radius = Millimetres(dice.LogBetween(200, 3000));
        const double wider = Millimetres(radius * dice.Between(1.2, 3));
        const bool oval = dice.OneIn(3);
        const double out = oval ? wider : radius;
        if (!dice.OneIn(4)) Append(road, 3, right, 0, radius, length(30, 100));
        Append(road, 2, right, radius, radius, length(20, 0.3 * radius));
        if (oval) Append(road, 3, right, radius, wider, length(30, 60));
        if (oval) Append(road, 2, right, wider, wider, length(20, 0.1 * wider));
        if (!dice.OneIn(4)) Append(road, 3, right, out, 0, length(30, 100));
        if (dice.Flip()) Append(road, 1, right, 0, 0, length(20, 400));
        right = !right;
    }
    return road;
}

void DrawBreaks(Dice& dice, RoadData& road, int count) {
    const std::vector<Real> borders = BordersOf(road);
    std::vector<Real> places;
    for (int i = 0; i < count; ++i) {
        if (dice.OneIn(4)) {
            places.push_back(borders[static_cast<std::size_t>(dice.Below(static_cast<int>(borders.size())))]);
        } else {
            places.push_back(borders.front() + (borders.back() - borders.front()) * dice.Between(0, 1));
        }
    }
    std::ranges::sort(places);
    const Real apart = 1;              // m
    Real zone = road.startMileage;     // continuous mileage where the zone begins
    double ahead = road.startMileage;  // its first stake mileage
    Real lastBack = ahead;
    for (const Real& place : places) {
        const auto tooNear = [&](const Real& border) { return border != place && abs(border - place) < apart; };
        const auto back = static_cast<double>(ahead + (place - zone));
        // The chains act in the order of their back mileages, which must be that of the road.
        if (std::ranges::any_of(borders, tooNear) || place - zone < apart || borders.back() - place < apart ||
            back - lastBack < apart) {
            continue;
        }
        const double sense = dice.Flip() ? 1 : -1;
        const double jump = sense * dice.LogBetween(0.01, 500);
        road.breaks.push_back({back, Millimetres(back + jump)});
        zone += Real(back) - ahead;
        ahead = road.breaks.back().ahead;
        lastBack = back;
    }
}

std::vector<Real> BordersOf(const RoadData& road) {
    std::vector<Real> borders{road.startMileage};
    for (const ElementData& element : road.elements) borders.push_back(borders.back() + element.length);
    Real ahead = road.startMileage;
    Real zone = road.startMileage;
    for (const Break& it : road.breaks) {
        zone += it.back - ahead;
        ahead = it.ahead;
        borders.push_back(zone);
    }
    return borders;
}

Zones ZonesOf(const RoadData& road) {
    Real length = 0;
    for (const ElementData& element : road.elements) length += element.length;
    return {road.startMileage, length, road.breaks};
}

void WriteElement(const SetWriter& set, const ElementData& element) {
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

void WriteRoad(const SetWriter& set, const RoadData& road) {
    set.Begin("road").Given(road.startMileage);
    for (const ElementData& element : road.elements) WriteElement(set, element);
    for (const Break& it : road.breaks) set.Begin("chain").Given(it.back).Given(it.ahead);
}

RoadWalk::RoadWalk(const RoadData& walked)
    : road(walked), start(walked.startMileage), curve(walked.elements.front()), place(curve.Start()) {}

void RoadWalk::GoTo(const Real& mileage) {
    while (element + 1 < road.elements.size() && mileage >= start + road.elements[element].length) {
        start += road.elements[element].length;
        ++element;
        curve = ElementCurve(road.elements[element]);
        place = curve.Start();
    }
    place = curve.Advance(place, mileage - start);
}

}  // namespace reference
