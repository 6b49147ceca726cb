#include "alignment/chain_builder.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "alignment/broken_chains.hpp"
#include "geometry/angles.hpp"
#include "support/quadrature.hpp"

using kesto::test::MakeElement;

namespace {

/// A road in the element method; the elements stand one behind the other only as far as the test needs it.
void Fill(RoadDesign& road, const std::vector<Element>& elements, const std::vector<BrokenChain>& chains = {}) {
    road.settings.roadDesignMode = 1;
    kesto::SetStart(road, 0, 0, 0);
    for (const Element& element : elements) road.elements.Insert(element);
    for (const BrokenChain& chain : chains) ASSERT_TRUE(kesto::InsertBrokenChain(road, chain));
}

struct Piece {
    double start;   // m
    double length;  // m
};

struct BuildCase {
    const char* name;
    double startMileage;
    std::vector<double> lengths;
    std::vector<BrokenChain> chains;
    std::vector<Piece> expected;  // from element 1 on
    double startAfter;
};

TEST(ChainBuilder, BreaksSplitAndJump) {
    const BuildCase cases[] = {
        {"no break", 50, {100, 20}, {}, {{50, 100}, {150, 20}}, 50},
        {"backward", 0, {1000}, {{400, 350}}, {{0, 400}, {350, 600}}, 0},
        {"two breaks on one element", 0, {1000}, {{400, 500}, {700, 100}}, {{0, 400}, {500, 200}, {100, 400}}, 0},
        {"at a junction nothing is split", 0, {400, 600}, {{400, 350}}, {{0, 400}, {350, 600}}, 0},
        {"just before a junction", 0, {400, 600}, {{399.99995, 350}}, {{0, 399.99995}, {349.99995 + 0.00005, 600}}, 0},
        {"just after a junction acts one element later",
         0,
         {400, 600, 50},
         {{400.000005, 350}},
         {{0, 400}, {400, 600}, {949.999995, 50}},
         0},
        {"the same on the last element not at all", 0, {400, 600}, {{400.000005, 350}}, {{0, 400}, {400, 600}}, 0},
        {"off the road", 0, {400}, {{-5, 20}, {500, 20}}, {{0, 400}}, 0},
        {"on the start record", 100, {400}, {{100, 80}}, {{80, 400}}, 80},
    };
    for (const BuildCase& it : cases) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        road.settings.startMileage = it.startMileage;
        std::vector<Element> elements;
        for (const double length : it.lengths) elements.push_back(MakeElement(1, false, 0, 0, length));
        Fill(road, elements, it.chains);
        ASSERT_TRUE(kesto::BuildChain(road));
        ASSERT_EQ(static_cast<std::size_t>(road.elements.Count()), it.expected.size() + 1);
        double total = 0;
        for (std::size_t i = 0; i < it.expected.size(); ++i) {
            const Element& element = road.elements[static_cast<std::int32_t>(i) + 1];
            EXPECT_NEAR(element.startMileage, it.expected[i].start, 1e-9) << i;
            EXPECT_NEAR(element.length, it.expected[i].length, 1e-9) << i;
            total += element.length;
        }
        EXPECT_DOUBLE_EQ(road.totalLength, total);
        EXPECT_DOUBLE_EQ(road.settings.startMileage, it.startAfter);
    }
}

