#include "section/change_sections.hpp"

#include <cmath>
#include <iterator>
#include <utility>

#include "alignment/chain_builder.hpp"
#include "core/arguments.hpp"
#include "section/plates.hpp"

namespace kesto {

namespace {

using Table = std::map<double, ChangeSection>;
using TypeTable = std::map<double, std::int32_t>;

Outcome RequireTable(ChangeTable which) noexcept {
    if (Outcome side = RequireSide(which.side); !side) return side;
    const auto kind = static_cast<ChangeKind>(which.kind);
    if (kind != ChangeKind::Heightening && kind != ChangeKind::Widening) {
        return FailValue(KESTO_UNKNOWN_CHANGE_KIND, which.kind);
    }
    return {};
}

template <class Map>
Outcome RequireEntry(const Map& map, std::int32_t index) noexcept {
    return RequireIndex(KESTO_LIST_CHANGE_SECTIONS, index, map.size());
}

Failure DuplicateAt(const Table& table, Table::const_iterator stored) noexcept {
    Failure failure = FailRecord(KESTO_DUPLICATE_MILEAGE, KESTO_LIST_CHANGE_SECTIONS,
                                 static_cast<std::int32_t>(std::distance(table.begin(), stored)));
    failure.value = stored->first;
    return failure;
}

/// Puts a section and its type under a mileage that the table does not hold, both or neither.
void Put(RoadDesign& road, ChangeTable which, double mileage, ChangeSection section, std::int32_t type) {
    Table newSection;
    newSection.emplace(mileage, std::move(section));
    TypeTable newType;
    newType.emplace(mileage, type);
    TableOf(road.sections.changeSections, which).insert(newSection.extract(newSection.begin()));
    TypeTable& types = TableOf(road.sections.transitionTypes, which);
    types.erase(mileage);
    types.insert(newType.extract(newType.begin()));
}

}  // namespace

Outcome RequireValuePerPlate(const RoadDesign& road, ChangeTable which, std::size_t values,
                             std::size_t flags) noexcept {
    if (Outcome known = RequireTable(which); !known) return known;
    const std::size_t plates = road.sections.plates[static_cast<std::size_t>(which.side)].size();
    for (const std::size_t count : {values, flags}) {
        if (count != plates) {
            Failure failure = FailLimit(KESTO_VALUE_COUNT_DIFFERS, KESTO_LIMIT_RECORD_COUNT, static_cast<double>(count),
                                        static_cast<double>(plates));
            failure.list = KESTO_LIST_CHANGE_SECTIONS;
            return failure;
        }
    }
    return {};
}

std::int32_t CountChanges(const RoadDesign& road, ChangeTable which) noexcept {
    if (!RequireTable(which)) return 0;
    return static_cast<std::int32_t>(TableOf(road.sections.changeSections, which).size());
}

Outcome InsertChange(RoadDesign& road, ChangeTable which, PlacedChange change, std::int32_t type) {
    if (Outcome known = RequireTable(which); !known) return known;
    if (Outcome finite = RequireFinite({change.stake.mileage}); !finite) return finite;
    const Result<double> continuous = ContinuousMileage(road, change.stake);
    if (!continuous) return continuous.failure();
    return InsertChangeAt(road, which, *continuous, std::move(change.section), type);
}

Outcome InsertChangeAt(RoadDesign& road, ChangeTable which, double continuous, ChangeSection section,
                       std::int32_t type) {
    if (Outcome known = RequireTable(which); !known) return known;
    if (Outcome finite = RequireFinite({continuous}); !finite) return finite;
    if (Outcome complete = RequireValuePerPlate(road, which, section.values.size(), section.flags.size()); !complete) {
        return complete;
    }
    const Table& table = TableOf(road.sections.changeSections, which);
    if (const auto stored = table.find(continuous); stored != table.end()) return DuplicateAt(table, stored);
    Put(road, which, continuous, std::move(section), type);
    return {};
}

Outcome ReplaceChange(RoadDesign& road, ChangeTable which, std::int32_t index, PlacedChange change, std::int32_t type) {
    if (Outcome known = RequireTable(which); !known) return known;
    Table& table = TableOf(road.sections.changeSections, which);
    if (Outcome valid = RequireEntry(table, index); !valid) return valid;
    if (Outcome finite = RequireFinite({change.stake.mileage}); !finite) return finite;
    const Result<double> continuous = ContinuousMileage(road, change.stake);
    if (!continuous) return continuous.failure();
    const ChangeSection& section = change.section;
    if (Outcome complete = RequireValuePerPlate(road, which, section.values.size(), section.flags.size()); !complete) {
        return complete;
    }
    const auto old = std::next(table.begin(), index);
    if (const auto stored = table.find(*continuous); stored == old) {
        TableOf(road.sections.transitionTypes, which)[*continuous] = type;  // this may run out of memory: first
        old->second = std::move(change.section);
    } else if (stored != table.end()) {
        return DuplicateAt(table, stored);
    } else {
        Put(road, which, *continuous, std::move(change.section), type);
        table.erase(old);
    }
    return {};
}

Outcome RemoveChange(RoadDesign& road, ChangeTable which, std::int32_t index) noexcept {
    if (Outcome known = RequireTable(which); !known) return known;
    Table& table = TableOf(road.sections.changeSections, which);
    if (Outcome valid = RequireEntry(table, index); !valid) return valid;
    table.erase(std::next(table.begin(), index));
    return {};
}

Result<PlacedChange> ChangeAt(const AskedRoad& asked, ChangeTable which, std::int32_t index) {
    if (const Outcome known = RequireTable(which); !known) return known.failure();
    const Table& table = TableOf(asked.road.sections.changeSections, which);
    if (const Outcome valid = RequireEntry(table, index); !valid) return valid.failure();
    if (const Outcome current = EnsureCurrent(asked); !current) return current.failure();
    const auto& [continuous, section] = *std::next(table.begin(), index);
    const StakeMileage stake = StakeMileageAt(asked, continuous);
    if (!std::isfinite(stake.mileage)) return Fail(KESTO_RESULT_NOT_FINITE);
    if (stake.occurrence < 0) {
        Failure failure = FailRecord(KESTO_MILEAGE_OFF_ROAD, KESTO_LIST_CHANGE_SECTIONS, index);
        failure.value = continuous;
        return failure;
    }
    return PlacedChange{stake, section};
}

Outcome FindTransitionType(const RoadDesign& road, ChangeTable which, std::int32_t index, std::int32_t& type) noexcept {
    if (!RequireSide(which.side)) return {};
    if (Outcome known = RequireTable(which); !known) return known;
    const TypeTable& types = TableOf(road.sections.transitionTypes, which);
    if (index < 0) return RequireEntry(types, index);
    const bool stored = static_cast<std::size_t>(index) < types.size();
    type = stored ? std::next(types.begin(), index)->second : 0;
    return {};
}

Outcome SetTransitionType(RoadDesign& road, ChangeTable which, std::int32_t index, std::int32_t type) noexcept {
    if (Outcome known = RequireTable(which); !known) return known;
    TypeTable& types = TableOf(road.sections.transitionTypes, which);
    if (Outcome valid = RequireEntry(types, index); !valid) return valid;
    std::next(types.begin(), index)->second = type;
    return {};
}

}  // namespace kesto
