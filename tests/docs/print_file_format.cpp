// Prints the tables of docs/file_format.md from the table that reads and writes project files.
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "io/project_sections.hpp"

namespace {

void Print(const std::string& title, const kesto::LineDescription& line) {
    const auto columns = line.shape.Columns();
    if (columns.size() != line.fields.size()) throw std::logic_error(title + ": not one text for each column");
    std::printf("\n### %s\n\n| characters | field |\n|---|---|\n", title.c_str());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::printf("| %zu to %zu | %s |\n", columns[i].start + 1, columns[i].start + columns[i].width,
                    std::string(line.fields[i]).c_str());
    }
}

std::string TitleOf(const kesto::Section& section) {
    if (section.keyword.empty()) return "(without a keyword)";
    return std::string(section.keyword) + (section.roadOnly ? " (`.road` only)" : "");
}

}  // namespace

int main() try {
    std::printf("\n| order in the file | keyword | a record takes |\n|---|---|---|\n");
    int place = 0;
    std::vector<std::pair<std::string, kesto::LineDescription>> tables;  // sections with the same lines share one
    const auto print = [&](const kesto::Section& section) {
        const std::string title = TitleOf(section);
        const kesto::LineDescription line = section.describe();
        std::printf("| %d | %s | %s |\n", ++place, title.c_str(), std::string(section.linesOfRecord).c_str());
        const auto same = std::find_if(tables.begin(), tables.end(), [&](const auto& table) {
            return table.second.fields.data() == line.fields.data();
        });
        if (same == tables.end()) {
            tables.emplace_back(title, line);
        } else {
            same->first += ", " + title;
        }
    };
    for (const auto room : kesto::SectionsByRoom()) std::for_each(room.begin(), room.end(), print);
    Print("The header line", kesto::DescriptionOf<kesto::HeaderLine>());
    for (const auto& [title, line] : tables) Print(title, line);
    return 0;
} catch (const std::exception& error) {
    static_cast<void>(std::fprintf(stderr, "%s\n", error.what()));
    return 1;
}
