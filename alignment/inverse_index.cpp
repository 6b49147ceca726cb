#include "alignment/inverse_index.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numbers>

#include "core/tolerances.hpp"
#include "geometry/angles.hpp"

namespace kesto {

namespace {

using Kind = ElementSight::Kind;

/// An axis-parallel box around points (m).
struct Box {
    double lowX = std::numeric_limits<double>::infinity();
    double lowY = std::numeric_limits<double>::infinity();
    double highX = -std::numeric_limits<double>::infinity();
    double highY = -std::numeric_limits<double>::infinity();

    void Take(double x, double y) noexcept {
        lowX = std::min(lowX, x);
        lowY = std::min(lowY, y);
        highX = std::max(highX, x);
        highY = std::max(highY, y);
    }
    void Move(double x, double y) noexcept {
        lowX += x;
        lowY += y;
        highX += x;
        highY += y;
    }
    void Grow(double by) noexcept {
        lowX -= by;
        lowY -= by;
        highX += by;
        highY += by;
    }
};

bool IsUpTo(double number, double most) noexcept { return std::fabs(number) <= most; }

/// Whether the bounds hold for an element: every number that its projection reads is finite and of a usual size.
bool IsUsual(const Element& element) noexcept {
    const bool radii = IsType(element, ElementType::Straight) ||
                       (IsUpTo(element.startRadius, tolerance::indexRadius) &&
                        (IsType(element, ElementType::Arc) || IsUpTo(element.endRadius, tolerance::indexRadius)));
    return IsUpTo(element.startX, tolerance::indexCoordinate) && IsUpTo(element.startY, tolerance::indexCoordinate) &&
           IsUpTo(element.startAzimuth, tolerance::indexAzimuth) && IsUpTo(element.length, tolerance::indexLength) &&
           radii;
}

Heading Towards(double dx, double dy, double length) noexcept {
    if (!(length > 0)) return {};
    return {dx / length, dy / length};
}

/// A straight that can have a foot, and its box.
void SeeStraight(const Element& element, const Position& end, ElementSight& sight, Box& box) noexcept {
    sight.kind = Kind::Straight;
    sight.frame = LineFrameOf(element, end);
    const double dx = end.x - element.startX;
    const double dy = end.y - element.startY;
    sight.toEnd = Towards(dx, dy, std::sqrt(dx * dx + dy * dy));
    box.Take(end.x, end.y);
}

/// An arc that can have a foot: its box reaches to its ends and to the sides of its circle that it passes.
void SeeArc(const Element& element, const Position& end, ElementSight& sight, Box& box) noexcept {
    constexpr double quarter = fullCircle / 4;
    sight.kind = Kind::Arc;
    const FootFrame& arc = sight.frame = ArcFrameOf(element);
    sight.toEnd = Towards(end.x - arc.centreX, end.y - arc.centreY, arc.radius);
    const double swept = std::min(ToDegrees(arc.length / arc.radius), fullCircle);
    sight.isShortArc = swept < fullCircle / 2;
    const double from = arc.left ? arc.direction - swept : arc.direction;
    box.Take(end.x, end.y);
    for (auto side = static_cast<int>(std::ceil(from / quarter)); side * quarter <= from + swept; ++side) {
        const double reach = (side & 2) == 0 ? arc.radius : -arc.radius;  // 0: +x, 1: +y, 2: -x, 3: -y
        const bool alongX = (side & 1) == 0;
        box.Take(arc.centreX + (alongX ? reach : 0), arc.centreY + (alongX ? 0 : reach));
    }
}

/// Curvature of the end of a spiral (1/m).
double CurvatureOf(double radius) noexcept { return IsInfiniteRadius(radius) ? 0 : 1 / radius; }

/// How far a curve may lie off its chord, the place of equal share on it: curvature, integrated twice. For a curvature
/// that runs evenly from 0 to k that is k L^2 / (9 sqrt 3) at most; one from both ends on is the sum of two such.
double SagittaOf(double startCurvature, double endCurvature, double length) noexcept {
    return (startCurvature + endCurvature) * length * length / (9 * std::numbers::sqrt3);
}

/// A spiral that can have a foot. Where it turns little it lies to one side of its chord.
void SeeSpiral(const Element& element, const ClothoidStretch& stretch, const Position& end, ElementSight& sight,
               SpiralSight& spiral, Box& box) noexcept {
    constexpr double littleTurn = 1.5;  // rad
    sight.kind = Kind::Spiral;
    sight.frame.left = TurnsLeft(element);
    spiral.start = FrameOf(element);
    spiral.hasSeries = HasSeries(stretch);
    if (spiral.hasSeries) spiral.clothoid = FrameOf(stretch);
    spiral.endX = end.x;
    spiral.endY = end.y;
    spiral.endHeading = HeadingOf(end.azimuth);
    spiral.startHeadingLength = LengthOf(spiral.start.heading);
    spiral.endHeadingLength = LengthOf(spiral.endHeading);
    const double length = std::fabs(element.length);
    const double startCurvature = CurvatureOf(element.startRadius);
    const double endCurvature = CurvatureOf(element.endRadius);
    spiral.curvature = std::max(startCurvature, endCurvature);
    spiral.sagitta = std::min(SagittaOf(startCurvature, endCurvature, length), length);
    box.Take(end.x, end.y);
    spiral.isOneSided = element.length > 0 && spiral.curvature * length < littleTurn;
    if (!spiral.isOneSided) return box.Grow(spiral.sagitta);
    const double dx = end.x - element.startX;
    const double dy = end.y - element.startY;
    const Heading chord = Towards(dx, dy, std::sqrt(dx * dx + dy * dy));
    const double aside = TurnsLeft(element) ? spiral.sagitta : -spiral.sagitta;  // away from the centre of the turn
    box.Take(element.startX - aside * chord.sine, element.startY + aside * chord.cosine);
    box.Take(end.x - aside * chord.sine, end.y + aside * chord.cosine);
}

/// How an element is seen, and the box around all feet that it can have and its start point.
Box See(const Element& element, ElementSight& sight, InverseIndex& index) {
    Box box;
    box.Take(element.startX, element.startY);
    const bool isSpiral = IsType(element, ElementType::Spiral);
    const bool isLine = IsType(element, ElementType::Straight) ||
                        (IsType(element, ElementType::Arc) && IsInfiniteRadius(element.startRadius));
    const bool isArc = IsType(element, ElementType::Arc) && !isLine;
    sight.frame.x = element.startX;
    sight.frame.y = element.startY;
    sight.frame.length = element.length;
    // Feet of straights and arcs lie between 0 and the length; a spiral without a curve stays at its start point.
    if (!(isLine || isArc || isSpiral) || (!isSpiral && !(element.length > 0))) return box;
    const std::optional<ClothoidStretch> stretch = isSpiral ? StretchOf(element) : std::nullopt;
    if (isSpiral && !stretch) return box;
    const Result<Position> end = Evaluate(element, element.length);
    if (!end) return box;
    if (isLine) SeeStraight(element, *end, sight, box);
    if (isArc) SeeArc(element, *end, sight, box);
    if (isSpiral) {
        sight.spiral = static_cast<std::int32_t>(index.spirals.size());
        SeeSpiral(element, *stretch, *end, sight, index.spirals.emplace_back(), box);
        index.mostBefore = std::max(index.mostBefore, -element.length);
    }
    return box;
}

/// Half the width of a side as a node stores it: wider by more than single precision can lose, here and in the search.
float HalfWidth(double low, double high, float centre) noexcept {
    constexpr float wider = 1 + 8 * std::numeric_limits<float>::epsilon();
    return static_cast<float>(std::max(high - static_cast<double>(centre), static_cast<double>(centre) - low)) * wider;
}

/// @param box from the index's origin
void SetLane(BoxNode& node, std::size_t lane, const Box& box) noexcept {
    node.centreX[lane] = static_cast<float>((box.lowX + box.highX) / 2);
    node.centreY[lane] = static_cast<float>((box.lowY + box.highY) / 2);
    node.halfX[lane] = HalfWidth(box.lowX, box.highX, node.centreX[lane]);
    node.halfY[lane] = HalfWidth(box.lowY, box.highY, node.centreY[lane]);
}

/// The box around a node.
Box BoxOf(const BoxNode& node) noexcept {
    Box box;
    for (std::size_t lane = 0; lane < boxLanes; ++lane) {
        const auto x = static_cast<double>(node.centreX[lane]);
        const auto y = static_cast<double>(node.centreY[lane]);
        const auto halfX = static_cast<double>(node.halfX[lane]);
        const auto halfY = static_cast<double>(node.halfY[lane]);
        if (halfX < 0) continue;
        box.Take(x - halfX, y - halfY);
        box.Take(x + halfX, y + halfY);
    }
    return box;
}

BoxNode EmptyNode() noexcept {
    BoxNode node;
    node.centreX.fill(0);
    node.centreY.fill(0);
    node.halfX.fill(-std::numeric_limits<float>::infinity());
    node.halfY.fill(-std::numeric_limits<float>::infinity());
    return node;
}

/// Levels above the boxes of the elements, until one node is left.
void StackLevels(InverseIndex& index) {
    std::size_t first = 0;
    while (index.nodes.size() - first > 1) {
        const std::size_t end = index.nodes.size();
        index.levels.push_back(static_cast<std::int32_t>(end));
        for (std::size_t at = first; at < end; ++at) {
            const std::size_t lane = (at - first) % boxLanes;
            if (lane == 0) index.nodes.push_back(EmptyNode());
            SetLane(index.nodes.back(), lane, BoxOf(index.nodes[at]));
        }
        first = end;
    }
}

/// @return false where an element is not usual
bool Fill(const RoadDesign& road, InverseIndex& index) {
    const std::span<const Element> elements = road.elements.Records();
    index.mostBefore = 0;
    index.nodes.clear();
    index.levels.assign(1, 0);
    index.spirals.clear();
    index.elements.assign(elements.size(), ElementSight{});
    if (elements.size() < 2) return false;
    index.originX = elements[1].startX;
    index.originY = elements[1].startY;
    index.nodes.reserve(elements.size() / (boxLanes - 1) + static_cast<std::size_t>(boxLanes));
    index.nodes.push_back(EmptyNode());
    double running = road.settings.startMileage + std::fabs(elements[0].length);
    double highest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < elements.size(); ++i) {
        if (!IsUsual(elements[i])) return false;
        ElementSight& sight = index.elements[i];
        sight.running = running;
        sight.highestBefore = highest;
        highest = std::max({highest, elements[i].startMileage, EndMileage(elements[i])});
        running += std::fabs(elements[i].length);
        Box box = See(elements[i], sight, index);
        box.Grow(tolerance::indexSlack);
        box.Move(-index.originX, -index.originY);
        const std::size_t lane = i % boxLanes;
        if (lane == 0) index.nodes.push_back(EmptyNode());
        SetLane(index.nodes.back(), lane, box);
    }
    if (!std::isfinite(running)) return false;
    StackLevels(index);
    return true;
}

}  // namespace

