// Every published figure of the sample alignments, within the tolerance published with it.
#include <cmath>

#include "support/published_roads.hpp"

namespace kesto::test {
namespace {

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
