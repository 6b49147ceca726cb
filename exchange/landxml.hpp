/// A road as a LandXML 1.1 document.
#pragma once

#include <ctime>
#include <string>

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// The document of a designed road, its alignment and its profile.
/// @param time local time that the document says it was made at
/// @return fails where a number that is to be written is not finite
Result<std::string> FormatLandXml(RoadDesign& road, const std::tm& time);

/// Runs the design and saves the document. An earlier file stays whole until the new one is complete.
/// @param path file path in the local code page, taken as it stands
/// @return fails as RunDesign(), with nothing written, as FormatLandXml(), and where the file cannot be written
///         (KESTO_FILE_NOT_WRITTEN)
Outcome ExportLandXml(RoadDesign& road, const char* path);

}  // namespace kesto
