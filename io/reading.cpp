#include "io/reading.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kesto {

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
