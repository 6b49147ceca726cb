/// The sections of the project file: one table that the reader and the writer walk both.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "core/road_design.hpp"
#include "io/line_format.hpp"
#include "io/reading.hpp"
#include "io/record_lines.hpp"

namespace kesto {

/// What a section is one form of: a file that has two forms of one thing contradicts itself.
enum class SectionForm { Single, Alignment, Profile };

/// A section is a row: a new one is one more row with its functions.
struct Section {
    std::string_view keyword;                            // its line; empty: written without one, never recognised
    bool (*present)(RoadDesign& road);                   // whether the road has this section
    void (*write)(RoadDesign& road, LineWriter& lines);  // writes the lines behind the keyword
    void (*read)(Reading& reading);                      // reads records until the section ends
    LineDescription (*describe)();                       // what the documentation tells of its lines
    SectionForm form = SectionForm::Single;
    bool byStake = false;   // written from a road whose chain is the one that the file gives: it may be made current
    bool roadOnly = false;  // never written to a water project
};

/// All sections in the order of the file.
std::span<const Section> Sections() noexcept;

/// The section that a line outside the sections opens. A keyword is compared without its last character; where two
/// keywords match, the longer one is meant.
/// @return null for a line that opens none
const Section* FindSection(std::string_view line) noexcept;

/// Whether a word is a section's keyword as the writer spells it.
bool IsKeyword(std::string_view word) noexcept;

/// The line in front of the sections: the settings of the stakes.
struct HeaderLine {
    using Record = Settings;
    static constexpr auto fields = std::to_array<std::string_view>(
        {"start mileage (m)", "stake interval (m)", "make-stake type: 0 whole multiples, 1 from each element's start",
         "prefix of stakes"});
    static void Fields(auto& line, auto& settings) {
        line.Real(settings.startMileage).Gap().Real(settings.mileageInterval).Gap();
        line.Integer(settings.makeStakeType, wideColumn).Gap().Text(settings.stakePrefix);
    }
};

}  // namespace kesto
