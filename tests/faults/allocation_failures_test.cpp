// Memory that runs out: every exported function is repeated with its first, second, third ... allocation failing, alone
// or with all that follow, until it needs no more. Each time the design data are whole, and the next attempt does what
// an undisturbed one does.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>

#include "calls/call.hpp"
#include "calls/samples.hpp"
#include "core/road_design.hpp"
#include "failing_allocations.hpp"
#include "support/road.hpp"

namespace kesto::test {
namespace {

constexpr const char* name =
    "Stra\xDF"
    "e";  // in the code page that the executable pretends to be in

/// A road whose every list is as full as its room, so that each addition allocates; the chain is not built.
Road FullRoad() {
    Road road = MakeRoad(std::vector<Element>(15, Straight(100)));
    Intersection intersection{};
    std::copy_n(name, 7, intersection.name);
    const Coordinate coordinate{};
    for (int i = 0; i < 16; ++i) {
        EXPECT_TRUE(AddIntersection(road, &intersection, -1));
        EXPECT_TRUE(AddCoordinate(road, &coordinate, -1));
        AddChain(road, 50.0 + 100 * i, 60.0 + 100 * i);
        static_cast<RoadDesign*>(road)->verticalCurves.Insert(GradePoint(100.0 * i, i % 3, 500));
    }
    SetMakeStakePerfix(road, "a prefix longer than any short string");  // names of stakes need memory of their own
    return road;
}

/// The same without the record that setting the start overwrites.
Road FullRoadWithoutStart() {
    Road road = FullRoad();
    EXPECT_TRUE(DeleteElement(road, 0));
    const Element element = Straight(100);
    EXPECT_TRUE(AddElement(road, &element, 0));
    return road;
}

void AddSections(RoadDesign* road) {
    AddPlates(road, right, {Plate(3, 2), Plate(3, 2)});
    const double values[] = {1, 2};
    for (const double mileage : {20.0, 220.0, 420.0}) {
        EXPECT_TRUE(AddChangeSectionList(road, mileage, right, 0, values, 2, 0, 1));
        EXPECT_TRUE(AddChangeSectionList(road, mileage, right, 1, values, 2, 0, 2));
    }
    const SectionMileageIndex entry{"", 10};
    EXPECT_TRUE(AddSectionMileageIndex(road, &entry));
}

/// A road with everything: elements, chains, profile, plates, change sections, stakes.
Road RoadWithSections() {
    Road road = FullRoad();
    EXPECT_TRUE(DesignRoad(road));
    AddSections(road);
    return road;
}

/// The same with a chain that is to be built again.
Road UnbuiltRoadWithSections() {
    Road road = RoadWithSections();
    static_cast<RoadDesign*>(road)->totalLength = 0;
    return road;
}

/// Elements come from intersections, with arcs and spirals. A few records: to write many again and again takes time.
Road RoadOfIntersections() {
    Road road;
    const double points[][3] = {{0, 0, 0}, {400, 0, 150}, {700, 300, 150}, {1200, 300, 0}};
    for (const auto& [x, y, radius] : points) {
        Intersection point{};
        std::copy_n(name, 7, point.name);
        point.x = x;
        point.y = y;
        point.radius = radius;
        point.spiralIn = point.spiralOut = radius > 0 ? 40 : 0;
        EXPECT_TRUE(AddIntersection(road, &point, -1));
    }
    AddGradePoints(road, {GradePoint(0, 5), GradePoint(500, 10, 2000), GradePoint(1000, 5)});
    EXPECT_TRUE(DesignRoad(road));
    AddSections(road);
    return road;
}

/// Elements come from coordinate points: a straight and a quarter circle.
Road RoadOfCoordinates() {
    Road road;
    SetRoadDesignMode(road, 2);
    const Coordinate points[] = {
        {1, 1, 0, 0, 0, ""}, {2, 1, 300, 0, 100, ""}, {1, 1, 400, 100, 0, ""}, {0, 1, 400, 300, 0, ""}};
    for (const Coordinate& point : points) EXPECT_TRUE(AddCoordinate(road, &point, -1));
    return road;
}

/// The roads that a call is tried on. Files are written from the shorter one alone.
std::vector<Road (*)()> RoadsFor(const Call& call) {
    if (call.Find("path") > 0) return {RoadOfIntersections};
    return {FullRoad,         FullRoadWithoutStart, RoadWithSections, UnbuiltRoadWithSections, RoadOfIntersections,
            RoadOfCoordinates};
}

/// What a user has entered; neither the elements, which a build splits, nor what is derived.
std::string Entered(RoadDesign* handle) {
    const RoadDesign& road = *handle;
    const Settings& settings = road.settings;
    std::string bytes = settings.stakePrefix;
    for (const double number : {settings.startMileage, settings.mileageInterval}) bytes += Bytes(&number);
    for (const std::int32_t mode : {settings.makeStakeType, settings.roadDesignMode, settings.verticalCurveMode,
                                    settings.sectionMode, settings.sideSlopeMode}) {
        bytes += Bytes(&mode);
    }
    const auto append = [&bytes](const auto& records) {
        bytes += '|';
        for (const auto& record : records) bytes += Bytes(&record);
    };
    append(road.intersections.Records());
    append(road.coordinates.Records());
    append(road.brokenChains.Records());
    bytes += '|';
    for (const VerticalCurve& curve : road.verticalCurves.Records()) {
        for (const double number : {curve.mileage, curve.elevation, curve.radius}) bytes += Bytes(&number);
        bytes += Bytes(&curve.occurrence);
    }
    append(road.sections.mileageIndex);
    for (std::size_t side = 0; side < sideCount; ++side) {
        append(road.sections.plates[side]);
        for (std::size_t kind = 0; kind < changeKindCount; ++kind) {
            for (const auto& [mileage, section] : road.sections.changeSections[side][kind]) {
                bytes += Bytes(&mileage);
                append(section.values);
                append(section.flags);
            }
            bytes += '|';
            for (const auto& [mileage, type] : road.sections.transitionTypes[side][kind]) {
                bytes += Bytes(&mileage) + Bytes(&type);
            }
        }
    }
    return bytes;
}

std::string ElementBytes(RoadDesign* road) {
    std::string bytes;
    for (const Element& element : Elements(road)) bytes += Bytes(&element);
    return bytes;
}

/// What a road answers to every query at some places, derived anew where it says that something is not current. Empty
/// where there is no answer.
std::vector<std::string> Answers(RoadDesign* road) {
    std::vector<std::string> all;
    for (const Call& call : Calls()) {
        const int mileage = call.Find("mileage"), x = call.Find("x");
        const bool isPlain = call.effect == Effect::Answers && call.gives == Gives::Success && call.Find("path") < 0;
        if (!isPlain || (mileage < 0 && x < 0) || call.Find("count") > 0) continue;  // batches fail by rows
        const std::vector<Argument> sample = SampleArguments(call);
        for (double along = 5; along < 1300; along += 260) {
            std::vector<Argument> arguments = sample;
            if (mileage > 0) arguments[static_cast<std::size_t>(mileage)].number = along;
            if (x > 0) arguments[static_cast<std::size_t>(x)].number = along;
            all.push_back(call.run(road, arguments).failed ? std::string() : BytesOf(arguments));
        }
    }
    return all;
}

/// Whether answers are those of a road or, after its stakes are gone, lack some of them.
bool AreThoseOf(const std::vector<std::string>& answers, const std::vector<std::string>& of, bool hasStakes) {
    return std::ranges::equal(answers, of, [&](const std::string& one, const std::string& other) {
        return one == other || (one.empty() && !hasStakes);
    });
}

/// Names and contents of the files that calls write.
std::string Written() {
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(std::filesystem::path(SamplePath("")).parent_path())) {
        if (file.path().stem() == "source") continue;
        std::ifstream content(file.path(), std::ios::binary);
        files.insert(file.path().filename().string() + ": " + std::string(std::istreambuf_iterator<char>(content), {}));
    }
    std::string all;
    for (const std::string& file : files) all += file + '\n';
    return all;
}

/// A call on a road of its own, and what has come of it.
struct Trial {
    explicit Trial(const Call& its, Road (*prepare)()) : call(its), road(prepare()), arguments(SampleArguments(its)) {
        if (call.Find("path") > 0 && call.effect == Effect::Answers) {
            const Argument& path = arguments[static_cast<std::size_t>(call.Find("path"))];
            std::ofstream(reinterpret_cast<const char*>(path.memory.data())) << "earlier";
        }
    }

