#include "section/road_side.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "alignment/position.hpp"
#include "profile/vertical_curves.hpp"
#include "section/plates.hpp"
#include "section/roads.hpp"

using namespace kesto_test;

namespace {

/// Straight, spiral, arc, with a rising profile from 100 m at mileage 0 by 1 per cent.
void MakeProfiledRoad(RoadDesign& road) {
    MakeDesigned(road, 0,
                 {MakeElement(1, false, 0, 0, 100, 0, 0, 30), MakeElement(3, true, 0, 200, 60, 0, 0, 30),
                  MakeElement(2, true, 200, 200, 80, 0, 0, 30 + 60.0 / 400 * 180 / std::acos(-1.0))});
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

TEST(RoadSide, EdgesFromTheCentreLineOutwards) {
    RoadDesign road;
    MakeProfiledRoad(road);
    for (const std::int32_t side : {left, right}) {
        for (double mileage = 0; mileage <= 240; mileage += 8) {
            const auto plates = kesto::RoadSide(road, {mileage, 0}, side, kesto::HeightBase::Profile);
            ASSERT_TRUE(plates) << mileage;
            ASSERT_EQ(plates->size(), 2U);
            const double centre = 100 + mileage / 100;
            const double offsets[] = {3.5, 5};
            const double heights[] = {centre - 0.07, centre - 0.07 + 0.15 + 0.06};
            for (std::size_t i = 0; i < 2; ++i) {
                const SectionPlate& plate = (*plates)[i];
                EXPECT_DOUBLE_EQ(plate.offset, offsets[i]);
                EXPECT_NEAR(plate.height, heights[i], 1e-12);
                std::optional<kesto::Position> edge;
                const double offset = side == left ? -offsets[i] : offsets[i];
                ASSERT_TRUE(kesto::FindPosition(road, {mileage, 0}, {.distance = offset}, edge));
                EXPECT_NEAR(plate.x, edge->x, 1e-9);
                EXPECT_NEAR(plate.y, edge->y, 1e-9);
            }
            const auto bare = kesto::RoadSide(road, {mileage, 0}, side, kesto::HeightBase::CentreLine);
            ASSERT_TRUE(bare);
            EXPECT_NEAR((*bare)[1].height, 0.14, 1e-12);
        }
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
