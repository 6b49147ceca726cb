// Broken chains at work: how they split elements and how stake and continuous mileages answer to each other.
#include <array>

#include "support/road.hpp"

namespace kesto::test {
namespace {

using Expected = std::optional<double>;
constexpr std::nullopt_t nowhere = std::nullopt;

/// A stake mileage and, occurrence by occurrence, where it lies along the road; one more occurrence must not be found.
struct Places {
    double stake;
    std::vector<Expected> continuous;
};

void ExpectPlaces(RoadDesign* road, const std::vector<Places>& cases) {
    for (const Places& each : cases) {
        for (std::size_t k = 0; k <= each.continuous.size(); ++k) {
            SCOPED_TRACE(std::to_string(each.stake) + ", occurrence " + std::to_string(k));
            const Expected expected = k < each.continuous.size() ? each.continuous[k] : nowhere;
            const Expected continuous = Continuous(road, each.stake, static_cast<std::int32_t>(k));
            ASSERT_EQ(continuous.has_value(), expected.has_value());
            EXPECT_NEAR(continuous.value_or(0), expected.value_or(0), 1e-9);
        }
        EXPECT_FALSE(Continuous(road, each.stake, -1)) << each.stake;
    }
}

TEST(Chainage, BackwardBreakRepeatsMileages) {
    const Road road = BrokenRoad(350);
    for (int build = 0; build < 2; ++build) {  // a second build finds the road split already
        ExpectPlaces(road, {{0, {0}},
                            {349.9, {349.9}},
                            {350, {350, 400}},
                            {380, {380, 430}},
                            {399.9, {399.9, 449.9}},
                            {400, {450}},
                            {420, {470}},
                            {950, {1000}},
                            {950.0001, {}},
                            {-0.0001, {}}});
        ASSERT_EQ(GetElementCount(road), 3);
        ASSERT_TRUE(UpdateData(road));
    }
    const Foot foot = FootOf(road, 430, 0);
    ASSERT_TRUE(foot.found);
    EXPECT_NEAR(foot.mileage, 380, 1e-9);
    EXPECT_EQ(foot.occurrence, 1);
    EXPECT_NEAR(PointAt(road, 380, 2, 1).x, 430, 1e-9);
    EXPECT_NEAR(PointAt(road, 380, 2, 0).x, 380, 1e-9);

    EXPECT_EQ(GetRoadMileage(road, nullptr), 0) << "no design run yet";
    ASSERT_TRUE(DesignRoad(road));
    EXPECT_NEAR(GetRoadMileage(road, nullptr), 950, 1e-9);
}

TEST(Chainage, EndOfTheRoadIsTheLastOccurrence) {
    const Road twice = MakeRoad({Straight(1000)});
    AddChain(twice, 900, 100);
    ExpectPlaces(twice, {{200, {200, 1000}}, {150, {150, 950}}});

    const Road thrice = MakeRoad({Straight(750)});
    AddChain(thrice, 300, 100);
    AddChain(thrice, 400, 50);
    // The middle occurrence of the end's own mileage is given up on purpose.
    ExpectPlaces(thrice, {{200, {200, nowhere, 750}}, {150, {150, 350, 700}}});
    EXPECT_NEAR(PointAt(thrice, 300).x, 500, 1e-9) << "an element's end belongs to the next one";
    for (std::int32_t k = 0; k < 3; ++k) {
        const double x = std::array{150.0, 350.0, 700.0}[static_cast<std::size_t>(k)];
        EXPECT_NEAR(PointAt(thrice, 150, 0, k).x, x, 1e-9);
        const Foot foot = FootOf(thrice, x, 3);
        EXPECT_NEAR(foot.mileage, 150, 1e-7);
        EXPECT_EQ(foot.occurrence, k);
    }
}

TEST(Chainage, FallingMileages) {
    const Road road = MakeRoad({Straight(-100), Straight(-50)}, {.mileage = 1000});
    ExpectPlaces(road, {{1000, {1000}}, {950, {1050}}, {900, {1100}}, {850, {1150}}, {1001, {}}, {849, {}}});
    EXPECT_NEAR(PointAt(road, 950).x, -50, 1e-9);
    EXPECT_NEAR(FootOf(road, -160, 0).mileage, 850, 1e-9) << "beyond the end";
}

TEST(Chainage, RoadsThatCannotBeBuilt) {
    struct Case {
        const char* name;
        std::int32_t status;
        Road road;
    };
    const std::array<Case, 3> cases = {{{"unknown mode", KESTO_UNKNOWN_DESIGN_MODE, MakeRoad({Straight(100)})},
                                        {"only the start", KESTO_TOO_FEW_ELEMENTS, MakeRoad({})},
                                        {"no start", KESTO_NO_START_ELEMENT, MakeRoad({Straight(1), Straight(1)})}}};
    SetRoadDesignMode(cases[0].road, 5);
    ASSERT_TRUE(DeleteElement(cases[2].road, 0));
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        AddGradePoints(each.road, {GradePoint(0, 1), GradePoint(50, 2)});
        const std::string before = Snapshot(each.road);
        EXPECT_FALSE(Continuous(each.road, 0.5));
        EXPECT_EQ(LastFailure(each.road).status, each.status);
        const Foot foot = FootOf(each.road, 0, 0);
        EXPECT_FALSE(foot.found);
        EXPECT_EQ(foot.mileage, -7);
        EXPECT_EQ(HeightAt(each.road, 0.5), nowhere);
        EXPECT_FALSE(DesignRoad(each.road));
        EXPECT_EQ(LastFailure(each.road).status, each.status);
        EXPECT_EQ(Snapshot(each.road), before);
    }
}

TEST(Chainage, EditsTakeEffectWithTheNextBuild) {
    const Road road = BrokenRoad(350);
    ASSERT_TRUE(DeleteBrokenChain(road, 0));
    EXPECT_EQ(Continuous(road, 380, 1), 430) << "the chain stays as built";
    const Element longer = Straight(1);
    ASSERT_TRUE(AddElement(road, &longer, -1));
    ASSERT_TRUE(UpdateData(road));
    EXPECT_EQ(Continuous(road, 380, 1), nowhere) << "the pieces stay, the jump is gone";
    EXPECT_EQ(Continuous(road, 1000.5), 1000.5);
    while (GetElementCount(road) > 0) ASSERT_TRUE(DeleteElement(road, 0));
    EXPECT_EQ(Continuous(road, 380), nowhere) << "a stale length over an emptied list";
    EXPECT_FALSE(FootOf(road, 0, 0).found);
    EXPECT_FALSE(PointAt(road, 380).found);
}

TEST(Chainage, UpdateDataBuildsInEveryModeAndKeepsTheStakes) {
    const Road road = MakeRoad({Straight(300)});
    ASSERT_TRUE(DesignRoad(road));
    const std::int32_t stakes = GetStakeCoordinateCount(road);
    ASSERT_GT(stakes, 0);
    SetRoadDesignMode(road, 0);
    AddChain(road, 100, 200);
    EXPECT_TRUE(UpdateData(road));
    EXPECT_EQ(GetStakeCoordinateCount(road), stakes);
    EXPECT_EQ(Continuous(road, 250), 150);
}

}  // namespace
}  // namespace kesto::test
