/// Saving a part of a road as a road of its own.
#pragma once

#include <memory>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Makes a road of its own from the stretch between two stake mileages. Its points and heights agree with the whole
/// road's within 1e-9 m. The road is made current, and otherwise not touched.
/// @return a built road without stakes. Fails where no road can be built, and with KESTO_NOTHING_TO_SAVE where a
///         mileage is not on the road (bound, excess and limit as KESTO_MILEAGE_OFF_ROAD or KESTO_NO_SUCH_OCCURRENCE
///         give them) and as CutAlignment()
Result<std::unique_ptr<RoadDesign>> MakePart(RoadDesign& road, StakeMileage from, StakeMileage to);

/// A road as MakePart() makes it with an alignment that survives the decimals of a project file.
/// @return fails as RoundAlignment()
Result<std::unique_ptr<RoadDesign>> RoundForFile(RoadDesign& part);

/// Saves the stretch between two stake mileages as a project file.
/// @param path as for SaveRoad()
/// @return fails as MakePart() and SaveRoad(); nothing is written then
Outcome SavePart(RoadDesign& road, const char* path, StakeMileage from, StakeMileage to);

}  // namespace kesto
