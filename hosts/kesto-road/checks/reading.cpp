// Tells what the opening of the file has skipped or doubted.
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

#include "checks/checked.hpp"
#include "road/cross_section.hpp"
#include "road/failure_text.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr std::string_view settingsSection = "ExtInfo";
constexpr std::string_view profileSections = "VerticalCurve";
constexpr double fullCircle = 360;  // degrees

std::string Whole(double number) { return FormatReal(number, 0); }
std::string Counted(double count, const std::string& what) {
    return Whole(count) + " " + what + (count > 1 ? "s" : "");
}

/// A text of the file between quotes. Control characters become question marks.
std::string Quoted(const char (&text)[32]) {
    constexpr unsigned char lastControl = 0x7F;
    const std::size_t length = strnlen(text, sizeof text);
    std::string quoted(1, '\'');
    for (const char byte : std::string_view(text, length)) {
        const auto code = static_cast<unsigned char>(byte);
        quoted += code < ' ' || code == lastControl ? '?' : byte;
    }
    if (length + 1 == sizeof text) quoted += "...";  // there was no room for more
    return quoted += '\'';
}

/// Tells of lines as such. @return false for a finding of something else
bool TellOfLine(const ReadingFinding& it, Findings& findings) {
    switch (it.reason) {
        case KESTO_READING_NO_HEADER:
            findings.Warning(it.line, "no-header",
                             "the first line holds no stake settings: the start mileage is 0, the interval 100 m, the "
                             "prefix K");
            return true;
        case KESTO_READING_LINE_TOO_LONG:
            findings.Error(it.line, "line-too-long",
                           "a line of " + Whole(it.value) + " bytes, where fewer than " + Whole(it.bound) +
                               " are read: the file is read no further");
            return true;
        case KESTO_READING_LINE_TOO_SHORT:
            findings.Warning(it.line, "line-too-short",
                             "a line of one character ends the section, as an empty one does, and is passed over");
            return true;
        case KESTO_READING_NO_LINE_END:
            findings.Warning(it.line, "no-line-end", "the file ends inside this line: something may be cut off");
            return true;
        case KESTO_READING_ZERO_BYTE:
            findings.Warning(it.line, "zero-byte", "the line holds a zero byte: what follows it is passed over");
            return true;
        case KESTO_READING_NOT_UTF8:
            findings.Note(it.line, "names-not-utf8",
                          Counted(it.value, "line") +
                              " with bytes that are no UTF-8: all names are taken for text in the local code page, and "
                              "saved as UTF-8");
            return true;
        default: return false;
    }
}

/// Tells of sections. @return false for a finding of something else
bool TellOfSection(const ReadingFinding& it, Findings& findings) {
    const std::string section = Quoted(it.section);
    const std::string other = std::to_string(it.otherLine);
    switch (it.reason) {
        case KESTO_READING_UNKNOWN_SECTION:
            findings.Warning(it.line, "unknown-section",
                             Quoted(it.text) + " opens no section that is read: " + Counted(it.value, "line") +
                                 " passed over, which a save drops");
            return true;
        case KESTO_READING_KEYWORD_SPELLING:
            findings.Note(it.line, "keyword-spelling", Quoted(it.text) + " is read as " + section);
            return true;
        case KESTO_READING_SECTION_REPEATED:
            findings.Warning(it.line, "repeated-section",
                             section + " stands in line " + other + " already: these records are added to those");
            return true;
        case KESTO_READING_SECTION_SWALLOWED:
            findings.Error(it.line, "swallowed-section",
                           "no empty line before " + Quoted(it.text) + ": the lines up to " + other +
                               " are read as records of " + section);
            return true;
        case KESTO_READING_SECOND_FORM:
            if (std::string_view(it.section).starts_with(profileSections)) {
                findings.Error(it.line, severalProfiles,
                               "the file gives vertical curves by their radii and by their ends: the points of both "
                               "make one profile, which the last section's rule governs");
            } else {
                findings.Error(it.line, "several-alignments",
                               "the file holds the alignment as " + Quoted(it.text) + " and as " + section +
                                   ": the last one holds, and a save keeps one only");
            }
            return true;
        case KESTO_READING_TYPES_MISSING:
            findings.Warning(it.line, "type-count",
                             Whole(it.value) + " transition types for " + Counted(it.bound, "change section") +
                                 ": the transitions without one are linear");
            return true;
        default: return false;
    }
}

void TellOfRaised(std::int64_t line, double interval, double raised, Findings& findings) {
    findings.Warning(
        line, "stake-interval",
        "the stake interval of " + FormatShort(interval) + " m is raised to " + FormatShort(raised) + " m");
}

/// Tells of a value that the library changes, or takes although it has no meaning.
void TellOfValue(const ReadingFinding& it, Findings& findings) {
    if (it.reason == KESTO_READING_VALUE_RAISED) {
        TellOfRaised(it.line, it.value, it.bound, findings);
    } else if (it.reason == KESTO_READING_VALUE_DIFFERS) {
        if (!angleGrades.Of(std::fabs(std::remainder(it.bound - it.value, fullCircle)))) return;
        findings.Warning(it.line, "azimuth-differs",
                         "the azimuth stands twice in the line, as " + Degrees(it.value) + " and as " +
                             Degrees(it.bound) + ": the first one holds");
    } else if (it.section == settingsSection) {
        findings.Warning(it.line, "section-mode",
                         "there is no section mode " + Whole(it.value) + ": the road has no cross sections in it");
    } else {
        findings.Warning(
            it.line, "transition-type",
            "transition type " + Whole(it.value) + " has no formula: the plates keep their standard values there");
    }
}

