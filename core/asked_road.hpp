/// A road as queries ask it, live or frozen.
#pragma once

#include "core/road_design.hpp"

namespace kesto {

/// A road that is asked. A live one brings what it derives up to date before it answers; a frozen one has everything
/// derived and is only read, so that any number of threads may ask it at once.
struct AskedRoad {
    AskedRoad(RoadDesign& asked) noexcept  // NOLINT(google-explicit-constructor)
        : road(asked), live(asked.frozen ? nullptr : &asked) {}

    const RoadDesign& road;
    RoadDesign* live;  // null for a frozen road: nothing may be written
};

}  // namespace kesto
