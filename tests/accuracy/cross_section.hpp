/// Which widths and cross slopes hold at a place, and the edges of the plates.
#pragma once

#include <cstddef>
#include <vector>

#include "real.hpp"

namespace reference {

/// A plate of the standard section.
struct PlateData {
    double width, slope, step;  // m, per cent, m
};

/// Values of all plates of a side from a place on, and how they are reached from those before.
struct ChangeData {
    Real mileage;  // continuous (m)
    std::vector<double> values;
    int type;
};

/// An outer edge.
struct Edge {
    Real width, slope;    // of the plate (m, per cent)
    Real offset, height;  // of the edge, from the centre line (m)
};

/// One side of the road.
struct SideData {
    std::vector<PlateData> plates;
    std::vector<ChangeData> slopes, widths;  // in their order along the road
};

/// The plates of a side at a continuous mileage (m), from the centre line outwards.
/// @param roadStart    continuous mileage of the road's start (m)
/// @param centreHeight m
std::vector<Edge> EdgesAt(const SideData& side, const Real& roadStart, const Real& mileage, const Real& centreHeight);

/// Height at a distance from the centre line (m) that lies on a plate.
Real HeightAcross(const SideData& side, const std::vector<Edge>& edges, const Real& centreHeight, const Real& distance);

}  // namespace reference
