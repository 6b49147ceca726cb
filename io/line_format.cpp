#include "io/line_format.hpp"

#include <algorithm>
#include <limits>

#include "io/number_text.hpp"

namespace kesto {

namespace {

inline constexpr std::string_view lineEnd = "\r\n";

/// A text without the blanks in front of it.
std::string_view SkipBlanks(std::string_view text) noexcept {
    const char* const last = text.data() + text.size();
    return {std::find_if_not(text.data(), last, IsBlank), last};
}

/// The next token of a text, which is cut off its front; empty where there is none left.
std::string_view TakeToken(std::string_view& text) noexcept {
    text = SkipBlanks(text);
    const char* const last = text.data() + text.size();
    const char* const end = std::find_if(text.data(), last, IsBlank);
    const std::string_view token(text.data(), end);
    text = {end, last};
    return token;
}

std::string_view FirstToken(std::string_view text) noexcept { return TakeToken(text); }

void SplitAtBlanks(std::string_view text, std::vector<std::string_view>& tokens) {
    tokens.clear();
    for (std::string_view token = TakeToken(text); !token.empty(); token = TakeToken(text)) tokens.push_back(token);
}

}  // namespace

/// Cuts a line of exactly the writer's width at the columns.
/// @return whether every cell is right-aligned, as the writer lays them out
bool LineShape::SplitByColumns(std::string_view line, std::vector<std::string_view>& cells) const {
    bool aligned = true;
    cells.resize(columns.size());
    auto next = cells.begin();
    for (const Column& column : columns) {
        const std::string_view cell(line.data() + column.start, column.width);
        // A number ends at a blank by itself: looking for the end of its token is left out, as it takes long.
        *next = column.content == Content::Number ? SkipBlanks(cell) : FirstToken(cell);
        aligned = aligned && (!IsBlank(cell.back()) || next->empty());
        ++next;
    }
    return aligned;
}

std::size_t LineShape::Split(std::string_view line, std::vector<std::string_view>& cells) const {
    const bool ofItsWidth = line.size() == width;
    if (ofItsWidth && SplitByColumns(line, cells)) return 0;
    SplitAtBlanks(line, cells);
    const std::size_t surplus = cells.size() - std::min(cells.size(), columns.size());
    if (ofItsWidth && cells.size() < columns.size()) {
        SplitByColumns(line, cells);
    } else if (surplus > 0 && columns.front().content == Content::Name) {
        const auto isName = [](const Column& column) { return column.content == Content::Name; };
        const auto nameCount = std::find_if_not(columns.begin(), columns.end(), isName) - columns.begin();
        cells.erase(cells.begin() + nameCount, cells.begin() + nameCount + static_cast<std::ptrdiff_t>(surplus));
    }
    cells.resize(columns.size());
    return surplus;
}

void LineWriter::Cell(std::string_view value, std::size_t columnWidth) {
    if (value.size() < columnWidth) text.append(columnWidth - value.size(), ' ');
    text += value;
}

/// A text that must not end the line: a line break in it becomes a blank.
void LineWriter::OneLine(std::string_view value, std::size_t columnWidth) {
    Cell(value, columnWidth);
    std::replace_if(
        text.end() - static_cast<std::ptrdiff_t>(value.size()), text.end(),
        [](char character) { return character == '\r' || character == '\n'; }, ' ');
}

LineWriter& LineWriter::Real(double value) {
    NumberRoom room;
    Cell(FormatReal(room, value), wideColumn);
    return *this;
}

LineWriter& LineWriter::Integer(std::int32_t value, std::size_t columnWidth) {
    NumberRoom room;
    Cell(FormatInteger(room, value), columnWidth);
    return *this;
}

LineWriter& LineWriter::Name(const NameField& field) {
    OneLine(names.ToUtf8(TextOf(field)), nameColumn);
    return *this;
}

LineWriter& LineWriter::NameOrNull(const NameField& field) {
    if (!TextOf(field).empty()) return Name(field);
    OneLine(noName, nameColumn);
    return *this;
}

LineWriter& LineWriter::Text(std::string_view value) {
    OneLine(value, wideColumn);
    return *this;
}

LineWriter& LineWriter::Gap() {
    text += ' ';
    return *this;
}

LineWriter& LineWriter::Keyword(std::string_view keyword) {
    text += keyword;
    return *this;
}

void LineWriter::End() { text += lineEnd; }

void LineReader::Note(bool fits, bool whole, double read) {
    readable = readable && fits;
    if (fits && whole) return;
    const std::size_t cell = next - 1;
    if (cells[cell].empty()) {
        ++missing;
    } else {
        doubts.push_back({fits ? KESTO_READING_NOT_A_NUMBER : KESTO_READING_NUMBER_TOO_LARGE, cell, read});
    }
}

LineReader& LineReader::Real(double& value) {
    bool whole = false;
    const bool fits = ReadReal(Next(), value, whole);
    Note(fits, whole, value);
    return *this;
}

LineReader& LineReader::Repeated(const double& value) {
    bool whole = false;
    double again = 0;
    ReadReal(Next(), again, whole);  // what does not fit is no reason to skip the record
    Note(true, whole, again);
    if (whole && again != value) doubts.push_back({KESTO_READING_VALUE_DIFFERS, next - 1, value, again});
    return *this;
}

LineReader& LineReader::Integer(std::int32_t& value, std::size_t) {
    bool whole = false;
    const bool fits = ReadInteger(Next(), value, whole);
    Note(fits, whole, value);
    return *this;
}

LineReader& LineReader::Integer(std::uint8_t& value, std::size_t) {
    bool whole = false;
    std::int32_t number = 0;
    const bool read = ReadInteger(Next(), number, whole);
    const bool fits = read && number >= 0 && number <= std::numeric_limits<std::uint8_t>::max();
    Note(fits, whole, number);
    value = fits ? static_cast<std::uint8_t>(number) : std::uint8_t{0};
    return *this;
}

LineReader& LineReader::Name(NameField& field) {
    const std::string_view cell = Next();
    SetText(field, names == nullptr ? std::string(cell) : names->FromUtf8(cell));
    return *this;
}

LineReader& LineReader::NameOrNull(NameField& field) {
    Name(field);
    if (TextOf(field) == noName) SetText(field, {});
    return *this;
}

LineReader& LineReader::Text(std::string& value) {
    value = Next();
    return *this;
}

}  // namespace kesto
