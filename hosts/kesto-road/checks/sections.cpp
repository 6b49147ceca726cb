// Checks the cross sections: plates, change sections and their transition types.
#include <array>
#include <set>
#include <vector>

#include "checks/checked.hpp"
#include "road/cross_section.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr std::size_t widthColumn = 2;
constexpr std::size_t occurrenceColumn = 2;

/// The sections of one side and kind.
struct ChangeKeywords {
    std::string_view changes, types, plates;
};
constexpr std::array changeKeywords{
    ChangeKeywords{"WidenSectionRight", "WidenRightType", "StandardSectionRight"},
    ChangeKeywords{"WidenSectionLeft", "WidenLeftType", "StandardSectionLeft"},
    ChangeKeywords{"HeightenSectionRight", "HeightRightType", "StandardSectionRight"},
    ChangeKeywords{"HeightenSectionLeft", "HeightLeftType", "StandardSectionLeft"},
};

/// A change section: consecutive lines of one mileage and occurrence.
struct ChangeLines {
    double mileage;
    std::int32_t occurrence;
    std::int64_t line;
    std::size_t values;
};

std::vector<ChangeLines> ChangesOfFile(const Outline& outline, std::string_view keyword) {
    std::vector<ChangeLines> changes;
    for (const RecordLine& it : outline.Records(keyword)) {
        const auto occurrence = static_cast<std::int32_t>(it.numbers[occurrenceColumn]);
        if (changes.empty() || changes.back().mileage != it.numbers[0] || changes.back().occurrence != occurrence) {
            changes.push_back({it.numbers[0], occurrence, it.line, 0});
        }
        ++changes.back().values;
    }
    return changes;
}

/// Line of the section that the alignment stands in; 0 where there is none.
std::int64_t AlignmentLine(const Outline& outline) {
    std::int64_t first = 0;
    for (const std::string_view keyword : alignmentKeywords) {
        const std::int64_t line = outline.LineOf(keyword);
        if (line > 0 && (first == 0 || line < first)) first = line;
    }
    return first;
}

/// Tells why the library skips a change section. It needs the alignment and the plates when it reads a change section,
/// so that they must stand before it in the file.
void CheckChange(const Checked& checked, const ChangeLines& it, const std::vector<RecordLine>& plateLines,
                 std::set<double>& taken) {
    const std::size_t plates = plateLines.size();
    const std::int64_t alignment = AlignmentLine(checked.outline);
    const std::int64_t missing = it.occurrence >= 0 && alignment > it.line        ? alignment
                                 : plates > 0 && plateLines.back().line > it.line ? plateLines.back().line
                                                                                  : 0;
    if (missing > 0) {
        checked.findings.Skipped(it.line, "section-order",
                                 std::string("the change section stands before ") +
                                     (missing == alignment ? "the alignment" : "a plate of its side") + " in line " +
                                     std::to_string(missing) + ", without which it cannot be read: it is skipped");
        return;
    }
    const FilePlace place = PlaceOf(checked, it.mileage, it.occurrence);
    if (!place.found && it.occurrence < 0) {
        checked.findings.Warning(it.line, "change-off-road", "the change section is not on the road: " + place.why);
    }
    if (!place.found && it.occurrence >= 0) {
        checked.findings.Skipped(it.line, "change-off-road",
                                 "the change section is not on the road and is skipped: " + place.why);
    } else if (it.values != plates) {
        checked.findings.Skipped(it.line, "value-count",
                                 "the change section has " + std::to_string(it.values) + " values, its side " +
                                     std::to_string(plates) + " plates: it is skipped");
    } else if (!taken.insert(place.continuous).second) {
        checked.findings.Skipped(it.line, "change-repeated",
                                 "another change section stands at this place already: this one is skipped");
    }
}

void CheckTypes(const Checked& checked, const ChangeKeywords& keywords, std::size_t changes) {
    const auto types = checked.outline.Records(keywords.types);
    for (const RecordLine& it : types) {
        const auto type = static_cast<std::int32_t>(it.numbers[0]);
        if (type >= 0 && static_cast<std::size_t>(type) < transitionNames.size()) continue;
        checked.findings.Warning(
            it.line, "transition-type",
            "transition type " + std::to_string(type) + " has no formula: the plates keep their standard values there");
    }
    if (types.size() == changes) return;
    const std::string text = Quoted(keywords.types) + " has " + std::to_string(types.size()) + " lines for " +
                             std::to_string(changes) + " change sections: ";
    if (types.size() < changes) {
        const std::int64_t line = checked.outline.LineOf(keywords.types);
        checked.findings.Warning(line > 0 ? line : checked.outline.LineOf(keywords.changes), "type-count",
                                 text + "the transitions without one are linear");
        return;
    }
    for (std::size_t i = changes; i < types.size(); ++i) {
        checked.findings.Skipped(types[i].line, "type-count", text + "this line is skipped");
    }
}

void CheckPlates(const Checked& checked, std::string_view keyword) {
    for (const RecordLine& it : checked.outline.Records(keyword)) {
        if (it.numbers[widthColumn] > 0) continue;
        checked.findings.Warning(it.line, "plate-width",
                                 "the plate is " + FormatReal(it.numbers[widthColumn], 3) + " m wide");
    }
}

}  // namespace

void CheckSections(const Checked& checked) {
    CheckPlates(checked, "StandardSectionRight");
    CheckPlates(checked, "StandardSectionLeft");
    for (const ChangeKeywords& keywords : changeKeywords) {
        const auto plates = checked.outline.Records(keywords.plates);
        const auto changes = ChangesOfFile(checked.outline, keywords.changes);
        std::set<double> taken;
        for (const ChangeLines& it : changes) {
            if (checked.line) CheckChange(checked, it, plates, taken);
        }
        CheckTypes(checked, keywords, changes.size());
    }
    for (const RecordLine& it : checked.outline.Records("roadSectionMileage")) {
        const FilePlace place = PlaceOf(checked, it.numbers[0], 0);
        if (!checked.line || place.found || StandsAtEnd(checked, place)) continue;
        checked.findings.Warning(it.line, "section-mileage-off-road",
                                 "the section mileage is not on the road: " + place.why);
    }
}

}  // namespace kesto::host
