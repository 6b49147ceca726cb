// Every exported function with a null handle, and with each needed pointer null.
#include <fstream>
#include <set>
#include <tuple>
#include <type_traits>
#include <utility>

#include "road.hpp"

namespace kesto::test {
namespace {

template <class Argument>
std::string BytesBehind(const Argument& argument) {
    if constexpr (std::is_pointer_v<Argument>) {
        return argument == nullptr ? std::string() : Bytes(argument);
    } else {
        return {};
    }
}

class NullTable {
public:
    NullTable() : road(MakeRoad({Straight(100), Arc(right, 200, 100)})) {
        const Intersection intersection{};
        const Coordinate coordinate{};
        EXPECT_TRUE(AddIntersection(road, &intersection, -1));
        EXPECT_TRUE(AddCoordinate(road, &coordinate, -1));
        AddChain(road, 50, 60);
        AddGradePoints(road, {GradePoint(0, 5), GradePoint(150, 8)});
        EXPECT_TRUE(DesignRoad(road));
        AddPlates(road, right, {Plate(3, -2)});
        const SectionMileageIndex entry{};
        EXPECT_TRUE(AddSectionMileageIndex(road, &entry));
        const double value = 4;
        EXPECT_TRUE(AddChangeSectionList(road, 20, right, 1, &value, 1, 0, 2));
    }

    /// A function that has no pointer but the handle, or only pointers that may be null.
    template <class Result, class... Arguments>
    void HandleOnly(const char* name, Result (*function)(RoadDesign*, Arguments...), Result failing,
                    std::type_identity_t<Arguments>... arguments) {
        SCOPED_TRACE(name);
        names.insert(name);
        const std::string before = (std::string() + ... + BytesBehind(arguments));
        EXPECT_EQ(function(nullptr, arguments...), failing);
        EXPECT_EQ((std::string() + ... + BytesBehind(arguments)), before) << "written for a null handle";
    }

    template <class... Arguments>
    void HandleOnly(const char* name, void (*function)(RoadDesign*, Arguments...),
                    std::type_identity_t<Arguments>... arguments) {
        names.insert(name);
        function(nullptr, arguments...);
    }

    /// A function that needs every pointer among its arguments but those that are null from the start.
    template <class Result, class... Arguments>
    void Needs(const char* name, Result (*function)(RoadDesign*, Arguments...), Result failing, std::int32_t status,
               std::type_identity_t<Arguments>... arguments) {
        HandleOnly(name, function, failing, arguments...);
        [&]<std::size_t... Positions>(std::index_sequence<Positions...>) {
            (WithNull<Positions>(name, function, failing, status, std::tuple<Arguments...>(arguments...)), ...);
        }
        (std::index_sequence_for<Arguments...>());
    }

    /// The same of a frozen road: the status is the result.
    template <class... Arguments>
    void NeedsFrozen(const char* name, std::int32_t (*function)(const FrozenRoad*, Arguments...),
                     std::type_identity_t<Arguments>... arguments) {
        SCOPED_TRACE(name);
        names.insert(name);
        const std::string before = Behind(std::tuple<Arguments...>(arguments...));
        EXPECT_EQ(function(nullptr, arguments...), KESTO_NULL_HANDLE_OR_PATH);
        const FrozenRoad* const frozen = FreezeRoad(road);
        [&]<std::size_t... Positions>(std::index_sequence<Positions...>) {
            (
                [&] {
                    std::tuple<Arguments...> some(arguments...);
                    auto& one = std::get<Positions>(some);
                    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(one)>>) {
                        if (one == nullptr) return;
                        one = nullptr;
                        EXPECT_EQ(std::apply([&](auto... each) { return function(frozen, each...); }, some),
                                  KESTO_NULL_ARGUMENT)
                            << "argument " << Positions + 1;
                    }
                }(),
                ...);
        }
        (std::index_sequence_for<Arguments...>());
        EXPECT_EQ(Behind(std::tuple<Arguments...>(arguments...)), before) << "changed";
        ReleaseFrozenRoad(frozen);
    }

