/// The list that a road keeps its records in.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <span>
#include <type_traits>
#include <vector>

namespace kesto {

/// Records in order, counted in 32 bits. n additions cost about n copies. Every function that allocates throws
/// std::bad_alloc and then leaves the list as it was.
///
/// The revision counts the edits: whoever derives something from the list keeps the revision beside it and knows by
/// comparing whether it still holds. No edit goes unnoticed, because Insert, Append, Remove, Clear, Edit and Swap are
/// the only ways in.
template <class Record>
class CountedList {
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    CountedList() = default;
    CountedList(const CountedList&) = default;
    CountedList& operator=(const CountedList&) = delete;
    CountedList(CountedList&&) = delete;
    CountedList& operator=(CountedList&&) = delete;
    ~CountedList() = default;

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(storage.size()); }
    std::uint64_t Revision() const noexcept { return revision; }
    bool Holds(std::int32_t index) const noexcept { return index >= 0 && index < Count(); }

    const Record& operator[](std::int32_t index) const noexcept { return storage[static_cast<std::size_t>(index)]; }
    std::span<const Record> Records() const noexcept { return storage; }

    /// The records for editing in place; counts as an edit.
    std::span<Record> Edit() noexcept {
        ++revision;
        return storage;
    }

    /// Inserts before the index when it is in 0 to count - 1, appends otherwise.
    void Insert(const Record& record, std::int32_t index = -1) {
        const Record copy = record;  // it may lie in this very list
        CheckRoom(1);
        storage.insert(Holds(index) ? storage.begin() + index : storage.end(), copy);
        ++revision;
    }

    /// Appends records from outside the list.
    void Append(std::span<const Record> records) {
        if (records.empty()) {
            return;
        }
        CheckRoom(records.size());
        storage.insert(storage.end(), records.begin(), records.end());
        ++revision;
    }

    /// Makes sure that `additions` further insertions will not allocate.
    void Reserve(std::int64_t additions) {
        CheckRoom(static_cast<std::size_t>(additions));
        const std::size_t needed = storage.size() + static_cast<std::size_t>(additions);
        if (needed > storage.capacity()) {
            storage.reserve(std::max(needed, 2 * storage.capacity()));
        }
    }

    /// Removes the record at a valid index; the later ones move down.
    void Remove(std::int32_t index) noexcept {
        storage.erase(storage.begin() + index);
        ++revision;
    }

    /// Empties the list and releases its memory.
    void Clear() noexcept {
        std::vector<Record>().swap(storage);
        ++revision;
    }

    /// Exchanges the contents; both revisions rise above either.
    void Swap(CountedList& other) noexcept {
        storage.swap(other.storage);
        revision = other.revision = std::max(revision, other.revision) + 1;
    }

private:
    void CheckRoom(std::size_t additions) const {
        constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
        if (additions > most - storage.size()) {
            throw std::bad_alloc();
        }
    }

    std::vector<Record> storage;
    std::uint64_t revision = 0;
};

}  // namespace kesto
