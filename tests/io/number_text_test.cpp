// Numbers of the project file: what a token is worth.

#include "io/number_text.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace kesto {
namespace {

struct RealCase {
    std::string text;
    std::optional<double> value;
};

TEST(NumberText, RealIsTheLongestDecimalPrefix) {
    const std::string zeros(400, '0');
    const RealCase cases[] = {
        {"12.5", 12.5},
        {"-12.5", -12.5},
        {"+7", 7.0},
        {".5", 0.5},
        {"5.", 5.0},
        {"1e3", 1000.0},
        {"1E+03x", 1000.0},
        {"2e", 2.0},
        {"2e+", 2.0},
        {"3.4.5", 3.4},
        {"1,5", 1.0},
        {"0x10", 0.0},
        {"inf", 0.0},
        {"-inf", 0.0},
        {"nan", 0.0},
        {"Element", 0.0},
        {"", 0.0},
        {"-", 0.0},
        {"+-5", 0.0},
        {"--5", 0.0},
        {".", 0.0},
        {"1e-400", 0.0},
        {"-1e-99999999999999999999", 0.0},
        {"0e99999999999999999999", 0.0},
        {"0." + zeros + "1", 0.0},
        {"1" + zeros + "e-400", 1.0},
        {"0." + zeros + "1e401", 1.0},
        {"1e400", std::nullopt},
        {"-1e400", std::nullopt},
        {"1e99999999999999999999", std::nullopt},
        {"1" + zeros, std::nullopt},
        {"0.0001e400", std::nullopt},
    };
    for (const RealCase& it : cases) {
        const std::optional<double> parsed = ParseReal(it.text);
        ASSERT_EQ(parsed.has_value(), it.value.has_value()) << it.text;
        if (parsed) {
            EXPECT_EQ(*parsed, *it.value) << it.text;
        }
    }
}

TEST(NumberText, IntegerIsTheLongestDecimalPrefixThatFits32Bits) {
    const std::pair<const char*, std::optional<std::int32_t>> cases[] = {
        {"12", 12},
        {"-1", -1},
        {"+3", 3},
        {"1.9", 1},
        {"7x", 7},
        {"", 0},
        {"x", 0},
        {"0x1F", 0},
        {"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {"2147483648", std::nullopt},
        {"-99999999999999999999", std::nullopt},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(ParseInteger(text), value) << text;
}

TEST(NumberText, WritesEightDecimalsAndNothingThatIsNoNumber) {
    NumberRoom room;
    const std::pair<double, const char*> cases[] = {
        {0.0, "0.00000000"},          {-0.0, "-0.00000000"},   {1234.5, "1234.50000000"},
        {0.123456789, "0.12345679"},  {-1e-12, "-0.00000000"}, {std::numeric_limits<double>::infinity(), "0.00000000"},
        {std::nan(""), "0.00000000"},
    };
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(FormatReal(room, number), text);
    }
    const std::string_view largest = FormatReal(room, -std::numeric_limits<double>::max());
    EXPECT_EQ(largest.size(), 1U + 309 + 1 + 8);
    EXPECT_EQ(ParseReal(largest), -std::numeric_limits<double>::max());
}

TEST(NumberText, ShortRealIsWhatPrintfWrites) {
    std::mt19937_64 random(5);
    std::vector<double> numbers{0.0, -0.0, 999999.5, 999999.4, 1e-4,  99999.95e-10,
                                1e5, 1e6,  0.1,      1 / 3.0,  1e300, 5e-324};
    for (int i = 0; i < 10000; ++i) {
        const double number = std::bit_cast<double>(random());
        numbers.push_back(std::isfinite(number) ? number : 0);
        numbers.push_back(static_cast<double>(random() % 2000000) / 2);  // ties and ends of the six digits
    }
    for (const double number : numbers) {
        char expected[32];
        std::snprintf(expected, sizeof(expected), "%g", number);
        ASSERT_EQ(ShortReal(number), expected);
    }
}

}  // namespace
}  // namespace kesto
