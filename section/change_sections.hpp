/// The change sections: where plates take other widths or cross slopes than the standard section.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// One of the four tables: a side (0 left, 1 right) and a kind (0 heightening, 1 widening), as the caller gave them.
struct ChangeTable {
    std::int32_t side;
    std::int32_t kind;
};

/// The table of a known side and kind, of the change sections or of their types.
auto& TableOf(auto& tables, ChangeTable which) noexcept {
    return tables[static_cast<std::size_t>(which.side)][static_cast<std::size_t>(which.kind)];
}

/// A change section as hosts see it.
struct PlacedChange {
    StakeMileage stake;
    ChangeSection section;
};

/// Number of change sections in a table; 0 for an unknown side or kind.
std::int32_t CountChanges(const RoadDesign& road, ChangeTable which) noexcept;

/// Fails for an unknown side or kind, and unless there are as many values and flags as the side has plates.
Outcome RequireValuePerPlate(const RoadDesign& road, ChangeTable which, std::size_t values, std::size_t flags) noexcept;

/// Adds a change section at a stake mileage and sets the transition type that leads to it. Makes the road current.
/// @param type 0 linear, 1 cubic, 2 fourth degree; stored unchecked
/// @return fails for an unknown side or kind, a mileage off the road, numbers of values and flags that are not the
///         number of plates, and where the table has a change section at the very mileage
Outcome InsertChange(RoadDesign& road, ChangeTable which, PlacedChange change, std::int32_t type);

/// Adds a change section under a continuous mileage (m) as it stands. Otherwise as InsertChange().
Outcome InsertChangeAt(RoadDesign& road, ChangeTable which, double continuous, ChangeSection section,
                       std::int32_t type);

/// Replaces a change section, which may move. The transition type of the old place stays behind.
/// @return fails as InsertChange(), and for an index that addresses no change section
Outcome ReplaceChange(RoadDesign& road, ChangeTable which, std::int32_t index, PlacedChange change, std::int32_t type);

/// Removes a change section. Its transition type stays.
/// @return fails for an unknown side or kind or an index that addresses no change section
Outcome RemoveChange(RoadDesign& road, ChangeTable which, std::int32_t index) noexcept;

/// A change section with its place. Makes the road current.
/// @return fails for an unknown side or kind, an index that addresses no change section, or a place off the road
Result<PlacedChange> ChangeAt(const AskedRoad& asked, ChangeTable which, std::int32_t index);

/// Transition type by its index in the type table, which keeps the types of change sections that are gone.
/// @param type out: 0 for an index past the table; untouched for an unknown side, which counts as success deliberately
/// @return fails for an unknown kind or a negative index
Outcome FindTransitionType(const RoadDesign& road, ChangeTable which, std::int32_t index, std::int32_t& type) noexcept;

/// Overwrites a transition type by its index in the type table.
/// @return fails for an unknown side or kind or an index that addresses no entry
Outcome SetTransitionType(RoadDesign& road, ChangeTable which, std::int32_t index, std::int32_t type) noexcept;

}  // namespace kesto
