// Memory that runs out: every operation is repeated with its first, second, third ... allocation failing, until it
// succeeds; each time the design data are whole, and the next attempt does what an undisturbed one does.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "core/road_design.hpp"

namespace {

int allocationsLeft = -1;  // until one fails; negative: none does

void* Allocate(std::size_t size) noexcept {
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) return nullptr;
    return std::malloc(size > 0 ? size : 1);
}

// Through a pointer that compilers cannot see through: inlined, free() beside an operator new looks mismatched to them.
void (*const volatile release)(void*) = std::free;

}  // namespace

void* operator new(std::size_t size) {
    if (void* memory = Allocate(size)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }

namespace kesto {
namespace {

using Owned = std::unique_ptr<RoadDesign, decltype(&EndRoadDesign)>;

Element Straight(double length) {
    Element element{};
    element.type = 1;
    element.length = length;
    return element;
}

template <class Record>
std::string BytesOf(const CountedList<Record>& list) {
    const auto records = list.Records();
    return {reinterpret_cast<const char*>(records.data()), records.size_bytes()};
}

/// What a user has entered; neither the elements, which a build splits, nor what is derived.
std::string Entered(const RoadDesign& road) {
    std::string bytes = road.settings.stakePrefix + '|' + BytesOf(road.intersections) + '|' +
                        BytesOf(road.coordinates) + '|' + BytesOf(road.brokenChains) + '|';
    for (const VerticalCurve& curve : road.verticalCurves.Records()) {
        bytes += std::to_string(curve.mileage) + ' ' + std::to_string(curve.elevation) + ' ';
    }
    for (std::size_t side = 0; side < sideCount; ++side) {
        for (const SectionPlate& plate : road.sections.plates[side]) bytes += std::to_string(plate.width) + ' ';
        for (std::size_t kind = 0; kind < changeKindCount; ++kind) {
            bytes += '|';
            for (const auto& [mileage, section] : road.sections.changeSections[side][kind]) {
                bytes += std::to_string(mileage) + ':';
                for (const double value : section.values) bytes += std::to_string(value) + ' ';
                for (const std::int32_t flag : section.flags) bytes += std::to_string(flag) + ' ';
            }
            for (const auto& [mileage, type] : road.sections.transitionTypes[side][kind]) {
                bytes += std::to_string(mileage) + '=' + std::to_string(type) + ' ';
            }
        }
    }
    for (const SectionMileageIndex& entry : road.sections.mileageIndex) bytes += entry.stakeText;
    return bytes;
}

std::string Everything(const RoadDesign& road) {
    return Entered(road) + '|' + BytesOf(road.elements) + '|' + BytesOf(road.stakes) + '|' +
           BytesOf(road.verticalCurves) + '|' + std::to_string(road.totalLength);
}

/// A road whose every list is as full as its room, so that each addition allocates; the chain is not built.
Owned FullRoad() {
    Owned road(StartRoadDesign(), EndRoadDesign);
    SetRoadDesignMode(road.get(), 1);
    EXPECT_TRUE(SetStartInformation(road.get(), 0, 0, 0));
    for (int i = 0; i < 16; ++i) {
        const Intersection intersection{};
        const Coordinate coordinate{};
        const Element element = Straight(100);
        VerticalCurve curve{};
        curve.mileage = 100.0 * i;
        curve.elevation = i % 3;
        curve.radius = 500;
        EXPECT_TRUE(AddIntersection(road.get(), &intersection, -1));
        EXPECT_TRUE(AddCoordinate(road.get(), &coordinate, -1));
        if (i < 15) {
            EXPECT_TRUE(AddElement(road.get(), &element, -1));
            const BrokenChain chain{50.0 + 100 * i, 60.0 + 100 * i};
            EXPECT_TRUE(AddBrokenChain(road.get(), &chain));
        }
        road->verticalCurves.Insert(curve);
    }
    return road;
}

/// A road of one straight: writing it to disk again and again takes time.
Owned SmallRoad() {
    Owned road = FullRoad();
    for (std::int32_t i = GetElementCount(road.get()) - 1; i > 1; --i) EXPECT_TRUE(DeleteElement(road.get(), i));
    return road;
}

Owned FullRoadWithoutStart() {
    Owned road = FullRoad();
    EXPECT_TRUE(DeleteElement(road.get(), 0));
    const Element element = Straight(100);
    EXPECT_TRUE(AddElement(road.get(), &element, 0));
    return road;
}

Owned BuiltRoad() {
    Owned road = FullRoad();
    EXPECT_TRUE(UpdateData(road.get()));
    return road;
}

Owned DesignedRoad() {
    Owned road = FullRoad();
    EXPECT_TRUE(DesignRoad(road.get()));
    return road;
}

/// Plates and change sections of both kinds on the right, each as full as its room.
Owned RoadWithSections() {
    Owned road = DesignedRoad();
    const std::vector<SectionPlate> plates(4);
    EXPECT_TRUE(AddStandardSectionPlateList(road.get(), plates.data(), 4, 1));
    const double values[] = {1, 2, 3, 4};
    for (const double mileage : {20.0, 220.0, 420.0}) {
        EXPECT_TRUE(AddChangeSectionList(road.get(), mileage, 1, 0, values, 4, 0, 1));
        EXPECT_TRUE(AddChangeSectionList(road.get(), mileage, 1, 1, values, 4, 0, 2));
    }
    return road;
}

/// The same with a chain that is to be built again.
Owned UnbuiltRoadWithSections() {
    Owned road = RoadWithSections();
    road->totalLength = 0;
    return road;
}

struct Operation {
    const char* name;
    Owned (*prepare)();
    std::function<bool(RoadDesign*)> run;
    bool canFail = true;
    std::int32_t status = KESTO_OUT_OF_MEMORY;
};

template <class Record>
std::vector<Record> Several() {
    std::vector<Record> records(16);
    for (std::size_t i = 0; i < records.size(); ++i) {
        if constexpr (requires { records[i].backMileage; }) records[i].backMileage = 5000.0 + static_cast<double>(i);
        if constexpr (requires { records[i].elevation; }) records[i].mileage = 9000.0 - static_cast<double>(i);
    }
    return records;
}

bool Freezes(RoadDesign* road) {
    const FrozenRoad* const frozen = FreezeRoad(road);
    ReleaseFrozenRoad(frozen);
    return frozen != nullptr;
}

std::vector<Operation> Operations() {
    static const auto intersections = Several<Intersection>();
    static const auto elements = Several<Element>();
    static const auto coordinates = Several<Coordinate>();
    static const auto chains = Several<BrokenChain>();
    static const auto curves = Several<VerticalCurve>();
    static double x;
    static double y;
    static double z;
    static std::int32_t k;
    static std::uint8_t row;
    static const double seventy = 70;
    static const double one = 1;
    static StakeCoordinate stake;
    static SectionPlate plates[4];
    static SectionPlateArray side{plates, 0, 4};
    static double values[] = {9, 8, 7, 6};
    static const DoubleArray four{values, 4, 0};
    static const SectionMileageIndex entry{};
    static const std::string part = testing::TempDir() + "kesto_allocation.road";
    static const std::string document = testing::TempDir() + "kesto_allocation.xml";
    return {
        {"SetStartInformation", FullRoadWithoutStart, [](auto* h) { return SetStartInformation(h, 1, 2, 3); }},
        {"SetMakeStakePerfix", FullRoad,
         [](auto* h) {
             static const std::string prefix(100, 'p');
             SetMakeStakePerfix(h, prefix.c_str());
             return GetMakeStakePerfix(h) == prefix;
         }},
        {"AddIntersection", FullRoad, [](auto* h) { return AddIntersection(h, intersections.data(), 3); }},
        {"AddIntersectionList", FullRoad, [](auto* h) { return AddIntersectionList(h, intersections.data(), 16); }},
        {"AddElement", FullRoad, [](auto* h) { return AddElement(h, elements.data(), 3); }},
        {"AddElementList", FullRoad, [](auto* h) { return AddElementList(h, elements.data(), 16); }},
        {"AddCoordinate", FullRoad, [](auto* h) { return AddCoordinate(h, coordinates.data(), 3); }},
        {"AddCoordinateList", FullRoad, [](auto* h) { return AddCoordinateList(h, coordinates.data(), 16); }},
        {"AddBrokenChain", FullRoad, [](auto* h) { return AddBrokenChain(h, chains.data()); }},
        {"AddBrokenChainList", FullRoad, [](auto* h) { return AddBrokenChainList(h, chains.data(), 16); }},
        {"SetBrokenChain", FullRoad, [](auto* h) { return SetBrokenChain(h, 3, &chains[5]); }, false},
        {"AddVerticalCurve", DesignedRoad, [](auto* h) { return AddVerticalCurve(h, curves.data()); }},
        {"AddVerticalCurveList", DesignedRoad, [](auto* h) { return AddVerticalCurveList(h, curves.data(), 16); }},
        {"SetVerticalCurve", DesignedRoad, [](auto* h) { return SetVerticalCurve(h, 3, curves.data()); }, false},
        {"UpdateData", FullRoad, UpdateData},
        {"DesignRoad", FullRoad, DesignRoad},
        {"DesignRoad again", DesignedRoad, DesignRoad},
        {"GetSrcMileage", FullRoad,
         [](auto* h) {
             double m = 70;
             return GetSrcMileage(h, &m, 0);
         }},
        {"GetPositionAndAzimuth", BuiltRoad, [](auto* h) { return GetPositionAndAzimuth(h, 70, 1, 90, &x, &y, &z, 0); },
         false},
        {"GetMileageAndOffset", FullRoad, [](auto* h) { return GetMileageAndOffset(h, 70, 1, &x, &y, &k); }},
        {"GetMileAndOffsetInLim", FullRoad,
         [](auto* h) { return GetMileAndOffsetInLim(h, 70, 1, 0, 0, 900, 0, &x, &y, &k); }},
        {"GetNearbyStakeCoordinate", DesignedRoad,
         [](auto* h) { return GetNearbyStakeCoordinate(h, 70, 1, &stake, &k); }, false},
        {"GetMileageAndOffsetBatch", FullRoad,
         [](auto* h) { return GetMileageAndOffsetBatch(h, 20, &seventy, 0, &one, 0, &x, 0, &y, 0, &k, 0, &row, 0); }},
        {"GetPositionAndAzimuthBatch", FullRoad,
         [](auto* h) {
             return GetPositionAndAzimuthBatch(h, 20, &seventy, 0, nullptr, 0, nullptr, 0, nullptr, 0, &x, 0, &y, 0, &z,
                                               0, &row, 0);
         }},
        {"GetHeightBatch", FullRoad,
         [](auto* h) { return GetHeightBatch(h, 20, &seventy, 0, nullptr, 0, nullptr, 0, &x, 0, &row, 0); }},
        {"FreezeRoad", RoadWithSections, Freezes},
        {"FreezeRoad unbuilt", FullRoad, Freezes},
        {"GetHeight", FullRoad, [](auto* h) { return GetHeight(h, 70, 0, 0, &x); }},
        {"GetHeight on a plate", RoadWithSections, [](auto* h) { return GetHeight(h, 70, 0, 2, &x); }, false},
        {"GetRoadSide", RoadWithSections, [](auto* h) { return GetRoadSide(h, 70, 0, 1, &side); }},
        {"AddStandardSectionPlate", RoadWithSections, [](auto* h) { return AddStandardSectionPlate(h, plates, 1, 2); }},
        {"AddStandardSectionPlate unbuilt", UnbuiltRoadWithSections,
         [](auto* h) { return AddStandardSectionPlate(h, plates, 1, 2); }},
        {"AddStandardSectionPlateList", RoadWithSections,
         [](auto* h) { return AddStandardSectionPlateList(h, plates, 4, 1); }},
        {"DeleteStandardSectionPlate", RoadWithSections, [](auto* h) { return DeleteStandardSectionPlate(h, 1, 2); }},
        {"AddSectionMileageIndex", FullRoad, [](auto* h) { return AddSectionMileageIndex(h, &entry); }},
        {"AddChangeSection", RoadWithSections, [](auto* h) { return AddChangeSection(h, 120, 1, 0, &four, 0, 2); }},
        {"SetChangeSection", RoadWithSections, [](auto* h) { return SetChangeSection(h, 1, 0, 1, 220, &four, 0, 2); }},
        {"SetChangeSection elsewhere", RoadWithSections,
         [](auto* h) { return SetChangeSection(h, 1, 0, 1, 120, &four, 0, 2); }},
        {"SavePartProject", UnbuiltRoadWithSections,
         [](auto* h) { return SavePartProject(h, part.c_str(), 70, 410, 0, 0) == KESTO_SUCCESS; }, true,
         KESTO_FILE_OUT_OF_MEMORY},
        {"ExportLandXMLFile", SmallRoad,
         [](auto* h) { return ExportLandXMLFile(h, document.c_str()) == KESTO_SUCCESS; }, true,
         KESTO_FILE_OUT_OF_MEMORY},
    };
}

class AllocationFailures : public testing::TestWithParam<Operation> {};

TEST_P(AllocationFailures, LeaveTheDesignDataWhole) {
    const Operation& operation = GetParam();
    const Owned undisturbed = operation.prepare();
    ASSERT_TRUE(operation.run(undisturbed.get()));
    const std::string after = Everything(*undisturbed);
    const std::string built = BytesOf(BuiltRoad()->elements);
    int failures = 0;
    for (int n = 0;; ++n) {
        ASSERT_LT(n, 10000);
        SCOPED_TRACE("allocation " + std::to_string(n + 1) + " fails");
        const Owned road = operation.prepare();
        const std::string before = Entered(*road);
        const std::string elements = BytesOf(road->elements);
        allocationsLeft = n;
        const bool done = operation.run(road.get());
        const bool failed = allocationsLeft < 0;
        allocationsLeft = -1;
        if (!failed) {
            EXPECT_TRUE(done);
            break;
        }
        if (!done) {
            ++failures;
            ASSERT_TRUE(road->lastFailure);
            EXPECT_EQ(road->lastFailure->status, operation.status);
            EXPECT_EQ(Entered(*road), before);
            const std::string now = BytesOf(road->elements);
            EXPECT_TRUE(now == elements || now == built || now == BytesOf(undisturbed->elements)) << "half a build";
            EXPECT_TRUE(operation.run(road.get())) << "once there is memory again";
        }
        EXPECT_EQ(Everything(*road), after);
    }
    EXPECT_EQ(failures > 0, operation.canFail);
}

INSTANTIATE_TEST_SUITE_P(Operations, AllocationFailures, testing::ValuesIn(Operations()), [](const auto& each) {
    std::string name = each.param.name;
    std::erase(name, ' ');
    return name;
});

TEST(Batches, AllocateNothingOnceTheRoadIsCurrent) {
    const Owned road = RoadWithSections();
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
        return GetPositionAndAzimuthBatch(road.get(), n, m, 8, nullptr, 0, o, 8, nullptr, 0, x.data(), 8, y.data(), 8,
                                          z.data(), 8, status, 1) &&
               GetMileageAndOffsetBatch(road.get(), n, m, 8, o, 8, x.data(), 8, y.data(), 8, occurrences.data(), 4,
                                        status, 1) &&
               GetHeightBatch(road.get(), n, m, 8, nullptr, 0, o, 8, z.data(), 8, status, 1);
    };
    ASSERT_TRUE(askAll());
    road->verticalCurves.Edit();  // the profile is to be derived anew, in the room that it has
    allocationsLeft = 0;          // the next one fails, and counts down
    const bool done = askAll();
    const int left = allocationsLeft;
    allocationsLeft = -1;
    EXPECT_TRUE(done);
    EXPECT_EQ(left, 0);
}

TEST(AllocationFailure, OfANewRoadGivesNoRoad) {
    allocationsLeft = 0;
    RoadDesign* const road = StartRoadDesign();
    allocationsLeft = -1;
    EXPECT_EQ(road, nullptr);
}

}  // namespace
}  // namespace kesto
