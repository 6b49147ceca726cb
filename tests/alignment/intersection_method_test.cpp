#include "alignment/intersection_method.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

#include "core/text.hpp"
#include "design/design_run.hpp"
#include "geometry/angles.hpp"
#include "support/csv.hpp"
#include "support/quadrature.hpp"

using kesto::test::Corner;

namespace {

const double pi = std::acos(-1.0);

void Fill(RoadDesign& road, const std::vector<Intersection>& points) {
    for (const Intersection& point : points) road.intersections.Insert(point);
}

/// The curves are those that the points ask for: an arc each, and before and behind it a spiral to its outer radius.
void ExpectAskedCurves(const RoadDesign& road) {
    struct Curve {
        std::int32_t type;
        double startRadius, endRadius, length;  // an arc's length is not asked for
        bool operator==(const Curve&) const = default;
    };
    std::vector<Curve> asked, made;
    for (const Intersection& it : road.intersections.Records()) {
        if (it.radius == 0) continue;
        if (it.spiralIn > 0) asked.push_back({3, it.radiusIn, it.radius, it.spiralIn});
        asked.push_back({2, it.radius, it.radius, 0});
        if (it.spiralOut > 0) asked.push_back({3, it.radius, it.radiusOut, it.spiralOut});
    }
    for (const Element& it : road.elements.Records().subspan(1)) {
        if (it.type != 1) made.push_back({it.type, it.startRadius, it.endRadius, it.type == 3 ? it.length : 0});
    }
    EXPECT_EQ(made, asked);
}

/// Every element begins where the one before ends, in place and direction, and the last one ends at the last point.
void ExpectClosed(const RoadDesign& road, double gap, double kink) {
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        const Element& element = road.elements[i];
        const kesto::test::Integrated end = kesto::test::Integrate(element, element.length);
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
        road.intersections.Insert(Corner(x, y));
        for (int i = 0; i < 6; ++i) {
            const double side = between(900, 1500);
            x += side * std::cos(heading);
            y += side * std::sin(heading);
            heading += between(0.3, 1.2) * (random() % 2 == 0 ? 1 : -1);
            const double radius = between(200, 500);
            // Radii at the outer ends of the spirals: infinite, or wider or tighter than the arc's (egg transitions).
            const auto outer = [&] { return random() % 3 == 0 ? 0 : radius * (random() % 2 == 0 ? 3 : 0.8); };
            road.intersections.Insert(Corner(x, y, radius, random() % 3 == 0 ? 0 : between(20, 50),
                                             random() % 3 == 0 ? 0 : between(20, 50), outer(), outer()));
        }
        road.intersections.Insert(Corner(x + 1200 * std::cos(heading), y + 1200 * std::sin(heading)));
        ASSERT_TRUE(kesto::GenerateFromIntersections(road, road.elements)) << round;
        ExpectClosed(road, 1e-9, 1e-9);
        ExpectAskedCurves(road);
        if (HasFailure()) FAIL() << "round " << round;
    }
}

/// A polygon of two sides, 900 m long each, with a given deflection (rad), setting out in a direction (rad).
std::vector<Intersection> Bend(double deflection, Intersection curve, double way = 0) {
    curve.x = 900 * std::cos(way);
    curve.y = 900 * std::sin(way);
    return {Corner(0, 0), curve,
            Corner(curve.x + 900 * std::cos(way + deflection), curve.y + 900 * std::sin(way + deflection))};
}

TEST(IntersectionMethod, ExtremeCurvesCloseToo) {
    // The last entry spiral ends 5e-8 degrees past north: what follows it must not be turned by as much.
    const double north = kesto::ToRadians(360 + 5e-8) - 60 / 600.0;
    const struct {
        double deflection;
        Intersection curve;
        std::int32_t count;  // elements with the start record
        double way = 0;
    } cases[] = {{1e-3, Corner(0, 0, 20000), 4},      {1e-4, Corner(0, 0, 10000), 4},
                 {3e-7, Corner(0, 0, 1e6), 4},        {5e-8, Corner(0, 0, 1e6), 3},
                 {pi - 1e-4, Corner(0, 0, 0.001), 4}, {0.5, Corner(0, 0, 300, 60, 60), 6, north}};
    for (const auto& it : cases) {
        SCOPED_TRACE(it.deflection);
        RoadDesign road;
        Fill(road, Bend(it.deflection, it.curve, it.way));
        ASSERT_TRUE(kesto::GenerateFromIntersections(road, road.elements));
        EXPECT_EQ(road.elements.Count(), it.count);
        if (it.count > 3) ExpectClosed(road, 1e-9, 1e-9);
    }
}

