#include "alignment/chainage.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <random>

#include "alignment/chain_builder.hpp"
#include "alignment/position.hpp"
#include "quadrature.hpp"

using kesto::StakeMileage;
using kesto_test::MakeElement;

namespace {

// The definitions of the lookups as plain walks from the road's start.
namespace plain {

bool On(const Element& e, double s, double zero) {
    const double S = e.startMileage;
    const double L = e.length;
    if (L > 0) return (s > S || std::fabs(S - s) < 1e-7) && S + L - s > 1e-7;
    if (L < 0) return s - (S + L) > 1e-7 && (S > s || std::fabs(S - s) < 1e-7);
    return std::fabs(S - s) < zero;
}

std::optional<double> ToContinuous(const RoadDesign& road, double s, int k) {
    const int n = road.elements.Count();
    double u = road.settings.startMileage;
    int found = -1;
    bool stopped = false;
    double result = 0;
    for (int i = 1; i < n && !stopped; ++i) {
        u += std::fabs(road.elements[i - 1].length);
        const Element& e = road.elements[i];
        if (!On(e, s, 1e-9)) continue;
        stopped = ++found == k;
        result = e.length == 0 ? u : u + std::fabs(s - e.startMileage);
    }
    const Element& last = road.elements[n - 1];
    if ((found == -1 || k != 0) && std::fabs(s - last.startMileage - last.length) < 1e-7) {
        ++found;
        if (!stopped) result = u + std::fabs(last.length);
    }
    return found == k ? std::optional<double>(result) : std::nullopt;
}

StakeMileage ToStake(const RoadDesign& road, double m) {
    const int n = road.elements.Count();
    double u = road.settings.startMileage;
    int i = 1;
    for (; i < n; ++i) {
        u += std::fabs(road.elements[i - 1].length);
        if (!(u - m > 1e-7) && u + std::fabs(road.elements[i].length) - m > 1e-7) break;
    }
    if (i == n) i = n - 1;
    const Element& at = road.elements[i];
    const double v = (at.length < 0 ? -1 : 1) * (m - u) + at.startMileage;
    int k = std::fabs(m - road.settings.startMileage - road.totalLength) < 1e-7 ? 0 : -1;
    for (int j = i; j >= 1; --j) k += On(road.elements[j], v, 1e-7) ? 1 : 0;
    return {v, k};
}

std::optional<std::int32_t> Covering(const RoadDesign& road, double m, int k) {
    const int n = road.elements.Count();
    int met = 0;
    for (int i = 1; i < n; ++i) {
        const Element& e = road.elements[i];
        const double end = e.startMileage + e.length;
        const bool covers = e.length > 0   ? e.startMileage <= m && m < end
                            : e.length < 0 ? end < m && m <= e.startMileage
                                           : e.startMileage == m;
        if (covers && met++ == k) return i;
    }
    const Element& last = road.elements[n - 1];
    if (met == k && std::fabs(m - (last.startMileage + last.length)) < 1e-7) return n - 1;
    return std::nullopt;
}

}  // namespace plain

/// A road of straights: rising, or with broken chains, falling mileages and elements without length.
std::unique_ptr<RoadDesign> RandomRoad(std::mt19937& random) {
    auto road = std::make_unique<RoadDesign>();
    road->settings.roadDesignMode = 1;
    road->settings.startMileage = static_cast<double>(random() % 3) * 250 - 250;
    kesto::SetStart(*road, 0, 0, 0);
    const int count = 1 + static_cast<int>(random() % 9);
    const bool wild = random() % 2 == 0;
    for (int i = 0; i < count; ++i) {
        double length = 10.0 * (1 + static_cast<double>(random() % 20));
        if (wild && random() % 4 == 0) length = -length;
        if (wild && random() % 5 == 0) length = 0;
        road->elements.Insert(MakeElement(1, false, 0, 0, length));
    }
    for (std::uint32_t i = random() % 4; i > 0; --i) {
        const double back = road->settings.startMileage + static_cast<double>(random() % 900);
        const double jump = 10.0 * static_cast<double>(random() % 30);
        road->brokenChains.Insert({back, back + (random() % 3 == 0 ? jump : -jump)});
    }
    std::ranges::sort(road->brokenChains.Edit(), {}, &BrokenChain::backMileage);
    return road;
}

TEST(Chainage, LookupsFollowTheirDefinitions) {
    std::mt19937 random(20240117);
    for (int round = 0; round < 3000; ++round) {
        const auto road = RandomRoad(random);
        ASSERT_TRUE(kesto::EnsureCurrent(*road));
        for (int query = 0; query < 60; ++query) {
            // Multiples of 10 fall on junctions and breaks; nudges straddle the tolerances.
            const double nudges[] = {0, 0, 3.7, 5e-8, -5e-8, 2e-7, -2e-7, 5e-10};
            const double m = 10.0 * static_cast<double>(random() % 150) - 400 + nudges[random() % 8];
            const int k = static_cast<int>(random() % 4);
            EXPECT_EQ(kesto::FindContinuous(*road, {m, k}), plain::ToContinuous(*road, m, k)) << m << " " << k;
            EXPECT_EQ(kesto::CoveringElement(*road, {m, k}), plain::Covering(*road, m, k)) << m << " " << k;
            const StakeMileage stake = kesto::StakeMileageAt(*road, m);
            const StakeMileage expected = plain::ToStake(*road, m);
            EXPECT_EQ(stake.mileage, expected.mileage) << m;
            EXPECT_EQ(stake.occurrence, expected.occurrence) << m;
        }
        if (HasFailure()) FAIL() << "round " << round;
    }
}

}  // namespace
