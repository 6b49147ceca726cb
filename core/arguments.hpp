/// What callers pass: numbers that must be finite, indices that must address a record, arrays in and out.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "core/result.hpp"

namespace kesto {

/// Fails unless every number of a query is finite.
inline Outcome RequireFinite(std::initializer_list<double> numbers) noexcept {
    for (const double number : numbers) {
        if (!std::isfinite(number)) return FailValue(KESTO_ARGUMENT_NOT_FINITE, number);
    }
    return {};
}

/// Fails unless an index addresses one of the `count` records of a list.
inline Outcome RequireIndex(KestoList list, std::int32_t index, std::size_t count) noexcept {
    if (index >= 0 && static_cast<std::size_t>(index) < count) return {};
    return FailIndex(list, index, static_cast<std::int32_t>(count));
}

/// Gives what a Result holds to a caller's output, which is untouched on failure.
template <class Value>
Outcome Assign(Value* out, const Result<Value>& result) noexcept {
    if (!result) return result.failure();
    *out = *result;
    return {};
}

/// A caller's array as a span: empty without records. Nothing where records are promised and none are there.
template <class Record>
std::optional<std::span<const Record>> ArrayOf(const Record* items, std::int32_t count) noexcept {
    if (count <= 0) return std::span<const Record>();
    if (items == nullptr) return std::nullopt;
    return std::span<const Record>(items, static_cast<std::size_t>(count));
}

/// Whether an array given for output has room; when not, its count tells how much is needed.
template <class Array>
bool HasRoom(Array* array, std::size_t needed) noexcept {
    const bool room = array->capacity >= 0 && needed <= static_cast<std::size_t>(array->capacity) &&
                      (array->items != nullptr || needed == 0);
    if (!room) array->count = static_cast<std::int32_t>(needed);
    return room;
}

/// Copies values into an array that has room.
template <class Array, class Values>
void CopyInto(Array* array, const Values& values) noexcept {
    std::copy(values.begin(), values.end(), array->items);
    array->count = static_cast<std::int32_t>(values.size());
}

/// The failure of an array without room enough.
inline Failure TooSmall(std::size_t needed, std::int32_t capacity) noexcept {
    return FailLimit(KESTO_ARRAY_TOO_SMALL, KESTO_LIMIT_RECORD_COUNT, static_cast<double>(needed), capacity);
}

/// Gives a text to a caller's memory, which is untouched on failure.
/// @param capacity how many bytes there is room for, the terminating zero included
inline Outcome AssignText(char* out, std::int32_t capacity, std::string_view text) noexcept {
    const std::size_t needed = text.size() + 1;
    if (capacity < 0 || needed > static_cast<std::size_t>(capacity)) return TooSmall(needed, capacity);
    *std::copy(text.begin(), text.end(), out) = '\0';
    return {};
}

/// Gives values to a caller's array: all of them, or the count that is needed.
template <class Array, class Values>
Outcome WriteArray(Array* array, const Values& values) noexcept {
    if (!HasRoom(array, values.size())) return TooSmall(values.size(), array->capacity);
    CopyInto(array, values);
    return {};
}

}  // namespace kesto
