#include "io/record_lines.hpp"

#include <algorithm>

#include "core/status.hpp"

namespace kesto {

namespace {

inline constexpr std::size_t shortestRecord = 2;  // bytes: one of them may be a carriage return

}  // namespace

std::optional<std::string_view> RecordLines::Next(std::size_t buffer) noexcept {
    if (at >= text.size()) return std::nullopt;
    const std::size_t end = std::min(text.find('\n', at), text.size());
    ++lineNumber;
    if (end - at >= buffer) {
        at = text.size();
        Skip(KESTO_LIST_NONE);
        return std::nullopt;
    }
    const std::string_view line = text.substr(at, end - at);
    at = end + 1;
    return line.substr(0, line.find('\0'));  // no text holds a zero byte: what follows one is no part of it
}

std::optional<std::string_view> RecordLines::NextRecord() noexcept {
    const std::optional<std::string_view> line = Next(recordLineBuffer);
    if (!line || line->size() < shortestRecord) return std::nullopt;
    return line->ends_with('\r') ? line->substr(0, line->size() - 1) : *line;
}

void RecordLines::Skip(KestoList list, std::int32_t line) noexcept {
    if (skipped++ > 0 && firstSkipped <= line) return;
    firstSkipped = line;
    firstList = list;
}

Outcome RecordLines::Skipped() const noexcept {
    if (skipped == 0) return {};
    Failure failure = FailRecord(KESTO_RECORDS_SKIPPED, firstList, firstSkipped);
    failure.value = skipped;
    return failure;
}

}  // namespace kesto
