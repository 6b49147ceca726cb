#include "checks/outline.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr std::size_t keywordLineBuffer = 256;   // bytes: a line outside the sections must be shorter
constexpr std::size_t recordLineBuffer = 16384;  // bytes: a line inside a section must be shorter
constexpr std::size_t shortestRecord = 2;        // bytes: a shorter line ends its section
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t\n\v\f\r";
constexpr std::string_view headerColumns = "r-r-i-t";
constexpr std::string_view changeColumns = "rris";

constexpr std::array forms{
    SectionForm{"ExtInfo", "ti"},
    SectionForm{"Intersection", "nrrrrrrr"},
    SectionForm{"Coordinate", "ssrrrn"},
    SectionForm{"BrokenLine", "ssrrrn"},
    SectionForm{"Element", "rrrrbrsrrs"},
    SectionForm{"BrokenChain", "rr"},
    SectionForm{"VerticalCurve", "rrrs"},
    SectionForm{"VerticalCurve_SECONDPARA", "rrsriri"},
    SectionForm{"StandardSectionRight", "nnrrrr"},
    SectionForm{"StandardSectionLeft", "nnrrrr"},
    SectionForm{"WidenSectionRight", changeColumns},
    SectionForm{"WidenRightType", "s"},
    SectionForm{"WidenSectionLeft", changeColumns},
    SectionForm{"WidenLeftType", "s"},
    SectionForm{"HeightenSectionRight", changeColumns},
    SectionForm{"HeightRightType", "s"},
    SectionForm{"HeightenSectionLeft", changeColumns},
    SectionForm{"HeightLeftType", "s"},
    SectionForm{"roadSectionMileage", "r"},
};

std::string Lines(std::int64_t count) { return std::to_string(count) + (count == 1 ? " line" : " lines"); }

std::size_t WidthOf(char column) noexcept {
    switch (column) {
        case '-': return 1;
        case 's': return 4;
        case 'n': return 32;
        default: return 18;
    }
}

bool IsNumber(char column) noexcept { return column != 'n' && column != 't'; }

std::vector<std::string_view> Tokens(std::string_view text) {
    std::vector<std::string_view> tokens;
    for (auto start = text.find_first_not_of(blanks); start != std::string_view::npos;) {
        const auto end = std::min(text.find_first_of(blanks, start), text.size());
        tokens.push_back(text.substr(start, end - start));
        start = text.find_first_not_of(blanks, end);
    }
    return tokens;
}

/// The line cut at the writer's columns, each cell being its first token; nothing unless it has exactly their width.
/// @param aligned out: whether every cell is empty or right-aligned, as the writer makes them
std::optional<std::vector<std::string_view>> CutAtColumns(std::string_view line, std::string_view columns,
                                                          bool& aligned) {
    std::vector<std::string_view> cells;
    std::size_t at = 0;
    aligned = true;
    for (const char column : columns) {
        const std::size_t width = WidthOf(column);
        if (at + width > line.size()) return std::nullopt;
        if (column != '-') {
            const std::string_view cell = line.substr(at, width);
            const auto tokens = Tokens(cell);
            cells.push_back(tokens.empty() ? std::string_view() : tokens.front());
            aligned = aligned && (tokens.empty() || blanks.find(cell.back()) == std::string_view::npos);
        }
        at += width;
    }
    if (at != line.size()) return std::nullopt;
    return cells;
}

/// A line's cells, and by how many its tokens outnumber its columns.
struct Cells {
    std::vector<std::string_view> cells;
    std::size_t surplus = 0;
};

Cells Split(std::string_view line, std::string_view columns) {
    std::vector<std::string_view> tokens = Tokens(line);
    const auto count = columns.size() - static_cast<std::size_t>(std::count(columns.begin(), columns.end(), '-'));
    bool aligned = false;
    if (auto cut = CutAtColumns(line, columns, aligned); cut && (aligned || tokens.size() < count)) return {*cut};
    Cells split{tokens, tokens.size() > count ? tokens.size() - count : 0};
    if (columns.front() == 'n' && split.surplus > 0) {  // numbers keep their places behind a name with blanks
        const auto names = static_cast<std::ptrdiff_t>(std::min(columns.find_first_not_of('n'), columns.size()));
        const auto first = split.cells.begin() + names;
        split.cells.erase(first, first + static_cast<std::ptrdiff_t>(split.surplus));
    }
    split.cells.resize(count);
    return split;
}

struct ReadNumber {
    double number = 0;
    bool whole = true;  // all of the cell is the number
    bool fits = true;
};

