// Checks the broken chains.
#include <algorithm>
#include <cmath>
#include <vector>

#include "check_road.hpp"
#include "numbers.hpp"

namespace kesto::host {

namespace {

constexpr int mileageDecimals = 3;

struct Chain {
    BrokenChain record;
    std::int64_t line;
};

std::string Text(const Checked& checked, double mileage) {
    return FormatMileage(GetMakeStakePerfix(checked.road), {mileage, 0}, mileageDecimals);
}

/// The chains as the road walks them: ascending by the mileage before the break.
std::vector<Chain> ChainsOfFile(const Outline& outline) {
    std::vector<Chain> chains;
    for (const RecordLine& it : outline.Records("BrokenChain")) {
        chains.push_back({{it.numbers[0], it.numbers[1]}, it.line});
    }
    std::stable_sort(chains.begin(), chains.end(), [](const Chain& one, const Chain& other) {
        return one.record.backMileage < other.record.backMileage;
    });
    return chains;
}

void CheckPlace(const Checked& checked, const Chain& chain, const Chain* before) {
    const double back = chain.record.backMileage;
    if (before != nullptr && before->record.aheadMileage > back + sameMileage) {
        checked.findings.Error(chain.line, "chain-contradicts",
                               "no stake carries " + Text(checked, back) + ": the broken chain in line " +
                                   std::to_string(before->line) + " leads from " +
                                   Text(checked, before->record.backMileage) + " to " +
                                   Text(checked, before->record.aheadMileage));
    } else if (checked.line) {
        checked.findings.Error(chain.line, "chain-off-road",
                               "the road does not come by " + Text(checked, back) + ": the broken chain has no effect");
    }
}

}  // namespace

void CheckChains(const Checked& checked) {
    const Chain* before = nullptr;  // the last one that the road meets
    const auto chains = ChainsOfFile(checked.outline);
    for (const Chain& chain : chains) {
        const BrokenChain& it = chain.record;
        if (&chain != &chains.front() && it.backMileage - (&chain - 1)->record.backMileage < sameMileage) {
            checked.findings.Skipped(chain.line, "chain-repeated",
                                     "line " + std::to_string((&chain - 1)->line) +
                                         " has a broken chain at this mileage already: this one is skipped");
        } else if (std::fabs(it.aheadMileage - it.backMileage) < sameMileage) {
            checked.findings.Note(chain.line, "chain-without-jump", "the mileage is the same before and behind it");
        } else if (checked.line && checked.line->HasBreak(it)) {
            before = &chain;
        } else {
            CheckPlace(checked, chain, before);
            if (!checked.line) before = &chain;
        }
    }
}

}  // namespace kesto::host
