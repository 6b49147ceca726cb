// Settings, their defaults, the start record and what clearing a road resets.
#include <cmath>
#include <limits>

#include "support/road.hpp"

namespace kesto::test {
namespace {

void ExpectEmptyWithDefaults(RoadDesign* road) {
    double interval = 0;
    double startMileage = -7;
    EXPECT_EQ(GetMakeStakeInfo(road, &interval), 0);
    EXPECT_EQ(interval, 100);
    EXPECT_EQ(GetRoadMileage(road, &startMileage), 0);
    EXPECT_EQ(startMileage, 0);
    EXPECT_STREQ(GetMakeStakePerfix(road), "K");
    for (const auto mode : {GetRoadDesignMode, GetVerticalCurveMode, GetSideSlopeMode, GetSectionMode}) {
        EXPECT_EQ(mode(road), 0);
    }
    for (const auto count : {GetIntersectionCount, GetElementCount, GetCoordinateCount, GetBrokenChainCount,
                             GetVerticalCurveCount, GetStakeCoordinateCount, GetSectionMileageIndexCount}) {
        EXPECT_EQ(count(road), 0);
    }
    for (const std::int32_t side : {left, right}) {
        EXPECT_EQ(GetStandardSectionPlateCount(road, side), 0);
        EXPECT_EQ(GetChangeSectionCount(road, side, 0), 0);
    }
}

TEST(Settings, NewRoadHasDefaults) { ExpectEmptyWithDefaults(Road()); }

TEST(Settings, ClearedRoadIsAsNew) {
    const Road road = MakeRoad({Straight(300), Arc(left, 200, 100)}, {.mileage = 500});
    const Intersection intersection{};
    const Coordinate coordinate{};
    EXPECT_TRUE(AddIntersection(road, &intersection, -1));
    EXPECT_TRUE(AddCoordinate(road, &coordinate, -1));
    AddChain(road, 600, 700);
    AddGradePoints(road, {GradePoint(500, 1), GradePoint(550, 2)});
    AddPlates(road, left, {Plate(3, -2)});
    const double slope = 4;
    EXPECT_TRUE(AddChangeSectionList(road, 550, left, 0, &slope, 1, 0, 2));
    const SectionMileageIndex entry{};
    EXPECT_TRUE(AddSectionMileageIndex(road, &entry));
    SetMileageInterval(road, 20);
    SetMakeStakeType(road, 1);
    SetMakeStakePerfix(road, "DK");
    SetVerticalCurveMode(road, 1);
    SetSideSlopeMode(road, 2);
    SetSectionMode(road, 3);
    EXPECT_TRUE(DesignRoad(road));
    ASSERT_GT(GetStakeCoordinateCount(road), 0);

    ClearRoad(road);
    ExpectEmptyWithDefaults(road);
    std::int32_t type = -7;
    EXPECT_TRUE(GetChangeSectionType(road, left, 0, 0, &type));
    EXPECT_EQ(type, 2) << "the transition types stay";
    SetRoadDesignMode(road, 1);
    EXPECT_FALSE(Continuous(road, 550));
    SetStartMileage(road, 1000);
    EXPECT_TRUE(SetStartInformation(road, 0, 0, 0));
    const Element straight = Straight(100);
    EXPECT_TRUE(AddElement(road, &straight, -1));
    EXPECT_EQ(Continuous(road, 1050), 1050) << "the length of the old road is still known";
}

TEST(Settings, IntervalIsAtLeastOne) {
    struct Case {
        double given, stored;
    };
    for (const Case& each : {Case{0.5, 1}, Case{25, 25}, Case{1, 1}, Case{-100, 1}, Case{0, 1},
                             Case{std::numeric_limits<double>::quiet_NaN(), 1}, Case{1.25, 1.25}}) {
        const Road road;
        double stored = 0;
        SetMileageInterval(road, each.given);
        GetMakeStakeInfo(road, &stored);
        EXPECT_EQ(stored, each.stored) << each.given;
    }
}

TEST(Settings, PrefixIsCopied) {
    const Road road;
    std::string text(1000, 'x');
    SetMakeStakePerfix(road, text.c_str());
    text[0] = 'y';
    EXPECT_EQ(GetMakeStakePerfix(road), std::string(1000, 'x'));
    SetMakeStakePerfix(road, GetMakeStakePerfix(road) + 998);  // a part of the very text that is replaced
    EXPECT_STREQ(GetMakeStakePerfix(road), "xx");
    SetMakeStakePerfix(road, "");
    EXPECT_STREQ(GetMakeStakePerfix(road), "");
}

TEST(Settings, StartRecordIsOverwrittenOrInserted) {
    const Road road;
    ASSERT_TRUE(SetStartInformation(road, 1, 2, 3));
    ASSERT_TRUE(SetStartInformation(road, 10, 20, 30));
    ASSERT_EQ(GetElementCount(road), 1);
    const Element start = Elements(road).front();
    EXPECT_EQ(start.type, 0);
    EXPECT_EQ(start.startX, 10);
    EXPECT_EQ(start.startY, 20);
    EXPECT_EQ(start.startAzimuth, 30);
    EXPECT_EQ(start.secondAzimuth, 30);
    EXPECT_EQ(start.length, 0);

    const Element straight = Straight(50);
    ASSERT_TRUE(SetElement(road, 0, &straight));
    ASSERT_TRUE(SetStartInformation(road, 4, 5, 6));
    const std::vector<Element> elements = Elements(road);
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[0].type, 0);
    EXPECT_EQ(elements[0].startX, 4);
    EXPECT_EQ(Bytes(&elements[1]), Bytes(&straight));
}

}  // namespace
}  // namespace kesto::test
