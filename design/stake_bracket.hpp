/// The two design stakes around a mileage.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "core/asked_road.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// The first stake i with mileage(i) <= mileage <= mileage(i + 1), by walking the list: the definition.
/// @param mileage m
/// @return nothing where no two neighbours have the mileage between them
std::optional<std::size_t> WalkToBracket(std::span<const StakeCoordinate> stakes, double mileage) noexcept;

/// Finds out whether the mileages of the road's stakes never fall, unless it is known.
void BuildStakeOrder(RoadDesign& road) noexcept;

/// The same for the road's stakes, by bisection where their mileages never fall.
std::optional<std::size_t> FindBracket(const AskedRoad& asked, double mileage) noexcept;

}  // namespace kesto
