// Exported functions of other programs' files.

#include "core/guard.hpp"
#include "exchange/landxml.hpp"

using kesto::WriteFromRoad;

// clang-format off
int32_t KESTO_CALL ExportLandXMLFile(RoadDesign* h, const char* path) { return WriteFromRoad(h, path, kesto::ExportLandXml); }
// clang-format on
