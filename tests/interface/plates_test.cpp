// The plates of the standard section, the section mileage index, and the road side that follows from the plates.
#include <cmath>
#include <cstring>
#include <limits>

#include "support/road.hpp"

namespace kesto::test {
namespace {

std::string Widths(RoadDesign* road, std::int32_t side) {
    std::string text;
    for (const SectionPlate& plate : Plates(road, side)) text += std::to_string(std::lround(plate.width)) + ' ';
    return text;
}

bool AddPlate(RoadDesign* road, double width, std::int32_t side, std::int32_t index) {
    const SectionPlate plate = Plate(width, -2);
    return AddStandardSectionPlate(road, &plate, side, index);
}

TEST(PlateList, EditsOneSideOnly) {
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t side : {left, right}) {
        const Road road;
        EXPECT_TRUE(AddPlate(road, 1, side, 0));  // into an empty list
        EXPECT_TRUE(AddPlate(road, 2, side, -1));
        EXPECT_TRUE(AddPlate(road, 3, side, 2));  // the count itself
        EXPECT_TRUE(AddPlate(road, 4, side, 0));
        EXPECT_TRUE(AddPlate(road, 5, side, 1));
        EXPECT_TRUE(AddPlate(road, 6, side, most));
        EXPECT_EQ(Widths(road, side), "4 5 1 2 3 6 ");
        EXPECT_TRUE(DeleteStandardSectionPlate(road, side, 1));
        SectionPlate plate = Plate(9, 0);
        EXPECT_TRUE(SetStandardSectionPlate(road, side, 3, &plate));
        EXPECT_TRUE(DeleteStandardSectionPlate(road, side, 4));
        const std::string before = Snapshot(road);
        const std::pair<std::int32_t, std::int32_t> nowhere[] = {{side, -1},    {side, 4}, {side, most},
                                                                 {1 - side, 0}, {2, 0},    {-1, 0}};
        for (const auto& [which, index] : nowhere) {
            EXPECT_FALSE(DeleteStandardSectionPlate(road, which, index)) << which << ' ' << index;
            EXPECT_FALSE(SetStandardSectionPlate(road, which, index, &plate)) << which << ' ' << index;
            EXPECT_FALSE(GetStandardSectionPlate(road, which, index, &plate)) << which << ' ' << index;
        }
        EXPECT_FALSE(AddPlate(road, 1, 2, 0));
        EXPECT_FALSE(AddStandardSectionPlateList(road, &plate, 1, -1));
        EXPECT_EQ(GetStandardSectionPlateCount(road, 2), 0);
        EXPECT_EQ(plate.width, 9);
        EXPECT_EQ(Snapshot(road), before);
        EXPECT_EQ(Widths(road, side), "4 1 2 9 ");
    }
}

TEST(PlateList, KeepsEveryByteAndEndsTheTexts) {
    const Road road;
    SectionPlate given;
    std::memset(&given, 0x5A, sizeof given);
    ASSERT_TRUE(AddStandardSectionPlate(road, &given, left, -1));
    ASSERT_TRUE(AddStandardSectionPlateList(road, &given, 1, left));
    ASSERT_TRUE(AddPlate(road, 1, left, -1));
    ASSERT_TRUE(SetStandardSectionPlate(road, left, 2, &given));
    given.name[31] = given.code[31] = '\0';
    for (const SectionPlate& stored : Plates(road, left)) EXPECT_EQ(Bytes(&stored), Bytes(&given));
}

TEST(PlateArrays, AskGrowAskAgain) {
    const Road road = MakeRoad({Straight(100)});
    ASSERT_TRUE(DesignRoad(road));
    AddPlates(road, right, {Plate(3, -2), Plate(1, -4)});
    using Query = bool (*)(RoadDesign*, SectionPlateArray*);
    const Query queries[] = {
        [](RoadDesign* it, SectionPlateArray* array) { return GetStandardSection(it, right, array); },
        [](RoadDesign* it, SectionPlateArray* array) { return GetRoadSide(it, 50, 0, right, array); },
        [](RoadDesign* it, SectionPlateArray* array) { return GetRoadSideNoHeight(it, 50, 0, right, array); }};
    for (const Query query : queries) {
        for (const std::int32_t capacity : {-1, 0, 1, 2, 3}) {
            SCOPED_TRACE(capacity);
            std::vector<SectionPlate> room(3, Plate(-7, -7));
            SectionPlateArray array{room.data(), 77, capacity};
            EXPECT_EQ(query(road, &array), capacity >= 2);
            EXPECT_EQ(array.count, 2);
            EXPECT_EQ(room[0].width, capacity >= 2 ? 3 : -7);
            EXPECT_EQ(room[1].width, capacity >= 2 ? 1 : -7);
            EXPECT_EQ(room[2].width, -7);
        }
        SectionPlateArray none{nullptr, 77, 5};
        EXPECT_FALSE(query(road, &none)) << "room without memory";
        EXPECT_EQ(none.count, 2);
        EXPECT_EQ(LastFailure(road).status, KESTO_ARRAY_TOO_SMALL);
    }
    SectionPlateArray array{nullptr, 77, 0};
    for (const std::int32_t side : {std::int32_t{left}, 2}) {
        EXPECT_FALSE(GetStandardSection(road, side, &array)) << side;
        EXPECT_FALSE(GetRoadSide(road, 50, 0, side, &array)) << side;
        EXPECT_EQ(array.count, 77) << "without a section the array stays as it was";
    }
}

TEST(SectionMileages, AreSortedWithTheirStakeTexts) {
    const Road road;
    const auto listed = [&] {
        std::string text;
        for (const SectionMileageIndex& entry : SectionMileages(road)) text += entry.stakeText + std::string(" ");
        return text;
    };
    SectionMileageIndex entry{"written by the caller", 0};
    for (const double mileage : {1005.5, 0.0, 1200.0, -1050.0}) {
        entry.mileage = mileage;
        EXPECT_TRUE(AddSectionMileageIndex(road, &entry));
    }
    EXPECT_EQ(listed(), "K1+050.000 K0+000.000 K1+005.500 K1+200.000 ");
    SetMakeStakePerfix(road, "DK");
    entry.mileage = 1100;
    EXPECT_TRUE(SetSectionMileageIndex(road, 0, &entry));
    EXPECT_TRUE(DeleteSectionMileageIndex(road, 0));
    EXPECT_EQ(listed(), "K1+005.500 DK1+100.000 K1+200.000 ");
    for (const std::int32_t index : {-1, 3}) {
        EXPECT_FALSE(SetSectionMileageIndex(road, index, &entry)) << index;
        EXPECT_FALSE(GetSectionMileageIndex(road, index, &entry)) << index;
        EXPECT_FALSE(DeleteSectionMileageIndex(road, index)) << index;
    }
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        entry.mileage = bad;
        EXPECT_FALSE(AddSectionMileageIndex(road, &entry)) << bad;
        EXPECT_FALSE(SetSectionMileageIndex(road, 0, &entry)) << bad;
    }
    EXPECT_EQ(listed(), "K1+005.500 DK1+100.000 K1+200.000 ");
}

