/// What the search for the nearest place of the road keeps between queries.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/derived/element_frames.hpp"
#include "core/derived/stamp.hpp"
#include "core/stake_mileage.hpp"

namespace kesto {

inline constexpr std::int32_t boxLanes = 8;  // boxes of one node

/// Bounding boxes of eight neighbours along the road: elements, or the nodes one level below. Centres in metres from
/// the index's origin, half widths rounded up; an empty lane is infinitely less than nothing wide.
struct BoxNode {
    std::array<float, boxLanes> centreX;
    std::array<float, boxLanes> centreY;
    std::array<float, boxLanes> halfX;
    std::array<float, boxLanes> halfY;
};

/// What decides about a spiral's foot before its bisection, and what the bisection evaluates.
struct SpiralSight {
    StartFrame start;
    ClothoidFrame clothoid;
    double endX = 0;  // m
    double endY = 0;  // m
    Heading endHeading;
    double startHeadingLength = 1;  // lengths of the two direction vectors: 1 but for rounding
    double endHeadingLength = 1;
    double curvature = 0;  // 1/m: the larger of both ends'
    double sagitta = 0;    // m: how far the spiral may lie off its chord
    bool hasSeries = false;
    bool isOneSided = false;  // lies on the outer side of its chord alone
};

/// How an element is seen by the search.
struct ElementSight {
    enum class Kind : std::int8_t { StartOnly, Straight, Arc, Spiral };
    FootFrame frame;
    double running = 0;        // m: continuous mileage at its start
    double highestBefore = 0;  // m: highest stake mileage of the elements before it
    Heading toEnd;             // straight: from start point to end point; arc: from centre to end point
    std::int32_t spiral = -1;  // its place among the spirals
    Kind kind = Kind::StartOnly;
    bool isShortArc = false;  // turns less than half a circle
};

/// Derived from the element chain by CurrentInverseIndex(); valid exactly while the stamp is the chain's own.
struct InverseIndex {
    Stamp stamp;
    bool usable = false;  // false: the search walks

    double originX = 0;                  // m
    double originY = 0;                  // m
    double mostBefore = 0;               // m: how far a candidate may lie before its element's start
    std::vector<BoxNode> nodes;          // level by level, those of the elements first
    std::vector<std::int32_t> levels;    // first node of every level
    std::vector<ElementSight> elements;  // one per element; the start record is never seen
    std::vector<SpiralSight> spirals;    // in chain order
};

/// One end of the stretch that is searched.
struct SearchLimit {
    double mileage = 0;           // m, stake mileage
    std::int32_t occurrence = 0;  // of the stake mileage
    double continuous = 0;        // m
    bool hasPoint = false;        // without one it does not compete
    double x = 0;                 // m
    double y = 0;                 // m
};

/// The limits of a search as they were worked out last; valid exactly while the stamp is the chain's own and the places
/// are those asked for.
struct SearchLimits {
    Stamp stamp;
    StakeMileage lowerAsked;
    StakeMileage upperAsked;
    SearchLimit lower;
    SearchLimit upper;
};

}  // namespace kesto
