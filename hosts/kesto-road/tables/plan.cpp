#include "tables/plan.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "road/conventions.hpp"
#include "road/cross_section.hpp"

namespace kesto::host {

namespace {

constexpr std::size_t fewestPoints = 2;
constexpr std::array<const char*, 3> typeNames{"straight", "arc", "spiral"};  // numbered from 1

void CheckElement(const CsvReader& reader, const Element& element) {
    if (element.type < straightType || element.type > spiralType)
        Refuse(reader, "the type is 1 (straight), 2 (arc) or 3 (spiral)");
    if (element.startRadius < 0 || element.endRadius < 0) {
        Refuse(reader, "a radius is not negative: the column 'turn' tells the side");
    }
    if (element.type == arcType && element.startRadius < infiniteRadius) Refuse(reader, "an arc needs a start_radius");
    if (element.type == spiralType && std::fabs(element.startRadius - element.endRadius) < infiniteRadius) {
        Refuse(reader, "a spiral needs two different radii (0 stands for infinite)");
    }
}

/// A radius or length: 0 where the cell is empty or the column is missing.
double Length(const CsvReader& reader, const std::string& column) {
    const double length = reader.OptionalReal(reader.Find(column)).value_or(0);
    if (length < 0) {
        Refuse(reader, "column '" + column + "' is negative: radii and lengths never are");
    }
    return length;
}

void RequirePoints(const std::string& path, std::size_t count, std::vector<std::string>& problems) {
    if (count >= fewestPoints || !problems.empty()) return;
    problems.push_back(path + ": a road needs two points, the table has " + (count == 0 ? "none" : "one"));
}

/// Tells what a point lacks for the element that starts there.
void CheckPoint(const FromLine<Coordinate>& row, bool hasTurn, std::vector<std::string>& problems) {
    const Coordinate& point = row.record;
    if (point.type == 0) problems.push_back(row.where + ": column 'type' is empty: straight, arc or spiral");
    if (point.type <= straightType) return;
    if (!hasTurn) problems.push_back(row.where + ": column 'turn' is empty: left or right");
    if (point.type == arcType && point.radius < infiniteRadius) {
        problems.push_back(row.where + ": an arc needs a radius");
    }
}

}  // namespace

StartRow ReadStart(RoadDesign* road, const std::string& path, std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto mileage = reader.Require("start_mileage");
    const auto chained = reader.Find("chained");
    StartRow start;
    int rows = 0;
    ForEachRow(reader, problems, [&] {
        if (++rows > 1) Refuse(reader, "a road has one start: remove this line");
        start.where = reader.Where();
        start.mileage = reader.Mileage(mileage, road);
        start.x = reader.OptionalReal(reader.Find("start_x"));
        start.y = reader.OptionalReal(reader.Find("start_y"));
        start.azimuth = reader.OptionalReal(reader.Find("start_azimuth_deg"));
        if (reader.OptionalInteger(chained).value_or(1) == 0) {
            Refuse(reader, "'chained' is 0: elements that stand alone make no road");
        }
    });
    if (rows == 0 && problems.empty()) problems.push_back(path + ": the line with the start is missing");
    return start;
}

std::vector<ElementRow> ReadElements(const std::string& path, std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto type = reader.Require("type");
    const auto turn = reader.Require("turn");
    const auto startRadius = reader.Require("start_radius");
    const auto endRadius = reader.Require("end_radius");
    const auto length = reader.Require("length");
    std::vector<ElementRow> rows;
    ForEachRow(reader, problems, [&] {
        ElementRow row;
        row.where = reader.Where();
        row.element.type = reader.OptionalInteger(type).value_or(0);
        row.element.turnDirection = reader.OptionalInteger(turn).value_or(0) == 0 ? 0 : 1;
        row.element.startRadius = reader.OptionalReal(startRadius).value_or(0);
        row.element.endRadius = reader.OptionalReal(endRadius).value_or(0);
        row.element.length = reader.Real(length);
        row.x = reader.OptionalReal(reader.Find("start_x"));
        row.y = reader.OptionalReal(reader.Find("start_y"));
        row.azimuth = reader.OptionalReal(reader.Find("start_azimuth_deg"));
        CheckElement(reader, row.element);
        rows.push_back(std::move(row));
    });
    if (rows.empty() && problems.empty()) problems.push_back(path + ": there are no elements");
    return rows;
}

std::vector<FromLine<BrokenChain>> ReadBrokenChains(RoadDesign* road, const std::string& path,
                                                    std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto back = reader.Require("back_mileage");
    const auto ahead = reader.Require("ahead_mileage");
    std::vector<FromLine<BrokenChain>> rows;
    ForEachRow(reader, problems, [&] {
        rows.push_back({{reader.Mileage(back, road), reader.Mileage(ahead, road)}, reader.Where()});
    });
    return rows;
}

std::vector<FromLine<Intersection>> ReadIntersections(const std::string& path, std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto x = reader.Require("x");
    const auto y = reader.Require("y");
    std::vector<FromLine<Intersection>> rows;
    ForEachRow(reader, problems, [&] {
        Intersection point{};
        CopyText(reader, "name", point.name);
        point.x = reader.Real(x);
        point.y = reader.Real(y);
        point.radius = Length(reader, "radius");
        point.spiralIn = Length(reader, "spiral_in");
        point.spiralOut = Length(reader, "spiral_out");
        point.radiusIn = Length(reader, "radius_in");
        point.radiusOut = Length(reader, "radius_out");
        rows.push_back({point, reader.Where()});
    });
    RequirePoints(path, rows.size(), problems);
    return rows;
}

std::vector<FromLine<Coordinate>> ReadPlanPoints(const std::string& path, bool straights,
                                                 std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto x = reader.Require("x");
    const auto y = reader.Require("y");
    const auto type = straights ? reader.Find("type") : reader.Require("type");
    const auto turn = reader.Find("turn");
    std::vector<FromLine<Coordinate>> rows;
    std::vector<bool> hasTurn;
    ForEachRow(reader, problems, [&] {
        Coordinate point{};
        CopyText(reader, "name", point.name);
        point.x = reader.Real(x);
        point.y = reader.Real(y);
        if (!reader.Text(type).empty()) point.type = Choice(reader, "type", typeNames, straightType);
        if (!reader.Text(turn).empty()) point.turnDirection = Choice(reader, "turn", sideNames);
        point.radius = Length(reader, "radius");
        rows.push_back({point, reader.Where()});
        hasTurn.push_back(!reader.Text(turn).empty());
    });
    RequirePoints(path, rows.size(), problems);
    for (std::size_t i = 0; !straights && i + 1 < rows.size(); ++i) CheckPoint(rows[i], hasTurn[i], problems);
    for (auto& row : rows)
        row.record.type =
            std::max(row.record.type, straightType);  // the last point has none, since no element starts there
    return rows;
}

}  // namespace kesto::host
