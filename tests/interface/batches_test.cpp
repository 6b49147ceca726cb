// Batches and frozen roads give what the functions for one point give, to the bit, row by row.
#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "support/random_road.hpp"

namespace kesto::test {
namespace {

/// What the answers to one question leave behind: outputs begin with a value that nothing computes.
struct Answer {
    double mileage = -7, offset = -7, x = -7, y = -7, azimuth = -7, height = -7;
    std::int32_t occurrence = -7;
    std::uint8_t located = 99, placed = 99, high = 99;

    bool operator==(const Answer&) const = default;
};

using Answers = std::vector<Answer>;
constexpr std::int32_t in = sizeof(Question);
constexpr std::int32_t out = sizeof(Answer);

template <class Ask>
std::uint8_t StatusOf(RoadDesign* road, Ask&& ask) {
    return static_cast<std::uint8_t>(ask() ? std::int32_t{KESTO_SUCCESS} : LastFailure(road).status);
}

Answers OneByOne(RoadDesign* road, const std::vector<Question>& questions) {
    Answers answers(questions.size());
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const Question q = questions[i];
        Answer& a = answers[i];
        a.located =
            StatusOf(road, [&] { return GetMileageAndOffset(road, q.x, q.y, &a.mileage, &a.offset, &a.occurrence); });
        a.placed = StatusOf(road, [&] {
            return GetPositionAndAzimuth(road, q.mileage, q.offset, q.angle, &a.x, &a.y, &a.azimuth, q.occurrence);
        });
        a.high = StatusOf(road, [&] { return GetHeight(road, q.mileage, q.occurrence, q.offset, &a.height); });
    }
    return answers;
}

/// Runs the three batches.
Answers InBatches(RoadDesign* road, const std::vector<Question>& questions) {
    Answers answers(questions.size());
    const auto n = static_cast<std::int32_t>(questions.size());
    // Fields of a packed record have no address of their own: their columns begin so many bytes into it.
    const auto column = [&]<class Field>(Field Question::*, std::size_t at) {
        return reinterpret_cast<const Field*>(reinterpret_cast<const char*>(questions.data()) + at);
    };
    const double* const x = column(&Question::x, offsetof(Question, x));
    const double* const y = column(&Question::y, offsetof(Question, y));
    const double* const m = column(&Question::mileage, offsetof(Question, mileage));
    const double* const offset = column(&Question::offset, offsetof(Question, offset));
    const double* const angle = column(&Question::angle, offsetof(Question, angle));
    const std::int32_t* const k = column(&Question::occurrence, offsetof(Question, occurrence));
    Answer& a = answers.front();
    EXPECT_TRUE(GetMileageAndOffsetBatch(road, n, x, in, y, in, &a.mileage, out, &a.offset, out, &a.occurrence, out,
                                         &a.located, out));
    EXPECT_TRUE(GetPositionAndAzimuthBatch(road, n, m, in, k, in, offset, in, angle, in, &a.x, out, &a.y, out,
                                           &a.azimuth, out, &a.placed, out));
    EXPECT_TRUE(GetHeightBatch(road, n, m, in, k, in, offset, in, &a.height, out, &a.high, out));
    return answers;
}

TEST(Batches, GiveWhatOneByOneGives) {
    Dice dice(7);
    std::size_t succeeded = 0;
    std::size_t failed = 0;
    for (int roads = 0; roads < 40; ++roads) {
        const Road road = RandomRoad(dice);
        const auto questions = RandomQuestions(road, dice, roads % 4 == 0 ? 3 : 300);  // few ones walk
        const Answers expected = OneByOne(road, questions);
        ASSERT_TRUE(UpdateData(road));  // nothing is kept from before
        EXPECT_EQ(InBatches(road, questions), expected) << roads;
        for (const Answer& a : expected) {
            for (const std::uint8_t status : {a.located, a.placed, a.high}) ++(status == 0 ? succeeded : failed);
        }
    }
    EXPECT_GT(succeeded, 10000U);
    EXPECT_GT(failed, 1000U);
}

TEST(FrozenRoads, AnswerAllQueriesAsTheRoadDoes) {
    Dice dice(13);
    for (int roads = 0; roads < 20; ++roads) {
        const Road road = RandomRoad(dice);
        const auto questions = RandomQuestions(road, dice, 100);
        const Road frozen(FreezeRoad(road));
        ASSERT_TRUE(IsFrozenRoad(frozen));
        const EverythingAsked expected(road, questions);
        EXPECT_GT(expected.Answered(), 700U);
        ASSERT_TRUE(DeleteElement(road, 5));  // does not reach the frozen road
        EXPECT_TRUE(EverythingAsked(frozen, questions) == expected) << roads;
        EXPECT_TRUE(EverythingAsked(Road(FreezeRoad(frozen)), questions) == expected) << roads;
        EXPECT_FALSE(EverythingAsked(road, questions) == expected) << roads;
    }
}

// Straight of 1000 m heading north: the point at mileage m and offset o is (m, o).
TEST(Batches, StepOverColumns) {
    const Road road = BrokenRoad(400.5);
    double mileage[] = {10, 20, 30};
    const double offset = 2;
    double x[3];
    double y[3];
    double azimuth = -7;
    std::uint8_t status[3];
    // Backwards through the mileages, one offset for all, the azimuths all in one place; other inputs are not given.
    ASSERT_TRUE(GetPositionAndAzimuthBatch(road, 3, mileage + 2, -8, nullptr, 0, &offset, 0, nullptr, 0, x, 8, y, 8,
                                           &azimuth, 0, status, 1));
    EXPECT_EQ(std::vector<double>(x, x + 3), std::vector<double>({30, 20, 10}));
    EXPECT_EQ(std::vector<double>(y, y + 3), std::vector<double>({2, 2, 2}));
    EXPECT_EQ(azimuth, 0);
    // Points become mileages and offsets in their own place.
    std::int32_t occurrence[3];
    ASSERT_TRUE(GetMileageAndOffsetBatch(road, 3, x, 8, y, 8, x, 8, y, 8, occurrence, 4, status, 1));
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(x[i], 30 - 10 * i, 1e-9);
        EXPECT_NEAR(y[i], 2, 1e-9);
    }
}

