#include "profile/height.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "alignment/chain_builder.hpp"
#include "core/tolerances.hpp"
#include "profile/vertical_curves.hpp"

namespace kesto {

namespace {

/// The profile as a height query reads it.
struct Profile {
    std::span<const VerticalCurve> curves;
    std::span<const CurveSpan> spans;
    CurveMode mode;
};

/// Symmetric parabola of a given radius: the tangent of the side on which s lies, lowered by the parabola that
/// begins at the curve's end on that side.
double RadiusCurveHeight(const VerticalCurve& curve, double point, double gradeIn, double s) noexcept {
    const bool after = s >= point;
    const double grade = after ? curve.gradeOut : gradeIn;
    const double anchor = after ? point + curve.tangentLength : point - curve.tangentLength;
    const double fromAnchor = s - anchor;
    return curve.elevation + grade * (s - point) - curve.curveSign * (fromAnchor * fromAnchor) / (2 * curve.radius);
}

/// Unsymmetrical parabola between two given ends: one parabola on each side of the point, with a common tangent there.
double GivenEndsHeight(const VerticalCurve& curve, const CurveSpan& span, double gradeIn, double s) noexcept {
    const double before = std::fabs(span.point - span.start);
    const double after = std::fabs(span.point - span.end);
    const double change = (curve.gradeOut - gradeIn) / (before + after);
    const double firstRate = change * after / before;
    const double secondRate = change * before / after;
    const double x = s - span.start;
    const double startHeight = curve.elevation - before * gradeIn;
    if (s > span.point) {
        const double rate = firstRate - secondRate;
        return (rate * before + gradeIn) * x + secondRate * x * x / 2 - rate * before * before / 2 + startHeight;
    }
    return firstRate * x * x / 2 + gradeIn * x + startHeight;
}

Result<double> CurveHeight(const Profile& profile, std::size_t i, double s) noexcept {
    const double gradeIn = profile.curves[i - 1].gradeOut;
    switch (profile.mode) {
        case CurveMode::Radius: return RadiusCurveHeight(profile.curves[i], profile.spans[i].point, gradeIn, s);
        case CurveMode::GivenEnds: return GivenEndsHeight(profile.curves[i], profile.spans[i], gradeIn, s);
    }
    return FailRecord(KESTO_UNKNOWN_CURVE_MODE, KESTO_LIST_VERTICAL_CURVES, static_cast<std::int32_t>(i));
}

/// Height between the first and the last point: the first curve or tangent that holds the place. What ends before the
/// place is passed over: on a profile without overlaps, everything up to the one that holds it.
Result<double> HeightBetween(const Profile& profile, double s) noexcept {
    const auto near = std::partition_point(profile.spans.begin(), profile.spans.end(),
                                           [&](const CurveSpan& span) { return !(s < span.reach); });
    for (auto i = static_cast<std::size_t>(near - profile.spans.begin()); i < profile.spans.size(); ++i) {
        const CurveSpan& span = profile.spans[i];
        if (i > 0 && span.start <= s && s < span.end) return CurveHeight(profile, i, s);
        const bool hasNext = i + 1 < profile.spans.size();
        if (hasNext && span.end <= s && s < profile.spans[i + 1].start) {
            return profile.curves[i].elevation + profile.curves[i].gradeOut * (s - span.point);
        }
    }
    return FailValue(KESTO_NO_HEIGHT, s);
}

Result<double> HeightOn(const RoadDesign& road, const Profile& profile, double s) noexcept {
    const double roadStart = road.settings.startMileage;
    const double roadEnd = roadStart + road.totalLength;
    const double last = profile.spans.back().point;
    if (s < profile.spans.front().point) {
        if (s < roadStart) return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_START, s, roadStart);
        return profile.curves.front().elevation;
    }
    if (s > last || std::fabs(s - last) < tolerance::profileEnd) {
        if (s - roadEnd > tolerance::profileEnd) {
            return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, s, roadEnd);
        }
        return profile.curves.back().elevation;
    }
    return HeightBetween(profile, s);
}

}  // namespace

Result<double> HeightAtPlace(const RoadDesign& road, double continuous) noexcept {
    if (road.verticalCurves.Count() == 0) return 0.0;
    const Profile profile{road.verticalCurves.Records(), road.profileCache.spans,
                          static_cast<CurveMode>(road.settings.verticalCurveMode)};
    const Result<double> height = HeightOn(road, profile, continuous);
    if (height && !std::isfinite(*height)) return Fail(KESTO_RESULT_NOT_FINITE);
    return height;
}

Result<double> CentreHeight(const AskedRoad& asked, StakeMileage stake) {
    if (asked.road.verticalCurves.Count() == 0) return 0.0;
    const Result<double> continuous = ContinuousMileage(asked, stake);
    if (!continuous) return continuous;
    CurrentProfile(asked);
    return HeightAtPlace(asked.road, *continuous);
}

}  // namespace kesto
