// The project file's bytes: every section as its format says, which form of the alignment is written, and that a road
// comes back from them.

#include "io/project_text.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/text.hpp"
#include "support/code_pages.hpp"
#include "support/folder_test.hpp"
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

/// What follows the header and ExtInfo.
std::string SectionsOf(RoadDesign& road) {
    const std::string text = Format(road);
    return text.substr(text.find("\r\n\r\n", text.find("SectionMode")) + 4);
}

// Files whose every byte is as the format says: settings, intersections, elements with given curve ends, cross
// sections.
TEST(ProjectText, IsWrittenByteByByteAsItWasRead) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KESTO_TEST_DATA "/project_files")) {
        RoadDesign road;
        const std::string text = test::ReadFile(entry.path());
        EXPECT_TRUE(ParseProject(text, road, asciiNames)) << entry.path();
        EXPECT_EQ(Format(road), text) << entry.path();
        ++files;
    }
    EXPECT_EQ(files, 4);
    RoadDesign road;
    road.verticalCurves.Insert(GradePoint(10, 100));
    road.settings.verticalCurveMode = 2;
    EXPECT_EQ(SectionsOf(road), "") << "of curves of an unknown mode";
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
