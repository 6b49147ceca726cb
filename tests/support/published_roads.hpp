/// The alignments of tests/data as roads.
#pragma once

#include <algorithm>
#include <filesystem>

#include "support/csv.hpp"
#include "support/road.hpp"

namespace kesto::test {

/// One folder of tests/data.
struct DataSet {
    std::string name;
    std::vector<Row> elements, chains, profile, expected;
    Start start;
    bool chained = false;
};

inline DataSet Load(const std::string& name) {
    const std::string folder = std::string(KESTO_TEST_DATA) + "/" + name + "/";
    DataSet data{name,
                 ReadCsv(folder + "elements.csv"),
                 ReadCsv(folder + "broken_chains.csv"),
                 ReadCsv(folder + "profile.csv"),
                 ReadCsv(folder + "expected.csv"),
                 {},
                 false};
    const Row start = ReadCsv(folder + "start.csv").at(0);
    data.chained = start.Whole("chained") == 1;
    data.start = {start.NumberOr("start_x", 0), start.NumberOr("start_y", 0), start.NumberOr("start_azimuth_deg", 0),
                  start.NumberOr("start_mileage", 0)};
    return data;
}

inline std::vector<std::string> DataSetNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(KESTO_TEST_DATA)) {
        if (std::filesystem::exists(entry.path() / "elements.csv")) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

inline Element ElementOf(const Row& row) {
    Element element{};
    element.type = row.Whole("type");
    element.turnDirection = static_cast<std::uint8_t>(row.Whole("turn"));
    element.startX = row.Number("start_x");
    element.startY = row.Number("start_y");
    element.startAzimuth = row.Number("start_azimuth_deg");
    element.startRadius = row.Number("start_radius");
    element.endRadius = row.Number("end_radius");
    element.length = row.Number("length");
    return element;
}

inline VerticalCurve CurveOf(const Row& row) {
    VerticalCurve curve =
        GradePoint(row.Number("mileage"), row.Number("elevation"), row.NumberOr("radius", 0), row.Whole("occurrence"));
    curve.startMileage = row.NumberOr("curve_start", 0);
    curve.startOccurrence = static_cast<std::int32_t>(row.NumberOr("curve_start_occurrence", -1));
    curve.endMileage = row.NumberOr("curve_end", 0);
    curve.endOccurrence = static_cast<std::int32_t>(row.NumberOr("curve_end_occurrence", -1));
    return curve;
}

/// The designed road: only the first start point of the elements counts.
inline Road Design(const DataSet& data, std::int32_t curveMode) {
    Road road;
    SetRoadDesignMode(road, 1);
    SetVerticalCurveMode(road, curveMode);
    SetStartMileage(road, data.start.mileage);
    EXPECT_TRUE(SetStartInformation(road, data.start.x, data.start.y, data.start.azimuth));
    for (const Row& row : data.elements) {
        Element element = ElementOf(row);
        if (GetElementCount(road) > 1) element.startX = element.startY = 0;
        EXPECT_TRUE(AddElement(road, &element, -1));
    }
    for (const Row& row : data.chains) AddChain(road, row.Number("back_mileage"), row.Number("ahead_mileage"));
    for (const Row& row : data.profile) AddGradePoints(road, {CurveOf(row)});
    EXPECT_TRUE(DesignRoad(road));
    return road;
}

}  // namespace kesto::test
