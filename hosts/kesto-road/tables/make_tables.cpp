#include "tables/make_tables.hpp"

#include <algorithm>
#include <cmath>

#include "road/conventions.hpp"
#include "tables/csv.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

[[noreturn]] void Refuse(const CsvReader& reader, const std::string& what) {
    throw Problem(ExitCode::Data, reader.Where() + ": " + what);
}

void CheckElement(const CsvReader& reader, const Element& element) {
    if (element.type < 1 || element.type > 3) Refuse(reader, "the type is 1 (straight), 2 (arc) or 3 (spiral)");
    if (element.startRadius < 0 || element.endRadius < 0) {
        Refuse(reader, "a radius is not negative: the column 'turn' tells the side");
    }
    if (element.type == 2 && element.startRadius < infiniteRadius) Refuse(reader, "an arc needs a start_radius");
    if (element.type == 3 && std::fabs(element.startRadius - element.endRadius) < infiniteRadius) {
        Refuse(reader, "a spiral needs two different radii (0 stands for infinite)");
    }
}

/// Curve ends as a row gives them: both or none.
bool HasEnds(const CsvReader& reader, const std::optional<double>& start, const std::optional<double>& end) {
    if (start.has_value() != end.has_value()) Refuse(reader, "give both curve_start and curve_end, or neither");
    return start.has_value();
}

struct ProfileRow {
    FromLine<VerticalCurve> point;
    bool hasRadius, hasEnds;
};

ProfileRow ReadProfileRow(const CsvReader& reader, const std::string& prefix) {
    VerticalCurve curve{};
    curve.mileage = reader.Mileage(reader.Require("mileage"), prefix);
    curve.occurrence = reader.OptionalInteger(reader.Find("occurrence")).value_or(0);
    curve.elevation = reader.Real(reader.Require("elevation"));
    const auto radius = reader.OptionalReal(reader.Find("radius"));
    const auto start = reader.OptionalMileage(reader.Find("curve_start"), prefix);
    const auto end = reader.OptionalMileage(reader.Find("curve_end"), prefix);
    if (radius && *radius < 0) Refuse(reader, "a radius is not negative: crest or sag follows from the grades");
    const bool hasEnds = HasEnds(reader, start, end);
    curve.radius = radius.value_or(0);
    curve.startMileage = start.value_or(curve.mileage);
    curve.endMileage = end.value_or(curve.mileage);
    curve.startOccurrence =
        hasEnds ? reader.OptionalInteger(reader.Find("curve_start_occurrence")).value_or(0) : curve.occurrence;
    curve.endOccurrence =
        hasEnds ? reader.OptionalInteger(reader.Find("curve_end_occurrence")).value_or(0) : curve.occurrence;
    return {{curve, reader.Where()}, radius.has_value(), hasEnds};
}

}  // namespace

StartRow ReadStart(const std::string& path, const std::string& prefix, std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto mileage = reader.Require("start_mileage");
    const auto chained = reader.Find("chained");
    StartRow start;
    int rows = 0;
    ForEachRow(reader, problems, [&] {
        if (++rows > 1) Refuse(reader, "a road has one start: remove this line");
        start.where = reader.Where();
        start.mileage = reader.Mileage(mileage, prefix);
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

std::vector<FromLine<BrokenChain>> ReadBrokenChains(const std::string& path, const std::string& prefix,
                                                    std::vector<std::string>& problems) {
    CsvReader reader(path);
    const auto back = reader.Require("back_mileage");
    const auto ahead = reader.Require("ahead_mileage");
    std::vector<FromLine<BrokenChain>> rows;
    ForEachRow(reader, problems, [&] {
        rows.push_back({{reader.Mileage(back, prefix), reader.Mileage(ahead, prefix)}, reader.Where()});
    });
    return rows;
}

ProfileTable ReadProfile(const std::string& path, const std::string& prefix, std::vector<std::string>& problems) {
    CsvReader reader(path);
    (void)reader.Require("mileage");
    (void)reader.Require("elevation");
    std::vector<ProfileRow> rows;
    ForEachRow(reader, problems, [&] { rows.push_back(ReadProfileRow(reader, prefix)); });
    ProfileTable table;
    const bool byEnds =
        std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.hasEnds && !row.hasRadius; });
    table.mode = byEnds ? 1 : 0;
    for (const auto& row : rows) {
        if (byEnds && !row.hasEnds && row.point.record.radius > 0) {
            problems.push_back(
                row.point.where +
                ": the profile gives curves by their ends: this row needs curve_start and curve_end too");
        }
        table.points.push_back(row.point);
    }
    return table;
}

}  // namespace kesto::host
