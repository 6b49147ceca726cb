/// Freezing a road: everything that queries derive, built at once.
#pragma once

#include <memory>

#include "core/frozen_road.hpp"
#include "core/result.hpp"

namespace kesto {

/// A copy of a road that is only read. Makes the road current and leaves it as it is otherwise.
/// @return fails where no road can be built
/// @throws std::bad_alloc
Result<std::unique_ptr<const FrozenRoad>> Freeze(RoadDesign& road);

}  // namespace kesto
