#include "tables/csv.hpp"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

#include "road/mileage_text.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The separator that occurs most often outside quotes; a comma when none does.
char GuessSeparator(std::string_view header) noexcept {
    char best = ',';
    std::ptrdiff_t most = 0;
    for (const char candidate : {',', ';', '\t'}) {
        bool quoted = false;
        std::ptrdiff_t count = 0;
        for (const char c : header) {
            if (c == '"') quoted = !quoted;
            if (c == candidate && !quoted) ++count;
        }
        if (count > most) {
            most = count;
            best = candidate;
        }
    }
    return best;
}

/// Cuts a line into fields. @return false when a quote is not closed
bool Split(std::string_view line, char separator, std::vector<std::string>& fields) {
    fields.assign(1, {});
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        std::string& field = fields.back();
        if (quoted) {
            const bool doubled = line[i] == '"' && i + 1 < line.size() && line[i + 1] == '"';
            if (doubled) ++i;
            if (line[i] == '"' && !doubled) {
                quoted = false;
            } else {
                field += line[i];
            }
        } else if (line[i] == '"' && Trim(field).empty()) {
            field.clear();
            quoted = true;
        } else if (line[i] == separator) {
            fields.emplace_back();
        } else {
            field += line[i];
        }
    }
    return !quoted;
}

/// Column names are compared in lower case, with "_" for blanks.
std::string Normalised(std::string_view name) {
    std::string text(Trim(name));
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c == ' ') c = '_';
    }
    return text;
}

}  // namespace

CsvReader::CsvReader(std::string filePath) : path(std::move(filePath)) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) throw FileProblem(path, "read", EISDIR);
    errno = 0;
    stream.open(path, std::ios::binary);
    if (!stream) throw FileProblem(path, "read", errno);
    bool found = false;
    while (!found && NextLine()) found = !Trim(text).empty();
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        throw Problem(ExitCode::Data, path + " is UTF-16 text: save it as CSV in UTF-8");
    }
    if (!found) throw Problem(ExitCode::Data, path + " is empty: a table with a header line is needed");
    separator = GuessSeparator(text);
    if (!Split(text, separator, columns)) throw Problem(ExitCode::Data, Where() + ": a quote is not closed");
    for (auto& column : columns) column = Normalised(column);
}

CsvReader::Column CsvReader::Find(std::string_view name) const noexcept {
    const auto column = std::find(columns.begin(), columns.end(), name);
    return column == columns.end() ? npos : static_cast<Column>(column - columns.begin());
}

CsvReader::Column CsvReader::Require(std::string_view name) const {
    const Column column = Find(name);
    if (column != npos) return column;
    std::string there;
    for (const auto& known : columns) there += (there.empty() ? "" : ", ") + known;
    throw Problem(ExitCode::Data,
                  Where() + ": the column '" + std::string(name) + "' is missing: the header has " + there);
}

bool CsvReader::NextLine() {
    if (!std::getline(stream, text)) {
        if (stream.bad()) throw FileProblem(path, "read", errno);
        return false;
    }
    bytes += text.size() + 1;
    ++line;
    if (line == 1 && text.starts_with(byteOrderMark)) text.erase(0, byteOrderMark.size());
    return true;
}

bool CsvReader::Next() {
    const std::string blanks = std::string(" \t\r") + separator;
    do {
        fields.clear();
        if (!NextLine()) return false;
    } while (text.find_first_not_of(blanks) == std::string::npos);
    while (!text.empty() && text.back() == '\r') text.pop_back();
    if (!Split(text, separator, fields)) throw Problem(ExitCode::Data, Where() + ": a quote is not closed");
    while (fields.size() > columns.size() && Trim(fields.back()).empty()) fields.pop_back();
    if (fields.size() > columns.size()) {
        throw Problem(ExitCode::Data, Where() + ": " + std::to_string(fields.size()) + " fields, but the header has " +
                                          std::to_string(columns.size()) +
                                          ": is a decimal comma or a separator too much?");
    }
    return true;
}

std::string_view CsvReader::Text(Column column) const noexcept {
    return column < fields.size() ? Trim(fields[column]) : std::string_view{};
}

std::optional<double> CsvReader::OptionalReal(Column column) const {
    if (Text(column).empty()) return std::nullopt;
    const auto number = ParseReal(Text(column), separator != ',');
    if (!number) Refuse(column, "no number");
    return number;
}

double CsvReader::Real(Column column) const {
    const auto number = OptionalReal(column);
    if (!number) Refuse(column, "no number");
    return *number;
}

std::optional<int> CsvReader::OptionalInteger(Column column) const {
    if (Text(column).empty()) return std::nullopt;
    const auto number = ParseInteger(Text(column));
    if (!number) Refuse(column, "no whole number");
    return number;
}

std::optional<double> CsvReader::OptionalMileage(Column column, RoadDesign* road) const {
    if (Text(column).empty()) return std::nullopt;
    std::string field(Text(column));
    if (separator != ',') std::replace(field.begin(), field.end(), ',', '.');
    Stake stake;
    if (!ParseStake(road, field.c_str(), &stake.mileage, &stake.occurrence)) Refuse(column, "no mileage");
    return stake.mileage;
}

double CsvReader::Mileage(Column column, RoadDesign* road) const {
    const auto mileage = OptionalMileage(column, road);
    if (!mileage) Refuse(column, "no mileage");
    return *mileage;
}

std::string CsvReader::Where() const { return path + " line " + std::to_string(line); }

std::string CsvReader::ColumnName(Column column) const {
    return column < columns.size() ? "column '" + columns[column] + "'" : "a column that the table does not have";
}

void CsvReader::Refuse(Column column, std::string_view wanted) const {
    const auto field = Text(column);
    const std::string what =
        field.empty() ? " is empty" : " holds '" + std::string(field) + "', which is " + std::string(wanted);
    throw Problem(ExitCode::Data, Where() + ": " + ColumnName(column) + what);
}

std::string CsvField(std::string_view field) {
    if (field.find_first_of(",\"\r\n;\t") == std::string_view::npos) return std::string(field);
    std::string quoted = "\"";
    for (const char c : field) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

}  // namespace kesto::host
