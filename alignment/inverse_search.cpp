// The search in the index. It descends from the boxes to the elements, keeps those that may be the nearest by quick
// bounds, and lets the kept ones meet in chain order, as the walk does.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "alignment/inverse_index.hpp"
#include "alignment/spiral_foot.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

using Kind = ElementSight::Kind;

/// What is certain about the distance of an element's candidate (m).
struct Bounds {
    double lower = 0;
    double upper = std::numeric_limits<double>::infinity();
};

Bounds Around(double distance) noexcept {
    return {distance - tolerance::indexSlack, distance + tolerance::indexSlack};
}

/// Either from the foot or, where that may lie outside the element, from the start point, which is never nearer.
Bounds FromFoot(double toFoot, double toStart) noexcept {
    return {toFoot - tolerance::indexSlack, toStart + tolerance::indexSlack};
}

Bounds BoundsOnStraight(const ElementSight& sight, Point point, double toStart) noexcept {
    const double dx = point.x - sight.frame.x;
    const double dy = point.y - sight.frame.y;
    const double along = dx * sight.toEnd.cosine + dy * sight.toEnd.sine;
    const double beyond = std::fmax(-along, along - sight.frame.length);  // m: outside the element
    if (beyond > tolerance::indexSlack) return Around(toStart);
    const double toFoot = std::fabs(dy * sight.toEnd.cosine - dx * sight.toEnd.sine);
    return beyond < -tolerance::indexSlack ? Around(toFoot) : FromFoot(toFoot, toStart);
}

Bounds BoundsOnArc(const ElementSight& sight, Point point, double toStart) noexcept {
    const FootFrame& arc = sight.frame;
    const double dx = point.x - arc.centreX;
    const double dy = point.y - arc.centreY;
    const double radial = std::sqrt(dx * dx + dy * dy);
    const double toFoot = std::fabs(radial - arc.radius);
    if (!sight.isShortArc) return FromFoot(toFoot, toStart);
    // How far the point lies outside the two radii that bound the arc, as seen at the arc itself.
    const double startX = (arc.x - arc.centreX) / arc.radius;
    const double startY = (arc.y - arc.centreY) / arc.radius;
    const double fromStart = dx * startY - dy * startX;
    const double fromEnd = dy * sight.toEnd.cosine - dx * sight.toEnd.sine;
    const double outside = arc.left ? -std::fmin(fromStart, fromEnd) : std::fmax(fromStart, fromEnd);
    const double slack = tolerance::indexSlack * (radial / arc.radius + 1);
    if (outside > slack) return Around(toStart);
    return outside < -slack ? Around(toFoot) : FromFoot(toFoot, toStart);
}

/// A spiral has no foot where both ends see the point clearly ahead, or behind. Its foot lies near the chord.
Bounds BoundsOnSpiral(const SpiralSight& spiral, const EndLooks& looks, Point point, double toStart) noexcept {
    constexpr double clearly = 1e-6;  // of the distance
    const double least = tolerance::indexSlack + clearly * std::fmax(looks.start.distance, looks.end.distance);
    const bool ahead = looks.start.ahead > least && looks.end.ahead > least;
    const bool behind = looks.start.ahead < -least && looks.end.ahead < -least;
    if (ahead || behind) return Around(toStart);
    const double chordX = spiral.endX - spiral.start.x;
    const double chordY = spiral.endY - spiral.start.y;
    const double dx = point.x - spiral.start.x;
    const double dy = point.y - spiral.start.y;
    const double squared = chordX * chordX + chordY * chordY;
    const double part = squared > 0 ? std::clamp((dx * chordX + dy * chordY) / squared, 0.0, 1.0) : 0;
    const double toChord = Distance({dx, dy}, {part * chordX, part * chordY});
    return {toChord - spiral.sagitta - tolerance::indexSlack};
}

/// An element that may be the nearest. Nothing to initialise: there is room for more of them than most searches keep.
struct Kept {
    double lower;  // m: its candidate is not nearer
    std::int32_t element;
    enum class Known : std::int8_t { Nothing, NoFoot, Foot } known;
    double along;   // m: of its foot, where that is known already
    double offset;  // m
};

class Search {
public:
    Search(const RoadDesign& searched, const InverseIndex& its, Point target, const Stretch& wanted) noexcept
        : road(searched), index(its), point(target), stretch(wanted) {
        const ElementSight& end = index.elements.back();
        narrow = index.ordered && !(stretch.lower <= index.elements[1].running &&
                                    stretch.upper >= end.running);
    }

    /// @return false where too many elements are about equally near
    bool Run() noexcept {
        BeginAt(index.last);
        return Descend();
    }

