/// A road that is only read.
#pragma once

#include "core/road_design.hpp"

/// A copy of a current road in which everything that queries derive is built: they write nothing, so any number of
/// threads may ask at once.
struct FrozenRoad {
    explicit FrozenRoad(const RoadDesign& source) : road(source) {}

    RoadDesign road;
};

namespace kesto {

/// What a road holds, whether it may be written or is only read.
inline const RoadDesign& DesignOf(const RoadDesign& road) noexcept { return road; }
inline const RoadDesign& DesignOf(const FrozenRoad& frozen) noexcept { return frozen.road; }

}  // namespace kesto
