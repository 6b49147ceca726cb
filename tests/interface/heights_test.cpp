// Vertical curves as derived, and the design heights that follow from them.
#include "support/road.hpp"

namespace kesto::test {
namespace {

constexpr double rounding = 1e-9;  // m

struct HeightCase {
    const char* name;
    double mileage, height;
    std::int32_t occurrence = 0;
};

void ExpectHeights(RoadDesign* road, const std::vector<HeightCase>& cases) {
    for (const HeightCase& each : cases) {
        SCOPED_TRACE(each.name);
        const auto height = HeightAt(road, each.mileage, each.occurrence);
        ASSERT_TRUE(height);
        EXPECT_NEAR(*height, each.height, rounding);
    }
}

Road Profile(double length, const std::vector<VerticalCurve>& points, Start start = {}) {
    Road road = MakeRoad({Straight(length)}, start);
    AddGradePoints(road, points);
    return road;
}

TEST(Heights, CrestAndSag) {
    for (const double sign : {1.0, -1.0}) {
        const Road road =
            Profile(2000, {GradePoint(0, 0), GradePoint(1000, sign * 20, 10000), GradePoint(2000, sign * 10)});
        ExpectHeights(road, {{"tangent before", 500, sign * 10},
                             {"curve start", 850, sign * 17},
                             {"first half", 900, sign * (18 - 0.125)},
                             {"at the point", 1000, sign * (20 - 1.125)},
                             {"second half", 1100, sign * (19 - 0.125)},
                             {"curve end", 1150, sign * 18.5},
                             {"tangent behind", 1500, sign * 15}});
        const std::vector<VerticalCurve> curves = Curves(road);
        EXPECT_EQ(curves[1].curveSign, static_cast<int>(sign));
        EXPECT_NEAR(curves[1].tangentLength, 150, rounding);
        EXPECT_NEAR(curves[1].startMileage, 850, rounding);
        EXPECT_NEAR(curves[1].endMileage, 1150, rounding);
        EXPECT_EQ(curves[1].startOccurrence, 0);
        EXPECT_NEAR(curves[0].gradeOut, sign * 0.02, 1e-12);
        EXPECT_NEAR(curves[1].gradeOut, sign * -0.01, 1e-12);
        EXPECT_EQ(curves[2].gradeOut, 0);
        EXPECT_EQ(curves[1].distanceToNext, 1000);
        EXPECT_EQ(curves[2].distanceToNext, 0);
        EXPECT_EQ(curves[0].curveSign, 0);
        EXPECT_EQ(curves[2].curveSign, 0);
    }
}

TEST(Heights, CurveWhollyBeforeTheRoadCollapses) {
    const Road before = Profile(2000, {GradePoint(-900, 4), GradePoint(-400, 14, 10000), GradePoint(600, 4)});
    ExpectHeights(before, {{"on the tangent", 100, 9}});
    EXPECT_EQ(Curves(before)[1].startMileage, -400);
    EXPECT_EQ(Curves(before)[1].endMileage, -400);
}

TEST(Heights, GivenCurveEnds) {
    VerticalCurve middle = GradePoint(100, 2);
    const Road road = Profile(1000, {GradePoint(0, 0), middle, GradePoint(300, 2)});
    SetVerticalCurveMode(road, 1);
    // Without occurrences the curve reaches to the points beside it: k = -0.02 / 300, a1 = 2 k, a2 = k / 2.
    const double k = -0.02 / 300;
    ExpectHeights(road, {{"first half", 50, 1 + k * 50 * 50},
                         {"at the point", 100, 2 + k * 100 * 100},
                         {"second half", 200, 2 + k / 4 * 100 * 100},
                         {"end", 300, 2}});
    middle.startMileage = 60;
    middle.endMileage = 140;
    middle.startOccurrence = middle.endOccurrence = 0;
    ASSERT_TRUE(SetVerticalCurve(road, 1, &middle));
    ExpectHeights(road, {{"tangent before", 50, 1},
                         {"at the point of the symmetric curve", 100, 2 - 0.02 * 80 / 8},
                         {"tangent behind", 200, 2}});
    EXPECT_EQ(Curves(road)[1].startMileage, 60) << "given ends stay";
    EXPECT_EQ(Curves(road)[1].endMileage, 140);
}

TEST(Heights, FollowTheContinuousMileage) {
    const Road curved = BrokenRoad(350);  // the curve lies on either side of the break, 360 to 440 along the road
    AddGradePoints(curved, {GradePoint(0, 0), GradePoint(350, 8, 2000, 1), GradePoint(950, -4)});
    ExpectHeights(curved, {{"at the break", 350, 8 - 40 * 40 / 4000.0, 1}});
    const VerticalCurve curve = Curves(curved)[1];
    EXPECT_NEAR(curve.startMileage, 360, rounding);
    EXPECT_EQ(curve.startOccurrence, 0);
    EXPECT_NEAR(curve.endMileage, 390, rounding);
    EXPECT_EQ(curve.endOccurrence, 1);
}

TEST(Heights, FollowEditedElements) {
    const Road road = Profile(1000, {GradePoint(0, 0), GradePoint(500, 10)});
    ExpectHeights(road, {{"as built", 250, 5}});
    Element element = Elements(road)[1];
    element.startMileage -= 100;  // all stakes lie 100 m farther along the road, the grade points with them
    ASSERT_TRUE(SetElement(road, 1, &element));
    ExpectHeights(road, {{"edited", 250, 5}});
}

TEST(Heights, WhereThereIsNone) {
    double height = -7;
    const Road empty;
    EXPECT_TRUE(GetHeight(empty, 12, 0, 0, &height)) << "no profile and no road";
    EXPECT_EQ(height, 0);
    EXPECT_EQ(GetElementCount(empty), 0);
    EXPECT_EQ(LastFailure(empty).status, KESTO_SUCCESS);
    height = -7;
    EXPECT_FALSE(GetHeight(empty, 12, 0, 3, &height)) << "away from the centre line of no road";
    EXPECT_EQ(height, -7);

    const Road road = Profile(1000, {GradePoint(0, 1), GradePoint(1000, 2)});
    ASSERT_TRUE(DesignRoad(road));
    AddPlates(road, right, {Plate(4, -2)});
    struct Case {
        const char* name;
        double mileage;
        std::int32_t occurrence;
        double offset, output;
    };
    for (const Case& each : {Case{"beyond the end", 1000.001, 0, 0, 0}, Case{"before the start", -0.001, 0, 0, 0},
                             Case{"beyond the end, on a plate", 1000.001, 0, 2, 0},
                             Case{"no second occurrence", 500, 1, 0, 0}, Case{"negative occurrence", 500, -1, 0, 0},
                             Case{"beyond the plates", 500, 0, 4.001, -7}, Case{"no plates", 500, 0, -1e-7, -7}}) {
        height = -7;
        EXPECT_FALSE(GetHeight(road, each.mileage, each.occurrence, each.offset, &height)) << each.name;
        EXPECT_EQ(height, each.output) << each.name;
    }
    EXPECT_NEAR(HeightAt(road, 500, 0, -9.9e-8).value_or(-7), 1.5, rounding);
    EXPECT_NEAR(HeightAt(road, 500, 0, 4).value_or(-7), 1.42, rounding);
}

TEST(Heights, AtTheEdgeOfAPlate) {
    const Road road = MakeRoad({Straight(100)});
    ASSERT_TRUE(DesignRoad(road));
    // In binary the widths do not sum up to the 0.8 and 2.8 that a host asks for.
    AddPlates(road, right, {Plate(0.7, 0), Plate(0.1, 0), Plate(2, 0, 0.15)});
    EXPECT_NEAR(HeightAt(road, 50, 0, 0.8).value_or(-7), 0, rounding) << "not yet on the kerb";
    EXPECT_NEAR(HeightAt(road, 50, 0, 0.800001).value_or(-7), 0.15, rounding);
    AddPlates(road, left, {Plate(0.7, 0), Plate(0.1, 0, 0.15)});
    EXPECT_NEAR(HeightAt(road, 50, 0, -0.8).value_or(-7), 0.15, rounding);
    EXPECT_FALSE(HeightAt(road, 50, 0, -0.800001));
}

}  // namespace
}  // namespace kesto::test
