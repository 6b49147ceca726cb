// Numbers of the project file: what a token is worth.

#include "io/number_text.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <vector>

namespace kesto {
namespace {

std::optional<double> ParseReal(std::string_view text) {
    double number = 1;
    return ReadReal(text, number) ? std::optional(number) : std::nullopt;
}

std::optional<std::int32_t> ParseInteger(std::string_view text) {
    std::int32_t number = 1;
    return ReadInteger(text, number) ? std::optional(number) : std::nullopt;
}

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
        {"1.2345678 9", 1.2345678},
        {"1x.00000000", 1.0},
        {"-.12345678", -0.12345678},
        {"1.1234567e", 1.1234567},
        {"1.12345678e2", 112.345678},
        {"12.1.345678", 12.1},
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

// Middles of two texts, carries into the metres, and the ends of the doubles that count by ones.
TEST(NumberText, RealIsWhatPrintfWritesAndReadsBackAsStrtodDoes) {
    std::mt19937_64 random(6);
    std::vector<double> numbers{0x1p-9, 3 * 0x1p-9, 0.999999995, 9.999999994999, 4503599627370495.5,
                                0x1p53, 0x1p53 - 1};
    for (int i = 0; i < 20000; ++i) {
        const double places = std::ldexp(static_cast<double>(random() >> 11U), static_cast<int>(random() % 72) - 72);
        const double middle = (static_cast<double>(random() % 100'000'000'000) + 0.5) / 1e8;
        for (const double number : {places, middle, std::nextafter(middle, 0.0), 1 - places * 1e-9}) {
            numbers.push_back(i % 2 == 0 ? number : -number);
        }
    }
    for (const double number : numbers) {
        NumberRoom room;
        char expected[64];
        std::snprintf(expected, sizeof(expected), "%.8f", number);
        const std::string_view text = FormatReal(room, number);
        ASSERT_EQ(text, expected);
        double read = 1;
        ASSERT_TRUE(ReadReal(text, read));
        ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(std::strtod(expected, nullptr)))
            << text;
    }
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