TEST(Batches, FailAsAWholeWithNothingWritten) {
    const Road unbuilt;
    const Road road = BrokenRoad(400.5);
    const double at = 10;
    double height = -7;
    std::uint8_t status = 99;
    EXPECT_FALSE(GetHeightBatch(unbuilt, 1, &at, 8, nullptr, 0, nullptr, 0, &height, 8, &status, 1));
    EXPECT_EQ(LastFailure(unbuilt).status, KESTO_TOO_FEW_ELEMENTS);
    EXPECT_FALSE(GetHeightBatch(road, -1, &at, 8, nullptr, 0, nullptr, 0, &height, 8, &status, 1));
    EXPECT_EQ(LastFailure(road).status, KESTO_RECORD_COUNT_REFUSED);
    EXPECT_EQ(height, -7);
    EXPECT_EQ(status, 99);
    EXPECT_TRUE(GetHeightBatch(unbuilt, 0, nullptr, 8, nullptr, 0, nullptr, 0, nullptr, 8, nullptr, 1));
    EXPECT_EQ(FreezeRoad(unbuilt), nullptr);
    EXPECT_EQ(LastFailure(unbuilt).status, KESTO_TOO_FEW_ELEMENTS);
}

TEST(FrozenRoads, RecordNoFailure) {
    const Road road = BrokenRoad(400.5);
    const Road frozen(FreezeRoad(road));
    double height = -7;
    Failure failure{};
    EXPECT_FALSE(GetHeight(frozen, 10, 0, 5, &height));
    EXPECT_FALSE(GetLastFailure(frozen, &failure));
    EXPECT_FALSE(GetLastFailure(road, &failure));
    EXPECT_FALSE(IsFrozenRoad(road));
    EXPECT_FALSE(DeleteElement(road, 99));
    EXPECT_FALSE(GetLastFailure(Road(FreezeRoad(road)), &failure)) << "nor does it keep the road's own";
}

}  // namespace
}  // namespace kesto::test
