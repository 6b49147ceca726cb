#include "alignment/element_walk.hpp"

#include <cmath>

#include "core/tolerances.hpp"

namespace kesto {

Candidate CandidateAt(std::int32_t index, const Element& element, const std::optional<Foot>& foot, double running,
                      Point point) noexcept {
    if (foot) return {element.startMileage + foot->along, foot->offset, running + foot->along, running, index};
    return {element.startMileage, Distance(StartOf(element), point), running, running, index};
}

bool Meet(Candidate& best, const Candidate& candidate, const Stretch& stretch) noexcept {
    const double distance = std::fabs(candidate.offset);
    const double bestDistance = std::fabs(best.offset);
    if (bestDistance < tolerance::onTheLine && distance > bestDistance) return false;
    if (IsOn(stretch, candidate) && distance <= bestDistance) best = candidate;
    return true;
}

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
