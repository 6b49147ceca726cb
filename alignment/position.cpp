#include "alignment/position.hpp"

#include <cmath>

#include "core/tolerances.hpp"
#include "geometry/angles.hpp"

namespace kesto {

namespace {

inline constexpr double straightAngle = 180;  // degrees

/// Azimuth of the normal that belongs to an offset line, brought back to the circle once.
double OffsetDirection(double angle, double azimuth) noexcept {
    double direction = angle + azimuth - squareAngle;
    if (std::fabs(direction) < tolerance::azimuth) direction = 0;
    if (direction < 0) direction += fullCircle;
    if (direction > fullCircle) direction -= fullCircle;
    return direction;
}

/// Evaluates the element that a lookup has found.
Result<Position> EvaluateFound(const ChainView& chain, std::int32_t found, double mileage) noexcept {
    const Element& element = chain.road.elements[found];
    const double distance = mileage - element.startMileage;
    const ChainIndex* const index = chain.index;
    const auto at = static_cast<std::size_t>(found);
    if (index == nullptr || at >= index->frames.size()) return Evaluate(element, distance);
    if (index->framesKnown[at] == 0) {
        if (chain.keeper == nullptr) return Evaluate(element, distance);
        chain.keeper->frames[at] = EvaluationFrameOf(element);
        chain.keeper->framesKnown[at] = 1;
    }
    return Evaluate(element, index->frames[at], distance);
}

}  // namespace

std::optional<Position> CentrePoint(const ChainView& chain, StakeMileage stake) noexcept {
    const std::optional<std::int32_t> index = CoveringElement(chain, stake);
    if (!index) return std::nullopt;
    const Result<Position> position = EvaluateFound(chain, *index, stake.mileage);
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

Outcome FindPosition(const ChainView& chain, StakeMileage stake, Offset offset,
                     std::optional<Position>& position) noexcept {
    const std::optional<std::int32_t> index = CoveringElement(chain, stake);
    if (!index) return ExplainMissing(chain, stake);
    const Result<Position> centre = EvaluateFound(chain, *index, stake.mileage);
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
