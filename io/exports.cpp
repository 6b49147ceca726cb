// Exported functions of the files.

#include "core/guard.hpp"
#include "io/landxml.hpp"
#include "io/part_project.hpp"
#include "io/project_file.hpp"

using kesto::GuardFile;

// clang-format off
int32_t KESTO_CALL SaveProject(RoadDesign* h, const char* path) { return GuardFile(h, path, kesto::SaveRoad); }
int32_t KESTO_CALL SavePartProject(RoadDesign* h, const char* path, double start, double end, int32_t startK, int32_t endK) { return GuardFile(h, path, [&](RoadDesign& road, const char* file) { return kesto::SavePart(road, file, {start, startK}, {end, endK}); }); }
int32_t KESTO_CALL OpenProject(RoadDesign* h, const char* path) { return GuardFile(h, path, kesto::OpenRoad); }
int32_t KESTO_CALL OpenProject2(RoadDesign* h, const char* path) { return GuardFile(h, path, kesto::OpenAndDesignRoad); }
int32_t KESTO_CALL SaveWaterProject(RoadDesign* h, const char* path) { return GuardFile(h, path, kesto::SaveWater); }
int32_t KESTO_CALL OpenWaterProject(RoadDesign* h, const char* path) { return GuardFile(h, path, kesto::OpenWater); }
int32_t KESTO_CALL ExportLandXMLFile(RoadDesign* h, const char* path) { return GuardFile(h, path, kesto::ExportLandXml); }
// clang-format on
