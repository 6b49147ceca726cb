#include "drawing/plan_view.hpp"

#include <algorithm>
#include <cmath>

#include "drawing/scales.hpp"

namespace kesto::host {

namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr double roomAtSides = 17;       // mm left and right of the road for labels
constexpr double roomAbove = 26;         // mm above and below it
constexpr double worthTurning = 1.35;    // how much larger a turned plan must be
constexpr double worthShrinking = 1.25;  // how much smaller a plan may be to show all intersections

/// The part of the sheet that a view of the road covers.
Box Extent(const std::vector<Place>& ground, const View& view) {
    Box box{1e300, 1e300, -1e300, -1e300};
    for (const Place& point : ground) {
        const Place place = view(point.x, point.y);
        box = {std::min(box.left, place.x), std::min(box.top, place.y), std::max(box.right, place.x),
               std::max(box.bottom, place.y)};
    }
    return box;
}

/// Points of the road, close enough to tell its extent.
std::vector<Place> Outline(const RoadLine& line) {
    std::vector<Place> points;
    constexpr int steps = 6;
    for (const Piece& piece : line.Pieces()) {
        for (int i = 0; i <= steps; ++i) {
            const CentrePoint point = line.At(piece, piece.Length() * i / steps);
            points.push_back({point.x, point.y});
        }
    }
    return points;
}

/// The largest scale with which the road fits a box: mm on the sheet for a metre.
/// @param turn how far the road is turned clockwise (radians)
double FittingScale(const std::vector<Place>& ground, double turn, const Box& box) {
    View view;
    view.turn = turn;
    const Box extent = Extent(ground, view);
    const double width = std::max(extent.Width(), 1e-3);
    const double height = std::max(extent.Height(), 1e-3);
    return std::min(box.Width() / width, box.Height() / height);
}

/// The points that the plan shows: the road, and the intersections unless they lie so far out that the road would
/// become small.
std::vector<Place> Shown(const RoadLine& line, const std::vector<Intersection>& polygon, const Box& box) {
    std::vector<Place> road = Outline(line);
    std::vector<Place> all = road;
    for (const Intersection& it : polygon) all.insert(all.end() - 1, {it.x, it.y});
    const double shrinking = FittingScale(road, 0, box) / FittingScale(all, 0, box);
    return shrinking > worthShrinking ? road : all;
}

}  // namespace

Place View::operator()(double x, double y) const noexcept {
    return {origin.x + scale * (y * std::cos(turn) + x * std::sin(turn)),
            origin.y + scale * (y * std::sin(turn) - x * std::cos(turn))};
}

Place View::Ground(Place place) const noexcept {
    const double right = (place.x - origin.x) / scale;
    const double down = (place.y - origin.y) / scale;
    return {right * std::sin(turn) - down * std::cos(turn), right * std::cos(turn) + down * std::sin(turn)};
}

double View::Direction(double azimuth) const noexcept { return azimuth * degree + turn - rightAngle; }

View FitView(const RoadLine& line, const std::vector<Intersection>& polygon, const Box& whole) {
    const double above = std::min(roomAbove, whole.Height() / 3);
    const Box box{whole.left + roomAtSides, whole.top + above, whole.right - roomAtSides, whole.bottom - above};
    const auto ground = Shown(line, polygon, box);
    const Place first = ground.front();
    const Place last = ground.back();
    const double sideways =
        rightAngle -
        std::atan2(last.y - first.y, last.x - first.x);  // brings the start to the left, the end to the right
    double scale = FittingScale(ground, 0, box);
    View view;
    if (FittingScale(ground, sideways, box) > worthTurning * scale) {
        view.turn = sideways;
        scale = FittingScale(ground, sideways, box);
    }
    view.denominator = UsualScale(millimetresPerMetre / scale);
    view.scale = millimetresPerMetre / view.denominator;
    const Box extent = Extent(ground, view);
    view.origin = {(box.left + box.right - extent.left - extent.right) / 2,
                   (box.top + box.bottom - extent.top - extent.bottom) / 2};
    return view;
}

}  // namespace kesto::host
