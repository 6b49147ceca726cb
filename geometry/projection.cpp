#include "geometry/projection.hpp"

#include <cmath>

#include "core/tolerances.hpp"
#include "geometry/angles.hpp"

namespace kesto {

namespace {

/// Azimuth from one point to another, degrees in [0, 360).
double DirectionTo(Point from, Point to) noexcept {
    const double degrees = ToDegrees(std::atan2(to.y - from.y, to.x - from.x));
    return degrees < 0 ? degrees + fullCircle : degrees;
}

bool IsWithin(const FootFrame& frame, double along) noexcept { return along >= 0 && along <= frame.length; }

/// One end, or the middle, of the bracket around a spiral's foot.
struct Probe {
    double along;  // m from the element's start
    Position place;
    Heading heading;  // of the tangent
    double distance;  // m: from here to the point, times the length of the direction vector
    double angle;     // rad: between the tangent and the vector to the point, in single precision
};

Probe MakeProbe(double along, const Position& place, Point point) noexcept {
    const Heading heading = HeadingOf(place.azimuth);
    const Look look = LookFrom({place.x, place.y}, heading, LengthOf(heading), point);
    return {along, place, heading, look.distance, static_cast<double>(ArcCosine(look.cosine))};
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
        if (++halvings == mostFootHalvings) return middle;
        Narrow(lower, upper, middle);
    }
}

}  // namespace

FootFrame LineFrameOf(const Element& line, const Position& end) noexcept {
    FootFrame frame;
    frame.x = line.startX;
    frame.y = line.startY;
    frame.length = line.length;
    frame.direction = DirectionTo({frame.x, frame.y}, {end.x, end.y});
    return frame;
}

FootFrame ArcFrameOf(const Element& arc) noexcept {
    const double azimuth = ToRadians(arc.startAzimuth);
    const double toCentre = TurnsLeft(arc) ? arc.startRadius : -arc.startRadius;
    FootFrame frame;
    frame.x = arc.startX;
    frame.y = arc.startY;
    frame.length = arc.length;
    frame.centreX = frame.x + toCentre * std::sin(azimuth);
    frame.centreY = frame.y - toCentre * std::cos(azimuth);
    frame.radius = arc.startRadius;
    frame.left = TurnsLeft(arc);
    frame.direction = DirectionTo({frame.centreX, frame.centreY}, {frame.x, frame.y});
    return frame;
}

std::optional<Foot> FootOnLine(const FootFrame& line, Point point) noexcept {
    const Point start{line.x, line.y};
    double angle = DirectionTo(start, point) - line.direction;
    if (angle <= 0) angle += fullCircle;
    const double distance = Distance(start, point);
    const Foot foot{distance * std::cos(ToRadians(angle)), distance * std::sin(ToRadians(angle))};
    if (!IsWithin(line, foot.along)) return std::nullopt;
    return foot;
}

std::optional<Foot> FootOnArc(const FootFrame& arc, Point point) noexcept {
    const Point centre{arc.centreX, arc.centreY};
    const double toPoint = DirectionTo(centre, point);
    double swept = arc.left ? arc.direction - toPoint : toPoint - arc.direction;
    if (swept <= 0) swept += fullCircle;
    const double outside = Distance(centre, point) - arc.radius;
    const Foot foot{arc.radius * ToRadians(swept), arc.left ? outside : -outside};
    if (!IsWithin(arc, foot.along)) return std::nullopt;
    return foot;
}

std::optional<Foot> ProjectOnLine(const Element& line, Point point) noexcept {
    if (IsAtStart(StartOf(line), point)) return Foot{};
    const Result<Position> end = Evaluate(line, line.length);
    if (!end) return std::nullopt;
    return FootOnLine(LineFrameOf(line, *end), point);
}

std::optional<Foot> ProjectOnArc(const Element& arc, Point point) noexcept {
    if (IsAtStart(StartOf(arc), point)) return Foot{};
    if (!Evaluate(arc, arc.length)) return std::nullopt;
    return FootOnArc(ArcFrameOf(arc), point);
}

std::optional<Foot> ProjectOnSpiral(const Element& spiral, Point point) noexcept {
    if (IsAtStart(StartOf(spiral), point)) return Foot{};
    const std::optional<Probe> square = FindSquare(spiral, point);
    if (!square) return std::nullopt;
    return FootAt(square->along, {square->place.x, square->place.y}, square->heading, point);
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
