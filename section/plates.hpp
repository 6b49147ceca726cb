/// The standard section: the plates of each side, from the centre line outwards.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Side of the road, looking towards increasing mileage.
enum class Side : std::int32_t { Left = 0, Right = 1 };

/// What a change section changes.
enum class ChangeKind : std::int32_t { Heightening = 0, Widening = 1 };

/// Fails unless the side is left (0) or right (1).
Outcome RequireSide(std::int32_t side) noexcept;

/// The plates of a side.
/// @return fails for an unknown side
Result<std::span<const SectionPlate>> PlatesOf(const RoadDesign& road, std::int32_t side) noexcept;

/// Inserts a plate before the index, or appends it, and gives every change section of the side that lies on the road
/// the plate's own value at the same place: the section changes nowhere.
/// @return fails for an unknown side
Outcome InsertPlate(RoadDesign& road, const SectionPlate& plate, std::int32_t side, std::int32_t index);

/// Appends plates and discards the change sections of the side. The plates that are there stay, deliberately.
/// @return fails for an unknown side
Outcome AppendPlates(RoadDesign& road, std::span<const SectionPlate> added, std::int32_t side);

/// Removes a plate, and its value from every change section of the side that lies on the road. With the last plate the
/// side's change sections go; their transition types stay.
/// @return fails for an unknown side or an index that addresses no plate
Outcome RemovePlate(RoadDesign& road, std::int32_t side, std::int32_t index);

/// Copies a plate out.
/// @return fails for an unknown side or an index that addresses no plate
Result<SectionPlate> PlateAt(const RoadDesign& road, std::int32_t side, std::int32_t index) noexcept;

/// Overwrites a plate. The change sections keep their values.
/// @return fails for an unknown side or an index that addresses no plate
Outcome ReplacePlate(RoadDesign& road, std::int32_t side, std::int32_t index, const SectionPlate& plate);

}  // namespace kesto
