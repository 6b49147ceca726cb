#include "alignment/chain_lookup.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "alignment/chainage.hpp"
#include "alignment/position.hpp"
#include "support/dice.hpp"
#include "support/records.hpp"

using kesto::ChainIndex;
using kesto::test::MakeElement;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Roads and edits that look random; multiples of 10 m make mileages meet.
class Roads : public kesto::test::Dice {
public:
    using Dice::Dice;

    /// A chain as a host may leave it: built, then edited without a rebuild.
    void Build(RoadDesign& road, int elements) {
        road.settings.roadDesignMode = 1;
        road.settings.startMileage = Of({0.0, -250.0, 512.5});
        kesto::SetStart(road, 0, 0, 0);
        const int falling = Below(4);  // 0: all fall, 1: some fall
        const bool pointLike = In(3);
        for (int i = 0; i < elements; ++i) {
            const bool falls = falling == 0 || (falling == 1 && In(4));
            const double length = pointLike && In(4) ? 0 : (falls ? -10.0 : 10.0) * (1 + Below(20));
            road.elements.Insert(MakeElement(1, false, 0, 0, length));
        }
        for (int i = Below(6); i > 0; --i) {
            const double back = road.settings.startMileage + Below(elements * 100);
            road.brokenChains.Insert({back, back + 10.0 * (Below(40) - 25)});
        }
        std::ranges::sort(road.brokenChains.Edit(), {}, &BrokenChain::backMileage);
        EXPECT_TRUE(kesto::EnsureCurrent(road));
        for (int i = In(2) ? Below(6) : 0; i > 0; --i) EditOne(road);
        if (In(20)) road.totalLength *= 0.9;  // stale
    }

    void EditOne(RoadDesign& road) {
        const auto elements = road.elements.Edit();
        Element& element = elements[static_cast<std::size_t>(Below(static_cast<int>(elements.size())))];
        const double odd[] = {0, -0.0, 1e-9, -1e-12, 10, -30, 1e17, infinity, -infinity, std::nan("")};
        switch (Below(3)) {
            case 0: element.length = Of(odd); break;
            case 1: element.startMileage = Of(odd); break;
            default: element.startMileage += 10.0 * (Below(21) - 10);
        }
    }

    /// A mileage on an end of an element, nudged across the tolerances, or any other.
    double Mileage(const RoadDesign& road) {
        if (In(50)) return Of({infinity, -infinity, std::nan(""), 1e17, -1e300});
        const double nudge = Of({0.0, 0.0, 3.7, 5e-8, -5e-8, 2e-7, -2e-7, 5e-10, 1e-7, -1e-7});
        const auto& element = road.elements[Below(road.elements.Count())];
        return In(4) ? 10.0 * Below(200) - 400 + nudge
                     : element.startMileage + Of({0.0, 1.0, 0.5}) * element.length + nudge;
    }
};

std::uint64_t Bits(double number) { return std::isnan(number) ? ~0ULL : std::bit_cast<std::uint64_t>(number); }

/// Answers of every lookup to one question, as bits.
std::vector<std::uint64_t> Answers(const RoadDesign& road, const ChainIndex* index, double m, int occurrence) {
    const kesto::Match covering = kesto::FindCovering(road, index, {m, occurrence});
    const kesto::Match carrier = kesto::FindCarrier(road, index, {m, occurrence});
    const kesto::Place place = kesto::FindPlace(road, index, m);
    const kesto::MileageSpan span = kesto::SpanOf(road, index);
    const auto integer = [](std::int32_t number) { return static_cast<std::uint64_t>(number); };
    return {integer(covering.before),
            integer(covering.element),
            integer(carrier.before),
            integer(carrier.element),
            integer(place.element),
            Bits(place.running),
            Bits(kesto::RunningAt(road, index, place.element)),
            integer(kesto::CountCarriers(road, index, m, 1e-7, place.element)),
            Bits(span.lowest),
            Bits(span.highest)};
}

TEST(ChainLookup, IndexAnswersAsTheWalk) {
    Roads dice(20240611);
    int runs = 0;
    constexpr int rounds = 4000;
    for (int round = 0; round < rounds; ++round) {
        RoadDesign road;
        dice.Build(road, 1 + dice.Below(round % 100 == 0 ? 600 : 12));
        ChainIndex index;
        kesto::FillIndex(road, index);
        runs += index.runs.size() > 1 ? 1 : 0;
        for (int query = 0; query < 100; ++query) {
            const double m = dice.Mileage(road);
            const int occurrence = dice.Below(5);
            ASSERT_EQ(Answers(road, &index, m, occurrence), Answers(road, nullptr, m, occurrence))
                << "round " << round << ", mileage " << m << ", occurrence " << occurrence;
        }
    }
    EXPECT_GT(runs, rounds / 4);  // both kinds of roads were met
    EXPECT_LT(runs, rounds - rounds / 10);
}

TEST(ChainLookup, IndexIsNotOlderThanTheChain) {
    Roads dice(7);
    RoadDesign road;
    dice.Build(road, 40);
    int indexed = 0;
    for (int round = 0; round < 3000; ++round) {
        if (dice.In(30)) dice.EditOne(road);
        if (dice.In(50)) road.settings.startMileage += 10;
        const ChainIndex* const index = kesto::CurrentIndex(road);
        indexed += index != nullptr ? 1 : 0;
        const double m = dice.Mileage(road);
        ASSERT_EQ(Answers(road, index, m, 0), Answers(road, nullptr, m, 0)) << "round " << round;
    }
    EXPECT_GT(indexed, 100);
}

// Roads of more than 4096 elements keep no frames of them.
TEST(ChainLookup, PositionsAreThoseOfTheWalkOnRoadsOfAnyLength) {
    for (const int elements : {4000, 4200}) {
        RoadDesign road;
        kesto::SetStart(road, 0, 0, 0);
        for (int i = 0; i < elements; ++i) {
            road.elements.Insert(MakeElement(1 + i % 3, i % 2 == 0, 500, i % 3 == 2 ? 0 : 500, 90));
        }
        ASSERT_TRUE(kesto::BuildChain(road));
        const RoadDesign plain = road;
        const kesto::ChainView walk = plain;
        for (int query = 0; query < 300; ++query) {
            const kesto::StakeMileage stake{query * elements * 0.3 + 0.1, 0};
            const std::optional<kesto::Position> found = kesto::CentrePoint(road, stake);
            const std::optional<kesto::Position> expected = kesto::CentrePoint(walk, stake);
            ASSERT_TRUE(found && expected) << elements << " " << stake.mileage;
            ASSERT_EQ(Bits(found->x), Bits(expected->x)) << elements << " " << stake.mileage;
            ASSERT_EQ(Bits(found->azimuth), Bits(expected->azimuth)) << elements << " " << stake.mileage;
        }
    }
}

}  // namespace
