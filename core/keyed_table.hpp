/// Records at places of the road, ascending: tables keyed by continuous mileage.
#pragma once

#include <cstdint>
#include <iterator>
#include <map>
#include <utility>

#include "core/arguments.hpp"
#include "core/result.hpp"

namespace kesto {

/// Keys are continuous mileages (m).
template <class Entry>
using KeyedTable = std::map<double, Entry>;

/// Fails for an index that addresses no entry of the table.
template <class Entry>
Outcome RequireEntry(KestoList list, const KeyedTable<Entry>& table, std::int32_t index) noexcept {
    return RequireIndex(list, index, table.size());
}

/// The entry at an index that addresses one, with its key.
template <class Entry>
auto EntryAt(const KeyedTable<Entry>& table, std::int32_t index) noexcept {
    return std::next(table.begin(), index);
}
template <class Entry>
auto EntryAt(KeyedTable<Entry>& table, std::int32_t index) noexcept {
    return std::next(table.begin(), index);
}

/// Fails where the table has an entry at this very mileage (m): its index is the failure's record.
/// @param except index of an entry that may be there; negative: none
template <class Entry>
Outcome RequireFree(KestoList list, const KeyedTable<Entry>& table, double mileage, std::int32_t except = -1) noexcept {
    const auto stored = table.find(mileage);
    if (stored == table.end()) return {};
    const auto index = static_cast<std::int32_t>(std::distance(table.begin(), stored));
    if (index == except) return {};
    Failure failure = FailRecord(KESTO_DUPLICATE_MILEAGE, list, index);
    failure.value = stored->first;
    return failure;
}

/// Adds an entry at a mileage (m).
/// @return fails, with nothing changed, as RequireFree()
/// @throws std::bad_alloc, with nothing changed
template <class Entry>
Outcome InsertEntry(KestoList list, KeyedTable<Entry>& table, double mileage, Entry entry) {
    Outcome isFree = RequireFree(list, table, mileage);
    if (isFree) table.emplace(mileage, std::move(entry));
    return isFree;
}

/// Replaces the entry at an index that addresses one; it may move to another mileage (m), which must be free. Allocates
/// nothing.
template <class Entry>
void MoveEntry(KeyedTable<Entry>& table, std::int32_t index, double mileage, Entry entry) noexcept {
    auto node = table.extract(EntryAt(table, index));
    node.key() = mileage;
    node.mapped() = std::move(entry);
    table.insert(std::move(node));
}

/// Removes the entry at an index. @return fails as RequireEntry()
template <class Entry>
Outcome RemoveEntry(KestoList list, KeyedTable<Entry>& table, std::int32_t index) noexcept {
    Outcome valid = RequireEntry(list, table, index);
    if (valid) table.erase(EntryAt(table, index));
    return valid;
}

}  // namespace kesto
