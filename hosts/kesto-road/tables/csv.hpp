/// Tables as they come out of a spreadsheet, read line by line.
#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kesto_road/kesto_road.h"

namespace kesto::host {

/// Reads a table with a header line: columns are found by name, separators are comma, semicolon or tab, fields may be
/// quoted, a byte order mark, CR LF and blank lines do not matter. One line is held at a time, so a table may have any
/// length. A quoted field ends on its line: an unclosed quote spoils one line, not the rest of the table.
class CsvReader {
public:
    /// Place of a column; npos for one that the table does not have.
    using Column = std::size_t;
    static constexpr Column npos = static_cast<Column>(-1);

    /// Opens the file and reads the header. @throws Problem when the file cannot be read or has no header
    explicit CsvReader(std::string filePath);

    /// @throws Problem when the table does not have the column; it names those that there are
    [[nodiscard]] Column Require(std::string_view name) const;
    [[nodiscard]] Column Find(std::string_view name) const noexcept;

    /// Goes to the next line that holds anything.
    /// @return false at the end of the file
    /// @throws Problem for a line that is no row (unclosed quote, more fields than columns): the next call goes on
    bool Next();

    /// The current row's field without the blanks around it; empty for npos or a field that is missing.
    [[nodiscard]] std::string_view Text(Column column) const noexcept;
    /// @throws Problem when the field is empty or no number
    [[nodiscard]] double Real(Column column) const;
    /// Nothing when the field is empty. @throws Problem when it is no number
    [[nodiscard]] std::optional<double> OptionalReal(Column column) const;
    /// Nothing when the field is empty. @throws Problem when it is no integer
    [[nodiscard]] std::optional<int> OptionalInteger(Column column) const;
    /// A number or a stake text of the road; nothing when the field is empty. @throws Problem when it is neither
    [[nodiscard]] std::optional<double> OptionalMileage(Column column, RoadDesign* road) const;
    /// @throws Problem when the field is empty or no mileage
    [[nodiscard]] double Mileage(Column column, RoadDesign* road) const;

    /// Number of the current line, 1-based.
    [[nodiscard]] std::int64_t Line() const noexcept { return line; }
    /// "points.csv line 12", for messages.
    [[nodiscard]] std::string Where() const;
    /// Bytes read so far.
    [[nodiscard]] std::uintmax_t BytesRead() const noexcept { return bytes; }

private:
    bool NextLine();
    [[noreturn]] void Refuse(Column column, std::string_view wanted) const;
    [[nodiscard]] std::string ColumnName(Column column) const;

    std::string path;
    std::ifstream stream;
    std::string text;
    std::vector<std::string> columns;
    std::vector<std::string> fields;
    char separator = ',';
    std::int64_t line = 0;
    std::uintmax_t bytes = 0;
};

/// A field as CSV: quoted when it holds a comma, a quote or a line end.
std::string CsvField(std::string_view field);

}  // namespace kesto::host
