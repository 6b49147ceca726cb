/// The parts of a check of a project file. Each tells its findings of a road that has been opened and designed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "checks/findings.hpp"
#include "checks/outline.hpp"
#include "kesto_road/kesto_road.h"
#include "road/mileage_text.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Gaps between elements and overlaps of vertical curves (m): below the note it is the rounding of coordinates.
inline constexpr Grades lengthGrades{1e-5, 1e-3, 1e-2};
/// Kinks (degrees): below the note it is the rounding of azimuths, a tenth of a millimetre over 60 m.
inline constexpr Grades angleGrades{1e-4, 1e-2, 1e-1};

inline constexpr double sameMileage = 1e-7;      ///< m: the library's own equality of mileages
inline constexpr double beyondTolerance = 1e-3;  ///< m: mileages are published to the millimetre

/// What is looked at.
struct Checked {
    const std::string& path;
    const Outline& outline;
    RoadDesign* road;                     ///< after the design run
    const std::optional<RoadLine>& line;  ///< nothing where no road can be built
    Findings& findings;
};

/// Where a stake mileage of the file lies.
struct Place {
    double continuous;  ///< m; the mileage as it stands where it is not on the road
    bool found;         ///< whether it is on the road; a continuous one to the millimetre
    bool beyond;        ///< it is not, since it lies before the start or behind the end
    std::string why;    ///< why it is not found
};

/// @param occurrence -1 for a continuous mileage
Place PlaceOf(const Checked& checked, double mileage, std::int32_t occurrence);
/// Whether a place that is not found lies less than 1 mm beyond the road's start or end, and stays there when its stake
/// mileage is taken for a continuous one, as the profile does with what is not on the road.
bool StandsAtEnd(const Checked& checked, const Place& place);

/// A distance as text: millimetres below 1 m, metres from there on.
std::string Distance(double metres);

/// Elements, intersections or coordinate points: joints, shapes, radii, azimuths.
void CheckAlignment(const Checked& checked);
/// Broken chains.
void CheckChains(const Checked& checked);
/// Grade-change points and vertical curves.
void CheckProfile(const Checked& checked);
/// Plates and change sections.
void CheckSections(const Checked& checked);

}  // namespace kesto::host
