// Mileages as people write them, and as the program prints them.
#include "road/mileage_text.hpp"

#include <gtest/gtest.h>

#include <string>

#include "terminal/problem.hpp"

namespace kesto::host {
namespace {

struct Written {
    const char* text;
    double mileage;
    bool later;
};

TEST(MileageText, ReadsNumbersAndStakeTexts) {
    const Written cases[] = {
        {"12345.678", 12345.678, false},
        {"K12+345.678", 12345.678, false},
        {"k12+345.678", 12345.678, false},
        {"12+345.678", 12345.678, false},
        {" K12345.678 ", 12345.678, false},
        {"+12345.678", 12345.678, false},
        {"-12.5", -12.5, false},
        {"-K0+012.500", -12.5, false},
        {"\xE2\x88\x92K0+012.500", -12.5, false},
        {"+K28+000.3", 28000.3, true},
        {"+28+000.3", 28000.3, true},
        {"K27+1000.66", 28000.66, false},
        {"0", 0, false},
        {"1e3", 1000, false},
    };
    for (const auto& it : cases) {
        const auto written = ParseMileage(it.text, "K");
        ASSERT_TRUE(written) << it.text;
        EXPECT_NEAR(written->mileage, it.mileage, 1e-9) << it.text;
        EXPECT_EQ(written->later, it.later) << it.text;
    }
}

TEST(MileageText, RefusesWhatIsNone) {
    for (const char* text : {"", "K", "-", "+", "K12+", "K+345", "12+3+4", "DK12+345", "K12+-345", "K12 345", "nan",
                             "inf", "1e999", "12,5", "--5", "K12+345.6.7", "0x10", "K1.5+200"}) {
        EXPECT_FALSE(ParseMileage(text, "K")) << text;
    }
    EXPECT_TRUE(ParseMileage("DK12+345", "DK"));
    EXPECT_TRUE(ParseMileage("12+345", ""));
}

struct Printed {
    Stake stake;
    int decimals;
    const char* text;
};

TEST(MileageText, PrintsStakeTexts) {
    const Printed cases[] = {
        {{12345.678, 0}, 3, "K12+345.678"}, {{1005.5, 0}, 3, "K1+005.500"},    {{50, 0}, 3, "K0+050.000"},
        {{-12.5, 0}, 3, "-K0+012.500"},     {{28000.3, 1}, 3, "+K28+000.300"}, {{9.9996, 0}, 3, "K0+010.000"},
        {{999.9996, 0}, 3, "K1+000.000"},   {{-0.0001, 0}, 3, "K0+000.000"},   {{27300, 0}, 0, "K27+300"},
    };
    for (const auto& it : cases) EXPECT_EQ(FormatMileage("K", it.stake, it.decimals), it.text);
}

TEST(MileageText, OccurrenceOptionAndTextMustAgree) {
    EXPECT_EQ(ResolveMileage("K28+000", "K", std::nullopt, "it").occurrence, 0);
    EXPECT_EQ(ResolveMileage("+K28+000", "K", std::nullopt, "it").occurrence, 1);
    EXPECT_EQ(ResolveMileage("+K28+000", "K", 2, "it").occurrence, 2);
    EXPECT_THROW(ResolveMileage("+K28+000", "K", 0, "it"), Problem);
    EXPECT_THROW(ResolveMileage("K28+000", "K", -1, "it"), Problem);
}

TEST(MileageText, NegativeStakeTextIsNoOption) {
    for (const char* text : {"-K0+012.500", "-0+012", "-DK3+004"}) EXPECT_TRUE(IsNegativeStakeText(text)) << text;
    for (const char* text : {"-o", "--every", "-h", "K0+012.500", "-12.5", "--out=K1+200", "-"}) {
        EXPECT_FALSE(IsNegativeStakeText(text)) << text;
    }
}

}  // namespace
}  // namespace kesto::host
