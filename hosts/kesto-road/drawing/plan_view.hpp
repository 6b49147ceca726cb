/// How a plan lies on its sheet: turn, scale and place.
#pragma once

#include <numbers>
#include <vector>

#include "drawing/canvas.hpp"
#include "kesto_road/kesto_road.h"
#include "road/road_line.hpp"

namespace kesto::host {

inline constexpr double rightAngle = std::numbers::pi / 2;  ///< radians

/// Maps the ground onto the sheet.
struct View {
    double turn = 0;         ///< how far the plan is turned clockwise against north up (radians)
    double scale = 1;        ///< mm on the sheet for a metre
    Place origin;            ///< where the ground's origin would be (mm)
    double denominator = 1;  ///< of the scale

    /// @param x northing (m). @param y easting (m)
    [[nodiscard]] Place operator()(double x, double y) const noexcept;
    /// Sheet to ground: x is the northing.
    [[nodiscard]] Place Ground(Place place) const noexcept;
    /// An azimuth (degrees) as a direction on the sheet: radians, clockwise from the sheet's right.
    [[nodiscard]] double Direction(double azimuth) const noexcept;
};

/// The view that shows the road in a box, at the largest usual scale. North is up, unless turning the road on its side
/// makes it much larger.
/// @param polygon the road's intersections: they are shown too, unless they lie so far out that the road becomes small
View FitView(const RoadLine& line, const std::vector<Intersection>& polygon, const Box& whole);

}  // namespace kesto::host
