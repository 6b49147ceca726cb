// Elements from intersections and the ease parameters of a spiral, as a host asks for them.
#include <cmath>
#include <tuple>

#include "support/quadrature.hpp"
#include "support/road.hpp"

namespace kesto::test {
namespace {

TEST(Generation, IndexOfTheCurveThatCoversAMileage) {
    // Two quarter circles of 100 m and 50 m that touch; a broken chain makes the stakes from 150 on occur again behind.
    const double shared = 100 + 50 * std::acos(-1.0);
    const double points[][3] = {{0, 0, 0}, {200, 0, 100}, {200, 150, 50}, {600, 150, 0}};
    Road road;
    for (const auto& [x, y, radius] : points) {
        Intersection point{};
        point.x = x;
        point.y = y;
        point.radius = radius;
        ASSERT_TRUE(AddIntersection(road, &point, -1));
    }
    const struct {
        double mileage;
        std::int32_t occurrence, index;
    } whole[] = {{50, 0, -1},        {100, 0, 1},          {150, 0, 1},   {shared, 0, 2},
                 {shared + 1, 0, 2}, {shared + 79, 0, -1}, {5000, 0, -1}, {150, 1, -1}},
      broken[] = {{150, 0, 1}, {150, 1, -1}, {shared + 1, 0, 2}, {shared + 1, 1, -1}};
    for (const auto& it : whole)
        EXPECT_EQ(GetIntersectionIndex(road, it.mileage, it.occurrence), it.index) << it.mileage;
    AddChain(road, 400, 150);
    ASSERT_TRUE(UpdateData(road));
    for (const auto& it : broken)
        EXPECT_EQ(GetIntersectionIndex(road, it.mileage, it.occurrence), it.index) << it.mileage;
    SetRoadDesignMode(road, 1);
    EXPECT_EQ(GetIntersectionIndex(road, 150, 0), -1) << "another design mode";
}

TEST(Generation, MakeCurrentBuildsWhatAQueryWould) {
    const Road road;
    EXPECT_FALSE(MakeCurrent(road));
    EXPECT_EQ(LastFailure(road).status, KESTO_TOO_FEW_ELEMENTS);
    const Intersection ends[] = {{"A", 0, 0, 0, 0, 0, 0, 0, {}}, {"B", 100, 0, 0, 0, 0, 0, 0, {}}};
    EXPECT_TRUE(AddIntersectionList(road, ends, 2));
    EXPECT_TRUE(MakeCurrent(road));
    EXPECT_EQ(GetElementCount(road), 2);
}

TEST(Generation, EaseParameters) {
    const Road road;
    EaseParam ease{};
    for (const auto& [from, to, length] : {std::tuple{0.0, 1000.0, 20.0}, {100.0, 300.0, 60.0}, {300.0, 100.0, 60.0}}) {
        SCOPED_TRACE(from);
        ASSERT_TRUE(CalcEaseParam(road, from, to, length, &ease));
        // From the flatter to the tighter end, by integration.
        const bool tightens = from < 1 || (to > 1 && to < from);
        const double wide = tightens ? from : to;
        const double radius = tightens ? to : from;
        const auto end = kesto::test::Integrate(kesto::test::MakeElement(3, true, wide, radius, length), length);
        const auto x = static_cast<double>(end.x);
        const auto y = static_cast<double>(end.y);
        const auto turn = static_cast<double>(end.azimuth);
        EXPECT_NEAR(ease.parameterSquared, length / (1 / radius - (wide > 0 ? 1 / wide : 0)), 1e-9);
        EXPECT_NEAR(ease.deflection, turn * 180 / std::acos(-1.0), 1e-10);
        EXPECT_NEAR(ease.shift, y - radius * (1 - std::cos(turn)), 1e-10);
        EXPECT_NEAR(ease.tangentOffset, x - radius * std::sin(turn), 1e-10);
        EXPECT_NEAR(ease.chord, std::hypot(x, y), 1e-10);
    }
    const double chord = ease.chord;
    const double nan = std::nan("");
    for (const auto& [from, to, length] : {std::tuple{0.0, 0.0, 10.0},
                                           {50.0, 50.0, 10.0},
                                           {0.0, 50.0, 0.0},
                                           {0.0, 50.0, -1.0},
                                           {0.0, nan, 1.0},
                                           {0.0, 1.0, 1000.0},
                                           {300.0, 300.000001, 50.0}}) {
        EXPECT_FALSE(CalcEaseParam(road, from, to, length, &ease)) << from << " " << to << " " << length;
        EXPECT_EQ(ease.chord, chord) << "untouched";
    }
}

}  // namespace
}  // namespace kesto::test
