// Exported functions of the files.

#include "core/guard.hpp"
#include "io/project_file.hpp"

using kesto::ReadIntoRoad;
using kesto::WriteFromRoad;

// clang-format off
int32_t KESTO_CALL SaveProject(RoadDesign* h, const char* path) { return WriteFromRoad(h, path, kesto::SaveRoad); }
int32_t KESTO_CALL OpenProject(RoadDesign* h, const char* path) { return ReadIntoRoad(h, path, kesto::OpenRoad); }
int32_t KESTO_CALL OpenProject2(RoadDesign* h, const char* path) { return ReadIntoRoad(h, path, kesto::OpenAndDesignRoad); }
int32_t KESTO_CALL SaveWaterProject(RoadDesign* h, const char* path) { return WriteFromRoad(h, path, kesto::SaveWater); }
int32_t KESTO_CALL OpenWaterProject(RoadDesign* h, const char* path) { return ReadIntoRoad(h, path, kesto::OpenWater); }

int32_t KESTO_CALL OpenProjectFromMemory(RoadDesign* h, const char* bytes, int64_t size) { return ReadIntoRoad(h, bytes, [&](RoadDesign& road, const char* given) { return kesto::OpenRoadBytes(road, given, size); }); }
int32_t KESTO_CALL SaveProjectToMemory(RoadDesign* h, char* bytes, int64_t capacity, int64_t* size) { return WriteFromRoad(h, size, [&](RoadDesign& road, int64_t* needed) { return kesto::SaveRoadBytes(road, bytes, capacity, *needed); }); }
// clang-format on
