#include "terminal/text_table.hpp"

#include <algorithm>

namespace kesto::host {

namespace {

/// Characters of a UTF-8 text: its bytes without those that continue a character.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) >> 6) != 2; }));
}

}  // namespace

std::string TextTable::Text(const std::string& title) const {
    std::string text = "\n" + title + " (" + std::to_string(rows.size() - 1) + ")\n";
    if (rows.size() == 1) return text + "  none\n";
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
    }
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - Width(row[i]) + 2, ' ');
            text += i == 0 ? "  " + row[i] + padding.substr(2) : padding + row[i];
        }
        text += '\n';
    }
    return text;
}

}  // namespace kesto::host
