#include "io/project_text.hpp"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "core/status.hpp"
#include "io/line_format.hpp"
#include "io/number_text.hpp"
#include "io/project_sections.hpp"
#include "io/reading.hpp"
#include "io/record_lines.hpp"

namespace kesto {

namespace {

inline constexpr std::size_t longestHeader = keywordLineBuffer - 1;  // bytes, its carriage return included
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Whether the first line holds the stake settings: a file of another origin may begin with a section or a blank line.
bool IsHeader(std::string_view line) noexcept {
    return line.find_first_not_of(" \t\r") != std::string_view::npos && FindSection(line) == nullptr;
}

void ReadHeader(std::string_view line, RoadDesign& road, RecordLines& lines) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    Settings settings = road.settings;
    if (!lines.Parse<HeaderLine>(ShapeOf<HeaderLine>(), line, settings)) {
        lines.Skip(KESTO_LIST_NONE);
        return;
    }
    road.settings = settings;
    SetInterval(road, settings.mileageInterval);
    const double stored = road.settings.mileageInterval;
    if (settings.mileageInterval < stored) {
        lines.Tell(lines.Finding(KESTO_READING_VALUE_RAISED, {}, settings.mileageInterval, stored));
    }
}

/// Reads what stands between the sections, and tells of it.
class BetweenSections {
public:
    explicit BetweenSections(RecordLines& all) noexcept : lines(all) {}

    /// Tells what a keyword's line says beside its section.
    void Open(const Section& section, std::string_view line) {
        lines.EnterSection(section.keyword);
        const std::string_view word = FirstWord(line);
        const bool spelt = word == section.keyword && FirstWord(line.substr(word.size())).empty();
        if (!spelt) lines.Tell(lines.Finding(KESTO_READING_KEYWORD_SPELLING, line));
        const Opened* before = nullptr;
        for (const Opened& it : opened) {
            if (it.section == &section) {
                TellOf(KESTO_READING_SECTION_REPEATED, it);
                break;
            }
        }
        for (const Opened& it : opened) {
            if (section.form != SectionForm::Single && it.section->form == section.form) before = &it;
        }
        if (before != nullptr && before->section != &section) TellOf(KESTO_READING_SECOND_FORM, *before);
        opened.push_back({&section, lines.LineNumber()});
    }

    /// A line that opens no section: such lines are told together, up to an empty one.
    void PassOver(std::string_view line) {
        if (FirstWord(line).empty()) return TellOfPassed();
        if (++passedCount == 1) passed = lines.Finding(KESTO_READING_UNKNOWN_SECTION, FirstWord(line));
    }

    void TellOfPassed() {
        passed.value = passedCount;
        if (passedCount > 0) lines.Tell(passed);
        passedCount = 0;
    }

private:
    /// A section that has been read.
    struct Opened {
        const Section* section;
        std::int32_t line;
    };

    void TellOf(KestoReadingReason reason, const Opened& before) {
        ReadingFinding finding = lines.Finding(reason, before.section->keyword);
        finding.otherLine = before.line;
        lines.Tell(finding);
    }

    RecordLines& lines;
    std::vector<Opened> opened;
    ReadingFinding passed{};
    std::int32_t passedCount = 0;
};

/// Tells how many lines are no UTF-8, at the first one.
void TellOfOtherBytes(std::string_view text, ReadingReport& report) {
    ReadingFinding finding{};
    finding.reason = KESTO_READING_NOT_UTF8;
    finding.list = KESTO_LIST_NONE;
    finding.record = -1;
    finding.limit = KESTO_LIMIT_NONE;
    for (std::int32_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        if (!IsUtf8(text.substr(0, end))) {
            if (finding.line == 0) finding.line = number;
            ++finding.value;
        }
        text.remove_prefix(end);
    }
    if (finding.line > 0) report.Add(finding);
}

/// A road's cross sections on the alignment that a reader has once it has read the text so far. Stake mileages of the
/// road itself may be out of date, and to bring it up to date is not for a save to do.
std::unique_ptr<RoadDesign> AsReadBack(std::string_view text, const RoadDesign& road, const CodePage& names) {
    auto copy = std::make_unique<RoadDesign>();
    static_cast<void>(ParseProject(text, *copy, names));  // a reader skips what this skips
    copy->sections = road.sections;
    return copy;
}

}  // namespace

Result<std::string> FormatProject(RoadDesign& road, const CodePage& names, ProjectKind kind) {
    std::string text;
    LineWriter lines(text, names);
    HeaderLine::Fields(lines, road.settings);
    lines.End();
    const std::size_t header = text.size() - 1;  // its line feed does not count
    if (header > longestHeader) {
        return FailLimit(KESTO_FILE_NOT_WRITTEN, KESTO_LIMIT_NONE, static_cast<double>(header),
                         static_cast<double>(longestHeader));
    }
    lines.End();
    std::unique_ptr<RoadDesign> readBack;
    const auto write = [&](const Section& section) {
        if ((section.roadOnly && kind != ProjectKind::Road) || !section.present(road)) return;
        if (section.byStake && !readBack) readBack = AsReadBack(text, road, names);
        if (!section.keyword.empty()) lines.Keyword(section.keyword).End();
        section.write(section.byStake ? *readBack : road, lines);
        lines.End();
    };
    for (const std::span<const Section> room : SectionsByRoom()) std::ranges::for_each(room, write);
    return text;
}

Outcome ParseProject(std::string_view text, RoadDesign& road, const CodePage& names) {
    const bool namesAreUtf8 = IsUtf8(text);
    if (!namesAreUtf8) TellOfOtherBytes(text, road.reading);
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    RecordLines lines(text, namesAreUtf8 ? &names : nullptr, road.reading, IsKeyword);
    Reading reading{road, lines};
    BetweenSections between(lines);
    std::optional<std::string_view> line = lines.NextOutside();
    if (line && IsHeader(*line)) {
        ReadHeader(*line, road, lines);
        line = lines.NextOutside();
    } else if (lines.Skipped()) {
        ReadingFinding finding = lines.Finding(KESTO_READING_NO_HEADER);
        finding.line = 1;  // of an empty file too
        lines.Tell(finding);
    }
    for (; line; line = lines.NextOutside()) {
        if (const Section* section = FindSection(*line)) {
            between.TellOfPassed();
            between.Open(*section, *line);
            section->read(reading);
        } else {
            between.PassOver(*line);
        }
    }
    between.TellOfPassed();
    reading.Finish();
    return lines.Skipped();
}

}  // namespace kesto
