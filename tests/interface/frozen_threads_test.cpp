// Threads that ask one frozen road at once: each gets the answers that one thread gets. Run under ThreadSanitizer too.
#include <algorithm>
#include <cmath>
#include <thread>

#include "support/random_road.hpp"

namespace kesto::test {
namespace {

struct Answers {
    std::vector<double> numbers;
    std::vector<std::uint8_t> statuses;
    bool operator==(const Answers&) const = default;
};

/// One answer of each query for every question, then those of all batches.
Answers Ask(const FrozenRoad* road, const std::vector<Question>& questions) {
    Answers all;
    std::vector<double> x, y, mileage;
    std::int32_t k = 0;
    for (const Question q : questions) {
        double a[9] = {};
        a[8] = q.mileage;
        StakeCoordinate stake{};
        SectionPlate plates[2] = {};
        SectionPlateArray side{plates, 0, 2};
        for (const std::int32_t status :
             {FrozenGetMileageAndOffset(road, q.x, q.y, &a[0], &a[1], &k),
              FrozenGetMileAndOffsetInLim(road, q.x, q.y, 300, 0, 2500, 0, &a[2], &a[3], &k),
              FrozenGetPositionAndAzimuth(road, q.mileage, q.offset, q.angle, &a[4], &a[5], &a[6], q.occurrence),
              FrozenGetHeight(road, q.mileage, q.occurrence, q.offset, &a[7]),
              FrozenGetSrcMileage(road, &a[8], q.occurrence),
              FrozenGetNearbyStakeCoordinate(road, q.x, q.y, &stake, &k),
              FrozenGetRoadSide(road, q.mileage, q.occurrence, left, &side)}) {
            all.statuses.push_back(static_cast<std::uint8_t>(status));
        }
        if (std::isnan(a[8])) a[8] = 0;
        all.numbers.insert(all.numbers.end(), a, a + 9);
        all.numbers.insert(all.numbers.end(), {stake.mileage, plates[0].height, plates[1].height});
        x.push_back(double{q.x});  // a copy: the packed field itself may not be bound to a reference
        y.push_back(double{q.y});
        mileage.push_back(double{q.mileage});
    }
    const std::size_t n = questions.size();
    const auto count = static_cast<std::int32_t>(n);
    std::vector<double> out(6 * n, 0);
    std::vector<std::int32_t> occurrences(n);
    std::vector<std::uint8_t> status(3 * n);
    double* const to = out.data();
    EXPECT_EQ(FrozenGetMileageAndOffsetBatch(road, count, x.data(), 8, y.data(), 8, to, 8, to + n, 8,
                                             occurrences.data(), 4, status.data(), 1),
              0);
    EXPECT_EQ(FrozenGetPositionAndAzimuthBatch(road, count, mileage.data(), 8, nullptr, 0, nullptr, 0, nullptr, 0,
                                               to + 2 * n, 8, to + 3 * n, 8, to + 4 * n, 8, status.data() + n, 1),
              0);
    EXPECT_EQ(FrozenGetHeightBatch(road, count, mileage.data(), 8, nullptr, 0, nullptr, 0, to + 5 * n, 8,
                                   status.data() + 2 * n, 1),
              0);
    all.numbers.insert(all.numbers.end(), out.begin(), out.end());
    all.statuses.insert(all.statuses.end(), status.begin(), status.end());
    return all;
}

TEST(FrozenThreads, ReadOneRoadAtOnce) {
    Dice dice(3);
    const Road road = RandomRoad(dice);
    const auto questions = RandomQuestions(road, dice, 500);
    const FrozenRoad* const shared = FreezeRoad(road);
    ASSERT_NE(shared, nullptr);
    std::vector<Answers> answers(4);
    std::vector<std::thread> threads;  // the first to ask a road of which nothing has been asked before
    for (Answers& mine : answers) {
        threads.emplace_back([&] { mine = Ask(shared, questions); });
    }
    EXPECT_TRUE(DesignRoad(road));  // its own thread goes on meanwhile
    for (std::thread& thread : threads) thread.join();
    const Answers alone = Ask(shared, questions);
    for (const Answers& each : answers) EXPECT_EQ(each, alone);
    EXPECT_GT(std::count(alone.statuses.begin(), alone.statuses.end(), 0), 1000);
    ReleaseFrozenRoad(shared);
}

}  // namespace
}  // namespace kesto::test
