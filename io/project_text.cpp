#include "io/project_text.hpp"

#include <algorithm>
#include <memory>
#include <optional>

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
    for (const Section& section : Sections()) {
        if ((section.roadOnly && kind != ProjectKind::Road) || !section.present(road)) continue;
        if (section.byStake && !readBack) readBack = AsReadBack(text, road, names);
        if (!section.keyword.empty()) lines.Keyword(section.keyword).End();
        section.write(section.byStake ? *readBack : road, lines);
        lines.End();
    }
    return text;
}

Outcome ParseProject(std::string_view text, RoadDesign& road, const CodePage& names) {
    const bool namesAreUtf8 = IsUtf8(text);
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    RecordLines lines(text, namesAreUtf8 ? &names : nullptr);
    Reading reading{road, lines};
    bool first = true;
    while (const std::optional<std::string_view> line = lines.NextOutside()) {
        if (first && IsHeader(*line)) {
            ReadHeader(*line, road, lines);
        } else if (const Section* section = FindSection(*line)) {
            section->read(reading);
        }
        first = false;
    }
    return lines.Skipped();
}

}  // namespace kesto
