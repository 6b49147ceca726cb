#include "section/plates.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "alignment/chain_builder.hpp"
#include "alignment/chainage.hpp"
#include "core/record_lists.hpp"
#include "core/sequence.hpp"

namespace kesto {

namespace {

using Table = KeyedTable<ChangeSection>;

/// Makes room for one more value, so that adding it cannot fail.
template <class Value>
void ReserveOne(std::vector<Value>& values) {
    if (values.size() == values.capacity()) values.reserve(2 * values.size() + 1);
}

/// The change sections of a table that lie on the road; those that do not are left alone. The keys stay.
std::vector<ChangeSection*> OnRoad(RoadDesign& road, Table& table) {
    std::vector<ChangeSection*> sections;
    if (table.empty() || !EnsureCurrent(road)) return sections;
    sections.reserve(table.size());
    for (auto& [mileage, section] : table) {
        if (StakeMileageAt(road, mileage).occurrence >= 0) sections.push_back(&section);
    }
    return sections;
}

template <class Value>
void InsertValue(std::vector<Value>& values, std::size_t index, Value value) {
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(std::min(index, values.size())), value);
}

template <class Value>
void RemoveValue(std::vector<Value>& values, std::size_t index) {
    if (index < values.size()) values.erase(values.begin() + static_cast<std::ptrdiff_t>(index));
}

/// The two tables of a side.
std::array<Table, changeKindCount>& TablesOf(RoadDesign& road, std::int32_t side) noexcept {
    return road.sections.changeSections[static_cast<std::size_t>(side)];
}

}  // namespace

Outcome RequireSide(std::int32_t side) noexcept {
    const auto it = static_cast<Side>(side);
    if (it != Side::Left && it != Side::Right) return FailValue(KESTO_UNKNOWN_SIDE, side);
    return {};
}

Result<std::span<const SectionPlate>> PlatesOf(const RoadDesign& road, std::int32_t side) noexcept {
    if (const Outcome known = RequireSide(side); !known) return known.failure();
    return std::span<const SectionPlate>(road.sections.plates[static_cast<std::size_t>(side)]);
}

Outcome InsertPlate(RoadDesign& road, const SectionPlate& plate, std::int32_t side, std::int32_t index) {
    if (Outcome known = RequireSide(side); !known) return known;
    std::vector<SectionPlate>& plates = road.sections.plates[static_cast<std::size_t>(side)];
    const bool inside = index >= 0 && static_cast<std::size_t>(index) < plates.size();
    const std::size_t at = inside ? static_cast<std::size_t>(index) : plates.size();
    // Everything that allocates comes first: then the plate and its values go in together or not at all.
    auto& tables = TablesOf(road, side);
    std::array<std::vector<ChangeSection*>, changeKindCount> sections;
    for (std::size_t kind = 0; kind < changeKindCount; ++kind) {
        sections[kind] = OnRoad(road, tables[kind]);
        for (ChangeSection* section : sections[kind]) {
            ReserveOne(section->values);
            ReserveOne(section->flags);
        }
    }
    ReserveOne(plates);
    InsertValue(plates, at, Stored(plate));
    for (std::size_t kind = 0; kind < changeKindCount; ++kind) {
        const bool widening = static_cast<ChangeKind>(kind) == ChangeKind::Widening;
        for (ChangeSection* section : sections[kind]) {
            InsertValue(section->values, at, widening ? plate.width : plate.crossSlope);
            InsertValue(section->flags, at, 0);
        }
    }
    return {};
}

Outcome AppendPlates(RoadDesign& road, std::span<const SectionPlate> added, std::int32_t side) {
    if (Outcome known = RequireSide(side); !known) return known;
    std::vector<SectionPlate>& plates = road.sections.plates[static_cast<std::size_t>(side)];
    if (plates.capacity() - plates.size() < added.size()) plates.reserve(2 * plates.size() + added.size());
    for (Table& table : TablesOf(road, side)) table.clear();
    std::transform(added.begin(), added.end(), std::back_inserter(plates), Stored<SectionPlate>);
    return {};
}

Outcome RemovePlate(RoadDesign& road, std::int32_t side, std::int32_t index) {
    if (Outcome known = RequireSide(side); !known) return known;
    std::vector<SectionPlate>& plates = road.sections.plates[static_cast<std::size_t>(side)];
    if (Outcome valid = RequireIndex(KESTO_LIST_PLATES, index, plates.size()); !valid) return valid;
    const auto at = static_cast<std::size_t>(index);
    auto& tables = TablesOf(road, side);
    std::array<std::vector<ChangeSection*>, changeKindCount> sections;
    for (std::size_t kind = 0; kind < changeKindCount; ++kind) sections[kind] = OnRoad(road, tables[kind]);
    RemoveValue(plates, at);
    for (const auto& table : sections) {
        for (ChangeSection* section : table) {
            RemoveValue(section->values, at);
            RemoveValue(section->flags, at);
        }
    }
    if (plates.empty()) {
        for (Table& table : tables) table.clear();
    }
    return {};
}

Result<SectionPlate> PlateAt(const RoadDesign& road, std::int32_t side, std::int32_t index) noexcept {
    if (const Outcome known = RequireSide(side); !known) return known.failure();
    return RecordAt(KESTO_LIST_PLATES, road.sections.plates[static_cast<std::size_t>(side)], index);
}

Outcome ReplacePlate(RoadDesign& road, std::int32_t side, std::int32_t index, const SectionPlate& plate) {
    if (Outcome known = RequireSide(side); !known) return known;
    return ReplaceAt(KESTO_LIST_PLATES, road.sections.plates[static_cast<std::size_t>(side)], index, Stored(plate));
}

}  // namespace kesto
