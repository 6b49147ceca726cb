#include "alignment/projection.hpp"

#include <cmath>
#include <numbers>

#include "alignment/element_geometry.hpp"
#include "core/angles.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

/// Azimuth from one point to another, degrees in [0, 360).
double DirectionTo(Point from, Point to) noexcept {
    const double degrees = ToDegrees(std::atan2(to.y - from.y, to.x - from.x));
    return degrees < 0 ? degrees + fullCircle : degrees;
}

bool IsAtStart(const Element& element, Point point) noexcept {
    return std::fabs(point.y - element.startY) + std::fabs(point.x - element.startX) < tolerance::startPoint;
}

Point StartOf(const Element& element) noexcept { return {element.startX, element.startY}; }

bool IsWithin(const Element& element, double along) noexcept { return along >= 0 && along <= element.length; }

/// One end, or the middle, of the bracket around a spiral's foot.
struct Probe {
    double along;  // m from the element's start
    Position place;
    double distance;  // m: from here to the point, times the length of the direction vector
    double angle;     // rad: between the tangent and the vector to the point, in single precision
};

inline constexpr double rightAngle = std::numbers::pi / 2;  // rad
inline constexpr int mostHalvings = 100;

Probe MakeProbe(double along, const Position& place, Point point) noexcept {
    const double cosine = std::cos(ToRadians(place.azimuth));
    const double sine = std::sin(ToRadians(place.azimuth));
    const double dx = point.x - place.x;
    const double dy = point.y - place.y;
    const double norm = std::sqrt(dx * dx + dy * dy) * std::sqrt(cosine * cosine + sine * sine);
    const auto quotient = static_cast<float>((dx * cosine + dy * sine) / norm);
    return {along, place, norm, static_cast<double>(std::acos(quotient))};
}

bool IsAtPoint(const Probe& probe) noexcept { return probe.distance < tolerance::footDistance; }

bool IsSquare(const Probe& probe) noexcept { return std::fabs(probe.angle - rightAngle) < tolerance::rightAngle; }

/// Narrows the bracket to the half that holds the right angle.
void Narrow(Probe& lower, Probe& upper, const Probe& middle) noexcept {
    const bool falling = upper.angle <= lower.angle;
    const bool rising = upper.angle > lower.angle;
    if ((falling && middle.angle < rightAngle) || (rising && middle.angle > rightAngle)) {
        upper = middle;
    } else if ((falling && middle.angle > rightAngle) || (rising && middle.angle < rightAngle)) {
        lower = middle;
    }
}

/// The place on the spiral where the vector to the point is square to the tangent.
std::optional<Probe> FindSquare(const Element& spiral, Point point) noexcept {
    const Result<Position> end = Evaluate(spiral, spiral.length);
    if (!end) return std::nullopt;
    Probe lower = MakeProbe(0, {spiral.startX, spiral.startY, spiral.startAzimuth}, point);
    Probe upper = MakeProbe(spiral.length, *end, point);
    for (int halvings = 0;;) {
        if (IsAtPoint(lower)) return lower;
        if (!IsAtPoint(upper) && (upper.angle - rightAngle) * (lower.angle - rightAngle) > 0) return std::nullopt;
        if (IsSquare(lower)) return lower;
        if (IsAtPoint(upper) || IsSquare(upper)) return upper;
        const double along = (lower.along + upper.along) * 0.5;
        const Result<Position> place = Evaluate(spiral, along);
        if (!place) return std::nullopt;
        const Probe middle = MakeProbe(along, *place, point);
        if (IsAtPoint(middle) || IsSquare(middle)) return middle;
        if (++halvings == mostHalvings) return middle;
        Narrow(lower, upper, middle);
    }
}

}  // namespace

double Distance(Point one, Point other) noexcept {
    const double dx = other.x - one.x;
    const double dy = other.y - one.y;
    return std::sqrt(dx * dx + dy * dy);
}

std::optional<Foot> ProjectOnLine(const Element& line, Point point) noexcept {
    if (IsAtStart(line, point)) return Foot{};
    const Result<Position> end = Evaluate(line, line.length);
    if (!end) return std::nullopt;
    const Point start = StartOf(line);
    double angle = DirectionTo(start, point) - DirectionTo(start, {end->x, end->y});
    if (angle <= 0) angle += fullCircle;
    const double distance = Distance(start, point);
    const Foot foot{distance * std::cos(ToRadians(angle)), distance * std::sin(ToRadians(angle))};
    if (!IsWithin(line, foot.along)) return std::nullopt;
    return foot;
}

std::optional<Foot> ProjectOnArc(const Element& arc, Point point) noexcept {
    if (IsAtStart(arc, point)) return Foot{};
    const double azimuth = ToRadians(arc.startAzimuth);
    const double toCentre = TurnsLeft(arc) ? arc.startRadius : -arc.startRadius;
    const Point start = StartOf(arc);
    const Point centre{start.x + toCentre * std::sin(azimuth), start.y - toCentre * std::cos(azimuth)};
    if (!Evaluate(arc, arc.length)) return std::nullopt;
    const double fromStart = DirectionTo(centre, start);
    const double toPoint = DirectionTo(centre, point);
    double swept = TurnsLeft(arc) ? fromStart - toPoint : toPoint - fromStart;
    if (swept <= 0) swept += fullCircle;
    const double outside = Distance(centre, point) - arc.startRadius;
    const Foot foot{arc.startRadius * ToRadians(swept), TurnsLeft(arc) ? outside : -outside};
    if (!IsWithin(arc, foot.along)) return std::nullopt;
    return foot;
}

std::optional<Foot> ProjectOnSpiral(const Element& spiral, Point point) noexcept {
    if (IsAtStart(spiral, point)) return Foot{};
    const std::optional<Probe> square = FindSquare(spiral, point);
    if (!square) return std::nullopt;
    const Position& place = square->place;
    const double distance = Distance({place.x, place.y}, point);
    const double cosine = std::cos(ToRadians(place.azimuth));
    const double sine = std::sin(ToRadians(place.azimuth));
    const bool isLeft = cosine * (point.y - place.y) - sine * (point.x - place.x) < 0;
    return Foot{square->along, isLeft ? -distance : distance};
}

std::optional<Foot> Project(const Element& element, Point point) noexcept {
    if (IsType(element, ElementType::Spiral)) return ProjectOnSpiral(element, point);
    if (IsType(element, ElementType::Arc) && !IsInfiniteRadius(element.startRadius))
        return ProjectOnArc(element, point);
    if (IsType(element, ElementType::Arc) || IsType(element, ElementType::Straight)) {
        return ProjectOnLine(element, point);
    }
    return std::nullopt;
}

}  // namespace kesto
