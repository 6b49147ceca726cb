/// The road: a plain aggregate of settings, lists and derived data. What is computed from it are free functions above.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/counted_list.hpp"
#include "core/derived/chain_index.hpp"
#include "core/derived/inverse_index.hpp"
#include "core/derived/profile_cache.hpp"
#include "core/derived/stake_order.hpp"
#include "core/keyed_table.hpp"
#include "core/reading_report.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto {

/// Everything that the setters store.
struct Settings {
    double startMileage = 0;         // m: mileage of the alignment's start
    double mileageInterval = 100;    // m: spacing of regular stakes, never below 1
    std::int32_t makeStakeType = 0;  // 0 whole multiples of the interval, 1 counted from each element's start
    std::int32_t roadDesignMode = 0;
    std::int32_t verticalCurveMode = 0;
    std::int32_t sectionMode = 0;
    std::int32_t sideSlopeMode = 0;
    std::string stakePrefix = "K";
};

/// Values of one side's plates at one place of the road.
struct ChangeSection {
    std::vector<double> values;       // one per plate, from the centre line outwards: per cent or m
    std::vector<std::int32_t> flags;  // one per plate, carried
};

inline constexpr std::size_t sideCount = 2;        // 0 left, 1 right
inline constexpr std::size_t changeKindCount = 2;  // 0 heightening, 1 widening

/// The cross sections of a road.
struct SectionData {
    template <class Entry>
    using Tables = std::array<std::array<KeyedTable<Entry>, changeKindCount>, sideCount>;

    std::array<std::vector<SectionPlate>, sideCount> plates;
    Tables<ChangeSection> changeSections;
    Tables<std::int32_t> transitionTypes;
    std::vector<SectionMileageIndex> mileageIndex;
};

}  // namespace kesto

struct RoadDesign {
    kesto::Settings settings;

    kesto::CountedList<Intersection> intersections;
    kesto::CountedList<Element> elements;
    kesto::CountedList<Coordinate> coordinates;
    kesto::CountedList<StakeCoordinate> stakes;
    kesto::CountedList<BrokenChain> brokenChains;
    kesto::CountedList<VerticalCurve> verticalCurves;
    kesto::SectionData sections;

    bool frozen = false;  // a copy that is only read: see FreezeRoad()

    // Derived
    double totalLength = 0;        // m: sum of the absolute element lengths; below 1e-7: the chain is not built
    kesto::ChainIndex chainIndex;  // what follows holds while its stamp is the road's own
    kesto::InverseIndex inverseIndex;
    kesto::SearchLimits roadLimits;    // of the whole road
    kesto::SearchLimits searchLimits;  // of the last search between limits
    kesto::StakeOrder stakeOrder;
    kesto::ProfileCache profileCache;
    kesto::ReadingReport reading;        // of the last opening
    std::optional<Failure> lastFailure;  // kept by the boundary guard
};

namespace kesto {

/// The stamp of the road's data as they are now.
inline Stamp StampOf(const RoadDesign& road) noexcept {
    return {road.elements.Revision(), road.verticalCurves.Revision(),
            road.stakes.Revision(),   road.settings.startMileage,
            road.totalLength,         road.settings.verticalCurveMode};
}

/// Empties the design data and resets the settings. The transition types of the change sections stay: a host that
/// reloads a road's sections finds them again.
void Clear(RoadDesign& road);

/// Exchanges the design data of two roads: settings, lists and derived data, all that Clear() empties. What Clear()
/// leaves alone, and the last failure, stays with each road.
void SwapDesignData(RoadDesign& one, RoadDesign& other) noexcept;

/// Stores the spacing of regular stakes: at least 1 m, and 1 m for what is no number.
void SetInterval(RoadDesign& road, double interval) noexcept;

/// Writes the start record at the head of the element list: overwrites the one that is there, else inserts it.
/// @param x, y    start point (m)
/// @param azimuth start azimuth (degrees)
void SetStart(RoadDesign& road, double x, double y, double azimuth);

}  // namespace kesto
