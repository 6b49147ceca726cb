#include "bulk/freeze.hpp"

#include "alignment/chain_builder.hpp"
#include "alignment/inverse.hpp"
#include "design/stake_bracket.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

Result<std::unique_ptr<const FrozenRoad>> Freeze(RoadDesign& road) {
    if (const Outcome current = EnsureCurrent(road); !current) return current.failure();
    auto frozen = std::make_unique<FrozenRoad>(road);
    BuildSearch(frozen->road);
    BuildStakeOrder(frozen->road);
    CurrentProfile(frozen->road);
    return std::unique_ptr<const FrozenRoad>(std::move(frozen));
}

}  // namespace kesto