/// Tells of the fields of a line.
void TellOfField(const ReadingFinding& it, Findings& findings) {
    switch (it.reason) {
        case KESTO_READING_NOT_A_NUMBER:
            findings.Error(it.line, "not-a-number",
                           Quoted(it.text) + " is no number and is read as " + FormatShort(it.value));
            break;
        case KESTO_READING_NUMBER_TOO_LARGE:
            findings.Error(it.line, "number-too-large", Quoted(it.text) + " is too large: the line is skipped");
            break;
        case KESTO_READING_FIELDS_MISSING:
            findings.Warning(it.line, "missing-fields",
                             Whole(it.value) + " of the " + Whole(it.bound) + " fields are missing and are read as 0");
            break;
        case KESTO_READING_FIELDS_EXTRA:
            findings.Warning(it.line, "extra-fields",
                             Whole(it.value) +
                                 " more fields than a line of this section has: a name with blanks is cut to its first "
                                 "word, anything else is passed over");
            break;
        case KESTO_READING_VALUE_RAISED:
        case KESTO_READING_VALUE_DIFFERS:
        case KESTO_READING_VALUE_UNKNOWN: TellOfValue(it, findings); break;
        default: break;
    }
}

/// Line that stands behind a change section that needs it: of the alignment or of a plate of its side; 0 for none.
std::int64_t NeededBehind(const Checked& checked, const ReadingFinding& it) {
    if (it.status != KESTO_VALUE_COUNT_DIFFERS) {
        const std::int64_t alignment = checked.AlignmentLine(OpenedFile::keyword);
        if (alignment > it.line) return alignment;
    }
    const std::int32_t side = std::string_view(it.section).ends_with("Right") ? 1 : 0;
    const std::int32_t last = GetStandardSectionPlateCount(checked.road, side) - 1;
    const std::int64_t plate = checked.file.LineOf(KESTO_LIST_PLATES, side, last);
    return plate > it.line ? plate : 0;
}

void TellOfRefusedChange(const Checked& checked, const ReadingFinding& it, const std::string& why) {
    Findings& findings = checked.findings;
    if (it.status == KESTO_INDEX_OUT_OF_RANGE) {
        findings.Error(it.line, "type-count",
                       Quoted(it.section) + " has more lines than the " + Counted(it.bound, "change section") +
                           ": this line is skipped");
    } else if (!checked.line) {
        return;  // without a road no change section has a place, and that there is no road is an error already
    } else if (const std::int64_t needed = NeededBehind(checked, it); needed > 0) {
        findings.Error(it.line, "section-order",
                       "the change section stands before line " + std::to_string(needed) +
                           ", which belongs to the alignment or is a plate of its side and without which it cannot be "
                           "read: it is skipped");
    } else if (it.status == KESTO_VALUE_COUNT_DIFFERS) {
        findings.Error(it.line, "value-count",
                       "the change section has " + Counted(it.value, "value") + ", its side " +
                           Counted(it.bound, "plate") + ": it is skipped");
    } else {
        findings.Error(it.line, "change-off-road", "the change section is not on the road and is skipped: " + why);
    }
}

void TellOfRefused(const Checked& checked, const ReadingFinding& it) {
    const Failure failure{it.status, it.list, it.record, it.limit, it.value, it.bound, it.excess};
    const std::string why = DescribeFailure(checked.road, it.status, failure);
    if (it.status == KESTO_DUPLICATE_MILEAGE) {
        const bool isChain = it.list == KESTO_LIST_BROKEN_CHAINS;
        const bool isPoint = it.list == KESTO_LIST_VERTICAL_CURVES;
        checked.findings.Error(it.line,
                               isChain   ? "chain-repeated"
                               : isPoint ? "grade-point-repeated"
                                         : "change-repeated",
                               "line " + std::to_string(it.otherLine) + " has a " +
                                   (isChain   ? "broken chain at this mileage"
                                    : isPoint ? "grade-change point at this place"
                                              : "change section at this place") +
                                   " already: this one is skipped");
    } else if (it.list == KESTO_LIST_CHANGE_SECTIONS) {
        TellOfRefusedChange(checked, it, why);
    } else {
        checked.findings.Error(it.line, "skipped-record", "the record is refused and skipped: " + why);
    }
}

}  // namespace

void TellOfReading(const Checked& checked) {
    Findings& findings = checked.findings;
    for (const ReadingFinding& it : checked.file.Told()) {
        if (TellOfLine(it, findings) || TellOfSection(it, findings)) continue;
        if (checked.file.IsSwallowed(it.line)) continue;  // what is read as another record says nothing of itself
        if (it.reason == KESTO_READING_RECORD_REFUSED) {
            TellOfRefused(checked, it);
        } else {
            TellOfField(it, findings);
        }
    }
    double interval = 0;
    GetMakeStakeInfo(checked.road, &interval);
    const double read = checked.file.StakeInterval();
    if (interval > read) TellOfRaised(1, read, interval, findings);  // the design run raises it on long roads
    if (checked.file.UntoldCount() == 0) return;
    findings.Error(0, "more-findings",
                   Counted(checked.file.UntoldCount(), "more fault") +
                       " of single lines that are not listed: correct the others first");
}

}  // namespace kesto::host
