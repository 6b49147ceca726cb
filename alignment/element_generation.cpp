#include "alignment/element_generation.hpp"

#include "alignment/coordinate_method.hpp"
#include "alignment/intersection_method.hpp"

namespace kesto {

Outcome GenerateElements(RoadDesign& road) {
    switch (static_cast<DesignMode>(road.settings.roadDesignMode)) {
        case DesignMode::Elements: return {};
        case DesignMode::Intersections: return GenerateFromIntersections(road);
        case DesignMode::Coordinates:
        case DesignMode::BrokenLine: return GenerateFromCoordinates(road);
    }
    return FailValue(KESTO_UNKNOWN_DESIGN_MODE, road.settings.roadDesignMode);
}

}  // namespace kesto
