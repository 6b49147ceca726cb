// Random roads through a project file: the same file again, and the same answers to every query.

#include <gtest/gtest.h>

#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "io/project_text.hpp"
#include "section/road_side.hpp"
#include "support/code_pages.hpp"
#include "support/road_maker.hpp"

namespace kesto {
namespace {

const CodePage utf8(test::utf8Page);
constexpr double footSearch = 1e-6;  // m: how near the search on a spiral comes to the foot

/// What eight decimals of its numbers may shift a road by.
struct Tolerance {
    double position = 0;  // m
    double height = 0;    // m
};

/// Positions add up: half a digit at each element's start, its azimuth's half digit along its length. Where the road is
/// made from points, a curve's tangents are worked out from them at an angle. Heights shift with the mileage too.
Tolerance ToleranceOf(const RoadDesign& road) {
    Tolerance tolerance;
    for (const Element& element : road.elements.Records())
        tolerance.position += 1e-8 + 1e-10 * std::fabs(element.length);
    tolerance.height = 1e-8 + tolerance.position;  // grades and slopes stay below 1
    return tolerance;
}

void ExpectSameSide(RoadDesign& road, RoadDesign& back, StakeMileage at, std::int32_t side, double tolerance) {
    const auto expected = RoadSide(road, at, side, HeightBase::Profile);
    const auto found = RoadSide(back, at, side, HeightBase::Profile);
    ASSERT_EQ(static_cast<bool>(found), static_cast<bool>(expected));
    if (!expected) return;
    ASSERT_EQ(found->size(), expected->size());
    for (std::size_t i = 0; i < expected->size(); ++i) {
        const SectionPlate& one = (*expected)[i];
        const SectionPlate& other = (*found)[i];
        EXPECT_EQ(TextOf(one.name), TextOf(other.name));
        EXPECT_NEAR(one.offset, other.offset, tolerance);
        EXPECT_NEAR(one.crossSlope, other.crossSlope, tolerance);
        EXPECT_NEAR(one.height, other.height, tolerance);
    }
}

/// Compares the answers at a place of the road.
void ExpectSameAnswers(RoadDesign& road, RoadDesign& back, double continuous) {
    const Tolerance tolerance = ToleranceOf(road);
    const StakeMileage at = StakeMileageAt(road, continuous);
    const Result<double> there = ContinuousMileage(back, at);
    ASSERT_TRUE(there);
    EXPECT_NEAR(*there, continuous, tolerance.position);
    std::optional<Position> expected, found;
    ASSERT_TRUE(FindPosition(road, at, {3, 90}, expected));
    ASSERT_TRUE(FindPosition(back, at, {3, 90}, found));
    EXPECT_NEAR(found->x, expected->x, tolerance.position);
    EXPECT_NEAR(found->y, expected->y, tolerance.position);
    double heights[2] = {-1, -2};
    const bool hasHeight = static_cast<bool>(FindHeight(road, at, 0, heights[0]));
    ASSERT_EQ(static_cast<bool>(FindHeight(back, at, 0, heights[1])), hasHeight);
    if (hasHeight) {
        EXPECT_NEAR(heights[0], heights[1], tolerance.height);
    }
    for (const std::int32_t side : {0, 1}) ExpectSameSide(road, back, at, side, 10 * tolerance.height);
    std::optional<Located> one, other;
    ASSERT_EQ(static_cast<bool>(Locate(road, {expected->x, expected->y}, one)),
              static_cast<bool>(Locate(back, {expected->x, expected->y}, other)));
    ASSERT_TRUE(one && other);
    EXPECT_NEAR(one->offset, other->offset, tolerance.position);
    EXPECT_NEAR(one->stake.mileage, other->stake.mileage, footSearch);
}

TEST(RoundTrip, RandomRoadsComeBackWhole) {
    int designed = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE(seed);
        test::RoadMaker maker(seed);
        const std::unique_ptr<RoadDesign> road = maker.Make();
        if (!road) continue;
        ++designed;
        const Result<std::string> text = FormatProject(*road, utf8);
        ASSERT_TRUE(text);
        RoadDesign back;
        ASSERT_TRUE(ParseProject(*text, back, utf8));
        ASSERT_EQ(*FormatProject(back, utf8), *text);
        ASSERT_TRUE(RunDesign(back));
        ASSERT_EQ(back.elements.Count(), road->elements.Count());
        ASSERT_EQ(back.stakes.Count(), road->stakes.Count());
        for (int i = 0; i < 20; ++i) {
            const double part = maker.Between(0.0001, 0.9999);
            ExpectSameAnswers(*road, back, road->settings.startMileage + part * road->totalLength);
        }
        if (::testing::Test::HasFailure()) FAIL() << *text;
    }
    EXPECT_GT(designed, 350);
}

}  // namespace
}  // namespace kesto
