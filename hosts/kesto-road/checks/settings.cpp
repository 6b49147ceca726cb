// Checks the stake interval and the section mode.
#include "checks/checked.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr std::size_t intervalColumn = 1;  // of the header line
constexpr double lastSectionMode = 1;

}  // namespace

void CheckSettings(const Checked& checked) {
    double interval = 0;
    GetMakeStakeInfo(checked.road, &interval);
    const auto& header = checked.outline.header;
    if (header && header->numbers[intervalColumn] < interval) {
        checked.findings.Warning(header->line, "stake-interval",
                                 "the stake interval of " + FormatShort(header->numbers[intervalColumn]) +
                                     " m is raised to " + FormatShort(interval) + " m");
    }
    for (const RecordLine& it : checked.outline.Records("ExtInfo")) {
        const bool known = it.numbers[1] >= 0 && it.numbers[1] <= lastSectionMode;
        if (it.cells.front() != "SectionMode" || known) continue;
        checked.findings.Warning(
            it.line, "section-mode",
            "there is no section mode " + FormatReal(it.numbers[1], 0) + ": the road has no cross sections in it");
    }
}

}  // namespace kesto::host
