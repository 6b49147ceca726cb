#include "alignment/element_generation.hpp"

#include "alignment/coordinate_method.hpp"
#include "alignment/intersection_method.hpp"

namespace kesto {

Outcome GenerateElements(const RoadDesign& road, CountedList<Element>& elements) {
    switch (static_cast<DesignMode>(road.settings.roadDesignMode)) {
        case DesignMode::Elements: break;
        case DesignMode::Intersections: return GenerateFromIntersections(road, elements);
        case DesignMode::Coordinates:
        case DesignMode::BrokenLine: return GenerateFromCoordinates(road, elements);
    }
    return FailValue(KESTO_UNKNOWN_DESIGN_MODE, road.settings.roadDesignMode);
}

}  // namespace kesto
