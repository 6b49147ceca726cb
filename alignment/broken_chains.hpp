/// The broken-chain list, ascending by back mileage.
#pragma once

#include <span>

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Inserts a broken chain in its sorted place.
/// @return fails when the back mileage is not finite or within 1e-7 m of a stored one
Outcome InsertBrokenChain(RoadDesign& road, const BrokenChain& chain);

/// Inserts several broken chains. Records that repeat one before them in the span are passed over.
/// @return fails, with nothing added, when a back mileage is not finite or within 1e-7 m of one stored before
Outcome InsertBrokenChains(RoadDesign& road, std::span<const BrokenChain> chains);

/// Overwrites a broken chain and moves it to its sorted place; equal back mileages keep their order.
/// @return fails when the index addresses no record or the back mileage is not finite
Outcome ReplaceBrokenChain(RoadDesign& road, std::int32_t index, const BrokenChain& chain);

}  // namespace kesto
