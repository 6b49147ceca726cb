#include "section/road_side.hpp"

#include <cmath>

#include "alignment/chain_builder.hpp"
#include "alignment/position.hpp"
#include "core/guard.hpp"
#include "core/tolerances.hpp"
#include "profile/height.hpp"
#include "section/plates.hpp"
#include "section/section_at.hpp"

namespace kesto {

namespace {

inline constexpr double perCent = 100;

/// Height at a distance from a plate's inner edge (m), given the height before its step.
double HeightOnPlate(const SectionPlate& plate, double innerHeight, double fromEdge) noexcept {
    return innerHeight + plate.step + fromEdge * plate.crossSlope / perCent;
}

/// Fills the offsets and heights of the outer edges.
void FillHeights(std::vector<SectionPlate>& plates, double centreHeight) noexcept {
    double offset = 0;
    double height = centreHeight;
    for (SectionPlate& plate : plates) {
        offset += plate.width;
        height = HeightOnPlate(plate, height, plate.width);
        plate.offset = offset;
        plate.height = height;
    }
}

double SideSign(std::int32_t side) noexcept { return static_cast<Side>(side) == Side::Left ? -1 : 1; }

bool HasFiniteEdge(const SectionPlate& plate) noexcept {
    return std::isfinite(plate.x) && std::isfinite(plate.y) && std::isfinite(plate.offset) &&
           std::isfinite(plate.height);
}

/// Height of the plate that holds a distance from the centre line.
Result<double> HeightAt(const std::vector<SectionPlate>& plates, double centreHeight, double distance) noexcept {
    double inner = 0;
    double height = centreHeight;
    for (const SectionPlate& plate : plates) {
        if (distance - (inner + plate.width) <= tolerance::plateEdge) {
            return HeightOnPlate(plate, height, distance - inner);
        }
        inner += plate.width;
        height = HeightOnPlate(plate, height, plate.width);
    }
    Failure failure = FailValue(KESTO_NO_CROSS_SECTION, distance);
    failure.bound = inner;
    failure.excess = distance - inner;
    return failure;
}

/// Height of the centre line at a mileage that must be on the road, with a profile or without.
Result<double> PlacedCentreHeight(RoadDesign& road, StakeMileage stake) {
    if (const Result<double> place = ContinuousMileage(road, stake); !place) return place.failure();
    bool known = false;
    return CentreHeight(road, stake, known);
}

}  // namespace

Result<std::vector<SectionPlate>> RoadSide(RoadDesign& road, StakeMileage stake, std::int32_t side, HeightBase base) {
    Result<std::vector<SectionPlate>> plates = GetSectionAtMileage(road, stake, side);
    if (!plates) return plates;
    double centreHeight = 0;
    if (base == HeightBase::Profile) {
        bool known = false;
        const Result<double> profile = CentreHeight(road, stake, known);
        if (!profile) return profile.failure();
        centreHeight = *profile;
    }
    std::optional<Position> centre;
    if (const Outcome found = FindPosition(road, stake, {}, centre); !found) return found.failure();
    FillHeights(*plates, centreHeight);
    for (SectionPlate& plate : *plates) {
        const Position edge = Moved(*centre, {.distance = SideSign(side) * plate.offset});
        plate.x = edge.x;
        plate.y = edge.y;
        if (!HasFiniteEdge(plate)) return Fail(KESTO_RESULT_NOT_FINITE);
    }
    return plates;
}

Outcome FindHeight(RoadDesign& road, StakeMileage stake, double offset, double& height) {
    if (Outcome finite = RequireFinite({stake.mileage, offset}); !finite) return finite;
    const bool onCentreLine = std::fabs(offset) < tolerance::offset;
    bool known = false;
    if (!onCentreLine) {
        if (Outcome current = EnsureCurrent(road); !current) return current;
        known = true;
    }
    const Result<double> centre = onCentreLine ? CentreHeight(road, stake, known) : PlacedCentreHeight(road, stake);
    if (!centre) {
        if (known) height = 0;
        return centre.failure();
    }
    if (onCentreLine) {
        height = *centre;
        return {};
    }
    const auto side = static_cast<std::int32_t>(offset < 0 ? Side::Left : Side::Right);
    const Result<std::vector<SectionPlate>> plates = GetSectionAtMileage(road, stake, side);
    if (!plates) {
        Failure failure = plates.failure();
        if (failure.status == KESTO_NO_CROSS_SECTION) failure.value = failure.excess = std::fabs(offset);
        return failure;
    }
    const Result<double> found = HeightAt(*plates, *centre, std::fabs(offset));
    if (!found) return found.failure();
    if (!std::isfinite(*found)) return Fail(KESTO_RESULT_NOT_FINITE);
    height = *found;
    return {};
}

}  // namespace kesto
