// Roads from intersections and from points, and their table of straights, curves and turning angles.
#include <cmath>
#include <map>
#include <numbers>
#include <regex>

#include "program_run.hpp"

namespace kesto::test {
namespace {

using Row = std::map<std::string, std::string>;

class Curves : public ProgramTest {
protected:
    static std::vector<Row> Table(const std::filesystem::path& path) {
        const auto lines = Lines(ReadFile(path));
        std::vector<Row> rows;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const auto names = Fields(lines[0]);
            const auto cells = Fields(lines[i]);
            EXPECT_EQ(cells.size(), names.size()) << lines[i];
            Row row;
            for (std::size_t k = 0; k < std::min(cells.size(), names.size()); ++k) row[names[k]] = cells[k];
            rows.push_back(row);
        }
        return rows;
    }

    /// Lines of curves.csv by the names of the intersections.
    std::map<std::string, Row> Report(const std::string& make) const {
        const auto made = Run(make + " -o it.road");
        EXPECT_EQ(made.code, 0) << made.err;
        const auto run = Run("report it.road --decimals 6");
        EXPECT_EQ(run.code, 0) << run.err;
        std::map<std::string, Row> rows;
        for (const Row& row : Table(folder / "curves.csv")) rows[row.at("name")] = row;
        return rows;
    }

