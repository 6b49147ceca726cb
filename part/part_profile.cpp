#include "part/part_profile.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

#include "alignment/chainage.hpp"
#include "core/tolerances.hpp"
#include "io/number_text.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

namespace {

/// Grade-change points that follow each other, both included.
struct PointRange {
    std::size_t first;
    std::size_t last;
};

/// Whether a height between two places (m) may come from a point's curve or from the tangent behind it.
bool IsUsed(std::span<const CurveSpan> spans, std::size_t i, double start, double end) noexcept {
    const double from = std::min(spans[i].start, spans[i].point);
    const double to = i + 1 < spans.size() ? std::max(spans[i].end, spans[i + 1].start) : spans[i].end;
    return from <= end && start <= to;
}

/// The points that decide the heights between two places (m): those whose curves or tangents are used, one more on
/// both sides for the grades, and more until the level stretches before the first and behind the last lie outside.
PointRange NeededPoints(std::span<const CurveSpan> spans, double start, double end) noexcept {
    const std::size_t last = spans.size() - 1;
    std::optional<PointRange> used;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        if (!IsUsed(spans, i, start, end)) continue;
        used = {used ? used->first : i, i};
    }
    PointRange range = used.value_or(end < spans.front().point ? PointRange{0, 0} : PointRange{last, last});
    if (range.first > 0) --range.first;
    if (range.last < last) ++range.last;
    while (range.first > 0 && spans[range.first].point > start) --range.first;
    while (range.last < last && !(spans[range.last].point - end > tolerance::profileEnd)) ++range.last;
    return range;
}

/// The stake mileage of a place in a built part that leads back to it, in the decimals of a file too.
std::optional<StakeMileage> StakeInside(RoadDesign& part, double place) noexcept {
    const StakeMileage stake = StakeMileageAt(part, place);
    for (const double mileage : {stake.mileage, WrittenReal(stake.mileage)}) {
        const std::optional<double> back = FindContinuous(part, {mileage, stake.occurrence});
        if (!back || !(std::fabs(*back - place) < tolerance::mileage)) return std::nullopt;
    }
    return stake;
}

StakeMileage PointInPart(RoadDesign& part, double place) noexcept {
    return StakeInside(part, place).value_or(StakeMileage{place, noOccurrence});
}

StakeMileage CurveEndInPart(RoadDesign& part, double place) noexcept {
    if (const std::optional<StakeMileage> stake = StakeInside(part, place)) return *stake;
    StakeMileage outside{place, 0};
    for (const double mileage : {place, WrittenReal(place)}) {
        while (FindContinuous(part, {mileage, outside.occurrence})) ++outside.occurrence;
    }
    return outside;
}

}  // namespace

void CopyProfile(RoadDesign& whole, FramedPart& part) {
    if (whole.verticalCurves.Count() == 0) return;
    const auto place = [&](double mileage, std::int32_t occurrence) {
        return part.frame.ToPart(ProfileMileage(whole, {mileage, occurrence}));
    };
    const PointRange range = NeededPoints(CurrentProfile(whole).spans, part.frame.Start(), part.frame.End());
    for (VerticalCurve curve : whole.verticalCurves.Records().subspan(range.first, range.last - range.first + 1)) {
        const StakeMileage point = PointInPart(*part.road, place(curve.mileage, curve.occurrence));
        curve.mileage = point.mileage;
        curve.occurrence = point.occurrence;
        const auto moveEnd = [&](double& mileage, std::int32_t& occurrence) {
            if (occurrence == noOccurrence) return;
            const StakeMileage end = CurveEndInPart(*part.road, place(mileage, occurrence));
            mileage = end.mileage;
            occurrence = end.occurrence;
        };
        moveEnd(curve.startMileage, curve.startOccurrence);
        moveEnd(curve.endMileage, curve.endOccurrence);
        part.road->verticalCurves.Insert(curve);
    }
}

}  // namespace kesto
