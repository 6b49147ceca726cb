// Text fields and stake texts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "core/stake_text.hpp"
#include "core/text.hpp"
#include "support/dice.hpp"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace kesto {
namespace {

#if defined(_WIN32)
const bool textsAreUtf8 = GetACP() == CP_UTF8;  // else, where this runs, a code page of one byte per character
#else
constexpr bool textsAreUtf8 = true;
#endif

TEST(TextField, IsCutAtACharacterBoundary) {
    struct Case {
        std::string given;
        std::size_t kept;
    };
    const std::string a28(28, 'a');
    const std::string emoji = "\xF0\x9F\x9A\xA7";  // four bytes
    const std::string han = "\xE8\xB7\xAF";        // three bytes
    for (const Case& each : {Case{"", 0}, Case{a28 + "bcd", 31}, Case{a28 + "bcde", 31}, Case{a28 + han, 31},
                             Case{a28 + "b" + han, 29}, Case{a28 + "bc" + han, 30}, Case{a28 + emoji, 28},
                             Case{a28.substr(1) + emoji + "x", 31}, Case{std::string(100, 'x'), 31},
                             Case{std::string(40, '\x80'), 31} /* no text in UTF-8: bytes are characters */}) {
        char field[textFieldSize];
        std::memset(field, 'z', sizeof field);
        SetText(field, each.given);
        const std::size_t kept = textsAreUtf8 ? each.kept : std::min(each.given.size(), textFieldSize - 1);
        EXPECT_EQ(TextOf(field), each.given.substr(0, kept));
        for (std::size_t i = kept; i < textFieldSize; ++i) EXPECT_EQ(field[i], '\0') << "the rest is zero";
    }
}

TEST(TextField, CutsOnlyWhereNothingEndsIt) {
    char whole[textFieldSize];
    std::memset(whole, 'x', sizeof whole);
    CutText(whole);
    EXPECT_EQ(TextOf(whole), std::string(31, 'x'));
    char ended[textFieldSize] = "JD1";
    ended[20] = 'r';  // what stands behind the end is the caller's
    CutText(ended);
    EXPECT_EQ(TextOf(ended), "JD1");
    EXPECT_EQ(ended[20], 'r');
}

TEST(StakeText, PadsMetresBeforeTheyAreRounded) {
    struct Case {
        const char* prefix;
        double mileage;
        const char* text;
    };
    for (const Case& each :
         {Case{"K", 12345.678, "K12+345.678"}, Case{"K", 1005.5, "K1+005.500"}, Case{"K", 50, "K0+050.000"},
          Case{"K", 0, "K0+000.000"}, Case{"K", -12.5, "K0+012.500"}, Case{"-DK", 100, "-DK0+100.000"},
          Case{"", 9.9996, "0+0010.000"}, Case{"", 9.99999995, "0+010.000"}, Case{"", 99.9999, "0+0100.000"},
          Case{"", 99.99999995, "0+100.000"}, Case{"", 999.9999, "0+1000.000"},
          Case{"K", 5e12 + 7, "K5000000000+007.000"}}) {
        EXPECT_EQ(StakeText(each.prefix, each.mileage), each.text);
    }
}

TEST(StakeText, IsReadAsPeopleWriteIt) {
    const struct {
        const char *prefix, *text;
        double mileage;
        std::int32_t occurrence;
    } cases[] = {{"K", "12345.678", 12345.678, 0},
                 {"K", "K12+345.678", 12345.678, 0},
                 {"K", "k12+345.678", 12345.678, 0},
                 {"K", "12+345.678", 12345.678, 0},
                 {"K", " K12345.678 ", 12345.678, 0},
                 {"K", "+12345.678", 12345.678, 0},
                 {"K", "-12.5", -12.5, 0},
                 {"K", "-K0+012.500", -12.5, 0},
                 {"K", "\xE2\x88\x92K0+012.5", -12.5, 0},
                 {"K", "+K28+000.3", 28000.3, 1},
                 {"K", "+28+000.3", 28000.3, 1},
                 {"K", "K27+1000.66", 28000.66, 0},
                 {"K", "1e3", 1000, 0},
                 {"DK", "dk12+345", 12345, 0},
                 {"", "12+345", 12345, 0},
                 {"K", "K0+0100.000", 100, 0}};
    for (const auto& it : cases) {
        const std::optional<WrittenStake> read = ReadStake(it.text, it.prefix);
        ASSERT_TRUE(read) << it.text;
        EXPECT_NEAR(read->mileage, it.mileage, 1e-9) << it.text;
        EXPECT_EQ(read->occurrence, it.occurrence) << it.text;
    }
    for (const char* text : {"", "K", "-", "+", "K12+", "K+345", "12+3+4", "DK12+345", "K12+-345", "K12 345", "nan",
                             "inf", "1e999", "12,5", "--5", "K12+345.6.7", "0x10", "K1.5+200", "K12+1e3"}) {
        EXPECT_FALSE(ReadStake(text, "K")) << text;
    }
    EXPECT_FALSE(ReadStake(std::string(307, '9') + "+1", "K")) << "the sum overflows";
}

// What is written is read back to the half millimetre; a later occurrence hides the sign.
TEST(StakeText, ComesBack) {
    test::Dice dice(51);
    for (int i = 0; i < 20000; ++i) {
        const double mileage = dice.Between(-1, 1) * dice.LogBetween(1e-3, 1e6);
        const std::int32_t occurrence = dice.Below(3);
        const std::string prefix = dice.Of({"K", "", "DK", "Z 1-"});
        const std::string text = StakeName(prefix, mileage, occurrence);
        const std::optional<WrittenStake> read = ReadStake(text, prefix);
        ASSERT_TRUE(read) << text;
        EXPECT_NEAR(read->mileage, occurrence > 0 ? std::fabs(mileage) : mileage, 0.50001e-3) << text;
        EXPECT_EQ(read->occurrence, occurrence > 0 ? 1 : 0) << text;
    }
}

}  // namespace
}  // namespace kesto
