#include "tables/sections.hpp"

#include "road/cross_section.hpp"

namespace kesto::host {

namespace {

std::vector<CsvReader::Column> ValueColumns(const CsvReader& reader) {
    std::vector<CsvReader::Column> columns{reader.Require("value_1")};
    for (;;) {
        const auto next = reader.Find("value_" + std::to_string(columns.size() + 1));
        if (next == CsvReader::npos) return columns;
        columns.push_back(next);
    }
}

}  // namespace

std::vector<FromLine<PlateRow>> ReadPlates(const std::string& path, std::vector<std::string>& problems) {
    CsvReader reader(path);
    for (const char* needed : {"side", "width", "cross_slope"}) (void)reader.Require(needed);
    std::vector<FromLine<PlateRow>> rows;
    ForEachRow(reader, problems, [&] {
        PlateRow row{Choice(reader, "side", sideNames), {}};
        CopyText(reader, "name", row.plate.name);
        CopyText(reader, "code", row.plate.code);
        row.plate.width = reader.Real(reader.Find("width"));
        row.plate.crossSlope = reader.Real(reader.Find("cross_slope"));
        row.plate.step = reader.OptionalReal(reader.Find("step")).value_or(0);
        row.plate.extra = reader.OptionalReal(reader.Find("extra")).value_or(0);
        if (row.plate.width < 0) Refuse(reader, "a width is not negative");
        rows.push_back({row, reader.Where()});
    });
    return rows;
}

std::vector<FromLine<ChangeRow>> ReadChanges(RoadDesign* road, const std::string& path,
                                             std::vector<std::string>& problems) {
    CsvReader reader(path);
    for (const char* needed : {"side", "kind", "type"}) (void)reader.Require(needed);
    const auto mileage = reader.Require("mileage");
    const auto columns = ValueColumns(reader);
    std::vector<FromLine<ChangeRow>> rows;
    ForEachRow(reader, problems, [&] {
        ChangeRow row{Choice(reader, "side", sideNames),
                      Choice(reader, "kind", kindNames),
                      Choice(reader, "type", transitionNames),
                      reader.Mileage(mileage, road),
                      reader.OptionalInteger(reader.Find("occurrence")).value_or(0),
                      {}};
        for (const auto column : columns) row.values.push_back(reader.OptionalReal(column));
        rows.push_back({std::move(row), reader.Where()});
    });
    return rows;
}

}  // namespace kesto::host
