/// Roads through the interface: elements joined end to end, and answers as values.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/owned_road.hpp"
#include "support/records.hpp"

namespace kesto::test {

/// Where a road begins: point (m), azimuth (degrees), mileage (m).
struct Start {
    double x = 0;
    double y = 0;
    double azimuth = 0;
    double mileage = 0;
};

/// An unbuilt road of elements, each starting where and as the one before ends. Elements may be changed before use.
inline Road MakeRoad(const std::vector<Element>& elements, Start start = {}) {
    Road road;
    SetRoadDesignMode(road, 1);
    SetStartMileage(road, start.mileage);
    EXPECT_TRUE(SetStartInformation(road, start.x, start.y, start.azimuth));
    Start next = start;
    for (Element element : elements) {
        element.startX = next.x;
        element.startY = next.y;
        element.startAzimuth = next.azimuth;
        EXPECT_TRUE(AddElement(road, &element, -1));
        GetElementPositionAndAzimuth(road, &element, element.length, &next.x, &next.y, &next.azimuth);
    }
    return road;
}

inline void AddChain(RoadDesign* road, double back, double ahead) {
    const BrokenChain chain{back, ahead};
    EXPECT_TRUE(AddBrokenChain(road, &chain));
}

/// Straight of 1000 m heading north from (0, 0), mileage 0, broken at 400, chain built.
inline Road BrokenRoad(double ahead) {
    Road road = MakeRoad({Straight(1000)});
    AddChain(road, 400, ahead);
    EXPECT_TRUE(UpdateData(road));
    return road;
}

inline void AddGradePoints(RoadDesign* road, const std::vector<VerticalCurve>& points) {
    for (const VerticalCurve& point : points) EXPECT_TRUE(AddVerticalCurve(road, &point));
}

inline void AddPlates(RoadDesign* road, std::int32_t side, const std::vector<SectionPlate>& plates) {
    for (const SectionPlate& plate : plates) EXPECT_TRUE(AddStandardSectionPlate(road, &plate, side, -1));
}

/// The plates of a side with their edges; empty where there are none.
inline std::vector<SectionPlate> SideAt(RoadDesign* road, double mileage, std::int32_t side,
                                        std::int32_t occurrence = 0) {
    std::vector<SectionPlate> plates(20);
    SectionPlateArray array{plates.data(), 0, 20};
    plates.resize(GetRoadSide(road, mileage, occurrence, side, &array) ? static_cast<std::size_t>(array.count) : 0);
    return plates;
}

struct Point {
    bool found = false;
    double x = 0, y = 0, azimuth = 0;
};

inline Point PointAt(RoadDesign* road, double mileage, double offset = 0, std::int32_t occurrence = 0,
                     double angle = 90) {
    Point point;
    point.found = GetPositionAndAzimuth(road, mileage, offset, angle, &point.x, &point.y, &point.azimuth, occurrence);
    return point;
}

struct Foot {
    bool found = false;
    double mileage = -7, offset = -7;
    std::int32_t occurrence = -7;
};

inline Foot FootOf(RoadDesign* road, double x, double y) {
    Foot foot;
    foot.found = GetMileageAndOffset(road, x, y, &foot.mileage, &foot.offset, &foot.occurrence);
    return foot;
}

template <class Record>
std::string Bytes(const Record* record) {
    return {reinterpret_cast<const char*>(record), sizeof(Record)};
}

inline std::optional<double> Continuous(RoadDesign* road, double mileage, std::int32_t occurrence = 0) {
    const double before = mileage;
    if (GetSrcMileage(road, &mileage, occurrence)) return mileage;
    EXPECT_EQ(Bytes(&mileage), Bytes(&before)) << "output changed by a failure";
    return std::nullopt;
}

inline std::optional<double> HeightAt(RoadDesign* road, double mileage, std::int32_t occurrence = 0,
                                      double offset = 0) {
    double height = -7;
    if (GetHeight(road, mileage, occurrence, offset, &height)) return height;
    return std::nullopt;
}

/// The last failure; status 0 where there is none.
inline Failure LastFailure(RoadDesign* road) {
    Failure failure{};
    GetLastFailure(road, &failure);
    return failure;
}

template <class Record>
std::vector<Record> AllRecords(RoadDesign* road, std::int32_t (*count)(RoadDesign*),
                               bool (*get)(RoadDesign*, std::int32_t, Record*)) {
    std::vector<Record> records(static_cast<std::size_t>(count(road)));
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_TRUE(get(road, static_cast<std::int32_t>(i), &records[i]));
    }
    return records;
}

inline std::vector<StakeCoordinate> Stakes(RoadDesign* road) {
    return AllRecords(road, GetStakeCoordinateCount, GetStakeCoordinate);
}

inline std::vector<Element> Elements(RoadDesign* road) { return AllRecords(road, GetElementCount, GetElement); }

inline std::vector<BrokenChain> Chains(RoadDesign* road) {
    return AllRecords(road, GetBrokenChainCount, GetBrokenChain);
}

inline std::vector<VerticalCurve> Curves(RoadDesign* road) {
    return AllRecords(road, GetVerticalCurveCount, GetVerticalCurve);
}

inline std::vector<SectionPlate> Plates(RoadDesign* road, std::int32_t side) {
    std::vector<SectionPlate> plates(static_cast<std::size_t>(GetStandardSectionPlateCount(road, side)));
    for (std::size_t i = 0; i < plates.size(); ++i) {
        EXPECT_TRUE(GetStandardSectionPlate(road, side, static_cast<std::int32_t>(i), &plates[i]));
    }
    return plates;
}

inline std::vector<SectionMileageIndex> SectionMileages(RoadDesign* road) {
    return AllRecords(road, GetSectionMileageIndexCount, GetSectionMileageIndex);
}

/// Everything that can be read from a road without making it compute, as bytes: equal exactly when nothing changed.
inline std::string Snapshot(RoadDesign* road) {
    std::string bytes;
    const auto append = [&bytes](const auto& records) {
        for (const auto& record : records) bytes += Bytes(&record);
        bytes += '|';
    };
    append(AllRecords(road, GetIntersectionCount, GetIntersection));
    append(Elements(road));
    append(AllRecords(road, GetCoordinateCount, GetCoordinate));
    append(Chains(road));
    append(Curves(road));
    append(Stakes(road));
    append(SectionMileages(road));
    for (const std::int32_t side : {0, 1}) {
        append(Plates(road, side));
        for (const std::int32_t kind : {0, 1}) {
            std::int32_t type = 0;
            EXPECT_TRUE(GetChangeSectionType(road, side, kind, 0, &type));
            append(std::vector<std::int32_t>{GetChangeSectionCount(road, side, kind), type});
        }
    }
    double interval = 0;
    double startMileage = 0;
    const std::int32_t type = GetMakeStakeInfo(road, &interval);
    const double end = GetRoadMileage(road, &startMileage);
    append(std::vector<double>{interval, startMileage, end});
    append(std::vector<std::int32_t>{type, GetRoadDesignMode(road), GetVerticalCurveMode(road), GetSectionMode(road),
                                     GetSideSlopeMode(road)});
    return bytes + GetMakeStakePerfix(road);
}

}  // namespace kesto::test
