// Mileages on the command line, and as the program prints them.
#include "road/mileage_text.hpp"

#include <gtest/gtest.h>

#include <string>

#include "road/road_file.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {
namespace {

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
        {{999.996, 1}, 2, "+K1+000.00"},    {{1e300 * 1e300, 0}, 3, "?"},
    };
    const RoadHandle road = NewRoad();
    for (const auto& it : cases) EXPECT_EQ(FormatMileage(road.get(), it.stake, it.decimals), it.text);
}

TEST(MileageText, OccurrenceOptionAndTextMustAgree) {
    const RoadHandle road = NewRoad();
    EXPECT_EQ(ResolveMileage(road.get(), "K28+000", std::nullopt, "it").occurrence, 0);
    EXPECT_EQ(ResolveMileage(road.get(), "+K28+000", std::nullopt, "it").occurrence, 1);
    EXPECT_EQ(ResolveMileage(road.get(), "+K28+000", 2, "it").occurrence, 2);
    EXPECT_THROW(ResolveMileage(road.get(), "+K28+000", 0, "it"), Problem);
    EXPECT_THROW(ResolveMileage(road.get(), "K28+000", -1, "it"), Problem);
    EXPECT_THROW(ResolveMileage(road.get(), "DK28+000", std::nullopt, "it"), Problem);
}

TEST(MileageText, NegativeStakeTextIsNoOption) {
    for (const char* text : {"-K0+012.500", "-0+012", "-DK3+004"}) EXPECT_TRUE(IsNegativeStakeText(text)) << text;
    for (const char* text : {"-o", "--every", "-h", "K0+012.500", "-12.5", "--out=K1+200", "-"}) {
        EXPECT_FALSE(IsNegativeStakeText(text)) << text;
    }
}

}  // namespace
}  // namespace kesto::host
