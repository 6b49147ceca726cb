#include "alignment/intersection_method.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

#include "alignment/coordinate_method.hpp"
#include "alignment/quadrature.hpp"
#include "core/angles.hpp"
#include "core/text.hpp"
#include "csv.hpp"
#include "design/design_run.hpp"

namespace {

const double pi = std::acos(-1.0);

Intersection At(double x, double y, double radius = 0, double spiralIn = 0, double spiralOut = 0, double radiusIn = 0,
                double radiusOut = 0) {
    Intersection point{};
    point.x = x;
    point.y = y;
    point.radius = radius;
    point.spiralIn = spiralIn;
    point.spiralOut = spiralOut;
    point.radiusIn = radiusIn;
    point.radiusOut = radiusOut;
    return point;
}

void Fill(RoadDesign& road, const std::vector<Intersection>& points) {
    for (const Intersection& point : points) road.intersections.Insert(point);
}

/// Every element begins where the one before ends, in place and direction, and the last one ends at the last point.
void ExpectClosed(const RoadDesign& road, double gap, double kink) {
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        const Element& element = road.elements[i];
        const kesto_test::Integrated end = kesto_test::Integrate(element, element.length);
        const bool last = i + 1 == road.elements.Count();
        const Intersection& goal = road.intersections[road.intersections.Count() - 1];
        const double x = last ? goal.x : road.elements[i + 1].startX;
        const double y = last ? goal.y : road.elements[i + 1].startY;
        EXPECT_NEAR(static_cast<double>(end.x), x, gap) << i;
        EXPECT_NEAR(static_cast<double>(end.y), y, gap) << i;
        if (last) continue;
        const double turn = static_cast<double>(end.azimuth) - kesto::ToRadians(road.elements[i + 1].startAzimuth);
        EXPECT_NEAR(std::remainder(turn, 2 * pi), 0, kink) << i;
    }
}

TEST(IntersectionMethod, RandomPolygonsClose) {
    std::mt19937 random(4711);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 60; ++round) {
        RoadDesign road;
        double heading = between(0, 2 * pi);
        double x = 1000;
        double y = 2000;
        road.intersections.Insert(At(x, y));
        for (int i = 0; i < 6; ++i) {
            const double side = between(900, 1500);
            x += side * std::cos(heading);
            y += side * std::sin(heading);
            heading += between(0.3, 1.2) * (random() % 2 == 0 ? 1 : -1);
            const double radius = between(200, 500);
            // Radii at the outer ends of the spirals: infinite, or wider or tighter than the arc's (egg transitions).
            const auto outer = [&] { return random() % 3 == 0 ? 0 : radius * (random() % 2 == 0 ? 3 : 0.8); };
            road.intersections.Insert(At(x, y, radius, random() % 3 == 0 ? 0 : between(20, 50),
                                         random() % 3 == 0 ? 0 : between(20, 50), outer(), outer()));
        }
        road.intersections.Insert(At(x + 1200 * std::cos(heading), y + 1200 * std::sin(heading)));
        ASSERT_TRUE(kesto::GenerateFromIntersections(road, road.elements)) << round;
        ExpectClosed(road, 2e-9, 1e-9);
        if (HasFailure()) FAIL() << "round " << round;
    }
}

TEST(IntersectionMethod, FlatCurvesCloseToo) {
    for (const auto& [radius, angle] : {std::pair{20000.0, 1e-3}, {10000.0, 1e-4}, {1e6, 1e-6}}) {
        RoadDesign road;
        Fill(road, {At(0, 0), At(500, 0, radius), At(500 + 500 * std::cos(angle), 500 * std::sin(angle))});
        ASSERT_TRUE(kesto::GenerateFromIntersections(road, road.elements));
        ExpectClosed(road, 1e-9, 1e-12);
    }
}