    /// The kept elements meet in chain order. From a place on the line on, the walk goes on element by element.
    Candidate Meeting() noexcept {
        std::sort(kept.begin(), kept.begin() + count,
                  [](const Kept& one, const Kept& other) { return one.element < other.element; });
        Candidate best;
        for (std::size_t i = 0; i < count; ++i) {
            Kept& it = kept[i];
            if (it.lower > limit) continue;
            if (!Meet(best, CandidateOf(it), stretch)) return best;
            if (std::fabs(best.offset) < tolerance::onTheLine) return GoOn(best, it.element);
        }
        return best;
    }

private:
    static constexpr std::size_t room = 48;        // kept elements
    static constexpr std::size_t mostNodes = 128;  // more than seven on each of the levels that 2^31 elements need

    struct Pending {
        std::int32_t level;
        std::int32_t node;  // of its level
        float squared;      // m2: distance to its box
    };

    Candidate GoOn(Candidate best, std::int32_t from) const noexcept {
        for (std::int32_t i = from + 1; i < road.elements.Count(); ++i) {
            if (!Meet(best, CandidateOf(i), stretch)) break;
        }
        return best;
    }

    const ElementSight& Sight(std::int32_t i) const noexcept { return index.elements[static_cast<std::size_t>(i)]; }

    const SpiralSight& SpiralOf(const ElementSight& sight) const noexcept {
        return index.spirals[static_cast<std::size_t>(sight.spiral)];
    }

    Candidate CandidateOf(std::int32_t i) const noexcept {
        const ElementSight& sight = Sight(i);
        const Element& element = road.elements[i];
        return CandidateAt(i, element, FootOn(sight, element), sight.running, point);
    }

    Candidate CandidateOf(Kept& it) const noexcept {
        const ElementSight& sight = Sight(it.element);
        const Element& element = road.elements[it.element];
        std::optional<Foot> foot;
        if (it.known == Kept::Known::Nothing) {
            foot = FootOn(sight, element);
            it.known = foot ? Kept::Known::Foot : Kept::Known::NoFoot;
            if (foot) it.along = foot->along, it.offset = foot->offset;
        } else if (it.known == Kept::Known::Foot) {
            foot = Foot{it.along, it.offset};
        }
        return CandidateAt(it.element, element, foot, sight.running, point);
    }

    std::optional<Foot> FootOn(const ElementSight& sight, const Element& element) const noexcept {
        if (sight.kind == Kind::StartOnly) return Project(element, point);
        if (IsAtStart({sight.frame.x, sight.frame.y}, point)) return Foot{};
        if (sight.kind == Kind::Straight) return FootOnLine(sight.frame, point);
        if (sight.kind == Kind::Arc) return FootOnArc(sight.frame, point);
        const SpiralSight& spiral = SpiralOf(sight);
        return FootOnSpiral(element, spiral, LookFromEnds(spiral, point), point);
    }

    Bounds BoundsOf(const ElementSight& sight) const noexcept {
        const double toStart = Distance({sight.frame.x, sight.frame.y}, point);
        if (sight.kind == Kind::StartOnly) return FromFoot(toStart, toStart);
        if (sight.kind == Kind::Straight) return BoundsOnStraight(sight, point, toStart);
        if (sight.kind == Kind::Arc) return BoundsOnArc(sight, point, toStart);
        const SpiralSight& spiral = SpiralOf(sight);
        return BoundsOnSpiral(spiral, LookFromEnds(spiral, point), point, toStart);
    }

    /// Whether every candidate of the element lies on the stretch, and whether one may.
    bool IsSurelyOn(const ElementSight& sight) const noexcept {
        return index.ordered && stretch.lower <= sight.running &&
               sight.running + std::fabs(sight.frame.length) <= stretch.upper;
    }
    bool MayBeOn(std::int32_t first, std::int32_t last) const noexcept {
        const ElementSight& end = Sight(last);
        return Sight(first).running <= stretch.upper && stretch.lower <= end.running + std::fabs(end.frame.length);
    }

    /// The best is not farther than this.
    void Lower(double distance) noexcept {
        constexpr double rounding = 1 + 1e-6;  // of single precision
        if (!(distance < limit)) return;
        limit = std::fmax(distance, tolerance::onTheLine);
        squaredLimit = static_cast<float>(limit * limit * rounding);
    }

    void LowerTo(const Candidate& candidate) noexcept {
        if (IsOn(stretch, candidate)) Lower(std::fabs(candidate.offset));
    }

    /// @return false where there is no room
    bool Keep(std::int32_t i, double lower) noexcept {
        if (count == room) {
            const auto end = std::remove_if(kept.begin(), kept.end(), [&](const Kept& it) { return it.lower > limit; });
            count = static_cast<std::size_t>(end - kept.begin());
            if (count == room) return false;
        }
        kept[count++] = {lower, i, Kept::Known::Nothing, 0, 0};
        return true;
    }

    bool See(std::int32_t i) noexcept {
        const ElementSight& sight = Sight(i);
        const Bounds bounds = BoundsOf(sight);
        if (bounds.lower > limit) return true;
        if (IsSurelyOn(sight)) Lower(bounds.upper);
        return Keep(i, bounds.lower);
    }

