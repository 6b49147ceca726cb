#include "core/road_design.hpp"

#include <algorithm>
#include <utility>

#include "core/text.hpp"

namespace kesto {

namespace {

inline constexpr double smallestInterval = 1.0;  // m

/// The table of a road's design data: hands each member to `visit`, with the same member of the other roads. Whatever
/// handles a road as a whole goes by it. The transition types of the change sections are left out: they outlast the
/// sections (see Clear()).
template <class Visit, class... Roads>
void ForEachDesignMember(const Visit& visit, Roads&... roads) {
    visit(roads.settings...);
    visit(roads.intersections...);
    visit(roads.elements...);
    visit(roads.coordinates...);
    visit(roads.stakes...);
    visit(roads.brokenChains...);
    visit(roads.verticalCurves...);
    visit(roads.sections.plates...);
    visit(roads.sections.changeSections...);
    visit(roads.sections.mileageIndex...);
    visit(roads.totalLength...);
    visit(roads.reading...);
}

/// The same for what is derived of them. It follows from its stamps when it holds, so it never changes roads.
template <class Visit, class... Roads>
void ForEachDerivedMember(const Visit& visit, Roads&... roads) {
    visit(roads.chainIndex...);
    visit(roads.inverseIndex...);
    visit(roads.roadLimits...);
    visit(roads.searchLimits...);
    visit(roads.stakeOrder...);
    visit(roads.profileCache...);
}

}  // namespace

void Clear(RoadDesign& road) {
    const auto clear = []<class Member>(Member& member) {
        if constexpr (requires { member.Clear(); }) {
            member.Clear();
        } else {
            member = Member{};
        }
    };
    ForEachDesignMember(clear, road);
    ForEachDerivedMember(clear, road);
    road.lastFailure.reset();
}

void SwapDesignData(RoadDesign& one, RoadDesign& other) noexcept {
    const auto swap = []<class Member>(Member& member, Member& its) {
        if constexpr (requires { member.Swap(its); }) {
            member.Swap(its);
        } else {
            std::swap(member, its);
        }
    };
    ForEachDesignMember(swap, one, other);
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
