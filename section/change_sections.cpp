#include "section/change_sections.hpp"

#include <utility>

#include "core/arguments.hpp"
#include "section/plates.hpp"

namespace kesto {

namespace {

using Table = KeyedTable<ChangeSection>;
using TypeTable = KeyedTable<std::int32_t>;

constexpr KestoList changes = KESTO_LIST_CHANGE_SECTIONS;

Outcome RequireTable(ChangeTable which) noexcept {
    if (Outcome side = RequireSide(which.side); !side) return side;
    const auto kind = static_cast<ChangeKind>(which.kind);
    if (kind != ChangeKind::Heightening && kind != ChangeKind::Widening) {
        return FailValue(KESTO_UNKNOWN_CHANGE_KIND, which.kind);
    }
    return {};
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
    const Result<double> continuous = PlaceIn(road, change.stake);
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
    TypeTable newType{{continuous, type}};  // made first: section and type go in together or not at all
    Table& table = TableOf(road.sections.changeSections, which);
    if (Outcome added = InsertEntry(changes, table, continuous, std::move(section)); !added) return added;
    TypeTable& types = TableOf(road.sections.transitionTypes, which);
    types.erase(continuous);
    types.merge(newType);
    return {};
}

Outcome ReplaceChange(RoadDesign& road, ChangeTable which, std::int32_t index, PlacedChange change, std::int32_t type) {
    if (Outcome known = RequireTable(which); !known) return known;
    Table& table = TableOf(road.sections.changeSections, which);
    if (Outcome valid = RequireEntry(changes, table, index); !valid) return valid;
    const Result<double> continuous = PlaceIn(road, change.stake);
    if (!continuous) return continuous.failure();
    const ChangeSection& section = change.section;
    if (Outcome complete = RequireValuePerPlate(road, which, section.values.size(), section.flags.size()); !complete) {
        return complete;
    }
    if (Outcome isFree = RequireFree(changes, table, *continuous, index); !isFree) return isFree;
    TableOf(road.sections.transitionTypes, which)[*continuous] = type;  // this may run out of memory: first
    MoveEntry(table, index, *continuous, std::move(change.section));
    return {};
}

Outcome RemoveChange(RoadDesign& road, ChangeTable which, std::int32_t index) noexcept {
    if (Outcome known = RequireTable(which); !known) return known;
    return RemoveEntry(changes, TableOf(road.sections.changeSections, which), index);
}

Result<PlacedChange> ChangeAt(const AskedRoad& asked, ChangeTable which, std::int32_t index) {
    if (const Outcome known = RequireTable(which); !known) return known.failure();
    const Table& table = TableOf(asked.road.sections.changeSections, which);
    if (const Outcome valid = RequireEntry(changes, table, index); !valid) return valid.failure();
    const auto& [continuous, section] = *EntryAt(table, index);
    const Result<StakeMileage> stake = PlaceOut(asked, continuous, changes, index);
    if (!stake) return stake.failure();
    return PlacedChange{*stake, section};
}

Outcome FindTransitionType(const RoadDesign& road, ChangeTable which, std::int32_t index, std::int32_t& type) noexcept {
    if (!RequireSide(which.side)) return {};
    if (Outcome known = RequireTable(which); !known) return known;
    const TypeTable& types = TableOf(road.sections.transitionTypes, which);
    if (index < 0) return RequireEntry(changes, types, index);
    const bool stored = static_cast<std::size_t>(index) < types.size();
    type = stored ? EntryAt(types, index)->second : 0;
    return {};
}

Outcome SetTransitionType(RoadDesign& road, ChangeTable which, std::int32_t index, std::int32_t type) noexcept {
    if (Outcome known = RequireTable(which); !known) return known;
    TypeTable& types = TableOf(road.sections.transitionTypes, which);
    if (Outcome valid = RequireEntry(changes, types, index); !valid) return valid;
    EntryAt(types, index)->second = type;
    return {};
}

}  // namespace kesto
