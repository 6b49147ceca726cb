// Every exported function: it answers its sample, gives its failure value for null and for numbers that are none.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>

#include "calls/call.hpp"
#include "calls/samples.hpp"

namespace kesto::test {
namespace {

using Limits = std::numeric_limits<double>;

std::int32_t LastStatus(RoadDesign* road) {
    Failure failure{};
    GetLastFailure(road, &failure);
    return failure.status;
}

/// What a failed call gives back.
double FailureValue(const Call& call, double status) { return call.gives == Gives::Status ? status : 0; }

class EachCall : public testing::TestWithParam<const Call*> {
protected:
    static const Call& It() { return *GetParam(); }

    /// Writes the values of hostile numbers into each number that the call reads, one after the other.
    template <class Value, class Visit>
    static void WithEach(std::initializer_list<Value> values, bool wholes, Visit visit) {
        const std::vector<Argument> sample = SampleArguments(It());
        for (std::size_t i = 0; i < sample.size(); ++i) {
            const Parameter& parameter = It().parameters[i];
            for (const Value value : values) {
                std::vector<Argument> arguments = sample;
                if (parameter.kind == ParameterKind::Number && !wholes) {
                    arguments[i].number = static_cast<double>(value);
                    visit(parameter, arguments, value);
                }
                if (parameter.kind == ParameterKind::Whole && wholes) {
                    arguments[i].whole = static_cast<std::int64_t>(value);
                    visit(parameter, arguments, value);
                }
                for (const Field& field : parameter.fields) {
                    if (!parameter.isRead || sample[i].memory.empty() ||
                        field.kind != (wholes ? FieldKind::Whole : FieldKind::Number)) {
                        continue;
                    }
                    arguments = sample;
                    std::memcpy(arguments[i].memory.data() + field.offset, &value, sizeof value);
                    visit(parameter, arguments, value);
                }
            }
        }
    }

    /// Whatever is answered is finite.
    static void ExpectFinite(const std::vector<Argument>& arguments) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const Parameter& parameter = It().parameters[i];
            if (!parameter.isWritten || parameter.kind != ParameterKind::Memory) continue;
            for (const Field& field : parameter.fields) {
                double number = 0;
                if (field.kind != FieldKind::Number) continue;
                std::memcpy(&number, arguments[i].memory.data() + field.offset, sizeof number);
                EXPECT_TRUE(std::isfinite(number)) << parameter.name << '.' << field.name;
            }
        }
    }

    /// The road can still be asked, designed and saved, whatever comes of it.
    static void ExpectUsable(RoadDesign* road) {
        double a = 0, b = 0;
        std::int32_t k = 0;
        std::int64_t size = 0;
        GetHeight(road, 130, 0, 1, &a);
        GetMileageAndOffset(road, 1065, 2110, &a, &b, &k);
        DesignRoad(road);
        GetHeight(road, 130, 0, 1, &a);
        SaveProjectToMemory(road, nullptr, 0, &size);
        EXPECT_NE(LastStatus(road), KESTO_INTERNAL_ERROR);
    }
};

TEST_P(EachCall, SucceedsWithItsSample) {
    const Road road = SampleRoad();
    std::vector<Argument> arguments = SampleArguments(It());
    if (It().name == "EndRoadDesign") return;
    EXPECT_FALSE(DeleteElement(road, -1));
    const int before = LastStatus(road);
    const Outcome outcome = It().run(road, arguments);
    EXPECT_FALSE(outcome.failed) << outcome.number << ", " << LastStatus(road);
    const bool isReplaced = It().name == "ClearRoad" || It().name.starts_with("Open");
    EXPECT_EQ(LastStatus(road), isReplaced ? KESTO_SUCCESS : before) << "a success leaves the last failure";
    if (outcome.handle != nullptr) EndRoadDesign(static_cast<RoadDesign*>(outcome.handle));
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& parameter = It().parameters[i];
        if (!parameter.isWritten || parameter.kind != ParameterKind::Memory) continue;
        EXPECT_NE(arguments[i].memory, SampleArguments(It())[i].memory) << parameter.name << " is not written";
    }
}

TEST_P(EachCall, GivesItsFailureValueForNull) {
    if (!It().HasHandle()) return;
    std::vector<Argument> arguments = SampleArguments(It());
    std::string before = BytesOf(arguments);
    EXPECT_EQ(It().run(nullptr, arguments).number, FailureValue(It(), KESTO_NULL_HANDLE_OR_PATH));
    EXPECT_EQ(BytesOf(arguments), before) << "written for a null handle";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!It().parameters[i].IsPointer()) continue;
        SCOPED_TRACE(It().parameters[i].name);
        const Road road = SampleRoad();
        EXPECT_FALSE(DeleteElement(road, -1));  // leaves another reason than the one awaited
        const std::string stored = Stored(road);
        arguments = SampleArguments(It());
        arguments[i].isNull = true;
        before = BytesOf(arguments);
        if (It().parameters[i].mayBeNull) {
            const int capacity = It().Find("capacity");
            if (capacity > 0) arguments[static_cast<std::size_t>(capacity)].whole = 0;
            // Without room a text or file is asked for its size alone.
            const double expected = capacity > 0 ? std::int32_t{KESTO_ARRAY_TOO_SMALL} : 0;
            const Outcome outcome = It().run(road, arguments);
            EXPECT_EQ(outcome.failed, capacity > 0);
            if (It().gives == Gives::Status) {
                EXPECT_EQ(outcome.number, expected);
            }
            continue;
        }
        EXPECT_EQ(It().run(road, arguments).number, FailureValue(It(), KESTO_NULL_HANDLE_OR_PATH));
        EXPECT_EQ(LastStatus(road), It().name == "GetLastFailure"  ? KESTO_INDEX_OUT_OF_RANGE
                                    : It().gives == Gives::Success ? KESTO_NULL_ARGUMENT
                                                                   : KESTO_NULL_HANDLE_OR_PATH);
        EXPECT_EQ(BytesOf(arguments), before) << "written";
        EXPECT_EQ(Stored(road), stored) << "changed";
    }
}

