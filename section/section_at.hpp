/// The cross section of one side at a place of the road.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"
#include "section/change_sections.hpp"

namespace kesto {

/// How a value passes from one change section to the next: by the fraction t of the stretch between them as t,
/// t^2 (3 - 2 t) or t^3 (4 - 3 t).
enum class Transition : std::int32_t { Linear = 0, Cubic = 1, FourthDegree = 2 };

/// Whether a stored transition type has a formula.
constexpr bool IsTransition(std::int32_t type) noexcept {
    return type >= 0 && type <= static_cast<std::int32_t>(Transition::FourthDegree);
}

/// The values (per cent or m) of one side's plates, from the centre line outwards, that one table of change sections
/// gives at a place of the road.
/// @param which      a known side and kind
/// @param continuous continuous mileage (m), on the road
std::vector<double> ChangedValuesAt(const RoadDesign& road, ChangeTable which, double continuous);

/// The largest second derivative, without its sign, that a transition has between two fractions of its stretch; 0 for
/// an unknown transition.
double LargestBend(std::int32_t type, double from, double to) noexcept;

/// What one table of change sections makes of a side's plates at a place of the road.
struct PlateValues {
    const std::vector<double>* from = nullptr;  // null: the standard values
    const std::vector<double>* to = nullptr;    // null: the standard values hold
    std::optional<double> share;                // of the difference; nothing: `to` alone holds

    /// The value (per cent or m) of a plate that has a standard one.
    double Of(std::size_t plate, double standard) const noexcept;
};

/// The cross section of one side at a place of the road: what its plates are worked out from, one by one. Holds as long
/// as the road is not edited.
struct SectionHere {
    std::span<const SectionPlate> standard;
    PlateValues crossSlopes;
    PlateValues widths;

    double CrossSlope(std::size_t plate) const noexcept { return crossSlopes.Of(plate, standard[plate].crossSlope); }
    double Width(std::size_t plate) const noexcept { return widths.Of(plate, standard[plate].width); }
};

/// The cross section at a continuous mileage (m) of a current road.
/// @return fails as GetSectionAtMileage()
Result<SectionHere> SectionAtPlace(const RoadDesign& road, double continuous, std::int32_t side) noexcept;

/// The plates of one side at a stake mileage: the standard section with the change sections applied, widths and cross
/// slopes passing from one change section to the next by the transition of the later one. Makes the road current.
/// @return plates from the centre line outwards, their outputs as stored. Fails for an unknown side or section mode,
///         where there are no plates or no stakes (run the design first), and off the road
Result<std::vector<SectionPlate>> GetSectionAtMileage(const AskedRoad& asked, StakeMileage stake, std::int32_t side);

}  // namespace kesto
