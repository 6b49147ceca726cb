/// The cross section of one side at a place of the road.
#pragma once

#include <cstdint>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// The plates of one side at a stake mileage: the standard section with the change sections applied, widths and cross
/// slopes passing from one change section to the next by the transition of the later one. Makes the road current.
/// @return plates from the centre line outwards, their outputs as stored. Fails for an unknown side or section mode,
///         where there are no plates or no stakes (run the design first), and off the road
Result<std::vector<SectionPlate>> GetSectionAtMileage(RoadDesign& road, StakeMileage stake, std::int32_t side);

}  // namespace kesto
