#include "geometry/element_cut.hpp"

#include <cmath>

#include "core/tolerances.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

double SplitRadius(const Element& spiral, double first, double second) noexcept {
    const double startRadius = spiral.startRadius;
    const double endRadius = spiral.endRadius;
    if (!(startRadius > tolerance::infiniteRadius)) return std::fabs(spiral.length * endRadius / first);
    if (!(endRadius > tolerance::infiniteRadius)) return std::fabs(spiral.length * startRadius / second);
    const double shift = endRadius * spiral.length / (startRadius - endRadius);
    return std::fabs((spiral.length + shift) * endRadius / (first + shift));
}

Result<Element> CutElement(const Element& element, double from, double to) noexcept {
    Element piece = element;
    const double sense = element.length < 0 ? -1 : 1;
    const double first = sense * from;
    const double second = sense * to;
    const bool cutAtStart = from > 0;
    const bool cutAtEnd = to < std::fabs(element.length);
    const bool spiral = IsType(element, ElementType::Spiral);
    if (cutAtEnd) {
        if (const Result<Position> end = Evaluate(element, second); !end) return end.failure();
        piece.length = second;
        if (spiral) piece.endRadius = SplitRadius(element, second, element.length - second);
    }
    if (!cutAtStart) return piece;
    const Result<Position> start = Evaluate(element, first);
    if (!start) return start.failure();
    piece.length -= first;
    if (spiral) piece.startRadius = SplitRadius(element, first, element.length - first);
    piece.startMileage += first;
    piece.startX = start->x;
    piece.startY = start->y;
    piece.startAzimuth = start->azimuth;
    piece.flag = 0;
    return piece;
}

}  // namespace kesto
