/// Cells of tables that name one of a few things, or that a record carries as text.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "tables/csv.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

/// A cell that names one of a few things, by its name or its number.
/// @param first number of the first name
/// @throws Problem naming the things for any other cell
template <std::size_t count>
std::int32_t Choice(const CsvReader& reader, std::string_view column, const std::array<const char*, count>& names,
                    std::int32_t first = 0) {
    const auto field = reader.Text(reader.Require(column));
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = first + static_cast<std::int32_t>(i);
        if (field == names[i] || field == std::to_string(number)) return number;
        all += (i == 0 ? "" : i + 1 < count ? ", " : " or ") + std::string(names[i]);
    }
    throw Problem(ExitCode::Data, reader.Where() + ": column '" + std::string(column) + "' holds '" +
                                      std::string(field) + "', which is not " + all);
}

/// Copies a cell into a record's text. The project file separates its fields by blanks.
/// @throws Problem for a text that is too long or has a blank
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

}  // namespace kesto::host
