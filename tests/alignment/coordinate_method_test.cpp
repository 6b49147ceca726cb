#include "alignment/coordinate_method.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "alignment/quadrature.hpp"
#include "core/angles.hpp"

using kesto_test::Integrate;
using kesto_test::Integrated;
using kesto_test::MakeElement;

namespace {

Coordinate At(double x, double y, std::int32_t type, double radius = 0, bool right = true) {
    Coordinate point{};
    point.type = type;
    point.turnDirection = right ? 1 : 0;
    point.x = x;
    point.y = y;
    point.radius = radius;
    return point;
}

/// The point at the end of an element, where the next begins.
Coordinate EndOf(const Element& element, std::int32_t type, double radius) {
    const Integrated end = Integrate(element, element.length);
    return At(static_cast<double>(end.x), static_cast<double>(end.y), type, radius);
}

TEST(CoordinateMethod, FindsTheElementThatThePointsWereMadeFrom) {
    const Element originals[] = {
        MakeElement(1, false, 0, 0, 120, 10, 20, 77),     MakeElement(2, true, 80, 80, 90, 10, 20, 355),
        MakeElement(2, false, 80, 80, 250, 10, 20, 5),    MakeElement(3, true, 0, 60, 70, 10, 20, 300),
        MakeElement(3, false, 60, 0, 70, 10, 20, 1),      MakeElement(3, true, 400, 90, 50, 10, 20, 200),
        MakeElement(3, false, 90, 400, 50, 10, 20, 200),  MakeElement(3, true, 1000, 990, 60, 10, 20, 12),
        MakeElement(3, true, 0, 5000, 12, 10, 20, 335.9), MakeElement(3, true, 1000, 999.3, 100, 10, 20, 12),
    };
    for (const Element& original : originals) {
        SCOPED_TRACE(testing::Message() << original.type << " " << original.startRadius << " " << original.endRadius);
        RoadDesign road;
        road.settings.roadDesignMode = 2;
        road.settings.startMileage = 500;
        Coordinate first = At(original.startX, original.startY, original.type, original.startRadius);
        first.turnDirection = original.turnDirection;
        road.coordinates.Insert(first);
        road.coordinates.Insert(EndOf(original, 0, original.endRadius));
        ASSERT_TRUE(kesto::GenerateFromCoordinates(road, road.elements));
        ASSERT_EQ(road.elements.Count(), 2);
        const Element& element = road.elements[1];
        EXPECT_EQ(element.startMileage, 500);
        EXPECT_NEAR(element.length, original.length, 2e-9);
        EXPECT_NEAR(element.startAzimuth, original.startAzimuth, 1e-8);
        EXPECT_EQ(road.elements[0].startAzimuth, element.startAzimuth);
    }
}

TEST(CoordinateMethod, TheShortestSpiralCounts) {
    // Just below the longest chord that a spiral from a straight to 100 m has before it winds: two lengths lie close
    // together there, and one a whole loop longer meets the point too.
    RoadDesign road;
    road.settings.roadDesignMode = 2;
    road.coordinates.Insert(At(0, 0, 3));
    road.coordinates.Insert(At(394.828426396 - 0.001, 0, 1, 100));
    ASSERT_TRUE(kesto::GenerateFromCoordinates(road, road.elements));
    EXPECT_NEAR(road.elements[1].length, 635.302572, 1e-3);
}

TEST(CoordinateMethod, BrokenLineKeepsItsKinks) {
    RoadDesign road;
    road.settings.roadDesignMode = 3;
    for (const auto& [x, y] : {std::pair{0.0, 0.0}, {30.0, 40.0}, {30.0, 100.0}}) road.coordinates.Insert(At(x, y, 9));
    ASSERT_TRUE(kesto::GenerateFromCoordinates(road, road.elements));
    ASSERT_EQ(road.elements.Count(), 3);
    EXPECT_DOUBLE_EQ(road.elements[1].length, 50);
    EXPECT_DOUBLE_EQ(road.elements[2].startAzimuth, 90);
    EXPECT_DOUBLE_EQ(road.elements[2].startMileage, 50);
}

TEST(CoordinateMethod, Refusals) {
    struct Case {
        const char* name;
        std::vector<Coordinate> points;
        std::int32_t status;
        std::int32_t record;
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {"one point", {At(0, 0, 1)}, KESTO_TOO_FEW_ELEMENTS, -1},
        {"coinciding points", {At(0, 0, 1), At(5, 0, 1), At(5, 5e-8, 1)}, KESTO_POINT_NOT_JOINED, 1},
        {"chord above the diameter", {At(0, 0, 2, 10), At(20.01, 0, 1)}, KESTO_POINT_NOT_JOINED, 0},
        {"arc without a radius", {At(0, 0, 2), At(20, 0, 1)}, KESTO_POINT_NOT_JOINED, 0},
        {"spiral between equal radii", {At(0, 0, 3, 50), At(20, 0, 1, 50)}, KESTO_POINT_NOT_JOINED, 0},
        {"spiral between straights", {At(0, 0, 3), At(20, 0, 1)}, KESTO_POINT_NOT_JOINED, 0},
        {"spiral that never gets so far", {At(0, 0, 3, 1), At(2000, 0, 1, 1.1)}, KESTO_POINT_NOT_JOINED, 0},
        {"unknown type", {At(0, 0, 4), At(20, 0, 1)}, KESTO_POINT_NOT_JOINED, 0},
        {"negative radius", {At(0, 0, 3, -5), At(20, 0, 1, 50)}, KESTO_POINT_NOT_JOINED, 0},
        {"point no number", {At(0, nan, 1), At(20, 0, 1)}, KESTO_POINT_NOT_JOINED, 0},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        road.settings.roadDesignMode = 2;
        road.elements.Insert(MakeElement(1, false, 0, 0, 7));
        for (const Coordinate& point : it.points) road.coordinates.Insert(point);
        const kesto::Outcome generated = kesto::GenerateFromCoordinates(road, road.elements);
        ASSERT_FALSE(generated);
        EXPECT_EQ(generated.failure().status, it.status);
        EXPECT_EQ(generated.failure().record, it.record);
        EXPECT_EQ(road.elements.Count(), 1) << "the element list is as it was";
    }
}

}  // namespace
