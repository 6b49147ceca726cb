#include "io/file_places.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/tolerances.hpp"
#include "io/number_text.hpp"

namespace kesto {

namespace {

/// Whether two stake mileages are one in the decimals of a file.
bool SameInFile(StakeMileage one, StakeMileage other) noexcept {
    return one.occurrence == other.occurrence &&
           (one.mileage == other.mileage || WrittenReal(one.mileage) == WrittenReal(other.mileage));
}

/// Whether the road has a place as this stake mileage, in the decimals of a file.
bool HasStake(RoadDesign& road, double continuous, StakeMileage stake) noexcept {
    return SameInFile(StakeMileageAt(road, continuous), stake);
}

/// The stake mileage of a place where a reader comes back to it from there, else the continuous mileage. What is
/// read back has the same place in the next file.
/// @param built whether the road is current
PlaceInFile PlaceForFile(RoadDesign& road, bool built, double continuous) noexcept {
    const double rounded = WrittenReal(continuous);
    // Within a rounding of the road's end the first may have no stake that leads back, and the second one all the same.
    for (const double place : {continuous, rounded}) {
        if (!built) break;
        StakeMileage stake = StakeMileageAt(road, place);
        stake.mileage = WrittenReal(stake.mileage);
        if (stake.occurrence == noOccurrence) continue;
        const std::optional<double> back = PlaceFromFile(road, built, stake);
        if (!back || !HasStake(road, *back, stake)) continue;
        if (std::fabs(*back - place) < tolerance::mileage) return {stake, *back};
    }
    return {{rounded, noOccurrence}, rounded};
}

}  // namespace

std::optional<double> PlaceFromFile(RoadDesign& road, bool built, StakeMileage stake) noexcept {
    if (stake.occurrence == noOccurrence) return stake.mileage;
    if (!built) return std::nullopt;
    const std::optional<double> found = FindContinuous(road, stake);
    if (!found || !std::isfinite(*found)) return std::nullopt;
    // Rounded to its decimals, a mileage at an element's start may lie before it, or one at the road's end behind it.
    // The conversion takes the same distance forward from the start, or the end itself: each save would move the
    // section.
    const StakeMileage there = StakeMileageAt(road, *found);
    if (SameInFile(there, stake)) return found;
    const double moved = there.mileage - stake.mileage;
    for (const double place : {*found + moved, *found - moved}) {
        if (HasStake(road, place, stake)) return place;
    }
    return found;
}

PlaceInFile PlaceForFile(RoadDesign& road, bool built, double continuous, double before) noexcept {
    constexpr double lastDigit = 1e-8;  // m
    PlaceInFile place = PlaceForFile(road, built, continuous);
    for (double next = before; !(place.readBack > before);) {
        next = std::max(next + lastDigit, std::nextafter(next, std::numeric_limits<double>::max()));
        place = PlaceForFile(road, built, next);
    }
    return place;
}

}  // namespace kesto
