// The stakes around a mileage: bisection against the walk, on lists with ties, falls and what is no number.
#include "design/stake_bracket.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

struct ListKind {
    const char* name;
    int falls;  // one stake in so many goes back; 0: none
    int nans;   // one in so many; 0: none
};

class Brackets : public testing::TestWithParam<ListKind> {};

TEST_P(Brackets, AreThoseOfTheWalk) {
    const ListKind& kind = GetParam();
    std::mt19937 random(11);
    const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
    const auto oneIn = [&](int times) { return times > 0 && below(static_cast<unsigned>(times)) == 0; };
    int found = 0;
    for (int lists = 0; lists < 300; ++lists) {
        RoadDesign road;
        const int count = 1 + below(40);
        double mileage = below(3) - 1;
        for (int i = 0; i < count; ++i) {
            mileage += oneIn(kind.falls) ? -3 : below(3);  // every third one ties with the one before
            StakeCoordinate stake{};
            stake.mileage = oneIn(kind.nans) ? std::nan("") : mileage;
            road.stakes.Insert(stake);
            for (double at = -6; at <= mileage + 3; at += 0.5) {
                const auto expected = kesto::WalkToBracket(road.stakes.Records(), at);
                found += expected ? 1 : 0;
                ASSERT_EQ(kesto::FindBracket(road, at), expected) << i + 1 << " stakes, at " << at;
            }
        }
        ASSERT_TRUE(kind.falls + kind.nans > 0 || road.stakeOrder.neverFalls);
    }
    EXPECT_GT(found, 10000);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Brackets,
                         testing::Values(ListKind{"Rising", 0, 0}, ListKind{"Falling", 20, 0},
                                         ListKind{"WithoutNumbers", 0, 20}, ListKind{"Both", 10, 10}),
                         [](const auto& kind) { return std::string(kind.param.name); });

}  // namespace
