/// A piece of one element.
#pragma once

#include "core/result.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto {

/// Radius of a spiral where it is split (m; 0 for infinite): the curvature runs evenly from one end to the other.
/// @param spiral the whole spiral, of two different radii
/// @param first  signed length of its first piece (m), not 0 where the start radius is infinite
/// @param second signed length of its second piece (m), not 0 where the end radius is infinite
double SplitRadius(const Element& spiral, double first, double second) noexcept;

/// The piece of an element between two distances from its start, both along the road and within the element. It keeps
/// the element's shape: a spiral has its radii at the cuts. Start mileage, point and azimuth are those at the first
/// cut.
/// @param from, to distances (m), 0 <= from <= to <= the element's length without its sign
/// @return fails where the element cannot be evaluated at a cut
Result<Element> CutElement(const Element& element, double from, double to) noexcept;

}  // namespace kesto
