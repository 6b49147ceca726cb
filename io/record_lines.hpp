/// The lines of a project file, handed out one by one, and the account of those that could not be read.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/reading_report.hpp"
#include "core/result.hpp"
#include "io/code_page.hpp"
#include "io/line_format.hpp"

namespace kesto {

inline constexpr std::size_t keywordLineBuffer = 256;   // bytes: a line outside the sections must be shorter
inline constexpr std::size_t recordLineBuffer = 16384;  // bytes: a line inside a section must be shorter

/// The first word of a text, empty where there is none.
std::string_view FirstWord(std::string_view text) noexcept;

/// Walks a file's text. A line that does not fit its buffer ends the reading of the whole file and counts as skipped.
class RecordLines {
public:
    using KeywordTest = bool (*)(std::string_view word) noexcept;

    /// @param file       the whole file
    /// @param codePage   the code page that names are converted to; null where they are taken as they stand
    /// @param told       where findings go
    /// @param keywordTest whether a word is a section's keyword
    RecordLines(std::string_view file, const CodePage* codePage, ReadingReport& told, KeywordTest keywordTest) noexcept
        : text(file), names(codePage), report(told), isKeyword(keywordTest) {}

    /// The next line outside the sections; nothing at the end of the file.
    std::optional<std::string_view> NextOutside();

    /// To be called before the records of a section are read: findings name it.
    void EnterSection(std::string_view keyword) noexcept { section = keyword; }

    /// The next record line of a section; nothing after its last one, which an empty line or the end of the file
    /// follows. A section's reader calls it until then.
    std::optional<std::string_view> NextRecord();

    /// How many more records there can be as the writer lays them out: a bound for their memory, as the lines of the
    /// other sections count too.
    std::int64_t MostRecords(const LineShape& shape) const noexcept {
        return static_cast<std::int64_t>((text.size() - std::min(at, text.size())) / shape.Width());
    }

    /// Parses a line into a record, and tells of what is missing or no number.
    /// @param shape shape of Line, from ShapeOf()
    /// @return whether every number was readable
    template <class Line>
    bool Parse(const LineShape& shape, std::string_view line, typename Line::Record& record) {
        const std::size_t surplus = shape.Split(line, cells);
        doubts.clear();
        LineReader reader(cells, names, doubts);
        Line::Fields(reader, record);
        if (surplus > 0 || reader.Missing() > 0 || !doubts.empty()) TellOfCells(reader.Missing(), surplus);
        return reader.Readable();
    }

    /// Counts the line given last, of which something has been told, as one that was skipped.
    void Skip(KestoList list) noexcept { Skip(list, lineNumber); }
    /// The same for an earlier record.
    /// @param line number of its first line
    void Skip(KestoList list, std::int32_t line) noexcept;

    /// Counts a record as one that was skipped, and tells why it was refused.
    /// @param line      number of its first line
    /// @param otherLine number of the line that it collides with; 0 for none
    void Refuse(KestoList list, std::int32_t line, const Failure& why, std::int32_t otherLine = 0);
    /// The same for the line given last.
    void Refuse(KestoList list, const Failure& why) { Refuse(list, lineNumber, why); }

    /// A finding of the line given last, to be completed and told.
    ReadingFinding Finding(KestoReadingReason reason, std::string_view about = {}, double value = 0,
                           double bound = 0) const noexcept;
    void Tell(const ReadingFinding& finding) { report.Add(finding); }

    /// 1-based number of the line given last.
    std::int32_t LineNumber() const noexcept { return lineNumber; }

    /// Success, or how many lines were skipped, with the number and the list of the first one.
    Outcome Skipped() const noexcept;

private:
    static constexpr std::size_t nothingSwallowed = std::numeric_limits<std::size_t>::max();

    std::optional<std::string_view> Next(std::size_t buffer);
    /// Completes the finding of a section that another one has swallowed.
    /// @param last number of its last line
    void EndSwallowed(std::int32_t last) noexcept;
    void TellOfCells(std::size_t missing, std::size_t surplus);

    std::string_view text;
    const CodePage* names;
    ReadingReport& report;
    KeywordTest isKeyword;
    std::string_view section;
    /// Index of the finding of a section that this one has swallowed: the cells of its records tell nothing.
    std::size_t swallowedAt = nothingSwallowed;
    std::vector<std::string_view> cells;  // of the line parsed last
    std::vector<CellDoubt> doubts;        // likewise
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
