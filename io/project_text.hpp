/// A road as the text of a project file, and back.
#pragma once

#include <string>
#include <string_view>

#include "core/result.hpp"
#include "core/road_design.hpp"
#include "io/code_page.hpp"

namespace kesto {

/// The kinds of project file. A water project holds what a road project does without the sections that are a road's
/// alone; both are read the same way.
enum class ProjectKind { Road, Water };

/// The text of a road's project file.
/// @param names the code page that the road's names are in
/// @return fails with KESTO_FILE_NOT_WRITTEN when the stake prefix makes the first line longer than the 255 bytes that
///         a reader takes: value is its length, bound the limit
Result<std::string> FormatProject(RoadDesign& road, const CodePage& names, ProjectKind kind = ProjectKind::Road);

/// Reads a project file's text into a new road. Lines that belong to no section are passed over, and so are records
/// that hold a number too large for its field or that their list refuses.
/// @param names the code page that names are converted to when the whole text is valid UTF-8; otherwise they are taken
///              as they stand
/// @return fails with KESTO_RECORDS_SKIPPED when records were skipped; everything else has been read then
Outcome ParseProject(std::string_view text, RoadDesign& road, const CodePage& names);

}  // namespace kesto
