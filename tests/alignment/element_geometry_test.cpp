#include "alignment/element_geometry.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <ostream>
#include <random>

#include "quadrature.hpp"

using kesto::Evaluate;
using kesto_test::Integrate;
using kesto_test::Integrated;
using kesto_test::MakeElement;

namespace {

struct CurveCase {
    const char* name;
    Element element;
    double bound;  // m: distance from the integrated point; rounding of coordinates of this size included

    friend void PrintTo(const CurveCase& curve, std::ostream* out) { *out << curve.name; }
};

class AgainstIntegration : public testing::TestWithParam<CurveCase> {};

TEST_P(AgainstIntegration, EveryTenthOfTheElement) {
    const Element& element = GetParam().element;
    for (int tenth = 0; tenth <= 10; ++tenth) {
        const double s = element.length * tenth / 10;
        const kesto::Result<kesto::Position> position = Evaluate(element, s);
        ASSERT_TRUE(position) << s;
        const Integrated exact = Integrate(element, s);
        EXPECT_LT(std::hypot(position->x - static_cast<double>(exact.x), position->y - static_cast<double>(exact.y)),
                  GetParam().bound)
            << s;
        const long double degrees = exact.azimuth * 180 / std::acos(-1.0L);
        const auto difference = static_cast<double>(std::fabs(std::remainder(position->azimuth - degrees, 360.0L)));
        EXPECT_LT(difference, 1e-9) << s;
    }
}

constexpr double rounding = 2e-9;  // m: a few ulps at the size of grid coordinates
INSTANTIATE_TEST_SUITE_P(
    Curves, AgainstIntegration,
    testing::Values(
        CurveCase{"Straight", MakeElement(1, false, 0, 0, 812.5, 4539456.4, 452413.9, 69.95), rounding},
        CurveCase{"FlatArcLeft", MakeElement(2, false, 1e6, 0, 900, 4539456.4, 452413.9, 359.99), rounding},
        CurveCase{"TightArcRight", MakeElement(2, true, 12, 0, 70, 4539456.4, 452413.9, 200), rounding},
        CurveCase{"ArcWithoutRadius", MakeElement(2, true, 0, 0, 70, 5, 6, 200), rounding},
        CurveCase{"ArcBackwards", MakeElement(2, true, 100, 0, -50, 5, 6, 200), rounding},
        CurveCase{"EntryLeft", MakeElement(3, false, 0, 300, 100, 4539456.4, 452413.9, 1), rounding},
        CurveCase{"EntryRight", MakeElement(3, true, 0, 25, 60, 4539456.4, 452413.9, 350), rounding},
        CurveCase{"ExitLeft", MakeElement(3, false, 300, 0, 100, 4539456.4, 452413.9, 1), rounding},
        CurveCase{"ExitRightBackwards", MakeElement(3, true, 300, 0, -100, 0, 0, 1), rounding},
        CurveCase{"EntryBackwards", MakeElement(3, false, 0, 300, -100, 0, 0, 1), rounding},
        CurveCase{"EggNarrowing", MakeElement(3, true, 400, 150, 80, 4539456.4, 452413.9, 123), rounding},
        CurveCase{"EggWidening", MakeElement(3, false, 150, 400, 80, 4539456.4, 452413.9, 123), rounding},
        CurveCase{"SeriesAtItsLimit", MakeElement(3, true, 0, 50, 299.9, 0, 0, 0), rounding},
        CurveCase{"QuadratureBeyondIt", MakeElement(3, true, 0, 50, 300.1, 0, 0, 0), rounding},
        CurveCase{"NearlyEqualRadii", MakeElement(3, true, 500, 495, 100, 4539456.4, 452413.9, 10), rounding},
        CurveCase{"NearlyEqualRadiiWidening", MakeElement(3, false, 999, 1000, 100, 4539456.4, 452413.9, 10), rounding},
        CurveCase{"ManyTurns", MakeElement(3, false, 0, 10, 1000, 0, 0, 0), rounding}),
    [](const auto& curve) { return curve.param.name; });

TEST(ElementGeometry, BehindTheStartOfASpiral) {
    // Towards its tight end the clothoid winds on: at 120 m behind the start by four times the angle of the start.
    const Element spiral = MakeElement(3, true, 25, 0, 120);
    for (const double s : {-10.0, -60.0, -120.0}) {
        const kesto::Result<kesto::Position> position = Evaluate(spiral, s);
        ASSERT_TRUE(position) << s;
        const Integrated exact = Integrate(spiral, s);
        EXPECT_NEAR(position->x, static_cast<double>(exact.x), 1e-9) << s;
        EXPECT_NEAR(position->y, static_cast<double>(exact.y), 1e-9) << s;
    }
}

struct RuleCase {
    const char* name;
    Element element;
    double distance;
    bool succeeds;
};

TEST(ElementGeometry, WhereAnElementHolds) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const RuleCase cases[] = {
        {"a little beyond the end", MakeElement(2, true, 100, 0, 50), 50 + 5e-8, true},
        {"too far beyond the end", MakeElement(2, true, 100, 0, 50), 50 + 2e-7, false},
        {"too far behind the start", MakeElement(1, true, 0, 0, 50), -50 - 2e-7, false},
        {"start of a spiral between equal radii", MakeElement(3, true, 100, 100, 50), 0, true},
        {"spiral between equal radii", MakeElement(3, true, 100, 100, 50), 1, false},
        {"spiral without radii stays at its start", MakeElement(3, true, 0, 0, 50), 25, true},
        {"start of an unknown type", MakeElement(7, true, 100, 100, 50), 5e-8, true},
        {"unknown type", MakeElement(7, true, 100, 100, 50), 1, false},
        {"start record with a length", MakeElement(0, true, 0, 0, 50), 1, false},
        {"spiral of a hundred turns", MakeElement(3, true, 0, 1, 1500), 1500, false},
        {"the same near its origin", MakeElement(3, true, 0, 1, 1500), 10, true},
        {"distance no number", MakeElement(1, true, 0, 0, 50), nan, false},
        {"radius no number", MakeElement(2, true, nan, 0, 50), 10, false},
    };
    for (const RuleCase& it : cases) {
        EXPECT_EQ(static_cast<bool>(Evaluate(it.element, it.distance)), it.succeeds) << it.name;
    }
    const auto still = Evaluate(MakeElement(3, true, 0, 0, 50, 7, 8, 9), 25);
    EXPECT_EQ(still->x, 7);
    EXPECT_EQ(still->y, 8);
    EXPECT_EQ(still->azimuth, 9);
}