/// The longest number that a cell begins with, as the reader takes it.
ReadNumber NumberIn(std::string_view cell, char column) noexcept {
    ReadNumber read;
    if (cell.size() > 1 && cell.front() == '+' && cell[1] != '-') cell.remove_prefix(1);
    const char* const end = cell.data() + cell.size();
    const auto digits = cell.find_first_not_of("+-.");  // without them "nan" and "inf" would count
    if (digits == std::string_view::npos || cell[digits] < '0' || cell[digits] > '9') return {0, false, true};
    if (column == 'r') {
        const auto [stop, error] = std::from_chars(cell.data(), end, read.number);
        // A number out of range may also be too small: it is read as 0, which is no fault.
        const bool small = cell.find_first_of("eE") != std::string_view::npos
                               ? cell.substr(cell.find_first_of("eE")).substr(1, 1) == "-"
                               : cell[digits] == '0';
        read.fits = error != std::errc::result_out_of_range || small;
        read.whole = stop == end;
        return read;
    }
    std::int32_t whole = 0;
    const auto [stop, error] = std::from_chars(cell.data(), end, whole);
    constexpr int mostOfAByte = std::numeric_limits<std::uint8_t>::max();
    read.fits = error != std::errc::result_out_of_range && (column != 'b' || (whole >= 0 && whole <= mostOfAByte));
    read.whole = stop == end;
    read.number = whole;
    return read;
}

/// Reads a record's fields. @return nothing for a record that the reader leaves out
std::optional<RecordLine> ReadFields(std::string_view text, std::int64_t line, std::string_view columns,
                                     Findings& findings) {
    if (text.ends_with('\r')) text.remove_suffix(1);
    const Cells split = Split(text, columns);
    RecordLine record{line, {split.cells.begin(), split.cells.end()}, {}};
    std::int64_t missing = 0;
    std::size_t i = 0;
    for (const char column : columns) {
        if (column == '-') continue;
        const std::string_view cell = split.cells[i++];
        record.numbers.push_back(0);
        if (!IsNumber(column)) continue;
        const ReadNumber read = NumberIn(cell, column);
        record.numbers.back() = read.number;
        if (cell.empty()) {
            ++missing;
        } else if (!read.fits) {
            findings.Skipped(line, "number-too-large", Quoted(cell) + " is too large: the line is skipped");
            return std::nullopt;
        } else if (!read.whole) {
            findings.Error(line, "not-a-number",
                           Quoted(cell) + " is no number and is read as " + FormatShort(read.number));
        }
    }
    if (missing > 0) {
        findings.Warning(
            line, "missing-fields",
            std::to_string(missing) + " of the " + std::to_string(i) + " fields are missing and are read as 0");
    }
    if (split.surplus > 0) {
        findings.Warning(line, "extra-fields",
                         std::to_string(split.surplus) +
                             " more fields than a line of this section has: a name with blanks is cut to its first "
                             "word, anything else is passed over");
    }
    return record;
}

/// The section that a line opens. A keyword is compared without its last character; of two that fit the longer one
/// counts.
const SectionForm* FindForm(std::string_view line) noexcept {
    const SectionForm* found = nullptr;
    for (const SectionForm& form : forms) {
        if (!line.starts_with(form.keyword.substr(0, form.keyword.size() - 1))) continue;
        if (found == nullptr || form.keyword.size() > found->keyword.size()) found = &form;
    }
    return found;
}

bool IsKeyword(std::string_view line) noexcept {
    return std::any_of(forms.begin(), forms.end(), [&](const SectionForm& it) { return it.keyword == Trim(line); });
}

/// Whether a text is UTF-8 with characters of up to three bytes. The library takes longer ones for another encoding.
bool IsUtf8(std::string_view text) noexcept {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned lead = byte(i);
        if (lead < 0x80U) continue;
        if (lead < 0xC0U || lead >= 0xF0U) return false;
        for (int more = lead < 0xE0U ? 1 : 2; more > 0; --more) {
            if (++i == text.size() || (byte(i) & 0xC0U) != 0x80U) return false;
        }
    }
    return true;
}

/// Walks the lines and sorts them into sections.
class OutlineReader {
public:
    OutlineReader(std::string_view file, Findings& found) : text(file), findings(found) {
        if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    }

    Outline Read() {
        ReadHeader();
        while (at < text.size()) {
            if (const auto line = Next(section == nullptr ? keywordLineBuffer : recordLineBuffer)) Take(*line);
        }
        EndUnknown();
        TellOfBytes();
        return std::move(outline);
    }

private:
    void ReadHeader() {
        const std::string_view first = text.substr(0, text.find('\n'));
        if (Trim(first).empty() || FindForm(first) != nullptr) {
            findings.Warning(1, "no-header",
                             "the first line holds no stake settings: the start mileage is 0, the interval 100 m, the "
                             "prefix K");
            return;
        }
        const auto line = Next(keywordLineBuffer);
        if (line) outline.header = ReadFields(*line, number, headerColumns, findings);
    }

