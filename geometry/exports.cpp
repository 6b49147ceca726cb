// Exported functions of single elements.

#include "core/arguments.hpp"
#include "core/guard.hpp"
#include "geometry/element_geometry.hpp"
#include "geometry/transition.hpp"

using kesto::AskedRoad;
using kesto::Outcome;
using kesto::QueryBool;

namespace {

/// Element evaluation: outputs 0 unless it succeeds.
Outcome EvaluateInto(const Element& element, double distance, double* x, double* y, double* azimuth) noexcept {
    const Element copy = element;  // an output may lie in the caller's record
    *x = *y = *azimuth = 0;
    if (Outcome finite = kesto::RequireFinite(
            {distance, copy.startX, copy.startY, copy.startAzimuth, copy.startRadius, copy.endRadius, copy.length});
        !finite)
        return finite;
    const kesto::Result<kesto::Position> position = kesto::Evaluate(copy, distance);
    if (!position) return position.failure();
    *x = position->x;
    *y = position->y;
    *azimuth = position->azimuth;
    return {};
}

Outcome EaseInto(double startRadius, double endRadius, double length, EaseParam* out) noexcept {
    return kesto::Assign(out, kesto::EaseParameters(startRadius, endRadius, length));
}

}  // namespace

// clang-format off
bool KESTO_CALL GetElementPositionAndAzimuth(RoadDesign* h, const Element* e, double s, double* x, double* y, double* a) { return QueryBool(h, [&](const AskedRoad&) { return EvaluateInto(*e, s, x, y, a); }, e, x, y, a); }
bool KESTO_CALL CalcEaseParam(RoadDesign* h, double startRadius, double endRadius, double length, EaseParam* out) { return QueryBool(h, [&](const AskedRoad&) { return EaseInto(startRadius, endRadius, length, out); }, out); }
// clang-format on