TEST(IntersectionMethod, CompoundAndReversedCurvesTouch) {
    // Arc of 100 m radius over 90 degrees to the right, then of 50 m: T = R tan 45, the side is the sum.
    RoadDesign reversed;
    Fill(reversed, {At(0, 0), At(200, 0, 100), At(200, 150, 50), At(300, 150)});
    ASSERT_TRUE(kesto::GenerateFromIntersections(reversed, reversed.elements));
    ASSERT_EQ(reversed.elements.Count(), 5) << "no straight between the two arcs";
    EXPECT_NEAR(reversed.elements[1].length, 100, 1e-9);
    EXPECT_NEAR(reversed.elements[2].length, 50 * pi, 1e-9);
    EXPECT_NEAR(reversed.elements[3].length, 25 * pi, 1e-9);
    EXPECT_EQ(reversed.elements[2].turnDirection, 1);
    EXPECT_EQ(reversed.elements[3].turnDirection, 0);
    ExpectClosed(reversed, 1e-9, 1e-12);
    RoadDesign compound;
    Fill(compound, {At(0, 0), At(200, 0, 100), At(200, 150, 50), At(0, 150)});
    ASSERT_TRUE(kesto::GenerateFromIntersections(compound, compound.elements));
    EXPECT_EQ(compound.elements[3].turnDirection, 1);
    ExpectClosed(compound, 1e-9, 1e-12);
}

