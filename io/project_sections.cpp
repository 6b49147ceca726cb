#include "io/project_sections.hpp"

#include <array>
#include <optional>
#include <string>

#include "alignment/element_generation.hpp"
#include "io/record_layouts.hpp"

namespace kesto {

namespace {

// ------------------------------------------------------------------------------------------------ sections of records

template <class Line>
bool HasRecords(RoadDesign& road) noexcept {
    return (road.*Line::member).Count() > 0;
}

template <class Line>
void WriteRecords(RoadDesign& road, LineWriter& lines) {
    for (const auto& record : (road.*Line::member).Records()) {
        Line::Fields(lines, record);
        lines.End();
    }
}

template <class Line>
void ReadRecords(RoadDesign& road, RecordLines& records) {
    const LineShape shape = ShapeOf<Line>();
    while (const std::optional<std::string_view> line = records.NextRecord()) {
        typename Line::Record record = Line::New();
        if (!records.Parse<Line>(shape, *line, record) || !Line::Insert(road, record)) {
            records.Skip(listOf<typename Line::Record>);
        }
    }
}

// ------------------------------------------------------------------------------------------------------------ ExtInfo

/// A setting behind its name.
struct NamedSetting {
    std::string name;
    std::int32_t value;
};

struct SettingLine {
    using Record = NamedSetting;
    static void Fields(auto& line, auto& setting) { line.Text(setting.name).Integer(setting.value, wideColumn); }
};

constexpr const char* sideSlopeModeName = "SideSlopeMode";
constexpr const char* changeSectionName = "ChangeSection";
constexpr const char* sectionModeName = "SectionMode";
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
void ReadSettings(RoadDesign& road, RecordLines& records) {
    const LineShape shape = ShapeOf<SettingLine>();
    while (const std::optional<std::string_view> line = records.NextRecord()) {
        NamedSetting setting{};
        if (!records.Parse<SettingLine>(shape, *line, setting)) {
            records.Skip(KESTO_LIST_NONE);
        } else if (setting.name == sideSlopeModeName) {
            road.settings.sideSlopeMode = setting.value;
        } else if (setting.name == sectionModeName) {
            road.settings.sectionMode = setting.value;
        }
    }
}

// --------------------------------------------------------------------------- alignment: one of its forms is written

bool HasPoints(RoadDesign& road) noexcept {
    return !HasRecords<IntersectionLine>(road) && HasRecords<CoordinateLine>(road);
}

bool HasElements(RoadDesign& road) noexcept {
    return !HasRecords<IntersectionLine>(road) && !HasPoints(road) && HasRecords<ElementLine>(road);
}

template <DesignMode mode>
bool HasPointsInMode(RoadDesign& road) noexcept {
    return HasPoints(road) && road.settings.roadDesignMode == static_cast<std::int32_t>(mode);
}

/// Points of a road whose design mode makes nothing of them.
bool HasIdlePoints(RoadDesign& road) noexcept {
    return HasPoints(road) && !HasPointsInMode<DesignMode::Coordinates>(road) &&
           !HasPointsInMode<DesignMode::BrokenLine>(road);
}

void ReadNothing(RoadDesign&, RecordLines&) noexcept {}

template <class Line, DesignMode mode>
void ReadAlignment(RoadDesign& road, RecordLines& records) {
    road.settings.roadDesignMode = static_cast<std::int32_t>(mode);
    ReadRecords<Line>(road, records);
}

// ------------------------------------------------------------------------------------------------------------ profile

template <CurveMode mode>
bool HasCurvesInMode(RoadDesign& road) noexcept {
    return HasRecords<ProfilePoint>(road) && road.settings.verticalCurveMode == static_cast<std::int32_t>(mode);
}

template <class Line, CurveMode mode>
void ReadProfile(RoadDesign& road, RecordLines& records) {
    road.settings.verticalCurveMode = static_cast<std::int32_t>(mode);
    ReadRecords<Line>(road, records);
}

// clang-format off
constexpr std::array sections{
    Section{"ExtInfo", Always, WriteSettings, ReadSettings},
    Section{"Intersection", HasRecords<IntersectionLine>, WriteRecords<IntersectionLine>, ReadAlignment<IntersectionLine, DesignMode::Intersections>},
    Section{"Coordinate", HasPointsInMode<DesignMode::Coordinates>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::Coordinates>},
    Section{"BrokenLine", HasPointsInMode<DesignMode::BrokenLine>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::BrokenLine>},
    Section{"", HasIdlePoints, WriteRecords<CoordinateLine>, ReadNothing},
    Section{"Element", HasElements, WriteRecords<ElementLine>, ReadAlignment<ElementLine, DesignMode::Elements>},
    Section{"BrokenChain", HasRecords<BrokenChainLine>, WriteRecords<BrokenChainLine>, ReadRecords<BrokenChainLine>},
    Section{"VerticalCurve", HasCurvesInMode<CurveMode::Radius>, WriteRecords<RadiusCurveLine>, ReadProfile<RadiusCurveLine, CurveMode::Radius>},
    Section{"VerticalCurve_SECONDPARA", HasCurvesInMode<CurveMode::GivenEnds>, WriteRecords<GivenEndsCurveLine>, ReadProfile<GivenEndsCurveLine, CurveMode::GivenEnds>},
};
// clang-format on

/// The part of a keyword that a line is compared with.
std::string_view Recognised(const Section& section) noexcept {
    return section.keyword.substr(0, section.keyword.size() - 1);
}

}  // namespace

std::span<const Section> Sections() noexcept { return sections; }

const Section* FindSection(std::string_view line) noexcept {
    const Section* found = nullptr;
    for (const Section& section : sections) {
        if (section.keyword.empty() || !line.starts_with(Recognised(section))) continue;
        if (found == nullptr || section.keyword.size() > found->keyword.size()) found = &section;
    }
    return found;
}

}  // namespace kesto
