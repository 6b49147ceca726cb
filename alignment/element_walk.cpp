#include "alignment/element_walk.hpp"

#include <cmath>

namespace kesto {

Candidate WalkElements(const RoadDesign& road, Point point, const Stretch& stretch) noexcept {
    Candidate best;
    double running = road.settings.startMileage;
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        running += std::fabs(road.elements[i - 1].length);
        const Element& element = road.elements[i];
        if (!Meet(best, CandidateAt(i, element, Project(element, point), running, point), stretch)) break;
    }
    return best;
}

}  // namespace kesto
