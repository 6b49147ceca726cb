#include "plain_walk.hpp"

#include "alignment/element_walk.hpp"

namespace bench {

double WalkToMileage(const RoadDesign* road, double x, double y) {
    const double start = road->settings.startMileage;
    return kesto::WalkElements(*road, {x, y}, {start, start + road->totalLength}).mileage;
}

std::size_t IndexBytes(const RoadDesign* road) {
    const kesto::InverseIndex& index = road->inverseIndex;
    return index.nodes.capacity() * sizeof(kesto::BoxNode) + index.levels.capacity() * sizeof(std::int32_t) +
           index.elements.capacity() * sizeof(kesto::ElementSight) +
           index.spirals.capacity() * sizeof(kesto::SpiralSight);
}

}  // namespace bench
