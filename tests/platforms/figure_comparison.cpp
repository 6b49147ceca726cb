#include "figure_comparison.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

namespace platforms {

namespace {

struct Group {
    int count = 0;
    int different = 0;
    int beyond = 0;
    double largest = 0;  // difference
    double share = 0;    // of the bound
};

/// A line as platform_figures prints it: "group;bound;number" or "group;text;the text".
struct Line {
    explicit Line(std::string whole) {
        if (!whole.empty() && whole.back() == '\r') whole.pop_back();
        const std::size_t first = whole.find(';');
        const std::size_t second = whole.find(';', first + 1);
        if (second == std::string::npos) return;
        group = whole.substr(0, first);
        bound = whole.substr(first + 1, second - first - 1);
        value = whole.substr(second + 1);
    }
    bool IsText() const { return bound == "text"; }

    std::string group, bound, value;
};

/// Adds a pair of lines to its group.
void Count(Group& group, const Line& reference, const Line& other) {
    ++group.count;
    const bool sameKind = reference.group == other.group && reference.IsText() == other.IsText();
    if (sameKind && reference.value == other.value) return;
    ++group.different;
    if (!sameKind || reference.IsText()) {
        if (group.beyond++ == 0) std::printf("  %s\n  %s\n", reference.value.c_str(), other.value.c_str());
        return;
    }
    const double difference =
        std::fabs(std::strtod(reference.value.c_str(), nullptr) - std::strtod(other.value.c_str(), nullptr));
    const double share = difference / std::strtod(reference.bound.c_str(), nullptr);
    if (!(share <= 1)) ++group.beyond;
    group.largest = std::max(group.largest, difference);
    group.share = std::max(group.share, share);
}

}  // namespace

bool CompareFigures(const char* referencePath, const char* otherPath) {
    std::ifstream reference(referencePath);
    std::ifstream other(otherPath);
    std::map<std::string, Group> groups;
    std::string line;
    std::string otherLine;
    bool sameLength = true;
    while (std::getline(reference, line)) {
        sameLength = sameLength && std::getline(other, otherLine);
        if (!sameLength) break;
        const Line figure(line);
        Count(groups[figure.group], figure, Line(otherLine));
    }
    const bool complete = !groups.empty() && sameLength && !std::getline(other, otherLine);
    if (!complete) std::printf("the files are not figures of the same kind\n");
    bool within = complete;
    std::printf("%-28s %8s %10s %12s %10s\n", "group", "figures", "different", "largest", "of bound");
    for (const auto& [name, group] : groups) {
        std::printf("%-28s %8d %10d %12.1e %10.3f%s\n", name.c_str(), group.count, group.different, group.largest,
                    group.share, group.beyond > 0 ? "  BEYOND" : "");
        within = within && group.beyond == 0;
    }
    return within;
}

}  // namespace platforms
