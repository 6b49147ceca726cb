/// Project files: saving and opening a road.
#pragma once

#include <cstdint>

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// Saves a road as a road project. The extension of the file name is lower-cased, and ".road" appended to any other
/// one.
/// @param path file path in the local code page
/// @return fails with KESTO_FILE_NOT_WRITTEN when the file could not be written whole; an earlier file is then
///         untouched
Outcome SaveRoad(RoadDesign& road, const char* path);

/// Opens a road project; its data replace the road's design data once it has been read to its end.
/// @param path file path in the local code page, ending in ".road"
/// @return fails with the road as before (KESTO_FILE_NOT_OPENED, KESTO_WRONG_EXTENSION, KESTO_FILE_OUT_OF_MEMORY), or
///         with what could be read when records were skipped (KESTO_RECORDS_SKIPPED)
Outcome OpenRoad(RoadDesign& road, const char* path);

/// Opens a road project and runs the design.
/// @return fails as OpenRoad(), or as RunDesign() with what was read kept
Outcome OpenAndDesignRoad(RoadDesign& road, const char* path);

/// OpenRoad() with the content of a file in place of its path.
/// @param size bytes
/// @return fails as OpenRoad() (KESTO_FILE_OUT_OF_MEMORY above the size that a file may have), and for a negative size
///         (KESTO_RECORD_COUNT_REFUSED)
Outcome OpenRoadBytes(RoadDesign& road, const char* bytes, std::int64_t size);

/// What SaveRoad() writes, into a caller's memory.
/// @param capacity bytes that there is room for
/// @param size     out: bytes that the content has
/// @return fails with KESTO_ARRAY_TOO_SMALL where the room is too small, with nothing copied, and as FormatProject()
Outcome SaveRoadBytes(RoadDesign& road, char* bytes, std::int64_t capacity, std::int64_t& size);

/// SaveRoad() and OpenRoad() for water projects, whose extension is ".watx".
Outcome SaveWater(RoadDesign& road, const char* path);
Outcome OpenWater(RoadDesign& road, const char* path);

}  // namespace kesto
