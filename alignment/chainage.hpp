/// Stake mileage to continuous mileage and back, and which element carries a stake mileage.
#pragma once

#include <optional>

#include "alignment/chain_lookup.hpp"
#include "core/asked_road.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

inline constexpr std::int32_t noOccurrence = -1;

/// The index of the chain as it stands, or null where lookups walk: right after an edit or a rebuild, and where memory
/// runs out. After a few more lookups the index is built.
/// @param lookups how many are to come
const ChainIndex* CurrentIndex(RoadDesign& road, std::int32_t lookups = 1) noexcept;

/// Builds the index of the chain as it stands, with the frames of all elements that it has room for.
/// @throws std::bad_alloc
void BuildIndex(RoadDesign& road);

/// The chain as it stands, as lookups read it. A road that may be written gets an index in time and keeps the frames of
/// elements as they are asked for; of a road that is shared only what it has is used, and nothing in it is written.
struct ChainView {
    ChainView(const AskedRoad& asked, std::int32_t lookups = 1) noexcept;  // NOLINT(google-explicit-constructor)
    ChainView(RoadDesign& ours) noexcept;                                  // NOLINT(google-explicit-constructor)
    ChainView(const RoadDesign& shared) noexcept;                          // NOLINT(google-explicit-constructor)

    const RoadDesign& road;
    const ChainIndex* index;       // null: lookups walk
    ChainIndex* keeper = nullptr;  // where frames are kept; null for a road that is shared
};

/// The element that covers a stake mileage in an occurrence: the last element also at its very end.
/// @return its index; nothing in a gap, beyond the road, or for an occurrence that is not there
std::optional<std::int32_t> CoveringElement(const ChainView& chain, StakeMileage stake) noexcept;

/// Continuous mileage (m) of a stake mileage.
/// @return nothing where the stake mileage does not occur that often. At the stake mileage of the road's end, a second
///         or later occurrence before the end is not found.
std::optional<double> FindContinuous(const ChainView& chain, StakeMileage stake) noexcept;

/// Continuous mileage (m) of a stake mileage; makes the road current first.
/// @return fails where no road can be built, off the road (KESTO_MILEAGE_OFF_ROAD), in a gap or for a missing
///         occurrence (KESTO_NO_SUCH_OCCURRENCE)
Result<double> ContinuousMileage(const AskedRoad& asked, StakeMileage stake);

/// The same on the chain as it stands.
Result<double> PlaceOf(const ChainView& chain, StakeMileage stake) noexcept;

/// Stake mileage of a continuous mileage (m), with its occurrence; -1 where the place lies on no element (before the
/// road or beyond its end). The road must have an element.
StakeMileage StakeMileageAt(const ChainView& chain, double continuous) noexcept;

/// Where a record that is given at a stake mileage is kept: its continuous mileage (m). Makes the road current.
/// @return fails as ContinuousMileage(), and for a mileage that is not finite
Result<double> PlaceIn(const AskedRoad& asked, StakeMileage stake);

/// The stake mileage of a record that is kept at a continuous mileage (m). Makes the road current.
/// @param list, record the record, for the failure
/// @return fails where no road can be built, and with KESTO_MILEAGE_OFF_ROAD where the place lies on no element
Result<StakeMileage> PlaceOut(const AskedRoad& asked, double continuous, KestoList list, std::int32_t record);

/// What is known about an element on which a place is likely to lie.
struct LikelyPlace {
    std::int32_t element;
    double running;        // m: continuous mileage at its start
    double highestBefore;  // m: no element before it reaches a higher stake mileage
};

/// The same, starting at an element.
StakeMileage StakeMileageAt(const ChainView& chain, double continuous, const LikelyPlace& likely) noexcept;

/// Why a stake mileage was not found: beyond which end and by how much, or how often it occurs.
Failure ExplainMissing(const ChainView& chain, StakeMileage stake) noexcept;

/// Start mileage and stake mileage of the road's end (m). Builds nothing.
struct RoadEnds {
    double start = 0;
    double end = 0;
};
/// @return the end is the last element's when a stake list exists, else the start; fails when that is not finite
Result<RoadEnds> EndsOf(const RoadDesign& road) noexcept;

}  // namespace kesto
