/// Rows and cells of the tables that a road is made from: what their readers share.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tables/csv.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

/// A record with the place it came from, for messages.
template <class Record>
struct FromLine {
    Record record{};
    std::string where;  ///< "profile.csv line 4"
};

/// Calls the body for every row; a bad one becomes a message.
template <class Body>
void ForEachRow(CsvReader& reader, std::vector<std::string>& problems, Body&& body) {
    for (bool more = true; more;) {
        try {
            more = reader.Next();
            if (more) body();
        } catch (const Problem& problem) {
            if (problem.Code() != ExitCode::Data) throw;
            problems.emplace_back(problem.what());
        }
    }
}

/// Refuses the current row. @throws Problem with the place of the row in front of what is wrong with it
[[noreturn]] inline void Refuse(const CsvReader& reader, const std::string& what) {
    throw Problem(ExitCode::Data, reader.Where() + ": " + what);
}

/// The number of the thing that a cell names, by its name or its number.
/// @param first number of the first name
/// @throws Problem that lists the names, for any other cell
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
    Refuse(reader, "column '" + std::string(column) + "' holds '" + std::string(field) + "', which is not " + all);
}

/// Copies a cell into a record's text. The project file separates its fields by blanks.
/// @throws Problem for a text that is too long or has a blank
template <std::size_t size>
void CopyText(const CsvReader& reader, std::string_view column, char (&text)[size]) {
    const auto field = reader.Text(reader.Find(column));
    const std::string start = std::string(1, '\'').append(field) + "' ";
    if (field.size() >= size) {
        Refuse(reader, start + "is too long: a text has at most " + std::to_string(size - 1) + " bytes");
    }
    if (field.find_first_of(" \t") != std::string_view::npos) {
        Refuse(reader, start + "has a blank, which a project file cannot keep: write an underscore");
    }
    std::copy(field.begin(), field.end(), text);
}

}  // namespace kesto::host
