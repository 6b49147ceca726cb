#include "alignment/chainage.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "alignment/chain_builder.hpp"
#include "alignment/element_geometry.hpp"
#include "core/tolerances.hpp"

namespace kesto {

namespace {

/// Whether a position query at stake mileage m falls on the element: the start belongs to it, the end does not.
bool Covers(const Element& element, double m) noexcept {
    const double start = element.startMileage;
    if (element.length > 0) return start <= m && m < EndMileage(element);
    if (element.length < 0) return EndMileage(element) < m && m <= start;
    return start == m;
}

/// Whether stake mileage s lies on the element for the conversions, which allow for rounding at its start.
/// @param zeroLength how close s must be to an element without length (m)
bool Carries(const Element& element, double s, double zeroLength) noexcept {
    const double start = element.startMileage;
    const double end = EndMileage(element);
    if (element.length > 0) {
        return (s > start || std::fabs(start - s) < tolerance::mileage) && end - s > tolerance::mileage;
    }
    if (element.length < 0) {
        return s - end > tolerance::mileage && (start > s || std::fabs(start - s) < tolerance::mileage);
    }
    return std::fabs(start - s) < zeroLength;
}

/// Consecutive elements, from the first index up to but not including the last.
struct Range {
    std::int32_t first;
    std::int32_t last;
    std::int32_t Count() const noexcept { return std::max(last - first, 0); }
};

/// First index in [from, to) for which the condition no longer holds; it must hold for a leading part only.
template <class Condition>
std::int32_t FirstWhereNot(std::int32_t from, std::int32_t to, Condition&& condition) noexcept {
    while (from < to) {
        const std::int32_t middle = from + (to - from) / 2;
        if (condition(middle)) {
            from = middle + 1;
        } else {
            to = middle;
        }
    }
    return from;
}

/// On a rising chain the elements that satisfy `begun` are a leading part and those not yet `passed` a trailing one.
template <class Passed, class Begun>
Range RisingRange(const RoadDesign& road, Passed&& passed, Begun&& begun) noexcept {
    const std::int32_t count = road.elements.Count();
    const auto at = [&](auto& condition) {
        return FirstWhereNot(1, count, [&](std::int32_t i) { return condition(road.elements[i]); });
    };
    return {at(passed), at(begun)};
}

/// The elements of a rising chain that cover stake mileage m, by the comparisons of Covers().
Range RisingCover(const RoadDesign& road, double m) noexcept {
    return RisingRange(
        road, [&](const Element& it) { return !(m < EndMileage(it)); },
        [&](const Element& it) { return it.startMileage <= m; });
}

/// The elements of a rising chain that carry stake mileage s, by the comparisons of Carries().
Range RisingCarriers(const RoadDesign& road, double s) noexcept {
    return RisingRange(
        road, [&](const Element& it) { return !(EndMileage(it) - s > tolerance::mileage); },
        [&](const Element& it) { return s > it.startMileage || std::fabs(it.startMileage - s) < tolerance::mileage; });
}

bool IsRising(std::span<const Element> elements) noexcept {
    double start = -std::numeric_limits<double>::infinity();
    double end = start;
    for (const Element& element : elements) {
        const double elementEnd = EndMileage(element);
        if (!(element.length > 0 && element.startMileage >= start && elementEnd >= end && std::isfinite(elementEnd))) {
            return false;
        }
        start = element.startMileage;
        end = elementEnd;
    }
    return true;
}

void FillIndex(const RoadDesign& road, ChainIndex& index) {
    index.rising = false;
    index.running.clear();
    const std::span<const Element> elements = road.elements.Records();
    if (elements.empty()) return;
    index.running.reserve(elements.size());
    double running = road.settings.startMileage;
    for (const Element& element : elements) {
        running += std::fabs(element.length);
        index.running.push_back(running);
    }
    if (!std::isfinite(running)) index.running.clear();  // an edited length: only a walk tells
    index.rising = !index.running.empty() && IsRising(elements.subspan(1));
}

/// How often a stake mileage is carried, up to the wanted occurrence, and where.
struct Search {
    std::int32_t found = noOccurrence;  // number of carriers met, minus one
    std::int32_t element = -1;          // the one of the wanted occurrence
    double running = 0;                 // m: continuous mileage at its start
};

Search FindCarrier(const RoadDesign& road, const ChainIndex& index, StakeMileage stake) noexcept {
    Search search;
    if (index.rising) {
        const Range range = RisingCarriers(road, stake.mileage);
        if (stake.occurrence < range.Count()) {
            search.found = stake.occurrence;
            search.element = range.first + stake.occurrence;
            search.running = index.running[static_cast<std::size_t>(search.element) - 1];
        } else {
            search.found = range.Count() - 1;
        }
        return search;
    }
    double running = road.settings.startMileage;
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        running += std::fabs(road.elements[i - 1].length);
        if (!Carries(road.elements[i], stake.mileage, tolerance::zeroLengthMileage)) continue;
        if (++search.found == stake.occurrence) {
            search.element = i;
            search.running = running;
            break;
        }
    }
    return search;
}

/// Continuous mileage at the start of the last element (m), summed from the road's start.
double LastRunning(const RoadDesign& road) noexcept {
    double running = road.settings.startMileage;
    for (const Element& element : road.elements.Records().first(road.elements.Records().size() - 1)) {
        running += std::fabs(element.length);
    }
    return running;
}

/// The element on which a continuous mileage lies, the last one beyond the road, and the mileage at its start.
struct Place {
    std::int32_t element;
    double running;  // m
};

Place PlaceOf(const RoadDesign& road, const ChainIndex& index, double continuous) noexcept {
    const std::int32_t count = road.elements.Count();
    const std::int32_t last = count - 1;
    const bool indexed = index.running.size() == static_cast<std::size_t>(count);
    double running = road.settings.startMileage;
    std::int32_t i = 1;
    if (indexed) {
        // running[i] is the mileage at the end of element i: skip what ends before the place.
        const auto end = [&](std::int32_t at) { return index.running[static_cast<std::size_t>(at)]; };
        i = FirstWhereNot(1, count, [&](std::int32_t at) { return !(end(at) - continuous > tolerance::mileage); });
        if (i < count && !(end(i - 1) - continuous > tolerance::mileage)) return {i, end(i - 1)};
        return {last, last > 0 ? end(last - 1) : running};
    }
    for (; i < count; ++i) {
        running += std::fabs(road.elements[i - 1].length);
        const double end = running + std::fabs(road.elements[i].length);
        if (!(running - continuous > tolerance::mileage) && end - continuous > tolerance::mileage) return {i, running};
    }
    return {last, last > 0 ? running : road.settings.startMileage};
}

StakeMileage StakeMileageOn(const RoadDesign& road, const ChainIndex& index, const Place& place,
                            double continuous) noexcept {
    const Element& element = road.elements[place.element];
    const double along = continuous - place.running;
    StakeMileage stake;
    stake.mileage = (element.length < 0 ? -along : along) + element.startMileage;
    const double beyond = continuous - road.settings.startMileage - road.totalLength;
    stake.occurrence = std::fabs(beyond) < tolerance::mileage ? 0 : noOccurrence;
    if (index.rising) {
        Range range = RisingCarriers(road, stake.mileage);
        range.last = std::min(range.last, place.element + 1);
        stake.occurrence += range.Count();
        return stake;
    }
    for (std::int32_t i = place.element; i >= 1; --i) {
        if (Carries(road.elements[i], stake.mileage, tolerance::mileage)) ++stake.occurrence;
    }
    return stake;
}

}  // namespace

