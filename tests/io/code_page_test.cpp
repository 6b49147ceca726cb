// Names between code pages, and what counts as UTF-8.

#include "io/code_page.hpp"

#include <gtest/gtest.h>

#include "support/code_pages.hpp"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace kesto {
namespace {

TEST(CodePage, ConvertsBothWays) {
    struct Case {
        CodePage::Identity codePage;
        std::string local;
        std::string utf8;
    };
    const Case cases[] = {
        {test::latinPage,
         "Stra\xDF"
         "e",
         "Stra\xC3\x9F"
         "e"},
        {test::chinesePage, "\xB5\xC0\xC2\xB7", "\xE9\x81\x93\xE8\xB7\xAF"},
#if !defined(_WIN32)
        {"BIG5-HKSCS", "\x88\x66", "\xC3\x8A"},  // held back by the converter until the end
#endif
        {test::utf8Page, "\xE9\x81\x93", "\xE9\x81\x93"},
        {test::utf8Page, "not valid \xFF", "not valid \xFF"},
    };
    for (const Case& it : cases) {
        const CodePage page(it.codePage);
        EXPECT_EQ(page.ToUtf8(it.local), it.utf8) << it.codePage;
        EXPECT_EQ(page.FromUtf8(it.utf8), it.local) << it.codePage;
    }
}

TEST(CodePage, WhatCannotBeConvertedPassesUnchanged) {
    const std::string chinese = "\xE9\x81\x93\xE8\xB7\xAF";
    EXPECT_EQ(CodePage(test::latinPage).FromUtf8(chinese), chinese);          // no such letters
    EXPECT_EQ(CodePage(test::chinesePage).ToUtf8("half \xB5"), "half \xB5");  // a character cut short
    EXPECT_EQ(CodePage(test::unknownPage).ToUtf8("\xDF"), "\xDF");
    EXPECT_EQ(CodePage(test::latinPage).ToUtf8(std::string(300, '\xE4')).size(), 600U);  // longer than one piece
}
TEST(CodePage, APathIsUtf8OrElseInTheCodePage) {
    EXPECT_EQ(LocalPath("plain/a.road"), std::filesystem::path("plain/a.road"));
#if defined(_WIN32)
    EXPECT_EQ(LocalPath("Stra\xC3\x9F"
                        "e")
                  .native(),
              L"Stra\u00DFe");
    if (GetACP() == 1252) {
        EXPECT_EQ(LocalPath("Stra\xDF"
                            "e")
                      .native(),
                  L"Stra\u00DFe");
    }
#else
    EXPECT_EQ(LocalPath("Stra\xDF"
                        "e")
                  .native(),
              "Stra\xDF"
              "e");
#endif
}

TEST(CodePage, Utf8IsJudgedByTheFilesRules) {
    const std::pair<std::string, bool> cases[] = {
        {"", true},
        {"plain", true},
        {"\xC3\x9F", true},
        {"\xE9\x81\x93.", true},
        {"\xC0\x80\xED\xA0\x80", true},  // overlong and surrogate: only the shape counts
        {"cut \xC3", true},              // by the end of the file
        {"cut \xE9\x81", true},
        {"\xC3.", false},
        {"\xE9\x81.", false},
        {"cut \xE9.", false},  // the byte that is there is no continuation
        {"\x80", false},
        {"\xBF", false},
        {"\xF0\x9F\x9B\xA3", false},  // four bytes
        {"\xFF", false},
    };
    for (const auto& [text, valid] : cases) EXPECT_EQ(IsUtf8(text), valid) << testing::PrintToString(text);
}

}  // namespace
}  // namespace kesto
