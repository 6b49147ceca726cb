#include "alignment/position.hpp"

#include <cmath>

#include "core/angles.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

inline constexpr double squareAngle = 90;     // degrees
inline constexpr double straightAngle = 180;  // degrees

/// Azimuth of the normal that belongs to an offset line, brought back to the circle once.
double OffsetDirection(double angle, double azimuth) noexcept {
    double direction = angle + azimuth - squareAngle;
    if (std::fabs(direction) < tolerance::azimuth) direction = 0;
    if (direction < 0) direction += fullCircle;
    if (direction > fullCircle) direction -= fullCircle;
    return direction;
}

/// Evaluates the element that a lookup on the chain as it stands has just found.
Result<Position> EvaluateFound(RoadDesign& road, std::int32_t found, double mileage) noexcept {
    const Element& element = road.elements[found];
    const double distance = mileage - element.startMileage;
    ChainIndex& index = road.chainIndex;
    const auto at = static_cast<std::size_t>(found);
    if (!index.filled || at >= index.frames.size()) return Evaluate(element, distance);
    if (index.framesKnown[at] == 0) {
        index.frames[at] = EvaluationFrameOf(element);
        index.framesKnown[at] = 1;
    }
    return Evaluate(element, index.frames[at], distance);
}

}  // namespace

std::optional<Position> CentrePoint(RoadDesign& road, StakeMileage stake) noexcept {
    const std::optional<std::int32_t> index = CoveringElement(road, stake);
    if (!index) return std::nullopt;
    const Result<Position> position = EvaluateFound(road, *index, stake.mileage);
    if (!position) return std::nullopt;
    return *position;
}

Position Moved(const Position& centre, Offset offset) noexcept {
    if (!(std::fabs(offset.distance) > tolerance::offset)) return centre;
    const bool usable = offset.angle >= 0 && offset.angle <= straightAngle;
    const double direction = ToRadians(OffsetDirection(usable ? offset.angle : squareAngle, centre.azimuth));
    return {centre.x - offset.distance * std::sin(direction), centre.y + offset.distance * std::cos(direction),
            centre.azimuth};
}

Outcome FindPosition(RoadDesign& road, StakeMileage stake, Offset offset, std::optional<Position>& position) noexcept {
    const std::optional<std::int32_t> index = CoveringElement(road, stake);
    if (!index) return ExplainMissing(road, stake);
    const Result<Position> centre = EvaluateFound(road, *index, stake.mileage);
    if (!centre) {
        position = Position{};
        Failure failure = centre.failure();
        failure.list = KESTO_LIST_ELEMENTS;
        failure.record = *index;
        return failure;
    }
    const Position moved = Moved(*centre, offset);
    if (!std::isfinite(moved.x) || !std::isfinite(moved.y)) return Fail(KESTO_RESULT_NOT_FINITE);
    position = moved;
    return {};
}

}  // namespace kesto