const ChainIndex& CurrentIndex(RoadDesign& road) noexcept {
    const ChainIndex::Key now{road.elements.Revision(), road.settings.startMileage};
    if (!(road.chainIndex.key == now)) {
        try {
            FillIndex(road, road.chainIndex);
        } catch (const std::bad_alloc&) {
            road.chainIndex.rising = false;
            road.chainIndex.running.clear();
        }
        road.chainIndex.key = now;
    }
    return road.chainIndex;
}

std::optional<std::int32_t> CoveringElement(RoadDesign& road, StakeMileage stake) noexcept {
    const std::int32_t count = road.elements.Count();
    if (stake.occurrence < 0 || count == 0) return std::nullopt;
    std::int32_t met = 0;
    if (CurrentIndex(road).rising) {
        const Range range = RisingCover(road, stake.mileage);
        if (stake.occurrence < range.Count()) return range.first + stake.occurrence;
        met = range.Count();
    } else {
        for (std::int32_t i = 1; i < count; ++i) {
            if (!Covers(road.elements[i], stake.mileage)) continue;
            if (met == stake.occurrence) return i;
            ++met;
        }
    }
    const double end = EndMileage(road.elements[count - 1]);
    if (met == stake.occurrence && std::fabs(stake.mileage - end) < tolerance::mileage) return count - 1;
    return std::nullopt;
}

