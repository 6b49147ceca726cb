#include "alignment/chainage.hpp"

#include <cmath>
#include <new>

#include "alignment/chain_builder.hpp"
#include "core/arguments.hpp"
#include "core/tolerances.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

namespace {

/// Lookups after an edit that walk before an index is built. Building one costs about as much as twenty walks, so with
/// ten the worst caller, who edits whenever the index has just been built, pays three walks a lookup.
inline constexpr std::int32_t walksAfterEdit = 10;

/// Stake mileage (m) of a continuous mileage on the element where it lies.
double MileageOn(const RoadDesign& road, const Place& place, double continuous) noexcept {
    const Element& element = road.elements[place.element];
    const double along = continuous - place.running;
    return (element.length < 0 ? -along : along) + element.startMileage;
}

/// Occurrence before any element is counted: the very end of the road counts as one more.
std::int32_t FirstOccurrence(const RoadDesign& road, double continuous) noexcept {
    const double beyond = continuous - road.settings.startMileage - road.totalLength;
    return std::fabs(beyond) < tolerance::mileage ? 0 : noOccurrence;
}

const ChainIndex* ValidIndex(const RoadDesign& road) noexcept {
    const ChainIndex& index = road.chainIndex;
    return index.filled && index.stamp.SameChain(StampOf(road)) ? &index : nullptr;
}

}  // namespace

const ChainIndex* CurrentIndex(RoadDesign& road, std::int32_t lookups) noexcept {
    ChainIndex& index = road.chainIndex;
    const Stamp now = StampOf(road);
    if (!index.stamp.SameChain(now)) {
        index.stamp = now;
        index.filled = false;
        index.asked = 0;
    }
    if (index.filled) return &index;
    if (index.asked > walksAfterEdit) return nullptr;  // the chain is empty
    const bool walks = lookups <= walksAfterEdit - index.asked;
    index.asked = walks ? index.asked + lookups : walksAfterEdit + 1;
    if (walks) return nullptr;
    try {
        FillIndex(road, index);
    } catch (const std::bad_alloc&) {
        // Lookups walk as after an edit, and then it is tried again: memory may be there by then. Until then none is
        // held.
        index = ChainIndex{};
        index.stamp = now;
        return nullptr;
    }
    return index.filled ? &index : nullptr;
}

void BuildIndex(RoadDesign& road) {
    ChainIndex& index = road.chainIndex;
    FillIndex(road, index);
    index.stamp = StampOf(road);
    for (std::size_t i = 0; i < index.frames.size(); ++i) {
        index.frames[i] = EvaluationFrameOf(road.elements[static_cast<std::int32_t>(i)]);
        index.framesKnown[i] = 1;
    }
}

ChainView::ChainView(const AskedRoad& asked, std::int32_t lookups) noexcept
    : road(asked.road), index(asked.live != nullptr ? CurrentIndex(*asked.live, lookups) : ValidIndex(asked.road)) {
    if (asked.live != nullptr && index != nullptr) keeper = &asked.live->chainIndex;
}

ChainView::ChainView(RoadDesign& ours) noexcept : ChainView(AskedRoad(ours)) {}

ChainView::ChainView(const RoadDesign& shared) noexcept : road(shared), index(ValidIndex(shared)) {}

std::optional<std::int32_t> CoveringElement(const ChainView& chain, StakeMileage stake) noexcept {
    const RoadDesign& road = chain.road;
    const std::int32_t count = road.elements.Count();
    if (stake.occurrence < 0 || count == 0) return std::nullopt;
    const Match match = FindCovering(road, chain.index, stake);
    if (match.element >= 0) return match.element;
    const double end = EndMileage(road.elements[count - 1]);
    if (match.before == stake.occurrence && std::fabs(stake.mileage - end) < tolerance::mileage) return count - 1;
    return std::nullopt;
}

