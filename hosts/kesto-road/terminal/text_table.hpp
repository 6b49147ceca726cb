/// Tables for reading on a terminal.
#pragma once

#include <string>
#include <vector>

namespace kesto::host {

/// Columns as wide as their widest cell; the first one is left-aligned, the others right-aligned.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> header) { rows.push_back(std::move(header)); }
    void Add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    /// A blank line, the title with the number of rows, header and rows; "none" without rows.
    [[nodiscard]] std::string Text(const std::string& title) const;

private:
    std::vector<std::vector<std::string>> rows;
};

}  // namespace kesto::host
