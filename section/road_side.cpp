#include "section/road_side.hpp"

#include <cmath>

#include "alignment/chain_builder.hpp"
#include "alignment/position.hpp"
#include "core/arguments.hpp"
#include "core/tolerances.hpp"
#include "profile/height.hpp"
#include "profile/vertical_curves.hpp"
#include "section/plates.hpp"
#include "section/section_at.hpp"

namespace kesto {

namespace {

inline constexpr double perCent = 100;

/// Height at a distance from a plate's inner edge (m), given its cross slope (per cent) and the height before its step.
double HeightOnPlate(double crossSlope, double step, double innerHeight, double fromEdge) noexcept {
    return innerHeight + step + fromEdge * crossSlope / perCent;
}

/// Fills the offsets and heights of the outer edges.
void FillHeights(std::vector<SectionPlate>& plates, double centreHeight) noexcept {
    double offset = 0;
    double height = centreHeight;
    for (SectionPlate& plate : plates) {
        offset += plate.width;
        height = HeightOnPlate(plate.crossSlope, plate.step, height, plate.width);
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
Result<double> HeightAcross(const SectionHere& section, double centreHeight, double distance) noexcept {
    double inner = 0;
    double height = centreHeight;
    for (std::size_t i = 0; i < section.standard.size(); ++i) {
        const double width = section.Width(i);
        const double crossSlope = section.CrossSlope(i);
        const double step = section.standard[i].step;
        if (distance - (inner + width) <= tolerance::plateEdge) {
            return HeightOnPlate(crossSlope, step, height, distance - inner);
        }
        inner += width;
        height = HeightOnPlate(crossSlope, step, height, width);
    }
    Failure failure = FailValue(KESTO_NO_CROSS_SECTION, distance);
    failure.bound = inner;
    failure.excess = distance - inner;
    return failure;
}

/// Height away from the centre line, at a place whose centre height is known.
Result<double> HeightAside(const RoadDesign& road, double continuous, double centreHeight, double offset) noexcept {
    const auto side = static_cast<std::int32_t>(offset < 0 ? Side::Left : Side::Right);
    const Result<SectionHere> section = SectionAtPlace(road, continuous, side);
    if (!section) {
        Failure failure = section.failure();
        if (failure.status == KESTO_NO_CROSS_SECTION) failure.value = failure.excess = std::fabs(offset);
        return failure;
    }
    const Result<double> height = HeightAcross(*section, centreHeight, std::fabs(offset));
    if (height && !std::isfinite(*height)) return Fail(KESTO_RESULT_NOT_FINITE);
    return height;
}

/// Whether the height is that of the centre line of a road without a profile, wherever the mileage lies.
bool IsLevel(const RoadDesign& road, double offset) noexcept {
    return std::fabs(offset) < tolerance::offset && road.verticalCurves.Count() == 0;
}

/// Height where a stake mileage leads to.
Outcome HeightThere(const RoadDesign& road, const Result<double>& continuous, double offset,
                    std::optional<double>& height) noexcept {
    const Result<double> centre = continuous ? HeightAtPlace(road, *continuous) : continuous;
    if (!centre) {
        height = 0;
        return centre.failure();
    }
    const bool onCentreLine = std::fabs(offset) < tolerance::offset;
    const Result<double> found = onCentreLine ? centre : HeightAside(road, *continuous, *centre, offset);
    if (!found) return found.failure();
    height = *found;
    return {};
}

}  // namespace

Result<std::vector<SectionPlate>> RoadSide(const AskedRoad& asked, StakeMileage stake, std::int32_t side,
                                           HeightBase base) {
    Result<std::vector<SectionPlate>> plates = GetSectionAtMileage(asked, stake, side);
    if (!plates) return plates;
    double centreHeight = 0;
    if (base == HeightBase::Profile) {
        const Result<double> profile = CentreHeight(asked, stake);
        if (!profile) return profile.failure();
        centreHeight = *profile;
    }
    std::optional<Position> centre;
    if (const Outcome found = FindPosition(asked, stake, {}, centre); !found) return found.failure();
    FillHeights(*plates, centreHeight);
    for (SectionPlate& plate : *plates) {
        const Position edge = Moved(*centre, {.distance = SideSign(side) * plate.offset});
        plate.x = edge.x;
        plate.y = edge.y;
        if (!HasFiniteEdge(plate)) return Fail(KESTO_RESULT_NOT_FINITE);
    }
    return plates;
}

Outcome HeightOf(const ChainView& chain, StakeMileage stake, double offset, std::optional<double>& height) noexcept {
    if (Outcome finite = RequireFinite({stake.mileage, offset}); !finite) return finite;
    if (IsLevel(chain.road, offset)) {
        height = 0;
        return {};
    }
    return HeightThere(chain.road, PlaceOf(chain, stake), offset, height);
}

Outcome FindHeight(const AskedRoad& asked, StakeMileage stake, double offset, double& height) {
    if (Outcome finite = RequireFinite({stake.mileage, offset}); !finite) return finite;
    if (IsLevel(asked.road, offset)) {
        height = 0;
        return {};
    }
    if (Outcome current = EnsureCurrent(asked); !current) return current;
    const Result<double> continuous = PlaceOf(asked, stake);
    if (continuous) CurrentProfile(asked);
    std::optional<double> found;
    Outcome known = HeightThere(asked.road, continuous, offset, found);
    height = found.value_or(height);
    return known;
}

}  // namespace kesto
