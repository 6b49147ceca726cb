// The cross sections in the project file: their lines, that they come back from them wherever their places lie, and
// which of them a reader refuses.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "core/text.hpp"
#include "io/project_text.hpp"
#include "profile/vertical_curves.hpp"
#include "section/change_sections.hpp"
#include "section/mileage_index.hpp"
#include "section/plates.hpp"
#include "support/code_pages.hpp"
#include "support/records.hpp"

namespace kesto {
namespace {

using test::Corner;
using test::GradePoint;
using test::Lines;
using test::Named;
using test::Piece;

const CodePage utf8(test::utf8Page);
constexpr ChangeTable leftSlopes{0, 0}, leftWidths{0, 1}, rightSlopes{1, 0}, rightWidths{1, 1};

std::string Format(RoadDesign& road) {
    const Result<std::string> text = FormatProject(road, utf8);
    return text ? *text : "failed";
}

std::string From(const std::string& text, std::string_view keyword) {
    return text.substr(std::min(text.find(keyword), text.size()));
}

void AddPlate(RoadDesign& road, std::int32_t side, std::string_view name, std::string_view code, double width,
              double slope, double step = 0, double extra = 0) {
    SectionPlate plate{};
    SetText(plate.name, name);
    SetText(plate.code, code);
    plate.width = width;
    plate.crossSlope = slope;
    plate.step = step;
    plate.extra = extra;
    plate.offset = plate.x = plate.y = plate.height = 77;  // outputs, which no file holds
    ASSERT_TRUE(InsertPlate(road, plate, side, -1));
}

auto& Table(RoadDesign& road, ChangeTable which) {
    return road.sections.changeSections[static_cast<std::size_t>(which.side)][static_cast<std::size_t>(which.kind)];
}

auto& Types(RoadDesign& road, ChangeTable which) {
    return road.sections.transitionTypes[static_cast<std::size_t>(which.side)][static_cast<std::size_t>(which.kind)];
}

/// Elements of 200, 100 and 100 m from mileage 100; at 250 the stakes go back to 220, so 220 to 250 occurs twice.
void MakeBroken(RoadDesign& road) {
    road.settings.roadDesignMode = 1;
    road.settings.startMileage = 100;
    for (const double length : {0.0, 200.0, 100.0, 100.0}) road.elements.Insert(Piece(length > 0 ? 1 : 0, length));
    road.brokenChains.Insert({250, 220});
}

/// Saved, opened and saved again: the same text, with nothing skipped. The opened road is given out.
void RoundTrip(RoadDesign& road, RoadDesign& back) {
    const std::string text = Format(road);
    const Outcome read = ParseProject(text, back, utf8);
    EXPECT_TRUE(read) << read.failure().value << " records, line " << read.failure().record << '\n' << text;
    EXPECT_EQ(Format(back), text);
}

/// All change sections of both roads, each at the same place within 1e-7 m.
void ExpectSameChanges(RoadDesign& road, RoadDesign& back) {
    for (const ChangeTable which : {leftSlopes, leftWidths, rightSlopes, rightWidths}) {
        const auto& expected = Table(road, which);
        const auto& found = Table(back, which);
        ASSERT_EQ(found.size(), expected.size()) << which.side << which.kind;
        for (auto at = expected.begin(), it = found.begin(); at != expected.end(); ++at, ++it) {
            EXPECT_NEAR(it->first, at->first, 1e-7);
            EXPECT_EQ(it->second.values, at->second.values);
            EXPECT_EQ(it->second.flags, at->second.flags);
            EXPECT_EQ(Types(back, which).at(it->first), Types(road, which).at(at->first));
        }
    }
}

// Elements of arbitrary lengths end between the file's decimals: sections there must not move from save to save, and
// the elements that hold them must not be cut anew.
TEST(CrossSectionsInFile, PlacesStayFromSaveToSave) {
    const unsigned seed = 20240611;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> part(0, 1);
    for (int round = 0; round < 200; ++round) {
        RoadDesign road;
        road.settings.startMileage = part(random) * 1000;
        const bool fromPoints = round % 2 == 0;
        if (fromPoints) {
            for (int i = 0; i < 5; ++i) {
                Intersection point =
                    Named("", Corner(400.0 * i + part(random), (i % 2) * 200 + part(random), i % 4 == 0 ? 0 : 150));
                point.spiralIn = point.spiralOut = i % 4 == 0 ? 0 : 20 + part(random);
                road.intersections.Insert(point);
            }
        } else {
            road.settings.roadDesignMode = 1;
            road.elements.Insert(Piece(0, 0));
            for (int i = 0; i < 5; ++i) road.elements.Insert(Piece(1, (part(random) - 0.2) * 300));
        }
        const double at = road.settings.startMileage + 150 + part(random);
        road.brokenChains.Insert({at, at + 40 * (part(random) - 0.5)});
        ASSERT_TRUE(EnsureCurrent(road)) << round;
        AddPlate(road, 1, "p", "", 1, 1);
        double running = road.settings.startMileage;
        for (const Element& element : road.elements.Records()) {
            running += std::fabs(element.length);
            for (const double place : {running, running + part(random) * 1e-7, running + part(random) * 40}) {
                static_cast<void>(InsertChangeAt(road, rightWidths, place, {{part(random)}, {1}}, round % 4));
            }
        }
        for (auto& entry : Table(road, rightWidths)) entry.second.values[0] = std::round(entry.second.values[0] * 8);
        road.verticalCurves.Insert(GradePoint(running - 1, 5));
        RoadDesign back;
        RoundTrip(road, back);
        ExpectSameChanges(road, back);
        if (::testing::Test::HasFailure()) FAIL() << "round " << round;
    }
}

TEST(CrossSectionsInFile, APlaceBetweenTheDecimalsHasItsStake) {
    const std::pair<double, const char*> cases[] = {
        {-1e-12, "\n        0.00000000        4.00000000                 0   5\r"},
        {100.000000004, "\n      100.00000000        4.00000000                 0   5\r"},  // start of an element
        {200.000000008, "\n      200.00000001        4.00000000                 0   5\r"},  // end of the road
    };
    for (const auto& [place, line] : cases) {
        RoadDesign road;
        road.settings.roadDesignMode = 1;
        road.settings.startMileage = -100;
        for (const double length : {0.0, 200.000000004, 100.000000004}) {
            road.elements.Insert(Piece(length > 0 ? 1 : 0, length));
        }
        AddPlate(road, 0, "p", "", 3, 1);
        ASSERT_TRUE(InsertChangeAt(road, leftWidths, place, {{4}, {5}}, 1));
        EXPECT_NE(Format(road).find(line), std::string::npos) << Format(road);
        RoadDesign back;
        RoundTrip(road, back);
        ExpectSameChanges(road, back);
    }
}

TEST(CrossSectionsInFile, SectionsNearerThanTheDecimalsStayApart) {
    RoadDesign road;
    MakeBroken(road);
    AddPlate(road, 1, "p", "", 1, 1);
    const double next = std::nextafter(200.0, 300.0);
    const double places[] = {200.0, next, std::nextafter(next, 300.0), 200.00000001};
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(InsertChangeAt(road, rightSlopes, places[i], {{double(i)}, {1}}, i));
    }
    RoadDesign back;
    RoundTrip(road, back);
    ExpectSameChanges(road, back);
}

// The lines of a section are as many as the plates, whatever it went through while it was off the road.
TEST(CrossSectionsInFile, SectionsThatMissedAPlateAreCompleted) {
    RoadDesign road;
    MakeBroken(road);
    AddPlate(road, 1, "p", "", 3, 1);
    ASSERT_TRUE(InsertChangeAt(road, rightWidths, 900, {{4}, {5}}, 1));
    ASSERT_TRUE(InsertChangeAt(road, rightSlopes, 900, {{4}, {5}}, 1));
    AddPlate(road, 1, "q", "", 2, -1);
    RoadDesign back;
    RoundTrip(road, back);
    EXPECT_EQ(Table(back, rightWidths).at(900).values, (std::vector<double>{4, 2}));
    EXPECT_EQ(Table(back, rightSlopes).at(900).values, (std::vector<double>{4, -1}));
    EXPECT_EQ(Table(back, rightSlopes).at(900).flags, (std::vector<std::int32_t>{5, 0}));

    RoadDesign bare;  // a section of no values, where there are no plates
    ASSERT_TRUE(InsertChangeAt(bare, leftWidths, 5, {}, 1));
    EXPECT_EQ(Format(bare).find("Widen"), std::string::npos);
}

TEST(CrossSectionsInFile, ARoadThatCannotBeBuiltKeepsItsSections) {
    RoadDesign road;
    AddPlate(road, 0, "p", "", 3, 1);
    ASSERT_TRUE(InsertChangeAt(road, leftWidths, 33.5, {{4}, {5}}, 1));
    EXPECT_EQ(From(Format(road), "WidenSectionLeft"),
              Lines({"WidenSectionLeft", "       33.50000000        4.00000000                -1   5", "",
                     "WidenLeftType", "   1", ""}));
    RoadDesign back;
    RoundTrip(road, back);
    ExpectSameChanges(road, back);
}

TEST(CrossSectionsInFile, NeitherSavingNorReadingRebuildsTheRoad) {
    RoadDesign road;
    MakeBroken(road);
    ASSERT_TRUE(EnsureCurrent(road));
    AddPlate(road, 0, "p", "", 3, 1);
    ASSERT_TRUE(InsertChange(road, leftWidths, {{300, 0}, {{4}, {5}}}, 1));
    ASSERT_TRUE(InsertVerticalCurve(road, GradePoint(150, 5)));
    ASSERT_TRUE(InsertBrokenChain(road, {110, 130}));  // not yet in the chain: 300 is 320 once it is
    road.stakes.Insert({});
    const std::uint64_t revision = road.elements.Revision();
    EXPECT_NE(Format(road).find("      320.00000000        4.00000000                 0   5"), std::string::npos);
    road.totalLength = 0;
    RoadDesign back;
    RoundTrip(road, back);
    ExpectSameChanges(road, back);
    EXPECT_EQ(road.elements.Revision(), revision);
    EXPECT_EQ(road.totalLength, 0);
    EXPECT_EQ(road.stakes.Count(), 1);
    EXPECT_EQ(back.elements.Count(), road.elements.Count());
}

/// A road of 400 m with two plates; the change sections follow from line 12 on.
const std::string front = Lines({"100 20 0 K", "", "Element", "0 0 0 0 0 0 0 0 0 0", "0 0 0 400 0 0 1 0 0 0", "",
                                 "StandardSectionRight", "p c 1 2 0 0", "q c 3 4 0 0", "", "WidenSectionRight"});

TEST(CrossSectionsInFile, WhatAReaderTakesAndRefuses) {
    struct Case {
        const char* what;
        const char* lines;                      // from line 12 on
        std::map<double, std::int32_t> places;  // of the sections that are read, with their types
        std::int32_t skipped = 0, firstLine = 0;
    };
    const Case cases[] = {
        {"two sections", "150 1 0 1\n150 2 0 1\n160 1 0 1\n160 2 0 1\n", {{150, 0}, {160, 0}}},
        {"not ascending",
         "160 1 0 1\n160 2 0 1\n150 1 0 1\n150 2 0 1\n\nWidenRightType\n 1\n 2\n",
         {{150, 2}, {160, 1}}},
        {"too few lines", "150 1 0 1\n160 1 0 1\n160 2 0 1\n\nWidenRightType\n 1\n 2\n", {{160, 2}}, 1, 12},
        {"too many lines", "150 1 0 1\n150 2 0 1\n150 3 0 1\n160 1 0 1\n160 2 0 1\n", {{160, 0}}, 1, 12},
        {"off the road", "170 1 0 1\n170 2 0 1\n600 1 0 1\n600 2 0 1\n", {{170, 0}}, 1, 14},
        {"no such occurrence", "170 1 1 1\n170 2 1 1\n170 1 -2 1\n170 2 -2 1\n", {}, 2, 12},
        {"there already", "170 1 0 1\n170 2 0 1\n170 1 -1 1\n170 2 -1 1\n", {{170, 0}}, 1, 14},
        {"by its own mileage", "600 1 -1 1\n600 2 -1 1\n", {{600, 0}}},
        {"a line apart", "150 1 0 1\n160 1 0 1\n160 2 0 1\n150 2 0 1\n", {{160, 0}}, 2, 12},
        {"overflow", "150 1 0 1\n150 1e999 0 1\n160 1 0 1\n160 2 0 1\n\nWidenRightType\n 1\n 2\n", {{160, 2}}, 1, 12},
        {"a type missing", "150 1 0 1\n150 2 0 1\n160 1 0 1\n160 2 0 1\n\nWidenRightType\n 3\n", {{150, 3}, {160, 0}}},
        {"bad types", "150 1 0 1\n150 2 0 1\n\nWidenRightType\n99999999999\n 3\n", {{150, 0}}, 2, 16},
        {"types of another table", "150 1 0 1\n150 2 0 1\n\nHeightRightType\n 3\n", {{150, 0}}, 1, 16},
        {"a keyword cut short", "150 1 0 1\n150 2 0 1\n\nWidenRightTyp\n 3\n", {{150, 3}}},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.what);
        RoadDesign road;
        const Outcome read = ParseProject(front + it.lines, road, utf8);
        EXPECT_EQ(Types(road, rightWidths), it.places);
        EXPECT_EQ(Table(road, rightWidths).size(), it.places.size());
        ASSERT_EQ(static_cast<bool>(read), it.skipped == 0);
        if (read) continue;
        EXPECT_EQ(read.failure().value, it.skipped);
        EXPECT_EQ(read.failure().record, it.firstLine);
        EXPECT_EQ(read.failure().list, KESTO_LIST_CHANGE_SECTIONS);
    }
}

