/// The cross sections of a road as the commands need them: plates at a place, change sections, their names.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "road/mileage_text.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

inline constexpr std::int32_t leftSide = 0;
inline constexpr std::int32_t rightSide = 1;
inline constexpr std::array<std::int32_t, 2> bothSides{leftSide, rightSide};

inline constexpr std::int32_t heightening = 0;  ///< the values are cross slopes (per cent)
inline constexpr std::int32_t widening = 1;     ///< the values are widths (m)
inline constexpr std::array<std::int32_t, 2> bothKinds{heightening, widening};

inline constexpr std::array<const char*, 2> sideNames{"left", "right"};
inline constexpr std::array<const char*, 2> kindNames{"heightening", "widening"};
inline constexpr std::array<const char*, 3> transitionNames{"linear", "cubic", "fourth"};

/// "linear", or "unknown (7)" for a type that has no formula.
std::string TransitionName(std::int32_t type);

/// The sign of an offset on a side: -1 left, 1 right.
constexpr double SideSign(std::int32_t side) noexcept { return side == leftSide ? -1 : 1; }

/// Whether either side has a plate.
bool HasPlates(RoadDesign* road);

/// The standard plates of a side, from the centre line outwards.
std::vector<SectionPlate> StandardPlates(RoadDesign* road, std::int32_t side);

/// The plates of a side at a place, with their outer edges. Heights are counted from the centre line as 0.
/// @return nothing where the side has no section
std::optional<std::vector<SectionPlate>> PlatesAt(RoadDesign* road, std::int32_t side, const Stake& stake);

/// The cross section at a place.
struct CrossSection {
    CentrePoint centre;
    std::optional<double> height;  ///< of the centre line (m); nothing without a profile
    std::array<std::vector<SectionPlate>, 2>
        plates;  ///< by side; heights count from the centre line where the road has no profile
};

/// @throws Problem when the place is not on the road or has no section
CrossSection SectionAt(RoadDesign* road, const RoadLine& line, const Stake& stake);

/// A change section with the type of the stretch that ends there.
struct Change {
    std::optional<Stake> stake;  ///< nothing where it is not on the road
    double continuous;           ///< m; 0 where it is not on the road
    std::vector<double> values;  ///< one per plate
    std::int32_t type;
};

/// The change sections of a side and kind, ascending along the road.
std::vector<Change> Changes(RoadDesign* road, std::int32_t side, std::int32_t kind);

}  // namespace kesto::host
