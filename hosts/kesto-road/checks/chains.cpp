// Checks the broken chains.
#include <cmath>
#include <map>

#include "checks/checked.hpp"
#include "road/conventions.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr int mileageDecimals = 3;

struct Chain {
    BrokenChain record;
    std::int64_t line;
};

std::string Text(const Checked& checked, double mileage) {
    return FormatMileage(StakePrefix(checked.road), {mileage, 0}, mileageDecimals);
}

/// The broken chains of the file by the mileage before the break. Of several at one mileage the first one holds, the
/// others are told of as skipped.
std::map<double, Chain> ChainsOfFile(const Checked& checked) {
    std::map<double, Chain> chains;
    for (const RecordLine& it : checked.outline.Records("BrokenChain")) {
        const double back = it.numbers[0];
        const auto near = chains.upper_bound(back - sameMileage);
        if (near != chains.end() && near->first < back + sameMileage) {
            checked.findings.Skipped(it.line, "chain-repeated",
                                     "line " + std::to_string(near->second.line) +
                                         " has a broken chain at this mileage already: this one is skipped");
        } else {
            chains.insert({back, {{back, it.numbers[1]}, it.line}});
        }
    }
    return chains;
}

/// Tells of a broken chain on the road that does anything else than jump where it stands.
void TellOfEffect(const Checked& checked, const Chain& chain, const ChainEffect& effect) {
    const std::string from = Text(checked, effect.from);
    if (effect.late) {
        checked.findings.Error(chain.line, "chain-late",
                               "a broken chain at an element's start, less than 0.01 mm behind it, acts at that "
                               "element's end only: " +
                                   (effect.jumps ? "the road jumps from " + from + " to " + Text(checked, effect.to)
                                                 : "at " + from + ", where the road ends, so it has no effect"));
    } else if (!effect.jumps) {
        checked.findings.Warning(chain.line, "chain-at-end",
                                 "the road ends at " + from + ": the broken chain there has no effect");
    } else if (effect.atStart) {
        checked.findings.Note(chain.line, "chain-at-start",
                              "the broken chain stands at the road's start, which carries " + Text(checked, effect.to) +
                                  " instead of " + from);
    }
}

/// Tells why a broken chain is not on the road.
/// @param before the last broken chain before it that is on the road; null where there is none
void TellOfMissed(const Checked& checked, const Chain& chain, const Chain* before) {
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
    std::map<double, ChainEffect> effects;
    const auto& header = checked.outline.header;
    if (checked.line) effects = checked.line->ChainEffects(header ? header->numbers[0] : 0);
    const Chain* before = nullptr;  // the last one that is on the road
    const auto chains = ChainsOfFile(checked);
    for (const auto& [back, chain] : chains) {
        const auto effect = effects.find(back);
        if (std::fabs(chain.record.aheadMileage - back) < sameMileage) {
            checked.findings.Note(chain.line, "chain-without-jump", "the mileage is the same before and behind it");
        } else if (effect == effects.end()) {
            TellOfMissed(checked, chain, before);
            if (!checked.line) before = &chain;
        } else {
            TellOfEffect(checked, chain, effect->second);
            before = &chain;
        }
    }
}

}  // namespace kesto::host
