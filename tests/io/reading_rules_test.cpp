// How a project file is read: its keywords, the buffers of its lines, and lines that are not as the writer makes them.

#include <gtest/gtest.h>

#include "core/text.hpp"
#include "io/project_sections.hpp"
#include "io/project_text.hpp"
#include "support/code_pages.hpp"
#include "support/records.hpp"

namespace kesto {
namespace {

using test::Lines;

/// A road read from a text, and what was skipped.
struct Opened {
    explicit Opened(std::string_view text) : outcome(ParseProject(text, road, CodePage(test::utf8Page))) {}

    RoadDesign road;
    Outcome outcome;
};

std::string Wide(std::string_view text, std::size_t width) {
    return std::string(width - text.size(), ' ').append(text);
}

TEST(ReadingRules, KeywordsAreComparedWithoutTheirLastCharacter) {
    const std::pair<const char*, const char*> cases[] = {
        {"ExtInf", "ExtInfo"},
        {"Intersectio", "Intersection"},
        {"Intersections of the road", "Intersection"},
        {"VerticalCurv", "VerticalCurve"},
        {"VerticalCurve_SECONDPAR", "VerticalCurve_SECONDPARA"},
        {"VerticalCurve_SECONDPA", "VerticalCurve"},
        {"BrokenLin", "BrokenLine"},
        {"BrokenChai", "BrokenChain"},
        {"Interse", nullptr},
        {" Element", nullptr},
        {"element", nullptr},
        {"", nullptr},
    };
    for (const auto& [line, keyword] : cases) {
        const Section* section = FindSection(line);
        ASSERT_EQ(section == nullptr, keyword == nullptr) << line;
        if (section != nullptr) {
            EXPECT_EQ(section->keyword, keyword) << line;
        }
    }
}

TEST(ReadingRules, NoKeywordShadowsAnother) {
    for (const std::span<const Section> room : SectionsByRoom()) {
        for (const Section& section : room) {
            if (section.keyword.empty()) continue;
            EXPECT_EQ(FindSection(section.keyword), &section) << section.keyword;
            EXPECT_EQ(FindSection(section.keyword.substr(0, section.keyword.size() - 1)), &section) << section.keyword;
        }
    }
}

TEST(ReadingRules, ModesComeFromTheKeywords) {
    const std::pair<const char*, std::int32_t> designModes[] = {
        {"Intersection", 0}, {"Element", 1}, {"Coordinate", 2}, {"BrokenLine", 3}};
    for (const auto& [keyword, mode] : designModes) {
        EXPECT_EQ(Opened(Lines({"0 1 0 K", "", keyword})).road.settings.roadDesignMode, mode);
    }
    EXPECT_EQ(Opened("VerticalCurve\n10 5 300 0\n").road.settings.verticalCurveMode, 0);
    const Opened given("VerticalCurve_SECONDPARA\n10 5 1 8 2 12 3\n");
    EXPECT_EQ(given.road.settings.verticalCurveMode, 1);
    ASSERT_EQ(given.road.verticalCurves.Count(), 1);
    EXPECT_EQ(given.road.verticalCurves[0].occurrence, 1);
    EXPECT_EQ(given.road.verticalCurves[0].startOccurrence, 2);
    EXPECT_EQ(given.road.verticalCurves[0].endMileage, 12);
}

TEST(ReadingRules, HeaderIsTheFirstLineThatBeginsWithANumber) {
    const Opened plain("  5.5 20 1 ZK and more\r\n");
    EXPECT_EQ(plain.road.settings.startMileage, 5.5);
    EXPECT_EQ(plain.road.settings.mileageInterval, 20);
    EXPECT_EQ(plain.road.settings.makeStakeType, 1);
    EXPECT_EQ(plain.road.settings.stakePrefix, "ZK");
    EXPECT_EQ(Opened("\xEF\xBB\xBF"
                     "5 20 1 ZK")
                  .road.settings.stakePrefix,
              "ZK");
    EXPECT_EQ(Opened("5 0.25 1 K").road.settings.mileageInterval, 1);
    EXPECT_EQ(Opened("BrokenChain\n1 2\n").road.brokenChains.Count(), 1);
    const Opened overflow("1e999 20 1 ZK\n");
    EXPECT_EQ(overflow.road.settings.mileageInterval, 100);
    ASSERT_FALSE(overflow.outcome);
    EXPECT_EQ(overflow.outcome.failure().record, 1);
    EXPECT_EQ(overflow.outcome.failure().list, KESTO_LIST_NONE);
    EXPECT_EQ(Opened("\n7 20 1 ZK\n").road.settings.startMileage, 0);
}

TEST(ReadingRules, SectionsEndAtAShortLine) {
    struct Case {
        const char* name;
        std::string text;
        std::int32_t intersections, chains;
    };
    const Case cases[] = {
        {"crlf", Lines({"Intersection", "A 1 1 1 1 1 1 1", "", "BrokenChain", "1 2", ""}), 1, 1},
        {"lf only", "Intersection\nA 1 1 1 1 1 1 1\n\nBrokenChain\n1 2", 1, 1},
        {"one character ends too", "Intersection\nA 1\nx\nB 2\nBrokenChain\n1 2\n", 1, 1},
        {"but not before a carriage return", Lines({"Intersection", "A 1", "x", "", "BrokenChain", "1 2"}), 2, 1},
        {"blank line missing", Lines({"Intersection", "A 1", "BrokenChain", "1 2"}), 3, 0},
        {"two blank lines", Lines({"Intersection", "A 1", "", "", "BrokenChain", "1 2"}), 1, 1},
        {"a line of blanks is a record", Lines({"Intersection", "    ", "", "BrokenChain", "1 2"}), 1, 1},
        {"unknown section", Lines({"Culverts", "A 1", "", "BrokenChain", "1 2"}), 0, 1},
        {"truncated", "Intersection\r\nA 1 1\r\nB 2", 2, 0},
        {"keyword at the end", "Intersection", 0, 0},
        {"empty", "", 0, 0},
        {"zero bytes", std::string("Intersection\nA 1\0 junk\n\0\0\0\nBrokenChain\n1 2\0", 43), 1, 1},
    };
    for (const Case& it : cases) {
        const Opened opened(it.text);
        EXPECT_TRUE(opened.outcome) << it.name;
        EXPECT_EQ(opened.road.intersections.Count(), it.intersections) << it.name;
        EXPECT_EQ(opened.road.brokenChains.Count(), it.chains) << it.name;
    }
    const Opened joined(cases[4].text);
    EXPECT_EQ(TextOf(joined.road.intersections[1].name), "BrokenChain");
    EXPECT_EQ(joined.road.intersections[1].x, 0);
}

TEST(ReadingRules, ALineBeyondItsBufferEndsReading) {
    struct Case {
        std::size_t outside, inside;  // bytes of the line
        std::int32_t chains;
    };
    // The carriage return counts, the line feed does not.
    const Case cases[] = {{255, 16383, 3}, {256, 100, 0}, {255, 16384, 1}};
    for (const Case& it : cases) {
        const std::string text =
            std::string(it.outside - 1, '-') + "\r\nBrokenChain\r\n1 2\r\n" + Wide("3 4\r", it.inside) + "\n5 6\r\n";
        const Opened opened(text);
        EXPECT_EQ(opened.road.brokenChains.Count(), it.chains) << it.outside << ' ' << it.inside;
        EXPECT_EQ(static_cast<bool>(opened.outcome), it.chains == 3) << "what was cut off is told";
    }
    EXPECT_EQ(Opened("BrokenChain\n" + Wide("3 4", 16383)).road.brokenChains.Count(), 1);  // no line end at all
}

TEST(ReadingRules, TokensAndColumns) {
    struct Case {
        const char* what;
        std::string line;
        const char* name;
        double x, radius, radiusOut;
    };
    const std::string full = "123456789.12345678";
    const std::string rest = Wide("4.5", 18) + Wide("5.5", 18) + Wide("6.5", 18) + Wide("7.5", 18);
    const Case cases[] = {
        {"tokens", "N 1.5 2.5 3.5 4.5 5.5 6.5 7.5", "N", 1.5, 3.5, 7.5},
        {"tabs", "N\t1.5\t2.5\t3.5\t4.5\t5.5\t6.5\t7.5\t", "N", 1.5, 3.5, 7.5},
        {"numbers fill their columns", Wide("N", 32) + full + full + full + rest, "N", 123456789.12345678,
         123456789.12345678, 7.5},
        {"no name, the writer's width", Wide("", 32) + Wide("1.5", 18) + Wide("2.5", 18) + Wide("3.5", 18) + rest, "",
         1.5, 3.5, 7.5},
        {"no name, another width", "1.5 2.5 3.5 4.5 5.5 6.5 7.5", "1.5", 2.5, 4.5, 0},
        {"a number beyond its column", Wide("N", 32) + "1234567890.12345678" + Wide("2.5", 18) + Wide("3.5", 18) + rest,
         "N1234567890.12345678", 2.5, 4.5, 0},
        {"too few tokens", "N 1.5 2.5", "N", 1.5, 0, 0},
        {"a name with blanks", "N 9 nine 1.5 2.5 3.5 4.5 5.5 6.5 7.5", "N", 1.5, 3.5, 7.5},
        {"the empty name's word", "NULL 1.5 2.5 3.5 4.5 5.5 6.5 7.5", "", 1.5, 3.5, 7.5},
        {"tails and words", "N 1.5m 0x11 inf 4.5 5.5 6.5 K7", "N", 1.5, 0, 0},
        {"underflow", "N 1e-999 2.5 3.5 4.5 5.5 6.5 7.5", "N", 0, 3.5, 7.5},
        {"31 bytes of a name", std::string(40, 'n') + " 1.5 2.5 3.5 4.5 5.5 6.5 7.5", "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn",
         1.5, 3.5, 7.5},
    };
    for (const Case& it : cases) {
        const Opened opened(Lines({"Intersection", it.line}));
        ASSERT_EQ(opened.road.intersections.Count(), 1) << it.what;
        const Intersection& point = opened.road.intersections[0];
        EXPECT_EQ(TextOf(point.name), it.name) << it.what;
        EXPECT_EQ(point.x, it.x) << it.what;
        EXPECT_EQ(point.radius, it.radius) << it.what;
        EXPECT_EQ(point.radiusOut, it.radiusOut) << it.what;
    }
}

TEST(ReadingRules, TheWritersOwnColumnsHold) {
    // Numbers that run into one another, beside a name with a blank: eight tokens for eight fields, yet the columns
    // tell.
    const std::string name = std::string(28, ' ') + "JD 1";
    const std::string numbers = "4000000.00000000-38512345.25000000";
    const std::string line = name + "  " + numbers + "      300.00000000" + std::string(4, ' ') + "    0.00000000" +
                             "        0.00000000        0.00000000        0.00000000";
    ASSERT_EQ(line.size(), 32U + 7 * 18);
    const Opened opened(Lines({"Intersection", line}));
    ASSERT_EQ(opened.road.intersections.Count(), 1);
    const Intersection& point = opened.road.intersections[0];
    EXPECT_EQ(TextOf(point.name), "JD");
    EXPECT_EQ(point.x, 4000000);
    EXPECT_EQ(point.y, -38512345.25);
    EXPECT_EQ(point.radius, 300);
}

TEST(ReadingRules, ANameAtTheEndLeavesTheNumbersInPlace) {
    const Opened opened(Lines({"Coordinate", "1 0 10 20 30 first point", "2 1 11 21 31", "3 1 12 22"}));
    ASSERT_EQ(opened.road.coordinates.Count(), 3);
    EXPECT_EQ(TextOf(opened.road.coordinates[0].name), "first");
    EXPECT_EQ(opened.road.coordinates[0].radius, 30);
    EXPECT_EQ(TextOf(opened.road.coordinates[1].name), "");
    EXPECT_EQ(opened.road.coordinates[1].radius, 31);
    EXPECT_EQ(opened.road.coordinates[2].radius, 0);
}

TEST(ReadingRules, ElementFieldsInTheirOrder) {
    const Opened opened(
        Lines({"Element", "1 2 30 40 1 99 3 500 400 7", "0 0 25 0 255 x 0 0 0 0", "0 0 0 1 256 x 1 0 0 0"}));
    ASSERT_EQ(opened.road.elements.Count(), 2);
    const Element& spiral = opened.road.elements[0];
    EXPECT_EQ(spiral.startX, 1);
    EXPECT_EQ(spiral.startY, 2);
    EXPECT_EQ(spiral.startAzimuth, 30);  // the sixth value is read past
    EXPECT_EQ(spiral.length, 40);
    EXPECT_EQ(spiral.turnDirection, 1);
    EXPECT_EQ(spiral.type, 3);
    EXPECT_EQ(spiral.startRadius, 500);
    EXPECT_EQ(spiral.endRadius, 400);
    EXPECT_EQ(spiral.flag, 7);
    EXPECT_EQ(spiral.secondAzimuth, 0);
    EXPECT_EQ(opened.road.elements[1].secondAzimuth, 25) << "a start record repeats its azimuth";
    EXPECT_NE(opened.road.elements[1].turnDirection, 0);  // 256 does not turn left
}

TEST(ReadingRules, SkippedRecordsAreCounted) {
    const Opened opened(
        Lines({"0 100 0 K", "", "Element", "1 2 3 4 0 3 0 0 0 0", "1 2 3 4 99999999999 3 0 0 0 0",
               "1 1e999 3 4 0 3 0 0 0 0", "1 2 3 4 0 1e999 1 0 0 0", "", "BrokenChain", "10 20", "10 30", "40 50"}));
    EXPECT_EQ(opened.road.elements.Count(), 2);  // a number that is read past may overflow
    EXPECT_EQ(opened.road.brokenChains.Count(), 2);
    ASSERT_FALSE(opened.outcome);
    const Failure& failure = opened.outcome.failure();
    EXPECT_EQ(failure.status, KESTO_RECORDS_SKIPPED);
    EXPECT_EQ(failure.value, 3);
    EXPECT_EQ(failure.record, 5);
    EXPECT_EQ(failure.list, KESTO_LIST_ELEMENTS);
}

TEST(ReadingRules, ExtInfoSetsItsModes) {
    const Opened opened(Lines({"ExtInfo", "SectionMode 2", "SideSlopeMode 3", "Unknown 4", "ChangeSection 1"}));
    EXPECT_TRUE(opened.outcome);
    EXPECT_EQ(opened.road.settings.sectionMode, 2);
    EXPECT_EQ(opened.road.settings.sideSlopeMode, 3);
}

// Lists in the worst order, of more records than any road has.
TEST(ReadingRules, LongListsBackwards) {
    constexpr int count = 30000;
    std::string points, chains;
    for (int i = count; i > 0; --i) {
        points += std::to_string(i).append(" 5 0 0\n");
        chains += std::to_string(i).append(" 0\n");
    }
    const Opened opened("0 20 0 K\n\nVerticalCurve\n" + points + "\nBrokenChain\n" + chains);
    EXPECT_TRUE(opened.outcome);
    EXPECT_EQ(opened.road.verticalCurves.Count(), count);
    EXPECT_EQ(opened.road.verticalCurves[0].mileage, 1);
    EXPECT_EQ(opened.road.brokenChains.Count(), count);
}

}  // namespace
}  // namespace kesto
