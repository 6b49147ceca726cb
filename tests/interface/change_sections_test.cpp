// Change sections as a host enters and reads them, and the sections and heights that they make.
#include <cmath>
#include <functional>
#include <limits>

#include "support/road.hpp"

namespace kesto::test {
namespace {

/// Designed straight of 1000 m, broken at 400 back to 350, with the plates given on the left.
Road RoadWithPlates(const std::vector<SectionPlate>& plates) {
    Road road = BrokenRoad(350);
    EXPECT_TRUE(DesignRoad(road));
    AddPlates(road, left, plates);
    return road;
}

bool AddChange(RoadDesign* road, double mileage, std::int32_t kind, std::vector<double> values, std::int32_t type,
               std::int32_t occurrence = 0) {
    const DoubleArray array{values.data(), static_cast<std::int32_t>(values.size()), 0};
    return AddChangeSection(road, mileage, left, kind, &array, occurrence, type);
}

/// A change section of the left side as one line of text: mileage, occurrence, values, flags.
std::string Listed(RoadDesign* road, std::int32_t kind, std::int32_t index = 0) {
    double values[4] = {};
    std::int32_t flags[4] = {};
    DoubleArray valueArray{values, 0, 4};
    Int32Array flagArray{flags, 0, 4};
    double mileage = 0;
    std::int32_t occurrence = 0;
    if (!GetChangeSection2(road, left, kind, index, &mileage, &valueArray, &flagArray, &occurrence)) return "none";
    std::string text = std::to_string(std::lround(mileage)) + '/' + std::to_string(occurrence) + ':';
    for (std::int32_t i = 0; i < valueArray.count; ++i) text += ' ' + std::to_string(std::lround(values[i]));
    text += ';';
    for (std::int32_t i = 0; i < flagArray.count; ++i) text += ' ' + std::to_string(flags[i]);
    return text;
}

TEST(ChangeSections, EveryWayToAddAndSet) {
    double given[] = {3, 1};
    std::int32_t givenFlags[] = {8, 9};
    const DoubleArray valueArray{given, 2, 0};
    const Int32Array flagArray{givenFlags, 2, 0};
    const std::pair<std::function<bool(RoadDesign*)>, const char*> ways[] = {
        {[&](auto* it) { return AddChangeSection(it, 380, left, widening, &valueArray, 1, 2); }, "1 1"},
        {[&](auto* it) { return AddChangeSection2(it, 380, left, widening, &valueArray, &flagArray, 1, 2); }, "8 9"},
        {[&](auto* it) { return AddChangeSectionList(it, 380, left, widening, given, 2, 1, 2); }, "1 1"},
        {[&](auto* it) { return AddChangeSectionList2(it, 380, left, widening, given, givenFlags, 2, 1, 2); }, "8 9"},
        {[&](auto* it) {
             return AddChange(it, 380, widening, {7, 7}, 5, 1) &&
                    SetChangeSection(it, left, widening, 0, 380, &valueArray, 1, 2);
         },
         "1 1"},
        {[&](auto* it) {
             return AddChange(it, 380, widening, {7, 7}, 5, 1) &&
                    SetChangeSection2(it, left, widening, 0, 380, &valueArray, &flagArray, 1, 2);
         },
         "8 9"}};
    for (const auto& [call, flags] : ways) {
        const Road road = RoadWithPlates({Plate(5, -2), Plate(1, 0)});
        ASSERT_TRUE(call(road));
        EXPECT_EQ(GetChangeSectionCount(road, left, widening), 1);
        EXPECT_EQ(Listed(road, widening), std::string("380/1: 3 1; ") + flags);
        std::int32_t type = -7;
        EXPECT_TRUE(GetChangeSectionType(road, left, widening, 0, &type));
        EXPECT_EQ(type, 2);
        double mileage = 0;
        std::int32_t occurrence = -7;
        double room[2] = {};
        DoubleArray array{room, 0, 2};
        EXPECT_TRUE(GetChangeSection(road, left, widening, 0, &mileage, &array, &occurrence));
        EXPECT_EQ(room[1], 1);
        EXPECT_EQ(occurrence, 1);
    }
}

TEST(ChangeSections, ArraysThatDoNotFit) {
    const Road road = RoadWithPlates({Plate(5, -2), Plate(1, 0)});
    double values[] = {-7, -7};
    std::int32_t flags[] = {-7, -7, -7};
    const auto add = [&](DoubleArray valueArray, Int32Array flagArray) {
        EXPECT_FALSE(AddChangeSection2(road, 10, left, widening, &valueArray, &flagArray, 0, 0));
        return LastFailure(road).status;
    };
    EXPECT_EQ(add({nullptr, 2, 0}, {flags, 2, 0}), KESTO_NULL_ARGUMENT);
    EXPECT_EQ(add({values, 2, 0}, {nullptr, 2, 0}), KESTO_NULL_ARGUMENT);
    EXPECT_EQ(add({values, 2, 0}, {flags, 3, 0}), KESTO_VALUE_COUNT_DIFFERS);
    for (const std::int32_t count : {-1, 0}) {
        EXPECT_EQ(add({nullptr, count, 2}, {flags, 2, 0}), KESTO_VALUE_COUNT_DIFFERS) << "no array, so no values";
        EXPECT_EQ(add({values, 2, 0}, {nullptr, count, 2}), KESTO_VALUE_COUNT_DIFFERS);
    }

    ASSERT_TRUE(AddChange(road, 100, widening, {4, 2}, 0));
    for (const auto& [room, flagRoom] : {std::pair{1, 3}, {3, 1}, {0, 0}}) {
        DoubleArray valueArray{values, 77, room};
        Int32Array flagArray{flags, 77, flagRoom};
        double mileage = -7;
        std::int32_t occurrence = -7;
        EXPECT_FALSE(GetChangeSection2(road, left, widening, 0, &mileage, &valueArray, &flagArray, &occurrence));
        EXPECT_EQ(room < 2 ? valueArray.count : 2, 2);
        EXPECT_EQ(flagRoom < 2 ? flagArray.count : 2, 2);
        EXPECT_EQ(mileage, -7);
        EXPECT_EQ(occurrence, -7);
        EXPECT_EQ(values[0], -7);
        EXPECT_EQ(flags[0], -7);
    }
}

TEST(ChangeSections, HugeCountsAreRefusedUnread) {
    const Road road = RoadWithPlates({Plate(5, -2)});
    double value = 4;
    std::int32_t flag = 1;
    for (const std::int32_t count : {1 << 24, std::numeric_limits<std::int32_t>::max()}) {
        const DoubleArray values{&value, count, 0};
        const Int32Array flags{&flag, count, 0};
        EXPECT_FALSE(AddChangeSection2(road, 10, left, widening, &values, &flags, 0, 0));
        EXPECT_EQ(LastFailure(road).status, KESTO_VALUE_COUNT_DIFFERS);
        EXPECT_FALSE(AddChangeSectionList(road, 10, left, widening, &value, count, 0, 0));
        EXPECT_EQ(LastFailure(road).status, KESTO_VALUE_COUNT_DIFFERS);
    }
}

TEST(ChangeSections, TypesOutliveTheirSections) {
    const Road road = RoadWithPlates({Plate(5, -2)});
    ASSERT_TRUE(AddChange(road, 100, widening, {6}, 1));
    ASSERT_TRUE(AddChange(road, 200, widening, {7}, 2));
    ASSERT_TRUE(DeleteChangeSection(road, left, widening, 0));
    EXPECT_TRUE(SetChangeSectionType(road, left, widening, 1, 7));
    EXPECT_FALSE(SetChangeSectionType(road, left, widening, 2, 7));
    EXPECT_EQ(SideAt(road, 150, left).at(0).width, 5) << "an unknown type keeps the standard value";
    ASSERT_TRUE(AddChange(road, 100, widening, {6}, 0));
    EXPECT_NEAR(SideAt(road, 25, left).at(0).width, 5.25, 1e-12) << "the new section's own type, linear";
    ASSERT_TRUE(DeleteChangeSection(road, left, widening, 0));
    const auto type = [&](std::int32_t side, std::int32_t kind, std::int32_t index) {
        std::int32_t found = 55;
        return GetChangeSectionType(road, side, kind, index, &found) ? found : -99;
    };
    EXPECT_EQ(type(left, widening, 0), 0) << "the type of the section that is gone";
    EXPECT_EQ(type(left, widening, 1), 7);
    double moved = 7;
    const DoubleArray values{&moved, 1, 0};
    ASSERT_TRUE(AddChange(road, 400, widening, {8}, 0));
    EXPECT_FALSE(SetChangeSection(road, left, widening, 0, 400, &values, 0, 5)) << "one lies there";
    EXPECT_EQ(LastFailure(road).status, KESTO_DUPLICATE_MILEAGE);
    ASSERT_TRUE(DeleteChangeSection(road, left, widening, 1));
    ASSERT_TRUE(SetChangeSection(road, left, widening, 0, 300, &values, 0, 5));
    EXPECT_EQ(GetChangeSectionCount(road, left, widening), 1);
    EXPECT_EQ(type(left, widening, 1), 7) << "the place that it left";
    ASSERT_TRUE(DeleteStandardSectionPlate(road, left, 0));
    EXPECT_EQ(GetChangeSectionCount(road, left, widening), 0) << "they go with the last plate";
    EXPECT_EQ(type(left, widening, 2), 5);
    EXPECT_EQ(type(left, widening, 4), 0) << "past the table";
    EXPECT_EQ(type(5, widening, -1), 55) << "an unknown side";
    EXPECT_EQ(type(left, 5, 0), -99);
    EXPECT_EQ(type(left, widening, -1), -99);
}

TEST(ChangeSections, PlaceThatIsNoNumber) {
    const Road road = RoadWithPlates({Plate(5, -2)});
    ASSERT_TRUE(AddChange(road, 950, widening, {6}, 0));  // the very end
    Element last = Elements(road).back();
    last.startMileage = std::nan("");
    ASSERT_TRUE(SetElement(road, GetElementCount(road) - 1, &last));
    EXPECT_EQ(Listed(road, widening), "none");
}

TEST(ChangeSections, OtherSectionModesHaveNoSection) {
    const Road road = RoadWithPlates({Plate(5, -2)});
    for (const std::int32_t mode : {1, 5, -1, std::numeric_limits<std::int32_t>::min()}) {
        SetSectionMode(road, mode);
        EXPECT_EQ(GetSectionMode(road), mode);
        EXPECT_TRUE(SideAt(road, 50, left).empty()) << mode;
        EXPECT_FALSE(HeightAt(road, 50, 0, -3)) << mode;
        EXPECT_EQ(LastFailure(road).status, KESTO_NO_CROSS_SECTION);
        EXPECT_TRUE(HeightAt(road, 50)) << "the centre line needs no section";
    }
    SetSectionMode(road, 0);
    EXPECT_EQ(SideAt(road, 50, left).size(), 1U);
}

}  // namespace
}  // namespace kesto::test
