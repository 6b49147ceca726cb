/// Records in a vector, addressed by their index: plates from the centre line outwards, entries of a sorted index.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/arguments.hpp"
#include "core/result.hpp"

namespace kesto {

/// The record at an index.
/// @return fails for an index that addresses no record of the list
template <class Record>
Result<Record> RecordAt(KestoList list, const std::vector<Record>& records, std::int32_t index) noexcept {
    if (const Outcome valid = RequireIndex(list, index, records.size()); !valid) return valid.failure();
    return records[static_cast<std::size_t>(index)];
}

/// Overwrites the record at an index. @return fails as RecordAt()
template <class Record>
Outcome ReplaceAt(KestoList list, std::vector<Record>& records, std::int32_t index, const Record& record) noexcept {
    Outcome valid = RequireIndex(list, index, records.size());
    if (valid) records[static_cast<std::size_t>(index)] = record;
    return valid;
}

/// Removes the record at an index. @return fails as RecordAt()
template <class Record>
Outcome RemoveAt(KestoList list, std::vector<Record>& records, std::int32_t index) noexcept {
    Outcome valid = RequireIndex(list, index, records.size());
    if (valid) records.erase(records.begin() + index);
    return valid;
}

/// Inserts a record into a sequence that a key keeps ascending, behind those with the same key.
/// @throws std::bad_alloc, with the sequence as it was
template <class Record, class Key>
void InsertSorted(std::vector<Record>& records, const Record& record, Key Record::*key) {
    records.insert(std::ranges::upper_bound(records, record.*key, {}, key), record);
}

/// Overwrites the record at an index and sorts the sequence by the key again. @return fails as RecordAt()
template <class Record, class Key>
Outcome ReplaceSorted(KestoList list, std::vector<Record>& records, std::int32_t index, const Record& record,
                      Key Record::*key) noexcept {
    Outcome replaced = ReplaceAt(list, records, index, record);
    if (replaced) std::ranges::sort(records, {}, key);
    return replaced;
}

}  // namespace kesto
