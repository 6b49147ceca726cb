/// The sections of the project file: one table that the reader and the writer walk both.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "io/section.hpp"

namespace kesto {

/// All sections in the order of the file: a span from each room. A new room's is one more in the list.
std::span<const std::span<const Section>> SectionsByRoom() noexcept;

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
