/// The lines of a project file: sections and records with their line numbers, read as the library reads them. The
/// library gives the records, but not the lines that they come from.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "checks/findings.hpp"

namespace kesto::host {

/// A section that the reader knows, and the columns of its lines, a letter each: r real, i integer, b integer of one
/// byte, t text (18 characters wide), s integer (4), n name (32); "-" is a blank between two columns.
struct SectionForm {
    std::string_view keyword;
    std::string_view columns;
};

/// The sections of the alignment, by the road design mode that they set.
inline constexpr std::array<std::string_view, 4> alignmentKeywords{"Intersection", "Element", "Coordinate",
                                                                   "BrokenLine"};

/// All sections that the reader knows.
std::span<const SectionForm> SectionForms() noexcept;

/// A record line of a section; one cell and one number for each column.
struct RecordLine {
    std::int64_t line = 0;
    std::vector<std::string> cells;
    std::vector<double> numbers;  ///< 0 in columns of text
};

struct SectionLines {
    std::string_view keyword;
    std::int64_t line;  ///< of the keyword
    std::vector<RecordLine> records;
};

struct Outline {
    std::optional<RecordLine> header;
    std::vector<SectionLines> sections;

    /// The records of all sections of a keyword, without those that hold a number too large to be read.
    [[nodiscard]] std::vector<RecordLine> Records(std::string_view keyword) const;
    /// Line of the first section of a keyword; 0 where there is none.
    [[nodiscard]] std::int64_t LineOf(std::string_view keyword) const noexcept;
};

/// Reads a file's text. Adds to the findings what is wrong with single lines: unknown and repeated sections, fields
/// that are missing or are not numbers, lines that end the reading.
Outline ReadOutline(std::string_view text, Findings& findings);

}  // namespace kesto::host
