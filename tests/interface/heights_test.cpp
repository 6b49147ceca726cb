// Vertical curves as derived, and the design heights that follow from them.
#include "road.hpp"

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

TEST(Heights, TwoPointsAreAGradeAndFlatOutside) {
    ExpectHeights(Profile(1000, {GradePoint(200, 10), GradePoint(600, 18)}), {{"start of the road", 0, 10},
                                                                              {"before the first", 199, 10},
                                                                              {"first", 200, 10},
                                                                              {"between", 450, 15},
                                                                              {"last", 600, 18},
                                                                              {"behind the last", 601, 18},
                                                                              {"end of the road", 1000, 18}});
    ExpectHeights(Profile(1000, {GradePoint(300, 7)}),
                  {{"only one point", 20, 7}, {"at it", 300, 7}, {"end", 1000, 7}});
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

TEST(Heights, CurveAcrossTheRoadsStartIsCut) {
    // Grades +2 % and -1 % at 100, tangent length 150: the curve would begin 50 m before the road.
    const Road road = Profile(2000, {GradePoint(-200, 14), GradePoint(100, 20, 10000), GradePoint(1100, 10)});
    ExpectHeights(road, {{"start of the road, on the curve", 0, 18 - 2500 / 20000.0},
                         {"at the point", 100, 20 - 1.125},
                         {"curve end", 250, 18.5}});
    EXPECT_NEAR(Curves(road)[1].startMileage, 0, rounding);
    EXPECT_NEAR(Curves(road)[1].endMileage, 250, rounding);

    const Road before = Profile(2000, {GradePoint(-900, 4), GradePoint(-400, 14, 10000), GradePoint(600, 4)});
    ExpectHeights(before, {{"on the tangent", 100, 9}});
    EXPECT_EQ(Curves(before)[1].startMileage, -400) << "collapsed onto its point";
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
    const Road road = BrokenRoad(350);
    AddGradePoints(road, {GradePoint(0, 0), GradePoint(950, 10)});
    ExpectHeights(road, {{"first occurrence", 380, 3.8, 0}, {"second occurrence", 380, 4.3, 1}, {"end", 950, 10}});
    EXPECT_NEAR(Curves(road)[0].distanceToNext, 1000, rounding);

    const Road unplaced = BrokenRoad(350);  // occurrence -1: the mileage is a continuous one
    AddGradePoints(unplaced, {GradePoint(0, 0), GradePoint(900, 9, 0, -1)});
    ExpectHeights(unplaced, {{"second occurrence", 380, 4.3, 1}, {"at 900 along the road", 850, 9}});

    const Road curved = BrokenRoad(350);  // the curve lies on either side of the break, 360 to 440 along the road
    AddGradePoints(curved, {GradePoint(0, 0), GradePoint(350, 8, 2000, 1), GradePoint(950, -4)});
    ExpectHeights(curved, {{"at the break", 350, 8 - 40 * 40 / 4000.0, 1}});
    const VerticalCurve curve = Curves(curved)[1];
    EXPECT_NEAR(curve.startMileage, 360, rounding);
    EXPECT_EQ(curve.startOccurrence, 0);
    EXPECT_NEAR(curve.endMileage, 390, rounding);
    EXPECT_EQ(curve.endOccurrence, 1);
}

TEST(Heights, AreThoseOfTheRecordsAsTheyStand) {
    const Road road = Profile(2000, {GradePoint(0, 0), GradePoint(1000, 20, 10000), GradePoint(2000, 10)});
    ExpectHeights(road, {{"by radius", 1000, 20 - 1.125}});
    SetVerticalCurveMode(road, 1);
    VerticalCurve given = Curves(road)[1];
    given.startMileage = 900;
    given.endMileage = 1100;
    ASSERT_TRUE(SetVerticalCurve(road, 1, &given));
    ExpectHeights(road, {{"by its ends", 1000, 20 - 0.03 * 200 / 8}});
    SetVerticalCurveMode(road, 0);
    ExpectHeights(road, {{"by radius again", 1000, 20 - 1.125}});
    ASSERT_TRUE(DeleteVerticalCurve(road, 1));
    ExpectHeights(road, {{"point deleted", 1000, 5}});
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
    struct Case {
        const char* name;
        double mileage;
        std::int32_t occurrence;
        double offset;
    };
    for (const Case& each : {Case{"beyond the end", 1000.001, 0, 0}, Case{"before the start", -0.001, 0, 0},
                             Case{"no second occurrence", 500, 1, 0}, Case{"negative occurrence", 500, -1, 0},
                             Case{"away from the centre line", 500, 0, 1e-7}}) {
        height = -7;
        EXPECT_FALSE(GetHeight(road, each.mileage, each.occurrence, each.offset, &height)) << each.name;
        EXPECT_EQ(height, 0) << each.name;
    }
    EXPECT_TRUE(GetHeight(road, 500, 0, 9.9e-8, &height));
    EXPECT_NEAR(height, 1.5, rounding);
}

}  // namespace
}  // namespace kesto::test