    void Named(const char* name) { names.insert(name); }
    const std::set<std::string>& Names() const { return names; }
    RoadDesign* Handle() const { return road; }

private:
    template <std::size_t Position, class Function, class Result, class Arguments>
    void WithNull(const char* name, Function function, Result failing, std::int32_t status, Arguments arguments) {
        if constexpr (std::is_pointer_v<std::tuple_element_t<Position, Arguments>>) {
            SCOPED_TRACE(std::string(name) + ", argument " + std::to_string(Position + 1));
            if (std::get<Position>(arguments) == nullptr) return;  // an argument that need not be given
            std::get<Position>(arguments) = nullptr;
            EXPECT_FALSE(DeleteElement(road, -1));  // leaves another reason than the one awaited
            const std::string before = Snapshot(road) + Behind(arguments);
            EXPECT_EQ(std::apply([&](auto... each) { return function(road, each...); }, arguments), failing);
            EXPECT_EQ(Snapshot(road) + Behind(arguments), before) << "changed";
            EXPECT_EQ(LastFailure(road).status, status);
        }
    }

    template <class Arguments>
    static std::string Behind(const Arguments& arguments) {
        const auto bytes = [](const auto& each) {
            if constexpr (std::is_pointer_v<std::remove_cvref_t<decltype(each)>>) {
                return each == nullptr ? std::string() : Bytes(each);
            } else {
                return std::string();
            }
        };
        return std::apply([&](const auto&... each) { return (std::string() + ... + bytes(each)); }, arguments);
    }

