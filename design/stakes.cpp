#include "design/stakes.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "alignment/chainage.hpp"
#include "alignment/position.hpp"
#include "core/stake_text.hpp"
#include "core/text.hpp"
#include "core/tolerances.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

namespace {

inline constexpr int mostRegularStakes = 10000;
inline constexpr std::int32_t triedOccurrences = 4;  // deliberately no more are looked for
inline constexpr std::string_view middleLabel = "QZ";
inline constexpr std::string_view endLabel = "ZD";

/// What the make-stake type says.
enum class StakeMode : std::int32_t { WholeMultiples = 0, FromElementStart = 1 };

/// Code of the main point where two elements meet, by their types.
std::string_view JunctionLabel(const Element& previous, const Element& current) noexcept {
    constexpr std::string_view labels[4][3] = {
        {"QD", "QD", "QD"}, {"ZZ", "ZY", "ZH"}, {"YZ", "YY", "YH"}, {"HZ", "HY", "HH"}};
    const bool known = previous.type >= 0 && previous.type <= 3 && current.type >= 1 && current.type <= 3;
    return known ? labels[previous.type][current.type - 1] : std::string_view{};
}

bool Coincide(const StakeCoordinate& one, const StakeCoordinate& other, double tolerance) noexcept {
    return std::fabs(one.x - other.x) < tolerance && std::fabs(one.y - other.y) < tolerance;
}

using StakeList = CountedList<StakeCoordinate>;

/// Appends stakes of a road to a list, leaving out those that coincide with the one before.
class StakeWriter {
public:
    StakeWriter(const RoadDesign& owner, StakeList& list) noexcept : road(owner), stakes(list) {}

    /// Appends the stake of an element at a stake mileage.
    /// @return fails where the element cannot be evaluated there
    Outcome Add(std::int32_t index, double mileage, std::string_view label) {
        const Element& element = road.elements[index];
        // The naming pass looks the stake up again at (mileage - element start): the same arithmetic gives the same
        // point.
        const Result<Position> position = Evaluate(element, mileage - element.startMileage);
        if (!position) return FailRecord(KESTO_ELEMENT_NOT_EVALUABLE, KESTO_LIST_ELEMENTS, index);
        StakeCoordinate stake{};
        SetText(stake.label, label);
        stake.mileage = mileage;
        stake.x = position->x;
        stake.y = position->y;
        Append(stake);
        return {};
    }

private:
    void Append(const StakeCoordinate& stake) {
        const std::int32_t last = stakes.Count() - 1;
        if (last < 0 || !Coincide(stakes[last], stake, tolerance::stakePoint)) {
            stakes.Insert(stake);
        } else if (TextOf(stake.label) == middleLabel && TextOf(stakes[last].label).empty()) {
            stakes.Edit().back() = stake;  // an arc's middle takes the place of a regular stake
        }
    }

    const RoadDesign& road;
    StakeList& stakes;
};

/// The mileages of the regular stakes of one element, in the order of travel: base + step, base + 2 step, ...
class RegularMileages {
public:
    RegularMileages(const Element& element, StakeMode mode, double spacing) noexcept
        : start(element.startMileage),
          end(EndMileage(element)),
          sense(element.length < 0 ? -1 : 1),
          interval(spacing),
          fromStart(mode == StakeMode::FromElementStart),
          first(fromStart ? 1 : FirstMultiple()) {}

    /// Calls `visit` with every mileage strictly inside the element until it fails.
    template <class Visit>
    Outcome ForEach(Visit&& visit) const {
        // Counted, so that the rounding of far mileages cannot keep the loop alive.
        for (int i = 0; i <= mostRegularStakes + 1; ++i) {
            const double mileage = fromStart ? start + sense * (first + i) * interval : (first + sense * i) * interval;
            if (!(sense * (end - mileage) > tolerance::stakeEnd)) break;
            if (!(sense * (mileage - start) > tolerance::stakeEnd)) continue;
            if (Outcome visited = visit(mileage); !visited) return visited;
        }
        return {};
    }

private:
    /// Number of the first whole multiple after the start, in the sense of travel.
    double FirstMultiple() const noexcept {
        return sense > 0 ? std::floor(start / interval) + 1 : std::ceil(start / interval) - 1;
    }

