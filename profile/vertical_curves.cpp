#include "profile/vertical_curves.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <new>
#include <optional>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "alignment/chainage.hpp"
#include "core/record_lists.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

double PointMileage(RoadDesign& road, const VerticalCurve& curve) noexcept {
    return ProfileMileage(road, {curve.mileage, curve.occurrence});
}

/// Where grade-change points lie along the road: in continuous mileage, or as they stand while no road can be built.
class PointPlaces {
public:
    explicit PointPlaces(RoadDesign& owner) : road(owner), current(EnsureCurrent(owner)) {}

    double Of(const VerticalCurve& curve) const noexcept { return current ? PointMileage(road, curve) : curve.mileage; }

    /// The places of the stored points (m) where they are known and rise; otherwise null.
    const std::vector<double>* Known() const noexcept {
        const ProfileCache::Places& kept = Kept();
        return AreKept() && kept.rising ? &kept.mileage : nullptr;
    }

    /// Works out the places of the stored points; where memory runs out they stay unknown.
    void Keep() const noexcept {
        if (AreKept()) return;
        ProfileCache::Places& kept = Kept();
        kept.stamp = {};
        try {
            kept.mileage.clear();
            for (const VerticalCurve& curve : road.verticalCurves.Records()) kept.mileage.push_back(Of(curve));
        } catch (const std::bad_alloc&) {
            return;
        }
        const auto falls = [](double one, double next) { return !(next > one); };
        kept.rising = std::ranges::adjacent_find(kept.mileage, falls) == kept.mileage.end();
        kept.onRoad = current;
        kept.stamp = StampOf(road);
    }

    /// Inserts a point in the list, for which room is reserved, and into the places where they are known.
    void Insert(const VerticalCurve& curve, std::int32_t index) const {
        bool known = Known() != nullptr;
        try {
            if (known) Kept().mileage.insert(Kept().mileage.begin() + index, Of(curve));
        } catch (const std::bad_alloc&) {
            known = false;
        }
        road.verticalCurves.Insert(curve, index);
        if (known) Kept().stamp = StampOf(road);
    }

private:
    ProfileCache::Places& Kept() const noexcept { return road.profileCache.places; }
    bool AreKept() const noexcept { return Kept().stamp.SameProfile(StampOf(road)) && Kept().onRoad == current; }

    RoadDesign& road;
    bool current;
};

bool SamePlace(double one, double other) noexcept { return std::fabs(one - other) < tolerance::duplicateMileage; }

/// @param stored index of the record that lies there already, -1 where it is one of the same call
Failure Duplicate(std::int32_t stored, const VerticalCurve& curve) noexcept {
    Failure failure = FailRecord(KESTO_DUPLICATE_MILEAGE, KESTO_LIST_VERTICAL_CURVES, stored);
    failure.value = curve.mileage;
    return failure;
}

/// Index that a new point gets in a list whose points rise.
Result<std::int32_t> FindIndexAmong(std::span<const double> stored, double place, const VerticalCurve& curve) noexcept {
    const auto behind =
        std::ranges::partition_point(stored, [&](double it) { return !(it > place) || SamePlace(it, place); });
    const auto index = static_cast<std::int32_t>(behind - stored.begin());
    if (index > 0 && SamePlace(*std::prev(behind), place)) return Duplicate(index - 1, curve);
    return index;
}

/// Index that a new point gets in the list: behind the last stored point that lies before it. Points mostly come in
/// order and are compared with a few from the end; for others the places of all are worked out once.
Result<std::int32_t> FindIndex(const RoadDesign& road, const PointPlaces& places, const VerticalCurve& curve) noexcept {
    constexpr std::int32_t fewCompared = 16;
    const CountedList<VerticalCurve>& list = road.verticalCurves;
    const double place = places.Of(curve);
    std::int32_t index = list.Count();
    for (; index > 0; --index) {
        if (list.Count() - index == fewCompared) places.Keep();
        if (const std::vector<double>* known = places.Known()) return FindIndexAmong(*known, place, curve);
        const double stored = places.Of(list[index - 1]);
        if (SamePlace(stored, place)) return Duplicate(index - 1, curve);
        if (!(stored > place)) break;
    }
    return index;
}

/// Fails when one of the points cannot be added to the list together with the others.
Outcome RequireFreePlaces(const RoadDesign& road, const PointPlaces& places, std::span<const VerticalCurve> curves) {
    for (std::size_t i = 0; i < curves.size(); ++i) {
        if (const auto index = FindIndex(road, places, curves[i]); !index) return index.failure();
        for (std::size_t j = 0; j < i; ++j) {
            if (SamePlace(places.Of(curves[j]), places.Of(curves[i]))) return Duplicate(-1, curves[i]);
        }
    }
    return {};
}

