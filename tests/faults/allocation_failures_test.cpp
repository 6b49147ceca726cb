// Memory that runs out: every operation is repeated with its first, second, third ... allocation failing, alone or with
// all that follow, until it needs no more; each time the design data are whole, and the next attempt does what an
// undisturbed one does.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "allocation_operations.hpp"
#include "core/road_design.hpp"
#include "failing_allocations.hpp"

namespace kesto::test {
namespace {

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

std::string Everything(RoadDesign* road) { return Entered(road) + Snapshot(road); }

/// What a road answers to all kinds of questions, derived anew where it says that something is not current.
struct Answers {
    std::string line;
    std::string sections;  // none without a stake list
    bool operator==(const Answers&) const = default;
    bool IsOrLacksSectionsOf(const Answers& other) const {
        return line == other.line && (sections.empty() || sections == other.sections);
    }
};

Answers Ask(RoadDesign* road) {
    std::string bytes;
    std::string sections;
    for (double mileage = 5; mileage < 1300; mileage += 130) {
        if (const std::optional<double> place = Continuous(road, mileage)) bytes += Bytes(&*place);
        const Point point = PointAt(road, mileage, 2);
        const Foot foot = FootOf(road, mileage, 3);
        for (const double number : {point.x, point.y, point.azimuth, foot.mileage, foot.offset})
            bytes += Bytes(&number);
        if (const std::optional<double> height = HeightAt(road, mileage)) bytes += Bytes(&*height);
        if (const std::optional<double> height = HeightAt(road, mileage, 0, 1)) sections += Bytes(&*height);
        for (const SectionPlate& plate : SideAt(road, mileage, right)) sections += Bytes(&plate);
    }
    return {bytes, sections};
}

/// The folder of the operations without the projects to be opened: names and contents.
std::string Written() {
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(std::filesystem::path(FileAt("")).parent_path())) {
        if (file.path().stem() == "source") continue;
        std::ifstream content(file.path(), std::ios::binary);
        files.insert(file.path().filename().string() + ": " + std::string(std::istreambuf_iterator<char>(content), {}));
    }
    std::string all;
    for (const std::string& file : files) all += file + '\n';
    return all;
}

/// What an operation does where nothing fails.
struct Undisturbed {
    Answers before;        // of a road on which it is still to run
    Answers rebuilt;       // the same with a chain that was not current
    std::string entered;   // by the user, afterwards
    std::string elements;  // afterwards
    std::string after;     // everything
    Answers answers;       // of the road afterwards
    std::string written;
    Answer answer;
};

class AllocationFailures : public testing::TestWithParam<Operation> {
protected:
    AllocationFailures() { std::memset(&answer, 0, sizeof answer); }

    static void TearDownTestSuite() { std::printf("failing allocations: %d, failed calls: %d\n", attempts, told); }

    static void PutEarlierFile() {
        const Operation& operation = GetParam();
        if (operation.file != nullptr) std::ofstream(FileAt(operation.file)) << "earlier";
    }

    bool Run(RoadDesign* road) {
        std::memset(&answer, 0, sizeof answer);
        return GetParam().run(road, answer);
    }

    bool Answered(const Answer& other) const { return std::memcmp(&answer, &other, sizeof answer) == 0; }

    void RunUndisturbed() {
        const Road waiting = GetParam().prepare();
        expected.before = Ask(waiting);
        static_cast<RoadDesign*>(waiting)->totalLength = 0;
        expected.rebuilt = Ask(waiting);
        const Road road = GetParam().prepare();
        PutEarlierFile();
        ASSERT_TRUE(Run(road)) << LastFailure(road).status;
        expected.entered = Entered(road);
        expected.elements = ElementBytes(road);
        expected.after = Everything(road);
        expected.answers = Ask(road);
        expected.written = Written();
        std::memcpy(&expected.answer, &answer, sizeof answer);
    }

    static std::string ElementBytes(RoadDesign* road) {
        std::string bytes;
        for (const Element& element : Elements(road)) bytes += Bytes(&element);
        return bytes;
    }

    /// Runs the operation on a new road with an allocation failing. @return whether it got that far
    bool Attempt(int allowed, Failing failing) {
        const Road road = GetParam().prepare();
        PutEarlierFile();
        const std::string entered = Entered(road);
        const std::string elements = ElementBytes(road);
        const std::string written = Written();
        FailAllocations(allowed, failing);
        const bool done = Run(road);
        const Allocations allocations = StopFailing();
        if (!done) {
            ++failures;
            ++told;
            ExpectWhole(road, entered, elements);
            EXPECT_TRUE(Written() == written) << "a file is touched";
            const bool asks = failing == Failing::ForGood && !kept;  // which may make the road current
            const Answers answers = asks ? Ask(road) : expected.before;
            EXPECT_TRUE(std::ranges::any_of(std::array{&expected.before, &expected.rebuilt, &expected.answers},
                                            [&](auto* it) { return answers.IsOrLacksSectionsOf(*it); }))
                << "neither the old road nor the new";
            EXPECT_TRUE(Run(road)) << "once there is memory again";
        }
        EXPECT_TRUE(Answered(expected.answer));
        EXPECT_TRUE(Written() == expected.written) << "other files than without a failure";
        EXPECT_TRUE(failing == Failing::ForGood || Everything(road) == expected.after) << "another road";
        EXPECT_TRUE(Ask(road) == expected.answers) << "other answers than without a failure";
        if (allocations.failed > 0) ++attempts;
        return allocations.failed > 0;
    }