std::optional<double> FindContinuous(const ChainView& chain, StakeMileage stake) noexcept {
    const RoadDesign& road = chain.road;
    const std::int32_t count = road.elements.Count();
    if (stake.occurrence < 0 || count == 0) return std::nullopt;
    const ChainIndex* const index = chain.index;
    const Match match = FindCarrier(road, index, stake);
    std::int32_t last = match.before - 1;  // the last occurrence met
    double result = 0;
    if (match.element >= 0) {
        const Element& element = road.elements[match.element];
        const bool hasLength = element.length > 0 || element.length < 0;
        result =
            RunningAt(road, index, match.element) + (hasLength ? std::fabs(stake.mileage - element.startMileage) : 0);
        ++last;
    }
    // The end of the road counts as one more occurrence. It is tested after a match too, except for the first
    // occurrence: a later one at the end's own stake mileage is refused.
    if (last == noOccurrence || stake.occurrence != 0) {
        const Element& element = road.elements[count - 1];
        if (std::fabs(stake.mileage - element.startMileage - element.length) < tolerance::mileage) {
            ++last;
            result = RunningAt(road, index, count - 1) + std::fabs(element.length);
        }
    }
    if (last != stake.occurrence) return std::nullopt;
    return result;
}

Result<double> ContinuousMileage(const AskedRoad& asked, StakeMileage stake) {
    if (const Outcome current = EnsureCurrent(asked); !current) return current.failure();
    return PlaceOf(asked, stake);
}

Result<double> PlaceOf(const ChainView& chain, StakeMileage stake) noexcept {
    const std::optional<double> continuous = FindContinuous(chain, stake);
    if (!continuous) return ExplainMissing(chain, stake);
    if (!std::isfinite(*continuous)) return Fail(KESTO_RESULT_NOT_FINITE);
    return *continuous;
}

StakeMileage StakeMileageAt(const ChainView& chain, double continuous) noexcept {
    const RoadDesign& road = chain.road;
    const ChainIndex* const index = chain.index;
    const Place place = FindPlace(road, index, continuous);
    StakeMileage stake{MileageOn(road, place, continuous), FirstOccurrence(road, continuous)};
    stake.occurrence += CountCarriers(road, index, stake.mileage, tolerance::mileage, place.element);
    return stake;
}

StakeMileage StakeMileageAt(const ChainView& chain, double continuous, const LikelyPlace& likely) noexcept {
    const RoadDesign& road = chain.road;
    const Element& element = road.elements[likely.element];
    const double end = likely.running + std::fabs(element.length);
    // The elements before it end at or before its start: where it holds the place, none of them does.
    if (LiesBetween(likely.running, end, continuous)) {
        const double mileage = MileageOn(road, {likely.element, likely.running}, continuous);
        if (mileage - likely.highestBefore > 2 * tolerance::mileage) {
            const bool carries = Carries(element, mileage, tolerance::mileage);
            return {mileage, FirstOccurrence(road, continuous) + (carries ? 1 : 0)};
        }
    }
    return StakeMileageAt(chain, continuous);
}

Result<double> PlaceIn(const AskedRoad& asked, StakeMileage stake) {
    if (const Outcome finite = RequireFinite({stake.mileage}); !finite) return finite.failure();
    return ContinuousMileage(asked, stake);
}

Result<StakeMileage> PlaceOut(const AskedRoad& asked, double continuous, KestoList list, std::int32_t record) {
    if (const Outcome current = EnsureCurrent(asked); !current) return current.failure();
    const StakeMileage stake = StakeMileageAt(asked, continuous);
    if (!std::isfinite(stake.mileage)) return Fail(KESTO_RESULT_NOT_FINITE);
    if (stake.occurrence >= 0) return stake;
    Failure failure = FailRecord(KESTO_MILEAGE_OFF_ROAD, list, record);
    failure.value = continuous;
    return failure;
}

Failure ExplainMissing(const ChainView& chain, StakeMileage stake) noexcept {
    const RoadDesign& road = chain.road;
    const std::int32_t count = road.elements.Count();
    if (count < 2) return TooFewElements(road);
    const ChainIndex* const index = chain.index;
    const MileageSpan span = SpanOf(road, index);
    std::int32_t occurrences = CountCarriers(road, index, stake.mileage, tolerance::zeroLengthMileage, count - 1);
    const double end = EndMileage(road.elements[count - 1]);
    if (occurrences == 0 && std::fabs(stake.mileage - end) < tolerance::mileage) ++occurrences;
    if (stake.mileage < span.lowest) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_START, stake.mileage, span.lowest);
    }
    if (stake.mileage > span.highest) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, stake.mileage, span.highest);
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