    /// Asks more often than a road is walked along before an index is made. What is copied for it is copied before.
    Allocations Do(int allowed, Failing failing) {
        const bool isQuery = call.effect == Effect::Answers && call.gives == Gives::Success;
        std::vector<std::vector<Argument>> given(isQuery ? 20 : 1, arguments);
        static_cast<RoadDesign*>(road)->lastFailure.reset();
        FailAllocations(allowed, failing);
        for (std::size_t i = 0; i < given.size() && !ToldOfMemory(); ++i) {
            outcome = call.run(road, given[i]);
            if (outcome.handle != nullptr) EndRoadDesign(static_cast<RoadDesign*>(outcome.handle));
            outcome.handle = nullptr;
            last = i;
        }
        const Allocations allocations = StopFailing();
        answered = std::move(given[last]);
        return allocations;
    }

    std::int32_t Status() const {
        const std::optional<Failure>& told = static_cast<RoadDesign*>(road)->lastFailure;
        return told ? told->status : KESTO_SUCCESS;
    }
    bool ToldOfMemory() const { return Status() == KESTO_OUT_OF_MEMORY || Status() == KESTO_FILE_OUT_OF_MEMORY; }
    bool HasStakes() const { return GetStakeCoordinateCount(road) > 0; }

    const Call& call;
    Road road;
    std::vector<Argument> arguments, answered;
    Outcome outcome;
    std::size_t last = 0;
};

class AllocationFailures : public testing::TestWithParam<const Call*> {
protected:
    static const Call& It() { return *GetParam(); }
    static void TearDownTestSuite() { std::printf("failing allocations: %d, failed calls: %d\n", attempts, told); }

