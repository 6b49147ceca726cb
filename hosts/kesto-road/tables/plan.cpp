#include "tables/plan.hpp"

#include <algorithm>
#include <array>

#include "road/conventions.hpp"
#include "road/cross_section.hpp"
#include "tables/csv.hpp"
#include "tables/table_cells.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

constexpr std::size_t fewestPoints = 2;
constexpr std::array<const char*, 3> typeNames{"straight", "arc", "spiral"};  // numbered from 1

/// A radius or length: 0 where the cell is empty or the column is missing.
double Length(const CsvReader& reader, const std::string& column) {
    const double length = reader.OptionalReal(reader.Find(column)).value_or(0);
    if (length < 0) {
        throw Problem(ExitCode::Data,
                      reader.Where() + ": column '" + column + "' is negative: radii and lengths never are");
    }
    return length;
}

void RequirePoints(const std::string& path, std::size_t count, std::vector<std::string>& problems) {
    if (count >= fewestPoints || !problems.empty()) return;
    problems.push_back(path + ": a road needs two points, the table has " + (count == 0 ? "none" : "one"));
}

/// What a point needs for the element that starts there.
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
        row.record.type = std::max(row.record.type, straightType);  // no element starts at the last one
    return rows;
}

}  // namespace kesto::host
