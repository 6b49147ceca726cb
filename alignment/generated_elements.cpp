#include "alignment/generated_elements.hpp"

#include <cmath>

#include "geometry/angles.hpp"

namespace kesto {

void ElementWriter::Start(Point point, double azimuth) {
    Element start{};
    start.startMileage = nextMileage;
    start.startX = point.x;
    start.startY = point.y;
    start.startAzimuth = azimuth;
    start.secondAzimuth = azimuth;
    elements.Insert(start);
}

void ElementWriter::Add(const Piece& piece, Point start, double azimuth) {
    Element element{};
    element.type = static_cast<std::int32_t>(piece.type);
    element.turnDirection = piece.turnsRight ? 1 : 0;
    element.startMileage = nextMileage;
    element.startX = start.x;
    element.startY = start.y;
    element.startAzimuth = azimuth;
    element.startRadius = piece.startRadius;
    element.endRadius = piece.endRadius;
    element.length = piece.length;
    elements.Insert(element);
    nextMileage += piece.length;
}

double AzimuthBetween(Point from, Point to) noexcept {
    return NormalisedAzimuth(ToDegrees(std::atan2(to.y - from.y, to.x - from.x)));
}

double NormalisedAzimuth(double degrees) noexcept {
    const double remainder = std::fmod(degrees, fullCircle);
    const double azimuth = remainder < 0 ? remainder + fullCircle : remainder;
    return azimuth < fullCircle ? azimuth : 0;  // a tiny negative remainder rounds up to the full circle
}

}  // namespace kesto
