/// The lines of a project file, handed out one by one, and the account of those that could not be read.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/result.hpp"
#include "io/code_page.hpp"
#include "io/line_format.hpp"

namespace kesto {

inline constexpr std::size_t keywordLineBuffer = 256;   // bytes: a line outside the sections must be shorter
inline constexpr std::size_t recordLineBuffer = 16384;  // bytes: a line inside a section must be shorter

/// Walks a file's text. A line that does not fit its buffer ends the reading of the whole file and counts as skipped.
class RecordLines {
public:
    /// @param file      the whole file
    /// @param codePage  the code page that names are converted to; null where they are taken as they stand
    RecordLines(std::string_view file, const CodePage* codePage) noexcept : text(file), names(codePage) {}

    /// The next line outside the sections; nothing at the end of the file.
    std::optional<std::string_view> NextOutside() noexcept { return Next(keywordLineBuffer); }

    /// The next record line of a section; nothing after its last one, which an empty line or the end of the file
    /// follows. A section's reader calls it until then.
    std::optional<std::string_view> NextRecord() noexcept;

    /// How many more records there can be as the writer lays them out: a bound for their memory, as the lines of the
    /// other sections count too.
    std::int64_t MostRecords(const LineShape& shape) const noexcept {
        return static_cast<std::int64_t>((text.size() - std::min(at, text.size())) / shape.Width());
    }

    /// Parses a line into a record.
    /// @param shape shape of Line, from ShapeOf()
    /// @return whether every number was readable
    template <class Line>
    bool Parse(const LineShape& shape, std::string_view line, typename Line::Record& record) {
        shape.Split(line, cells);
        LineReader reader(cells, names);
        Line::Fields(reader, record);
        return reader.Readable();
    }

    /// Counts the line given last as one that was skipped.
    void Skip(KestoList list) noexcept { Skip(list, lineNumber); }

    /// Counts an earlier record as one that was skipped.
    /// @param line number of its first line
    void Skip(KestoList list, std::int32_t line) noexcept;

    /// 1-based number of the line given last.
    std::int32_t LineNumber() const noexcept { return lineNumber; }

    /// Success, or how many lines were skipped, with the number and the list of the first one.
    Outcome Skipped() const noexcept;

private:
    std::optional<std::string_view> Next(std::size_t buffer) noexcept;

    std::string_view text;
    const CodePage* names;
    std::vector<std::string_view> cells;  // of the line parsed last
    std::size_t at = 0;
    std::int32_t lineNumber = 0;  // 1-based, of the line given last
    std::int32_t skipped = 0;
    std::int32_t firstSkipped = 0;  // smallest line number
    KestoList firstList = KESTO_LIST_NONE;
};

/// The columns of a record's line.
template <class Line>
LineShape ShapeOf() {
    LineShape shape;
    const typename Line::Record any{};
    Line::Fields(shape, any);
    return shape;
}

/// A record's line as the documentation tells it.
struct LineDescription {
    LineShape shape;
    std::span<const std::string_view> fields;  // one for each column: its name, its unit, what it says
};

/// What the documentation tells of a record's line: its columns, and the fields that Line names beside Fields().
template <class Line>
LineDescription DescriptionOf() {
    return {ShapeOf<Line>(), Line::fields};
}

}  // namespace kesto
