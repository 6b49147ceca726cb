#include "cross_section.hpp"

#include <algorithm>
#include <iterator>

namespace reference {

namespace {

/// A plate's value at a mileage.
Real ValueAt(const std::vector<ChangeData>& changes, const Real& roadStart, const Real& mileage, std::size_t plate,
             double standard) {
    if (changes.empty()) return standard;
    const auto next = std::ranges::find_if(changes, [&](const ChangeData& it) { return mileage < it.mileage; });
    if (next == changes.end()) return changes.back().values[plate];
    const bool first = next == changes.begin();
    const Real from = first ? standard : std::prev(next)->values[plate];
    const Real start = first ? roadStart : std::prev(next)->mileage;
    const Real t = (mileage - start) / (next->mileage - start);
    const Real rise = next->values[plate] - from;
    switch (next->type) {
        case 0: return from + rise * t;
        case 1: return from + rise * (3 * t * t - 2 * t * t * t);
        case 2: return from + rise * (4 * t * t * t - 3 * t * t * t * t);
        default: return standard;
    }
}

}  // namespace

std::vector<Edge> EdgesAt(const SideData& side, const Real& roadStart, const Real& mileage, const Real& centreHeight) {
    std::vector<Edge> edges;
    Real offset = 0;
    Real height = centreHeight;
    for (std::size_t i = 0; i < side.plates.size(); ++i) {
        const PlateData& plate = side.plates[i];
        const Real width = ValueAt(side.widths, roadStart, mileage, i, plate.width);
        const Real slope = ValueAt(side.slopes, roadStart, mileage, i, plate.slope);
        offset += width;
        height += plate.step + width * slope / 100;
        edges.push_back({width, slope, offset, height});
    }
    return edges;
}

Real HeightAcross(const SideData& side, const std::vector<Edge>& edges, const Real& centreHeight,
                  const Real& distance) {
    std::size_t at = 0;
    while (edges[at].offset < distance) ++at;
    const Real innerOffset = at == 0 ? Real(0) : edges[at - 1].offset;
    const Real innerHeight = at == 0 ? centreHeight : edges[at - 1].height;
    return innerHeight + side.plates[at].step + (distance - innerOffset) * edges[at].slope / 100;
}

}  // namespace reference
