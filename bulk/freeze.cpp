#include "bulk/freeze.hpp"

#include "alignment/chain_builder.hpp"
#include "alignment/inverse.hpp"
#include "design/stake_bracket.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

Result<std::unique_ptr<RoadDesign>> Freeze(const AskedRoad& asked) {
    if (const Outcome current = EnsureCurrent(asked); !current) return current.failure();
    CurrentProfile(asked);  // before the copy, so that both tell the same derived values
    auto copy = std::make_unique<RoadDesign>(asked.road);
    copy->frozen = false;
    BuildSearch(*copy);
    BuildStakeOrder(*copy);
    copy->lastFailure.reset();
    copy->frozen = true;
    return copy;
}

}  // namespace kesto
