#include "design/design_run.hpp"

#include "alignment/chain_builder.hpp"
#include "design/stakes.hpp"
#include "geometry/element_geometry.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

namespace {

/// Moves the start point of every element to the end of the one before it. Azimuths stay: a polygon keeps its kinks.
/// @return fails at the first element whose end cannot be evaluated; the elements after it stay where they are
Outcome JoinElements(RoadDesign& road) noexcept {
    const std::span<Element> elements = road.elements.Edit();
    for (std::size_t i = 1; i < elements.size(); ++i) {
        const Result<Position> end = Evaluate(elements[i - 1], elements[i - 1].length);
        if (!end) {
            return FailRecord(KESTO_ELEMENT_NOT_EVALUABLE, KESTO_LIST_ELEMENTS, static_cast<std::int32_t>(i) - 1);
        }
        elements[i].startX = end->x;
        elements[i].startY = end->y;
    }
    return {};
}

}  // namespace

Outcome RunDesign(RoadDesign& road) {
    if (Outcome current = MakeCurrent(road); !current) return current;
    if (Outcome built = BuildChain(road); !built) return built;
    const Outcome joined = JoinElements(road);
    const Outcome staked = MakeStakes(road);
    DeriveProfile(road);
    return joined ? staked : joined;
}

}  // namespace kesto
