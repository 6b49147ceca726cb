// From points back to mileages and offsets: signs, kinks, ends, ties, limits and the nearest stake.
#include <cmath>

#include "support/road.hpp"

namespace kesto::test {
namespace {

constexpr double rounding = 1e-7;  // m

struct Search {
    const char* name;
    double x, y;
    double mileage, offset;
    std::int32_t occurrence = 0;
};

void ExpectFeet(RoadDesign* road, const std::vector<Search>& cases) {
    for (const Search& each : cases) {
        SCOPED_TRACE(each.name);
        const Foot foot = FootOf(road, each.x, each.y);
        EXPECT_TRUE(foot.found);
        EXPECT_NEAR(foot.mileage, each.mileage, rounding);
        EXPECT_NEAR(foot.offset, each.offset, rounding);
        EXPECT_EQ(foot.occurrence, each.occurrence);
    }
}

TEST(InverseSearch, StraightAndItsEnds) {
    ExpectFeet(MakeRoad({Straight(500)}), {{"right", 100, 20, 100, 20},
                                           {"left", 100, -20, 100, -20},
                                           {"on the line", 333, 0, 333, 0},
                                           {"before the start, right", -30, 40, 0, 50},
                                           {"before the start, left", -30, -40, 0, 50},
                                           {"beyond the end", 530, -40, 500, 50},
                                           {"at the start, nearly", 0.00004, -0.00004, 0, 0},
                                           {"the end", 500, 0, 500, 0}});
}

TEST(InverseSearch, KinkGivesTheVertexWithAPlainDistance) {
    const Road road = MakeRoad({Straight(100), Straight(100)});
    Element east = Elements(road)[2];
    east.startAzimuth = 90;
    ASSERT_TRUE(SetElement(road, 2, &east));
    ExpectFeet(road, {{"outside the bend", 130, -40, 100, 50},
                      {"before the bend", 50, -40, 50, -40},
                      {"behind the bend", 60, 70, 170, 40}});
}

TEST(InverseSearch, LaterOfTwoEqualElementsWins) {
    const Road road = MakeRoad({Straight(100), Straight(100)});
    Element same = Elements(road)[2];
    same.startX = 0;
    ASSERT_TRUE(SetElement(road, 2, &same));
    ExpectFeet(road, {{"beside both", 50, 10, 150, 10}, {"on both", 50, 0, 150, 0}});
    same.startY = 20;
    ASSERT_TRUE(SetElement(road, 2, &same));
    ASSERT_TRUE(UpdateData(road));
    ExpectFeet(road, {{"nearer to the first", 50, 9, 50, 9}, {"nearer to the second", 50, 11, 150, -9}});
}

TEST(InverseSearch, SpiralWithoutAFootGivesItsStart) {
    const Road road = MakeRoad({Spiral(right, 0, 200, 80)}, {.mileage = 10});
    ExpectFeet(road, {{"behind the start", -30, 40, 10, 50}});
    const Foot beyond = FootOf(road, 500, 100);
    EXPECT_TRUE(beyond.found);
    EXPECT_NEAR(beyond.mileage, 90, rounding);
    EXPECT_GT(beyond.offset, 0);
}

struct LimitedSearch {
    const char* name;
    double x, y, lower, upper;
    bool found;
    double mileage, offset;
};

TEST(InverseSearch, BetweenLimits) {
    const Road road = MakeRoad({Straight(100), Straight(400)});
    for (const LimitedSearch& each : std::initializer_list<LimitedSearch>{
             {"between them", 150, 10, 120, 300, true, 150, 10},
             {"foot beyond the upper: none admitted", 350, 10, 120, 300, false, 300, std::hypot(50, 10)},
             {"foot before the lower: none admitted", 50, 10, 120, 300, false, 300, std::hypot(250, 10)},
             {"lower limit nearest", 40, 5, 50, 250, true, 50, std::hypot(10, 5)},
             {"none admitted: the upper though the lower is nearer", 40, 5, 50, 80, false, 80, std::hypot(40, 5)},
             {"upper limit wins a tie against the foot", 25, -1.5, 0, 25, true, 25, 1.5},
             {"lower off the road: its start", 20, 4, -500, 300, true, 20, 4},
             {"before the start", -30, 40, -500, 300, true, 0, 50},
             {"upper off the road: its end", 530, 40, 120, 9999, false, 500, 50},
             {"both off the road", 530, 40, -1, 9999, true, 500, 50},
             {"limits exchanged", 150, 10, 300, 120, false, 120, std::hypot(30, 10)}}) {
        SCOPED_TRACE(each.name);
        Foot foot;
        foot.found = GetMileAndOffsetInLim(road, each.x, each.y, each.lower, 0, each.upper, 0, &foot.mileage,
                                           &foot.offset, &foot.occurrence);
        EXPECT_EQ(foot.found, each.found);
        EXPECT_NEAR(foot.mileage, each.mileage, rounding);
        EXPECT_NEAR(foot.offset, each.offset, rounding);
        EXPECT_EQ(foot.occurrence, 0);
    }
}

TEST(NearestStake, BetweenTiedAndBeyondTheList) {
    const Road road = MakeRoad({Straight(250)});
    StakeCoordinate stake{};
    std::int32_t occurrence = -7;
    EXPECT_FALSE(GetNearbyStakeCoordinate(road, 10, 0, &stake, &occurrence)) << "no design run yet";
    EXPECT_EQ(LastFailure(road).status, KESTO_NO_STAKES);
    ASSERT_TRUE(DesignRoad(road));  // stakes at 0, 100, 200 and 250
    struct Case {
        double x, mileage;
    };
    for (const Case& each : {Case{149, 100}, Case{151, 200}, Case{150, 200}, Case{50, 100}, Case{100, 100},
                             Case{225, 250}, Case{224, 200}, Case{-80, 0}, Case{400, 250}}) {
        ASSERT_TRUE(GetNearbyStakeCoordinate(road, each.x, 7, &stake, &occurrence)) << each.x;
        EXPECT_EQ(stake.mileage, each.mileage) << each.x;
        EXPECT_EQ(stake.x, each.mileage) << "the whole record is copied";
        EXPECT_EQ(occurrence, 0);
    }
}

}  // namespace
}  // namespace kesto::test