    double start;     // m
    double end;       // m
    double sense;     // +1 or -1
    double interval;  // m
    bool fromStart;
    double first;  // number of the first stake: in steps from the start, or from mileage 0
};

/// Regular stakes of one element, and an arc's middle in its place among them.
Outcome AddInnerStakes(const RoadDesign& road, StakeWriter& writer, std::int32_t index, StakeMode mode) {
    const Element element = road.elements[index];
    const double middle = element.startMileage + element.length * 0.5;
    bool middlePending = IsType(element, ElementType::Arc);
    const auto addMiddle = [&]() -> Outcome {
        middlePending = false;
        return writer.Add(index, middle, middleLabel);
    };
    const RegularMileages regular(element, mode, road.settings.mileageInterval);
    Outcome added = regular.ForEach([&](double mileage) -> Outcome {
        const bool passesMiddle = element.length < 0 ? mileage < middle : mileage > middle;
        if (middlePending && passesMiddle) {
            if (Outcome done = addMiddle(); !done) return done;
        }
        return writer.Add(index, mileage, {});
    });
    if (added && middlePending) added = addMiddle();
    return added;
}

Outcome AddStakes(const RoadDesign& road, StakeList& stakes) {
    StakeWriter writer(road, stakes);
    const std::int32_t count = road.elements.Count();
    const auto mode = static_cast<StakeMode>(road.settings.makeStakeType);
    for (std::int32_t i = 1; i < count; ++i) {
        const Element& element = road.elements[i];
        const std::string_view label = JunctionLabel(road.elements[i - 1], element);
        if (Outcome added = writer.Add(i, element.startMileage, label); !added) return added;
        if (mode != StakeMode::WholeMultiples && mode != StakeMode::FromElementStart) {
            return FailValue(KESTO_UNKNOWN_STAKE_MODE, road.settings.makeStakeType);
        }
        if (Outcome added = AddInnerStakes(road, writer, i, mode); !added) return added;
    }
    return writer.Add(count - 1, EndMileage(road.elements[count - 1]), endLabel);
}

/// The occurrence whose centre-line point is the stake's own; 0 where none of the first four is.
std::int32_t FindOccurrence(RoadDesign& road, const StakeCoordinate& stake) noexcept {
    for (std::int32_t occurrence = 0; occurrence < triedOccurrences; ++occurrence) {
        const std::optional<Position> point = CentrePoint(road, {stake.mileage, occurrence});
        if (point && std::fabs(point->x - stake.x) < tolerance::matchingPoint &&
            std::fabs(point->y - stake.y) < tolerance::matchingPoint) {
            return occurrence;
        }
    }
    return 0;
}

void NameStakes(RoadDesign& road, StakeList& stakes) {
    for (StakeCoordinate& stake : stakes.Edit()) {
        stake.occurrence = FindOccurrence(road, stake);
        const std::string_view label = TextOf(stake.label);
        if (!label.empty()) {
            SetText(stake.name, label);
        } else {
            SetText(stake.name, StakeName(road.settings.stakePrefix, stake.mileage, stake.occurrence));
        }
    }
}

}  // namespace

Outcome MakeStakes(RoadDesign& road) {
    road.stakes.Clear();
    if (road.elements.Count() < 2) return {};
    road.settings.mileageInterval = std::max(road.settings.mileageInterval, road.totalLength / mostRegularStakes);
    StakeList stakes;  // the road gets it when it is complete, or not at all where memory runs out
    Outcome added = AddStakes(road, stakes);
    if (added) NameStakes(road, stakes);
    road.stakes.Swap(stakes);
    return added;
}

}  // namespace kesto
