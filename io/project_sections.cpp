#include "io/project_sections.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "alignment/element_generation.hpp"
#include "io/record_layouts.hpp"
#include "io/section_records.hpp"
#include "section/plates.hpp"

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
    constexpr KestoList list = listOf<typename Line::Record>;
    const LineShape shape = ShapeOf<Line>();
    (reading.road.*Line::member).Reserve(reading.lines.MostRecords(shape));
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(list);
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        typename Line::Record record = Line::New();
        if (!reading.lines.Parse<Line>(shape, *line, record)) {
            reading.lines.Skip(list);
        } else if (const Outcome stored = Line::Insert(reading.road, record); !stored) {
            reading.Refuse({list, 0}, reading.lines.LineNumber(), stored.failure(), Line::Order(record));
        } else {
            placed.push_back({Line::Order(record), reading.lines.LineNumber()});
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
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(KESTO_LIST_VERTICAL_CURVES);
    const std::vector<bool> inserted = InsertEachVerticalCurve(reading.road, points);
    const bool built = static_cast<bool>(EnsureCurrent(reading.road));
    std::vector<double> places;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const StakeMileage stake{points[i].mileage, points[i].occurrence};
        places.push_back(built ? ProfileMileage(reading.road, stake) : stake.mileage);
        if (inserted[i]) placed.push_back({places[i], lineNumbers[i]});
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (inserted[i]) continue;
        // A file holds no number that is not finite, so nothing but a point at the same place can be the reason.
        reading.Refuse({KESTO_LIST_VERTICAL_CURVES, 0}, lineNumbers[i],
                       FailValue(KESTO_DUPLICATE_MILEAGE, points[i].mileage), places[i]);
    }
}

// --------------------------------------------------------------- sections of one side, or of one table of a side

template <Side side>
bool HasPlatesOf(RoadDesign& road) noexcept {
    return HasPlates(road, static_cast<std::int32_t>(side));
}

template <Side side>
void WritePlatesOf(RoadDesign& road, LineWriter& lines) {
    WritePlates(road, lines, static_cast<std::int32_t>(side));
}

template <Side side>
void ReadPlatesOf(Reading& reading) {
    ReadPlates(reading, static_cast<std::int32_t>(side));
}

template <Side side, ChangeKind kind>
inline constexpr ChangeTable tableOf{static_cast<std::int32_t>(side), static_cast<std::int32_t>(kind)};

template <const ChangeTable& which>
bool HasChangesOf(RoadDesign& road) noexcept {
    return HasChanges(road, which);
}

template <const ChangeTable& which, void write(RoadDesign&, LineWriter&, ChangeTable)>
void WriteOf(RoadDesign& road, LineWriter& lines) {
    write(road, lines, which);
}

template <const ChangeTable& which, void read(Reading&, ChangeTable)>
void ReadOf(Reading& reading) {
    read(reading, which);
}

/// The change sections of a table.
template <Side side, ChangeKind kind>
constexpr Section ChangesSection(std::string_view keyword) noexcept {
    constexpr const ChangeTable& which = tableOf<side, kind>;
    return {keyword,
            HasChangesOf<which>,
            WriteOf<which, WriteChanges>,
            ReadOf<which, ReadChanges>,
            DescribeChanges,
            SectionForm::Single,
            true};
}

/// Their transition types.
template <Side side, ChangeKind kind>
constexpr Section TypesSection(std::string_view keyword) noexcept {
    constexpr const ChangeTable& which = tableOf<side, kind>;
    return {keyword, HasChangesOf<which>, WriteOf<which, WriteTypes>, ReadOf<which, ReadTypes>, DescribeTypes};
}

template <Side side>
constexpr Section PlatesSection(std::string_view keyword) noexcept {
    return {keyword, HasPlatesOf<side>, WritePlatesOf<side>, ReadPlatesOf<side>, DescribePlates};
}

// clang-format off
constexpr std::array sections{
    Section{"ExtInfo", Always, WriteSettings, ReadSettings, DescriptionOf<SettingLine>},
    Section{"Intersection", HasRecords<IntersectionLine>, WriteRecords<IntersectionLine>, ReadAlignment<IntersectionLine, DesignMode::Intersections>, DescriptionOf<IntersectionLine>, SectionForm::Alignment},
    Section{"Coordinate", HasPointsInMode<DesignMode::Coordinates>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::Coordinates>, DescriptionOf<CoordinateLine>, SectionForm::Alignment},
    Section{"BrokenLine", HasPointsInMode<DesignMode::BrokenLine>, WriteRecords<CoordinateLine>, ReadAlignment<CoordinateLine, DesignMode::BrokenLine>, DescriptionOf<CoordinateLine>, SectionForm::Alignment},
    Section{"", HasIdlePoints, WriteRecords<CoordinateLine>, ReadNothing, DescriptionOf<CoordinateLine>},
    Section{"Element", HasElements, WriteRecords<ElementLine>, ReadAlignment<ElementLine, DesignMode::Elements>, DescriptionOf<ElementLine>, SectionForm::Alignment},
    Section{"BrokenChain", HasRecords<BrokenChainLine>, WriteRecords<BrokenChainLine>, ReadBrokenChains, DescriptionOf<BrokenChainLine>},
    Section{"VerticalCurve", HasCurvesInMode<CurveMode::Radius>, WriteRecords<RadiusCurveLine>, ReadProfile<RadiusCurveLine, CurveMode::Radius>, DescriptionOf<RadiusCurveLine>, SectionForm::Profile},
    Section{"VerticalCurve_SECONDPARA", HasCurvesInMode<CurveMode::GivenEnds>, WriteRecords<GivenEndsCurveLine>, ReadProfile<GivenEndsCurveLine, CurveMode::GivenEnds>, DescriptionOf<GivenEndsCurveLine>, SectionForm::Profile},
    PlatesSection<Side::Right>("StandardSectionRight"),
    PlatesSection<Side::Left>("StandardSectionLeft"),
    ChangesSection<Side::Right, ChangeKind::Widening>("WidenSectionRight"),
    TypesSection<Side::Right, ChangeKind::Widening>("WidenRightType"),
    ChangesSection<Side::Left, ChangeKind::Widening>("WidenSectionLeft"),
    TypesSection<Side::Left, ChangeKind::Widening>("WidenLeftType"),
    ChangesSection<Side::Right, ChangeKind::Heightening>("HeightenSectionRight"),
    TypesSection<Side::Right, ChangeKind::Heightening>("HeightRightType"),
    ChangesSection<Side::Left, ChangeKind::Heightening>("HeightenSectionLeft"),
    TypesSection<Side::Left, ChangeKind::Heightening>("HeightLeftType"),
    Section{"roadSectionMileage", HasMileages, WriteMileages, ReadMileages, DescribeMileages, SectionForm::Single, false, true},
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

bool IsKeyword(std::string_view word) noexcept {
    return !word.empty() && std::ranges::any_of(sections, [&](const Section& it) { return it.keyword == word; });
}

}  // namespace kesto
