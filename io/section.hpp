/// A section of the project file, and the spans of sections that the rooms give.
#pragma once

#include <span>
#include <string_view>

#include "core/road_design.hpp"
#include "io/line_format.hpp"
#include "io/reading.hpp"
#include "io/record_lines.hpp"

namespace kesto {

/// What a section is one form of: a file that has two forms of one thing contradicts itself.
enum class SectionForm { Single, Alignment, Profile };

inline constexpr std::string_view oneLine = "one line";

/// A section is a row: a new one is one more row with its functions in the table of its room.
struct Section {
    std::string_view keyword;                            // its line; empty: written without one, never recognised
    bool (*present)(RoadDesign& road);                   // whether the road has this section
    void (*write)(RoadDesign& road, LineWriter& lines);  // writes the lines behind the keyword
    void (*read)(Reading& reading);                      // reads records until the section ends
    LineDescription (*describe)();                       // what the documentation tells of its lines
    std::string_view linesOfRecord = oneLine;            // how many lines a record takes, for the documentation
    SectionForm form = SectionForm::Single;
    bool byStake = false;   // written from a road whose chain is the one that the file gives: it may be made current
    bool roadOnly = false;  // never written to a water project
};

// The sections of each room, in the order of the file.
std::span<const Section> SettingsSections() noexcept;
std::span<const Section> AlignmentSections() noexcept;
std::span<const Section> ProfileSections() noexcept;
std::span<const Section> CrossSectionSections() noexcept;

}  // namespace kesto
