#include "alignment/element_generation.hpp"

namespace kesto {

Outcome GenerateElements(RoadDesign& road) {
    switch (static_cast<DesignMode>(road.settings.roadDesignMode)) {
        case DesignMode::Elements: return {};
        case DesignMode::Intersections:
        case DesignMode::Coordinates:
        case DesignMode::BrokenLine: return FailValue(KESTO_GENERATION_MISSING, road.settings.roadDesignMode);
    }
    return FailValue(KESTO_UNKNOWN_DESIGN_MODE, road.settings.roadDesignMode);
}

}  // namespace kesto
