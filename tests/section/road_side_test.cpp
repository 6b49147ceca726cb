#include "section/road_side.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "profile/vertical_curves.hpp"
#include "section/plates.hpp"
#include "section/roads.hpp"

using namespace kesto_test;

namespace {

/// Straight with a rising profile from 100 m at mileage 0 by 1 per cent.
void MakeProfiledRoad(RoadDesign& road) {
    MakeStraightRoad(road);
    for (const double mileage : {0.0, 240.0}) {
        VerticalCurve curve{};
        curve.mileage = mileage;
        curve.elevation = 100 + mileage / 100;
        ASSERT_TRUE(kesto::InsertVerticalCurve(road, curve));
    }
    for (const std::int32_t side : {left, right}) {
        ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(3.5, -2), side, -1));
        ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(1.5, 4, 0.15), side, -1));  // kerb, then a pavement
    }
}

TEST(RoadSide, HeightsAtEveryOffset) {
    RoadDesign road;
    MakeProfiledRoad(road);
    struct Case {
        double offset;
        double expected;  // above the centre line; nan where there is no height
    };
    const double none = std::nan("");
    const Case cases[] = {{0, 0},       {5e-8, 0},      {1, -0.02},         {-1, -0.02},
                          {3.5, -0.07}, {-3.5, -0.07},  {3.5001, 0.080004}, {5, 0.14},
                          {-5, 0.14},   {5.0001, none}, {-5.0001, none},    {4.25, 0.11}};
    for (const Case& it : cases) {
        double height = -1;
        const bool found = static_cast<bool>(kesto::FindHeight(road, {50, 0}, it.offset, height));
        EXPECT_EQ(found, !std::isnan(it.expected)) << it.offset;
        EXPECT_NEAR(height, found ? 100.5 + it.expected : -1, 1e-9) << it.offset;
    }
    road.verticalCurves.Clear();
    double height = -1;
    ASSERT_TRUE(kesto::FindHeight(road, {50, 0}, 1, height));
    EXPECT_NEAR(height, -0.02, 1e-12) << "without a profile the centre line lies at 0";
    const kesto::Outcome beyond = kesto::FindHeight(road, {50, 0}, 7.5, height);
    ASSERT_FALSE(beyond);
    EXPECT_EQ(beyond.failure().status, KESTO_NO_CROSS_SECTION);
    EXPECT_DOUBLE_EQ(beyond.failure().excess, 2.5);
}

}  // namespace
