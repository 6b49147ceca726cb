#include "io/line_format.hpp"

#include <algorithm>
#include <limits>
#include <optional>

#include "io/number_text.hpp"

namespace kesto {

namespace {

inline constexpr std::string_view blanks = " \t\n\v\f\r";
inline constexpr std::string_view lineEnd = "\r\n";

/// The next token of a text, which is cut off its front; empty where there is none left.
std::string_view TakeToken(std::string_view& text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const std::string_view token = text.substr(0, std::min(text.find_first_of(blanks), text.size()));
    text.remove_prefix(token.size());
    return token;
}

std::string_view FirstToken(std::string_view text) noexcept { return TakeToken(text); }

std::vector<std::string_view> Tokens(std::string_view text) {
    std::vector<std::string_view> tokens;
    for (std::string_view token = TakeToken(text); !token.empty(); token = TakeToken(text)) tokens.push_back(token);
    return tokens;
}

}  // namespace

/// Whether a line is laid out as the writer does: of exactly its width, every cell right-aligned.
bool LineShape::IsWritten(std::string_view line) const noexcept {
    return line.size() == width && std::all_of(columns.begin(), columns.end(), [&](const Column& column) {
               const std::string_view cell = line.substr(column.start, column.width);
               return blanks.find(cell.back()) == std::string_view::npos || FirstToken(cell).empty();
           });
}

std::vector<std::string_view> LineShape::Split(std::string_view line) const {
    std::vector<std::string_view> cells = Tokens(line);
    if (IsWritten(line) || (cells.size() < columns.size() && line.size() == width)) {
        cells.clear();
        for (const Column& column : columns) {
            cells.push_back(FirstToken(line.substr(column.start, column.width)));
        }
    } else if (cells.size() > columns.size() && columns.front().isName) {
        const auto isName = [](const Column& column) { return column.isName; };
        const auto nameCount = std::find_if_not(columns.begin(), columns.end(), isName) - columns.begin();
        const auto surplus = static_cast<std::ptrdiff_t>(cells.size() - columns.size());
        cells.erase(cells.begin() + nameCount, cells.begin() + nameCount + surplus);
    }
    cells.resize(columns.size());
    return cells;
}

void LineWriter::Pad(std::size_t start, std::size_t columnWidth) {
    const std::size_t length = text.size() - start;
    if (length < columnWidth) text.insert(start, columnWidth - length, ' ');
}

/// A text that must not end the line: a line break in it becomes a blank.
void LineWriter::OneLine(std::string_view value, std::size_t columnWidth) {
    const std::size_t start = text.size();
    text += value;
    std::replace_if(
        text.begin() + static_cast<std::ptrdiff_t>(start), text.end(),
        [](char character) { return character == '\r' || character == '\n'; }, ' ');
    Pad(start, columnWidth);
}

LineWriter& LineWriter::Real(double value) {
    const std::size_t start = text.size();
    AppendReal(text, value);
    Pad(start, wideColumn);
    return *this;
}

LineWriter& LineWriter::Integer(std::int32_t value, std::size_t columnWidth) {
    const std::size_t start = text.size();
    AppendInteger(text, value);
    Pad(start, columnWidth);
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
    const std::optional<double> number = ParseReal(Next());
    readable = readable && number;
    value = number.value_or(0);
    return *this;
}

LineReader& LineReader::Repeated(const double&) {
    ++next;
    return *this;
}

LineReader& LineReader::Integer(std::int32_t& value, std::size_t) {
    const std::optional<std::int32_t> number = ParseInteger(Next());
    readable = readable && number;
    value = number.value_or(0);
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
