/// Records as tests write them down.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "kesto_road/kesto_road.h"

namespace kesto::test {

inline constexpr std::uint8_t left = 0;
inline constexpr std::uint8_t right = 1;
inline constexpr std::int32_t heightening = 0;
inline constexpr std::int32_t widening = 1;

inline Element MakeElement(std::int32_t type, bool turnsRight, double startRadius, double endRadius, double length,
                           double x = 0, double y = 0, double azimuth = 0) {
    Element element{};
    element.type = type;
    element.turnDirection = turnsRight ? 1 : 0;
    element.startX = x;
    element.startY = y;
    element.startAzimuth = azimuth;
    element.startRadius = startRadius;
    element.endRadius = endRadius;
    element.length = length;
    return element;
}

/// Without radii, turning left.
inline Element Piece(std::int32_t type, double length) { return MakeElement(type, false, 0, 0, length); }

inline Element Straight(double length) { return MakeElement(1, false, 0, 0, length); }

inline Element Arc(std::uint8_t turn, double radius, double length) {
    return MakeElement(2, turn == right, radius, radius, length);
}

inline Element Spiral(std::uint8_t turn, double startRadius, double endRadius, double length) {
    return MakeElement(3, turn == right, startRadius, endRadius, length);
}

inline Intersection Corner(double x, double y, double radius = 0, double spiralIn = 0, double spiralOut = 0,
                           double radiusIn = 0, double radiusOut = 0) {
    Intersection point{};
    point.x = x;
    point.y = y;
    point.radius = radius;
    point.spiralIn = spiralIn;
    point.spiralOut = spiralOut;
    point.radiusIn = radiusIn;
    point.radiusOut = radiusOut;
    return point;
}

inline Coordinate MainPoint(double x, double y, std::int32_t type, double radius = 0, bool turnsRight = true) {
    Coordinate point{};
    point.type = type;
    point.turnDirection = turnsRight ? 1 : 0;
    point.x = x;
    point.y = y;
    point.radius = radius;
    return point;
}

/// A record with a name, of at most 31 bytes.
template <class Record>
Record Named(std::string_view name, Record record) {
    std::fill(std::begin(record.name), std::end(record.name), '\0');
    std::copy_n(name.data(), std::min(name.size(), sizeof record.name - 1), record.name);
    return record;
}

/// A curve whose ends, where they count, are not set.
inline VerticalCurve GradePoint(double mileage, double elevation, double radius = 0, std::int32_t occurrence = 0) {
    VerticalCurve curve{};
    curve.mileage = mileage;
    curve.occurrence = occurrence;
    curve.elevation = elevation;
    curve.radius = radius;
    curve.startOccurrence = curve.endOccurrence = -1;
    return curve;
}

inline SectionPlate Plate(double width, double crossSlope, double step = 0) {
    SectionPlate plate{};
    plate.width = width;
    plate.crossSlope = crossSlope;
    plate.step = step;
    return plate;
}

/// Lines with the project file's line ends.
inline std::string Lines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) text.append(line).append("\r\n");
    return text;
}

}  // namespace kesto::test
