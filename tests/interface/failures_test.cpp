// What GetLastFailure tells about the chief failures, and the sentences of DescribeStatus.
#include <cstdio>
#include <functional>
#include <limits>
#include <set>

#include "support/road.hpp"

namespace kesto::test {
namespace {

bool ConvertMileage(RoadDesign* road, double mileage, std::int32_t occurrence = 0) {
    return GetSrcMileage(road, &mileage, occurrence);
}

struct Case {
    const char* name;
    std::function<bool(RoadDesign*)> call;
    std::int32_t status;
    std::int32_t limit;
    double value, bound, excess;
};

/// A straight of 1000 m, designed, its stake mileages jumping from 400 to 500: the end is stake 1100.
Road RoadWithGap() {
    Road road = BrokenRoad(500);
    AddGradePoints(road, {GradePoint(0, 1), GradePoint(600, 2)});
    EXPECT_TRUE(DesignRoad(road));
    AddPlates(road, right, {Plate(3.5, -2), Plate(1, -4)});
    return road;
}

TEST(LastFailure, TellsWhichLimitAndByHowMuch) {
    const Case cases[] = {
        {"position beyond the end", [](RoadDesign* road) { return PointAt(road, 1112.4).found; },
         KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, 1112.4, 1100, 12.4},
        {"conversion beyond the end", [](RoadDesign* road) { return ConvertMileage(road, 1112.4); },
         KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, 1112.4, 1100, 12.4},
        {"height beyond the end", [](RoadDesign* road) { return HeightAt(road, 1112.4).has_value(); },
         KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, 1112.4, 1100, 12.4},
        {"before the start", [](RoadDesign* road) { return PointAt(road, -3).found; }, KESTO_MILEAGE_OFF_ROAD,
         KESTO_LIMIT_ROAD_START, -3, 0, 3},
        {"in the gap", [](RoadDesign* road) { return ConvertMileage(road, 450); }, KESTO_NO_SUCH_OCCURRENCE,
         KESTO_LIMIT_OCCURRENCES, 0, 0, 1},
        {"no second occurrence", [](RoadDesign* road) { return PointAt(road, 100, 0, 1).found; },
         KESTO_NO_SUCH_OCCURRENCE, KESTO_LIMIT_OCCURRENCES, 1, 1, 1},
        {"nor a sixth at the very start", [](RoadDesign* road) { return PointAt(road, 0, 0, 5).found; },
         KESTO_NO_SUCH_OCCURRENCE, KESTO_LIMIT_OCCURRENCES, 5, 1, 5},
        {"distance beyond an element",
         [](RoadDesign* road) {
             const Element element = Straight(50);
             double out = 0;
             return GetElementPositionAndAzimuth(road, &element, 62.5, &out, &out, &out);
         },
         KESTO_DISTANCE_BEYOND_ELEMENT, KESTO_LIMIT_ELEMENT_LENGTH, 62.5, 50, 12.5},
        {"too many records",
         [](RoadDesign* road) {
             const Element elements[20] = {};
             return AddElementList(road, elements, 20);
         },
         KESTO_RECORD_COUNT_REFUSED, KESTO_LIMIT_RECORDS_PER_CALL, 20, 16, 4},
        {"height beyond the plates", [](RoadDesign* road) { return HeightAt(road, 100, 0, 7.5).has_value(); },
         KESTO_NO_CROSS_SECTION, KESTO_LIMIT_NONE, 7.5, 4.5, 3},
        {"height where there are no plates", [](RoadDesign* road) { return HeightAt(road, 100, 0, -7.5).has_value(); },
         KESTO_NO_CROSS_SECTION, KESTO_LIMIT_NONE, 7.5, 0, 7.5},
        {"unknown side", [](RoadDesign* road) { return DeleteStandardSectionPlate(road, 2, 0); }, KESTO_UNKNOWN_SIDE,
         KESTO_LIMIT_NONE, 2, 0, 0},
        {"unknown kind", [](RoadDesign* road) { return DeleteChangeSection(road, right, -1, 0); },
         KESTO_UNKNOWN_CHANGE_KIND, KESTO_LIMIT_NONE, -1, 0, 0},
        {"three values for two plates",
         [](RoadDesign* road) {
             const double values[3] = {};
             return AddChangeSectionList(road, 100, right, 0, values, 3, 0, 0);
         },
         KESTO_VALUE_COUNT_DIFFERS, KESTO_LIMIT_RECORD_COUNT, 3, 2, 1},
        {"too little room",
         [](RoadDesign* road) {
             SectionPlate plate;
             SectionPlateArray array{&plate, 0, 1};
             return GetRoadSide(road, 100, 0, right, &array);
         },
         KESTO_ARRAY_TOO_SMALL, KESTO_LIMIT_RECORD_COUNT, 2, 1, 1},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const Road road = RoadWithGap();
        ASSERT_FALSE(each.call(road));
        const Failure failure = LastFailure(road);
        EXPECT_EQ(failure.status, each.status);
        EXPECT_EQ(failure.limit, each.limit);
        EXPECT_NEAR(failure.value, each.value, 1e-9);
        EXPECT_NEAR(failure.bound, each.bound, 1e-9);
        EXPECT_NEAR(failure.excess, each.excess, 1e-9);
    }
}

TEST(LastFailure, TellsWhichListAndRecord) {
    const Road road = RoadWithGap();
    EXPECT_FALSE(DeleteElement(road, 7));
    EXPECT_EQ(LastFailure(road).status, KESTO_INDEX_OUT_OF_RANGE);
    EXPECT_EQ(LastFailure(road).list, KESTO_LIST_ELEMENTS);
    EXPECT_EQ(LastFailure(road).value, 7);
    EXPECT_EQ(LastFailure(road).bound, 3);

    const struct {
        std::function<bool(RoadDesign*)> remove;
        std::int32_t list;
    } lists[] = {{[](RoadDesign* it) { return DeleteIntersection(it, 9); }, KESTO_LIST_INTERSECTIONS},
                 {[](RoadDesign* it) { return DeleteCoordinate(it, 9); }, KESTO_LIST_COORDINATES},
                 {[](RoadDesign* it) { return DeleteBrokenChain(it, 9); }, KESTO_LIST_BROKEN_CHAINS},
                 {[](RoadDesign* it) { return DeleteVerticalCurve(it, 9); }, KESTO_LIST_VERTICAL_CURVES},
                 {[](RoadDesign* it) { return DeleteStandardSectionPlate(it, right, 9); }, KESTO_LIST_PLATES},
                 {[](RoadDesign* it) { return DeleteChangeSection(it, right, 0, 9); }, KESTO_LIST_CHANGE_SECTIONS},
                 {[](RoadDesign* it) { return DeleteSectionMileageIndex(it, 9); }, KESTO_LIST_SECTION_MILEAGES},
                 {[](RoadDesign* it) {
                      StakeCoordinate stake;
                      return GetStakeCoordinate(it, 99, &stake);
                  },
                  KESTO_LIST_STAKES}};
    for (const auto& each : lists) {
        EXPECT_FALSE(each.remove(road));
        EXPECT_EQ(LastFailure(road).list, each.list);
    }

    const VerticalCurve twice = GradePoint(600, 3);
    EXPECT_FALSE(AddVerticalCurve(road, &twice));
    EXPECT_EQ(LastFailure(road).status, KESTO_DUPLICATE_MILEAGE);
    EXPECT_EQ(LastFailure(road).list, KESTO_LIST_VERTICAL_CURVES);
    EXPECT_EQ(LastFailure(road).record, 1);
    EXPECT_EQ(LastFailure(road).value, 600);
    const BrokenChain again{400, 1};
    EXPECT_FALSE(AddBrokenChain(road, &again));
    EXPECT_EQ(LastFailure(road).status, KESTO_DUPLICATE_MILEAGE);
    EXPECT_EQ(LastFailure(road).list, KESTO_LIST_BROKEN_CHAINS);
    EXPECT_EQ(LastFailure(road).record, 0);

    const Road few = MakeRoad({});
    EXPECT_FALSE(DesignRoad(few));
    EXPECT_EQ(LastFailure(few).status, KESTO_TOO_FEW_ELEMENTS);
    EXPECT_EQ(LastFailure(few).value, 1);
    EXPECT_EQ(LastFailure(few).bound, 2);

    const Road bad = MakeRoad({Straight(10), Straight(std::numeric_limits<double>::infinity()), Straight(10)});
    EXPECT_FALSE(UpdateData(bad));
    EXPECT_EQ(LastFailure(bad).status, KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(LastFailure(bad).list, KESTO_LIST_ELEMENTS);
    EXPECT_EQ(LastFailure(bad).record, 2);
}

TEST(LastFailure, LastsUntilTheNextFailureOrAClearedRoad) {
    const Road road = MakeRoad({});
    Failure failure{};
    failure.status = 1234;
    EXPECT_FALSE(GetLastFailure(road, &failure)) << "none yet";
    EXPECT_EQ(failure.status, 1234);
    // The build inside fails, and the call succeeds all the same.
    AddGradePoints(road, {GradePoint(0, 1), GradePoint(100, 2)});
    EXPECT_FALSE(GetLastFailure(road, &failure));

    EXPECT_FALSE(DeleteElement(road, -4));
    EXPECT_TRUE(SetStartInformation(road, 1, 2, 3));
    const Element straight = Straight(100);
    EXPECT_TRUE(AddElement(road, &straight, -1));
    EXPECT_TRUE(DesignRoad(road));
    EXPECT_TRUE(PointAt(road, 50).found);
    EXPECT_EQ(GetIntersectionCount(road), 0);
    ASSERT_TRUE(GetLastFailure(road, &failure));
    EXPECT_EQ(failure.status, KESTO_INDEX_OUT_OF_RANGE);
    EXPECT_EQ(failure.value, -4);
    EXPECT_FALSE(GetLastFailure(road, nullptr));
    EXPECT_EQ(LastFailure(road).status, KESTO_INDEX_OUT_OF_RANGE) << "the question itself records nothing";

    const Road other;
    EXPECT_FALSE(GetLastFailure(other, &failure)) << "each road has its own";
    ClearRoad(road);
    EXPECT_FALSE(GetLastFailure(road, &failure));
}

TEST(DescribeStatus, HasASentenceForEveryCode) {
    std::set<std::string> sentences;
    const std::set<std::int32_t> unknown = {10, 11, 19, 38};
    for (std::int32_t status = 0; status <= 39; ++status) {
        const std::string sentence = DescribeStatus(status);
        if (unknown.contains(status)) {
            EXPECT_EQ(sentence, "unknown status") << status;
        } else {
            EXPECT_NE(sentence, "unknown status") << status;
            EXPECT_GT(sentence.size(), 5U) << status;
            EXPECT_TRUE(sentences.insert(sentence).second) << "twice: " << sentence;
        }
    }
    for (const std::int32_t status :
         {-1, 40, 1000, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_STREQ(DescribeStatus(status), "unknown status");
    }
}

TEST(Version, HasThreeNumbers) {
    int major = -1, minor = -1, patch = -1;
    char rest = '\0';
    EXPECT_EQ(std::sscanf(KestoRoadVersion(), "%d.%d.%d%c", &major, &minor, &patch, &rest), 3);
    EXPECT_STREQ(KestoRoadVersion(), KESTO_ROAD_VERSION);
}

}  // namespace
}  // namespace kesto::test
