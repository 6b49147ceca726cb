// The library and a second implementation, which shares no formula with it, on roads made at random.
// KESTO_SECOND_ROUNDS=100 in the environment makes it 100 times as many roads and prints the greatest differences.
#include <cstdlib>
#include <iostream>
#include <map>

#include "random_design.hpp"

namespace kesto::second {
namespace {

constexpr Real exact = 1e-9L;          // m, degrees, per cent
constexpr Real plainFoot = 1e-7L;      // m
constexpr Real spiralAngle = 1.5e-7L;  // rad: the spiral's angle test is in single precision
constexpr Real spiralRest = 1.1e-7L;   // m
constexpr Real leastStretched = 0.1L;  // nearer to the centre of curvature a foot runs away from its bar
constexpr int questions = 60;          // of each kind on each road

int Rounds() {
    const char* const wanted = std::getenv("KESTO_SECOND_ROUNDS");
    return wanted == nullptr ? 0 : std::atoi(wanted);
}

class OnRandomRoads : public testing::TestWithParam<Form> {
protected:
    void Near(const std::string& what, Plane found, Plane expected, Real bar = exact) {
        auto& [count, worst] = differences[what];
        ++count;
        const Real share = std::abs(found - expected) / bar;
        worst = std::max(worst, share);
        EXPECT_LE(share, 1) << what << ": " << found << ", expected " << expected << ", apart by " << found - expected;
    }

    Real Place() { return std::lerp(second->Start(), second->End(), Real{dice.Between(0, 1)}); }

    void CompareStakes(RoadDesign* road) {
        const std::vector<MainPoint> expected = second->Stakes();
        const std::vector<StakeCoordinate> found = test::Stakes(road);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            const std::string group = *found[i].label == 0 ? "regular stakes" : "main points";
            EXPECT_EQ(found[i].name, expected[i].name);
            EXPECT_EQ(found[i].label, expected[i].label);
            EXPECT_EQ(found[i].occurrence, expected[i].stake.occurrence) << found[i].mileage;
            Near(group + ", mileage", found[i].mileage, expected[i].stake.mileage);
            Near(group + ", point", {found[i].x, found[i].y}, expected[i].at);
        }
    }

    void ComparePlace(RoadDesign* road, Real place) {
        const Stake stake = second->StakeAt(place);
        const auto mileage = static_cast<double>(stake.mileage);
        Near("continuous mileages", test::Continuous(road, mileage, stake.occurrence).value_or(NAN), place);
        const double offset = dice.Between(-50, 50);
        const double angle = dice.In(2) ? 90 : dice.Between(0, 180);
        const test::Point point = test::PointAt(road, mileage, offset, stake.occurrence, angle);
        ASSERT_TRUE(point.found);
        Near("positions", {point.x, point.y}, second->PointAt(place, offset, angle));
        Near("azimuths", std::remainder(point.azimuth - second->AzimuthAt(place), 360.0L), 0);
        Near("heights, centre", test::HeightAt(road, mileage, stake.occurrence).value_or(NAN), second->HeightAt(place));
        const double beside = dice.Between(-25, 25);
        const auto expected = second->HeightAt(place, beside);
        const auto found = test::HeightAt(road, mileage, stake.occurrence, beside);
        ASSERT_EQ(found.has_value(), expected.has_value());
        if (found) Near("heights, beside", *found, *expected);
        CompareSide(test::SideAt(road, mileage, beside < 0 ? 0 : 1, stake.occurrence),
                    second->SideAt(place, beside < 0 ? 0 : 1));
    }

    void CompareSide(const std::vector<SectionPlate>& found, const std::vector<SectionPlate>& expected) {
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            Near("sections, width and slope", {found[i].width, found[i].crossSlope},
                 {expected[i].width, expected[i].crossSlope});
            Near("sections, edge and height", {found[i].offset, found[i].height},
                 {expected[i].offset, expected[i].height});
            Near("sections, point", {found[i].x, found[i].y}, {expected[i].x, expected[i].y});
        }
    }

