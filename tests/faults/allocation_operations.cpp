#include "allocation_operations.hpp"

#include <algorithm>
#include <array>

#include "core/result.hpp"
#include "core/road_design.hpp"
#include "support/temporary_folder.hpp"

namespace kesto::test {

namespace {

constexpr std::int32_t noMemoryForFile = KESTO_FILE_OUT_OF_MEMORY;
constexpr const char* name =
    "Stra\xDF"
    "e";  // in the code page that the executable pretends to be in

/// The files of the operations.
struct Files {
    TemporaryFolder folder{"kesto_allocation_"};
    std::string source = folder.At("source.road");
    std::string water = folder.At("source.watx");
    std::string saved = folder.At("saved.road");
    std::string savedWater = folder.At("saved.watx");
    std::string part = folder.At("part.road");
    std::string document = folder.At("document.xml");
};

const Files& TheFiles() {
    static const Files files;
    return files;
}

RoadDesign& Inside(RoadDesign* road) { return *road; }

/// A road whose every list is as full as its room, so that each addition allocates; the chain is not built.
Road FullRoad() {
    Road road = MakeRoad(std::vector<Element>(15, Straight(100)));
    Intersection intersection{};
    std::copy_n(name, 7, intersection.name);
    const Coordinate coordinate{};
    for (int i = 0; i < 16; ++i) {
        EXPECT_TRUE(AddIntersection(road, &intersection, -1));
        EXPECT_TRUE(AddCoordinate(road, &coordinate, -1));
        if (i < 15) AddChain(road, 50.0 + 100 * i, 60.0 + 100 * i);
        Inside(road).verticalCurves.Insert(GradePoint(100.0 * i, i % 3, 500));
    }
    return road;
}

Road FullRoadWithoutStart() {
    Road road = FullRoad();
    EXPECT_TRUE(DeleteElement(road, 0));
    const Element element = Straight(100);
    EXPECT_TRUE(AddElement(road, &element, 0));
    return road;
}

Road BuiltRoad() {
    Road road = FullRoad();
    EXPECT_TRUE(UpdateData(road));
    return road;
}

Road DesignedRoad() {
    Road road = FullRoad();
    EXPECT_TRUE(DesignRoad(road));
    return road;
}

/// Elements come from intersections, with arcs and spirals.
Road RoadOfIntersections() {
    Road road;
    const double points[][3] = {{0, 0, 0}, {400, 0, 150}, {700, 300, 150}, {1200, 300, 0}};
    for (const auto& [x, y, radius] : points) {
        Intersection point{};
        point.x = x;
        point.y = y;
        point.radius = radius;
        point.spiralIn = point.spiralOut = radius > 0 ? 40 : 0;
        EXPECT_TRUE(AddIntersection(road, &point, -1));
    }
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

/// The same with a chain that is to be built again.
Road UnbuiltRoadWithSections() {
    Road road = RoadWithSections();
    Inside(road).totalLength = 0;
    return road;
}

/// A road whose stakes have names that need memory of their own.
Road RoadWithALongPrefix() {
    Road road = FullRoad();
    SetMakeStakePerfix(road, "a prefix longer than any short string");
    const SectionMileageIndex entry{"", 10};
    EXPECT_TRUE(AddSectionMileageIndex(road, &entry));
    return road;
}

/// A few records: writing many to disk again and again takes time.
Road SmallRoad() {
    Road road = RoadOfIntersections();
    EXPECT_TRUE(DesignRoad(road));
    Intersection point{};
    EXPECT_TRUE(GetIntersection(road, 0, &point));
    std::copy_n(name, 7, point.name);
    EXPECT_TRUE(SetIntersection(road, 0, &point));
    AddGradePoints(road, {GradePoint(0, 5), GradePoint(500, 10, 2000), GradePoint(1000, 5)});
    AddPlates(road, right, {Plate(3, 2)});
    const double value = 4;
    EXPECT_TRUE(AddChangeSectionList(road, 20, right, 1, &value, 1, 0, 2));
    return road;
}

Road EmptyRoad() { return {}; }

/// A road that others are opened over, which are in their files from now on.
Road RoadBesideFiles() {
    static const bool written = [] {
        const Road road = SmallRoad();
        return SaveProject(road, TheFiles().source.c_str()) == KESTO_SUCCESS &&
               SaveWaterProject(road, TheFiles().water.c_str()) == KESTO_SUCCESS;
    }();
    EXPECT_TRUE(written);
    return RoadWithSections();
}

const std::string& ProjectBytes() {
    static const std::string bytes = [] {
        std::string text(16384, ' ');
        std::int64_t size = 0;
        EXPECT_EQ(SaveProjectToMemory(SmallRoad(), text.data(), 16384, &size), KESTO_SUCCESS);
        return text.substr(0, static_cast<std::size_t>(size));
    }();
    return bytes;
}

template <class Record>
const Record* Several() {
    static const std::vector<Record> made = [] {
        std::vector<Record> records(16);
        for (std::size_t i = 0; i < records.size(); ++i) {
            const auto at = static_cast<double>(i);
            if constexpr (requires { records[i].backMileage; }) records[i].backMileage = 5000 + at;
            if constexpr (requires { records[i].elevation; }) records[i].mileage = 9000 - at;
        }
        return records;
    }();
    return made.data();
}

/// Grade points before all others, each before the last one: their places are looked up among those of many.
const VerticalCurve* FallingPoints() {
    static const std::vector<VerticalCurve> made = [] {
        std::vector<VerticalCurve> points;
        for (int i = 0; i < 16; ++i) points.push_back(GradePoint(-10.0 - i, 1));
        return points;
    }();
    return made.data();
}

/// Freezes the road and asks the frozen one, which must have all that its answers need.
bool Freezes(RoadDesign* h, Answer& answer) {
    const FrozenRoad* const frozen = FreezeRoad(h);
    if (frozen != nullptr) {
        answer.count = FrozenGetMileageAndOffset(frozen, 20, 3, &answer.x, &answer.y, &answer.k) +
                       FrozenGetHeight(frozen, 20, 0, 0, &answer.z);
    }
    ReleaseFrozenRoad(frozen);
    return frozen != nullptr;
}

/// A frozen road that lasts as long as the process.
const FrozenRoad* Frozen() {
    static const std::unique_ptr<const FrozenRoad, decltype(&ReleaseFrozenRoad)> frozen(FreezeRoad(RoadWithSections()),
                                                                                        ReleaseFrozenRoad);
    return frozen.get();
}

/// The same with curves at intersections.
const FrozenRoad* FrozenCurves() {
    static const std::unique_ptr<const FrozenRoad, decltype(&ReleaseFrozenRoad)> frozen(FreezeRoad(SmallRoad()),
                                                                                        ReleaseFrozenRoad);
    return frozen.get();
}

/// A frozen road keeps no failure: its status is put where a road keeps it.
bool Told(RoadDesign* h, std::int32_t status) {
    if (status != KESTO_SUCCESS) h->lastFailure = Fail(static_cast<KestoStatus>(status));
    return status == KESTO_SUCCESS;
}

/// Asks more often than a road is walked along before an index is made.
template <class Ask>
bool Repeatedly(Ask ask) {
    bool answered = true;
    for (int i = 0; i < 20; ++i) answered = ask() && answered;
    return answered;
}

bool TakeSide(bool (*get)(RoadDesign*, double, std::int32_t, std::int32_t, SectionPlateArray*), RoadDesign* h,
              Answer& a) {
    SectionPlateArray side{a.plates, 0, 8};
    const bool taken = get(h, 70, 0, right, &side);
    a.count = side.count;
    return taken;
}

bool TakeFrozenSide(decltype(&FrozenGetRoadSide) get, RoadDesign* h, Answer& a) {
    SectionPlateArray side{a.plates, 0, 8};
    const bool taken = Told(h, get(Frozen(), 70, 0, right, &side));
    a.count = side.count;
    return taken;
}

bool TakeChange(RoadDesign* h, Answer& a, bool withFlags) {
    DoubleArray values{a.values, 0, 8};
    Int32Array flags{a.flags, 0, 8};
    const bool taken = withFlags ? GetChangeSection2(h, right, 0, 1, &a.x, &values, &flags, &a.k)
                                 : GetChangeSection(h, right, 0, 1, &a.x, &values, &a.k);
    a.count = values.count;
    return taken;
}

const double seventy = 70;
const double one = 1;
double fourValues[] = {9, 8, 7, 6};
std::int32_t fourFlags[] = {1, 0, 1, 0};
const DoubleArray values{fourValues, 4, 0};
const Int32Array flags{fourFlags, 4, 0};
const SectionPlate plates[4]{};
const SectionMileageIndex entry{"", 75};
constexpr const char* longPrefix = "another prefix longer than any short string";

// clang-format off
const Operation lists[] = {
    {"SetStartInformation", FullRoadWithoutStart, [](auto* h, auto&) { return SetStartInformation(h, 1, 2, 3); }},
    {"SetMakeStakePerfix", FullRoad, [](auto* h, auto&) { SetMakeStakePerfix(h, longPrefix); return std::string_view(GetMakeStakePerfix(h)) == longPrefix; }},
    {"AddIntersection", FullRoad, [](auto* h, auto&) { return AddIntersection(h, Several<Intersection>(), 3); }},
    {"AddIntersectionList", FullRoad, [](auto* h, auto&) { return AddIntersectionList(h, Several<Intersection>(), 16); }},
    {"AddElement", FullRoad, [](auto* h, auto&) { return AddElement(h, Several<Element>(), 3); }},
    {"AddElementList", FullRoad, [](auto* h, auto&) { return AddElementList(h, Several<Element>(), 16); }},
    {"AddCoordinate", FullRoad, [](auto* h, auto&) { return AddCoordinate(h, Several<Coordinate>(), 3); }},
    {"AddCoordinateList", FullRoad, [](auto* h, auto&) { return AddCoordinateList(h, Several<Coordinate>(), 16); }},
    {"AddBrokenChain", FullRoad, [](auto* h, auto&) { return AddBrokenChain(h, Several<BrokenChain>()); }},
    {"AddBrokenChainList", FullRoad, [](auto* h, auto&) { return AddBrokenChainList(h, Several<BrokenChain>(), 16); }},
    {"AddVerticalCurve", DesignedRoad, [](auto* h, auto&) { return AddVerticalCurve(h, Several<VerticalCurve>()); }},
    {"AddVerticalCurve before others", FullRoad, [](auto* h, auto&) { const VerticalCurve first = GradePoint(-5, 1); return AddVerticalCurve(h, &first); }},
    {"AddVerticalCurveList before others", FullRoad, [](auto* h, auto&) { return AddVerticalCurveList(h, FallingPoints(), 16); }},
    {"AddVerticalCurveList", DesignedRoad, [](auto* h, auto&) { return AddVerticalCurveList(h, Several<VerticalCurve>(), 16); }},
};

const Operation queries[] = {
    {"UpdateData", FullRoad, [](auto* h, auto&) { return UpdateData(h); }},
    {"DesignRoad", FullRoad, [](auto* h, auto&) { return DesignRoad(h); }},
    {"DesignRoad again", DesignedRoad, [](auto* h, auto&) { return DesignRoad(h); }},
    {"DesignRoad of intersections", RoadOfIntersections, [](auto* h, auto&) { return DesignRoad(h); }},
    {"DesignRoad of coordinates", RoadOfCoordinates, [](auto* h, auto&) { return DesignRoad(h); }},
    {"DesignRoad with long names", RoadWithALongPrefix, [](auto* h, auto&) { return DesignRoad(h); }},
    {"GetIntersectionIndex", RoadOfIntersections, [](auto* h, auto&) { return GetIntersectionIndex(h, 400, 0) == 1; }},
    {"GetSrcMileage", FullRoad, [](auto* h, auto& a) { double m = 70; const bool found = GetSrcMileage(h, &m, 0); a.x = found ? m : 0; return found && m > 0; }},
    {"GetPositionAndAzimuth", BuiltRoad, [](auto* h, auto& a) { return Repeatedly([&] { return GetPositionAndAzimuth(h, 70, 1, 90, &a.x, &a.y, &a.z, 0); }); }, doesWithout},
    {"GetMileageAndOffset", FullRoad, [](auto* h, auto& a) { return GetMileageAndOffset(h, 70, 1, &a.x, &a.y, &a.k); }},
    {"GetMileageAndOffset indexed", BuiltRoad, [](auto* h, auto& a) { return Repeatedly([&] { return GetMileageAndOffset(h, 70, 1, &a.x, &a.y, &a.k); }); }, doesWithout},
    {"GetMileAndOffsetInLim", RoadOfIntersections, [](auto* h, auto& a) { return GetMileAndOffsetInLim(h, 70, 1, 0, 0, 900, 0, &a.x, &a.y, &a.k); }},
    {"GetNearbyStakeCoordinate", DesignedRoad, [](auto* h, auto& a) { return GetNearbyStakeCoordinate(h, 70, 1, &a.stake, &a.k); }, doesWithout},
    {"GetMileageAndOffsetBatch", FullRoad, [](auto* h, auto& a) { return GetMileageAndOffsetBatch(h, 20, &seventy, 0, &one, 0, &a.x, 0, &a.y, 0, &a.k, 0, a.row, 0); }},
    {"GetPositionAndAzimuthBatch", FullRoad, [](auto* h, auto& a) { return GetPositionAndAzimuthBatch(h, 20, &seventy, 0, nullptr, 0, nullptr, 0, nullptr, 0, &a.x, 0, &a.y, 0, &a.z, 0, a.row, 0); }},
    {"GetHeightBatch", FullRoad, [](auto* h, auto& a) { return GetHeightBatch(h, 20, &seventy, 0, nullptr, 0, nullptr, 0, &a.x, 0, a.row, 0); }},
    {"FreezeRoad", RoadWithSections, Freezes},
    {"FreezeRoad unbuilt", FullRoad, Freezes},
    {"GetHeight", FullRoad, [](auto* h, auto& a) { return GetHeight(h, 70, 0, 0, &a.x); }},
};

const Operation sections[] = {
    {"GetRoadSide", RoadWithSections, [](auto* h, auto& a) { return TakeSide(GetRoadSide, h, a); }},
    {"GetRoadSideNoHeight", RoadWithSections, [](auto* h, auto& a) { return TakeSide(GetRoadSideNoHeight, h, a); }},
    {"FrozenGetRoadSide", EmptyRoad, [](auto* h, auto& a) { return TakeFrozenSide(FrozenGetRoadSide, h, a); }},
    {"FrozenGetRoadSideNoHeight", EmptyRoad, [](auto* h, auto& a) { return TakeFrozenSide(FrozenGetRoadSideNoHeight, h, a); }},
    {"FrozenGetIntersectionIndex", EmptyRoad, [](auto* h, auto& a) { return Told(h, FrozenGetIntersectionIndex(FrozenCurves(), 400, 0, &a.k)); }},
    {"AddStandardSectionPlate", RoadWithSections, [](auto* h, auto&) { return AddStandardSectionPlate(h, plates, right, 2); }},
    {"AddStandardSectionPlate unbuilt", UnbuiltRoadWithSections, [](auto* h, auto&) { return AddStandardSectionPlate(h, plates, right, 2); }},
    {"AddStandardSectionPlateList", RoadWithSections, [](auto* h, auto&) { return AddStandardSectionPlateList(h, plates, 4, right); }},
    {"DeleteStandardSectionPlate", RoadWithSections, [](auto* h, auto&) { return DeleteStandardSectionPlate(h, right, 2); }},
    {"DeleteStandardSectionPlate unbuilt", UnbuiltRoadWithSections, [](auto* h, auto&) { return DeleteStandardSectionPlate(h, right, 2); }},
    {"AddSectionMileageIndex", FullRoad, [](auto* h, auto&) { return AddSectionMileageIndex(h, &entry); }},
    {"SetSectionMileageIndex", RoadWithALongPrefix, [](auto* h, auto&) { return SetSectionMileageIndex(h, 0, &entry); }},
    {"AddChangeSection", RoadWithSections, [](auto* h, auto&) { return AddChangeSection(h, 120, right, 0, &values, 0, 2); }},
    {"AddChangeSection unbuilt", UnbuiltRoadWithSections, [](auto* h, auto&) { return AddChangeSection(h, 120, right, 0, &values, 0, 2); }},
    {"AddChangeSection2", RoadWithSections, [](auto* h, auto&) { return AddChangeSection2(h, 120, right, 0, &values, &flags, 0, 2); }},
    {"AddChangeSectionList", RoadWithSections, [](auto* h, auto&) { return AddChangeSectionList(h, 120, right, 0, fourValues, 4, 0, 2); }},
    {"AddChangeSectionList2", RoadWithSections, [](auto* h, auto&) { return AddChangeSectionList2(h, 120, right, 0, fourValues, fourFlags, 4, 0, 2); }},
    {"GetChangeSection", RoadWithSections, [](auto* h, auto& a) { return TakeChange(h, a, false); }},
    {"GetChangeSection2", UnbuiltRoadWithSections, [](auto* h, auto& a) { return TakeChange(h, a, true); }},
    {"SetChangeSection", RoadWithSections, [](auto* h, auto&) { return SetChangeSection(h, right, 0, 1, 220, &values, 0, 2); }},
    {"SetChangeSection elsewhere", RoadWithSections, [](auto* h, auto&) { return SetChangeSection(h, right, 0, 1, 120, &values, 0, 2); }},
    {"SetChangeSection2", UnbuiltRoadWithSections, [](auto* h, auto&) { return SetChangeSection2(h, right, 0, 1, 120, &values, &flags, 0, 2); }},
};

const Operation files[] = {
    {"SaveProject", SmallRoad, [](auto* h, auto&) { return SaveProject(h, TheFiles().saved.c_str()) == 0; }, noMemoryForFile, "saved.road"},
    {"SaveWaterProject", SmallRoad, [](auto* h, auto&) { return SaveWaterProject(h, TheFiles().savedWater.c_str()) == 0; }, noMemoryForFile, "saved.watx"},
    {"SaveProjectToMemory", RoadWithSections, [](auto* h, auto& a) { return SaveProjectToMemory(h, a.bytes, sizeof a.bytes, &a.size) == 0; }, noMemoryForFile},
    {"SavePartProject", SmallRoad, [](auto* h, auto&) { return SavePartProject(h, TheFiles().part.c_str(), 70, 410, 0, 0) == 0; }, noMemoryForFile, "part.road"},
    {"SavePartProject unbuilt", UnbuiltRoadWithSections, [](auto* h, auto&) { return SavePartProject(h, TheFiles().part.c_str(), 70, 410, 0, 0) == 0; }, noMemoryForFile, "part.road"},
    {"ExportLandXMLFile", SmallRoad, [](auto* h, auto&) { return ExportLandXMLFile(h, TheFiles().document.c_str()) == 0; }, noMemoryForFile, "document.xml"},
    {"OpenProject", RoadBesideFiles, [](auto* h, auto&) { return OpenProject(h, TheFiles().source.c_str()) == 0; }, noMemoryForFile},
    {"OpenProject2", RoadBesideFiles, [](auto* h, auto&) { return OpenProject2(h, TheFiles().source.c_str()) == 0; }, noMemoryForFile, nullptr, true},
    {"OpenWaterProject", RoadBesideFiles, [](auto* h, auto&) { return OpenWaterProject(h, TheFiles().water.c_str()) == 0; }, noMemoryForFile},
    {"OpenProjectFromMemory", RoadWithSections, [](auto* h, auto&) { return OpenProjectFromMemory(h, ProjectBytes().data(), static_cast<std::int64_t>(ProjectBytes().size())) == 0; }, noMemoryForFile},
};

const Operation others[] = {
    {"ClearRoad", RoadWithSections, [](auto* h, auto&) { ClearRoad(h); return true; }},
    {"DescribeStatus", EmptyRoad, [](auto*, auto&) { return DescribeStatus(16) != nullptr; }},
    {"KestoRoadVersion", EmptyRoad, [](auto*, auto&) { return KestoRoadVersion() != nullptr; }},
    {"GetLastFailure", EmptyRoad, [](auto* h, auto&) { Failure failure{}; return !DeleteElement(h, 0) && GetLastFailure(h, &failure) && failure.status == KESTO_INDEX_OUT_OF_RANGE; }},
    {"SetStartMileage", RoadWithSections, [](auto* h, auto&) { SetStartMileage(h, 5); return true; }},
    {"SetMileageInterval", RoadWithSections, [](auto* h, auto&) { SetMileageInterval(h, 5); return true; }},
    {"SetMakeStakeType", RoadWithSections, [](auto* h, auto&) { SetMakeStakeType(h, 1); return true; }},
    {"GetMakeStakePerfix", RoadWithSections, [](auto* h, auto&) { return GetMakeStakePerfix(h) != nullptr; }},
    {"GetMakeStakeInfo", RoadWithSections, [](auto* h, auto& a) { return GetMakeStakeInfo(h, &a.x) == 0 && a.x > 0; }},
    {"SetRoadDesignMode", RoadWithSections, [](auto* h, auto&) { SetRoadDesignMode(h, 2); return true; }},
    {"GetRoadDesignMode", RoadWithSections, [](auto* h, auto&) { return GetRoadDesignMode(h) == 1; }},
    {"SetVerticalCurveMode", RoadWithSections, [](auto* h, auto&) { SetVerticalCurveMode(h, 1); return true; }},
    {"GetVerticalCurveMode", RoadWithSections, [](auto* h, auto&) { return GetVerticalCurveMode(h) == 0; }},
    {"SetSideSlopeMode", RoadWithSections, [](auto* h, auto&) { SetSideSlopeMode(h, 1); return true; }},
    {"GetSideSlopeMode", RoadWithSections, [](auto* h, auto&) { return GetSideSlopeMode(h) == 0; }},
    {"SetSectionMode", RoadWithSections, [](auto* h, auto&) { SetSectionMode(h, 1); return true; }},
    {"GetSectionMode", RoadWithSections, [](auto* h, auto&) { return GetSectionMode(h) == 0; }},
    {"GetIntersectionCount", RoadWithSections, [](auto* h, auto&) { return GetIntersectionCount(h) == 16; }},
    {"DeleteIntersection", RoadWithSections, [](auto* h, auto&) { return DeleteIntersection(h, 0); }},
    {"GetIntersection", RoadWithSections, [](auto* h, auto&) { Intersection r; return GetIntersection(h, 0, &r); }},
    {"SetIntersection", RoadWithSections, [](auto* h, auto&) { return SetIntersection(h, 0, Several<Intersection>()); }},
    {"GetElementCount", RoadWithSections, [](auto* h, auto&) { return GetElementCount(h) > 16; }},
    {"DeleteElement", RoadWithSections, [](auto* h, auto&) { return DeleteElement(h, 1); }},
    {"GetElement", RoadWithSections, [](auto* h, auto&) { Element r; return GetElement(h, 0, &r); }},
    {"SetElement", RoadWithSections, [](auto* h, auto&) { return SetElement(h, 1, Several<Element>()); }},
    {"GetElementPositionAndAzimuth", RoadWithSections, [](auto* h, auto& a) { return GetElementPositionAndAzimuth(h, Several<Element>(), 0, &a.x, &a.y, &a.z); }},
    {"CalcEaseParam", RoadWithSections, [](auto* h, auto&) { EaseParam ease; return CalcEaseParam(h, 0, 100, 20, &ease); }},
    {"GetCoordinateCount", RoadWithSections, [](auto* h, auto&) { return GetCoordinateCount(h) == 16; }},
    {"DeleteCoordinate", RoadWithSections, [](auto* h, auto&) { return DeleteCoordinate(h, 0); }},
    {"GetCoordinate", RoadWithSections, [](auto* h, auto&) { Coordinate r; return GetCoordinate(h, 0, &r); }},
    {"SetCoordinate", RoadWithSections, [](auto* h, auto&) { return SetCoordinate(h, 0, Several<Coordinate>()); }},
    {"GetBrokenChainCount", RoadWithSections, [](auto* h, auto&) { return GetBrokenChainCount(h) == 15; }},
    {"DeleteBrokenChain", RoadWithSections, [](auto* h, auto&) { return DeleteBrokenChain(h, 0); }},
    {"GetBrokenChain", RoadWithSections, [](auto* h, auto&) { BrokenChain r; return GetBrokenChain(h, 0, &r); }},
    {"SetBrokenChain", RoadWithSections, [](auto* h, auto&) { return SetBrokenChain(h, 3, Several<BrokenChain>()); }},
    {"GetRoadMileage", RoadWithSections, [](auto* h, auto& a) { return GetRoadMileage(h, &a.x) > 0; }},
    {"GetStakeCoordinateCount", RoadWithSections, [](auto* h, auto&) { return GetStakeCoordinateCount(h) > 0; }},
    {"GetStakeCoordinate", RoadWithSections, [](auto* h, auto& a) { return GetStakeCoordinate(h, 0, &a.stake); }},
    {"GetVerticalCurveCount", RoadWithSections, [](auto* h, auto&) { return GetVerticalCurveCount(h) == 16; }},
    {"DeleteVerticalCurve", RoadWithSections, [](auto* h, auto&) { return DeleteVerticalCurve(h, 3); }},
    {"GetVerticalCurve", RoadWithSections, [](auto* h, auto&) { VerticalCurve r; return GetVerticalCurve(h, 0, &r); }},
    {"SetVerticalCurve", RoadWithSections, [](auto* h, auto&) { return SetVerticalCurve(h, 3, Several<VerticalCurve>()); }},
    {"GetStandardSectionPlateCount", RoadWithSections, [](auto* h, auto&) { return GetStandardSectionPlateCount(h, right) == 4; }},
    {"GetStandardSectionPlate", RoadWithSections, [](auto* h, auto& a) { return GetStandardSectionPlate(h, right, 0, a.plates); }},
    {"SetStandardSectionPlate", RoadWithSections, [](auto* h, auto&) { return SetStandardSectionPlate(h, right, 0, plates); }},
    {"GetStandardSection", RoadWithSections, [](auto* h, auto& a) { SectionPlateArray side{a.plates, 0, 8}; return GetStandardSection(h, right, &side); }},
    {"GetSectionMileageIndexCount", RoadWithALongPrefix, [](auto* h, auto&) { return GetSectionMileageIndexCount(h) == 1; }},
    {"GetSectionMileageIndex", RoadWithALongPrefix, [](auto* h, auto&) { SectionMileageIndex r; return GetSectionMileageIndex(h, 0, &r); }},
    {"DeleteSectionMileageIndex", RoadWithALongPrefix, [](auto* h, auto&) { return DeleteSectionMileageIndex(h, 0); }},
    {"GetChangeSectionCount", RoadWithSections, [](auto* h, auto&) { return GetChangeSectionCount(h, right, 0) == 3; }},
    {"DeleteChangeSection", RoadWithSections, [](auto* h, auto&) { return DeleteChangeSection(h, right, 0, 0); }},
    {"GetChangeSectionType", RoadWithSections, [](auto* h, auto& a) { return GetChangeSectionType(h, right, 0, 0, &a.k); }},
    {"SetChangeSectionType", RoadWithSections, [](auto* h, auto&) { return SetChangeSectionType(h, right, 0, 0, 2); }},
    {"FrozenGetMileageAndOffset", EmptyRoad, [](auto*, auto& a) { return FrozenGetMileageAndOffset(Frozen(), 70, 1, &a.x, &a.y, &a.k) == 0; }},
    {"FrozenGetMileAndOffsetInLim", EmptyRoad, [](auto*, auto& a) { return FrozenGetMileAndOffsetInLim(Frozen(), 70, 1, 0, 0, 900, 0, &a.x, &a.y, &a.k) == 0; }},
    {"FrozenGetPositionAndAzimuth", EmptyRoad, [](auto*, auto& a) { return FrozenGetPositionAndAzimuth(Frozen(), 70, 1, 90, &a.x, &a.y, &a.z, 0) == 0; }},
    {"FrozenGetHeight", EmptyRoad, [](auto*, auto& a) { return FrozenGetHeight(Frozen(), 70, 0, 1, &a.x) == 0; }},
    {"FrozenGetSrcMileage", EmptyRoad, [](auto*, auto& a) { a.x = 70; return FrozenGetSrcMileage(Frozen(), &a.x, 0) == 0; }},
    {"FrozenGetNearbyStakeCoordinate", EmptyRoad, [](auto*, auto& a) { return FrozenGetNearbyStakeCoordinate(Frozen(), 70, 1, &a.stake, &a.k) == 0; }},
    {"FrozenGetStakeCoordinateCount", EmptyRoad, [](auto*, auto&) { return FrozenGetStakeCoordinateCount(Frozen()) > 0; }},
    {"FrozenGetStakeCoordinate", EmptyRoad, [](auto*, auto& a) { return FrozenGetStakeCoordinate(Frozen(), 0, &a.stake) == 0; }},
    {"FrozenGetMileageAndOffsetBatch", EmptyRoad, [](auto*, auto& a) { return FrozenGetMileageAndOffsetBatch(Frozen(), 20, &seventy, 0, &one, 0, &a.x, 0, &a.y, 0, &a.k, 0, a.row, 0) == 0; }},
    {"FrozenGetPositionAndAzimuthBatch", EmptyRoad, [](auto*, auto& a) { return FrozenGetPositionAndAzimuthBatch(Frozen(), 20, &seventy, 0, nullptr, 0, &one, 0, nullptr, 0, &a.x, 0, &a.y, 0, &a.z, 0, a.row, 0) == 0; }},
    {"FrozenGetHeightBatch", EmptyRoad, [](auto*, auto& a) { return FrozenGetHeightBatch(Frozen(), 20, &seventy, 0, nullptr, 0, &one, 0, &a.x, 0, a.row, 0) == 0; }},
};
// clang-format on

}  // namespace

std::string Operation::Function() const { return std::string(name).substr(0, std::string_view(name).find(' ')); }

std::vector<Operation> AllocatingOperations() {
    std::vector<Operation> all;
    for (const std::span<const Operation> table : {std::span<const Operation>(lists), {queries}, {sections}, {files}}) {
        all.insert(all.end(), table.begin(), table.end());
    }
    return all;
}

std::vector<Operation> OtherOperations() { return {std::begin(others), std::end(others)}; }

Road RoadWithSections() {
    Road road = DesignedRoad();
    const std::vector<SectionPlate> standard(4, Plate(3, 2));
    EXPECT_TRUE(AddStandardSectionPlateList(road, standard.data(), 4, right));
    const double given[] = {1, 2, 3, 4};
    for (const double mileage : {20.0, 220.0, 420.0}) {
        EXPECT_TRUE(AddChangeSectionList(road, mileage, right, 0, given, 4, 0, 1));
        EXPECT_TRUE(AddChangeSectionList(road, mileage, right, 1, given, 4, 0, 2));
    }
    return road;
}

std::string FileAt(const std::string& file) { return TheFiles().folder.At(file); }

}  // namespace kesto::test