Outcome RequireFiniteMileages(std::span<const VerticalCurve> curves) noexcept {
    for (const VerticalCurve& curve : curves) {
        if (Outcome finite = RequireFinite({curve.mileage}); !finite) return finite;
    }
    return {};
}

using PointsByPlace = std::map<double, VerticalCurve>;

/// Adds a point unless one lies there already.
bool InsertFree(PointsByPlace& points, double place, const VerticalCurve& curve) {
    const auto next = points.lower_bound(place);
    if (next != points.end() && SamePlace(next->first, place)) return false;
    if (next != points.begin() && SamePlace(std::prev(next)->first, place)) return false;
    points.emplace_hint(next, place, curve);
    return true;
}

/// The stored points by their places; nothing where the list is not in their order, as after an edit of the alignment.
std::optional<PointsByPlace> ByPlace(std::span<const VerticalCurve> stored, const PointPlaces& places) {
    PointsByPlace points;
    for (const VerticalCurve& curve : stored) {
        const double place = places.Of(curve);
        if (!points.empty() && !(place > points.rbegin()->first)) return std::nullopt;
        points.emplace_hint(points.end(), place, curve);
    }
    return points;
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
/// before the road's start is cut off. Heights are searched by the ends as they are worked out here: an end beyond the
/// road's end is stored without an occurrence, yet it is set.
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
        return occurrence == noOccurrence ? unset : ProfileMileage(road, {mileage, occurrence});
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

/// How far curves and tangents reach. It never falls along the list, however the curves overlap.
void DeriveReaches(std::span<CurveSpan> spans) noexcept {
    double reach = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < spans.size(); ++i) {
        reach = std::max(reach, spans[i].end);
        if (i + 1 < spans.size()) reach = std::max(reach, spans[i + 1].start);
        spans[i].reach = reach;
    }
}

}  // namespace

double ProfileMileage(RoadDesign& road, StakeMileage stake) noexcept {
    return FindContinuous(road, stake).value_or(stake.mileage);
}

Outcome InsertVerticalCurve(RoadDesign& road, const VerticalCurve& curve) {
    return InsertVerticalCurves(road, {&curve, 1});
}

Outcome InsertVerticalCurves(RoadDesign& road, std::span<const VerticalCurve> curves) {
    if (Outcome finite = RequireFiniteMileages(curves); !finite) return finite;
    const PointPlaces places(road);
    if (Outcome free = RequireFreePlaces(road, places, curves); !free) return free;
    road.verticalCurves.Reserve(static_cast<std::int64_t>(curves.size()));
    for (const VerticalCurve& curve : curves) {
        const Result<std::int32_t> index = FindIndex(road, places, curve);
        if (index) places.Insert(curve, *index);
    }
    return {};
}

std::vector<TriedPoint> InsertEachVerticalCurve(RoadDesign& road, std::span<const VerticalCurve> curves) {
    std::vector<TriedPoint> tried(curves.size());
    if (curves.empty()) return tried;
    const PointPlaces places(road);
    std::optional<PointsByPlace> sorted = ByPlace(road.verticalCurves.Records(), places);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        if (!RequireFinite({curves[i].mileage})) continue;
        tried[i].place = places.Of(curves[i]);
        if (sorted) {
            tried[i].inserted = InsertFree(*sorted, tried[i].place, curves[i]);
        } else if (const Result<std::int32_t> index = FindIndex(road, places, curves[i])) {
            road.verticalCurves.Insert(curves[i], *index);
            tried[i].inserted = true;
        }
    }
    if (!sorted) return tried;
    CountedList<VerticalCurve> list;
    list.Reserve(static_cast<std::int64_t>(sorted->size()));
    for (const auto& entry : *sorted) list.Insert(entry.second);
    road.verticalCurves.Swap(list);
    return tried;
}

Outcome ReplaceVerticalCurve(RoadDesign& road, std::int32_t index, const VerticalCurve& curve) {
    if (Outcome valid = RequireRecord(road.verticalCurves, index); !valid) return valid;
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
        spans[i] = {point, point, point, point};
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
    DeriveReaches(spans);
    road.profileCache.stamp = StampOf(road);
}

const ProfileCache& CurrentProfile(const AskedRoad& asked) {
    if (asked.live != nullptr && !asked.road.profileCache.stamp.SameProfile(StampOf(asked.road)))
        DeriveProfile(*asked.live);
    return asked.road.profileCache;
}

}  // namespace kesto
