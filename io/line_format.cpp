#include "io/line_format.hpp"

#include <algorithm>
#include <limits>

#include "io/number_text.hpp"

namespace kesto {

namespace {

inline constexpr std::string_view lineEnd = "\r\n";

/// Whether a character separates tokens, in the C locale.
bool IsBlank(char character) noexcept { return character == ' ' || (character >= '\t' && character <= '\r'); }

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

void LineShape::Split(std::string_view line, std::vector<std::string_view>& cells) const {
    const bool ofItsWidth = line.size() == width;
    if (ofItsWidth && SplitByColumns(line, cells)) return;
    SplitAtBlanks(line, cells);
    if (ofItsWidth && cells.size() < columns.size()) {
        SplitByColumns(line, cells);
    } else if (cells.size() > columns.size() && columns.front().content == Content::Name) {
        const auto isName = [](const Column& column) { return column.content == Content::Name; };
        const auto nameCount = std::find_if_not(columns.begin(), columns.end(), isName) - columns.begin();
        const auto surplus = static_cast<std::ptrdiff_t>(cells.size() - columns.size());
        cells.erase(cells.begin() + nameCount, cells.begin() + nameCount + surplus);
    }
    cells.resize(columns.size());
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

LineReader& LineReader::Real(double& value) {
    const bool read = ReadReal(Next(), value);
    readable = readable && read;
    return *this;
}

LineReader& LineReader::Repeated(const double&) {
    ++next;
    return *this;
}

LineReader& LineReader::Integer(std::int32_t& value, std::size_t) {
    const bool read = ReadInteger(Next(), value);
    readable = readable && read;
    return *this;
}

LineReader& LineReader::Integer(std::uint8_t& value, std::size_t columnWidth) {
    std::int32_t number = 0;
    Integer(number, columnWidth);
    const bool fits = number >= 0 && number <= std::numeric_limits<std::uint8_t>::max();
    readable = readable && fits;
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