TEST(IntersectionMethod, Refusals) {
    struct Case {
        const char* name;
        std::vector<Intersection> points;
        std::int32_t status;
        std::int32_t record;
        double excess;
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {"one point", {At(0, 0)}, KESTO_TOO_FEW_ELEMENTS, -1, 1},
        {"tangent too long", {At(0, 0), At(200, 0, 250), At(200, 400)}, KESTO_CURVE_DOES_NOT_FIT, 1, 50},
        {"the last side too short", {At(0, 0), At(400, 0, 250), At(400, 200)}, KESTO_CURVE_DOES_NOT_FIT, 1, 50},
        {"curves overlap by more than a millimetre",
         {At(0, 0), At(200, 0, 100), At(200, 149.998, 50), At(300, 149.998)},
         KESTO_CURVE_DOES_NOT_FIT,
         2,
         0.002},
        {"spirals turn too much",
         {At(0, 0), At(900, 0, 100, 200, 200), At(900, 900)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         400 / 200.0 * 180 / pi - 90},
        {"coinciding points", {At(0, 0), At(200, 0, 10), At(200, 5e-8), At(300, 0)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"no curve at the side's end",
         {At(0, 0), At(2000, 0, 1000), At(2100, 100), At(2500, 300)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         1000 * std::tan(pi / 8) - 100 * std::sqrt(2.0)},
        {"point at infinity", {At(0, 0), At(1e200, 0)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"coinciding ends", {At(5, 5), At(5, 5)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"the road turns back", {At(0, 0), At(200, 0, 10), At(100, 0)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"spiral between equal radii",
         {At(0, 0), At(900, 0, 100, 20, 0, 100), At(900, 900)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         0},
        {"negative radius", {At(0, 0), At(200, 0, -10), At(200, 90)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"length no number", {At(0, 0), At(200, 0, 10, nan), At(200, 90)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        road.elements.Insert(kesto_test::MakeElement(1, false, 0, 0, 7));
        Fill(road, it.points);
        const kesto::Outcome generated = kesto::GenerateFromIntersections(road, road.elements);
        ASSERT_FALSE(generated);
        EXPECT_EQ(generated.failure().status, it.status);
        EXPECT_EQ(generated.failure().record, it.record);
        EXPECT_NEAR(generated.failure().excess, it.excess, 1e-9);
        EXPECT_EQ(road.elements.Count(), 1);
    }
    RoadDesign rounded;
    Fill(rounded, {At(0, 0), At(200, 0, 100), At(200, 149.9995, 50), At(300, 149.9995)});
    EXPECT_TRUE(kesto::GenerateFromIntersections(rounded, rounded.elements))
        << "an overlap of half a millimetre is rounding";
    RoadDesign kinked;
    Fill(kinked, {At(0, 0), At(100, 0), At(100, 100), At(100, 200, 50)});
    ASSERT_TRUE(kesto::GenerateFromIntersections(kinked, kinked.elements));
    EXPECT_EQ(kinked.elements.Count(), 4) << "one straight per side where there is no curve";
}

/// One published table: main points of the curves with mileages and coordinates.
void ExpectPublished(const std::string& folder) {
    SCOPED_TRACE(folder);
    const std::string path = std::string(KESTO_TEST_DATA) + "/intersections-" + folder;
    RoadDesign road;
    for (const auto& row : kesto::test::ReadCsv(path + "/intersections.csv")) {
        Intersection point = At(row.Number("x"), row.Number("y"), row.Number("radius"), row.Number("spiral_in"),
                                row.Number("spiral_out"));
        kesto::SetText(point.name, row.Text("name"));
        road.intersections.Insert(point);
    }
    road.settings.startMileage = kesto::test::ReadCsv(path + "/start.csv").front().Number("start_mileage");
    ASSERT_TRUE(kesto::RunDesign(road));
    int checked = 0;
    for (const auto& row : kesto::test::ReadCsv(path + "/expected.csv")) {
        const double mileage = row.Number("mileage");
        const StakeCoordinate* found = nullptr;
        for (const StakeCoordinate& stake : road.stakes.Records()) {
            if (kesto::TextOf(stake.label) == row.Text("label") &&
                std::fabs(stake.mileage - mileage) <= row.Number("tolerance_mileage")) {
                found = &stake;
            }
        }
        ASSERT_NE(found, nullptr) << row.Text("label") << " " << mileage;
        ++checked;
        if (!row.Optional("x")) continue;
        EXPECT_NEAR(found->x, row.Number("x"), row.Number("tolerance_xy"));
        EXPECT_NEAR(found->y, row.Number("y"), row.Number("tolerance_xy"));
        if (row.Text("label") == "ZD") continue;
        const auto index = kesto::IntersectionIndexAt(road, {found->mileage, found->occurrence});
        ASSERT_TRUE(index);
        EXPECT_EQ(kesto::TextOf(road.intersections[*index].name), row.Text("intersection"));
    }
    EXPECT_GT(checked, 0);
}

TEST(IntersectionMethod, PublishedTables) {
    for (const char* folder : {"instrument-manual", "mountain-road", "two-arcs"}) ExpectPublished(folder);
}

TEST(IntersectionMethod, IndexOfTheCurve) {
    RoadDesign road;
    Fill(road, {At(0, 0), At(200, 0, 100), At(200, 150, 50), At(300, 150)});
    ASSERT_TRUE(kesto::RunDesign(road));
    const double shared = 100 + 50 * pi;  // where the two curves touch
    const std::pair<double, std::int32_t> cases[] = {{50, -1}, {100, 1}, {150, 1}, {shared, 2}, {shared + 1, 2}};
    for (const auto& [mileage, expected] : cases) {
        const auto index = kesto::IntersectionIndexAt(road, {mileage, 0});
        ASSERT_TRUE(index);
        EXPECT_EQ(*index, expected) << mileage;
    }
    EXPECT_FALSE(kesto::IntersectionIndexAt(road, {5000, 0}));
    road.settings.roadDesignMode = 1;
    EXPECT_EQ(*kesto::IntersectionIndexAt(road, {150, 0}), -1);
}

TEST(IntersectionMethod, ModesBuiltFromOneAnotherAgree) {
    RoadDesign tangents;
    Fill(tangents, {At(100, 200), At(900, 350, 300, 60, 80), At(1300, 1200, 250, 0, 50), At(2200, 1000)});
    ASSERT_TRUE(kesto::RunDesign(tangents));
    RoadDesign elements;
    elements.settings.roadDesignMode = 1;
    for (const Element& element : tangents.elements.Records()) elements.elements.Insert(element);
    ASSERT_TRUE(kesto::RunDesign(elements));
    RoadDesign points;
    points.settings.roadDesignMode = 2;
    for (std::int32_t i = 1; i < tangents.elements.Count(); ++i) {
        const Element& element = tangents.elements[i];
        Coordinate point{};
        point.type = element.type;
        point.turnDirection = element.turnDirection;
        point.x = element.startX;
        point.y = element.startY;
        // The radius of a point is the one that both elements at it know: a spiral's, or else the arc's.
        const Element& before = tangents.elements[i - 1];
        point.radius = element.startRadius > 0 ? element.startRadius : (before.type == 3 ? before.endRadius : 0);
        points.coordinates.Insert(point);
    }
    Coordinate end{};
    end.x = tangents.intersections[3].x;
    end.y = tangents.intersections[3].y;
    points.coordinates.Insert(end);
    ASSERT_TRUE(kesto::RunDesign(points));
    ASSERT_EQ(points.stakes.Count(), tangents.stakes.Count());
    ASSERT_EQ(elements.stakes.Count(), tangents.stakes.Count());
    for (std::int32_t i = 0; i < tangents.stakes.Count(); ++i) {
        for (const RoadDesign* other : {&elements, &points}) {
            EXPECT_NEAR(other->stakes[i].x, tangents.stakes[i].x, 1e-6) << i;
            EXPECT_NEAR(other->stakes[i].y, tangents.stakes[i].y, 1e-6) << i;
            EXPECT_NEAR(other->stakes[i].mileage, tangents.stakes[i].mileage, 1e-6) << i;
        }
    }
}

TEST(EaseParameters, ShiftAndOffset) {
    // Short flat transition: p = L^2 / 24 R - L^4 / 2688 R^3 and q = L / 2 up to higher orders.
    const auto flat = kesto::EaseParameters(0, 1000, 20);
    ASSERT_TRUE(flat);
    EXPECT_NEAR(flat->parameterSquared, 20000, 1e-9);
    EXPECT_NEAR(flat->shift, 400.0 / 24000 - 160000.0 / 2688e9, 1e-12);
    EXPECT_NEAR(flat->tangentOffset, 10, 1e-3);
    EXPECT_NEAR(flat->deflection, kesto::ToDegrees(0.01), 1e-12);
    const auto egg = kesto::EaseParameters(100, 300, 60);
    const auto mirrored = kesto::EaseParameters(300, 100, 60);
    ASSERT_TRUE(egg && mirrored);
    EXPECT_EQ(egg->shift, mirrored->shift);
    EXPECT_NEAR(egg->parameterSquared, 60 * 300 * 100 / 200.0, 1e-9);
    const auto element = kesto_test::MakeElement(3, true, 300, 100, 60);
    const kesto_test::Integrated end = kesto_test::Integrate(element, 60);
    const double tau = static_cast<double>(end.azimuth);
    EXPECT_NEAR(egg->chord, std::hypot(static_cast<double>(end.x), static_cast<double>(end.y)), 1e-10);
    EXPECT_NEAR(egg->shift, static_cast<double>(end.y) - 100 * (1 - std::cos(tau)), 1e-9);
    EXPECT_NEAR(egg->tangentOffset, static_cast<double>(end.x) - 100 * std::sin(tau), 1e-9);
    EXPECT_NEAR(egg->deflection, kesto::ToDegrees(tau), 1e-10);
    for (const auto& [start, stop, length] : {std::tuple{0.0, 0.0, 10.0},
                                              {50.0, 50.0, 10.0},
                                              {0.0, 50.0, 0.0},
                                              {0.0, 50.0, -1.0},
                                              {0.0, std::nan(""), 1.0},
                                              {0.0, 1.0, 1000.0}}) {
        EXPECT_FALSE(kesto::EaseParameters(start, stop, length)) << start << " " << stop << " " << length;
    }
}

}  // namespace
