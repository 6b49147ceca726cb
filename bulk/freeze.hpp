/// Freezing a road: everything that queries derive, built at once.
#pragma once

#include <memory>

#include "core/asked_road.hpp"
#include "core/result.hpp"

namespace kesto {

/// A frozen copy of a road: everything that queries derive is built, so they write nothing. Makes the road current and
/// derives its profile, as its next query would.
/// @return fails where no road can be built
/// @throws std::bad_alloc
Result<std::unique_ptr<RoadDesign>> Freeze(const AskedRoad& asked);

}  // namespace kesto
