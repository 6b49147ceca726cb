#include "geometry/element_geometry.hpp"

#include <cmath>

#include "core/tolerances.hpp"
#include "geometry/angles.hpp"
#include "geometry/clothoid.hpp"

namespace kesto {

namespace {

/// Point of a circular arc at arc length s from its start (route surveying, circular curves).
LocalPoint ArcPoint(double radius, double distance) noexcept {
    const double turn = distance / radius;
    // Of half the turn: R (1 - cos) would cancel on flat arcs, and sine and cosine come from one evaluation.
    const double chord = 2 * radius * std::sin(turn / 2);
    return {chord * std::cos(turn / 2), chord * std::sin(turn / 2), turn};
}

/// Azimuth after a turn, brought back to the circle by one subtraction: exactly 360 stays 360.
double TurnedAzimuth(double azimuth, double turn) noexcept {
    double turned = azimuth + ToDegrees(turn);
    if (turned > fullCircle) turned -= fullCircle;
    if (std::fabs(turned) < tolerance::azimuth) turned = 0;
    if (turned < 0) turned += fullCircle;
    return turned;
}

}  // namespace

bool IsInfiniteRadius(double radius) noexcept { return radius < tolerance::infiniteRadius; }

std::optional<ClothoidStretch> StretchOf(const Element& spiral) noexcept {
    const double startRadius = spiral.startRadius;
    const double endRadius = spiral.endRadius;
    const double length = spiral.length;
    const bool fromStraight = IsInfiniteRadius(startRadius);
    const bool toStraight = IsInfiniteRadius(endRadius);
    if (!toStraight && (fromStraight || startRadius > endRadius)) {
        const double rate =
            fromStraight ? 1 / (endRadius * length) : (startRadius - endRadius) / (length * startRadius * endRadius);
        const double start = fromStraight ? 0 : 1 / (rate * startRadius);
        return ClothoidStretch{rate, start, 1, ClothoidAngle(rate, start + length)};
    }
    if (!fromStraight && (toStraight || endRadius > startRadius)) {
        const double rate =
            toStraight ? 1 / (startRadius * length) : (endRadius - startRadius) / (length * startRadius * endRadius);
        const double start = (toStraight ? 0 : 1 / (rate * endRadius)) + length;
        return ClothoidStretch{rate, start, -1, ClothoidAngle(rate, start)};
    }
    return std::nullopt;
}

Heading HeadingOf(double azimuth) noexcept { return {std::cos(ToRadians(azimuth)), std::sin(ToRadians(azimuth))}; }

StartFrame FrameOf(const Element& element) noexcept {
    return {element.startX, element.startY, element.startAzimuth, HeadingOf(element.startAzimuth), TurnsLeft(element)};
}

Position PlaceOn(const StartFrame& start, const LocalPoint& local) noexcept {
    const double v = start.left ? -local.v : local.v;
    const double turn = start.left ? -local.turn : local.turn;
    return {start.x + local.u * start.heading.cosine - v * start.heading.sine,
            start.y + local.u * start.heading.sine + v * start.heading.cosine, TurnedAzimuth(start.azimuth, turn)};
}

std::optional<LocalPoint> EvaluateLocal(const Element& element, double distance) noexcept {
    if (IsType(element, ElementType::Spiral)) {
        const std::optional<ClothoidStretch> stretch = StretchOf(element);
        return stretch ? ClothoidPoint(*stretch, distance) : std::nullopt;
    }
    if (IsType(element, ElementType::Arc) && !IsInfiniteRadius(element.startRadius)) {
        return ArcPoint(element.startRadius, distance);
    }
    if (IsType(element, ElementType::Arc) || IsType(element, ElementType::Straight)) return LocalPoint{distance, 0, 0};
    return std::nullopt;
}

EvaluationFrame EvaluationFrameOf(const Element& element) noexcept {
    EvaluationFrame frame;
    frame.heading = HeadingOf(element.startAzimuth);
    if (const auto stretch = IsType(element, ElementType::Spiral) ? StretchOf(element) : std::nullopt) {
        frame.hasSeries = HasSeries(*stretch);
        if (frame.hasSeries) frame.clothoid = FrameOf(*stretch);
    }
    return frame;
}

namespace {

/// Evaluates an element, given its local points and its heading.
template <class LocalAt, class HeadingAt>
Result<Position> EvaluateBy(const Element& element, double distance, const LocalAt& localAt,
                            const HeadingAt& headingAt) noexcept {
    Position position{element.startX, element.startY, element.startAzimuth};
    if (!(std::fabs(distance) < tolerance::distance)) {
        if (!(std::fabs(distance) - std::fabs(element.length) <= tolerance::distance)) {
            return FailLimit(KESTO_DISTANCE_BEYOND_ELEMENT, KESTO_LIMIT_ELEMENT_LENGTH, std::fabs(distance),
                             std::fabs(element.length));
        }
        const bool pointLike = IsType(element, ElementType::Spiral) && IsInfiniteRadius(element.startRadius) &&
                               IsInfiniteRadius(element.endRadius);
        if (!pointLike) {
            const std::optional<LocalPoint> local = localAt();
            if (!local) return Fail(KESTO_ELEMENT_NOT_EVALUABLE);
            const StartFrame start{element.startX, element.startY, element.startAzimuth, headingAt(),
                                   TurnsLeft(element)};
            position = PlaceOn(start, *local);
        }
    }
    if (!std::isfinite(position.x) || !std::isfinite(position.y) || !std::isfinite(position.azimuth)) {
        return Fail(KESTO_RESULT_NOT_FINITE);
    }
    return position;
}

}  // namespace

Result<Position> Evaluate(const Element& element, double distance) noexcept {
    return EvaluateBy(
        element, distance, [&] { return EvaluateLocal(element, distance); },
        [&] { return HeadingOf(element.startAzimuth); });
}

Result<Position> Evaluate(const Element& element, const EvaluationFrame& frame, double distance) noexcept {
    return EvaluateBy(
        element, distance,
        [&]() -> std::optional<LocalPoint> {
            if (frame.hasSeries && SeriesReaches(frame.clothoid.stretch, distance)) {
                return SeriesPoint(frame.clothoid, distance);
            }
            return EvaluateLocal(element, distance);
        },
        [&] { return frame.heading; });
}

}  // namespace kesto
