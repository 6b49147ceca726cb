/// What a saved road promises: it is read whole, and from its second file on every file of it is the same.
#pragma once

#include <string>
#include <string_view>

#include "kesto_road/kesto_road.h"

namespace kesto::fuzz {

/// The content of a road's project file; empty where it cannot be saved (a header line that is too long).
std::string SavedText(RoadDesign* road);

/// Opens a text and requires that this works.
/// @return whether every record was read
bool OpenText(RoadDesign* road, std::string_view text);

/// Saves the road, opens what was saved, and so on until the files must be equal.
void RequireFixedPoint(RoadDesign* road);

/// Whether a saved text can be read back to the last digit: no number fills more than its column, and all are finite.
bool IsReadable(std::string_view text);

/// Asks a road, one that may be broken, a little of everything.
void AskAround(RoadDesign* road);

}  // namespace kesto::fuzz