    void RunUndisturbed(Road (*prepare)()) {
        const Trial waiting(It(), prepare);
        const Trial unbuilt(It(), prepare), rebuilt(It(), prepare);
        entered = Entered(waiting.road);
        elements = {ElementBytes(waiting.road)};
        answers = {Answers(waiting.road)};
        elements.push_back(ElementBytes(waiting.road));
        static_cast<RoadDesign*>(unbuilt.road)->totalLength = 0;
        answers.push_back(Answers(unbuilt.road));
        DesignRoad(rebuilt.road);
        elements.push_back(ElementBytes(rebuilt.road));
        answers.push_back(Answers(rebuilt.road));
        Trial run(It(), prepare);
        expected = run.Do(100000, Failing::Once).failed == 0 ? run.outcome : Outcome{};
        status = run.Status();
        answered = BytesOf(run.answered);
        enteredAfter = Entered(run.road);
        stored = Snapshot(run.road);
        elements.push_back(ElementBytes(run.road));
        answers.push_back(Answers(run.road));
        written = Written();
    }

    /// Runs the call on a new road with an allocation failing. @return whether it got that far
    bool Attempt(Road (*prepare)(), int allowed, Failing failing) {
        Trial run(It(), prepare);
        const std::string before = Written();
        const Allocations allocations = run.Do(allowed, failing);
        attempts += allocations.failed > 0 ? 1 : 0;
        if (run.ToldOfMemory()) {
            ++told;
            EXPECT_TRUE(Written() == before) << "a file is touched";
            ExpectWhole(run);
            if (failing == Failing::ForGood) {
                if (!Kept(run)) ExpectAnOldAnswer(run);
                return true;
            }
            run.Do(100000, Failing::Once);
        }
        EXPECT_TRUE(Snapshot(run.road) == stored) << "another road";
        EXPECT_TRUE(run.outcome == expected) << "once there is memory again";
        EXPECT_TRUE(BytesOf(run.answered) == answered) << "another answer";
        EXPECT_TRUE(Entered(run.road) == enteredAfter) << "other design data than without a failure";
        EXPECT_TRUE(Written() == written) << "other files than without a failure";
        EXPECT_TRUE(AreThoseOf(Answers(run.road), answers.back(), run.HasStakes())) << "other answers";
        return allocations.failed > 0;
    }

    /// Whether what was read stays, as only the design run behind it failed.
    static bool Kept(const Trial& run) { return It().name == "OpenProject2" && run.Status() == KESTO_OUT_OF_MEMORY; }

    /// After a failure: nothing is written, and the road is as before but for what is derived.
    void ExpectWhole(const Trial& run) {
        const bool kept = Kept(run);
        const bool isFile = It().gives == Gives::Status && !kept;
        EXPECT_EQ(run.Status(), isFile ? KESTO_FILE_OUT_OF_MEMORY : KESTO_OUT_OF_MEMORY);
        EXPECT_TRUE(run.outcome.failed || It().gives == Gives::None || It().gives == Gives::Whole);
        EXPECT_TRUE(BytesOf(run.answered) == BytesOf(run.arguments)) << "an output is written";
        EXPECT_TRUE(Entered(run.road) == (kept ? enteredAfter : entered)) << "other design data";
        const bool generatedAnew = GetRoadDesignMode(run.road) != 1;
        EXPECT_TRUE(kept || generatedAnew || std::ranges::count(elements, ElementBytes(run.road)) > 0)
            << "half a build";
        const std::vector<StakeCoordinate> stakes = Stakes(run.road);
        EXPECT_TRUE(std::ranges::all_of(stakes, [](const auto& stake) { return stake.name[0] != '\0'; }));
    }

