#include "core/road_design.hpp"

#include <algorithm>
#include <utility>

#include "core/text.hpp"

namespace kesto {

namespace {

inline constexpr double smallestInterval = 1.0;  // m

}  // namespace

void Clear(RoadDesign& road) {
    road.settings = Settings{};
    road.intersections.Clear();
    road.elements.Clear();
    road.coordinates.Clear();
    road.stakes.Clear();
    road.brokenChains.Clear();
    road.verticalCurves.Clear();
    for (auto& plates : road.sections.plates) plates.clear();
    for (auto& side : road.sections.changeSections) {
        for (auto& table : side) table.clear();
    }
    road.sections.mileageIndex.clear();
    road.totalLength = 0;
    road.chainIndex = ChainIndex{};
    road.inverseIndex = InverseIndex{};
    road.roadLimits = SearchLimits{};
    road.searchLimits = SearchLimits{};
    road.stakeOrder = StakeOrder{};
    road.profileCache = ProfileCache{};
    road.reading = ReadingReport{};
    road.lastFailure.reset();
}

void SwapDesignData(RoadDesign& one, RoadDesign& other) noexcept {
    std::swap(one.settings, other.settings);
    one.intersections.Swap(other.intersections);
    one.elements.Swap(other.elements);
    one.coordinates.Swap(other.coordinates);
    one.stakes.Swap(other.stakes);
    one.brokenChains.Swap(other.brokenChains);
    one.verticalCurves.Swap(other.verticalCurves);
    std::swap(one.sections.plates, other.sections.plates);
    std::swap(one.sections.changeSections, other.sections.changeSections);
    std::swap(one.sections.mileageIndex, other.sections.mileageIndex);
    std::swap(one.totalLength, other.totalLength);
    std::swap(one.reading, other.reading);
}

void SetInterval(RoadDesign& road, double interval) noexcept {
    road.settings.mileageInterval = interval > smallestInterval ? interval : smallestInterval;
}

void SetStart(RoadDesign& road, double x, double y, double azimuth) {
    Element start{};
    start.startX = x;
    start.startY = y;
    start.startAzimuth = azimuth;
    start.secondAzimuth = azimuth;
    if (road.elements.Count() > 0 && road.elements[0].type == 0) {
        road.elements.Edit().front() = start;
    } else {
        road.elements.Insert(start, 0);
    }
}

}  // namespace kesto
