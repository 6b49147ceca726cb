// Numbers that no survey gives: what is no finite number fails a query, nothing crashes, hangs or answers nonsense.
#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "road.hpp"

namespace kesto::test {
namespace {

using Limits = std::numeric_limits<double>;
constexpr double untouched = -7;
constexpr double notFinite[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()};
constexpr double huge[] = {1e15, -1e15, 1e300, -1e300, Limits::max(), Limits::lowest()};

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

void ExpectFiniteWhereFound(RoadDesign* road, const std::vector<double>& numbers) {
    for (const Query& query : Queries()) {
        Answer answer;
        if (!query.ask(road, numbers, answer)) continue;
        EXPECT_TRUE(std::isfinite(answer.a) && std::isfinite(answer.b) && std::isfinite(answer.c)) << query.name;
    }
}

TEST(HostileNumbers, HugeOnesGiveNoNonsense) {
    const Road road = OrdinaryRoad();
    for (const double one : huge) {
        for (const double other : {1.0, one, -one}) {
            ExpectFiniteWhereFound(road, {one, other, 0, 100});
            ExpectFiniteWhereFound(road, {other, one, one, other});
            ExpectFiniteWhereFound(road, {50, one, other, one});
        }
        EXPECT_FALSE(PointAt(road, one).found);
        EXPECT_FALSE(Continuous(road, one));
        EXPECT_FALSE(HeightAt(road, one));
    }
    double out = 0;
    const Element element = Straight(Limits::max());
    EXPECT_TRUE(GetElementPositionAndAzimuth(road, &element, 1e300, &out, &out, &out));
}

/// Roads edited by somebody who does not look where the numbers go.
class HalfEditedRoad {
public:
    explicit HalfEditedRoad(unsigned seed) : engine(seed), usualShare(4 + static_cast<int>(seed % 40)) {
        SetRoadDesignMode(road, 1);
    }

    void Edit() {
        const Element element = RandomElement();
        const BrokenChain chain{Number(), Number()};
        VerticalCurve curve = GradePoint(Number(), Number(), Number(), Whole());
        curve.startMileage = Number();
        curve.endMileage = Number();
        curve.startOccurrence = Whole();
        curve.endOccurrence = Whole();
        const SectionPlate plate = Plate(Number(), Number(), Number());
        const std::vector<double> values(static_cast<std::size_t>(GetStandardSectionPlateCount(road, right)), Number());
        const auto plates = static_cast<std::int32_t>(values.size());
        switch (Pick(16)) {
            case 0: SetStartInformation(road, Number(), Number(), Number()); break;
            case 1:
            case 2: AddElement(road, &element, Pick(8) - 1); break;
            case 3: SetElement(road, Pick(8), &element); break;
            case 4: DeleteElement(road, Pick(12)); break;
            case 5: AddBrokenChain(road, &chain); break;
            case 6: SetBrokenChain(road, Pick(4), &chain); break;
            case 7: AddVerticalCurve(road, &curve); break;
            case 8: SetVerticalCurve(road, Pick(4), &curve); break;
            case 9: SetStartMileage(road, Number()); break;
            case 10: SetVerticalCurveMode(road, Whole()); break;
            case 11: SetMakeStakeType(road, Pick(2)); break;
            case 12: AddStandardSectionPlate(road, &plate, right, Whole()); break;
            case 13: DeleteStandardSectionPlate(road, right, Pick(4)); break;
            case 14: SetSectionMode(road, Pick(8) == 0 ? Whole() : 0); break;
            default: AddChangeSectionList(road, Number(), right, Pick(2), values.data(), plates, Whole(), Whole());
        }
    }

    void Ask() {
        if (Pick(3) == 0) UpdateData(road);
        if (Pick(3) == 0) DesignRoad(road);
        ExpectFiniteWhereFound(road, {Number(), Number(), Number(), Number()});
        const Element element = RandomElement();
        Point point;
        if (GetElementPositionAndAzimuth(road, &element, Number(), &point.x, &point.y, &point.azimuth)) {
            EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.azimuth));
        }
        if (PointAt(road, Number(), Number(), Whole(), Number()).found) ++answered;
        if (Continuous(road, Number(), Whole())) ++answered;
        if (HeightAt(road, Number(), Whole(), Number())) ++answered;
        EXPECT_LE(GetStakeCoordinateCount(road), 20100) << "the interval keeps the list short";
    }

    int Answered() const { return answered; }

private:
    int Pick(int choices) { return std::uniform_int_distribution<int>(0, choices - 1)(engine); }
    std::int32_t Whole() { return Pick(6) == 0 ? (Pick(2) == 0 ? INT32_MIN : INT32_MAX) : Pick(4) - 1; }

    double Number() {
        constexpr double special[] = {0,
                                      -0.0,
                                      1e-8,
                                      -1e-8,
                                      1e-5,
                                      1e15,
                                      -1e15,
                                      1e300,
                                      -1e300,
                                      Limits::max(),
                                      Limits::lowest(),
                                      Limits::denorm_min(),
                                      Limits::infinity(),
                                      -Limits::infinity(),
                                      Limits::quiet_NaN()};
        constexpr double usual[] = {50, 100, 150, 200, 300, 90, -100, 20.5};
        return Pick(usualShare) == 0 ? special[Pick(static_cast<int>(std::size(special)))]
                                     : usual[Pick(static_cast<int>(std::size(usual)))];
    }

    Element RandomElement() {
        Element element = Spiral(static_cast<std::uint8_t>(Pick(3)), Number(), Number(), Number());
        constexpr std::int32_t types[] = {1, 1, 2, 2, 3, 3, 0, 4, -1, INT32_MIN};
        element.type = types[Pick(static_cast<int>(std::size(types)))];
        element.startMileage = Number();
        element.startX = Number();
        element.startY = Number();
        element.startAzimuth = Number();
        return element;
    }

    std::mt19937 engine;
    int usualShare;  // one number in so many is a special one
    Road road;
    int answered = 0;
};

TEST(HostileNumbers, HalfEditedRoadsNeverCrash) {
    int answered = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        HalfEditedRoad road(seed);
        for (int i = 0; i < 40; ++i) {
            road.Edit();
            if (i % 4 == 3) road.Ask();
        }
        answered += road.Answered();
    }
    EXPECT_GT(answered, 100) << "the roads are too broken to test anything";
}

}  // namespace
}  // namespace kesto::test
