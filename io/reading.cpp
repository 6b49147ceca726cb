#include "io/reading.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace kesto {

void Reading::Refuse(ReadingReport::ListKey key, std::int32_t line, const Failure& why, double order) {
    const std::vector<PlacedLine>& placed = stored[key];
    std::int32_t otherLine = 0;
    // Not looked for when the finding is only counted: a file of nothing but repeated records would take for ever.
    const bool kept = road.reading.findings.size() < ReadingReport::mostFindings;
    if (kept && why.status == KESTO_DUPLICATE_MILEAGE && !placed.empty()) {
        const auto distance = [&](const PlacedLine& it) { return std::fabs(it.order - order); };
        otherLine = std::ranges::min_element(placed, {}, distance)->line;
    }
    lines.Refuse(static_cast<KestoList>(key.first), line, why, otherLine);
}

void Reading::Finish() {
    for (const auto& [key, finding] : untyped) lines.Tell(finding);
    ReadingReport& report = road.reading;
    for (auto& [key, placed] : stored) {
        std::ranges::stable_sort(placed, {}, &PlacedLine::order);
        std::vector<std::int32_t>& numbers = report.recordLines[key];
        numbers.reserve(placed.size());
        std::ranges::transform(placed, std::back_inserter(numbers), &PlacedLine::line);
    }
    std::ranges::stable_sort(report.findings, {}, &ReadingFinding::line);
}

}  // namespace kesto
