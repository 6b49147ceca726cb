/// The parts of a LandXML alignment: its elements, its broken chains and its profile.
#pragma once

#include "core/result.hpp"
#include "core/road_design.hpp"
#include "exchange/xml_tree.hpp"

namespace kesto {

/// Appends the one `Alignment` of a designed road: its elements (`CoordGeom`), a `StaEquation` wherever the stake
/// mileage jumps or turns about, and the `Profile`. Stations in the profile and the `staInternal` of an equation are
/// continuous mileages, as the schema wants them.
/// @param alignments the document's `Alignments`
/// @return fails at the first element, broken chain or grade-change point that holds a number that is not finite, and
///         at an element that cannot be evaluated
Outcome WriteAlignment(RoadDesign& road, const XmlElement& alignments);

}  // namespace kesto
