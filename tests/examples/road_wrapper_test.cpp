// The C++ wrapper: what it adds to the C interface, and that nothing fails unseen.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "kesto_road/kesto_road.hpp"

namespace {

using kesto::Error;
using kesto::Road;
using kesto::Turn;

constexpr double pi = std::numbers::pi;
constexpr double tiny = 1e-8;  // m

template <class Action>
std::int32_t StatusOf(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Status();
    }
    return KESTO_SUCCESS;
}

/// Straight north, a quarter turn left, straight west: all points are known without a computer.
Road QuarterTurn() {
    Road road;
    road.Start(1000, 2000, 0, 500).Straight(100).Arc(50, 25 * pi, Turn::Left).Straight(100);
    return road;
}

TEST(RoadWrapper, ElementsAreJoinedAndTangent) {
    Road road = QuarterTurn();
    ASSERT_TRUE(road.Design());
    const auto last = road.Elements().back();
    EXPECT_NEAR(last.startX, 1150, tiny);
    EXPECT_NEAR(last.startY, 1950, tiny);
    EXPECT_NEAR(last.startAzimuth, 270, tiny);

    const double place = 500 + 100 + 25 * pi + 40;
    const auto right = road.At(place, 7);  // right of a road to the west is north
    ASSERT_TRUE(right);
    EXPECT_NEAR(right->x, 1157, tiny);
    EXPECT_NEAR(right->y, 1910, tiny);
    const auto found = road.Locate(1157, 1910);
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->mileage, place, tiny);
    EXPECT_NEAR(found->offset, 7, tiny);
    EXPECT_EQ(found->occurrence, 0);
}

TEST(RoadWrapper, SpiralTurnsItsWay) {
    for (const Turn turn : {Turn::Left, Turn::Right}) {
        Road road;
        road.Start(0, 0, 90).Spiral(0, 200, 80, turn).Arc(200, 10, turn);
        // A clothoid turns by length / (2 radius).
        const double turned = 80 / (2 * 200.0) * 180 / pi;
        EXPECT_NEAR(road.Elements().back().startAzimuth, turn == Turn::Left ? 90 - turned : 90 + turned, 1e-9);
    }
}