TEST(ElementGeometry, AzimuthIsBroughtBackOnce) {
    const double pi = std::acos(-1.0);
    struct Case {
        double start;
        double turn;  // degrees, right
        double expected;
    };
    const Case cases[] = {{350, 20, 10}, {10, -20, 350}, {300, 60, 360}, {90, -90, 0}, {700, 40, 380}};
    for (const Case& it : cases) {
        const double length = std::fabs(it.turn) / 180 * pi * 100;
        const auto position = Evaluate(MakeElement(2, it.turn > 0, 100, 0, length, 0, 0, it.start), length);
        EXPECT_NEAR(position->azimuth, it.expected, 1e-12) << it.start << " " << it.turn;
    }
    // A straight keeps its azimuth to the bit, even one of exactly 360; a tiny one counts as 0.
    EXPECT_EQ(Evaluate(MakeElement(1, true, 0, 0, 10, 0, 0, 360), 10)->azimuth, 360);
    EXPECT_EQ(Evaluate(MakeElement(1, true, 0, 0, 10, 0, 0, 9e-8), 10)->azimuth, 0);
}

TEST(ElementGeometry, FrameChangesNoBit) {
    std::mt19937 random(11);
    const auto of = [&](std::initializer_list<double> values) { return values.begin()[random() % values.size()]; };
    int found = 0;
    for (int round = 0; round < 20000; ++round) {
        Element element{};
        element.type = static_cast<std::int32_t>(random() % 5);
        element.turnDirection = random() % 2;
        element.startX = 3412345.678;
        element.startY = of({512345.678, -0.0});
        element.startAzimuth = of({0, 33.3, 359.99999999, -120, 1e9, std::nan("")});
        element.startRadius = of({0, 1e-8, 250, 300, 299.999, 1000, -40, 1e-3, HUGE_VAL, std::nan("")});
        element.endRadius = of({0, 1e-8, 250, 300, 299.999, 1000, -40, 1e-3, HUGE_VAL, std::nan("")});
        element.length = of({100, -100, 20, 1e4, 0, 1e-8});
        const double distance = element.length * of({0, 0.3, 0.5, 1, 1 + 1e-10, 1.1, -0.2});
        const auto plain = kesto::Evaluate(element, distance);
        const auto framed = kesto::Evaluate(element, kesto::EvaluationFrameOf(element), distance);
        ASSERT_EQ(static_cast<bool>(plain), static_cast<bool>(framed)) << "round " << round;
        if (!plain) continue;
        ++found;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(plain->x), std::bit_cast<std::uint64_t>(framed->x)) << "round " << round;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(plain->y), std::bit_cast<std::uint64_t>(framed->y)) << "round " << round;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(plain->azimuth), std::bit_cast<std::uint64_t>(framed->azimuth));
    }
    EXPECT_GT(found, 5000);
}

}  // namespace