    /// After a failure: the reason is told, nothing is written, and the road is as before but for what is derived.
    void ExpectWhole(RoadDesign* road, const std::string& entered, const std::string& elements) {
        const std::int32_t status = LastFailure(road).status;
        kept = GetParam().keepsDesign && status == KESTO_OUT_OF_MEMORY;
        EXPECT_EQ(status, kept ? std::int32_t{KESTO_OUT_OF_MEMORY} : GetParam().status);
        const Answer blank = [] {
            Answer zeros;
            std::memset(&zeros, 0, sizeof zeros);
            return zeros;
        }();
        EXPECT_TRUE(Answered(blank)) << "an output is written";
        EXPECT_TRUE(Entered(road) == (kept ? expected.entered : entered)) << "other design data";
        const std::string now = ElementBytes(road);
        const auto built = [] {
            const Road undisturbed = GetParam().prepare();
            Continuous(undisturbed, 5);
            return ElementBytes(undisturbed);
        };
        const bool generatedAnew = GetRoadDesignMode(road) != 1 && static_cast<RoadDesign*>(road)->totalLength == 0;
        EXPECT_TRUE(kept || generatedAnew || now == elements || now == expected.elements || now == built())
            << "half a build";
        const std::vector<StakeCoordinate> stakes = Stakes(road);
        EXPECT_TRUE(std::ranges::all_of(stakes, [](const auto& stake) { return stake.name[0] != '\0'; }));
    }

    Answer answer;
    Undisturbed expected;
    int failures = 0;
    static inline int attempts = 0;  // of all operations
    static inline int told = 0;      // by a failure; the others are done without the memory
    bool kept = false;
};

TEST_P(AllocationFailures, LeaveTheDesignDataWhole) {
    RunUndisturbed();
    for (const Failing failing : {Failing::Once, Failing::ForGood}) {
        bool failed = true;
        for (int n = 0; failed; ++n) {
            ASSERT_LT(n, 10000);
            ASSERT_FALSE(HasFailure());
            SCOPED_TRACE("allocation " + std::to_string(n + 1) + " fails" +
                         (failing == Failing::Once ? "" : " for good"));
            const std::int64_t before = LiveAllocations();
            failed = Attempt(n, failing);
            EXPECT_TRUE(HasFailure() || LiveAllocations() == before) << "a leak";
            EXPECT_TRUE(failed || n > 0) << "it allocates nothing: a row of the other table";
        }
    }
    EXPECT_EQ(failures > 0, GetParam().status != doesWithout);
}

INSTANTIATE_TEST_SUITE_P(Operations, AllocationFailures, testing::ValuesIn(AllocatingOperations()),
                         [](const auto& each) {
                             std::string name = each.param.name;
                             std::ranges::replace(name, ' ', '_');
                             return name;
                         });

TEST(AllocationFailure, IsImpossibleInTheOtherFunctions) {
    for (const Operation& operation : OtherOperations()) {
        SCOPED_TRACE(operation.name);
        Answer answer{};
        {
            const Road first = operation.prepare();  // what it keeps for good, as test data, is made now
            EXPECT_TRUE(operation.run(first, answer));
        }
        const Road road = operation.prepare();
        FailAllocations(0, Failing::ForGood);
        const bool done = operation.run(road, answer);
        EXPECT_EQ(StopFailing().made, 0);
        EXPECT_TRUE(done);
    }
    RoadDesign* const road = StartRoadDesign();
    const FrozenRoad* const frozen = FreezeRoad(RoadWithSections());
    FailAllocations(0, Failing::ForGood);
    EndRoadDesign(road);
    ReleaseFrozenRoad(frozen);
    EXPECT_EQ(StopFailing().made, 0);
}

TEST(AllocationFailure, OfANewRoadGivesNoRoad) {
    FailAllocations(0, Failing::Once);
    RoadDesign* const road = StartRoadDesign();
    EXPECT_GT(StopFailing().made, 0);
    EXPECT_EQ(road, nullptr);
}

TEST(AllocationFailure, IsTriedInEveryExportedFunction) {
    std::set<std::string> tried{"StartRoadDesign", "EndRoadDesign", "ReleaseFrozenRoad"};  // in tests of their own
    for (const Operation& operation : AllocatingOperations()) tried.insert(operation.Function());
    for (const Operation& operation : OtherOperations()) {
        EXPECT_TRUE(tried.insert(operation.Function()).second) << operation.name << " is in both tables";
    }
    std::ifstream list(KESTO_EXPORTS_LIST);
    const std::set<std::string> exported(std::istream_iterator<std::string>(list), {});
    EXPECT_EQ(tried, exported);
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
