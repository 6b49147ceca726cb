// The design run: which stakes it makes, in which order, and what it names them.
#include <cstdio>
#include <map>
#include <numbers>

#include "support/road.hpp"

namespace kesto::test {
namespace {

/// The stake list as text: every name with its mileage.
std::string Listed(RoadDesign* road) {
    std::string text;
    for (const StakeCoordinate& stake : Stakes(road)) {
        char line[80];
        std::snprintf(line, sizeof line, "%s@%.7g ", stake.name, stake.mileage);
        text += line;
        EXPECT_EQ(stake.label[0] == '\0', std::string(stake.name).find('+') != std::string::npos) << stake.name;
    }
    return text;
}

Road CurvedRoad(std::int32_t stakeType, double interval) {
    Road road = MakeRoad({Straight(150), Arc(right, 300, 200), Straight(110)});
    SetMakeStakeType(road, stakeType);
    SetMileageInterval(road, interval);
    EXPECT_TRUE(DesignRoad(road));
    return road;
}

TEST(Stakes, RegularOnesGiveWayToMainPoints) {
    EXPECT_EQ(Listed(CurvedRoad(0, 40)),
              "QD@0 K0+040.000@40 K0+080.000@80 K0+120.000@120 ZY@150 K0+160.000@160 K0+200.000@200 K0+240.000@240 "
              "QZ@250 K0+280.000@280 K0+320.000@320 YZ@350 K0+360.000@360 K0+400.000@400 K0+440.000@440 ZD@460 ");
    EXPECT_EQ(Listed(CurvedRoad(1, 60)),
              "QD@0 K0+060.000@60 K0+120.000@120 ZY@150 K0+210.000@210 QZ@250 K0+270.000@270 K0+330.000@330 YZ@350 "
              "K0+410.000@410 ZD@460 ");
    EXPECT_EQ(Listed(CurvedRoad(0, 50)),
              "QD@0 K0+050.000@50 K0+100.000@100 ZY@150 K0+200.000@200 QZ@250 K0+300.000@300 YZ@350 K0+400.000@400 "
              "K0+450.000@450 ZD@460 ");
}

TEST(Stakes, FallingMileages) {
    for (const std::int32_t type : {0, 1}) {
        const Road road = MakeRoad({Straight(-250)}, {.mileage = 1010});
        SetMakeStakeType(road, type);
        ASSERT_TRUE(DesignRoad(road));
        if (type == 0) {
            EXPECT_EQ(Listed(road), "QD@1010 K1+000.000@1000 K0+900.000@900 K0+800.000@800 ZD@760 ");
        } else {
            EXPECT_EQ(Listed(road), "QD@1010 K0+910.000@910 K0+810.000@810 ZD@760 ");
        }
    }
}

TEST(Stakes, CoincidentOnesAreKeptOnce) {
    const Road road = MakeRoad({Straight(50), Straight(0), Straight(50)});
    ASSERT_TRUE(DesignRoad(road));
    EXPECT_EQ(Listed(road), "QD@0 ZZ@50 ZD@100 ");
}

TEST(Stakes, NamesSayMileageAndOccurrence) {
    const Road road = BrokenRoad(350);
    SetMileageInterval(road, 20);
    ASSERT_TRUE(DesignRoad(road));
    std::map<std::string, StakeCoordinate> named;
    for (const StakeCoordinate& stake : Stakes(road)) named[stake.name] = stake;
    ASSERT_TRUE(named.contains("K0+380.000") && named.contains("+K0+380.000") && named.contains("ZZ"));
    EXPECT_NEAR(named["K0+380.000"].x, 380, 1e-9);
    EXPECT_NEAR(named["+K0+380.000"].x, 430, 1e-9);
    EXPECT_EQ(named["+K0+380.000"].occurrence, 1);
    EXPECT_EQ(named["ZZ"].mileage, 350);
    EXPECT_EQ(named["ZZ"].occurrence, 1);
    EXPECT_EQ(named["K0+420.000"].occurrence, 0);
    EXPECT_NEAR(named["K0+420.000"].x, 470, 1e-9);
    EXPECT_EQ(named["ZD"].mileage, 950);

    const Road negative = MakeRoad({Straight(40)}, {.mileage = -32.5});
    SetMileageInterval(negative, 20);
    SetMakeStakeType(negative, 1);
    SetMakeStakePerfix(negative, "DK");
    ASSERT_TRUE(DesignRoad(negative));
    EXPECT_EQ(Listed(negative), "QD@-32.5 -DK0+012.500@-12.5 ZD@7.5 ");

    const Road rounded = MakeRoad({Straight(15)}, {.mileage = -0.0004});
    SetMileageInterval(rounded, 10);
    SetMakeStakeType(rounded, 1);
    ASSERT_TRUE(DesignRoad(rounded));
    EXPECT_EQ(Listed(rounded), "QD@-0.0004 K0+0010.000@9.9996 ZD@14.9996 ");

    SetMakeStakePerfix(rounded, std::string(40, 'p').c_str());
    ASSERT_TRUE(DesignRoad(rounded));
    EXPECT_EQ(Stakes(rounded)[1].name, std::string(31, 'p'));
}

TEST(Stakes, FourOccurrencesAreTriedAndTheirPlusWinsOverTheSign) {
    const Road road = MakeRoad({Straight(200)}, {.mileage = -50});
    for (const double back : {-14, -13, -12, -11}) AddChain(road, back, -50);  // five passes
    SetMileageInterval(road, 40);
    ASSERT_TRUE(DesignRoad(road));
    std::string named;
    for (const StakeCoordinate& stake : Stakes(road)) {
        if (stake.mileage == -40) named += stake.name + std::string("/") + std::to_string(stake.occurrence) + " ";
    }
    EXPECT_EQ(named, "-K0+040.000/0 +K0+040.000/1 +K0+040.000/2 +K0+040.000/3 -K0+040.000/0 ");
}

TEST(Stakes, IntervalIsRaisedOnLongRoads) {
    const Road road = MakeRoad({Straight(100000)});
    SetMileageInterval(road, 0);
    ASSERT_TRUE(DesignRoad(road));
    double interval = 0;
    GetMakeStakeInfo(road, &interval);
    EXPECT_EQ(interval, 10);
    EXPECT_EQ(GetStakeCoordinateCount(road), 10001);
    EXPECT_STREQ(Stakes(road)[9999].name, "K99+990.000");
}

TEST(DesignRun, UnknownStakeTypeStopsAfterTheStart) {
    const Road road = MakeRoad({Straight(100), Straight(100)});
    AddGradePoints(road, {GradePoint(0, 0), GradePoint(100, 5), GradePoint(200, 5)});
    SetMakeStakeType(road, 2);
    EXPECT_FALSE(DesignRoad(road));
    EXPECT_EQ(LastFailure(road).status, KESTO_UNKNOWN_STAKE_MODE);
    ASSERT_EQ(GetStakeCoordinateCount(road), 1);
    EXPECT_STREQ(Stakes(road)[0].name, "");
    EXPECT_STREQ(Stakes(road)[0].label, "QD");
    EXPECT_EQ(Curves(road)[0].gradeOut, 0.05) << "the profile is derived all the same";
}

TEST(DesignRun, StakeThatCannotBeComputedKeepsTheOnesBefore) {
    const Road road = MakeRoad({Straight(150), Spiral(left, 400, 400, 50), Straight(100)});
    SetMileageInterval(road, 60);
    EXPECT_FALSE(DesignRoad(road));
    EXPECT_EQ(LastFailure(road).status, KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(LastFailure(road).record, 2);
    const std::vector<StakeCoordinate> stakes = Stakes(road);
    ASSERT_EQ(stakes.size(), 4U) << "0, 60, 120 and the start of the spiral; 180 fails";
    EXPECT_EQ(stakes[2].mileage, 120);
    for (const StakeCoordinate& stake : stakes) EXPECT_STREQ(stake.name, "");
}

TEST(DesignRun, ElementsThatCannotBeJoinedFailIt) {
    const Road road = MakeRoad({Straight(150), Spiral(left, 300, 300, 20), Straight(100)});  // no stake in the spiral
    EXPECT_FALSE(DesignRoad(road));
    EXPECT_EQ(LastFailure(road).status, KESTO_ELEMENT_NOT_EVALUABLE);
    EXPECT_EQ(LastFailure(road).record, 2);
    EXPECT_STREQ(Stakes(road).back().name, "ZD") << "the stakes are made all the same";
}

TEST(DesignRun, JoinsStartPointsAndLeavesAzimuths) {
    const Road road = MakeRoad({Straight(100), Arc(right, 200, 100 * std::numbers::pi), Straight(50)});
    Element arc = Elements(road)[2];
    arc.startX = arc.startY = 12345;
    arc.startAzimuth = 90;  // a kink
    ASSERT_TRUE(SetElement(road, 2, &arc));
    ASSERT_TRUE(DesignRoad(road));
    const std::vector<Element> elements = Elements(road);
    EXPECT_NEAR(elements[2].startX, 100, 1e-9);
    EXPECT_NEAR(elements[2].startY, 0, 1e-9);
    EXPECT_EQ(elements[2].startAzimuth, 90);
    EXPECT_NEAR(elements[3].startX, -100, 1e-9);
    EXPECT_NEAR(elements[3].startY, 200, 1e-9);
    EXPECT_NEAR(elements[3].startAzimuth, 90, 1e-9) << "as given, not the arc's end";
}

TEST(DesignRun, OnlyTheStartGivesNoStakes) {
    const Road road = MakeRoad({Straight(100)});
    ASSERT_TRUE(DesignRoad(road));
    ASSERT_TRUE(DeleteElement(road, 1));
    EXPECT_FALSE(DesignRoad(road));
    EXPECT_EQ(GetStakeCoordinateCount(road), 0) << "the old list is discarded";
}

}  // namespace
}  // namespace kesto::test
