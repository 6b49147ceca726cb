#include "geometry/element_geometry.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <utility>

#include "support/quadrature.hpp"

using kesto::Evaluate;
using kesto::test::Integrate;
using kesto::test::Integrated;
using kesto::test::MakeElement;

namespace {

TEST(ElementGeometry, WhatNoDesignHolds) {
    // Towards its tight end a clothoid winds on: at 120 m behind the start by four times the angle of the start.
    const Element winding = MakeElement(3, true, 25, 0, 120);
    const Element withoutRadius = MakeElement(2, true, 0, 0, 70, 5, 6, 200);
    const Element exitBackwards = MakeElement(3, true, 300, 0, -100, 0, 0, 1);
    const Element entryBackwards = MakeElement(3, false, 0, 300, -100, 0, 0, 1);
    for (const auto& [element, s] : {std::pair(winding, -10.0),
                                     {winding, -60.0},
                                     {winding, -120.0},
                                     {withoutRadius, 70.0},
                                     {exitBackwards, -100.0},
                                     {entryBackwards, -100.0}}) {
        SCOPED_TRACE(testing::Message() << element.type << " " << element.startRadius << " at " << s);
        const kesto::Result<kesto::Position> position = Evaluate(element, s);
        ASSERT_TRUE(position);
        const Integrated exact = Integrate(element, s);
        EXPECT_NEAR(position->x, static_cast<double>(exact.x), 1e-9);
        EXPECT_NEAR(position->y, static_cast<double>(exact.y), 1e-9);
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