void BuildInverseIndex(RoadDesign& road) {
    InverseIndex& index = road.inverseIndex;
    index.usable = false;
    index.usable = Fill(road, index);
    index.stamp = StampOf(road);
}

const InverseIndex& CurrentInverseIndex(const AskedRoad& asked) noexcept {
    if (asked.live == nullptr) return asked.road.inverseIndex;
    InverseIndex& index = asked.live->inverseIndex;
    if (!index.stamp.SameChain(StampOf(asked.road))) {
        try {
            BuildInverseIndex(*asked.live);
        } catch (const std::bad_alloc&) {
            // The query walks, and the next one tries again: building costs no more than a walk, and memory may be
            // there by then. Until then none is held.
            index = InverseIndex{};
        }
    }
    return index;
}

Candidate NearestOnRoad(const RoadDesign& road, const InverseIndex& index, Point point,
                        const Stretch& stretch) noexcept {
    Candidate nearest;
    if (!index.usable || !SearchIndex(road, index, point, stretch, nearest)) {
        nearest = WalkElements(road, point, stretch);
    }
    return nearest;
}

Candidate NearestOnRoad(RoadDesign& road, Point point, const Stretch& stretch) noexcept {
    return NearestOnRoad(road, CurrentInverseIndex(road), point, stretch);
}

}  // namespace kesto
