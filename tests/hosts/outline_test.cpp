// The host's list of sections is the library's: both are written out, so they are compared.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "checks/outline.hpp"
#include "io/project_sections.hpp"

namespace kesto::test {
namespace {

TEST(Outline, KnowsTheSectionsOfTheLibrary) {
    std::set<std::string_view> known;
    for (const host::SectionForm& form : host::SectionForms()) known.insert(form.keyword);
    std::set<std::string_view> read;
    for (const Section& section : Sections()) {
        if (!section.keyword.empty()) read.insert(section.keyword);
    }
    EXPECT_EQ(known, read);
}

// Numbers are read as the library reads them, whatever stands in their fields.
TEST(Outline, ReadsNumbersAsTheLibraryDoes) {
    const char* const texts[] = {"12.5", "+3",   "-7.25", "1e3",           "12,5", "1.2.3", ".5",     "-.5",
                                 "abc",  "nan",  "inf",   "0x1F",          "-",    "+-3",   "1e-999", "1e999",
                                 "-2e9", "5.e1", "1e",    "0.0000001e-320"};
    for (const std::string text : texts) {
        host::Findings findings;
        const host::Outline outline =
            host::ReadOutline("0 1 0 K\n\nVerticalCurve\n" + text + " 0 0 " + text + "\n\n", findings);
        double real = 0;
        std::int32_t integer = 0;
        const std::array<std::string_view, 2> cells{text, text};
        std::vector<CellDoubt> doubts;
        LineReader reader(cells, nullptr, doubts);
        reader.Real(real).Integer(integer, wideColumn);
        const auto records = outline.Records("VerticalCurve");
        ASSERT_EQ(records.size(), reader.Readable() ? 1U : 0U) << text;
        if (records.empty()) continue;
        EXPECT_EQ(records[0].numbers[0], real) << text;
        EXPECT_EQ(records[0].numbers[3], integer) << text;
    }
}

}  // namespace
}  // namespace kesto::test
