#include "profile/height.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "profile/vertical_curves.hpp"
#include "support/quadrature.hpp"

using kesto::test::GradePoint;

namespace {

/// Height at a continuous mileage.
double HeightAt(RoadDesign& road, double continuous) {
    const kesto::Result<double> height = kesto::CentreHeight(road, kesto::StakeMileageAt(road, continuous));
    EXPECT_TRUE(bool(height)) << continuous;
    return height ? *height : -999;
}

/// A straight road of 3 km from mileage 100 on, broken forwards and backwards.
void MakeRoad(RoadDesign& road) {
    road.settings.roadDesignMode = 1;
    road.settings.startMileage = 100;
    kesto::SetStart(road, 0, 0, 0);
    road.elements.Insert(kesto::test::MakeElement(1, false, 0, 0, 3000));
    ASSERT_TRUE(kesto::InsertBrokenChain(road, {700, 950}));
    ASSERT_TRUE(kesto::InsertBrokenChain(road, {1600, 1100}));
    ASSERT_TRUE(kesto::EnsureCurrent(road));
}

TEST(Height, FollowsEveryEdit) {
    RoadDesign road;
    MakeRoad(road);
    ASSERT_TRUE(kesto::InsertVerticalCurve(road, GradePoint(100, 10)));
    ASSERT_TRUE(kesto::InsertVerticalCurve(road, GradePoint(500, 50)));
    EXPECT_DOUBLE_EQ(HeightAt(road, 300), 30);
    ASSERT_TRUE(kesto::ReplaceVerticalCurve(road, 1, GradePoint(500, 90)));
    EXPECT_DOUBLE_EQ(HeightAt(road, 300), 50);
    ASSERT_TRUE(kesto::InsertVerticalCurve(road, GradePoint(300, 0)));
    EXPECT_DOUBLE_EQ(HeightAt(road, 200), 5);
    road.verticalCurves.Remove(1);
    EXPECT_DOUBLE_EQ(HeightAt(road, 300), 50);
    // A rebuilt chain moves the points: stake 500 is now 100 m farther along the road.
    road.settings.startMileage = 0;
    ASSERT_TRUE(kesto::BuildChain(road));
    EXPECT_DOUBLE_EQ(HeightAt(road, 300), 50);
    road.settings.verticalCurveMode = 7;
    ASSERT_TRUE(kesto::InsertVerticalCurve(road, GradePoint(300, 0, 1000)));
    const kesto::Result<double> found = kesto::CentreHeight(road, {310, 0});
    ASSERT_FALSE(found);
    EXPECT_EQ(found.failure().status, KESTO_UNKNOWN_CURVE_MODE);
}

TEST(Height, RefusedPointsTouchNothing) {
    RoadDesign road;
    MakeRoad(road);
    road.stakes.Insert({});
    road.totalLength = 0;  // as after a failed rebuild, which keeps the stakes
    EXPECT_FALSE(kesto::InsertVerticalCurve(road, GradePoint(std::nan(""), 1)));
    EXPECT_EQ(road.stakes.Count(), 1);
    const VerticalCurve twice[] = {GradePoint(200, 1), GradePoint(300, 1), GradePoint(200, 2)};
    const kesto::Outcome added = kesto::InsertVerticalCurves(road, twice);
    ASSERT_FALSE(added);
    EXPECT_EQ(added.failure().status, KESTO_DUPLICATE_MILEAGE);
    EXPECT_EQ(road.verticalCurves.Count(), 0);
}

TEST(Height, OverlappingCurvesAnswerAsTheWalk) {
    std::mt19937 random(5);
    const auto below = [&](std::uint32_t bound) { return static_cast<double>(random() % bound); };
    for (int round = 0; round < 200; ++round) {
        RoadDesign road;
        MakeRoad(road);
        road.settings.verticalCurveMode = static_cast<std::int32_t>(random() % 2);
        for (int i = 0; i < 12; ++i) {
            VerticalCurve curve = GradePoint(below(1000), below(9), below(20000));
            curve.startMileage = curve.mileage - below(200);
            curve.endMileage = curve.mileage + below(200);
            static_cast<void>(kesto::InsertVerticalCurve(road, curve));
        }
        const auto heights = [&] {
            std::vector<std::optional<double>> all;
            for (int s = 0; s < 1000; s += 7) {
                const kesto::Result<double> height = kesto::CentreHeight(road, kesto::StakeMileageAt(road, s));
                all.push_back(height ? std::optional(*height) : std::nullopt);
            }
            return all;
        };
        const auto found = heights();
        // Spans that all reach to infinity pass over nothing: the search walks from the first point on.
        for (kesto::CurveSpan& span : road.profileCache.spans) span.reach = std::numeric_limits<double>::infinity();
        EXPECT_EQ(found, heights()) << "round " << round;
    }
}

/// Index for a new point by its definition: behind the last stored one that lies before it; -1 next to a stored one.
std::int32_t IndexByWalk(RoadDesign& road, const VerticalCurve& curve) {
    const auto placeOf = [&](const VerticalCurve& it) {
        return kesto::ProfileMileage(road, {it.mileage, it.occurrence});
    };
    std::int32_t index = road.verticalCurves.Count();
    for (; index > 0; --index) {
        const double ahead = placeOf(road.verticalCurves[index - 1]) - placeOf(curve);
        if (std::fabs(ahead) < 1e-7) return -1;
        if (!(ahead > 0)) break;
    }
    return index;
}

// With edits between that put stored points out of order, and new breaks that move them along the road.
TEST(GradePoints, PointsInAnyOrderGetTheirPlaces) {
    const auto owner = std::make_unique<RoadDesign>();
    RoadDesign& road = *owner;
    MakeRoad(road);
    std::mt19937 generator(8);
    const auto random = [&](int below) { return std::uniform_int_distribution(0, below - 1)(generator); };
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        const kesto::StakeMileage stake = kesto::StakeMileageAt(road, 100 + random(3000));
        VerticalCurve curve = GradePoint(stake.mileage, i, 0, stake.occurrence);
        curve.mileage += 0.5e-7 * random(4);
        const std::int32_t index = IndexByWalk(road, curve);
        const std::int32_t before = road.verticalCurves.Count();
        ASSERT_EQ(static_cast<bool>(kesto::InsertVerticalCurve(road, curve)), index >= 0) << i;
        ASSERT_EQ(road.verticalCurves.Count(), before + (index >= 0 ? 1 : 0)) << i;
        if (index >= 0) {
            ASSERT_EQ(road.verticalCurves[index].elevation, i);
        }
        refused += index < 0 ? 1 : 0;
        if (i % 500 == 499) {
            ASSERT_TRUE(kesto::ReplaceVerticalCurve(road, 20, GradePoint(2000.0 - i, -1)));
        }
        if (i % 700 == 699) {
            ASSERT_TRUE(kesto::InsertBrokenChain(road, {2000.0 + i / 10.0, 2400}));
            ASSERT_TRUE(kesto::MakeCurrent(road));
        }
        if (i % 300 == 299) road.verticalCurves.Remove(road.verticalCurves.Count() / 2);
    }
    EXPECT_GT(refused, 100);
}

}  // namespace
