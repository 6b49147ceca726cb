// Exported functions of the files.

#include "core/arguments.hpp"
#include "core/guard.hpp"
#include "io/project_file.hpp"

using kesto::AskedRoad;
using kesto::QueryBool;
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

int32_t KESTO_CALL GetReadingFindingCount(RoadDesign* h) { return h == nullptr ? 0 : h->reading.findingCount; }
bool KESTO_CALL GetReadingFinding(RoadDesign* h, int32_t index, ReadingFinding* finding) { return QueryBool(h, [&](const AskedRoad& asked) { return kesto::Assign(finding, kesto::FindingAt(asked.road.reading, index)); }, finding); }
bool KESTO_CALL GetRecordLine(RoadDesign* h, int32_t list, int32_t key, int32_t index, int32_t* line) { return QueryBool(h, [&](const AskedRoad& asked) { return kesto::Assign(line, kesto::RecordLineAt(asked.road.reading, list, key, index)); }, line); }
// clang-format on
