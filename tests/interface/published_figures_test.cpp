// Every published figure of the sample alignments, within the tolerance published with it.
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "csv.hpp"
#include "road.hpp"

namespace kesto::test {
namespace {

/// One folder of tests/data.
struct DataSet {
    std::string name;
    std::vector<Row> elements, chains, profile, expected;
    Start start;
    bool chained = false;
};

DataSet Load(const std::string& name) {
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

std::vector<std::string> DataSetNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(KESTO_TEST_DATA)) {
        if (std::filesystem::exists(entry.path() / "elements.csv")) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

Element ElementOf(const Row& row) {
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

VerticalCurve CurveOf(const Row& row) {
    VerticalCurve curve =
        GradePoint(row.Number("mileage"), row.Number("elevation"), row.NumberOr("radius", 0), row.Whole("occurrence"));
    curve.startMileage = row.NumberOr("curve_start", 0);
    curve.startOccurrence = static_cast<std::int32_t>(row.NumberOr("curve_start_occurrence", -1));
    curve.endMileage = row.NumberOr("curve_end", 0);
    curve.endOccurrence = static_cast<std::int32_t>(row.NumberOr("curve_end_occurrence", -1));
    return curve;
}

/// The designed road: only the first start point of the elements counts.
Road Design(const DataSet& data, std::int32_t curveMode) {
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

double AzimuthDifference(double one, double other) { return std::remainder(one - other, 360.0); }

class PublishedFigures : public testing::TestWithParam<std::string> {
protected:
    const DataSet data = Load(GetParam());
    int checked = 0;
};

TEST_P(PublishedFigures, PointsOnSingleElements) {
    const Road road;
    for (const Row& row : data.expected) {
        if (row.Text("kind") != "point") continue;
        SCOPED_TRACE(row.Text("element") + " at " + row.Text("distance"));
        const Element element = ElementOf(data.elements.at(static_cast<std::size_t>(row.Whole("element") - 1)));
        Point point;
        ASSERT_TRUE(
            GetElementPositionAndAzimuth(road, &element, row.Number("distance"), &point.x, &point.y, &point.azimuth));
        EXPECT_NEAR(point.x, row.Number("x"), row.Number("tolerance_xy"));
        EXPECT_NEAR(point.y, row.Number("y"), row.Number("tolerance_xy"));
        EXPECT_NEAR(AzimuthDifference(point.azimuth, row.Number("azimuth_deg")), 0,
                    row.Number("tolerance_azimuth_deg"));
        ++checked;
    }
    const bool profileOnly = data.name.starts_with("profile-");
    EXPECT_EQ(checked == 0, profileOnly);
}

TEST_P(PublishedFigures, PointsAndStationsOfTheChainedRoad) {
    if (!data.chained) GTEST_SKIP() << "single elements";
    const Road road = Design(data, 0);
    for (const Row& row : data.expected) {
        SCOPED_TRACE(row.Text("kind") + " at " + row.Text("mileage"));
        if (row.Text("kind") == "point") {
            const Point point = PointAt(road, row.Number("mileage"), 0, row.Whole("occurrence"));
            ASSERT_TRUE(point.found);
            EXPECT_NEAR(point.x, row.Number("x"), row.Number("tolerance_chain_xy"));
            EXPECT_NEAR(point.y, row.Number("y"), row.Number("tolerance_chain_xy"));
        } else if (row.Text("kind") == "station") {
            constexpr double publishedDecimals = 1e-7;  // m: the pair is published to as many digits
            const auto continuous = Continuous(road, row.Number("mileage"), row.Whole("occurrence"));
            ASSERT_TRUE(continuous);
            EXPECT_NEAR(*continuous - data.start.mileage, row.Number("distance"), publishedDecimals);
        }
    }
}

TEST_P(PublishedFigures, HeightsByRadiusAndByGivenCurveEnds) {
    if (data.profile.empty()) GTEST_SKIP() << "plan only";
    const bool radiiKnown = std::none_of(data.profile.begin(), data.profile.end(),
                                         [](const Row& row) { return row.Text("radius").empty(); });
    for (std::int32_t mode = radiiKnown ? 0 : 1; mode <= 1; ++mode) {
        const Road road = Design(data, mode);
        for (const Row& row : data.expected) {
            if (row.Text("kind") != "height") continue;
            SCOPED_TRACE("mode " + std::to_string(mode) + " at " + row.Text("mileage"));
            const auto height = HeightAt(road, row.Number("mileage"), row.Whole("occurrence"));
            ASSERT_TRUE(height);
            EXPECT_NEAR(*height, row.Number("height"), row.Number("tolerance_height"));
            ++checked;
        }
    }
    EXPECT_GT(checked, 0);
}

INSTANTIATE_TEST_SUITE_P(SampleData, PublishedFigures, testing::ValuesIn(DataSetNames()), [](const auto& each) {
    std::string name = each.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

}  // namespace
}  // namespace kesto::test
