#include "section/section_at.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "core/tolerances.hpp"
#include "section/plates.hpp"

namespace kesto {

namespace {

using Table = std::map<double, ChangeSection>;
using TypeTable = std::map<double, std::int32_t>;
using Field = double SectionPlate::*;

/// The field of a plate that a table changes.
Field ChangedField(ChangeTable which) noexcept {
    return static_cast<ChangeKind>(which.kind) == ChangeKind::Widening ? &SectionPlate::width
                                                                       : &SectionPlate::crossSlope;
}

/// What the section mode says.
enum class SectionMode : std::int32_t { ChangeSections = 0, ChainageSections = 1 };

/// Share of the difference that is reached at fraction t of a stretch; nothing for an unknown transition.
std::optional<double> Share(std::int32_t type, double t) noexcept {
    switch (static_cast<Transition>(type)) {
        case Transition::Linear: return t;
        case Transition::Cubic: return t * t * (3 - 2 * t);
        case Transition::FourthDegree: return t * t * t * (4 - 3 * t);
    }
    return std::nullopt;
}

/// The stretch between two neighbouring change sections, or between the road's start and the first one.
struct Stretch {
    double start;                     // m
    const std::vector<double>* from;  // null at the road's start: the standard values
    double end;                       // m
    const std::vector<double>* to;
};

/// A plate without a value of its own, where plates came or went off the road, keeps its standard value.
std::optional<double> ValueOf(const std::vector<double>* values, std::size_t plate, double standard) noexcept {
    if (values == nullptr) return standard;
    if (plate >= values->size()) return std::nullopt;
    return (*values)[plate];
}

void ApplyStretch(std::vector<SectionPlate>& plates, Field field, const Stretch& stretch, std::int32_t type,
                  double mileage) noexcept {
    const std::optional<double> share = Share(type, (mileage - stretch.start) / (stretch.end - stretch.start));
    if (!share) return;
    for (std::size_t i = 0; i < plates.size(); ++i) {
        double& value = plates[i].*field;
        const std::optional<double> from = ValueOf(stretch.from, i, value);
        const std::optional<double> to = ValueOf(stretch.to, i, value);
        if (from && to) value = *from + (*to - *from) * *share;
    }
}

/// Applies one table of change sections at a continuous mileage to its field of the plates.
void ApplyChanges(const RoadDesign& road, ChangeTable which, double mileage, std::vector<SectionPlate>& plates) {
    const Table& table = TableOf(road.sections.changeSections, which);
    const TypeTable& types = TableOf(road.sections.transitionTypes, which);
    const Field field = ChangedField(which);
    if (table.empty()) return;
    const auto next = table.upper_bound(mileage);
    if (next == table.end()) {
        const std::vector<double>& last = std::prev(next)->second.values;
        for (std::size_t i = 0; i < plates.size(); ++i) {
            plates[i].*field = ValueOf(&last, i, plates[i].*field).value_or(plates[i].*field);
        }
        return;
    }
    const bool first = next == table.begin();
    const Stretch stretch{first ? road.settings.startMileage : std::prev(next)->first,
                          first ? nullptr : &std::prev(next)->second.values, next->first, &next->second.values};
    const auto type = types.find(next->first);
    ApplyStretch(plates, field, stretch, type == types.end() ? 0 : type->second, mileage);
}

/// The standard section of a side with its change sections applied.
Result<std::vector<SectionPlate>> ChangedSection(RoadDesign& road, StakeMileage stake, std::int32_t side) {
    const Result<double> continuous = ContinuousMileage(road, stake);
    if (!continuous) return continuous.failure();
    const Result<std::span<const SectionPlate>> standard = PlatesOf(road, side);
    if (!standard) return standard.failure();
    if (standard->empty()) return Fail(KESTO_NO_CROSS_SECTION);
    if (road.stakes.Count() == 0) return Fail(KESTO_NO_STAKES);
    const double start = road.settings.startMileage;
    if (!(start <= *continuous)) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_START, *continuous, start);
    }
    if (!(*continuous - start - road.totalLength <= tolerance::mileage)) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, *continuous, start + road.totalLength);
    }
    std::vector<SectionPlate> plates(standard->begin(), standard->end());
    for (const ChangeKind kind : {ChangeKind::Heightening, ChangeKind::Widening}) {
        ApplyChanges(road, {side, static_cast<std::int32_t>(kind)}, *continuous, plates);
    }
    return plates;
}

/// The section from the chainage-section table, which holds whole sections by mileage. There is no such table yet.
Result<std::vector<SectionPlate>> ChainageSection() { return Fail(KESTO_NO_CROSS_SECTION); }

}  // namespace

std::vector<double> ChangedValuesAt(const RoadDesign& road, ChangeTable which, double continuous) {
    std::vector<SectionPlate> plates = road.sections.plates[static_cast<std::size_t>(which.side)];
    ApplyChanges(road, which, continuous, plates);
    std::vector<double> values;
    values.reserve(plates.size());
    for (const SectionPlate& plate : plates) values.push_back(plate.*ChangedField(which));
    return values;
}

double LargestBend(std::int32_t type, double from, double to) noexcept {
    switch (static_cast<Transition>(type)) {
        case Transition::Linear: break;
        case Transition::Cubic: return std::max(std::fabs(6 - 12 * from), std::fabs(6 - 12 * to));
        case Transition::FourthDegree: {
            constexpr double top = 1.0 / 3;  // where 24 t - 36 t^2 has its maximum
            const auto bend = [](double t) { return std::fabs(24 * t - 36 * t * t); };
            return std::max({bend(from), bend(to), bend(std::clamp(top, from, to))});
        }
    }
    return 0;
}

Result<std::vector<SectionPlate>> GetSectionAtMileage(RoadDesign& road, StakeMileage stake, std::int32_t side) {
    switch (static_cast<SectionMode>(road.settings.sectionMode)) {
        case SectionMode::ChangeSections: return ChangedSection(road, stake, side);
        case SectionMode::ChainageSections: return ChainageSection();
    }
    return Fail(KESTO_NO_CROSS_SECTION);
}

}  // namespace kesto