TEST(RoadSide, WithAndWithoutHeights) {
    const Road road = BrokenRoad(350);
    AddGradePoints(road, {GradePoint(0, 10), GradePoint(950, 20)});
    ASSERT_TRUE(DesignRoad(road));
    AddPlates(road, left, {Plate(3.5, -2), Plate(2, 3, 0.12)});
    const std::vector<SectionPlate> plates = SideAt(road, 380, left, 1);  // 430 m along the road
    ASSERT_EQ(plates.size(), 2U);
    const Point edge = PointAt(road, 380, -5.5, 1);
    EXPECT_EQ(plates[1].offset, 5.5);
    EXPECT_NEAR(std::hypot(plates[1].x - edge.x, plates[1].y - edge.y), 0, 1e-9);
    EXPECT_NEAR(plates[1].height, 14.3 - 0.07 + 0.12 + 0.06, 1e-9);
    SectionPlate bare[2];
    SectionPlateArray array{bare, 0, 2};
    ASSERT_TRUE(GetRoadSideNoHeight(road, 380, 1, left, &array));
    EXPECT_NEAR(bare[1].height, 0.11, 1e-12);
    EXPECT_EQ(bare[1].y, plates[1].y);
    EXPECT_TRUE(SideAt(road, 380, left, 2).empty());
}

}  // namespace
}  // namespace kesto::test
