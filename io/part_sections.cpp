#include "io/part_sections.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <vector>

#include "alignment/chainage.hpp"
#include "core/tolerances.hpp"
#include "section/change_sections.hpp"
#include "section/plates.hpp"
#include "section/section_at.hpp"

namespace kesto {

namespace {

inline constexpr auto linear = static_cast<std::int32_t>(Transition::Linear);
inline constexpr std::int32_t plainFlag = 1;  // of a change section that nobody gave flags

bool IsSamePlace(double one, double other) noexcept { return std::fabs(one - other) <= tolerance::mileage; }

bool IsCurved(std::int32_t type) noexcept {
    return type == static_cast<std::int32_t>(Transition::Cubic) ||
           type == static_cast<std::int32_t>(Transition::FourthDegree);
}

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
        if (!IsSamePlace(start, whole.settings.startMileage) && !HasChangeAt(start)) AddCut(start, linear);
        for (auto it = changes.lower_bound(start - tolerance::mileage);
             it != changes.end() && it->first <= end + tolerance::mileage; ++it) {
            AddStretch(before, it->first);
            // A change section that decimals have moved over an end is still at that end.
            Put(std::clamp(it->first, start, end), it->second, lastType);
            before = it->first;
        }
        if (!HasChangeAt(end) && changes.upper_bound(end) != changes.end()) {
            AddStretch(before, end);
            AddCut(end, lastType);
        }
    }

private:
    bool HasChangeAt(double place) const noexcept {
        const auto found = changes.lower_bound(place - tolerance::mileage);
        return found != changes.end() && found->first <= place + tolerance::mileage;
    }

    /// Type of the transition that leads on from a place; linear behind the last change section.
    std::int32_t TypeBehind(double place) const noexcept {
        const auto next = changes.upper_bound(place);
        const auto type = next == changes.end() ? types.end() : types.find(next->first);
        return type == types.end() ? 0 : type->second;
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

    /// Prepares the stretch up to a change section of the part: sets its type, and replaces a curved transition that is
    /// not there as a whole.
    void AddStretch(double from, double to) {
        lastType = TypeBehind((from + to) / 2);
        if (!(to - from > tolerance::mileage)) {
            const auto type = types.find(to);
            lastType = type == types.end() ? 0 : type->second;
            return;
        }
        const auto next = changes.upper_bound((from + to) / 2);
        const double wholeStart = next == changes.begin() ? whole.settings.startMileage : std::prev(next)->first;
        const double wholeEnd = next->first;
        if (!IsCurved(lastType) || (IsSamePlace(from, wholeStart) && IsSamePlace(to, wholeEnd))) return;
        const double length = wholeEnd - wholeStart;
        AddChords(wholeStart, length, LargestDifference(wholeStart, wholeEnd, *next), (from - wholeStart) / length,
                  (to - wholeStart) / length);
        lastType = linear;
    }

    /// The largest difference of a plate's values between the ends of a stretch.
    double LargestDifference(double from, double to, const std::map<double, ChangeSection>::value_type& next) const {
        const std::vector<double> first = ChangedValuesAt(whole, which, from);
        std::vector<double> last = ChangedValuesAt(whole, which, to);
        std::copy_n(next.second.values.begin(), std::min(last.size(), next.second.values.size()), last.begin());
        double largest = 0;
        for (std::size_t i = 0; i < first.size(); ++i) largest = std::max(largest, std::fabs(last[i] - first[i]));
        return largest;
    }

    /// Adds change sections between two fractions of a stretch until its chords are near enough. A chord over the
    /// fraction h is at most h^2 / 8 times the second derivative away.
    void AddChords(double stretch, double length, double difference, double from, double to) {
        const double width = to - from;
        const double error = difference * LargestBend(lastType, from, to) * width * width / 8;
        if (!(error > tolerance::cutTransition)) return;
        const double middle = (from + to) / 2;
        AddChords(stretch, length, difference, from, middle);
        AddCut(stretch + middle * length, linear);
        AddChords(stretch, length, difference, middle, to);
    }

    const RoadDesign& whole;
    FramedPart& part;
    ChangeTable which;
    const std::map<double, ChangeSection>& changes;
    const std::map<double, std::int32_t>& types;
    double start;  // m, ends of the part in the whole road
    double end;
    std::int32_t lastType = 0;  // of the transition that leads to the next change section
};

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
