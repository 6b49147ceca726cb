#include "alignment/chain_lookup.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/tolerances.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

namespace {

// What an element answers

/// +1 where the stake mileage rises along an element, -1 where it falls, 0 on an element without length.
double SenseOf(double length) noexcept { return length > 0 ? 1 : (length < 0 ? -1 : 0); }

/// Whether a position query at the stake mileage falls on an element: the start belongs to it, the end does not. Starts
/// and ends are stake mileages in the sense of travel: times the sense, which rounds nothing.
struct Covering {
    double mileage;  // m

    bool Begun(double sense, double start) const noexcept { return start <= sense * mileage; }
    bool Passed(double sense, double end) const noexcept { return !(sense * mileage < end); }
    bool IsAt(double point) const noexcept { return point == mileage; }
};

/// As Covering, for the conversions, which allow for rounding at an element's start.
struct Carrying {
    double mileage;     // m
    double zeroLength;  // m: how close it must be to an element without length

    bool Begun(double sense, double start) const noexcept {
        return sense * mileage > start || std::fabs(start - sense * mileage) < tolerance::mileage;
    }
    bool Passed(double sense, double end) const noexcept { return !(end - sense * mileage > tolerance::mileage); }
    bool IsAt(double point) const noexcept { return std::fabs(point - mileage) < zeroLength; }
};

/// Whether an element fits a condition.
template <class Condition>
bool Fits(const Element& element, const Condition& condition) noexcept {
    const double sense = SenseOf(element.length);
    if (sense == 0) return condition.IsAt(element.startMileage);
    return condition.Begun(sense, sense * element.startMileage) &&
           !condition.Passed(sense, sense * EndMileage(element));
}

// Plain walks

template <class Condition>
Match WalkTo(const RoadDesign& road, const Condition& condition, std::int32_t occurrence) noexcept {
    Match match;
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        if (!Fits(road.elements[i], condition)) continue;
        if (match.before == occurrence) {
            match.element = i;
            break;
        }
        ++match.before;
    }
    return match;
}

double WalkRunning(const RoadDesign& road, std::int32_t element) noexcept {
    double running = road.settings.startMileage;
    for (std::int32_t i = 0; i < element; ++i) running += std::fabs(road.elements[i].length);
    return running;
}

Place WalkToPlace(const RoadDesign& road, double continuous) noexcept {
    const std::int32_t count = road.elements.Count();
    double running = road.settings.startMileage;
    for (std::int32_t i = 1; i < count; ++i) {
        running += std::fabs(road.elements[i - 1].length);
        if (LiesBetween(running, running + std::fabs(road.elements[i].length), continuous)) return {i, running};
    }
    return {count - 1, running};
}

MileageSpan WalkSpan(const RoadDesign& road) noexcept {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    MileageSpan span{infinity, -infinity};
    for (const Element& element : road.elements.Records().subspan(1)) {
        for (const double mileage : {element.startMileage, EndMileage(element)}) {
            span.lowest = std::min(span.lowest, mileage);
            span.highest = std::max(span.highest, mileage);
        }
    }
    return span;
}

// Searches in the index

/// Consecutive elements [first, last).
struct Range {
    std::int32_t first;
    std::int32_t last;
    std::int32_t Count() const noexcept { return std::max(last - first, 0); }
};

