// Checks the broken chains.
#include <cmath>
#include <map>

#include "checks/checked.hpp"
#include "road/conventions.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

using Chain = FromFile<BrokenChain>;

std::string Text(const Checked& checked, double mileage) { return FormatMileage(checked.road, {mileage, 0}); }

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
    if (checked.line) effects = checked.line->ChainEffects(checked.file.StartMileage());
    const auto chains = checked.file.Records<BrokenChain>(KESTO_LIST_BROKEN_CHAINS, GetBrokenChain);
    const Chain* before = nullptr;  // the last one that is on the road
    for (const Chain& chain : chains) {
        const double back = chain.record.backMileage;
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
