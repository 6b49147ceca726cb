#include "io/record_lines.hpp"

#include <algorithm>

#include "core/status.hpp"
#include "core/text.hpp"
#include "io/number_text.hpp"

namespace kesto {

namespace {

inline constexpr std::size_t shortestRecord = 2;  // bytes: one of them may be a carriage return

/// Whether a line begins as keywords do. Records that are written by the columns begin with a blank or a digit.
bool MayBeKeyword(std::string_view line) noexcept { return !line.empty() && line.front() >= 'A'; }

}  // namespace

std::string_view FirstWord(std::string_view text) noexcept {
    const char* const last = text.data() + text.size();
    const char* const first = std::find_if_not(text.data(), last, IsBlank);
    return {first, std::find_if(first, last, IsBlank)};
}

std::optional<std::string_view> RecordLines::Next(std::size_t buffer) {
    if (at >= text.size()) return std::nullopt;
    const std::size_t end = std::min(text.find('\n', at), text.size());
    ++lineNumber;
    if (end - at >= buffer) {
        Tell(Finding(KESTO_READING_LINE_TOO_LONG, {}, static_cast<double>(end - at), static_cast<double>(buffer)));
        at = text.size();
        Skip(KESTO_LIST_NONE);
        return std::nullopt;
    }
    const std::string_view line = text.substr(at, end - at);
    at = end + 1;
    if (end == text.size() && !FirstWord(line).empty()) Tell(Finding(KESTO_READING_NO_LINE_END));
    const std::size_t zero = line.find('\0');
    if (zero == std::string_view::npos) return line;
    Tell(Finding(KESTO_READING_ZERO_BYTE));
    return line.substr(0, zero);  // no text holds a zero byte: what follows one is no part of it
}

std::optional<std::string_view> RecordLines::NextOutside() {
    section = {};
    swallowedAt = nothingSwallowed;
    return Next(keywordLineBuffer);
}

std::optional<std::string_view> RecordLines::NextRecord() {
    const std::optional<std::string_view> line = Next(recordLineBuffer);
    if (!line) {
        EndSwallowed(lineNumber);
        return std::nullopt;
    }
    if (line->size() < shortestRecord) {
        if (!FirstWord(*line).empty()) Tell(Finding(KESTO_READING_LINE_TOO_SHORT, *line));
        EndSwallowed(lineNumber - 1);
        return std::nullopt;
    }
    if (MayBeKeyword(*line)) {
        const std::string_view word = FirstWord(*line);
        if (FirstWord(line->substr(word.size())).empty() && isKeyword(word)) {
            EndSwallowed(lineNumber - 1);
            swallowedAt = report.findings.size();
            Tell(Finding(KESTO_READING_SECTION_SWALLOWED, word));
        }
    }
    return line->ends_with('\r') ? line->substr(0, line->size() - 1) : *line;
}

ReadingFinding RecordLines::Finding(KestoReadingReason reason, std::string_view about, double value,
                                    double bound) const noexcept {
    ReadingFinding finding{};
    finding.line = lineNumber;
    finding.reason = reason;
    finding.list = KESTO_LIST_NONE;
    finding.record = -1;
    finding.limit = KESTO_LIMIT_NONE;
    SetText(finding.section, section);
    SetText(finding.text, about);
    finding.value = value;
    finding.bound = bound;
    return finding;
}

void RecordLines::EndSwallowed(std::int32_t last) noexcept {
    if (swallowedAt < report.findings.size()) report.findings[swallowedAt].otherLine = last;
}

void RecordLines::TellOfCells(std::size_t missing, std::size_t surplus) {
    const bool swallowing = swallowedAt != nothingSwallowed;
    for (const CellDoubt& doubt : doubts) {
        if (swallowing && doubt.reason != KESTO_READING_NUMBER_TOO_LARGE) continue;
        ReadingFinding finding = Finding(doubt.reason, FirstWord(cells[doubt.cell]), doubt.read, doubt.other);
        finding.field = static_cast<std::int32_t>(doubt.cell) + 1;
        Tell(finding);
    }
    if (swallowing) return;
    if (missing > 0) {
        Tell(
            Finding(KESTO_READING_FIELDS_MISSING, {}, static_cast<double>(missing), static_cast<double>(cells.size())));
    }
    if (surplus > 0) Tell(Finding(KESTO_READING_FIELDS_EXTRA, {}, static_cast<double>(surplus)));
}

void RecordLines::Skip(KestoList list, std::int32_t line) noexcept {
    if (skipped++ > 0 && firstSkipped <= line) return;
    firstSkipped = line;
    firstList = list;
}

void RecordLines::Refuse(KestoList list, std::int32_t line, const Failure& why, std::int32_t otherLine) {
    Skip(list, line);
    ReadingFinding finding = Finding(KESTO_READING_RECORD_REFUSED, {}, why.value, why.bound);
    finding.line = line;
    finding.otherLine = otherLine;
    finding.status = why.status;
    finding.list = list;
    finding.record = why.record;
    finding.limit = why.limit;
    finding.excess = why.excess;
    Tell(finding);
}

Outcome RecordLines::Skipped() const noexcept {
    if (skipped == 0) return {};
    Failure failure = FailRecord(KESTO_RECORDS_SKIPPED, firstList, firstSkipped);
    failure.value = skipped;
    return failure;
}

}  // namespace kesto
