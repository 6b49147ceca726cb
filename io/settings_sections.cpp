// The section of settings in the project file.
#include <array>
#include <optional>
#include <string>

#include "io/section.hpp"

namespace kesto {

namespace {

/// A setting behind its name.
struct NamedSetting {
    std::string name;
    std::int32_t value;
};

struct SettingLine {
    using Record = NamedSetting;
    static constexpr auto fields = std::to_array<std::string_view>(
        {"name of the setting: SideSlopeMode, ChangeSection (always 1) or SectionMode; others are passed over",
         "value"});
    static void Fields(auto& line, auto& setting) { line.Text(setting.name).Integer(setting.value, wideColumn); }
};

constexpr const char* sideSlopeModeName = "SideSlopeMode";
constexpr const char* changeSectionName = "ChangeSection";
constexpr const char* sectionModeName = "SectionMode";
constexpr std::int32_t lastSectionMode = 1;
constexpr std::int32_t changeSectionLayout = 1;  // marks lines with a flag behind the occurrence

bool Always(RoadDesign&) noexcept { return true; }

void WriteSettings(RoadDesign& road, LineWriter& lines) {
    for (const NamedSetting& setting : {NamedSetting{sideSlopeModeName, road.settings.sideSlopeMode},
                                        NamedSetting{changeSectionName, changeSectionLayout},
                                        NamedSetting{sectionModeName, road.settings.sectionMode}}) {
        SettingLine::Fields(lines, setting);
        lines.End();
    }
}

/// Settings of other names are passed over: a later version may have more of them.
void ReadSettings(Reading& reading) {
    const LineShape shape = ShapeOf<SettingLine>();
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        NamedSetting setting{};
        if (!reading.lines.Parse<SettingLine>(shape, *line, setting)) {
            reading.lines.Skip(KESTO_LIST_NONE);
        } else if (setting.name == sideSlopeModeName) {
            reading.road.settings.sideSlopeMode = setting.value;
        } else if (setting.name == sectionModeName) {
            reading.road.settings.sectionMode = setting.value;
            if (setting.value < 0 || setting.value > lastSectionMode) {
                reading.lines.Tell(reading.lines.Finding(KESTO_READING_VALUE_UNKNOWN, sectionModeName, setting.value));
            }
        }
    }
}

constexpr std::array sections{Section{"ExtInfo", Always, WriteSettings, ReadSettings, DescriptionOf<SettingLine>}};

}  // namespace

std::span<const Section> SettingsSections() noexcept { return sections; }

}  // namespace kesto
