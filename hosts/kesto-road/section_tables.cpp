#include "section_tables.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "cross_section.hpp"
#include "csv.hpp"
#include "problem.hpp"

namespace kesto::host {

namespace {

/// A field that names one of a few things, by its name or its number.
template <std::size_t count>
std::int32_t Choice(const CsvReader& reader, std::string_view column, const std::array<const char*, count>& names) {
    const auto field = reader.Text(reader.Require(column));
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        if (field == names[i] || field == std::to_string(i)) return static_cast<std::int32_t>(i);
        all += (i == 0 ? "" : i + 1 < count ? ", " : " or ") + std::string(names[i]);
    }
    throw Problem(ExitCode::Data, reader.Where() + ": column '" + std::string(column) + "' holds '" +
                                      std::string(field) + "', which is not " + all);
}

/// Copies a text into a record's field. The project file separates its fields by blanks.
template <std::size_t size>
void CopyText(const CsvReader& reader, std::string_view column, char (&text)[size]) {
    const auto field = reader.Text(reader.Find(column));
    const std::string start = reader.Where() + ": '" + std::string(field) + "' ";
    if (field.size() >= size) {
        throw Problem(ExitCode::Data, start + "is too long: a text has at most " + std::to_string(size - 1) + " bytes");
    }
    if (field.find_first_of(" \t") != std::string_view::npos) {
        throw Problem(ExitCode::Data, start + "has a blank, which a project file cannot keep: write an underscore");
    }
    std::copy(field.begin(), field.end(), text);
}

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
        if (row.plate.width < 0) throw Problem(ExitCode::Data, reader.Where() + ": a width is not negative");
        rows.push_back({row, reader.Where()});
    });
    return rows;
}

std::vector<FromLine<ChangeRow>> ReadChanges(const std::string& path, const std::string& prefix,
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
                      reader.Mileage(mileage, prefix),
                      reader.OptionalInteger(reader.Find("occurrence")).value_or(0),
                      {}};
        for (const auto column : columns) row.values.push_back(reader.OptionalReal(column));
        rows.push_back({std::move(row), reader.Where()});
    });
    return rows;
}

}  // namespace kesto::host
