/// Opening a road for a command, with messages.
#pragma once

#include <memory>
#include <string>

#include "kesto_road/kesto_road.h"
#include "terminal/problem.hpp"

namespace kesto::host {

struct EndRoad {
    void operator()(RoadDesign* road) const noexcept { EndRoadDesign(road); }
};
/// A road that ends with its owner.
using RoadHandle = std::unique_ptr<RoadDesign, EndRoad>;

/// An empty road. @throws Problem when memory runs out
RoadHandle NewRoad();

/// What to say of a project file that cannot be opened: more than its status alone says.
/// @param status of the function that failed to open it
Problem OpenProblem(const std::string& path, std::int32_t status);

/// Reads a project file, a road's or a water project by its extension, without running the design.
/// @return as OpenProject(). @throws Problem when the extension is neither's
std::int32_t ReadProject(RoadDesign* road, const std::string& path);

/// Opens a project file, a road's or a water project, and runs the design; warns of records that had to be skipped.
/// @throws Problem when the file cannot be read or no road can be built from it
RoadHandle OpenRoad(const std::string& path);

/// @throws Problem unless the path ends in ".road", the extension that a project file must have
void CheckRoadExtension(const std::string& path);

}  // namespace kesto::host
