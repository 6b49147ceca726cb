/// What the tests of the project file share: lines as a file has them, and records in one line.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/road_design.hpp"
#include "core/text.hpp"

namespace kesto::test {

/// Lines with the file's line ends.
inline std::string Lines(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) text.append(line).append("\r\n");
    return text;
}

inline Intersection Point(std::string_view name, double x, double y, double radius) {
    Intersection point{};
    SetText(point.name, name);
    point.x = x;
    point.y = y;
    point.radius = radius;
    return point;
}

inline Coordinate Polygon(std::string_view name, double x, double y) {
    Coordinate point{};
    point.type = 1;
    point.x = x;
    point.y = y;
    SetText(point.name, name);
    return point;
}

inline Element Piece(std::int32_t type, double length) {
    Element element{};
    element.type = type;
    element.length = length;
    return element;
}

inline VerticalCurve GradePoint(double mileage, double elevation) {
    VerticalCurve curve{};
    curve.mileage = mileage;
    curve.elevation = elevation;
    return curve;
}

}  // namespace kesto::test
