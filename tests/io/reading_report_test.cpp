// What an opening tells of its file: findings by line and reason, and the lines of the records.

#include <gtest/gtest.h>

#include <string>

#include "core/text.hpp"
#include "io/project_text.hpp"
#include "support/code_pages.hpp"
#include "support/records.hpp"

namespace kesto {
namespace {

using test::Lines;

std::string Told(const ReadingFinding& it) {
    const auto whole = [](double number) { return std::to_string(static_cast<int>(number)); };
    return std::to_string(it.line) + " " + std::to_string(it.reason) + " " + std::string(TextOf(it.section)) + "/" +
           std::string(TextOf(it.text)) + "/" + std::to_string(it.field) + " " + whole(it.value) + " " +
           whole(it.bound) + (it.otherLine > 0 ? " line " + std::to_string(it.otherLine) : "") +
           (it.status > 0 ? " status " + std::to_string(it.status) + " list " + std::to_string(it.list) : "");
}

TEST(ReadingReport, TellsWhatIsSkippedOrDoubted) {
    const std::string road = "0 100 0 K\n\nBrokenLine\n1 0 0 0 0 A\n1 0 99 0 0 B\n\n";  // six lines
    const struct {
        std::string text, told;
    } cases[] = {
        {road, ""},
        {"", "1 1 //0 0 0; "},
        {"\nBrokenChain\n1 2\n", "1 1 //0 0 0; "},
        {"0 1 0 K\n\nCulvert data\n1 2\n\nPier\n", "3 2 /Culvert/0 2 0; 6 2 /Pier/0 1 0; "},
        {"0 1 0 K\nPier\nBrokenChain\n1 2\n", "2 2 /Pier/0 1 0; "},
        {"0 1 0 K\n\nElements\n", "3 3 Element/Elements/0 0 0; "},
        {"0 1 0 K\n\nBrokenChain\n1 2\n\nBrokenChain\n3 4\n", "6 4 BrokenChain/BrokenChain/0 0 0 line 3; "},
        {"0 1 0 K\n\nIntersection\nA 0 0 0 0 0 0 0\nBrokenChain\n1 2\n", "5 5 Intersection/BrokenChain/0 0 0 line 6; "},
        {"0 1 0 K\n\nIntersection\n\nElement\n\nIntersection\n",
         "5 6 Element/Intersection/0 0 0 line 3; 7 4 Intersection/Intersection/0 0 0 line 3; 7 6 "
         "Intersection/Element/0 0 0 line 5; "},
        {"0 1 0 K\n\nVerticalCurve\n\nVerticalCurve_SECONDPARA\n",
         "5 6 VerticalCurve_SECONDPARA/VerticalCurve/0 0 0 line 3; "},
        {"0 1 0 K\n\nBrokenChain\n23x.7 nan\n", "4 7 BrokenChain/23x.7/1 23 0; 4 7 BrokenChain/nan/2 0 0; "},
        {"0 1 0 K\n\nBrokenChain\n1 1e999\n", "4 8 BrokenChain/1e999/2 0 0; "},
        {"0 1 0 K\n\nElement\n0 0 0 0 300 0 1 0 0 0\n", "4 8 Element/300/5 300 0; "},
        {"0 1e999 0 K\n", "1 8 /1e999/2 0 0; "},
        {"0 1 0 K\n\nBrokenChain\n 7\n", "4 9 BrokenChain//0 1 2; "},
        {"0 1 0 K\n\nBrokenChain\n1 2 3 4\n", "4 10 BrokenChain//0 2 0; "},
        {"0 1 0 K\n\nBrokenChain\n5 2\n1 2\n5 3\n", "6 11 BrokenChain//0 5 0 line 4 status 24 list 4; "},
        {road + "VerticalCurve\n50 5 0 0\n10 5 0 0\n50 6 0 0\n",
         "10 11 VerticalCurve//0 50 0 line 8 status 24 list 5; "},
        {road + "StandardSectionLeft\na b 3 0 0 0\n\nWidenSectionLeft\n120 4 0 1\n10 4 0 1\n\nWidenLeftType\n 0\n 0\n",
         "11 11 WidenSectionLeft//0 120 99 status 25 list 7; "},
        {"0 1 0 K\n" + std::string(300, 'x'), "2 12 //0 300 256; "},
        {"0 1 0 K\n\nBrokenChain\n1 2", "4 13 BrokenChain//0 0 0; "},
        {std::string("0 1 0 K\n\nBrokenChain\n1 2\0 3\n", 28), "4 14 BrokenChain//0 0 0; "},
        {"0 1 0 \xE4\n\nBrokenChain\n1 2\n\xE4\n", "1 15 //0 2 0; 5 20 BrokenChain/\xE4/0 0 0; "},
        {"0 1 0 K\n\nBrokenChain\n7\n1 2\n", "4 20 BrokenChain/7/0 0 0; 5 2 /1/0 1 0; "},
        {"0 0.25 0 K\n", "1 16 //0 0 1; "},
        {"0 1 0 K\nExtInfo\nSectionMode 9\n", "3 17 ExtInfo/SectionMode/0 9 0; "},
        {"0 1 0 K\n\nElement\n0 0 45 9 0 46 1 0 0 0\n", "4 18 Element/46/6 45 46; "},
        {road + "StandardSectionLeft\na b 3 0 0 0\n\nWidenSectionLeft\n10 4 0 1\n20 4 0 1\n\nWidenLeftType\n 5\n",
         "14 19 WidenLeftType//0 1 2; 15 17 WidenLeftType//0 5 0; "},
        {road + "StandardSectionLeft\na b 3 0 0 0\n\nWidenSectionLeft\n10 4 0 1\n", "10 19 WidenSectionLeft//0 0 1; "},
        {road + "StandardSectionLeft\na b 3 0 0 0\n\nWidenSectionLeft\n10 4 0 1\n\nWidenLeftType\n 0\n 0\n",
         "15 11 WidenLeftType//0 1 1 status 22 list 7; "},
    };
    for (const auto& it : cases) {
        RoadDesign opened;
        static_cast<void>(ParseProject(it.text, opened, CodePage(test::utf8Page)));
        std::string told;
        for (const ReadingFinding& finding : opened.reading.findings) told += Told(finding) + "; ";
        EXPECT_EQ(told, it.told) << it.text;
        EXPECT_EQ(opened.reading.findingCount, static_cast<std::int32_t>(opened.reading.findings.size()));
    }
}

// Sorted lists stand in another order than their lines, and what is refused has none.
TEST(ReadingReport, KnowsTheLineOfEveryRecord) {
    RoadDesign road;
    EXPECT_FALSE(ParseProject(Lines({"0 100 0 K",
                                     "",
                                     "Element",
                                     "0 0 0 0 0 0 0 0 0 0",
                                     "0 0 0 90 0 0 1 0 0 0",
                                     "",
                                     "BrokenChain",
                                     "50 40",
                                     "50 40",
                                     "20 30",
                                     "",
                                     "VerticalCurve",
                                     "60 5 0 0",
                                     "10 5 0 0",
                                     "",
                                     "StandardSectionRight",
                                     "a b 3 0 0 0",
                                     "c d 2 0 0 0",
                                     "",
                                     "WidenSectionRight",
                                     "70 4 0 1",
                                     "70 3 0 1",
                                     "15 4 0 1",
                                     "15 3 0 1",
                                     "",
                                     "WidenRightType",
                                     "0",
                                     "0",
                                     "",
                                     "roadSectionMileage",
                                     "30",
                                     "10",
                                     "30"}),
                              road, CodePage(test::utf8Page)));
    const struct {
        std::int32_t list, key, index, line;
    } cases[] = {{KESTO_LIST_ELEMENTS, 0, 0, 4},          {KESTO_LIST_ELEMENTS, 0, 1, 5},
                 {KESTO_LIST_BROKEN_CHAINS, 0, 0, 10},    {KESTO_LIST_BROKEN_CHAINS, 0, 1, 8},
                 {KESTO_LIST_VERTICAL_CURVES, 0, 0, 14},  {KESTO_LIST_VERTICAL_CURVES, 0, 1, 13},
                 {KESTO_LIST_PLATES, 1, 1, 18},           {KESTO_LIST_CHANGE_SECTIONS, 3, 0, 23},
                 {KESTO_LIST_CHANGE_SECTIONS, 3, 1, 21},  {KESTO_LIST_SECTION_MILEAGES, 0, 0, 32},
                 {KESTO_LIST_SECTION_MILEAGES, 0, 2, 33}, {KESTO_LIST_ELEMENTS, 0, -1, 3},
                 {KESTO_LIST_VERTICAL_CURVES, 0, -1, 12}, {KESTO_LIST_CHANGE_SECTIONS, 3, -1, 20}};
    for (const auto& it : cases) {
        const Result<std::int32_t> line = RecordLineAt(road.reading, it.list, it.key, it.index);
        ASSERT_TRUE(line) << it.list << " " << it.index;
        EXPECT_EQ(*line, it.line) << it.list << " " << it.index;
    }
    for (const auto& [list, key, index] : {std::tuple{4, 0, 2}, {6, 0, 0}, {7, 3, -2}, {7, 2, -1}, {99, 0, 0}}) {
        const Result<std::int32_t> line = RecordLineAt(road.reading, list, key, index);
        ASSERT_FALSE(line);
        EXPECT_EQ(line.failure().status, KESTO_INDEX_OUT_OF_RANGE);
    }
}

TEST(ReadingReport, KeepsTheFirstThousandAndCountsAll) {
    std::string text = "0 1 0 K\n\nBrokenChain\n";
    for (int i = 0; i < 2500; ++i) text += "1e999 1\n";
    RoadDesign road;
    const Outcome read = ParseProject(text, road, CodePage(test::utf8Page));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.failure().value, 2500);
    EXPECT_EQ(road.reading.findingCount, 2500);
    EXPECT_TRUE(FindingAt(road.reading, 999));
    EXPECT_FALSE(FindingAt(road.reading, 1000));
    Clear(road);
    EXPECT_EQ(road.reading.findingCount, 0);
    EXPECT_FALSE(RecordLineAt(road.reading, KESTO_LIST_BROKEN_CHAINS, 0, 0));
}

}  // namespace
}  // namespace kesto