    Road road;
    std::set<std::string> names;
};

struct Outputs {
    double a = 11, b = 12, c = 13, d = 14;
    std::int32_t k = 14;
    Intersection intersection{};
    Element element{};
    Coordinate coordinate{};
    BrokenChain chain{15, 16};
    VerticalCurve curve{};
    EaseParam ease{};
    StakeCoordinate stake{};
    Failure failure{};
    SectionPlate plate{};
    SectionMileageIndex entry{};
    DoubleArray values{&a, 1, 1};
    Int32Array flags{&k, 1, 1};
    SectionPlateArray plates{&plate, 1, 1};
};

void WalkModel(NullTable& table, Outputs& out) {
    table.HandleOnly("EndRoadDesign", EndRoadDesign);
    table.HandleOnly("ClearRoad", ClearRoad);
    table.Needs("GetLastFailure", GetLastFailure, false, KESTO_INDEX_OUT_OF_RANGE, &out.failure);  // records nothing
    table.HandleOnly("SetStartInformation", SetStartInformation, false, 1, 2, 3);
    table.HandleOnly("SetStartMileage", SetStartMileage, 1);
    table.HandleOnly("SetMileageInterval", SetMileageInterval, 1);
    table.HandleOnly("SetMakeStakeType", SetMakeStakeType, 1);
    table.HandleOnly("SetMakeStakePerfix", SetMakeStakePerfix, "K");
    table.HandleOnly("GetMakeStakePerfix", GetMakeStakePerfix, static_cast<const char*>(nullptr));
    table.HandleOnly("GetMakeStakeInfo", GetMakeStakeInfo, 0, &out.a);
    table.HandleOnly("SetRoadDesignMode", SetRoadDesignMode, 1);
    table.HandleOnly("GetRoadDesignMode", GetRoadDesignMode, 0);
    table.HandleOnly("SetVerticalCurveMode", SetVerticalCurveMode, 1);
    table.HandleOnly("GetVerticalCurveMode", GetVerticalCurveMode, 0);
    table.HandleOnly("SetSideSlopeMode", SetSideSlopeMode, 1);
    table.HandleOnly("GetSideSlopeMode", GetSideSlopeMode, 0);
    table.HandleOnly("SetSectionMode", SetSectionMode, 1);
    table.HandleOnly("GetSectionMode", GetSectionMode, 0);
}

void WalkLists(NullTable& table, Outputs& out) {
    constexpr std::int32_t null = KESTO_NULL_ARGUMENT;
    table.HandleOnly("GetIntersectionCount", GetIntersectionCount, 0);
    table.Needs("AddIntersection", AddIntersection, false, null, &out.intersection, -1);
    table.Needs("AddIntersectionList", AddIntersectionList, false, null, &out.intersection, 1);
    table.HandleOnly("DeleteIntersection", DeleteIntersection, false, 0);
    table.Needs("GetIntersection", GetIntersection, false, null, 0, &out.intersection);
    table.Needs("SetIntersection", SetIntersection, false, null, 0, &out.intersection);
    table.HandleOnly("GetElementCount", GetElementCount, 0);
    table.Needs("AddElement", AddElement, false, null, &out.element, -1);
    table.Needs("AddElementList", AddElementList, false, null, &out.element, 1);
    table.HandleOnly("DeleteElement", DeleteElement, false, 0);
    table.Needs("GetElement", GetElement, false, null, 0, &out.element);
    table.Needs("SetElement", SetElement, false, null, 0, &out.element);
    table.HandleOnly("GetCoordinateCount", GetCoordinateCount, 0);
    table.Needs("AddCoordinate", AddCoordinate, false, null, &out.coordinate, -1);
    table.Needs("AddCoordinateList", AddCoordinateList, false, null, &out.coordinate, 1);
    table.HandleOnly("DeleteCoordinate", DeleteCoordinate, false, 0);
    table.Needs("GetCoordinate", GetCoordinate, false, null, 0, &out.coordinate);
    table.Needs("SetCoordinate", SetCoordinate, false, null, 0, &out.coordinate);
    table.HandleOnly("GetBrokenChainCount", GetBrokenChainCount, 0);
    table.Needs("AddBrokenChain", AddBrokenChain, false, null, &out.chain);
    table.Needs("AddBrokenChainList", AddBrokenChainList, false, null, &out.chain, 1);
    table.HandleOnly("DeleteBrokenChain", DeleteBrokenChain, false, 0);
    table.Needs("GetBrokenChain", GetBrokenChain, false, null, 0, &out.chain);
    table.Needs("SetBrokenChain", SetBrokenChain, false, null, 0, &out.chain);
    table.HandleOnly("GetVerticalCurveCount", GetVerticalCurveCount, 0);
    table.Needs("AddVerticalCurve", AddVerticalCurve, false, null, &out.curve);
    table.Needs("AddVerticalCurveList", AddVerticalCurveList, false, null, &out.curve, 1);
    table.HandleOnly("DeleteVerticalCurve", DeleteVerticalCurve, false, 0);
    table.Needs("GetVerticalCurve", GetVerticalCurve, false, null, 0, &out.curve);
    table.Needs("SetVerticalCurve", SetVerticalCurve, false, null, 0, &out.curve);
}

void WalkSections(NullTable& table, Outputs& out) {
    constexpr std::int32_t null = KESTO_NULL_ARGUMENT;
    table.HandleOnly("GetStandardSectionPlateCount", GetStandardSectionPlateCount, 0, right);
    table.Needs("AddStandardSectionPlate", AddStandardSectionPlate, false, null, &out.plate, right, -1);
    table.Needs("AddStandardSectionPlateList", AddStandardSectionPlateList, false, null, &out.plate, 1, right);
    table.HandleOnly("DeleteStandardSectionPlate", DeleteStandardSectionPlate, false, right, 0);
    table.Needs("GetStandardSectionPlate", GetStandardSectionPlate, false, null, right, 0, &out.plate);
    table.Needs("SetStandardSectionPlate", SetStandardSectionPlate, false, null, right, 0, &out.plate);
    table.Needs("GetStandardSection", GetStandardSection, false, null, right, &out.plates);
    table.HandleOnly("GetSectionMileageIndexCount", GetSectionMileageIndexCount, 0);
    table.Needs("AddSectionMileageIndex", AddSectionMileageIndex, false, null, &out.entry);
    table.HandleOnly("DeleteSectionMileageIndex", DeleteSectionMileageIndex, false, 0);
    table.Needs("GetSectionMileageIndex", GetSectionMileageIndex, false, null, 0, &out.entry);
    table.Needs("SetSectionMileageIndex", SetSectionMileageIndex, false, null, 0, &out.entry);
    table.HandleOnly("GetChangeSectionCount", GetChangeSectionCount, 0, right, 1);
    table.Needs("AddChangeSection", AddChangeSection, false, null, 10, right, 1, &out.values, 0, 0);
    table.Needs("AddChangeSection2", AddChangeSection2, false, null, 10, right, 1, &out.values, &out.flags, 0, 0);
    table.Needs("AddChangeSectionList", AddChangeSectionList, false, null, 10, right, 1, &out.a, 1, 0, 0);
    table.Needs("AddChangeSectionList2", AddChangeSectionList2, false, null, 10, right, 1, &out.a, &out.k, 1, 0, 0);
    table.HandleOnly("DeleteChangeSection", DeleteChangeSection, false, right, 1, 0);
    table.Needs("GetChangeSection", GetChangeSection, false, null, right, 1, 0, &out.b, &out.values, &out.k);
    table.Needs("GetChangeSection2", GetChangeSection2, false, null, right, 1, 0, &out.b, &out.values, &out.flags,
                &out.k);
    table.Needs("SetChangeSection", SetChangeSection, false, null, right, 1, 0, 10, &out.values, 0, 0);
    table.Needs("SetChangeSection2", SetChangeSection2, false, null, right, 1, 0, 10, &out.values, &out.flags, 0, 0);
    table.Needs("GetChangeSectionType", GetChangeSectionType, false, null, right, 1, 0, &out.k);
    table.HandleOnly("SetChangeSectionType", SetChangeSectionType, false, right, 1, 0, 1);
    table.Needs("GetRoadSide", GetRoadSide, false, null, 10, 0, right, &out.plates);
    table.Needs("GetRoadSideNoHeight", GetRoadSideNoHeight, false, null, 10, 0, right, &out.plates);
}

void WalkQueries(NullTable& table, Outputs& out) {
    constexpr std::int32_t null = KESTO_NULL_ARGUMENT;
    table.Needs("GetElementPositionAndAzimuth", GetElementPositionAndAzimuth, false, null, &out.element, 0, &out.a,
                &out.b, &out.c);
    table.HandleOnly("GetIntersectionIndex", GetIntersectionIndex, 0, 10, 0);
    table.Needs("CalcEaseParam", CalcEaseParam, false, null, 0, 100, 20, &out.ease);
    table.Needs("GetSrcMileage", GetSrcMileage, false, null, &out.a, 0);
    table.HandleOnly("GetRoadMileage", GetRoadMileage, 0.0, &out.a);
    table.Needs("GetPositionAndAzimuth", GetPositionAndAzimuth, false, null, 10, 0, 90, &out.a, &out.b, &out.c, 0);
    table.Needs("GetMileageAndOffset", GetMileageAndOffset, false, null, 10, 1, &out.a, &out.b, &out.k);
    table.Needs("GetMileAndOffsetInLim", GetMileAndOffsetInLim, false, null, 10, 1, 0, 0, 40, 0, &out.a, &out.b,
                &out.k);
    table.Needs("GetNearbyStakeCoordinate", GetNearbyStakeCoordinate, false, null, 10, 1, &out.stake, &out.k);
    table.HandleOnly("UpdateData", UpdateData, false);
    table.HandleOnly("DesignRoad", DesignRoad, false);
    table.HandleOnly("GetStakeCoordinateCount", GetStakeCoordinateCount, 0);
    table.Needs("GetStakeCoordinate", GetStakeCoordinate, false, null, 0, &out.stake);
    table.Needs("GetHeight", GetHeight, false, null, 10, 0, 0, &out.a);
}

void WalkManyPoints(NullTable& table, Outputs& out) {
    constexpr std::int32_t null = KESTO_NULL_ARGUMENT;
    std::uint8_t status = 99;
    table.Needs("GetMileageAndOffsetBatch", GetMileageAndOffsetBatch, false, null, 1, &out.a, 8, &out.b, 8, &out.c, 8,
                &out.d, 8, &out.k, 4, &status, 1);
    table.Needs("GetPositionAndAzimuthBatch", GetPositionAndAzimuthBatch, false, null, 1, &out.a, 8, nullptr, 0,
                nullptr, 0, nullptr, 0, &out.b, 8, &out.c, 8, &out.d, 8, &status, 1);
    table.Needs("GetHeightBatch", GetHeightBatch, false, null, 1, &out.a, 8, nullptr, 0, nullptr, 0, &out.b, 8, &status,
                1);
    table.HandleOnly("FreezeRoad", FreezeRoad, static_cast<const FrozenRoad*>(nullptr));
    table.Named("ReleaseFrozenRoad");
    ReleaseFrozenRoad(nullptr);
    table.NeedsFrozen("FrozenGetMileageAndOffset", FrozenGetMileageAndOffset, 10, 1, &out.a, &out.b, &out.k);
    table.NeedsFrozen("FrozenGetMileAndOffsetInLim", FrozenGetMileAndOffsetInLim, 10, 1, 0, 0, 40, 0, &out.a, &out.b,
                      &out.k);
    table.NeedsFrozen("FrozenGetPositionAndAzimuth", FrozenGetPositionAndAzimuth, 10, 0, 90, &out.a, &out.b, &out.c, 0);
    table.NeedsFrozen("FrozenGetHeight", FrozenGetHeight, 10, 0, 0, &out.a);
    table.NeedsFrozen("FrozenGetSrcMileage", FrozenGetSrcMileage, &out.a, 0);
    table.NeedsFrozen("FrozenGetRoadSide", FrozenGetRoadSide, 10, 0, right, &out.plates);
    table.NeedsFrozen("FrozenGetRoadSideNoHeight", FrozenGetRoadSideNoHeight, 10, 0, right, &out.plates);
    table.NeedsFrozen("FrozenGetNearbyStakeCoordinate", FrozenGetNearbyStakeCoordinate, 10, 1, &out.stake, &out.k);
    table.NeedsFrozen("FrozenGetStakeCoordinate", FrozenGetStakeCoordinate, 0, &out.stake);
    table.NeedsFrozen("FrozenGetIntersectionIndex", FrozenGetIntersectionIndex, 10, 0, &out.k);
    table.Named("FrozenGetStakeCoordinateCount");
    EXPECT_EQ(FrozenGetStakeCoordinateCount(nullptr), 0);
    table.NeedsFrozen("FrozenGetMileageAndOffsetBatch", FrozenGetMileageAndOffsetBatch, 1, &out.a, 8, &out.b, 8, &out.c,
                      8, &out.d, 8, &out.k, 4, &status, 1);
    table.NeedsFrozen("FrozenGetPositionAndAzimuthBatch", FrozenGetPositionAndAzimuthBatch, 1, &out.a, 8, nullptr, 0,
                      nullptr, 0, nullptr, 0, &out.b, 8, &out.c, 8, &out.d, 8, &status, 1);
    table.NeedsFrozen("FrozenGetHeightBatch", FrozenGetHeightBatch, 1, &out.a, 8, nullptr, 0, nullptr, 0, &out.b, 8,
                      &status, 1);
}

TEST(NullArguments, EveryExportGivesItsFailureValue) {
    NullTable table;
    Outputs out;
    table.Named("StartRoadDesign");  // these three take no handle; null is nothing that they could be given
    table.Named("DescribeStatus");
    table.Named("KestoRoadVersion");
    WalkModel(table, out);
    WalkLists(table, out);
    WalkSections(table, out);
    WalkQueries(table, out);
    WalkManyPoints(table, out);
    constexpr std::int32_t refused = KESTO_NULL_HANDLE_OR_PATH;
    table.Needs("SaveProject", SaveProject, refused, refused, "null.road");
    std::int64_t size = 5;
    table.Needs("OpenProjectFromMemory", OpenProjectFromMemory, refused, refused, "K", 1);
    table.HandleOnly("SaveProjectToMemory", SaveProjectToMemory, refused, nullptr, 0, &size);
    EXPECT_EQ(SaveProjectToMemory(table.Handle(), nullptr, 0, nullptr), refused);
    table.Needs("SavePartProject", SavePartProject, refused, refused, "null.road", 0.0, 1.0, 0, 0);
    table.Needs("OpenProject", OpenProject, refused, refused, "null.road");
    table.Needs("OpenProject2", OpenProject2, refused, refused, "null.road");
    table.Needs("SaveWaterProject", SaveWaterProject, refused, refused, "null.watx");
    table.Needs("OpenWaterProject", OpenWaterProject, refused, refused, "null.watx");
    table.Needs("ExportLandXMLFile", ExportLandXMLFile, refused, refused, "null.xml");

    std::set<std::string> exported;
    std::ifstream list(KESTO_EXPORTS_LIST);
    for (std::string line; std::getline(list, line);) {
        if (!line.empty()) exported.insert(line);
    }
    EXPECT_EQ(table.Names(), exported) << "the table and the list of exported names differ";
}

TEST(NullArguments, SomePointersMayBeNull) {
    const Road road = MakeRoad({Straight(100)});
    SetMakeStakePerfix(road, "DK");
    SetMakeStakePerfix(road, nullptr);
    EXPECT_STREQ(GetMakeStakePerfix(road), "DK");
    SetMakeStakeType(road, 1);
    EXPECT_EQ(GetMakeStakeInfo(road, nullptr), 1);
    EXPECT_TRUE(DesignRoad(road));
    EXPECT_EQ(GetRoadMileage(road, nullptr), 100);
    EXPECT_TRUE(AddIntersectionList(road, nullptr, 0));
    EXPECT_TRUE(AddElementList(road, nullptr, -5));
    EXPECT_TRUE(AddCoordinateList(road, nullptr, 0));
    EXPECT_TRUE(AddBrokenChainList(road, nullptr, -1));
    EXPECT_TRUE(AddVerticalCurveList(road, nullptr, 0));
    EXPECT_EQ(LastFailure(road).status, KESTO_SUCCESS);
}

}  // namespace
}  // namespace kesto::test