TEST(IntersectionMethod, Refusals) {
    struct Case {
        const char* name;
        std::vector<Intersection> points;
        std::int32_t status;
        std::int32_t record;
        double excess;
        std::int32_t limit = KESTO_LIMIT_NONE;
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {"one point", {Corner(0, 0)}, KESTO_TOO_FEW_ELEMENTS, -1, 1, KESTO_LIMIT_RECORD_COUNT},
        {"tangent too long",
         {Corner(0, 0), Corner(200, 0, 250), Corner(200, 400)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         50,
         KESTO_LIMIT_POLYGON_SIDE},
        {"the last side too short",
         {Corner(0, 0), Corner(400, 0, 250), Corner(400, 200)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         50,
         KESTO_LIMIT_POLYGON_SIDE},
        {"curves overlap by more than a millimetre",
         {Corner(0, 0), Corner(200, 0, 100), Corner(200, 149.998, 50), Corner(300, 149.998)},
         KESTO_CURVE_DOES_NOT_FIT,
         2,
         0.002,
         KESTO_LIMIT_POLYGON_SIDE},
        {"spirals turn too much",
         {Corner(0, 0), Corner(900, 0, 100, 200, 200), Corner(900, 900)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         400 / 200.0 * 180 / pi - 90,
         KESTO_LIMIT_DEFLECTION},
        {"spirals turn a microradian too much", Bend(1, Corner(0, 0, 100, 100, 100 + 2e-4)), KESTO_CURVE_DOES_NOT_FIT,
         1, 1e-6 * 180 / pi, KESTO_LIMIT_DEFLECTION},
        {"coinciding points",
         {Corner(0, 0), Corner(200, 0, 10), Corner(200, 5e-8), Corner(300, 0)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         0},
        {"no curve at the side's end",
         {Corner(0, 0), Corner(2000, 0, 1000), Corner(2100, 100), Corner(2500, 300)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         1000 * std::tan(pi / 8) - 100 * std::sqrt(2.0),
         KESTO_LIMIT_POLYGON_SIDE},
        {"point at infinity", {Corner(0, 0), Corner(1e200, 0)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"coinciding ends", {Corner(5, 5), Corner(5, 5)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"the road turns back", Bend(pi - 5e-8, Corner(0, 0, 1e-6)), KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"spiral between nearly equal radii", Bend(1, Corner(0, 0, 300, 50, 0, 300.000001)), KESTO_CURVE_DOES_NOT_FIT,
         1, 0},
        {"spiral between equal radii",
         {Corner(0, 0), Corner(900, 0, 100, 20, 0, 100), Corner(900, 900)},
         KESTO_CURVE_DOES_NOT_FIT,
         1,
         0},
        {"negative radius", {Corner(0, 0), Corner(200, 0, -10), Corner(200, 90)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
        {"length no number", {Corner(0, 0), Corner(200, 0, 10, nan), Corner(200, 90)}, KESTO_CURVE_DOES_NOT_FIT, 1, 0},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        road.elements.Insert(kesto::test::MakeElement(1, false, 0, 0, 7));
        Fill(road, it.points);
        const kesto::Outcome generated = kesto::GenerateFromIntersections(road, road.elements);
        ASSERT_FALSE(generated);
        EXPECT_EQ(generated.failure().status, it.status);
        EXPECT_EQ(generated.failure().record, it.record);
        EXPECT_EQ(generated.failure().limit, it.limit);
        EXPECT_NEAR(generated.failure().excess, it.excess, 1e-9);
        EXPECT_EQ(road.elements.Count(), 1);
    }
    for (const auto& [rest, count] : {std::pair{-0.0005, 5}, {0.00005, 5}, {0.0002, 6}}) {
        RoadDesign touching;
        Fill(touching, {Corner(0, 0), Corner(200, 0, 100), Corner(200, 150 + rest, 50), Corner(300, 150 + rest)});
        ASSERT_TRUE(kesto::GenerateFromIntersections(touching, touching.elements));
        EXPECT_EQ(touching.elements.Count(), count) << rest << ": a straight of more than 0.1 mm is kept";
    }
    RoadDesign beside;
    Fill(beside, {Corner(-5e-5, 0), Corner(100, 0, 100), Corner(100, 300)});
    ASSERT_TRUE(kesto::GenerateFromIntersections(beside, beside.elements));
    EXPECT_EQ(beside.elements.Count(), 3) << "a curve at one end is enough";
    RoadDesign rounded;
    Fill(rounded, Bend(1, Corner(0, 0, 100, 100 * (1 + 5e-8), 100)));
    EXPECT_TRUE(kesto::GenerateFromIntersections(rounded, rounded.elements)) << "spirals too long by rounding";
    RoadDesign kinked;
    Fill(kinked, {Corner(0, 0), Corner(100, 0), Corner(100, 100), Corner(100, 200, 50)});
    ASSERT_TRUE(kesto::GenerateFromIntersections(kinked, kinked.elements));
    EXPECT_EQ(kinked.elements.Count(), 4) << "one straight per side where there is no curve";
}

/// One published table: main points of the curves with mileages and coordinates.
void ExpectPublished(const std::string& folder) {
    SCOPED_TRACE(folder);
    const std::string path = std::string(KESTO_TEST_DATA) + "/intersections-" + folder;
    RoadDesign road;
    for (const auto& row : kesto::test::ReadCsv(path + "/intersections.csv")) {
        Intersection point = Corner(row.Number("x"), row.Number("y"), row.Number("radius"), row.Number("spiral_in"),
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

}  // namespace