TEST(ChainBuilder, SplitPiecesOfASpiral) {
    struct Case {
        double startRadius, endRadius, at, junction;
    };
    // The curvature at the split lies on the straight line between the curvatures at the ends.
    const Case cases[] = {{0, 300, 40, 750}, {300, 0, 40, 500}, {400, 100, 50, 160}, {100, 400, 50, 160}};
    for (const Case& it : cases) {
        RoadDesign road;
        Element spiral = MakeElement(3, true, it.startRadius, it.endRadius, 100);
        spiral.flag = 5;
        Fill(road, {spiral}, {{it.at, it.at + 1000}});
        ASSERT_TRUE(kesto::BuildChain(road));
        ASSERT_EQ(road.elements.Count(), 3);
        EXPECT_NEAR(road.elements[1].endRadius, it.junction, 1e-9);
        EXPECT_EQ(road.elements[1].endRadius, road.elements[2].startRadius);
        EXPECT_EQ(road.elements[1].startRadius, it.startRadius);
        EXPECT_EQ(road.elements[2].endRadius, it.endRadius);
        EXPECT_EQ(road.elements[1].flag, 5);
        EXPECT_EQ(road.elements[2].flag, 0);
        const kesto::test::Integrated split = kesto::test::Integrate(spiral, it.at);
        EXPECT_NEAR(road.elements[2].startX, static_cast<double>(split.x), 1e-11);
        EXPECT_NEAR(road.elements[2].startY, static_cast<double>(split.y), 1e-11);
        EXPECT_NEAR(kesto::ToRadians(road.elements[2].startAzimuth), static_cast<double>(split.azimuth), 1e-12);
    }
}

TEST(ChainBuilder, FailuresLeaveTheRoadAsItWas) {
    struct Case {
        const char* name;
        std::vector<Element> elements;
        std::vector<BrokenChain> chains;
        std::int32_t status;
        std::int32_t record;
    };
    const Element straight = MakeElement(1, false, 0, 0, 100);
    const Case cases[] = {
        {"start record alone", {}, {}, KESTO_TOO_FEW_ELEMENTS, -1},
        {"length no number",
         {straight, MakeElement(1, false, 0, 0, std::nan(""))},
         {{50, 20}},
         KESTO_ELEMENT_NOT_EVALUABLE,
         2},
        {"infinite length",
         {MakeElement(1, false, 0, 0, std::numeric_limits<double>::infinity())},
         {},
         KESTO_ELEMENT_NOT_EVALUABLE,
         1},
        {"break on a spiral between equal radii",
         {straight, MakeElement(3, true, 80, 80, 100)},
         {{50, 60}, {150, 20}},
         KESTO_ELEMENT_NOT_EVALUABLE,
         2},
        {"jump to nowhere", {straight, straight}, {{50, std::nan("")}}, KESTO_ELEMENT_NOT_EVALUABLE, 1},
        {"lengths that add up to infinity",
         {MakeElement(1, false, 0, 0, 1.7e308), MakeElement(1, false, 0, 0, 1.7e308)},
         {},
         KESTO_ELEMENT_NOT_EVALUABLE,
         2},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        RoadDesign road;
        road.settings.startMileage = 0;
        Fill(road, it.elements, it.chains);
        road.totalLength = 77;
        const kesto::Outcome built = kesto::BuildChain(road);
        ASSERT_FALSE(built);
        EXPECT_EQ(built.failure().status, it.status);
        EXPECT_EQ(built.failure().record, it.record);
        EXPECT_EQ(static_cast<std::size_t>(road.elements.Count()), it.elements.size() + 1);
        EXPECT_EQ(road.totalLength, 0);
        EXPECT_EQ(road.settings.startMileage, 0);
        for (const Element& element : road.elements.Records()) EXPECT_EQ(element.startMileage, 0);
    }
    RoadDesign headless;
    Fill(headless, {straight});
    headless.elements.Remove(0);
    headless.elements.Insert(straight);
    EXPECT_EQ(kesto::BuildChain(headless).failure().status, KESTO_NO_START_ELEMENT);
    headless.settings.roadDesignMode = 5;
    EXPECT_EQ(kesto::MakeCurrent(headless).failure().status, KESTO_UNKNOWN_DESIGN_MODE);
    for (const std::int32_t mode : {0, 2, 3}) {
        headless.settings.roadDesignMode = mode;  // without anything to make elements from
        EXPECT_EQ(kesto::MakeCurrent(headless).failure().status, KESTO_TOO_FEW_ELEMENTS) << mode;
    }
    EXPECT_EQ(headless.elements.Count(), 2);
}

}  // namespace
