// The search in the index. It descends from the boxes to the elements, keeps those that may be the nearest by quick
// bounds, and lets the kept ones meet in chain order, as the walk does.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "alignment/box_keys.hpp"
#include "alignment/inverse_index.hpp"
#include "core/tolerances.hpp"
#include "geometry/spiral_foot.hpp"

namespace kesto {

namespace {

using Kind = ElementSight::Kind;

/// What is certain about the distance of an element's candidate (m).
struct Bounds {
    double lower = 0;
    double upper = std::numeric_limits<double>::infinity();
};

Bounds Around(double distance) noexcept { return {distance - tolerance::indexSlack, distance + tolerance::indexSlack}; }

/// Either from the foot or, where that may lie outside the element, from the start point, which is never nearer.
Bounds FromFoot(double toFoot, double toStart) noexcept {
    return {toFoot - tolerance::indexSlack, toStart + tolerance::indexSlack};
}

/// Distance to the element's start point (m).
double ToStart(const ElementSight& sight, Point point) noexcept {
    return Distance({sight.frame.x, sight.frame.y}, point);
}

Bounds BoundsOnStraight(const ElementSight& sight, Point point) noexcept {
    const double dx = point.x - sight.frame.x;
    const double dy = point.y - sight.frame.y;
    const double along = dx * sight.toEnd.cosine + dy * sight.toEnd.sine;
    const double beyond = std::max(-along, along - sight.frame.length);  // m: outside the element
    if (beyond > tolerance::indexSlack) return Around(ToStart(sight, point));
    const double toFoot = std::fabs(dy * sight.toEnd.cosine - dx * sight.toEnd.sine);
    return beyond < -tolerance::indexSlack ? Around(toFoot) : FromFoot(toFoot, ToStart(sight, point));
}

Bounds BoundsOnArc(const ElementSight& sight, Point point) noexcept {
    const FootFrame& arc = sight.frame;
    const double dx = point.x - arc.centreX;
    const double dy = point.y - arc.centreY;
    const double radial = std::sqrt(dx * dx + dy * dy);
    const double toFoot = std::fabs(radial - arc.radius);
    if (!sight.isShortArc) return FromFoot(toFoot, ToStart(sight, point));
    // How far the point lies outside the two radii that bound the arc, as seen at the arc itself: areas, with its
    // radius as the other side.
    const double fromStart = dx * (arc.y - arc.centreY) - dy * (arc.x - arc.centreX);
    const double fromEnd = (dy * sight.toEnd.cosine - dx * sight.toEnd.sine) * arc.radius;
    const double outside = arc.left ? -std::min(fromStart, fromEnd) : std::max(fromStart, fromEnd);
    const double slack = tolerance::indexSlack * (radial + arc.radius);
    if (outside > slack) return Around(ToStart(sight, point));
    return outside < -slack ? Around(toFoot) : FromFoot(toFoot, ToStart(sight, point));
}

/// A spiral has no foot where both ends see the point clearly ahead, or behind. Its foot lies near the chord.
Bounds BoundsOnSpiral(const SpiralSight& spiral, Point point) noexcept {
    constexpr double clearly = 1e-6;  // of the distance
    const double dx = point.x - spiral.start.x;
    const double dy = point.y - spiral.start.y;
    const double chordX = spiral.endX - spiral.start.x;
    const double chordY = spiral.endY - spiral.start.y;
    const double fromStart = dx * spiral.start.heading.cosine + dy * spiral.start.heading.sine;
    const double fromEnd = (dx - chordX) * spiral.endHeading.cosine + (dy - chordY) * spiral.endHeading.sine;
    const double most = std::fabs(dx) + std::fabs(dy) + std::fabs(chordX) + std::fabs(chordY);  // m: distance to an end
    const double least = tolerance::indexSlack + clearly * most;
    if (std::min(fromStart, fromEnd) > least || std::max(fromStart, fromEnd) < -least) {
        return Around(Distance({spiral.start.x, spiral.start.y}, point));
    }
    const double squared = chordX * chordX + chordY * chordY;
    const double part = squared > 0 ? std::clamp((dx * chordX + dy * chordY) / squared, 0.0, 1.0) : 0;
    const double toChord = Distance({dx, dy}, {part * chordX, part * chordY});
    const bool isRight = chordX * dy - chordY * dx > 0;
    const bool isInside = spiral.isOneSided && isRight != spiral.start.left;
    return {(isInside ? toChord : toChord - spiral.sagitta) - tolerance::indexSlack};
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
        : road(searched),
          index(its),
          point(target),
          stretch(wanted),
          boxPoint(target.x - its.originX, target.y - its.originY) {
        const ElementSight& end = index.elements.back();
        narrow = !(stretch.lower <= index.elements[1].running && stretch.upper >= end.running);
    }

    /// Goes down to the elements, always into the nearest box first: what it holds often rules out the others.
    /// @return false where too many elements are about equally near
    bool Descend() noexcept {
        std::array<Open, mostLevels> way;
        const std::size_t top = index.levels.size() - 1;
        std::size_t level = top;
        OpenNode(way[level], level, 0);
        for (;;) {
            Open& at = way[level];
            if (at.least > limitKey) {
                if (level == 0) AskSpirals();
                if (level == top) return true;
                ++level;
                continue;
            }
            const std::int32_t lane = at.least & laneBits;
            const std::int32_t nearest = at.node * boxLanes + lane;
            at.keys[static_cast<std::size_t>(lane)] = seenBox;
            at.least = LeastOf(at.keys);
            if (level == 0) {
                if (!SeeLane(nearest, at.least)) return false;
            } else if (!(narrow && !MayBeOnNode(level - 1, nearest))) {
                --level;
                OpenNode(way[level], level, nearest);
            }
        }
    }

    /// The kept elements meet in chain order, and the best becomes the result. From a place on the line on, the walk
    /// goes on element by element.
    void MeetAll(Candidate& best) noexcept {
        DropFar();
        if (count > 1) {
            std::sort(kept.begin(), kept.begin() + count,
                      [](const Kept& one, const Kept& other) { return one.element < other.element; });
        }
        for (std::size_t i = 0; i < count; ++i) {
            Kept& it = kept[i];
            if (!Meet(best, CandidateOf(it), stretch)) return;
            if (std::fabs(best.offset) < tolerance::onTheLine) return GoOn(best, it.element);
        }
    }

private:
    static constexpr std::size_t room = 48;        // kept elements
    static constexpr std::size_t mostLevels = 11;  // of nodes, for 2^31 elements

    void GoOn(Candidate& best, std::int32_t from) const noexcept {
        for (std::int32_t i = from + 1; i < road.elements.Count(); ++i) {
            if (!Meet(best, CandidateOf(i), stretch)) break;
        }
    }

    const ElementSight& Sight(std::int32_t i) const noexcept { return index.elements[static_cast<std::size_t>(i)]; }

    const SpiralSight& SpiralOf(const ElementSight& sight) const noexcept {
        return index.spirals[static_cast<std::size_t>(sight.spiral)];
    }

    static Candidate Told(Candidate candidate, const ElementSight& sight) noexcept {
        candidate.highestBefore = sight.highestBefore;
        return candidate;
    }

    Candidate CandidateOf(std::int32_t i) const noexcept {
        const ElementSight& sight = Sight(i);
        const Element& element = road.elements[i];
        return Told(CandidateAt(i, element, FootOn(sight, element), sight.running, point), sight);
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
        return Told(CandidateAt(it.element, element, foot, sight.running, point), sight);
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
        if (sight.kind == Kind::StartOnly) return Around(ToStart(sight, point));
        if (sight.kind == Kind::Straight) return BoundsOnStraight(sight, point);
        if (sight.kind == Kind::Arc) return BoundsOnArc(sight, point);
        return BoundsOnSpiral(SpiralOf(sight), point);
    }

    /// Whether a candidate of the element whose distance is bounded from above lies on the stretch: a foot on a
    /// straight or an arc, or a start point. (Feet on spirals, which may lie before the start, are bounded from below
    /// only.)
    bool IsSurelyOn(const ElementSight& sight) const noexcept {
        return stretch.lower <= sight.running && sight.running + std::fabs(sight.frame.length) <= stretch.upper;
    }

    /// Whether a candidate of one of the elements may lie on the stretch.
    bool MayBeOn(std::int32_t first, std::int32_t last) const noexcept {
        const ElementSight& end = Sight(last);
        return Sight(first).running - index.mostBefore <= stretch.upper &&
               stretch.lower <= end.running + std::fabs(end.frame.length);
    }

    /// The best is not farther than this.
    void Lower(double distance) noexcept {
        constexpr double rounding = 1 + 1e-6;  // of single precision
        if (!(distance < limit)) return;
        limit = std::max(distance, tolerance::onTheLine);
        limitKey = BoxKey(static_cast<float>(limit * limit * rounding)) | laneBits;
    }

    void LowerTo(const Candidate& candidate) noexcept {
        if (IsOn(stretch, candidate)) Lower(std::fabs(candidate.offset));
    }

    void DropFar() noexcept {
        const Kept* const end =
            std::remove_if(kept.data(), kept.data() + count, [&](const Kept& it) { return it.lower > limit; });
        count = static_cast<std::size_t>(end - kept.data());
    }

    /// @return false where there is no room
    bool Keep(std::int32_t i, double lower) noexcept {
        if (count == room) {
            AskSpirals();
            DropFar();
            if (count == room) return false;
        }
        kept[count++] = {lower, i, Kept::Known::Nothing, 0, 0};
        return true;
    }

    /// @param next key of the box that would be seen next
    /// @return false where there is no room
    bool See(std::int32_t i, std::int32_t next) noexcept {
        const ElementSight& sight = Sight(i);
        const Bounds bounds = BoundsOf(sight);
        if (bounds.lower > limit) return true;
        if (IsSurelyOn(sight)) Lower(bounds.upper);
        if (!Keep(i, bounds.lower)) return false;
        const double lower = std::max(bounds.lower, 0.0);
        if (sight.kind == Kind::Spiral && BoxKey(static_cast<float>(lower * lower)) <= next) {
            LowerTo(CandidateOf(kept[count - 1]));
        }
        return true;
    }

    /// Spirals say how far they are only when they are asked: the one that may be nearest first. (One that may be
    /// nearer than all that is still to be seen was asked at once.)
    void AskSpirals() noexcept {
        for (;;) {
            Kept* nearest = nullptr;
            for (std::size_t i = 0; i < count; ++i) {
                Kept& it = kept[i];
                if (it.known != Kept::Known::Nothing || Sight(it.element).kind != Kind::Spiral || it.lower > limit)
                    continue;
                if (nearest == nullptr || it.lower < nearest->lower) nearest = &it;
            }
            if (nearest == nullptr) return;
            LowerTo(CandidateOf(*nearest));
        }
    }

    bool SeeLane(std::int32_t i, std::int32_t next) noexcept { return (narrow && !MayBeOn(i, i)) || See(i, next); }

    /// A node on the way down, and the keys of its boxes that are still to be seen.
    struct Open {
        std::int32_t node;   // of its level
        std::int32_t least;  // of the keys
        BoxKeys keys;
    };

    void OpenNode(Open& open, std::size_t level, std::int32_t node) const noexcept {
        open.node = node;
        open.least = FindKeys(NodeOf(level, node), boxPoint, open.keys);
    }

    const BoxNode& NodeOf(std::size_t level, std::int32_t node) const noexcept {
        return index.nodes[static_cast<std::size_t>(index.levels[level]) + static_cast<std::size_t>(node)];
    }

    bool MayBeOnNode(std::size_t level, std::int32_t node) const noexcept {
        const std::int64_t width = std::int64_t{boxLanes} << (3 * level);
        const std::int64_t end = std::min((node + 1) * width, static_cast<std::int64_t>(index.elements.size()));
        return MayBeOn(static_cast<std::int32_t>(std::max(node * width, std::int64_t{1})),
                       static_cast<std::int32_t>(end - 1));
    }

    const RoadDesign& road;
    const InverseIndex& index;
    Point point;
    Stretch stretch;
    BoxPoint boxPoint;
    bool narrow = false;                                                // the stretch leaves out elements
    double limit = farAway;                                             // m: elements farther away cannot win
    std::int32_t limitKey = BoxKey(std::numeric_limits<float>::max());  // the same, squared, as a key
    std::size_t count = 0;
    std::array<Kept, room> kept;
};

}  // namespace

bool SearchIndex(const RoadDesign& road, const InverseIndex& index, Point point, const Stretch& stretch,
                 Candidate& nearest) noexcept {
    if (!(std::fabs(point.x - index.originX) <= tolerance::indexCoordinate &&
          std::fabs(point.y - index.originY) <= tolerance::indexCoordinate)) {
        return false;
    }
    Search search(road, index, point, stretch);
    if (!search.Descend()) return false;
    search.MeetAll(nearest);
    return true;
}

}  // namespace kesto