    /// Asking makes the road current: it answers as the old one or as the new one.
    void ExpectAnOldAnswer(const Trial& run) {
        const auto now = Answers(run.road);
        EXPECT_TRUE(std::ranges::any_of(answers, [&](auto& old) { return AreThoseOf(now, old, run.HasStakes()); }))
            << "neither the old road nor the new";
    }

    Outcome expected;
    std::int32_t status = 0;
    std::string entered, enteredAfter, answered, stored, written;
    std::vector<std::string> elements;              // as they may stand
    std::vector<std::vector<std::string>> answers;  // that may be given; last those of the road afterwards
    static inline int attempts = 0;                 // of all calls
    static inline int told = 0;                     // by a failure; the others are done without the memory
};

TEST_P(AllocationFailures, LeaveTheDesignDataWhole) {
    for (Road (*prepare)() : RoadsFor(It())) {
        RunUndisturbed(prepare);
        for (const Failing failing : {Failing::Once, Failing::ForGood}) {
            bool failed = true;
            for (int n = 0; failed; ++n) {
                ASSERT_LT(n, 10000);
                ASSERT_FALSE(HasFailure());
                SCOPED_TRACE("allocation " + std::to_string(n + 1) + " fails" +
                             (failing == Failing::Once ? "" : " for good"));
                const std::int64_t before = LiveAllocations();
                failed = Attempt(prepare, n, failing);
                EXPECT_TRUE(HasFailure() || LiveAllocations() == before) << "a leak";
            }
        }
    }
}

std::vector<const Call*> CallsWithARoad() {
    std::vector<const Call*> all;
    for (const Call& call : Calls()) {
        if (call.HasHandle() && call.name != "EndRoadDesign" && call.name != "GetLastFailure") all.push_back(&call);
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Calls, AllocationFailures, testing::ValuesIn(CallsWithARoad()),
                         [](const auto& each) { return std::string(each.param->name); });

TEST(AllocationFailure, OfANewRoadGivesNoRoad) {
    FailAllocations(0, Failing::Once);
    RoadDesign* road = StartRoadDesign();
    EXPECT_GT(StopFailing().made, 0);
    EXPECT_EQ(road, nullptr);
    road = StartRoadDesign();
    FailAllocations(0, Failing::ForGood);
    EndRoadDesign(road);
    EXPECT_EQ(StopFailing().made, 0);
}

TEST(Batches, AllocateNothingOnceTheRoadIsCurrent) {
    const Road road = RoadWithSections();
    constexpr std::int32_t n = 200;
    std::vector<double> mileages(n), offsets(n), x(n), y(n), z(n);
    std::vector<std::int32_t> occurrences(n);
    std::vector<std::uint8_t> statuses(n);
    for (std::size_t i = 0; i < mileages.size(); ++i) {
        mileages[i] = 8.0 * static_cast<double>(i);  // the last ones lie beyond the road
        offsets[i] = i % 3 == 0 ? 0.0 : 2.5;
    }
    const auto askAll = [&] {
        const double* const m = mileages.data();
        const double* const o = offsets.data();
        std::uint8_t* const status = statuses.data();
        return GetPositionAndAzimuthBatch(road, n, m, 8, nullptr, 0, o, 8, nullptr, 0, x.data(), 8, y.data(), 8,
                                          z.data(), 8, status, 1) &&
               GetMileageAndOffsetBatch(road, n, m, 8, o, 8, x.data(), 8, y.data(), 8, occurrences.data(), 4, status,
                                        1) &&
               GetHeightBatch(road, n, m, 8, nullptr, 0, o, 8, z.data(), 8, status, 1);
    };
    ASSERT_TRUE(askAll());
    static_cast<RoadDesign*>(road)
        ->verticalCurves.Edit();  // the profile is to be derived anew, in the room that it has
    FailAllocations(0, Failing::ForGood);
    const bool done = askAll();
    EXPECT_EQ(StopFailing().made, 0);
    EXPECT_TRUE(done);
}

}  // namespace
}  // namespace kesto::test
