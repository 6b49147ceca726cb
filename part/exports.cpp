// Exported functions of parts of roads.

#include "core/guard.hpp"
#include "part/part_project.hpp"

using kesto::WriteFromRoad;

// clang-format off
int32_t KESTO_CALL SavePartProject(RoadDesign* h, const char* path, double start, double end, int32_t startK, int32_t endK) { return WriteFromRoad(h, path, [&](RoadDesign& road, const char* file) { return kesto::SavePart(road, file, {start, startK}, {end, endK}); }); }
// clang-format on
