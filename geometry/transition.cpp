#include "geometry/transition.hpp"

#include <cmath>

#include "core/arguments.hpp"
#include "geometry/angles.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

namespace {

double CurvatureOf(double radius) noexcept { return IsInfiniteRadius(radius) ? 0 : 1 / radius; }

}  // namespace

std::optional<Transition> TransitionTo(double fromRadius, double radius, double length) noexcept {
    Transition transition;
    if (!(length > 0)) return transition;
    Element spiral{};
    spiral.type = static_cast<std::int32_t>(ElementType::Spiral);
    spiral.startRadius = fromRadius;
    spiral.endRadius = radius;
    spiral.length = length;
    const std::optional<LocalPoint> end = EvaluateLocal(spiral, length);
    if (!end) return std::nullopt;
    const double half = std::sin(end->turn / 2);
    transition.end = *end;
    transition.shift = end->v - 2 * radius * half * half;
    transition.tangentOffset = end->u - radius * std::sin(end->turn);
    return transition;
}

Result<EaseParam> EaseParameters(double startRadius, double endRadius, double length) noexcept {
    if (const Outcome finite = RequireFinite({startRadius, endRadius, length}); !finite) return finite.failure();
    const double startCurvature = CurvatureOf(startRadius);
    const double endCurvature = CurvatureOf(endRadius);
    if (!(length > 0) || startCurvature == endCurvature) return Fail(KESTO_ELEMENT_NOT_EVALUABLE);
    const bool tightensTowardsEnd = endCurvature > startCurvature;
    const double radius = tightensTowardsEnd ? endRadius : startRadius;
    const std::optional<Transition> transition =
        TransitionTo(tightensTowardsEnd ? startRadius : endRadius, radius, length);
    if (!transition) return Fail(KESTO_ELEMENT_NOT_EVALUABLE);
    const LocalPoint& end = transition->end;
    const EaseParam parameters{.parameterSquared = length / std::fabs(endCurvature - startCurvature),
                               .deflection = ToDegrees(length * (startCurvature + endCurvature) / 2),
                               .shift = transition->shift,
                               .tangentOffset = transition->tangentOffset,
                               .chord = std::hypot(end.u, end.v)};
    for (const double number : {parameters.parameterSquared, parameters.deflection, parameters.shift,
                                parameters.tangentOffset, parameters.chord}) {
        if (!std::isfinite(number)) return Fail(KESTO_RESULT_NOT_FINITE);
    }
    return parameters;
}

}  // namespace kesto
