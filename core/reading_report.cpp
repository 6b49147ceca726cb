#include "core/reading_report.hpp"

#include <limits>

#include "core/arguments.hpp"

namespace kesto {

void ReadingReport::Add(const ReadingFinding& finding) {
    if (findings.size() < mostFindings) findings.push_back(finding);
    if (findingCount < std::numeric_limits<std::int32_t>::max()) ++findingCount;
}

Result<ReadingFinding> FindingAt(const ReadingReport& report, std::int32_t index) noexcept {
    if (const Outcome valid = RequireIndex(KESTO_LIST_NONE, index, report.findings.size()); !valid)
        return valid.failure();
    return report.findings[static_cast<std::size_t>(index)];
}

Result<std::int32_t> RecordLineAt(const ReadingReport& report, std::int32_t list, std::int32_t key,
                                  std::int32_t index) noexcept {
    if (const auto section = report.sectionLines.find({list, key});
        index == -1 && section != report.sectionLines.end()) {
        return section->second;
    }
    const bool isKnown = list > KESTO_LIST_NONE && list <= KESTO_LIST_SECTION_MILEAGES;
    if (!isKnown) return FailValue(KESTO_INDEX_OUT_OF_RANGE, index);
    const auto lines = report.recordLines.find({list, key});
    const std::size_t count = lines == report.recordLines.end() ? 0 : lines->second.size();
    if (const Outcome valid = RequireIndex(static_cast<KestoList>(list), index, count); !valid) return valid.failure();
    return lines->second[static_cast<std::size_t>(index)];
}

}  // namespace kesto