TEST(RoadWrapper, RefusedPiecesThrowAndAddNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Road empty;
    EXPECT_EQ(StatusOf([&] { empty.Straight(10); }), KESTO_NO_START_ELEMENT);
    EXPECT_EQ(StatusOf([&] { empty.Start(0, nan, 0); }), KESTO_ARGUMENT_NOT_FINITE);

    Road road = QuarterTurn();
    const auto count = road.Elements().size();
    EXPECT_EQ(StatusOf([&] { road.Straight(nan); }), KESTO_ARGUMENT_NOT_FINITE);
    EXPECT_EQ(StatusOf([&] { road.Arc(0, 10, Turn::Left); }), KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(StatusOf([&] { road.Arc(nan, 10, Turn::Left); }), KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(StatusOf([&] { road.Spiral(300, 300, 10, Turn::Left); }), KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(StatusOf([&] { road.Spiral(-300, 0, 10, Turn::Left); }), KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(road.Elements().size(), count);
    road.BrokenChain(550, 560);
    EXPECT_EQ(StatusOf([&] { road.BrokenChain(550, 570); }), KESTO_DUPLICATE_MILEAGE);
    EXPECT_EQ(StatusOf([&] { road.GradePoint(520, nan); }), KESTO_ARGUMENT_NOT_FINITE);
    EXPECT_EQ(GetBrokenChainCount(road.Handle()), 1);
    EXPECT_EQ(GetVerticalCurveCount(road.Handle()), 0);
}

TEST(RoadWrapper, QueriesWithoutAnswerAreEmptyAndSayWhy) {
    Road road = QuarterTurn();
    ASSERT_TRUE(road.Design());
    EXPECT_FALSE(road.LastFailure());
    EXPECT_FALSE(road.At(499));
    ASSERT_TRUE(road.LastFailure());
    EXPECT_EQ(road.LastFailure()->status, KESTO_MILEAGE_OFF_ROAD);
    EXPECT_FALSE(road.ContinuousMileage(510, 1));
    EXPECT_EQ(road.Height(510), 0.0);
    road.GradePoint(500, 20);
    EXPECT_FALSE(road.Height(499));
    EXPECT_EQ(road.Open("no_such.road"), KESTO_FILE_NOT_OPENED);
}

TEST(RoadWrapper, SectionsPassFromPlatesToChanges) {
    using kesto::ChangeOf;
    using kesto::Side;
    using kesto::Transition;
    Road road = QuarterTurn();
    EXPECT_FALSE(road.RoadSide(540, Side::Right));
    EXPECT_EQ(road.LastFailure()->status, KESTO_NO_CROSS_SECTION);
    road.Plate(Side::Right, 3, -2, 0.1, "lane").Plate(Side::Right, 1, -6).GradePoint(500, 20).GradePoint(700, 22);
    ASSERT_TRUE(road.Design());
    road.Change(Side::Right, ChangeOf::Width, 600, {4, 1});
    road.Change(Side::Right, ChangeOf::CrossSlope, 600, {4, -6}, Transition::Cubic);

    // 40 of the 100 m to the change sections, on a straight to the north: the width has 0.4 of its change, the slope
    // 0.4 squared times (3 - 0.8).
    const double slope = -2 + 6 * 0.352;
    const double height = 20.4 + 0.1 + 3.4 * slope / 100;
    const auto right = road.RoadSide(540, Side::Right);
    ASSERT_TRUE(right);
    ASSERT_EQ(right->size(), 2U);
    EXPECT_STREQ(right->front().name, "lane");
    EXPECT_NEAR(right->front().width, 3.4, tiny);
    EXPECT_NEAR(right->front().crossSlope, slope, tiny);
    EXPECT_NEAR(right->front().height, height, tiny);
    EXPECT_NEAR(right->back().offset, 4.4, tiny);
    EXPECT_NEAR(right->back().x, 1040, tiny);
    EXPECT_NEAR(right->back().y, 2004.4, tiny);
    EXPECT_NEAR(right->back().height, height - 0.06, tiny);
    EXPECT_NEAR(road.Height(540, 0, 3.9).value_or(0), height - 0.03, tiny);
    EXPECT_FALSE(road.RoadSide(540, Side::Left));

    EXPECT_EQ(StatusOf([&] { road.Change(Side::Right, ChangeOf::Width, 650, {4}); }), KESTO_VALUE_COUNT_DIFFERS);
    EXPECT_EQ(StatusOf([&] { road.Change(Side::Right, ChangeOf::Width, 499, {4, 1}); }), KESTO_MILEAGE_OFF_ROAD);
    EXPECT_EQ(StatusOf([&] { road.Change(Side::Right, ChangeOf::Width, 600, {4, 1}); }), KESTO_DUPLICATE_MILEAGE);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(StatusOf([&] { road.Plate(Side::Left, nan, 0); }), KESTO_ARGUMENT_NOT_FINITE);
    EXPECT_EQ(StatusOf([&] { road.Change(Side::Right, ChangeOf::Width, 650, {4, nan}); }), KESTO_ARGUMENT_NOT_FINITE);
}

TEST(RoadWrapper, StartBeginsAnewAndHandlesMove) {
    Road road = QuarterTurn();
    ASSERT_TRUE(road.Design());
    Road moved = std::move(road);
    moved.Start(0, 0, 0).Straight(250);
    ASSERT_TRUE(moved.Design());
    EXPECT_EQ(moved.Elements().size(), 2U);
    ASSERT_EQ(moved.Stakes().size(), 4U);  // the start, 100, 200 and the end
    EXPECT_STREQ(moved.Stakes()[1].name, "K0+100.000");
}

TEST(RoadWrapper, AnswersManyPointsAndFreezes) {
    Road road;
    road.Start(0, 0, 0).Straight(200);
    ASSERT_TRUE(road.Design());
    road.GradePoint(0, 50).GradePoint(100, 51);
    road.Plate(kesto::Side::Left, 3.5, 2);
    const kesto::FrozenRoad frozen(road);
    const kesto::Location expected = road.Locate(7, 3).value();
    const kesto::Location alone = frozen.Locate(7, 3).value();
    EXPECT_EQ(alone.mileage, expected.mileage);
    EXPECT_EQ(alone.offset, expected.offset);
    EXPECT_EQ(frozen.At(20).value().x, 20);
    EXPECT_TRUE(frozen.LocateBetween(7, 3, {5, 0, 0}, {9, 0, 0}));
    EXPECT_EQ(frozen.Height(50), road.Height(50));
    EXPECT_FALSE(frozen.At(-5));
    EXPECT_EQ(frozen.ContinuousMileage(50), road.ContinuousMileage(50));
    EXPECT_EQ(frozen.Stakes().size(), road.Stakes().size());
    EXPECT_EQ(frozen.NearestStake(7, 3).has_value(), road.NearestStake(7, 3).has_value());
    EXPECT_NEAR(frozen.RoadSide(50, kesto::Side::Left).value().at(0).height, 50.57, 1e-12);
    EXPECT_FALSE(frozen.RoadSide(50, kesto::Side::Right));

    const double xy[] = {7, 3, 7, std::numeric_limits<double>::quiet_NaN()};
    constexpr std::size_t pair = 2 * sizeof(double);
    for (const bool fromFrozen : {false, true}) {
        double mileage[2], offset[2];
        std::int32_t occurrence[2];
        std::uint8_t status[2];
        const kesto::PointColumns points{{xy, pair}, {xy + 1, pair}, mileage, offset, occurrence, status};
        fromFrozen ? frozen.Locate(2, points) : road.Locate(2, points);
        EXPECT_EQ(mileage[0], expected.mileage);
        EXPECT_EQ(offset[0], expected.offset);
        EXPECT_EQ(status[1], KESTO_ARGUMENT_NOT_FINITE);
        const kesto::PlaceColumns places{mileage, {}, offset, {}, offset, mileage, mileage + 1, status};
        fromFrozen ? frozen.At(1, places) : road.At(1, places);
        EXPECT_NEAR(offset[0], 7, 1e-6);
        EXPECT_NEAR(mileage[0], 3, 1e-6);
        const double middle = 50;
        fromFrozen ? frozen.Heights(1, {&middle, {}, {}, offset, status})
                   : road.Heights(1, {&middle, {}, {}, offset, status});
        EXPECT_EQ(offset[0], 50.5);
    }
    EXPECT_EQ(StatusOf([&] { frozen.Heights(-1, {}); }), KESTO_RECORD_COUNT_REFUSED);
    EXPECT_EQ(StatusOf([&] { road.Heights(1, {}); }), KESTO_NULL_ARGUMENT);
    EXPECT_EQ(StatusOf([&] { kesto::FrozenRoad{Road()}; }), KESTO_TOO_FEW_ELEMENTS);
}

TEST(RoadWrapper, GoesThroughMemory) {
    Road road = QuarterTurn();
    Road back;
    EXPECT_EQ(back.FromMemory(road.ToMemory()), KESTO_SUCCESS);
    EXPECT_EQ(back.ToMemory(), road.ToMemory());
    EXPECT_FALSE(back.Stakes().empty());
    EXPECT_EQ(back.FromMemory(""), KESTO_TOO_FEW_ELEMENTS);
}

TEST(RoadWrapper, StakeTextsComeBack) {
    Road road;
    EXPECT_EQ(road.FormatStake(12345.678, 1), "+K12+345.678");
    SetMakeStakePerfix(road.Handle(), std::string(70, 'K').c_str());
    EXPECT_EQ(road.FormatStake(-1.5), "-" + std::string(70, 'K') + "0+001.500");
    EXPECT_FALSE(road.FormatStake(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(road.ParseStake("-0+001.5")->mileage, -1.5);
    EXPECT_FALSE(road.ParseStake("Z1+000"));
    EXPECT_EQ(road.LastFailure()->status, KESTO_NO_MILEAGE_IN_TEXT);
}

TEST(RoadWrapper, TellsWhatAnOpeningMet) {
    Road road;
    EXPECT_EQ(road.FromMemory("0 9 0 K\n\nElement\n0 0 0 0 0 0 0 0 0 0\n0 0 0 9x 0 0 1 0 0 0\n"), 0);
    const std::vector<ReadingFinding> findings = road.ReadingFindings();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].line, 5);
    EXPECT_EQ(findings[0].reason, KESTO_READING_NOT_A_NUMBER);
    EXPECT_STREQ(findings[0].text, "9x");
    EXPECT_EQ(road.RecordLine(KESTO_LIST_ELEMENTS, 1), 5);
    EXPECT_FALSE(road.RecordLine(KESTO_LIST_ELEMENTS, 2));
}

TEST(RoadWrapper, StakeTextsAreRoundedToTheMillimetre) {
    Road road;
    EXPECT_EQ(road.StakeText(12345.678), "K12+345.678");
    EXPECT_EQ(road.StakeText(999.9996), "K1+000.000");
    EXPECT_EQ(road.StakeText(7.05, 1), "+K0+007.050");
    EXPECT_EQ(road.StakeText(-20), "-K0+020.000");
    EXPECT_EQ(road.StakeText(std::numeric_limits<double>::infinity()), "?");
    EXPECT_EQ(road.StakePrefix("AK").StakeText(1000), "AK1+000.000");
}

}  // namespace