/// First index of a range for which the condition no longer holds; it must hold for a leading part only. The search
/// begins at a guess and widens from there: any guess gives the same result.
template <class Condition>
std::int32_t FirstWhereNot(Range range, std::int32_t guess, const Condition& condition) noexcept {
    std::int32_t low = range.first;
    std::int32_t high = range.last;
    std::int32_t step = 1;
    if (guess < high && condition(guess)) {
        for (low = guess + 1; step <= high - low; step *= 2) {
            const std::int32_t probe = low + step - 1;
            if (!condition(probe)) {
                high = probe;
                break;
            }
            low = probe + 1;
        }
    } else {
        for (high = guess; step <= high - low; step *= 2) {
            const std::int32_t probe = high - step;
            if (condition(probe)) {
                low = probe + 1;
                break;
            }
            high = probe;
        }
    }
    while (low < high) {
        const std::int32_t middle = low + (high - low) / 2;
        if (condition(middle)) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

/// Bucket of a value; the first or last one outside the table, and the first for what is no number.
std::size_t BucketOf(const GuessTable& table, double value) noexcept {
    const double bucket = (value - table.low) * table.bucketsPerMetre;
    if (!(bucket > 0)) return 0;
    const auto last = table.bucketCount - 1;
    return bucket < static_cast<double>(last) ? static_cast<std::size_t>(bucket) : last;
}

std::int32_t GuessFor(const ChainIndex& index, const GuessTable& table, double value) noexcept {
    return index.guesses[table.firstBucket + BucketOf(table, value)];
}

/// The elements of an ordered run that fit: those begun are a leading part and those not yet passed a trailing one.
template <class Condition>
Range FittingRange(const RoadDesign& road, const ChainIndex& index, const MileageRun& run,
                   const Condition& condition) noexcept {
    const double sense = run.sense;
    if (!condition.Begun(sense, run.low) || condition.Passed(sense, run.high)) return {run.first, run.first};
    const Range all{run.first, run.last};
    const std::int32_t first =
        FirstWhereNot(all, GuessFor(index, run.guesses, sense * condition.mileage),
                      [&](std::int32_t i) { return condition.Passed(sense, sense * EndMileage(road.elements[i])); });
    return {first, FirstWhereNot({first, run.last}, std::min(first + 1, run.last), [&](std::int32_t i) {
                return condition.Begun(sense, sense * road.elements[i].startMileage);
            })};
}

/// Calls `visit` with every range of fitting elements in chain order until it returns true.
template <class Condition, class Visit>
void ForEachFitting(const RoadDesign& road, const ChainIndex& index, const Condition& condition,
                    const Visit& visit) noexcept {
    for (const MileageRun& run : index.runs) {
        if (run.sense != 0) {
            const Range range = FittingRange(road, index, run, condition);
            if (range.Count() > 0 && visit(range)) return;
            continue;
        }
        for (std::int32_t i = run.first; i < run.last; ++i) {
            if (Fits(road.elements[i], condition) && visit(Range{i, i + 1})) return;
        }
    }
}

template <class Condition>
Match LookUp(const RoadDesign& road, const ChainIndex& index, const Condition& condition,
             std::int32_t occurrence) noexcept {
    Match match;
    ForEachFitting(road, index, condition, [&](Range range) {
        const bool here = occurrence - match.before < range.Count();
        match.element = here ? range.first + (occurrence - match.before) : -1;
        match.before = here ? occurrence : match.before + range.Count();
        return here;
    });
    return match;
}

double RunningEnd(const ChainIndex& index, std::int32_t element) noexcept {
    return index.running[static_cast<std::size_t>(element)];
}

Place LookUpPlace(const RoadDesign& road, const ChainIndex& index, double continuous) noexcept {
    const std::int32_t last = road.elements.Count() - 1;
    if (index.summed > 1) {
        const Range all{1, index.summed};
        const std::int32_t found =
            FirstWhereNot(all, GuessFor(index, index.runningGuesses, continuous),
                          [&](std::int32_t i) { return !(RunningEnd(index, i) - continuous > tolerance::mileage); });
        if (found < index.summed && LiesBetween(RunningEnd(index, found - 1), RunningEnd(index, found), continuous)) {
            return {found, RunningEnd(index, found - 1)};
        }
    }
    return {last, RunningAt(road, &index, last)};
}

// Building it

inline constexpr std::size_t bucketsPerElement = 2;
inline constexpr std::size_t mostFrames = 4096;  // of longer roads: fetching from memory costs more than working out

/// Fills the guess table of a range whose values, one per element, never fall: each bucket gets the first element whose
/// value lies in it or behind it.
template <class Value>
GuessTable MakeGuesses(ChainIndex& index, Range range, double low, const Value& value) {
    GuessTable table;
    table.low = low;
    table.firstBucket = index.guesses.size();
    table.bucketCount = bucketsPerElement * static_cast<std::size_t>(range.Count());
    table.bucketsPerMetre = static_cast<double>(table.bucketCount) / (value(range.last - 1) - low);
    index.guesses.resize(table.firstBucket + table.bucketCount);
    const auto guesses = index.guesses.begin() + static_cast<std::ptrdiff_t>(table.firstBucket);
    std::size_t filled = 0;
    for (std::int32_t i = range.first; i < range.last; ++i) {
        const std::size_t end = i + 1 < range.last ? BucketOf(table, value(i)) + 1 : table.bucketCount;
        for (; filled < end; ++filled) guesses[static_cast<std::ptrdiff_t>(filled)] = i;
    }
    return table;
}

void SumLengths(const RoadDesign& road, ChainIndex& index) {
    double running = road.settings.startMileage;
    index.summed = 0;
    for (const Element& element : road.elements.Records()) {
        running += std::fabs(element.length);
        index.running.push_back(running);
        if (!std::isnan(running)) ++index.summed;
    }
    if (index.summed > 1) {
        index.runningGuesses = MakeGuesses(index, {1, index.summed}, RunningEnd(index, 0),
                                           [&](std::int32_t i) { return RunningEnd(index, i); });
    }
}

/// The sense that an element has in a run: none where a mileage is no number.
double SenseInRun(const Element& element) noexcept {
    if (!std::isfinite(element.startMileage) || !std::isfinite(EndMileage(element))) return 0;
    return SenseOf(element.length);
}

/// Ends of an element's stake mileages in the sense of travel (m).
struct Ends {
    double start;
    double end;
};

void FindRuns(const RoadDesign& road, ChainIndex& index) {
    Ends before{};
    for (std::int32_t i = 1; i < road.elements.Count(); ++i) {
        const Element& element = road.elements[i];
        const double sense = SenseInRun(element);
        const Ends ends{sense * element.startMileage, sense * EndMileage(element)};
        const bool continues = !index.runs.empty() && index.runs.back().sense == sense &&
                               (sense == 0 || (before.start <= ends.start && before.end <= ends.end));
        before = ends;
        if (!continues) index.runs.push_back({i, i, sense, ends.start, ends.end, {}});
        index.runs.back().last = i + 1;
        index.runs.back().high = ends.end;
    }
    for (MileageRun& run : index.runs) {
        if (run.sense == 0) continue;
        run.guesses = MakeGuesses(index, {run.first, run.last}, run.low,
                                  [&](std::int32_t i) { return run.sense * EndMileage(road.elements[i]); });
    }
}

}  // namespace

void FillIndex(const RoadDesign& road, ChainIndex& index) {
    index.filled = false;
    index.runs.clear();
    index.running.clear();
    index.guesses.clear();
    const std::size_t count = road.elements.Records().size();
    if (count == 0) return;
    index.running.reserve(count);
    index.guesses.reserve(2 * bucketsPerElement * count);
    const std::size_t framed = count <= mostFrames ? count : 0;
    index.frames.resize(framed);
    index.framesKnown.assign(framed, 0);
    SumLengths(road, index);
    FindRuns(road, index);
    const MileageSpan span = WalkSpan(road);
    index.lowest = span.lowest;
    index.highest = span.highest;
    index.filled = true;
}

bool Carries(const Element& element, double mileage, double zeroLength) noexcept {
    return Fits(element, Carrying{mileage, zeroLength});
}

bool LiesBetween(double start, double end, double continuous) noexcept {
    return !(start - continuous > tolerance::mileage) && end - continuous > tolerance::mileage;
}

Match FindCovering(const RoadDesign& road, const ChainIndex* index, StakeMileage stake) noexcept {
    const Covering covering{stake.mileage};
    return index != nullptr ? LookUp(road, *index, covering, stake.occurrence)
                            : WalkTo(road, covering, stake.occurrence);
}

Match FindCarrier(const RoadDesign& road, const ChainIndex* index, StakeMileage stake) noexcept {
    const Carrying carrying{stake.mileage, tolerance::zeroLengthMileage};
    return index != nullptr ? LookUp(road, *index, carrying, stake.occurrence)
                            : WalkTo(road, carrying, stake.occurrence);
}

std::int32_t CountCarriers(const RoadDesign& road, const ChainIndex* index, double mileage, double zeroLength,
                           std::int32_t last) noexcept {
    const Carrying carrying{mileage, zeroLength};
    std::int32_t count = 0;
    if (index != nullptr) {
        ForEachFitting(road, *index, carrying, [&](Range range) {
            count += Range{range.first, std::min(range.last, last + 1)}.Count();
            return range.last > last;
        });
    } else {
        for (std::int32_t i = 1; i <= last; ++i) count += Fits(road.elements[i], carrying) ? 1 : 0;
    }
    return count;
}

Place FindPlace(const RoadDesign& road, const ChainIndex* index, double continuous) noexcept {
    return index != nullptr ? LookUpPlace(road, *index, continuous) : WalkToPlace(road, continuous);
}

double RunningAt(const RoadDesign& road, const ChainIndex* index, std::int32_t element) noexcept {
    if (element == 0) return road.settings.startMileage;
    return index != nullptr ? RunningEnd(*index, element - 1) : WalkRunning(road, element);
}

MileageSpan SpanOf(const RoadDesign& road, const ChainIndex* index) noexcept {
    return index != nullptr ? MileageSpan{index->lowest, index->highest} : WalkSpan(road);
}

}  // namespace kesto