std::optional<double> FindContinuous(RoadDesign& road, StakeMileage stake) noexcept {
    const std::int32_t count = road.elements.Count();
    if (stake.occurrence < 0 || count == 0) return std::nullopt;
    Search search = FindCarrier(road, CurrentIndex(road), stake);
    double result = 0;
    if (search.element >= 0) {
        const Element& element = road.elements[search.element];
        const bool hasLength = element.length > 0 || element.length < 0;
        result = search.running + (hasLength ? std::fabs(stake.mileage - element.startMileage) : 0);
    }
    // The end of the road counts as one more occurrence. It is tested after a match too, except for the first
    // occurrence: a later one at the end's own stake mileage is refused.
    if (search.found == noOccurrence || stake.occurrence != 0) {
        const Element& last = road.elements[count - 1];
        if (std::fabs(stake.mileage - last.startMileage - last.length) < tolerance::mileage) {
            ++search.found;
            result = LastRunning(road) + std::fabs(last.length);
        }
    }
    if (search.found != stake.occurrence) return std::nullopt;
    return result;
}

Result<double> ContinuousMileage(RoadDesign& road, StakeMileage stake) {
    if (const Outcome current = EnsureCurrent(road); !current) return current.failure();
    const std::optional<double> continuous = FindContinuous(road, stake);
    if (!continuous) return ExplainMissing(road, stake);
    if (!std::isfinite(*continuous)) return Fail(KESTO_RESULT_NOT_FINITE);
    return *continuous;
}

StakeMileage StakeMileageAt(RoadDesign& road, double continuous) noexcept {
    return StakeMileageOn(road, CurrentIndex(road), PlaceOf(road, CurrentIndex(road), continuous), continuous);
}

StakeMileage StakeMileageAt(RoadDesign& road, double continuous, std::int32_t element, double running) noexcept {
    const ChainIndex& index = CurrentIndex(road);
    // Elements before this one end at or before its start: where it holds the place, none of them does.
    const double end = running + std::fabs(road.elements[element].length);
    const bool holds = !(running - continuous > tolerance::mileage) && end - continuous > tolerance::mileage;
    const Place place = holds ? Place{element, running} : PlaceOf(road, index, continuous);
    return StakeMileageOn(road, index, place, continuous);
}

Failure ExplainMissing(const RoadDesign& road, StakeMileage stake) noexcept {
    const std::span<const Element> elements = road.elements.Records();
    if (elements.size() < 2) return TooFewElements(road);
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    std::int32_t occurrences = 0;
    for (const Element& element : elements.subspan(1)) {
        lowest = std::min({lowest, element.startMileage, EndMileage(element)});
        highest = std::max({highest, element.startMileage, EndMileage(element)});
        if (Carries(element, stake.mileage, tolerance::zeroLengthMileage)) ++occurrences;
    }
    if (occurrences == 0 && std::fabs(stake.mileage - EndMileage(elements.back())) < tolerance::mileage) ++occurrences;
    if (stake.mileage < lowest) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_START, stake.mileage, lowest);
    }
    if (stake.mileage > highest) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, stake.mileage, highest);
    }
    Failure failure = FailLimit(KESTO_NO_SUCH_OCCURRENCE, KESTO_LIMIT_OCCURRENCES, stake.occurrence, occurrences);
    failure.excess = stake.occurrence < 0 ? -static_cast<double>(stake.occurrence)
                                          : static_cast<double>(stake.occurrence) - occurrences + 1;
    return failure;
}

Result<RoadEnds> EndsOf(const RoadDesign& road) noexcept {
    RoadEnds ends{road.settings.startMileage, road.settings.startMileage};
    if (road.stakes.Count() > 0 && road.elements.Count() > 0) {
        ends.end = EndMileage(road.elements[road.elements.Count() - 1]);
    }
    if (!std::isfinite(ends.end)) return Fail(KESTO_RESULT_NOT_FINITE);
    return ends;
}

}  // namespace kesto
