// Numbers that no survey gives: queries refuse them and say why.
#include <cmath>
#include <functional>
#include <limits>

#include "road.hpp"

namespace kesto::test {
namespace {

using Limits = std::numeric_limits<double>;
constexpr double untouched = -7;
constexpr double notFinite[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()};

struct Answer {
    double a = untouched, b = untouched, c = untouched;
    std::int32_t k = -7;
    StakeCoordinate stake{};
    SectionPlate edge{};
};

/// A query as a function of its numbers.
struct Query {
    const char* name;
    int arguments;
    std::function<bool(RoadDesign*, const std::vector<double>&, Answer&)> ask;
};

const std::vector<Query>& Queries() {
    static const std::vector<Query> queries = {
        {"GetPositionAndAzimuth", 2,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             return GetPositionAndAzimuth(road, in[0], in[1], 90, &out.a, &out.b, &out.c, 0);
         }},
        {"GetSrcMileage", 1,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             double mileage = in[0];
             const bool found = GetSrcMileage(road, &mileage, 0);
             if (found) out.a = mileage;
             return found;
         }},
        {"GetMileageAndOffset", 2,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             return GetMileageAndOffset(road, in[0], in[1], &out.a, &out.b, &out.k);
         }},
        {"GetMileAndOffsetInLim", 4,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             return GetMileAndOffsetInLim(road, in[0], in[1], in[2], 0, in[3], 0, &out.a, &out.b, &out.k);
         }},
        {"GetNearbyStakeCoordinate", 2,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             const bool found = GetNearbyStakeCoordinate(road, in[0], in[1], &out.stake, &out.k);
             if (found) out.a = out.stake.mileage;
             return found;
         }},
        {"GetHeight", 2,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             return GetHeight(road, in[0], 0, in[1], &out.a);
         }},
        {"GetRoadSide", 1,
         [](RoadDesign* road, const std::vector<double>& in, Answer& out) {
             SectionPlateArray array{&out.edge, 0, 1};
             const bool found = GetRoadSide(road, in[0], 0, right, &array);
             if (found) out.a = out.edge.x + out.edge.y + out.edge.height, out.b = out.edge.offset;
             return found;
         }},
        {"GetChangeSection", 0,
         [](RoadDesign* road, const std::vector<double>&, Answer& out) {
             double values[20];
             DoubleArray array{values, 0, 20};
             return GetChangeSection(road, right, 1, 0, &out.a, &array, &out.k);
         }},
    };
    return queries;
}

Road OrdinaryRoad() {
    Road road = MakeRoad({Straight(100), Spiral(right, 0, 300, 60), Arc(right, 300, 80), Spiral(right, 300, 0, 60)});
    AddGradePoints(road, {GradePoint(0, 5), GradePoint(150, 8, 3000), GradePoint(300, 5)});
    EXPECT_TRUE(DesignRoad(road));
    AddPlates(road, right, {Plate(4, -2)});
    return road;
}

TEST(HostileNumbers, QueriesRefuseWhatIsNotFinite) {
    const Road road = OrdinaryRoad();
    for (const Query& query : Queries()) {
        for (int position = 0; position < query.arguments; ++position) {
            for (const double bad : notFinite) {
                SCOPED_TRACE(std::string(query.name) + ", number " + std::to_string(position) + " is " +
                             std::to_string(bad));
                std::vector<double> numbers = {50, 1, 20, 200};
                numbers[static_cast<std::size_t>(position)] = bad;
                Answer answer;
                EXPECT_FALSE(query.ask(road, numbers, answer));
                EXPECT_EQ(Bytes(&answer.stake), std::string(sizeof answer.stake, '\0'));
                EXPECT_EQ(Bytes(&answer.edge), std::string(sizeof answer.edge, '\0'));
                EXPECT_EQ(answer.a, untouched);
                EXPECT_EQ(answer.b, untouched);
                EXPECT_EQ(answer.c, untouched);
                EXPECT_EQ(answer.k, -7);
                EXPECT_EQ(LastFailure(road).status, KESTO_ARGUMENT_NOT_FINITE);
            }
        }
    }
}

TEST(HostileNumbers, AnswersThatOverflowAreRefused) {
    constexpr double huge = Limits::max();
    const Road far = MakeRoad({Straight(100)}, {.x = huge});
    EXPECT_TRUE(Continuous(far, 50));
    EXPECT_FALSE(PointAt(far, 50, huge, 0, 0).found);
    EXPECT_EQ(LastFailure(far).status, KESTO_RESULT_NOT_FINITE);
    const Road road = MakeRoad({Straight(100)});
    ASSERT_TRUE(DesignRoad(road));
    AddPlates(road, left, {Plate(50, huge)});
    AddPlates(road, right, {Plate(huge, 0), Plate(huge, 0)});
    const std::pair<const char*, std::function<bool()>> queries[] = {
        {"an edge", [&] { return !SideAt(road, 50, right).empty(); }},
        {"a height on a plate", [&] { return HeightAt(road, 50, 0, -20).has_value(); }},
        {"a height on the centre line",
         [&] {
             AddGradePoints(road, {GradePoint(0, huge), GradePoint(100, -huge)});
             return HeightAt(road, 50).has_value();
         }},
    };
    for (const auto& [name, ask] : queries) {
        EXPECT_FALSE(DeleteElement(road, -1));  // another failure
        EXPECT_FALSE(ask()) << name;
        EXPECT_EQ(LastFailure(road).status, KESTO_RESULT_NOT_FINITE) << name;
    }
}

TEST(HostileNumbers, HugeMileagesLieOffTheRoad) {
    const Road road = OrdinaryRoad();
    for (const double mileage : {1e15, -1e15, 1e300, Limits::max(), Limits::lowest()}) {
        EXPECT_FALSE(PointAt(road, mileage).found);
        EXPECT_FALSE(Continuous(road, mileage));
        EXPECT_FALSE(HeightAt(road, mileage));
    }
    double out = 0;
    const Element element = Straight(Limits::max());
    EXPECT_TRUE(GetElementPositionAndAzimuth(road, &element, 1e300, &out, &out, &out));
}

}  // namespace
}  // namespace kesto::test
