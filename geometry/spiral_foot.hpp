/// The foot on a spiral whose constants are kept: the result of ProjectOnSpiral(), to the bit, without most of its
/// bisection.
#pragma once

#include "core/derived/inverse_index.hpp"
#include "geometry/projection.hpp"

namespace kesto {

/// How the ends of a spiral see a point.
struct EndLooks {
    Look start;
    Look end;
};
EndLooks LookFromEnds(const SpiralSight& spiral, Point point) noexcept;

/// The foot of a point that is not at the start of the spiral.
/// @param element the spiral itself
/// @return as ProjectOnSpiral()
std::optional<Foot> FootOnSpiral(const Element& element, const SpiralSight& spiral, const EndLooks& looks,
                                 Point point) noexcept;

}  // namespace kesto
