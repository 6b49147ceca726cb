/// The plain search for the nearest place of the road: element by element. It defines the inverse projection; the
/// index (inverse_index.hpp) gives the same result sooner.
#pragma once

#include <cmath>
#include <limits>

#include "core/road_design.hpp"
#include "core/tolerances.hpp"
#include "geometry/projection.hpp"

namespace kesto {

inline constexpr double farAway = 1e30;  // m: farther than any candidate

/// The best place met so far.
struct Candidate {
    double mileage = 0;       // m, stake mileage
    double offset = farAway;  // m
    double continuous = 0;    // m
    double running = 0;       // m: continuous mileage at the start of the element
    double highestBefore = std::numeric_limits<double>::infinity();  // m: of the stake mileages before it, if known
    std::int32_t element = -1;                                       // index in the chain; negative: nothing was found
};

/// The stretch that is searched, in continuous mileage (m).
struct Stretch {
    double lower = 0;
    double upper = 0;
};

/// Where an element sees the point: at its foot, or else at its start point with the plain distance.
/// @param foot    of the point on the element, if it has one
/// @param running continuous mileage at the element's start (m)
inline Candidate CandidateAt(std::int32_t index, const Element& element, const std::optional<Foot>& foot,
                             double running, Point point) noexcept {
    Candidate candidate{element.startMileage, 0, running, running};
    candidate.element = index;
    if (foot) {
        candidate.mileage += foot->along;
        candidate.offset = foot->offset;
        candidate.continuous += foot->along;
    } else {
        candidate.offset = Distance(StartOf(element), point);
    }
    return candidate;
}

/// Whether a candidate may become the result: it lies on the stretch. Of equal ones the later along the road wins.
inline bool IsOn(const Stretch& stretch, const Candidate& candidate) noexcept {
    return stretch.lower <= candidate.continuous && candidate.continuous <= stretch.upper;
}

/// One step of the search: takes the candidate if it is on the stretch and not farther than the best.
/// @return false where the search is over: the best lies on the line and this candidate does not come up to it
inline bool Meet(Candidate& best, const Candidate& candidate, const Stretch& stretch) noexcept {
    const double distance = std::fabs(candidate.offset);
    const double bestDistance = std::fabs(best.offset);
    if (bestDistance < tolerance::onTheLine && distance > bestDistance) return false;
    if (IsOn(stretch, candidate) && distance <= bestDistance) best = candidate;
    return true;
}

/// The nearest place on the stretch, by walking all elements.
Candidate WalkElements(const RoadDesign& road, Point point, const Stretch& stretch) noexcept;

}  // namespace kesto
