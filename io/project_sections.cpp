#include "io/project_sections.hpp"

#include <algorithm>
#include <array>

namespace kesto {

namespace {

/// The part of a keyword that a line is compared with.
std::string_view Recognised(const Section& section) noexcept {
    return section.keyword.substr(0, section.keyword.size() - 1);
}

}  // namespace

std::span<const std::span<const Section>> SectionsByRoom() noexcept {
    static const std::array rooms{SettingsSections(), AlignmentSections(), ProfileSections(), CrossSectionSections()};
    return rooms;
}

const Section* FindSection(std::string_view line) noexcept {
    const Section* found = nullptr;
    for (const std::span<const Section> room : SectionsByRoom()) {
        for (const Section& section : room) {
            if (section.keyword.empty() || !line.starts_with(Recognised(section))) continue;
            if (found == nullptr || section.keyword.size() > found->keyword.size()) found = &section;
        }
    }
    return found;
}

bool IsKeyword(std::string_view word) noexcept {
    return !word.empty() && std::ranges::any_of(SectionsByRoom(), [&](std::span<const Section> room) {
        return std::ranges::find(room, word, &Section::keyword) != room.end();
    });
}

}  // namespace kesto
