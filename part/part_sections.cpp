#include "part/part_sections.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/tolerances.hpp"
#include "section/change_sections.hpp"
#include "section/plates.hpp"
#include "section/section_at.hpp"

namespace kesto {

namespace {

inline constexpr auto linear = static_cast<std::int32_t>(Transition::Linear);
inline constexpr int mostHalvings = 16;        // of a cut transition: enough for a difference of 5000, and the file
                                               // of a greater one stays of bounded size
inline constexpr double shortestChord = 1e-6;  // m: shorter ones would run into one in the decimals
inline constexpr std::int32_t plainFlag = 1;   // of a change section that nobody gave flags

bool IsSamePlace(double one, double other) noexcept { return std::fabs(one - other) <= tolerance::mileage; }

bool IsCurved(std::int32_t type) noexcept {
    return type == static_cast<std::int32_t>(Transition::Cubic) ||
           type == static_cast<std::int32_t>(Transition::FourthDegree);
}

/// What lies between two change sections of the whole road, or its start and the first one.
struct Stretch {
    double start;  // m
    double end;
    std::int32_t type;
};

/// Cuts one table of change sections for a part.
class TableCutter {
public:
    TableCutter(const RoadDesign& wholeRoad, FramedPart& framed, ChangeTable table)
        : whole(wholeRoad),
          part(framed),
          which(table),
          changes(TableOf(whole.sections.changeSections, which)),
          types(TableOf(whole.sections.transitionTypes, which)),
          start(part.frame.Start()),
          end(part.frame.End()) {}

    void Cut() {
        if (changes.empty()) return;
        double before = start;
        const bool atRoadStart = IsSamePlace(start, whole.settings.startMileage);
        // One that lies before the road, whose start has moved, acts from the start on.
        if (!HasChangeAt(start) && (!atRoadStart || changes.begin()->first < start)) AddCut(start, linear);
        for (auto it = changes.lower_bound(start - tolerance::mileage);
             it != changes.end() && it->first <= end + tolerance::mileage; ++it) {
            const std::int32_t type = AddStretch(before, it->first);
            // A change section that decimals have moved over an end is still at that end.
            Put(std::clamp(it->first, start, end), it->second, type);
            before = it->first;
        }
        if (!HasChangeAt(end) && changes.upper_bound(end) != changes.end()) {
            AddCut(end, AddStretch(before, end));
        }
    }

private:
    bool HasChangeAt(double place) const noexcept {
        const auto found = changes.lower_bound(place - tolerance::mileage);
        return found != changes.end() && found->first <= place + tolerance::mileage;
    }

    void Put(double place, const ChangeSection& change, std::int32_t type) {
        const double inPart = part.frame.ToPart(place);
        if (TableOf(part.road->sections.changeSections, which).emplace(inPart, change).second) {
            TableOf(part.road->sections.transitionTypes, which)[inPart] = type;
        }
    }

    /// Adds a change section with the values that the whole road has at a place, and the flags of the change section
    /// before it, or of the first one.
    void AddCut(double place, std::int32_t type) {
        const auto next = changes.upper_bound(place);
        ChangeSection cut = next == changes.begin() ? next->second : std::prev(next)->second;
        cut.values = ChangedValuesAt(whole, which, place);
        cut.flags.resize(cut.values.size(), plainFlag);
        Put(place, cut, type);
    }

    std::int32_t TypeOf(double change) const noexcept {
        const auto type = types.find(change);
        return type == types.end() ? linear : type->second;
    }

    /// Prepares the stretch of the part that leads to a change section: a curved transition that is not there as a
    /// whole is replaced.
    /// @return the type that leads there
    std::int32_t AddStretch(double from, double to) {
        if (!(to - from > tolerance::mileage)) return TypeOf(to);
        const auto next = changes.upper_bound((from + to) / 2);
        const Stretch stretch{next == changes.begin() ? whole.settings.startMileage : std::prev(next)->first,
                              next->first, TypeOf(next->first)};
        const bool isWhole = IsSamePlace(from, stretch.start) && IsSamePlace(to, stretch.end);
        if (isWhole || !IsCurved(stretch.type)) return stretch.type;
        const double length = stretch.end - stretch.start;
        AddChords(stretch, LargestDifference(stretch), (from - stretch.start) / length, (to - stretch.start) / length,
                  mostHalvings);
        return linear;
    }

    /// The largest difference of a plate's values between the ends of a stretch.
    double LargestDifference(const Stretch& stretch) const {
        const std::vector<double> first = ChangedValuesAt(whole, which, stretch.start);
        const std::vector<double>& last = changes.at(stretch.end).values;
        double largest = 0;
        for (std::size_t i = 0; i < std::min(first.size(), last.size()); ++i) {
            largest = std::max(largest, std::fabs(last[i] - first[i]));
        }
        return largest;
    }

    /// Adds change sections between two fractions of a stretch until its chords are near enough. A chord over the
    /// fraction h is at most h^2 / 8 times the second derivative away.
    void AddChords(const Stretch& stretch, double difference, double from, double to, int halvings) {
        const double width = to - from;
        const double length = stretch.end - stretch.start;
        const double error = difference * LargestBend(stretch.type, from, to) * width * width / 8;
        if (!(error > tolerance::cutTransition) || !(width * length > shortestChord) || halvings == 0) return;
        const double middle = (from + to) / 2;
        AddChords(stretch, difference, from, middle, halvings - 1);
        AddCut(stretch.start + middle * length, linear);
        AddChords(stretch, difference, middle, to, halvings - 1);
    }

    const RoadDesign& whole;
    FramedPart& part;
    ChangeTable which;
    const KeyedTable<ChangeSection>& changes;
    const KeyedTable<std::int32_t>& types;
    double start;  // m, ends of the part in the whole road
    double end;
};

/// The index knows no occurrences: a mileage is kept where its stake mileage occurs in the part.
void CopyMileages(const RoadDesign& whole, RoadDesign& part) {
    std::ranges::copy_if(whole.sections.mileageIndex, std::back_inserter(part.sections.mileageIndex),
                         [&](const SectionMileageIndex& entry) {
                             return FindContinuous(part, {entry.mileage, 0}).has_value();
                         });
}

}  // namespace

void CopySections(const RoadDesign& whole, FramedPart& part) {
    part.road->sections.plates = whole.sections.plates;
    for (const Side side : {Side::Left, Side::Right}) {
        for (const ChangeKind kind : {ChangeKind::Heightening, ChangeKind::Widening}) {
            TableCutter(whole, part, {static_cast<std::int32_t>(side), static_cast<std::int32_t>(kind)}).Cut();
        }
    }
    CopyMileages(whole, *part.road);
}

}  // namespace kesto
