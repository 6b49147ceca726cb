#include "tables/profile.hpp"

#include <algorithm>
#include <optional>

namespace kesto::host {

namespace {

/// Whether a row gives the ends of its curve. @throws Problem when it gives one of them only
bool HasEnds(const CsvReader& reader, const std::optional<double>& start, const std::optional<double>& end) {
    if (start.has_value() != end.has_value()) Refuse(reader, "give both curve_start and curve_end, or neither");
    return start.has_value();
}

struct ProfileRow {
    FromLine<VerticalCurve> point;
    bool hasRadius, hasEnds;
};

ProfileRow ReadProfileRow(const CsvReader& reader, RoadDesign* road) {
    VerticalCurve curve{};
    curve.mileage = reader.Mileage(reader.Require("mileage"), road);
    curve.occurrence = reader.OptionalInteger(reader.Find("occurrence")).value_or(0);
    curve.elevation = reader.Real(reader.Require("elevation"));
    const auto radius = reader.OptionalReal(reader.Find("radius"));
    const auto start = reader.OptionalMileage(reader.Find("curve_start"), road);
    const auto end = reader.OptionalMileage(reader.Find("curve_end"), road);
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

ProfileTable ReadProfile(RoadDesign* road, const std::string& path, std::vector<std::string>& problems) {
    CsvReader reader(path);
    (void)reader.Require("mileage");
    (void)reader.Require("elevation");
    std::vector<ProfileRow> rows;
    ForEachRow(reader, problems, [&] { rows.push_back(ReadProfileRow(reader, road)); });
    ProfileTable table;
    const bool byEnds =
        std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.hasEnds && !row.hasRadius; });
    table.mode = byEnds ? endsMode : radiusMode;
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
