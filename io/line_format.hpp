/// The fields of a project file's lines. A record's line is declared once, as a function of a line object that either
/// measures (LineShape), formats (LineWriter) or parses (LineReader).
///
/// Field functions of every line object:
///   Real(value)            fixed notation with 8 decimals in 18 characters
///   Integer(value, width)  right-aligned, in 18 or 4 characters
///   Name(text)             a name of up to 31 bytes, right-aligned in 32 characters, UTF-8 in the file
///   NameOrNull(text)       the same, "NULL" standing for the empty name
///   Text(text)             a text of any length as it is stored, right-aligned in 18 characters
///   Repeated(value)        a real that stands in the line again: written, and only compared
///   Gap()                  a blank between two columns
/// Names of a line stand together at its start or at its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.hpp"
#include "io/code_page.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto {

using NameField = char[textFieldSize];

inline constexpr std::size_t wideColumn = 18;  // characters: reals, most integers, texts
inline constexpr std::size_t smallColumn = 4;  // characters: types, flags, most occurrences
inline constexpr std::size_t nameColumn = 32;  // characters
inline constexpr std::string_view noName = "NULL";

/// The columns of a line, without its contents.
class LineShape {
public:
    enum class Content { Number, Name, Text };
    struct Column {
        std::size_t start;
        std::size_t width;
        Content content;
    };

    LineShape& Real(const double&) { return Add(wideColumn, Content::Number); }
    LineShape& Repeated(const double&) { return Add(wideColumn, Content::Number); }
    template <class Number>
    LineShape& Integer(const Number&, std::size_t columnWidth) {
        return Add(columnWidth, Content::Number);
    }
    LineShape& Name(const NameField&) { return Add(nameColumn, Content::Name); }
    LineShape& NameOrNull(const NameField&) { return Add(nameColumn, Content::Name); }
    LineShape& Text(const std::string&) { return Add(wideColumn, Content::Text); }
    LineShape& Gap() {
        ++width;
        return *this;
    }

    /// The cells of a line (without its line end), one for each column. A line as the writer lays it out is cut at the
    /// columns, and so is one of exactly its width with fewer tokens than columns; otherwise tokens go to the columns
    /// in order. Where there are more of them, a name with blanks is meant: numbers keep their places and the name is
    /// its first token.
    /// @param cells out: views into the line; behind a number, more of its column may follow after a blank
    /// @return how many more tokens there are than columns
    std::size_t Split(std::string_view line, std::vector<std::string_view>& cells) const;

    std::span<const Column> Columns() const noexcept { return columns; }
    /// Characters of the whole line.
    std::size_t Width() const noexcept { return width; }

private:
    bool SplitByColumns(std::string_view line, std::vector<std::string_view>& cells) const;

    LineShape& Add(std::size_t columnWidth, Content content) {
        columns.push_back({width, columnWidth, content});
        width += columnWidth;
        return *this;
    }

    std::vector<Column> columns;
    std::size_t width = 0;  // of the whole line
};

/// Formats lines behind each other into a text.
class LineWriter {
public:
    /// @param output   the text to append to
    /// @param codePage the code page that the names are in
    LineWriter(std::string& output, const CodePage& codePage) : text(output), names(codePage) {}

    LineWriter& Real(double value);
    LineWriter& Repeated(double value) { return Real(value); }
    LineWriter& Integer(std::int32_t value, std::size_t columnWidth);
    LineWriter& Name(const NameField& field);
    LineWriter& NameOrNull(const NameField& field);
    LineWriter& Text(std::string_view value);
    LineWriter& Gap();
    /// A keyword as it stands, without padding.
    LineWriter& Keyword(std::string_view keyword);
    /// Ends the line.
    void End();

private:
    void Cell(std::string_view value, std::size_t columnWidth);
    void OneLine(std::string_view value, std::size_t columnWidth);

    std::string& text;
    const CodePage& names;
};

/// A cell that holds something else than its field wants.
struct CellDoubt {
    KestoReadingReason reason;
    std::size_t cell;  // 0-based
    double read;       // the number that is taken
    double other = 0;  // where it stands twice: the second one
};

/// Parses the cells of one line into a record. A number that overflows makes the line unreadable.
class LineReader {
public:
    /// @param lineCells  one cell for each field, in the fields' order
    /// @param codePage   the code page that names are converted to; null where they are taken as they stand
    /// @param cellDoubts out: what is to be told of the cells is appended
    LineReader(std::span<const std::string_view> lineCells, const CodePage* codePage,
               std::vector<CellDoubt>& cellDoubts)
        : cells(lineCells), names(codePage), doubts(cellDoubts) {}

    LineReader& Real(double& value);
    LineReader& Repeated(const double& value);
    LineReader& Integer(std::int32_t& value, std::size_t columnWidth);
    /// A small number, 0 to 255.
    LineReader& Integer(std::uint8_t& value, std::size_t columnWidth);
    LineReader& Name(NameField& field);
    LineReader& NameOrNull(NameField& field);
    LineReader& Text(std::string& value);
    LineReader& Gap() { return *this; }

    /// Whether every number was one that its field can hold.
    bool Readable() const noexcept { return readable; }
    /// How many cells of numbers were empty.
    std::size_t Missing() const noexcept { return missing; }

private:
    std::string_view Next() noexcept { return cells[next++]; }
    /// Notes what the cell taken last holds, unless that is the number.
    void Note(bool fits, bool whole, double read);

    std::span<const std::string_view> cells;
    const CodePage* names;
    std::vector<CellDoubt>& doubts;
    std::size_t next = 0;
    std::size_t missing = 0;
    bool readable = true;
};

}  // namespace kesto