    /// Spirals say how far they are only when they are asked: the one that may be nearest first.
    void AskSpirals() noexcept {
        for (;;) {
            Kept* nearest = nullptr;
            for (std::size_t i = 0; i < count; ++i) {
                Kept& it = kept[i];
                if (it.known != Kept::Known::Nothing || Sight(it.element).kind != Kind::Spiral || it.lower > limit) continue;
                if (nearest == nullptr || it.lower < nearest->lower) nearest = &it;
            }
            if (nearest == nullptr) return;
            LowerTo(CandidateOf(*nearest));
        }
    }

    void BeginAt(std::int32_t) noexcept {}

    std::array<float, boxLanes> SquaredDistances(const BoxNode& node) const noexcept {
        const auto x = static_cast<float>(point.x - index.originX);
        const auto y = static_cast<float>(point.y - index.originY);
        constexpr float epsilon = std::numeric_limits<float>::epsilon();
        const float roundingX = std::fabs(x) * epsilon;
        const float roundingY = std::fabs(y) * epsilon;
        std::array<float, boxLanes> squared;
        for (std::size_t lane = 0; lane < boxLanes; ++lane) {
            const float beforeX = node.lowX[lane] - (x + roundingX);
            const float behindX = (x - roundingX) - node.highX[lane];
            const float beforeY = node.lowY[lane] - (y + roundingY);
            const float behindY = (y - roundingY) - node.highY[lane];
            const float awayX = std::max(0.0F, std::max(beforeX, behindX));
            const float awayY = std::max(0.0F, std::max(beforeY, behindY));
            squared[lane] = awayX * awayX + awayY * awayY;
        }
        return squared;
    }

    bool DescendToElements(const BoxNode& node, std::int32_t first) noexcept {
        const std::array<float, boxLanes> squared = SquaredDistances(node);
        for (std::int32_t lane = 0; lane < boxLanes; ++lane) {
            if (!(squared[static_cast<std::size_t>(lane)] <= squaredLimit)) continue;
            if (narrow && !MayBeOn(first + lane, first + lane)) continue;
            if (!See(first + lane)) return false;
        }
        AskSpirals();
        return true;
    }

    bool Descend() noexcept {
        std::array<Pending, mostNodes> pending;
        std::size_t waiting = 0;
        pending[waiting++] = {static_cast<std::int32_t>(index.levels.size()) - 1, 0, 0};
        while (waiting > 0) {
            const Pending at = pending[--waiting];
            if (!(at.squared <= squaredLimit)) continue;
            const BoxNode& node =
                index.nodes[static_cast<std::size_t>(index.levels[static_cast<std::size_t>(at.level)] + at.node)];
            if (at.level == 0) {
                if (!DescendToElements(node, at.node * boxLanes)) return false;
                continue;
            }
            const std::array<float, boxLanes> squared = SquaredDistances(node);
            const std::size_t before = waiting;
            for (std::int32_t lane = 0; lane < boxLanes; ++lane) {
                const float distance = squared[static_cast<std::size_t>(lane)];
                if (!(distance <= squaredLimit)) continue;
                if (narrow && !MayBeOnNode(at.level - 1, at.node * boxLanes + lane)) continue;
                pending[waiting++] = {at.level - 1, at.node * boxLanes + lane, distance};
                if (pending[waiting - 1].squared > pending[before].squared) {
                    std::swap(pending[waiting - 1], pending[before]);
                }
            }
            // The nearest goes first: it is taken from the top.
            if (waiting > before) {
                auto nearest = std::min_element(pending.begin() + before, pending.begin() + waiting,
                                                [](const Pending& one, const Pending& other) {
                                                    return one.squared < other.squared;
                                                });
                std::swap(*nearest, pending[waiting - 1]);
            }
        }
        return true;
    }

    bool MayBeOnNode(std::int32_t level, std::int32_t node) const noexcept {
        const std::int64_t width = std::int64_t{boxLanes} << (3 * level);
        const std::int64_t end = std::min((node + 1) * width, static_cast<std::int64_t>(index.elements.size()));
        return MayBeOn(static_cast<std::int32_t>(std::max(node * width, std::int64_t{1})),
                       static_cast<std::int32_t>(end - 1));
    }

    const RoadDesign& road;
    const InverseIndex& index;
    Point point;
    Stretch stretch;
    bool narrow = false;                                       // the stretch leaves out elements
    double limit = farAway;                                    // m: elements farther away cannot win
    float squaredLimit = std::numeric_limits<float>::max();    // m2
    std::size_t count = 0;
    std::array<Kept, room> kept;
};

}  // namespace

std::optional<Candidate> SearchIndex(const RoadDesign& road, const InverseIndex& index, Point point,
                                     const Stretch& stretch) noexcept {
    if (!(std::fabs(point.x - index.originX) <= tolerance::indexCoordinate &&
          std::fabs(point.y - index.originY) <= tolerance::indexCoordinate)) {
        return std::nullopt;
    }
    Search search(road, index, point, stretch);
    if (!search.Run()) return std::nullopt;
    return search.Meeting();
}

}  // namespace kesto
