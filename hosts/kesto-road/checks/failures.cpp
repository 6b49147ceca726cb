// Tells of the failure of the design run.
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
    return checked.AlignmentLine(failure.record);
}

}  // namespace

void TellOfNoRoad(const Checked& checked, const Failure& failure, const std::string& why) {
    checked.findings.Error(LineOf(checked, failure), "no-road", "no road can be built: " + why);
}

}  // namespace kesto::host
