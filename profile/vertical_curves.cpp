#include "profile/vertical_curves.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "alignment/chainage.hpp"
#include "core/guard.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

/// Continuous mileage of a stake mileage; as it stands where it is not on the road or its occurrence is -1.
double ContinuousOrAsItStands(RoadDesign& road, StakeMileage stake) noexcept {
    return FindContinuous(road, stake).value_or(stake.mileage);
}

double PointMileage(RoadDesign& road, const VerticalCurve& curve) noexcept {
    return ContinuousOrAsItStands(road, {curve.mileage, curve.occurrence});
}

/// Inserts into a list that may not be the road's own yet. The road is current, or cannot be.
Outcome InsertSorted(RoadDesign& road, bool current, CountedList<VerticalCurve>& list, const VerticalCurve& curve) {
    if (Outcome finite = RequireFinite({curve.mileage}); !finite) return finite;
    const auto place = [&](const VerticalCurve& it) { return current ? PointMileage(road, it) : it.mileage; };
    const double mileage = place(curve);
    std::int32_t index = list.Count();
    while (index > 0) {
        const double stored = place(list[index - 1]);
        if (std::fabs(stored - mileage) < tolerance::duplicateMileage) {
            Failure failure = FailRecord(KESTO_DUPLICATE_MILEAGE, KESTO_LIST_VERTICAL_CURVES, index - 1);
            failure.value = curve.mileage;
            return failure;
        }
        if (!(stored > mileage)) break;
        --index;
    }
    list.Insert(curve, index);
    return {};
}

bool HasCurve(std::size_t index, std::size_t count) noexcept { return index > 0 && index + 1 < count; }

/// Stores a place as the stake mileage and occurrence that hosts see.
void Store(StakeMileage stake, double& mileage, std::int32_t& occurrence) noexcept {
    mileage = stake.mileage;
    occurrence = stake.occurrence;
}

void CollapseOntoPoint(VerticalCurve& curve, CurveSpan& span) noexcept {
    span.start = span.end = span.point;
    Store({curve.mileage, curve.occurrence}, curve.startMileage, curve.startOccurrence);
    Store({curve.mileage, curve.occurrence}, curve.endMileage, curve.endOccurrence);
}

/// Ends of a curve given by its radius (symmetric parabola): half its length to both sides of the point. What lies
/// before the road's start is cut off.
void DeriveEnds(RoadDesign& road, double gradeIn, VerticalCurve& curve, CurveSpan& span) noexcept {
    const double roadStart = road.settings.startMileage;
    curve.tangentLength = std::fabs((gradeIn - curve.gradeOut) * curve.radius) * 0.5;
    span.start = span.point - curve.tangentLength;
    span.end = span.point + curve.tangentLength;
    if (roadStart > span.start) {
        if (span.end < roadStart) return CollapseOntoPoint(curve, span);
        span.start = roadStart;
    }
    Store(StakeMileageAt(road, span.start), curve.startMileage, curve.startOccurrence);
    Store(StakeMileageAt(road, span.end), curve.endMileage, curve.endOccurrence);
}

/// Ends of a curve given by them; an end that is not set lies at the neighbouring point.
void ReadEnds(RoadDesign& road, const VerticalCurve& curve, double previous, double next, CurveSpan& span) noexcept {
    const auto end = [&](double mileage, std::int32_t occurrence, double unset) {
        return occurrence == noOccurrence ? unset : ContinuousOrAsItStands(road, {mileage, occurrence});
    };
    span.start = end(curve.startMileage, curve.startOccurrence, previous);
    span.end = end(curve.endMileage, curve.endOccurrence, next);
}

/// Distances and grades to the next point (0 at the last one) and the sense of the curves between them.
void DeriveGrades(std::span<VerticalCurve> curves, std::span<const CurveSpan> spans) noexcept {
    for (std::size_t i = 0; i < curves.size(); ++i) {
        VerticalCurve& curve = curves[i];
        const bool last = i + 1 == curves.size();
        curve.distanceToNext = last ? 0 : spans[i + 1].point - spans[i].point;
        curve.gradeOut = last ? 0 : (curves[i + 1].elevation - curve.elevation) / curve.distanceToNext;
        curve.curveSign = 0;
        if (HasCurve(i, curves.size())) {
            const double change = curves[i - 1].gradeOut - curve.gradeOut;
            curve.curveSign = change > 0 ? 1 : (change < 0 ? -1 : 0);
        }
    }
}

ProfileCache::Key KeyOf(const RoadDesign& road) noexcept {
    return {road.verticalCurves.Revision(), road.elements.Revision(), road.settings.startMileage, road.totalLength,
            road.settings.verticalCurveMode};
}

}  // namespace

Outcome InsertVerticalCurve(RoadDesign& road, const VerticalCurve& curve) {
    const bool current = static_cast<bool>(EnsureCurrent(road));
    return InsertSorted(road, current, road.verticalCurves, curve);
}

Outcome InsertVerticalCurves(RoadDesign& road, std::span<const VerticalCurve> curves) {
    const bool current = static_cast<bool>(EnsureCurrent(road));
    CountedList<VerticalCurve> list = road.verticalCurves;
    for (const VerticalCurve& curve : curves) {
        if (Outcome inserted = InsertSorted(road, current, list, curve); !inserted) return inserted;
    }
    if (!curves.empty()) road.verticalCurves.Swap(list);
    return {};
}

Outcome ReplaceVerticalCurve(RoadDesign& road, std::int32_t index, const VerticalCurve& curve) {
    if (Outcome valid = RequireIndex(road.verticalCurves, index); !valid) return valid;
    if (Outcome finite = RequireFinite({curve.mileage}); !finite) return finite;
    road.verticalCurves.Edit()[static_cast<std::size_t>(index)] = curve;
    return {};
}

void DeriveProfile(RoadDesign& road) {
    std::vector<CurveSpan>& spans = road.profileCache.spans;
    spans.resize(static_cast<std::size_t>(road.verticalCurves.Count()));
    if (spans.empty()) return;
    const std::span<VerticalCurve> curves = road.verticalCurves.Edit();
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const double point = PointMileage(road, curves[i]);
        spans[i] = {point, point, point};
    }
    DeriveGrades(curves, spans);
    const auto mode = static_cast<CurveMode>(road.settings.verticalCurveMode);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        if (mode == CurveMode::Radius && HasCurve(i, spans.size())) {
            DeriveEnds(road, curves[i - 1].gradeOut, curves[i], spans[i]);
        } else if (mode == CurveMode::Radius) {
            curves[i].tangentLength = 0;
            CollapseOntoPoint(curves[i], spans[i]);
        } else if (HasCurve(i, spans.size())) {
            ReadEnds(road, curves[i], spans[i - 1].point, spans[i + 1].point, spans[i]);
        }
    }
    road.profileCache.key = KeyOf(road);
}

const ProfileCache& CurrentProfile(RoadDesign& road) {
    if (!(road.profileCache.key == KeyOf(road))) DeriveProfile(road);
    return road.profileCache;
}

}  // namespace kesto
