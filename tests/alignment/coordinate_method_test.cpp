#include "alignment/coordinate_method.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "support/quadrature.hpp"

using kesto::test::Integrate;
using kesto::test::Integrated;
using kesto::test::MainPoint;
using kesto::test::MakeElement;

namespace {

/// The point at the end of an element, where the next begins.
Coordinate EndOf(const Element& element, std::int32_t type, double radius) {
    const Integrated end = Integrate(element, element.length);
    return MainPoint(static_cast<double>(end.x), static_cast<double>(end.y), type, radius);
}

TEST(CoordinateMethod, FindsTheElementThatThePointsWereMadeFrom) {
    const Element originals[] = {
        MakeElement(1, false, 0, 0, 120, 10, 20, 77),
        MakeElement(2, true, 80, 80, 90, 10, 20, 355),
        MakeElement(2, false, 80, 80, 250, 10, 20, 5),
        MakeElement(3, true, 0, 60, 70, 10, 20, 300),
        MakeElement(3, false, 60, 0, 70, 10, 20, 1),
        MakeElement(3, true, 400, 90, 50, 10, 20, 200),
        MakeElement(3, false, 90, 400, 50, 10, 20, 200),
        MakeElement(3, true, 1000, 990, 60, 10, 20, 12),
        MakeElement(3, true, 0, 5000, 12, 10, 20, 335.9),
        MakeElement(3, true, 1000, 999.3, 100, 10, 20, 12),
        // Chords near the diameter of the circles of curvature: the last one little below the longest there is.
        MakeElement(3, true, 100, 80, 220, 10, 20, 12),
        MakeElement(3, true, 100, 80, 270, 10, 20, 12),
    };
    for (const Element& original : originals) {
        SCOPED_TRACE(testing::Message() << original.type << " " << original.startRadius << " " << original.endRadius);
        RoadDesign road;
        road.settings.roadDesignMode = 2;
        road.settings.startMileage = 500;
        Coordinate first = MainPoint(original.startX, original.startY, original.type, original.startRadius);
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

// Both ends are rounded, so the chord may come out longer than the diameter.
TEST(CoordinateMethod, HalfCirclesAreJoined) {
    std::mt19937 random(9);
    std::uniform_real_distribution<double> place(0, 1e5), size(10, 1000), way(0, 7);
    for (int i = 0; i < 2000; ++i) {
        const double x = place(random), y = place(random), radius = size(random), azimuth = way(random);
        const double dx = radius * std::cos(azimuth), dy = radius * std::sin(azimuth);
        RoadDesign road;
        road.settings.roadDesignMode = 2;
        road.coordinates.Insert(MainPoint(x - dx, y - dy, 2, radius));
        road.coordinates.Insert(MainPoint(x + dx, y + dy, 1));
        ASSERT_TRUE(kesto::GenerateFromCoordinates(road, road.elements)) << i;
        ASSERT_NEAR(road.elements[1].length, radius * std::acos(-1.0), radius * 1e-5) << i;
    }
}

double ChordOf(const Element& element) {
    const Integrated end = Integrate(element, element.length);
    return static_cast<double>(std::hypot(end.x - element.startX, end.y - element.startY));
}

TEST(CoordinateMethod, TheShortestSpiralCounts) {
    // Before a spiral winds its chord goes through a maximum: two lengths below it lie close together, the maximum
    // itself counts while it is within 1e-9 m, and a point farther away is met a whole loop later.
    for (const auto& [from, to, shorter, longer] :
         {std::tuple{0.0, 100.0, 500.0, 800.0}, {100.0, 300.0, 350.0, 600.0}}) {
        SCOPED_TRACE(from);
        double lower = shorter;
        double upper = longer;
        while (upper - lower > 1e-5) {
            const double third = (upper - lower) / 3;
            const double left = ChordOf(MakeElement(3, true, from, to, lower + third));
            const double right = ChordOf(MakeElement(3, true, from, to, upper - third));
            (left < right ? lower : upper) = left < right ? lower + third : upper - third;
        }
        const double longest = ChordOf(MakeElement(3, true, from, to, lower));
        const struct {
            double excess, least, most;  // m: of the chord over the maximum; between which lengths the spiral's lies
        } cases[] = {{-0.001, shorter, lower - 0.1}, {5e-10, lower - 0.01, lower + 0.01}, {5e-9, longer, 2000}};
        for (const auto& it : cases) {
            RoadDesign road;
            road.settings.roadDesignMode = 2;
            road.coordinates.Insert(MainPoint(0, 0, 3, from));
            road.coordinates.Insert(MainPoint(longest + it.excess, 0, 1, to));
            ASSERT_TRUE(kesto::GenerateFromCoordinates(road, road.elements));
            EXPECT_GT(road.elements[1].length, it.least) << it.excess;
            EXPECT_LT(road.elements[1].length, it.most) << it.excess;
            EXPECT_NEAR(ChordOf(road.elements[1]), longest + it.excess, 1.1e-9) << "1e-9, and 1e-10 of quadrature";
        }
    }
}

TEST(CoordinateMethod, Refusals) {
    struct Case {
        const char* name;
        std::vector<Coordinate> points;
        std::int32_t record;
        double value;
        std::int32_t limit = KESTO_LIMIT_NONE;
        double bound = 0;
        std::int32_t mode = 2;
    };
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {"coinciding points", {MainPoint(0, 0, 1), MainPoint(5, 0, 1), MainPoint(5, 5e-8, 1)}, 1, 5e-8},
        {"coinciding ends of an arc", {MainPoint(0, 0, 2, 0), MainPoint(5e-8, 0, 1)}, 0, 5e-8},
        {"coinciding points of a broken line",
         {MainPoint(0, 0, 2, 0), MainPoint(5e-8, 0, 1)},
         0,
         5e-8,
         KESTO_LIMIT_NONE,
         0,
         3},
        {"chord above the diameter",
         {MainPoint(0, 0, 2, 10), MainPoint(20.01, 0, 1)},
         0,
         20.01,
         KESTO_LIMIT_ARC_DIAMETER,
         20},
        {"arc without a radius", {MainPoint(0, 0, 2), MainPoint(20, 0, 1)}, 0, 20},
        {"arc with a negative radius", {MainPoint(0, 0, 2, -100), MainPoint(50, 0, 1)}, 0, 50},
        {"arc with an infinite radius", {MainPoint(0, 0, 2, infinity), MainPoint(50, 0, 1)}, 0, 50},
        {"spiral between equal radii", {MainPoint(0, 0, 3, 50), MainPoint(20, 0, 1, 50)}, 0, 20},
        {"spiral between nearly equal radii", {MainPoint(0, 0, 3, 300), MainPoint(50, 0, 1, 300.000001)}, 0, 50},
        {"spiral between straights", {MainPoint(0, 0, 3), MainPoint(20, 0, 1)}, 0, 20},
        {"spiral that never gets so far", {MainPoint(0, 0, 3, 1), MainPoint(2000, 0, 1, 1.1)}, 0, 2000},
        {"spiral that winds and never gets so far",
         {MainPoint(439.66, 455.88, 3, 344.12), MainPoint(200, 0, 1, 150)},
         0,
         std::hypot(239.66, 455.88)},
        {"unknown type", {MainPoint(0, 0, 4), MainPoint(20, 0, 1)}, 0, 20},
        {"spiral from a negative radius", {MainPoint(0, 0, 3, -5), MainPoint(20, 0, 1, 50)}, 0, 20},
        {"spiral to no number", {MainPoint(0, 0, 3, 50), MainPoint(20, 0, 1, nan)}, 0, 20},
        {"point at infinity", {MainPoint(0, infinity, 1), MainPoint(20, 0, 1)}, 0, infinity},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        road.settings.roadDesignMode = it.mode;
        road.elements.Insert(MakeElement(1, false, 0, 0, 7));
        for (const Coordinate& point : it.points) road.coordinates.Insert(point);
        const kesto::Outcome generated = kesto::GenerateFromCoordinates(road, road.elements);
        ASSERT_FALSE(generated);
        const Failure& failure = generated.failure();
        EXPECT_EQ(failure.status, KESTO_POINT_NOT_JOINED);
        EXPECT_EQ(failure.record, it.record);
        EXPECT_EQ(failure.value, it.value);
        EXPECT_EQ(failure.limit, it.limit);
        EXPECT_EQ(failure.bound, it.bound);
        EXPECT_EQ(failure.excess, it.bound > 0 ? it.value - it.bound : 0);
        EXPECT_EQ(road.elements.Count(), 1) << "the element list is as it was";
    }
    RoadDesign unread;  // radii that no piece uses
    unread.settings.roadDesignMode = 2;
    for (const Coordinate& it :
         {MainPoint(0, 0, 1, -5), MainPoint(50, 0, 1, nan), MainPoint(90, 0, 2, 80), MainPoint(130, 0, 1, -5)}) {
        unread.coordinates.Insert(it);
    }
    EXPECT_TRUE(kesto::GenerateFromCoordinates(unread, unread.elements));
    RoadDesign lonely;
    lonely.coordinates.Insert(MainPoint(0, 0, 1));
    EXPECT_EQ(kesto::GenerateFromCoordinates(lonely, lonely.elements).failure().status, KESTO_TOO_FEW_ELEMENTS);
}

}  // namespace
