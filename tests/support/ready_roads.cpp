#include "support/ready_roads.hpp"

#include <vector>

namespace kesto::test {

namespace {

constexpr std::uint8_t left = 0, right = 1;

/// An element that begins where the road ends so far.
void Join(RoadDesign* road, std::int32_t type, std::uint8_t turn, double startRadius, double endRadius, double length) {
    Element before{};
    GetElement(road, GetElementCount(road) - 1, &before);
    Element element{};
    element.type = type;
    element.turnDirection = turn;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.length = length;
    GetElementPositionAndAzimuth(road, &before, before.length, &element.startX, &element.startY, &element.startAzimuth);
    AddElement(road, &element, -1);
}

void AddElements(RoadDesign* road, int curves) {
    SetRoadDesignMode(road, 1);
    SetStartInformation(road, 1000, 2000, 60);
    for (int i = 0; i < curves; ++i) {
        const std::uint8_t turn = i % 2 == 0 ? right : left;
        Join(road, 1, turn, 0, 0, 100);
        Join(road, 3, turn, 0, 200, 60);
        Join(road, 2, turn, 200, 200, 90);
        Join(road, 3, turn, 200, 0, 60);
    }
}

void AddChains(RoadDesign* road) {
    const BrokenChain chains[] = {{300, 200}, {260, 320}, {700, 750.5}};  // backward, within the overlap, forward
    AddBrokenChainList(road, chains, 3);
}

void AddProfile(RoadDesign* road) {
    for (const double mileage : {20.0, 180.0, 330.0, 900.0}) {
        VerticalCurve curve{};
        curve.mileage = mileage;
        curve.elevation = mileage < 200 ? mileage / 30 : 8;
        curve.radius = 1500;
        curve.startMileage = mileage - 15;
        curve.endMileage = mileage + 20;
        AddVerticalCurve(road, &curve);
    }
}

void AddSections(RoadDesign* road) {
    for (const std::uint8_t side : {left, right}) {
        const SectionPlate plates[] = {{"lane", "road", 3.5, 0, -2, 0, 0, 0, 0, 0},
                                       {"verge", "soil", 1.5, 0, -4, 0.1, 0, 0, 0, 7}};
        AddStandardSectionPlateList(road, plates, 2, side);
        for (const std::int32_t kind : {0, 1}) {
            const double values[] = {4, -3, 2};
            AddChangeSectionList(road, 100, side, kind, values, 2, 0, 0);
            AddChangeSectionList(road, 250, side, kind, values + 1, 2, 0, 1);
            AddChangeSectionList(road, 240, side, kind, values, 2, 1, 2);
        }
    }
    for (const double mileage : {50.0, 10.0, 220.0}) {
        SectionMileageIndex entry{};
        entry.mileage = mileage;
        AddSectionMileageIndex(road, &entry);
    }
}

}  // namespace

void AddIntersections(RoadDesign* road) {
    const Intersection points[] = {{"BP", 0, 0, 0, 0, 0, 0, 0, {}},
                                   {"IP1", 400, 50, 300, 60, 60, 0, 0, {}},
                                   {"IP2", 700, 400, 250, 50, 0, 0, 0, {}},
                                   {"EP", 1100, 450, 0, 0, 0, 0, 0, {}}};
    AddIntersectionList(road, points, 4);
}

void AddPoints(RoadDesign* road, std::int32_t mode) {
    SetRoadDesignMode(road, mode);
    const Coordinate points[] = {{1, right, 0, 0, 0, "A"},
                                 {2, right, 200, 0, 150, "B"},
                                 {1, right, 300, 80, 0, "C"},
                                 {1, right, 500, 300, 0, "D"}};
    AddCoordinateList(road, points, 4);
}

void MakeReady(RoadDesign* road, std::int32_t number) {
    switch (number) {
        case 0: AddElements(road, 2); break;
        case 1: AddElements(road, 5); break;
        case 2: AddIntersections(road); break;
        case 3: AddPoints(road, 2); break;
        case 4: AddPoints(road, 3); break;
        default:
            AddElements(road, 3);
            SetVerticalCurveMode(road, 1);
            SetMakeStakeType(road, 1);
    }
    SetMileageInterval(road, 50);
    if (number != 0) AddChains(road);
    UpdateData(road);
    DesignRoad(road);
    AddProfile(road);
    AddSections(road);
    DesignRoad(road);
}

}  // namespace kesto::test
