#include "io/project_sections.hpp"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "alignment/element_generation.hpp"
#include "io/record_layouts.hpp"
#include "io/section_records.hpp"

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
void ReadRecords(Reading& reading) {
    const LineShape shape = ShapeOf<Line>();
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        typename Line::Record record = Line::New();
        if (!reading.lines.Parse<Line>(shape, *line, record) || !Line::Insert(reading.road, record)) {
            reading.lines.Skip(listOf<typename Line::Record>);
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

void ReadNothing(Reading&) noexcept {}

void ReadBrokenChains(Reading& reading) {
    reading.ReleaseChain();
    ReadRecords<BrokenChainLine>(reading);
}

template <class Line, DesignMode mode>
void ReadAlignment(Reading& reading) {
    reading.ReleaseChain();
    reading.road.settings.roadDesignMode = static_cast<std::int32_t>(mode);
    ReadRecords<Line>(reading);
}

// ------------------------------------------------------------------------------------------------------------ profile

template <CurveMode mode>
bool HasCurvesInMode(RoadDesign& road) noexcept {
    return HasRecords<ProfilePoint>(road) && road.settings.verticalCurveMode == static_cast<std::int32_t>(mode);
}

template <class Line, CurveMode mode>
void ReadProfile(Reading& reading) {
    reading.KeepChain();
    reading.road.settings.verticalCurveMode = static_cast<std::int32_t>(mode);
    const LineShape shape = ShapeOf<Line>();
    std::vector<VerticalCurve> points;
    std::vector<std::int32_t> lineNumbers;
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        VerticalCurve point = Line::New();
        if (reading.lines.Parse<Line>(shape, *line, point)) {
            points.push_back(point);
            lineNumbers.push_back(reading.lines.LineNumber());
        } else {
            reading.lines.Skip(KESTO_LIST_VERTICAL_CURVES);
        }
    }
    const std::vector<bool> inserted = InsertEachVerticalCurve(reading.road, points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!inserted[i]) reading.lines.Skip(KESTO_LIST_VERTICAL_CURVES, lineNumbers[i]);
    }
}

// clang-format off
constexpr std::array sections{
    Section{"ExtInfo", Always, WriteSettings, ReadSettings},
    Section{"Intersection", HasRecords<IntersectionLine>, WriteRecords<IntersectionLine>, ReadAlignment<IntersectionLine, DesignMode::Intersections>},
    Section{"Coordinate", HasPointsInMode<DesignMode::Coordinates>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::Coordinates>},
    Section{"BrokenLine", HasPointsInMode<DesignMode::BrokenLine>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::BrokenLine>},
    Section{"", HasIdlePoints, WriteRecords<CoordinateLine>, ReadNothing},
    Section{"Element", HasElements, WriteRecords<ElementLine>, ReadAlignment<ElementLine, DesignMode::Elements>},
    Section{"BrokenChain", HasRecords<BrokenChainLine>, WriteRecords<BrokenChainLine>, ReadBrokenChains},
    Section{"VerticalCurve", HasCurvesInMode<CurveMode::Radius>, WriteRecords<RadiusCurveLine>, ReadProfile<RadiusCurveLine, CurveMode::Radius>},
    Section{"VerticalCurve_SECONDPARA", HasCurvesInMode<CurveMode::GivenEnds>, WriteRecords<GivenEndsCurveLine>, ReadProfile<GivenEndsCurveLine, CurveMode::GivenEnds>},
    Section{"StandardSectionRight", HasPlates<Side::Right>, WritePlates<Side::Right>, ReadPlates<Side::Right>},
    Section{"StandardSectionLeft", HasPlates<Side::Left>, WritePlates<Side::Left>, ReadPlates<Side::Left>},
    Section{"WidenSectionRight", HasChanges<Side::Right, ChangeKind::Widening>, WriteChanges<Side::Right, ChangeKind::Widening>, ReadChanges<Side::Right, ChangeKind::Widening>, true},
    Section{"WidenRightType", HasChanges<Side::Right, ChangeKind::Widening>, WriteTypes<Side::Right, ChangeKind::Widening>, ReadTypes<Side::Right, ChangeKind::Widening>},
    Section{"WidenSectionLeft", HasChanges<Side::Left, ChangeKind::Widening>, WriteChanges<Side::Left, ChangeKind::Widening>, ReadChanges<Side::Left, ChangeKind::Widening>, true},
    Section{"WidenLeftType", HasChanges<Side::Left, ChangeKind::Widening>, WriteTypes<Side::Left, ChangeKind::Widening>, ReadTypes<Side::Left, ChangeKind::Widening>},
    Section{"HeightenSectionRight", HasChanges<Side::Right, ChangeKind::Heightening>, WriteChanges<Side::Right, ChangeKind::Heightening>, ReadChanges<Side::Right, ChangeKind::Heightening>, true},
    Section{"HeightRightType", HasChanges<Side::Right, ChangeKind::Heightening>, WriteTypes<Side::Right, ChangeKind::Heightening>, ReadTypes<Side::Right, ChangeKind::Heightening>},
    Section{"HeightenSectionLeft", HasChanges<Side::Left, ChangeKind::Heightening>, WriteChanges<Side::Left, ChangeKind::Heightening>, ReadChanges<Side::Left, ChangeKind::Heightening>, true},
    Section{"HeightLeftType", HasChanges<Side::Left, ChangeKind::Heightening>, WriteTypes<Side::Left, ChangeKind::Heightening>, ReadTypes<Side::Left, ChangeKind::Heightening>},
    Section{"roadSectionMileage", HasMileages, WriteMileages, ReadMileages, false, true},
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
