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

Answers FrozenOneByOne(const FrozenRoad* road, const std::vector<Question>& questions) {
    Answers answers(questions.size());
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const Question q = questions[i];
        Answer& a = answers[i];
        a.located =
            static_cast<std::uint8_t>(FrozenGetMileageAndOffset(road, q.x, q.y, &a.mileage, &a.offset, &a.occurrence));
        a.placed = static_cast<std::uint8_t>(
            FrozenGetPositionAndAzimuth(road, q.mileage, q.offset, q.angle, &a.x, &a.y, &a.azimuth, q.occurrence));
        a.high = static_cast<std::uint8_t>(FrozenGetHeight(road, q.mileage, q.occurrence, q.offset, &a.height));
    }
    return answers;
}

/// Runs the three batches, those of a road or of a frozen one.
template <class Source, class Locate, class Place, class Height>
Answers InBatches(Source* source, const std::vector<Question>& questions, Locate locate, Place place, Height height,
                  int done) {
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
    EXPECT_EQ(locate(source, n, x, in, y, in, &a.mileage, out, &a.offset, out, &a.occurrence, out, &a.located, out),
              done);
    EXPECT_EQ(
        place(source, n, m, in, k, in, offset, in, angle, in, &a.x, out, &a.y, out, &a.azimuth, out, &a.placed, out),
        done);
    EXPECT_EQ(height(source, n, m, in, k, in, offset, in, &a.height, out, &a.high, out), done);
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
        EXPECT_EQ(InBatches(static_cast<RoadDesign*>(road), questions, GetMileageAndOffsetBatch,
                            GetPositionAndAzimuthBatch, GetHeightBatch, true),
                  expected)
            << roads;
        const FrozenRoad* const frozen = FreezeRoad(road);
        ASSERT_NE(frozen, nullptr);
        EXPECT_TRUE(DeleteElement(road, 5));  // does not reach the frozen road
        EXPECT_EQ(FrozenOneByOne(frozen, questions), expected) << roads;
        EXPECT_EQ(InBatches(frozen, questions, FrozenGetMileageAndOffsetBatch, FrozenGetPositionAndAzimuthBatch,
                            FrozenGetHeightBatch, 0),
                  expected)
            << roads;
        ReleaseFrozenRoad(frozen);
        for (const Answer& a : expected) {
            for (const std::uint8_t status : {a.located, a.placed, a.high}) ++(status == 0 ? succeeded : failed);
        }
    }
    EXPECT_GT(succeeded, 10000U);
    EXPECT_GT(failed, 1000U);
}

TEST(FrozenRoads, SearchBetweenLimitsAsTheRoadDoes) {
    Dice dice(11);
    for (int roads = 0; roads < 10; ++roads) {
        const Road road = RandomRoad(dice);
        const FrozenRoad* const frozen = FreezeRoad(road);
        for (const Question& q : RandomQuestions(road, dice, 200)) {
            const double upper = q.mileage + dice.Between(-100, 900);
            Answer expected;
            Answer found;
            expected.located = StatusOf(road, [&] {
                return GetMileAndOffsetInLim(road, q.x, q.y, q.mileage, q.occurrence, upper, 0, &expected.mileage,
                                             &expected.offset, &expected.occurrence);
            });
            found.located = static_cast<std::uint8_t>(FrozenGetMileAndOffsetInLim(
                frozen, q.x, q.y, q.mileage, q.occurrence, upper, 0, &found.mileage, &found.offset, &found.occurrence));
            EXPECT_EQ(found, expected);
        }
        ReleaseFrozenRoad(frozen);
    }
}

/// Room for the plates of one side, more or fewer, and all that else an answer about stakes and sections writes.
struct Around {
    explicit Around(std::int32_t room) : plates(static_cast<std::size_t>(room)), array{plates.data(), -7, room} {}

    std::vector<SectionPlate> plates;
    SectionPlateArray array;
    StakeCoordinate stake{};
    double mileage = -7;
    std::int32_t occurrence = -7, index = -7;
    std::vector<std::int32_t> statuses;

    std::string Bytes() const {
        std::string bytes(reinterpret_cast<const char*>(plates.data()), plates.size() * sizeof(SectionPlate));
        bytes.append(reinterpret_cast<const char*>(&stake), sizeof stake);
        return bytes + std::to_string(array.count) + ' ' + std::to_string(occurrence);
    }
};

