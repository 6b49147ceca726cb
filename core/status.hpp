/// Failures as the rooms pass them up, and the sentences for their codes.
#pragma once

#include <cstdint>

#include "kesto_road/kesto_road.h"

namespace kesto {

/// A failure that concerns nothing but its status.
Failure Fail(KestoStatus status) noexcept;

/// A failure of one record of a list.
/// @param record 0-based index of the record
Failure FailRecord(KestoStatus status, KestoList list, std::int32_t record) noexcept;

/// A failure of one value that concerns no record and no limit.
Failure FailValue(KestoStatus status, double value) noexcept;

/// A value that passes a limit.
/// @param value, bound the value and the bound that it does not keep (same unit); excess becomes their distance
Failure FailLimit(KestoStatus status, KestoLimit limit, double value, double bound) noexcept;

/// An index that addresses no record of a list with `count` records.
Failure FailIndex(KestoList list, std::int32_t index, std::int32_t count) noexcept;

/// A status code as an English sentence; "unknown status" for any number that is none. Static text.
const char* Describe(std::int32_t status) noexcept;

}  // namespace kesto
