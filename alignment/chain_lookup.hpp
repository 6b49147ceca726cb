/// Lookups along the element chain: plain walks, which define them, and the same results by the chain's index.
#pragma once

#include <cstdint>

#include "core/derived/chain_index.hpp"
#include "core/road_design.hpp"
#include "core/stake_mileage.hpp"

namespace kesto {

/// Where a search for an occurrence ended.
struct Match {
    std::int32_t before = 0;    // elements that fit, up to the wanted one; all that fit where it is not there
    std::int32_t element = -1;  // the wanted one; -1 where too few fit
};

/// The element on which a continuous mileage lies, and the continuous mileage at its start (m).
struct Place {
    std::int32_t element;
    double running;
};

/// Least and greatest stake mileage at the ends of the elements behind the start record (m).
struct MileageSpan {
    double lowest;
    double highest;
};

/// Whether a stake mileage (m) lies on an element for the conversions, which allow for rounding at its start (1e-7 m).
/// @param zeroLength how close it must be to an element without length (m)
bool Carries(const Element& element, double mileage, double zeroLength) noexcept;

/// Whether a place lies on the element between two continuous mileages (m).
bool LiesBetween(double start, double end, double continuous) noexcept;

/// Builds the index of a chain.
/// @throws std::bad_alloc; the index is then not filled
void FillIndex(const RoadDesign& road, ChainIndex& index);

// Every lookup takes the index or null. With null it walks the chain: that is its definition. With an index of the
// chain as it stands it gives the same result in every bit, on any chain.

/// The element that covers a stake mileage in an occurrence: its start belongs to it, its end does not.
Match FindCovering(const RoadDesign& road, const ChainIndex* index, StakeMileage stake) noexcept;

/// The element that carries a stake mileage in an occurrence, for the conversions: they allow for rounding at its start
/// (1e-7 m; 1e-9 m for an element without length).
Match FindCarrier(const RoadDesign& road, const ChainIndex* index, StakeMileage stake) noexcept;

/// How many elements carry a stake mileage, from the first up to and including `last`.
/// @param mileage    m
/// @param zeroLength how close it must be to an element without length (m)
std::int32_t CountCarriers(const RoadDesign& road, const ChainIndex* index, double mileage, double zeroLength,
                           std::int32_t last) noexcept;

/// The element on which a continuous mileage (m) lies; the last one before and beyond the road.
Place FindPlace(const RoadDesign& road, const ChainIndex* index, double continuous) noexcept;

/// Continuous mileage at the start of an element (m): the lengths before it, summed from the road's start on.
double RunningAt(const RoadDesign& road, const ChainIndex* index, std::int32_t element) noexcept;

/// Where the chain's stake mileages begin and end.
MileageSpan SpanOf(const RoadDesign& road, const ChainIndex* index) noexcept;

}  // namespace kesto