    std::optional<std::string_view> Next(std::size_t buffer) {
        const auto end = text.find('\n', at);
        std::string_view line = text.substr(at, end == std::string_view::npos ? end : end - at);
        ++number;
        if (line.size() >= buffer) {
            findings.Skipped(number, "line-too-long",
                             "a line of " + std::to_string(line.size()) + " bytes, where fewer than " +
                                 std::to_string(buffer) + " are read: the file is read no further");
            at = text.size();
            return std::nullopt;
        }
        at = end == std::string_view::npos ? text.size() : end + 1;
        if (end == std::string_view::npos && !Trim(line).empty()) {
            findings.Warning(number, "no-line-end", "the file ends inside this line: something may be cut off");
        }
        if (!IsUtf8(line) && ++foreignLines == 1) firstForeign = number;
        const auto zero = line.find('\0');
        if (zero == std::string_view::npos) return line;
        findings.Warning(number, "zero-byte", "the line holds a zero byte: what follows it is passed over");
        return line.substr(0, zero);
    }

    void Take(std::string_view line) {
        if (section == nullptr) {
            TakeOutside(line);
        } else if (line.size() < shortestRecord) {
            section = nullptr;
        } else if (IsKeyword(line)) {
            findings.Error(number, "swallowed-section",
                           "no empty line before " + Quoted(Trim(line)) +
                               ": this line and all that follow are read as records of " + Quoted(section->keyword));
            Open(*FindForm(Trim(line)));
        } else if (auto record = ReadFields(line, number, section->columns, findings)) {
            outline.sections.back().records.push_back(std::move(*record));
        }
    }

    void TakeOutside(std::string_view line) {
        const SectionForm* form = FindForm(line);
        if (form != nullptr) {
            EndUnknown();
            if (Trim(line) != form->keyword) {
                findings.Note(number, "keyword-spelling", Quoted(Trim(line)) + " is read as " + Quoted(form->keyword));
            }
            Open(*form);
        } else if (Trim(line).empty()) {
            EndUnknown();
        } else if (++unknownLines == 1) {
            firstUnknown = number;
            unknownName = Tokens(line).front();
        }
    }

    void Open(const SectionForm& form) {
        if (const std::int64_t first = outline.LineOf(form.keyword); first > 0) {
            findings.Warning(number, "repeated-section",
                             Quoted(form.keyword) + " stands in line " + std::to_string(first) +
                                 " already: these records are added to those");
        }
        section = &form;
        outline.sections.push_back({form.keyword, number, {}});
    }

    void EndUnknown() {
        if (unknownLines > 0) {
            findings.Warning(firstUnknown, "unknown-section",
                             Quoted(unknownName) + " opens no section that is read: " + Lines(unknownLines) +
                                 " passed over, which a save drops");
        }
        unknownLines = 0;
    }

    void TellOfBytes() {
        if (foreignLines == 0) return;
        findings.Note(firstForeign, "names-not-utf8",
                      Lines(foreignLines) +
                          " with bytes that are no UTF-8: all names are taken for text in the local code page, and "
                          "saved as UTF-8");
    }

    std::string_view text;
    Findings& findings;
    Outline outline;
    std::size_t at = 0;
    std::int64_t number = 0;  // of the line that Next() has returned last
    const SectionForm* section = nullptr;
    std::int64_t unknownLines = 0, firstUnknown = 0;
    std::string unknownName;
    std::int64_t foreignLines = 0, firstForeign = 0;
};

}  // namespace

std::span<const SectionForm> SectionForms() noexcept { return forms; }

std::vector<RecordLine> Outline::Records(std::string_view keyword) const {
    std::vector<RecordLine> records;
    for (const SectionLines& it : sections) {
        if (it.keyword == keyword) records.insert(records.end(), it.records.begin(), it.records.end());
    }
    return records;
}

std::int64_t Outline::LineOf(std::string_view keyword) const noexcept {
    const auto found =
        std::find_if(sections.begin(), sections.end(), [&](const SectionLines& it) { return it.keyword == keyword; });
    return found == sections.end() ? 0 : found->line;
}

Outline ReadOutline(std::string_view text, Findings& findings) { return OutlineReader(text, findings).Read(); }

}  // namespace kesto::host
