/// How far answers lie from the points of the road that the queries were made from.
#pragma once

#include <functional>
#include <vector>

#include "synthetic_road.hpp"

namespace bench {

/// A point of the plane (m).
struct PlanePoint {
    double x, y;
};

/// Greatest distance (m) between a foot that was found and the exact one. Points that have a nearer foot elsewhere on
/// the road are left out.
/// @param foot gives the foot that is found for a query
double WorstError(kesto::Road& road, const std::vector<Query>& queries,
                  const std::function<PlanePoint(const Query&)>& foot);

/// The same for the library's own feet.
double WorstLibraryError(kesto::Road& road, const std::vector<Query>& queries);

}  // namespace bench
