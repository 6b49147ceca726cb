// Points on single elements and at stake mileages and offsets.
#include <cmath>
#include <numbers>
#include <tuple>

#include "support/road.hpp"

namespace kesto::test {
namespace {

constexpr double rounding = 1e-9;  // m and degrees

Point Evaluate(const Element& element, double distance) {
    static const Road any;
    Point point{false, -7, -7, -7};
    point.found = GetElementPositionAndAzimuth(any, &element, distance, &point.x, &point.y, &point.azimuth);
    return point;
}

Element From(Element element, double x, double y, double azimuth) {
    element.startX = x;
    element.startY = y;
    element.startAzimuth = azimuth;
    return element;
}

TEST(ElementPosition, NeedsNoRoadAndClearsItsOutputsOnFailure) {
    const Element quarter = From(Arc(right, 100, 200), 0, 0, 300);
    const Point point = Evaluate(quarter, 50 * std::numbers::pi);
    ASSERT_TRUE(point.found);
    EXPECT_NEAR(point.x, 50 + 50 * std::sqrt(3.0), rounding);
    EXPECT_NEAR(point.y, 50 - 50 * std::sqrt(3.0), rounding);
    EXPECT_NEAR(point.azimuth, 30, rounding);
    for (const double distance : {200.0000002, -200.0000002, HUGE_VAL, std::nan("")}) {
        const Point none = Evaluate(quarter, distance);
        EXPECT_FALSE(none.found) << distance;
        EXPECT_EQ(none.x, 0);
        EXPECT_EQ(none.y, 0);
        EXPECT_EQ(none.azimuth, 0);
    }
}

TEST(RoadPosition, AnElementWithoutAShapeClearsTheOutputs) {
    const Road road = MakeRoad({Straight(100), Spiral(right, 300, 300, 20)});
    ASSERT_TRUE(UpdateData(road));
    double x = -7, y = -7, azimuth = -7;
    EXPECT_FALSE(GetPositionAndAzimuth(road, 110, 0, 90, &x, &y, &azimuth, 0));
    EXPECT_EQ(std::tuple(x, y, azimuth), std::tuple(0.0, 0.0, 0.0));
    EXPECT_EQ(LastFailure(road).record, 2);
}

TEST(RoadPosition, OffsetsAndAngles) {
    const Road road = MakeRoad({Straight(60), Straight(40)}, {.x = 1000, .y = 2000, .azimuth = 90});
    EXPECT_FALSE(PointAt(road, 75).found) << "the chain is not built by this query";
    ASSERT_TRUE(UpdateData(road));
    struct Case {
        double offset, angle, x, y;
    };
    const double half = 5 / std::sqrt(2.0);
    for (const Case& each : {Case{5, 90, 995, 2050}, Case{-5, 90, 1005, 2050}, Case{5, 200, 995, 2050},
                             Case{5, -1, 995, 2050}, Case{5, NAN, 995, 2050}, Case{5, 45, 1000 - half, 2050 + half},
                             Case{5, 0, 1000, 2055}, Case{-5, 180, 1000, 2055}, Case{1e-7, 90, 1000, 2050}}) {
        const Point point = PointAt(road, 50, each.offset, 0, each.angle);
        SCOPED_TRACE(std::to_string(each.offset) + " at " + std::to_string(each.angle));
        ASSERT_TRUE(point.found);
        EXPECT_NEAR(point.x, each.x, each.offset == 1e-7 ? 0 : rounding);
        EXPECT_NEAR(point.y, each.y, rounding);
        EXPECT_EQ(point.azimuth, 90) << "of the centre line";
    }
}

}  // namespace
}  // namespace kesto::test
