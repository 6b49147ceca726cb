#include "section/section_at.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "core/tolerances.hpp"
#include "section/plates.hpp"

namespace kesto {

namespace {

using Table = KeyedTable<ChangeSection>;
using TypeTable = KeyedTable<std::int32_t>;
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

/// A plate without a value of its own, where plates came or went off the road, keeps its standard value.
std::optional<double> ValueOf(const std::vector<double>* values, std::size_t plate, double standard) noexcept {
    if (values == nullptr) return standard;
    if (plate >= values->size()) return std::nullopt;
    return (*values)[plate];
}

/// What one table of change sections says at a continuous mileage.
PlateValues ValuesAt(const RoadDesign& road, ChangeTable which, double mileage) noexcept {
    const Table& table = TableOf(road.sections.changeSections, which);
    const TypeTable& types = TableOf(road.sections.transitionTypes, which);
    if (table.empty()) return {};
    const auto next = table.upper_bound(mileage);
    if (next == table.end()) return {.from = nullptr, .to = &std::prev(next)->second.values, .share = std::nullopt};
    const bool first = next == table.begin();
    const double start = first ? road.settings.startMileage : std::prev(next)->first;
    const auto type = types.find(next->first);
    const std::optional<double> share =
        Share(type == types.end() ? 0 : type->second, (mileage - start) / (next->first - start));
    if (!share) return {};
    return {.from = first ? nullptr : &std::prev(next)->second.values, .to = &next->second.values, .share = share};
}

/// The standard section of a side with its change sections.
Result<SectionHere> ChangedSection(const RoadDesign& road, double continuous, std::int32_t side) noexcept {
    const Result<std::span<const SectionPlate>> standard = PlatesOf(road, side);
    if (!standard) return standard.failure();
    if (standard->empty()) return Fail(KESTO_NO_CROSS_SECTION);
    if (road.stakes.Count() == 0) return Fail(KESTO_NO_STAKES);
    const double start = road.settings.startMileage;
    if (!(start <= continuous)) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_START, continuous, start);
    }
    if (!(continuous - start - road.totalLength <= tolerance::mileage)) {
        return FailLimit(KESTO_MILEAGE_OFF_ROAD, KESTO_LIMIT_ROAD_END, continuous, start + road.totalLength);
    }
    const auto valuesOf = [&](ChangeKind kind) {
        return ValuesAt(road, {side, static_cast<std::int32_t>(kind)}, continuous);
    };
    return SectionHere{*standard, valuesOf(ChangeKind::Heightening), valuesOf(ChangeKind::Widening)};
}

/// Fails unless sections are those of the change sections: there is no table yet that holds whole sections by mileage.
Outcome RequireSectionMode(const RoadDesign& road) noexcept {
    switch (static_cast<SectionMode>(road.settings.sectionMode)) {
        case SectionMode::ChangeSections: return {};
        case SectionMode::ChainageSections: break;
    }
    return Fail(KESTO_NO_CROSS_SECTION);
}

}  // namespace

double PlateValues::Of(std::size_t plate, double standard) const noexcept {
    if (to == nullptr) return standard;
    const std::optional<double> reached = ValueOf(to, plate, standard);
    if (!share) return reached.value_or(standard);
    const std::optional<double> left = ValueOf(from, plate, standard);
    return left && reached ? *left + (*reached - *left) * *share : standard;
}

std::vector<double> ChangedValuesAt(const RoadDesign& road, ChangeTable which, double continuous) {
    const std::vector<SectionPlate>& plates = road.sections.plates[static_cast<std::size_t>(which.side)];
    const PlateValues here = ValuesAt(road, which, continuous);
    std::vector<double> values;
    values.reserve(plates.size());
    for (std::size_t i = 0; i < plates.size(); ++i) values.push_back(here.Of(i, plates[i].*ChangedField(which)));
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

Result<SectionHere> SectionAtPlace(const RoadDesign& road, double continuous, std::int32_t side) noexcept {
    if (const Outcome known = RequireSectionMode(road); !known) return known.failure();
    return ChangedSection(road, continuous, side);
}

Result<std::vector<SectionPlate>> GetSectionAtMileage(const AskedRoad& asked, StakeMileage stake, std::int32_t side) {
    if (const Outcome known = RequireSectionMode(asked.road); !known) return known.failure();
    const Result<double> continuous = ContinuousMileage(asked, stake);
    if (!continuous) return continuous.failure();
    const Result<SectionHere> here = SectionAtPlace(asked.road, *continuous, side);
    if (!here) return here.failure();
    std::vector<SectionPlate> plates(here->standard.begin(), here->standard.end());
    for (std::size_t i = 0; i < plates.size(); ++i) {
        plates[i].crossSlope = here->CrossSlope(i);
        plates[i].width = here->Width(i);
    }
    return plates;
}

}  // namespace kesto
