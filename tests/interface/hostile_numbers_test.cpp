// Numbers that no survey gives: answers that overflow, mileages far away.
#include <functional>
#include <limits>

#include "support/road.hpp"

namespace kesto::test {
namespace {

using Limits = std::numeric_limits<double>;

Road OrdinaryRoad() {
    Road road = MakeRoad({Straight(100), Spiral(right, 0, 300, 60), Arc(right, 300, 80), Spiral(right, 300, 0, 60)});
    AddGradePoints(road, {GradePoint(0, 5), GradePoint(150, 8, 3000), GradePoint(300, 5)});
    EXPECT_TRUE(DesignRoad(road));
    AddPlates(road, right, {Plate(4, -2)});
    return road;
}

TEST(HostileNumbers, AnswersThatOverflowAreRefused) {
    constexpr double huge = Limits::max();
    const Road far = MakeRoad({Straight(100)}, {.x = huge});
    EXPECT_TRUE(Continuous(far, 50));
    EXPECT_FALSE(PointAt(far, 50, huge, 0, 0).found);
    EXPECT_EQ(LastFailure(far).status, KESTO_RESULT_NOT_FINITE);
    const Road road = MakeRoad({Straight(100)});
    ASSERT_TRUE(DesignRoad(road));
    AddPlates(road, left, {Plate(50, huge)});
    AddPlates(road, right, {Plate(huge, 0), Plate(huge, 0)});
    const std::pair<const char*, std::function<bool()>> queries[] = {
        {"an edge", [&] { return !SideAt(road, 50, right).empty(); }},
        {"a height on a plate", [&] { return HeightAt(road, 50, 0, -20).has_value(); }},
        {"a height on the centre line",
         [&] {
             AddGradePoints(road, {GradePoint(0, huge), GradePoint(100, -huge)});
             return HeightAt(road, 50).has_value();
         }},
    };
    for (const auto& [name, ask] : queries) {
        EXPECT_FALSE(DeleteElement(road, -1));  // another failure
        EXPECT_FALSE(ask()) << name;
        EXPECT_EQ(LastFailure(road).status, KESTO_RESULT_NOT_FINITE) << name;
    }
}

TEST(HostileNumbers, HugeMileagesLieOffTheRoad) {
    const Road road = OrdinaryRoad();
    for (const double mileage : {1e15, -1e15, 1e300, Limits::max(), Limits::lowest()}) {
        EXPECT_FALSE(PointAt(road, mileage).found);
        EXPECT_FALSE(Continuous(road, mileage));
        EXPECT_FALSE(HeightAt(road, mileage));
    }
    double out = 0;
    const Element element = Straight(Limits::max());
    EXPECT_TRUE(GetElementPositionAndAzimuth(road, &element, 1e300, &out, &out, &out));
}

}  // namespace
}  // namespace kesto::test
