/// What the last opening of a file told of it: what was skipped or doubted, and the lines that the records stood in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "core/result.hpp"

namespace kesto {

struct ReadingReport {
    /// A list with the key of one of its tables: 0 where it has but one, the side of plates, 2 * side + kind of change
    /// sections.
    using ListKey = std::pair<std::int32_t, std::int32_t>;

    static constexpr std::size_t mostFindings = 1000;  // kept: a file that is none at all must not fill the memory

    std::vector<ReadingFinding> findings;                      // the first ones
    std::int32_t findingCount = 0;                             // of all
    std::map<ListKey, std::vector<std::int32_t>> recordLines;  // 1-based, in the order of the list
    std::map<ListKey, std::int32_t> sectionLines;              // of the keyword of a list's first section

    /// Takes a finding in, or counts it where there are too many.
    /// @throws std::bad_alloc
    void Add(const ReadingFinding& finding);
};

/// A finding of the last opening by its 0-based index.
/// @return fails for an index that addresses none of those that are kept
Result<ReadingFinding> FindingAt(const ReadingReport& report, std::int32_t index) noexcept;

/// The 1-based line that a record stood in.
/// @param key   see ReadingReport::ListKey
/// @param index 0-based index that the record had in its list after the opening; -1 for the keyword of the list's first
///              section
/// @return fails for an index that addresses no record that was read, and for -1 where there was no section
Result<std::int32_t> RecordLineAt(const ReadingReport& report, std::int32_t list, std::int32_t key,
                                  std::int32_t index) noexcept;

}  // namespace kesto
