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

/// Records in order, with a 32-bit count and a capacity that grows in steps, new room zero-filled.
///
/// The capacity is what a host reasons with: 16 records at first, 16 more whenever they are used up (the step is set at
/// construction). The memory behind it grows geometrically, so that n additions cost about n copies. Every function
/// that allocates throws std::bad_alloc and then leaves the list as it was.
///
/// The revision counts the edits: whoever derives something from the list keeps the revision beside it and knows by
/// comparing whether it still holds. No edit goes unnoticed, because Insert, Remove, Clear, Edit and Swap are the only
/// ways in.
template <class Record>
class CountedList {
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    static constexpr std::int32_t defaultStep = 16;

    /// @param growth   how many records the capacity grows by
    /// @param keepFree how many free records must be left over by an addition
    explicit CountedList(std::int32_t growth = defaultStep, std::int32_t keepFree = 0) noexcept
        : step(growth), spare(keepFree) {}

    CountedList(const CountedList&) = default;
    CountedList& operator=(const CountedList&) = delete;
    CountedList(CountedList&&) = delete;
    CountedList& operator=(CountedList&&) = delete;
    ~CountedList() = default;

    std::int32_t Count() const noexcept { return count; }
    std::int32_t Capacity() const noexcept { return static_cast<std::int32_t>(storage.size()); }
    std::uint64_t Revision() const noexcept { return revision; }
    bool Holds(std::int32_t index) const noexcept { return index >= 0 && index < count; }

    const Record& operator[](std::int32_t index) const noexcept { return storage[static_cast<std::size_t>(index)]; }
    std::span<const Record> Records() const noexcept { return {storage.data(), static_cast<std::size_t>(count)}; }

    /// The records for editing in place; counts as an edit.
    std::span<Record> Edit() noexcept {
        ++revision;
        return {storage.data(), static_cast<std::size_t>(count)};
    }

    /// Inserts before the index when it is in 0 to count - 1, appends otherwise.
    void Insert(const Record& record, std::int32_t index = -1) {
        const Record copy = record;  // it may lie in this very list
        if (count >= Capacity() - spare) {
            GrowTo(static_cast<std::int64_t>(Capacity()) + step);
        }
        const std::int32_t at = Holds(index) ? index : count;
        std::copy_backward(storage.begin() + at, storage.begin() + count, storage.begin() + count + 1);
        storage[static_cast<std::size_t>(at)] = copy;
        ++count;
        ++revision;
    }

    /// Appends a few records (at most one step): grows once when the free room is one step or less.
    void Append(std::span<const Record> records) {
        if (records.empty()) {
            return;
        }
        if (Capacity() - count <= step) {
            GrowTo(static_cast<std::int64_t>(Capacity()) + step);
        }
        std::copy(records.begin(), records.end(), storage.begin() + count);
        count += static_cast<std::int32_t>(records.size());
        ++revision;
    }

    /// Makes sure that `additions` further insertions will not allocate. The capacity stays as it is.
    void Reserve(std::int64_t additions) {
        const std::int64_t needed = count + additions + spare + 2 * static_cast<std::int64_t>(step);
        CheckSize(needed);
        const std::size_t room = storage.capacity();
        if (static_cast<std::size_t>(needed) > room) {
            storage.reserve(std::max(static_cast<std::size_t>(needed), 2 * room));
        }
    }

    /// Removes the record at a valid index; the later ones move down. The capacity stays.
    void Remove(std::int32_t index) noexcept {
        std::copy(storage.begin() + index + 1, storage.begin() + count, storage.begin() + index);
        --count;
        ++revision;
    }

    /// Empties the list and releases its memory.
    void Clear() noexcept {
        std::vector<Record>().swap(storage);
        count = 0;
        ++revision;
    }

    /// Exchanges the contents; both revisions rise above either.
    void Swap(CountedList& other) noexcept {
        storage.swap(other.storage);
        std::swap(count, other.count);
        revision = other.revision = std::max(revision, other.revision) + 1;
    }

private:
    static void CheckSize(std::int64_t size) {
        if (size > std::numeric_limits<std::int32_t>::max()) {
            throw std::bad_alloc();
        }
    }

    void GrowTo(std::int64_t size) {
        CheckSize(size);
        storage.resize(static_cast<std::size_t>(size));
    }

    std::vector<Record> storage;  // its size is the capacity
    std::int32_t count = 0;
    std::int32_t step;
    std::int32_t spare;
    std::uint64_t revision = 0;
};

}  // namespace kesto