TEST(FrozenRoads, TellStakesAndSectionsAsTheRoadDoes) {
    Dice dice(13);
    std::size_t succeeded = 0;
    std::size_t failed = 0;
    for (int roads = 0; roads < 10; ++roads) {
        const Road road = RandomRoad(dice);
        const FrozenRoad* const frozen = FreezeRoad(road);
        for (const Question& q : RandomQuestions(road, dice, 200)) {
            const std::int32_t side = dice.In(9) ? 5 : static_cast<std::int32_t>(dice.In(2));
            Around one(dice.In(9) ? 1 : 3);
            Around other(one.array.capacity);
            one.mileage = other.mileage = q.mileage;
            const auto ask = [&](bool done) { one.statuses.push_back(done ? 0 : LastFailure(road).status); };
            ask(GetSrcMileage(road, &one.mileage, q.occurrence));
            ask(GetNearbyStakeCoordinate(road, q.x, q.y, &one.stake, &one.occurrence));
            ask(GetRoadSide(road, q.mileage, q.occurrence, side, &one.array));
            other.statuses = {FrozenGetSrcMileage(frozen, &other.mileage, q.occurrence),
                              FrozenGetNearbyStakeCoordinate(frozen, q.x, q.y, &other.stake, &other.occurrence),
                              FrozenGetRoadSide(frozen, q.mileage, q.occurrence, side, &other.array)};
            EXPECT_EQ(other.Bytes(), one.Bytes());
            ask(GetRoadSideNoHeight(road, q.mileage, q.occurrence, side, &one.array));
            other.statuses.push_back(FrozenGetRoadSideNoHeight(frozen, q.mileage, q.occurrence, side, &other.array));
            EXPECT_EQ(other.Bytes(), one.Bytes());
            EXPECT_EQ(other.statuses, one.statuses);
            EXPECT_TRUE(other.mileage == one.mileage || std::isnan(q.mileage));
            for (const std::int32_t status : other.statuses) ++(status == 0 ? succeeded : failed);
        }
        ASSERT_EQ(FrozenGetStakeCoordinateCount(frozen), GetStakeCoordinateCount(road));
        for (std::int32_t i = -1; i <= GetStakeCoordinateCount(road); ++i) {
            Around one(0);
            Around other(0);
            const std::int32_t found = FrozenGetStakeCoordinate(frozen, i, &other.stake);
            EXPECT_EQ(found, GetStakeCoordinate(road, i, &one.stake) ? 0 : KESTO_INDEX_OUT_OF_RANGE) << i;
            EXPECT_EQ(other.Bytes(), one.Bytes()) << i;
        }
        ReleaseFrozenRoad(frozen);
    }
    EXPECT_GT(succeeded, 4000U);
    EXPECT_GT(failed, 1000U);
}

// Two tangents of 300 m at a right angle, a curve of radius 200 m between them: from 100 to 100 + 100 pi.
TEST(FrozenRoads, KnowTheirIntersections) {
    const Road road;
    for (const auto& [x, y, radius] : {std::array{0.0, 0.0, 0.0}, {300.0, 0.0, 200.0}, {300.0, 300.0, 0.0}}) {
        Intersection point{};
        point.x = x;
        point.y = y;
        point.radius = radius;
        ASSERT_TRUE(AddIntersection(road, &point, -1));
    }
    ASSERT_TRUE(DesignRoad(road));
    const FrozenRoad* const frozen = FreezeRoad(road);
    std::int32_t index = -7;
    for (const auto& [mileage, expected] : {std::pair{99.9, -1}, {100.1, 1}, {414.0, 1}, {414.3, -1}}) {
        EXPECT_EQ(FrozenGetIntersectionIndex(frozen, mileage, 0, &index), KESTO_SUCCESS);
        EXPECT_EQ(index, expected) << mileage;
    }
    index = -7;
    EXPECT_EQ(FrozenGetIntersectionIndex(frozen, 5000, 0, &index), KESTO_MILEAGE_OFF_ROAD);
    EXPECT_EQ(index, -7);
    ReleaseFrozenRoad(frozen);
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
    const FrozenRoad* const frozen = FreezeRoad(road);
    double height = -7;
    EXPECT_EQ(FrozenGetHeight(frozen, 10, 0, 5, &height), KESTO_NO_CROSS_SECTION);
    EXPECT_EQ(FrozenGetHeightBatch(frozen, -1, &height, 8, nullptr, 0, nullptr, 0, &height, 8, nullptr, 1),
              KESTO_RECORD_COUNT_REFUSED);
    EXPECT_EQ(LastFailure(road).status, KESTO_SUCCESS);
    ReleaseFrozenRoad(frozen);
}

}  // namespace
}  // namespace kesto::test
