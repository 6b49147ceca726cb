// The project file's bytes: every section as its format says, which form of the alignment is written, and that a road
// comes back from them.

#include "io/project_text.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "core/text.hpp"
#include "support/code_pages.hpp"
#include "support/records.hpp"

namespace kesto {
namespace {

using test::Corner;
using test::GradePoint;
using test::Lines;
using test::MainPoint;
using test::Named;
using test::Piece;

const CodePage asciiNames(test::utf8Page);

std::string Format(RoadDesign& road) {
    const Result<std::string> text = FormatProject(road, asciiNames);
    return text ? *text : "failed";
}

/// What follows the header and ExtInfo of a road with default settings.
std::string SectionsOf(RoadDesign& road) {
    const std::string front = Lines({
        "        0.00000000       100.00000000                  0                  K",
        "",
        "ExtInfo",
        "     SideSlopeMode                 0",
        "     ChangeSection                 1",
        "       SectionMode                 0",
        "",
    });
    const std::string text = Format(road);
    EXPECT_TRUE(text.starts_with(front)) << text;
    return text.substr(std::min(front.size(), text.size()));
}

TEST(ProjectText, WritesTheSettings) {
    RoadDesign road;
    road.settings = {.startMileage = -1234.5,
                     .mileageInterval = 25,
                     .makeStakeType = 1,
                     .sectionMode = 2,
                     .sideSlopeMode = 3,
                     .stakePrefix = "a prefix beyond 18 bytes"};
    EXPECT_EQ(Format(road), Lines({
                                "    -1234.50000000        25.00000000                  1 a prefix beyond 18 bytes",
                                "",
                                "ExtInfo",
                                "     SideSlopeMode                 3",
                                "     ChangeSection                 1",
                                "       SectionMode                 2",
                                "",
                            }));
}

TEST(ProjectText, WritesIntersectionsAndProfile) {
    RoadDesign road;
    Intersection curve = Named("JD1", Corner(1000, 2000.25, 300));
    curve.spiralIn = 50;
    curve.spiralOut = 60;
    curve.radiusIn = 70;
    curve.radiusOut = 80;
    road.intersections.Insert(curve);
    road.intersections.Insert(Named("", Corner(123456789.12345678, -1, std::numeric_limits<double>::infinity())));
    road.verticalCurves.Insert(GradePoint(10, 100.5));
    road.verticalCurves.Edit()[0].radius = 5000;
    road.verticalCurves.Edit()[0].occurrence = -1;
    EXPECT_EQ(SectionsOf(road),
              Lines({
                  "Intersection",
                  "                             JD1     1000.00000000     2000.25000000      300.00000000"
                  "       50.00000000       60.00000000       70.00000000       80.00000000",
                  "                            NULL123456789.12345678       -1.00000000        0.00000000"
                  "        0.00000000        0.00000000        0.00000000        0.00000000",
                  "",
                  "VerticalCurve",
                  "       10.00000000      100.50000000     5000.00000000  -1",
                  "",
              }));
}

TEST(ProjectText, WritesElementsBreaksAndGivenCurveEnds) {
    RoadDesign road;
    Element spiral = Piece(3, -40);
    spiral.startX = 1;
    spiral.startY = 2;
    spiral.startAzimuth = 359.5;
    spiral.secondAzimuth = 77;
    spiral.startMileage = 88;
    spiral.turnDirection = 1;
    spiral.startRadius = 500;
    spiral.endRadius = 400;
    spiral.flag = 12345;
    road.elements.Insert(spiral);
    road.brokenChains.Insert({100, 90.5});
    road.settings.verticalCurveMode = 1;
    VerticalCurve given = GradePoint(10, 100.5);
    given.occurrence = 1;
    given.startMileage = 5;
    given.startOccurrence = 2;
    given.endMileage = 15;
    given.endOccurrence = -1;
    road.verticalCurves.Insert(given);
    EXPECT_EQ(SectionsOf(road), Lines({
                                    "Element",
                                    "        1.00000000        2.00000000      359.50000000      -40.00000000"
                                    "                 1      359.50000000   3      500.00000000      400.00000000"
                                    "12345",
                                    "",
                                    "BrokenChain",
                                    "      100.00000000       90.50000000",
                                    "",
                                    "VerticalCurve_SECONDPARA",
                                    "       10.00000000      100.50000000   1        5.00000000                 2"
                                    "       15.00000000                -1",
                                    "",
                                }));
    road.settings.verticalCurveMode = 2;
    EXPECT_EQ(Format(road).find("VerticalCurve"), std::string::npos);
}

TEST(ProjectText, OneFormOfTheAlignmentIsWritten) {
    RoadDesign road;
    road.elements.Insert(Piece(0, 0));
    EXPECT_TRUE(SectionsOf(road).starts_with("Element\r\n"));
    Coordinate point = Named("P 1", MainPoint(1, 2, 1));
    point.turnDirection = 1;
    point.radius = 3;
    road.coordinates.Insert(point);
    const std::string line =
        Lines({"   1   1        1.00000000        2.00000000        3.00000000"
               "                             P 1",
               ""});
    const std::pair<std::int32_t, std::string> modes[] = {
        {0, line}, {1, line}, {2, "Coordinate\r\n" + line}, {3, "BrokenLine\r\n" + line}, {4, line}};
    for (const auto& [mode, expected] : modes) {
        road.settings.roadDesignMode = mode;
        EXPECT_EQ(SectionsOf(road), expected) << mode;
    }
    road.settings.roadDesignMode = 2;
    road.intersections.Insert(Named("JD", Corner(0, 0, 0)));
    EXPECT_TRUE(SectionsOf(road).starts_with("Intersection\r\n"));
    EXPECT_EQ(SectionsOf(road).find("Coordinate"), std::string::npos);
    EXPECT_EQ(SectionsOf(road).find("Element"), std::string::npos);
}

TEST(ProjectText, NamesAreUtf8InTheFileOnlyAndThePrefixIsNot) {
    RoadDesign road;
    const std::string local =
        "Stra\xDF"
        "e";
    road.intersections.Insert(Named(local, Corner(0, 0, 0)));
    const CodePage latin(test::latinPage);
    const std::string text = *FormatProject(road, latin);
    EXPECT_NE(text.find(std::string(25, ' ') + "Stra\xC3\x9F"
                                               "e  "),
              std::string::npos);  // 32 bytes wide
    RoadDesign back;
    EXPECT_TRUE(ParseProject(text, back, latin));
    EXPECT_EQ(TextOf(back.intersections[0].name), local);

    // An older file in the local code page: names stay, and become UTF-8 with the next save.
    std::string older = text;
    older.replace(older.find("\xC3\x9F"), 2, "\xDF");
    RoadDesign old;
    EXPECT_TRUE(ParseProject(older, old, latin));
    EXPECT_EQ(TextOf(old.intersections[0].name), local);
    EXPECT_EQ(*FormatProject(old, latin), text);

    road.settings.stakePrefix = "\xDF";
    EXPECT_NE(FormatProject(road, latin)->find(" \xDF\r\n"), std::string::npos);
}

TEST(ProjectText, NoTextBreaksItsLine) {
    RoadDesign road;
    road.settings.stakePrefix = "K\r\nElement\n";
    road.intersections.Insert(Named("A\nB", Corner(7, 8, 9)));
    RoadDesign back;
    EXPECT_TRUE(ParseProject(Format(road), back, asciiNames));
    EXPECT_EQ(back.settings.stakePrefix, "K");
    ASSERT_EQ(back.intersections.Count(), 1);
    EXPECT_EQ(TextOf(back.intersections[0].name), "A");
    EXPECT_EQ(back.intersections[0].x, 7);
}

TEST(ProjectText, APrefixThatNoReaderTakesIsRefused) {
    RoadDesign road;
    const std::size_t front = 3 * 18 + 3;
    road.settings.stakePrefix.assign(254 - front, 'K');  // and a carriage return
    RoadDesign back;
    EXPECT_TRUE(ParseProject(Format(road), back, asciiNames));
    EXPECT_EQ(back.settings.stakePrefix, road.settings.stakePrefix);
    road.settings.stakePrefix += 'K';
    const Result<std::string> refused = FormatProject(road, asciiNames);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.failure().status, KESTO_FILE_NOT_WRITTEN);
    EXPECT_EQ(refused.failure().excess, 1);
}

}  // namespace
}  // namespace kesto
