/// The section mileage index: mileages that the host keeps, ascending, each with its stake text.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Adds a mileage with its stake text (prefix, kilometres, metres; the sign is dropped) in ascending order.
/// @return fails when the mileage is not finite
Outcome InsertSectionMileage(RoadDesign& road, double mileage);

/// Overwrites an entry and sorts the index.
/// @return fails for an index that addresses no entry or a mileage that is not finite
Outcome ReplaceSectionMileage(RoadDesign& road, std::int32_t index, double mileage);

/// Removes an entry.
/// @return fails for an index that addresses no entry
Outcome RemoveSectionMileage(RoadDesign& road, std::int32_t index) noexcept;

/// Copies an entry out.
/// @return fails for an index that addresses no entry
Result<SectionMileageIndex> SectionMileageAt(const RoadDesign& road, std::int32_t index) noexcept;

}  // namespace kesto
