/// How places of the road stand in the project file: one pair of functions for all tables keyed by continuous mileage.
///
/// A record of such a table has its stake mileage and occurrence in the file. Where no stake mileage leads back to its
/// place it has its continuous mileage and the occurrence -1 instead.
#pragma once

#include <optional>

#include "alignment/chainage.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// The continuous mileage (m) that a file means: the one that is written as this very stake mileage.
/// @param built whether the road is current
/// @return nothing where the stake mileage is not on the road
std::optional<double> PlaceFromFile(RoadDesign& road, bool built, StakeMileage stake) noexcept;

/// Where a record of a keyed table stands in a file, and the continuous mileage (m) that it will be read back with.
struct PlaceInFile {
    StakeMileage stake;
    double readBack;
};

/// The stake mileage of a place where a reader comes back to it from there, else the continuous mileage. What is read
/// back has the same place in the next file. The record has another one before it in the file: two that the decimals
/// cannot tell apart are moved apart, or their lines would run into one.
/// @param before where that one is read back (m)
PlaceInFile PlaceForFile(RoadDesign& road, bool built, double continuous, double before) noexcept;

}  // namespace kesto