TEST(CrossSectionsInFile, NamesOfPlates) {
    RoadDesign road;
    const std::string numbers = "        1.00000000        2.00000000        3.00000000        4.00000000";
    const auto wide = [](std::string_view name) { return std::string(32 - name.size(), ' ').append(name); };
    const std::tuple<std::string, const char*, const char*, double> cases[] = {
        {"n c 1 2 3 4", "n", "c", 1},
        {wide("n") + wide("") + numbers, "n", "", 1},
        {wide("") + wide("c") + numbers, "", "c", 1},
        {wide("") + wide("") + numbers, "", "", 1},
        {wide("n of two") + wide("c") + numbers, "n", "c", 1},
        {wide("n") + wide("c of two") + numbers, "n", "c", 1},
        {"n 5 c 1 2 3 4", "n", "5", 1},
        {"n c 7", "n", "c", 7},
    };
    for (const auto& it : cases) {
        ASSERT_TRUE(ParseProject(Lines({"StandardSectionLeft", std::get<0>(it)}), road, utf8));
        const SectionPlate& plate = road.sections.plates[0].back();
        EXPECT_EQ(std::tuple(TextOf(plate.name), TextOf(plate.code), plate.width),
                  std::tuple(std::string_view(std::get<1>(it)), std::string_view(std::get<2>(it)), std::get<3>(it)))
            << std::get<0>(it);
    }
    EXPECT_EQ(road.sections.plates[0].size(), std::size(cases));
    const Outcome read = ParseProject(
        Lines({"StandardSectionLeft", "n c 1 2e999 3 4", "", "roadSectionMileage", "-1e999", "7"}), road, utf8);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.failure().value, 2);
    EXPECT_EQ(read.failure().list, KESTO_LIST_PLATES);
    EXPECT_EQ(road.sections.mileageIndex.size(), 1U);
}

}  // namespace
}  // namespace kesto
