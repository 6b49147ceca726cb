/// The columns of a batch: one value a row, at equal distances in a caller's memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

#include "core/result.hpp"

namespace kesto {

/// Values that are read. A distance of 0 repeats one value; rows need not be aligned.
template <class Value>
class ColumnIn {
public:
    /// @param first     null: every row has the value `otherwise`
    /// @param byteStep  from one row to the next
    ColumnIn(const Value* first, std::int32_t byteStep, Value otherwise = {}) noexcept
        : bytes(reinterpret_cast<const unsigned char*>(first)), step(byteStep), missing(otherwise) {}

    bool IsGiven() const noexcept { return bytes != nullptr; }

    Value operator[](std::int32_t row) const noexcept {
        Value value = missing;
        if (bytes != nullptr) std::memcpy(&value, bytes + std::ptrdiff_t{row} * step, sizeof value);
        return value;
    }

private:
    const unsigned char* bytes;
    std::ptrdiff_t step;  // bytes
    Value missing;
};

/// Values that are written.
template <class Value>
class ColumnOut {
public:
    /// @param byteStep from one row to the next
    ColumnOut(Value* first, std::int32_t byteStep) noexcept
        : bytes(reinterpret_cast<unsigned char*>(first)), step(byteStep) {}

    bool IsGiven() const noexcept { return bytes != nullptr; }

    void Set(std::int32_t row, Value value) const noexcept {
        std::memcpy(bytes + std::ptrdiff_t{row} * step, &value, sizeof value);
    }

private:
    unsigned char* bytes;
    std::ptrdiff_t step;  // bytes
};

using StatusColumn = ColumnOut<std::uint8_t>;

/// Writes the status of a row: 0 or why it has no answer.
inline void SetStatus(const StatusColumn& column, std::int32_t row, const Outcome& outcome) noexcept {
    column.Set(row, static_cast<std::uint8_t>(outcome ? std::int32_t{KESTO_SUCCESS} : outcome.failure().status));
}

/// Fails for a negative number of rows, and where rows need a column that is not given.
inline Outcome RequireColumns(std::int32_t count, std::initializer_list<bool> given) noexcept {
    if (count < 0) return FailValue(KESTO_RECORD_COUNT_REFUSED, count);
    for (const bool there : given) {
        if (count > 0 && !there) return Fail(KESTO_NULL_ARGUMENT);
    }
    return {};
}

/// Runs a batch: whatever its answers come from, on rows that are checked first. No rows touch nothing.
template <class Source, class Rows>
Outcome RunBatch(Source& source, const Rows& rows) {
    Outcome sound = rows.Check();
    return sound && rows.count > 0 ? AnswerRows(source, rows) : sound;
}

}  // namespace kesto
