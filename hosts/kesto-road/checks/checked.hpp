/// A project file and its road while they are checked, and the checks, which add what they find to the findings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "checks/findings.hpp"
#include "checks/opened_file.hpp"
#include "kesto_road/kesto_road.h"
#include "road/mileage_text.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Gaps between elements and overlaps of vertical curves (m). What is below the first number comes from the rounding of
/// coordinates.
inline constexpr Grades lengthGrades{1e-5, 1e-3, 1e-2};
/// Kinks (degrees). What is below the first number comes from the rounding of azimuths: 0.1 mm over 60 m.
inline constexpr Grades angleGrades{1e-4, 1e-2, 1e-1};

/// The code of a finding that another check asks for.
inline constexpr std::string_view severalProfiles = "several-profiles";

struct Checked {
    const OpenedFile& file;
    RoadDesign* road;                     ///< after the design run
    const std::optional<RoadLine>& line;  ///< nothing where no road can be built
    Findings& findings;

    /// Line of a record of the alignment by its index, or of its section's keyword where there is no such record; 0 for
    /// none.
    [[nodiscard]] std::int64_t AlignmentLine(std::int32_t record) const noexcept;
};

/// Where a mileage of the file lies on the road.
struct FilePlace {
    double continuous;  ///< m; the mileage itself where it is not on the road
    bool found;         ///< true where it is on the road; continuous mileages may lie up to 1 mm beyond its ends
    bool beyond;        ///< true where it lies before the start or behind the end
    std::string why;    ///< why it is not on the road
};

/// Stands for an occurrence where a mileage is a continuous one.
inline constexpr std::int32_t continuousMileage = -1;

/// @param mileage    m
/// @param occurrence of a stake mileage, or continuousMileage
FilePlace PlaceOf(const Checked& checked, double mileage, std::int32_t occurrence);
/// True for a place that is not on the road only because it lies less than 1 mm before its start or behind its end, and
/// whose mileage is the same as stake mileage and as continuous mileage: a profile takes mileages that are not on the
/// road for continuous ones.
bool StandsAtEnd(const Checked& checked, const FilePlace& place);

/// A distance as text: millimetres below 1 m, metres from there on.
std::string Distance(double metres);
/// An angle as text.
std::string Degrees(double angle);

/// What the opening of the file has skipped or doubted.
void TellOfReading(const Checked& checked);
/// Elements, intersections or coordinate points: joints, shapes, radii, azimuths.
void CheckAlignment(const Checked& checked);
/// Broken chains.
void CheckChains(const Checked& checked);
/// Grade-change points and vertical curves.
void CheckProfile(const Checked& checked);
/// Plates, change sections and section mileages.
void CheckSections(const Checked& checked);

/// Tells that no road can be built, at the line that the failure comes from. To be called after CheckAlignment().
/// @param failure of the design run
/// @param why     the failure as a sentence
void TellOfNoRoad(const Checked& checked, const Failure& failure, const std::string& why);

}  // namespace kesto::host