    static double Number(const Row& row, const std::string& column) {
        return row.at(column).empty() ? std::nan("") : std::stod(row.at(column));
    }
};

TEST_F(Curves, FiguresAreThoseOfTheTextbook) {
    // Shift and tangent offset of a spiral by their series, p = L^2 / 24 R - ..., q = L / 2 - L^3 / 240 R^2 + ...
    struct Case {
        const char *sample, *name;
        double deflection, radius, spiral, tolerance;
    };
    const Case cases[] = {{"instrument-manual", "IP1", -111.929588, 100, 64, 2e-4},
                          {"instrument-manual", "IP2", 95.869600, 200, 0, 1e-5},
                          {"mountain-road", "PI18", -23.020097, 304.8006096012, 71.6281432563, 1e-5}};
    for (const Case& it : cases) {
        const auto rows = Report(IntersectionTables(it.sample));
        const Row& row = rows.at(it.name);
        const double radius = it.radius;
        const double l = it.spiral;
        const double half = std::fabs(it.deflection) / 2 * std::numbers::pi / 180;
        const double p = l * l / (24 * radius) - std::pow(l, 4) / (2688 * std::pow(radius, 3));
        const double q =
            l / 2 - std::pow(l, 3) / (240 * radius * radius) + std::pow(l, 5) / (34560 * std::pow(radius, 4));
        EXPECT_NEAR(Number(row, "deflection"), it.deflection, 1e-6) << it.name;
        for (const char* column : {"tangent_in", "tangent_out"}) {
            EXPECT_NEAR(Number(row, column), (radius + p) * std::tan(half) + q, it.tolerance) << it.name;
        }
        EXPECT_NEAR(Number(row, "external"), (radius + p) / std::cos(half) - radius, it.tolerance) << it.name;
        EXPECT_NEAR(Number(row, "curve_length"), 2 * half * radius + l, it.tolerance) << it.name;
        EXPECT_NEAR(Number(row, "end_mileage") - Number(row, "begin_mileage"), Number(row, "curve_length"), 2e-6);
    }
}

TEST_F(Curves, StraightsAndCurvesAddUpAlongTheRoad) {
    double sum = 304.8006096012;
    for (const auto& [name, row] : Report(IntersectionTables("mountain-road"))) {
        for (const char* column : {"curve_length", "straight"}) {
            if (!row.at(column).empty()) sum += Number(row, column);
        }
    }
    EXPECT_NEAR(sum, 2883.1074605029, 1e-4);  // published: the end mileage
    EXPECT_EQ(ReadFile(folder / "it.road"), ReadFile(std::string(KESTO_SAMPLE_ROADS) + "/mountain-road.road"));
}

TEST_F(Curves, BrokenChainsKinksAndTouchingCurvesAreTold) {
    // Arcs of 100 m and 50 m over 90 degrees each touch after a side of 150 m; JD3 has no curve; the broken chain lies
    // inside the first arc, 10 m behind its begin.
    Write("i.csv", "x,y,radius,name\n0,0,,A\n200,0,100,JD1\n200,150,50,\n500,150,0,JD3\n500,400,,E\n");
    Write("start.csv", "start_mileage\n1000\n");
    Write("broken.csv", "back_mileage,ahead_mileage\n1110,1000\n");
    const auto rows = Report("make start.csv --intersections i.csv --broken broken.csv");
    const Row& first = rows.at("JD1");
    const Row& second = rows.at("3");
    const double pi = std::numbers::pi;
    EXPECT_NEAR(Number(first, "curve_length"), 50 * pi, 2e-6);
    EXPECT_NEAR(Number(first, "arc_middle_mileage"), 1000 + 25 * pi - 10, 2e-6);
    EXPECT_EQ(first.at("arc_middle_occurrence"), "1");
    EXPECT_EQ(first.at("begin_label") + first.at("end_label"), "ZYYY");
    EXPECT_NEAR(Number(first, "straight"), 0, 1e-6);
    EXPECT_EQ(second.at("begin_mileage"), first.at("end_mileage"));
    EXPECT_NEAR(Number(second, "deflection"), -90, 1e-6);
    EXPECT_NEAR(Number(second, "straight"), 250, 2e-6);
    EXPECT_EQ(rows.at("JD3").at("curve_length") + rows.at("JD3").at("begin_label"), "");
    EXPECT_NEAR(Number(rows.at("JD3"), "straight"), 250, 2e-6);
    EXPECT_NEAR(Number(rows.at("JD3"), "deflection"), 90, 1e-6);
}

TEST_F(Curves, MainPointsMakeTheRoadTheyCameFrom) {
    // The main points of the report, as points of a plan: the same road, whatever its tables are called.
    ASSERT_EQ(Run(IntersectionTables("instrument-manual") + " -o a.road").code, 0);
    ASSERT_EQ(Run("report a.road --decimals 9").code, 0);
    const std::map<std::string, std::string> elements = {
        {"QD", "straight,,"}, {"ZH", "3,0,"},    {"HY", "arc,left,100"}, {"YH", "spiral,left,100"},
        {"HZ", "1,,"},        {"ZY", "2,1,200"}, {"YZ", "straight,,"},   {"ZD", ",,"}};
    std::string plan = "x;y;type;turn;radius\n";
    std::string corners = "x,y\n";
    for (const Row& stake : Table(folder / "stakes.csv")) {
        const auto element = elements.find(stake.at("label"));
        if (element == elements.end()) continue;
        std::string line = stake.at("x") + "," + stake.at("y");
        corners += line + "\n";
        line += "," + element->second + "\n";
        std::replace(line.begin(), line.end(), ',', ';');
        plan += line;
    }
    Write("points.csv", plan);
    Write("corners.csv", corners);
    EXPECT_EQ(Run("make --points points.csv -o b.road").out,
              "b.road: 1555.633 m, 8 points, 0 broken chains, 0 grade-change points\n");
    EXPECT_EQ(Run("at b.road 700").out, Run("at a.road 700").out);
    const std::string straights = Run("make --points corners.csv --straights -o c.road").out;
    EXPECT_EQ(Run("make --intersections corners.csv -o d.road").out.substr(8, 9), straights.substr(8, 9));
    EXPECT_EQ(Run("report b.road").out.find("turning angles"), std::string::npos);
}

TEST_F(Curves, ThePlanShowsThePolygonOfARoadMadeFromIntersections) {
    ASSERT_EQ(Run(IntersectionTables("instrument-manual") + " -o it.road").code, 0);
    EXPECT_EQ(Run("plot it.road -o it.svg").out, "it.svg: plan 1:5000\n");
    const std::string picture = ReadFile(folder / "it.svg");
    const std::regex path("M ([0-9.]+) ([0-9.]+) L ([0-9.]+) ([0-9.]+) L ([0-9.]+) ([0-9.]+) L [0-9.]+ [0-9.]+ ?\"");
    int polygons = 0;
    for (std::sregex_iterator it(picture.begin(), picture.end(), path), end; it != end; ++it) {
        const auto at = [&](std::size_t i) { return std::stod((*it)[i]); };
        const double first = std::hypot(at(3) - at(1), at(4) - at(2));
        const double second = std::hypot(at(5) - at(3), at(6) - at(4));
        // The polygon's sides of 728.011 and 570.088 m, at 5 m to the millimetre.
        if (std::fabs(first - 145.602) < 0.01 && std::fabs(second - 114.018) < 0.01) ++polygons;
    }
    EXPECT_EQ(polygons, 1);
}

}  // namespace
}  // namespace kesto::test