    /// Any mileage and occurrence at all: some lie in gaps.
    void CompareMileage(RoadDesign* road, double mileage, std::int32_t occurrence) {
        const auto expected = second->ContinuousAt({mileage, occurrence});
        const auto found = test::Continuous(road, mileage, occurrence);
        ASSERT_EQ(found.has_value(), expected.has_value()) << mileage << ", occurrence " << occurrence;
        if (found) Near("continuous mileages", *found, *expected);
    }

    void CompareFoot(RoadDesign* road, double x, double y, Real lower, Real upper) {
        const Foot expected = second->FootOf({x, y}, lower, upper);
        ++asked;
        if (!expected.certain || std::fabs(expected.stretched) < leastStretched) return;
        ++compared;
        const Stake from = second->StakeAt(lower);
        const Stake to = second->StakeAt(upper);
        const bool whole = lower == second->Start() && upper == second->End();
        test::Foot foot = test::FootOf(road, x, y);
        if (!whole) {
            foot.found = GetMileAndOffsetInLim(road, x, y, static_cast<double>(from.mileage), from.occurrence,
                                               static_cast<double>(to.mileage), to.occurrence, &foot.mileage,
                                               &foot.offset, &foot.occurrence);
        }
        const Stake stake = second->StakeAt(expected.continuous);
        EXPECT_EQ(foot.found, expected.admitted);
        EXPECT_EQ(foot.occurrence, stake.occurrence);
        const Real bar = spiralAngle * std::fabs(expected.offset / expected.stretched) + spiralRest;
        Near(expected.spiral ? "feet on spirals" : "feet elsewhere", {foot.mileage, foot.offset},
             {stake.mileage, expected.offset}, expected.spiral ? bar : plainFoot);
    }

    void Compare(RoadDesign* road) {
        CompareStakes(road);
        for (int i = 0; i < questions; ++i) {
            ComparePlace(road, Place());
            const auto mileage = static_cast<double>(second->StakeAt(Place()).mileage);
            const double apart = dice.Between(-700, 700);
            CompareMileage(road, mileage + apart, dice.Below(3));
            const double reach = dice.In(5) ? 400 : 50;
            const Real place = Place();
            const Plane at = second->PointAt(place, dice.Between(-reach, reach));
            Real lower = second->Start();
            Real upper = second->End();
            if (dice.In(2)) {
                lower = Place();
                upper = std::lerp(lower, upper, Real{dice.Between(0, 1)});
            }
            CompareFoot(road, static_cast<double>(at.real()), static_cast<double>(at.imag()), lower, upper);
        }
    }

    Dice dice{20260509U + static_cast<unsigned>(GetParam())};
    std::optional<SecondRoad> second;
    std::map<std::string, std::pair<int, Real>> differences;  // how many, and the worst as a share of its bar
    int asked = 0, compared = 0;
};

TEST_P(OnRandomRoads, BothAgree) {
    const int roads = 8 * std::max(1, Rounds());
    for (int i = 0; i < roads; ++i) {
        SCOPED_TRACE("road " + std::to_string(i));
        const Design design = RandomDesign(dice, GetParam());
        second.emplace(design);
        Compare(Build(design, *second));
        if (HasFailure()) return;
    }
    EXPECT_GT(compared, 0.9 * asked) << "most feet must be certain";
    if (Rounds() == 0) return;
    std::cout << roads << " roads; " << compared << " of " << asked << " feet compared\n";
    for (const auto& [what, difference] : differences) {
        std::cout << what << ": " << difference.first << ", worst " << difference.second << " of its bar\n";
    }
}

std::string Name(const testing::TestParamInfo<Form>& form) {
    static const char* const names[] = {"Elements", "Intersections", "Coordinates", "Polygon"};
    return names[static_cast<int>(form.param)];
}

INSTANTIATE_TEST_SUITE_P(Forms, OnRandomRoads,
                         testing::Values(Form::Elements, Form::Intersections, Form::Coordinates, Form::Polygon), Name);

}  // namespace
}  // namespace kesto::second
