/// Reader of the comma-separated tables under tests/data.
#pragma once

#include <charconv>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace kesto::test {

/// One line of a table, its fields found by the names in the table's first line.
class Row {
public:
    explicit Row(std::map<std::string, std::string> named) : fields(std::move(named)) {}

    const std::string& Text(const std::string& column) const { return fields.at(column); }

    /// The number in a column; nothing where the field is empty. A field that is no number is an error of the table.
    std::optional<double> Optional(const std::string& column) const {
        const std::string& text = Text(column);
        if (text.empty()) return std::nullopt;
        double number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size()) throw std::runtime_error("no number: " + text);
        return number;
    }

    double Number(const std::string& column) const { return Optional(column).value(); }
    double NumberOr(const std::string& column, double otherwise) const { return Optional(column).value_or(otherwise); }
    int Whole(const std::string& column) const { return static_cast<int>(Number(column)); }

private:
    std::map<std::string, std::string> fields;
};

inline std::vector<std::string> SplitFields(std::string line) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::vector<std::string> fields(1);
    for (const char character : line) {
        if (character == ',') {
            fields.emplace_back();
        } else {
            fields.back() += character;
        }
    }
    return fields;
}

/// Reads a table. A file that does not exist has no rows; a line with another number of fields is an error.
inline std::vector<Row> ReadCsv(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    std::vector<Row> rows;
    if (!std::getline(file, line)) return rows;
    const std::vector<std::string> columns = SplitFields(line);
    while (std::getline(file, line)) {
        const std::vector<std::string> fields = SplitFields(line);
        if (fields.size() != columns.size()) throw std::runtime_error(path + ": " + line);
        std::map<std::string, std::string> named;
        for (std::size_t i = 0; i < columns.size(); ++i) named[columns[i]] = fields[i];
        rows.emplace_back(std::move(named));
    }
    return rows;
}

}  // namespace kesto::test
