// Tells of the failures of reading and of the design run.
#include <string>

#include "checks/checked.hpp"

namespace kesto::host {

namespace {

/// The line that a failure of the design run comes from; 0 where no line is known.
std::int64_t LineOf(const Checked& checked, const Failure& failure) {
    if (failure.status == KESTO_UNKNOWN_STAKE_MODE) return 1;
    if (failure.status == KESTO_ELEMENT_NOT_EVALUABLE) {  // its record counts the elements as broken chains cut them
        const std::int64_t line = checked.findings.FirstLineOf({"spiral-radii", "element-type", "element-shape"});
        if (line > 0) return line;
    }
    const auto mode = static_cast<std::size_t>(GetRoadDesignMode(checked.road));
    if (mode >= alignmentKeywords.size()) return 0;
    const auto records = checked.outline.Records(alignmentKeywords[mode]);
    const auto record = static_cast<std::size_t>(failure.record);
    return failure.record >= 0 && record < records.size() ? records[record].line
                                                          : checked.outline.LineOf(alignmentKeywords[mode]);
}

}  // namespace

void TellOfSkipped(const Checked& checked, const Failure& failure) {
    Findings& findings = checked.findings;
    const bool hasRoad = checked.line.has_value();
    if (failure.status != KESTO_RECORDS_SKIPPED) return;
    // Without a road no change section has a place, and that there is no road is an error already.
    if (!hasRoad && failure.list == KESTO_LIST_CHANGE_SECTIONS) return;
    const auto more = static_cast<std::int64_t>(failure.value) - findings.SkippedCount();
    if (!findings.HasErrorAt(failure.record)) {
        findings.Error(failure.record, "skipped-record", "the record is refused and skipped");
    } else if (hasRoad && more > 0 && findings.FirstLineOf({"swallowed-section"}) == 0) {
        findings.Error(0, "skipped-record",
                       std::to_string(more) + " more records are skipped than are named in other errors");
    }
}

void TellOfNoRoad(const Checked& checked, const Failure& failure, const std::string& why) {
    checked.findings.Error(LineOf(checked, failure), "no-road", "no road can be built: " + why);
}

}  // namespace kesto::host
