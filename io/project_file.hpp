/// Project files: saving and opening a road.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Saves a road as a road project. The extension of the file name is lower-cased, and ".road" appended to any other
/// one.
/// @param path file path in the local code page
/// @return fails (15) when the file could not be written whole; an earlier file is then untouched
Outcome SaveRoad(RoadDesign& road, const char* path);

/// Opens a road project; its data replace the road's design data once it has been read to its end.
/// @param path file path in the local code page, ending in ".road"
/// @return fails with the road as before (13, 14, 16), or with what could be read when records were skipped (18)
Outcome OpenRoad(RoadDesign& road, const char* path);

/// Opens a road project and runs the design.
/// @return fails as OpenRoad(), or as RunDesign() with what was read kept
Outcome OpenAndDesignRoad(RoadDesign& road, const char* path);

/// SaveRoad() and OpenRoad() for water projects, whose extension is ".watx".
Outcome SaveWater(RoadDesign& road, const char* path);
Outcome OpenWater(RoadDesign& road, const char* path);

}  // namespace kesto