TEST_P(EachCall, RefusesWhatIsNotFinite) {
    const auto isOfQuery = [](const Parameter& parameter) {
        const bool isByValue = parameter.kind == ParameterKind::Number || (parameter.isRead && parameter.isWritten);
        return It().effect == Effect::Answers && isByValue && parameter.name != "angle";  // which then counts as 90
    };
    WithEach<double>({Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}, false,
                     [&](const Parameter& parameter, std::vector<Argument>& arguments, double bad) {
                         SCOPED_TRACE(parameter.name + " is " + std::to_string(bad));
                         const Road road = SampleRoad();
                         const std::string before = BytesOf(arguments);
                         const Outcome outcome = It().run(road, arguments);
                         if (!isOfQuery(parameter)) return ExpectUsable(road);
                         if (It().gives == Gives::Success) {
                             EXPECT_TRUE(outcome.failed);
                             EXPECT_EQ(LastStatus(road), KESTO_ARGUMENT_NOT_FINITE);
                         }
                         const bool givesZeros = It().name == "GetElementPositionAndAzimuth";
                         EXPECT_TRUE(givesZeros || BytesOf(arguments) == before) << "written";
                     });
}

TEST_P(EachCall, SurvivesHostileNumbers) {
    const auto run = [&](const Parameter& parameter, std::vector<Argument>& arguments, auto value) {
        SCOPED_TRACE(parameter.name + " is " + std::to_string(value));
        const Road road = SampleRoad();
        const bool isRoom = parameter.name == "count" || parameter.name == "capacity" || parameter.name == "size";
        if ((isRoom && value > 0) || parameter.name.ends_with("Step")) return;  // it promises memory that is not there
        const Outcome outcome = It().run(road, arguments);
        if (!outcome.failed && It().effect == Effect::Answers) ExpectFinite(arguments);
        if (outcome.handle != nullptr) EndRoadDesign(static_cast<RoadDesign*>(outcome.handle));
        if (It().name != "EndRoadDesign") ExpectUsable(road);
    };
    WithEach<double>({-0.0, Limits::denorm_min(), 1e-8, -1, 1e15, -1e15, 1e300, Limits::max(), Limits::lowest()}, false,
                     run);
    using Wholes = std::numeric_limits<std::int32_t>;
    WithEach<std::int32_t>({Wholes::max(), Wholes::min(), -1, 2, 99}, true, run);
}

TEST_P(EachCall, AnswersOnAFrozenRoadAndEditsNone) {
    if (!It().HasHandle() || It().name == "EndRoadDesign") return;
    const Road road = SampleRoad();
    const Road frozen(FreezeRoad(road));
    ASSERT_NE(frozen, nullptr);
    const std::string stored = Stored(road);
    EXPECT_EQ(Stored(frozen), stored);
    std::vector<Argument> arguments = SampleArguments(It()), ofFrozen = SampleArguments(It());
    const std::string before = BytesOf(ofFrozen);
    const Outcome outcome = It().run(frozen, ofFrozen);
    if (outcome.handle != nullptr) EndRoadDesign(static_cast<RoadDesign*>(outcome.handle));
    EXPECT_EQ(Stored(frozen), stored) << "changed";
    EXPECT_EQ(LastStatus(frozen), KESTO_SUCCESS) << "a failure is kept";
    if (It().effect == Effect::Edits) {
        EXPECT_EQ(outcome.number, FailureValue(It(), KESTO_ROAD_IS_FROZEN));
        EXPECT_EQ(BytesOf(ofFrozen), before);
    } else if (It().effect == Effect::Answers && It().gives != Gives::Truth && It().name != "GetLastFailure") {
        EXPECT_EQ(outcome, It().run(road, arguments));
        EXPECT_EQ(BytesOf(ofFrozen), BytesOf(arguments));
    }
}

TEST(FrozenRoads, TellWhatIsDerivedAsTheirRoadDoes) {
    const Road road = SampleRoad();
    VerticalCurve point{};
    ASSERT_TRUE(GetVerticalCurve(road, 1, &point));
    point.elevation += 5;
    ASSERT_TRUE(SetVerticalCurve(road, 1, &point));  // its grades are to be derived anew
    const Road frozen(FreezeRoad(road));
    EXPECT_EQ(Stored(frozen), Stored(road));
}

std::vector<const Call*> AllCalls() {
    std::vector<const Call*> all;
    for (const Call& call : Calls()) all.push_back(&call);
    return all;
}

INSTANTIATE_TEST_SUITE_P(Calls, EachCall, testing::ValuesIn(AllCalls()),
                         [](const auto& each) { return std::string(each.param->name); });

TEST(TableOfCalls, HasEveryExport) {
    std::ifstream list(KESTO_EXPORTS_LIST);
    std::set<std::string> exported(std::istream_iterator<std::string>(list), {});
    for (const Call& call : Calls()) EXPECT_EQ(exported.erase(std::string(call.name)), 1U) << call.name;
    EXPECT_TRUE(exported.empty()) << *exported.begin();
}

}  // namespace
}  // namespace kesto::test
