#include "section/section_at.hpp"

#include <iterator>
#include <optional>

#include "core/tolerances.hpp"
#include "section/plates.hpp"

namespace kesto {

namespace {

using Table = std::map<double, ChangeSection>;
using TypeTable = std::map<double, std::int32_t>;
using Field = double SectionPlate::*;

/// What the section mode says.
enum class SectionMode : std::int32_t { ChangeSections = 0, ChainageSections = 1 };

/// How a value passes from one change section to the next.
enum class Transition : std::int32_t { Linear = 0, Cubic = 1, FourthDegree = 2 };

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

/// Applies one table of change sections to one field of the plates.
void ApplyChanges(std::vector<SectionPlate>& plates, Field field, const Table& table, const TypeTable& types,
                  double roadStart, double mileage) noexcept {
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
    const Stretch stretch{first ? roadStart : std::prev(next)->first, first ? nullptr : &std::prev(next)->second.values,
                          next->first, &next->second.values};
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
    const auto& tables = road.sections.changeSections[static_cast<std::size_t>(side)];
    const auto& types = road.sections.transitionTypes[static_cast<std::size_t>(side)];
    constexpr std::pair<ChangeKind, Field> kinds[] = {{ChangeKind::Heightening, &SectionPlate::crossSlope},
                                                      {ChangeKind::Widening, &SectionPlate::width}};
    for (const auto& [kind, field] : kinds) {
        const auto at = static_cast<std::size_t>(kind);
        ApplyChanges(plates, field, tables[at], types[at], start, *continuous);
    }
    return plates;
}

/// The section from the chainage-section table, which holds whole sections by mileage. There is no such table yet.
Result<std::vector<SectionPlate>> ChainageSection() { return Fail(KESTO_NO_CROSS_SECTION); }

}  // namespace

Result<std::vector<SectionPlate>> GetSectionAtMileage(RoadDesign& road, StakeMileage stake, std::int32_t side) {
    switch (static_cast<SectionMode>(road.settings.sectionMode)) {
        case SectionMode::ChangeSections: return ChangedSection(road, stake, side);
        case SectionMode::ChainageSections: return ChainageSection();
    }
    return Fail(KESTO_NO_CROSS_SECTION);
}

}  // namespace kesto
