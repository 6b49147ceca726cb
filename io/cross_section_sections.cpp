// The sections of the cross section in the project file: plates, change sections with their transition types, section
// mileages. The transition types of a table stand in the section behind its change sections, in the same order.
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "io/file_places.hpp"
#include "io/section.hpp"
#include "section/change_sections.hpp"
#include "section/mileage_index.hpp"
#include "section/plates.hpp"
#include "section/section_at.hpp"

namespace kesto {

namespace {

struct PlateLine {
    using Record = SectionPlate;
    static constexpr auto fields = std::to_array<std::string_view>(
        {"name", "code", "width (m)", "cross slope (per cent), positive where the outer edge is higher",
         "step at the inner edge (m)", "extra, carried"});
    static void Fields(auto& line, auto& plate) {
        line.Name(plate.name).Name(plate.code);
        line.Real(plate.width).Real(plate.crossSlope).Real(plate.step).Real(plate.extra);
    }
};

/// The value of one plate at a change section.
struct PlateChange {
    StakeMileage stake;
    double value = 0;  // per cent or m
    std::int32_t flag = 0;
};

struct PlateChangeLine {
    using Record = PlateChange;
    static constexpr auto fields = std::to_array<std::string_view>(
        {"stake mileage (m), the same for every plate of the section", "cross slope (per cent) or width (m)",
         "occurrence, -1 where the mileage is a continuous one", "flag, carried"});
    static void Fields(auto& line, auto& change) {
        line.Real(change.stake.mileage).Real(change.value);
        line.Integer(change.stake.occurrence, wideColumn).Integer(change.flag, smallColumn);
    }
};

struct TransitionTypeLine {
    using Record = std::int32_t;
    static constexpr auto fields = std::to_array<std::string_view>(
        {"type of the transition to the change section: 0 linear, 1 cubic, 2 fourth degree"});
    static void Fields(auto& line, auto& type) { line.Integer(type, smallColumn); }
};

struct MileageLine {
    using Record = double;
    static constexpr auto fields = std::to_array<std::string_view>({"stake mileage (m)"});
    static void Fields(auto& line, auto& mileage) { line.Real(mileage); }
};

/// A change section whose lines are being read.
struct LinesOfChange {
    StakeMileage stake;
    std::int32_t firstLine;
    ChangeSection section;
    bool readable = true;

    bool Continues(StakeMileage next) const noexcept {
        return next.mileage == stake.mileage && next.occurrence == stake.occurrence;
    }
};

/// Key of a table's records in the report of a reading.
std::int32_t ReportKey(ChangeTable which) noexcept {
    return static_cast<std::int32_t>(changeKindCount) * which.side + which.kind;
}

/// Adds a change section that has been read to its last line. A refused one counts as one skipped record, however many
/// lines it has.
/// @param built whether the road is current, or why it is not
/// @return its continuous mileage (m); nothing for a refused one
std::optional<double> AddChange(Reading& reading, ChangeTable which, const Outcome& built, LinesOfChange change) {
    if (!change.readable) {
        reading.lines.Skip(KESTO_LIST_CHANGE_SECTIONS, change.firstLine);
        return std::nullopt;
    }
    const std::optional<double> place = PlaceFromFile(reading.road, static_cast<bool>(built), change.stake);
    Outcome stored;
    if (place) {
        stored = InsertChangeAt(reading.road, which, *place, std::move(change.section), 0);
    } else {
        stored = built ? ExplainMissing(reading.road, change.stake) : built.failure();
    }
    if (stored) return place;
    reading.Refuse({KESTO_LIST_CHANGE_SECTIONS, ReportKey(which)}, change.firstLine, stored.failure(),
                   place.value_or(0));
    return std::nullopt;
}

bool HasPlates(RoadDesign& road, std::int32_t side) noexcept {
    return !road.sections.plates[static_cast<std::size_t>(side)].empty();
}

void WritePlates(RoadDesign& road, LineWriter& lines, std::int32_t side) {
    for (const SectionPlate& plate : road.sections.plates[static_cast<std::size_t>(side)]) {
        PlateLine::Fields(lines, plate);
        lines.End();
    }
}

void ReadPlates(Reading& reading, std::int32_t side) {
    reading.KeepChain();
    const LineShape shape = ShapeOf<PlateLine>();
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(KESTO_LIST_PLATES, side);
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        SectionPlate plate{};
        if (!reading.lines.Parse<PlateLine>(shape, *line, plate)) {
            reading.lines.Skip(KESTO_LIST_PLATES);
        } else if (const Outcome stored = InsertPlate(reading.road, plate, side, -1); !stored) {
            reading.lines.Refuse(KESTO_LIST_PLATES, stored.failure());
        } else {
            placed.push_back({0, reading.lines.LineNumber()});
        }
    }
}

/// Without a plate there is no line to write, and no change section that means anything.
bool HasChanges(RoadDesign& road, ChangeTable which) noexcept {
    return HasPlates(road, which.side) && !TableOf(road.sections.changeSections, which).empty();
}

/// Writes exactly one line for each plate: a section that was off the road when plates came or went has the wrong
/// number of values, and is completed with the standard ones.
void WriteChanges(RoadDesign& road, LineWriter& lines, ChangeTable which) {
    const auto& plates = road.sections.plates[static_cast<std::size_t>(which.side)];
    const bool widening = static_cast<ChangeKind>(which.kind) == ChangeKind::Widening;
    const bool built = static_cast<bool>(EnsureCurrent(road));
    double before = -std::numeric_limits<double>::infinity();
    for (const auto& [continuous, section] : TableOf(road.sections.changeSections, which)) {
        const PlaceInFile place = PlaceForFile(road, built, continuous, before);
        before = place.readBack;
        for (std::size_t i = 0; i < plates.size(); ++i) {
            PlateChange change{place.stake, widening ? plates[i].width : plates[i].crossSlope};
            if (i < section.values.size()) change.value = section.values[i];
            if (i < section.flags.size()) change.flag = section.flags[i];
            PlateChangeLine::Fields(lines, change);
            lines.End();
        }
    }
}

void ReadChanges(Reading& reading, ChangeTable which) {
    reading.KeepChain();
    const Outcome built = EnsureCurrent(reading.road);
    Reading::Places& places = TableOf(reading.changes, which);
    places.clear();
    ReadingFinding untyped = reading.lines.Finding(KESTO_READING_TYPES_MISSING);
    const LineShape shape = ShapeOf<PlateChangeLine>();
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(KESTO_LIST_CHANGE_SECTIONS, ReportKey(which));
    std::vector<LinesOfChange> read;
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        PlateChange change;
        const bool readable = reading.lines.Parse<PlateChangeLine>(shape, *line, change);
        if (read.empty() || !read.back().Continues(change.stake)) {
            read.push_back({change.stake, reading.lines.LineNumber(), {}});
        }
        LinesOfChange& last = read.back();
        last.section.values.push_back(change.value);
        last.section.flags.push_back(change.flag);
        last.readable = last.readable && readable;
    }
    for (LinesOfChange& lines : read) {
        const std::int32_t firstLine = lines.firstLine;
        places.push_back(AddChange(reading, which, built, std::move(lines)));
        if (places.back()) placed.push_back({*places.back(), firstLine});
    }
    untyped.bound = static_cast<double>(places.size());
    if (!places.empty()) reading.untyped[{KESTO_LIST_CHANGE_SECTIONS, ReportKey(which)}] = untyped;
}

void WriteTypes(RoadDesign& road, LineWriter& lines, ChangeTable which) {
    const auto& types = TableOf(road.sections.transitionTypes, which);
    for (const auto& change : TableOf(road.sections.changeSections, which)) {
        const auto type = types.find(change.first);
        const std::int32_t written = type == types.end() ? 0 : type->second;
        TransitionTypeLine::Fields(lines, written);
        lines.End();
    }
}

/// The lines belong to the change sections read just before, one to one; the line of a refused section goes with it.
void ReadTypes(Reading& reading, ChangeTable which) {
    const Reading::Places& places = TableOf(reading.changes, which);
    auto& types = TableOf(reading.road.sections.transitionTypes, which);
    const auto sections = static_cast<double>(places.size());
    ReadingFinding tooFew = reading.lines.Finding(KESTO_READING_TYPES_MISSING, {}, 0, sections);
    const LineShape shape = ShapeOf<TransitionTypeLine>();
    std::size_t lineCount = 0;
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        std::int32_t type = 0;
        const bool readable = reading.lines.Parse<TransitionTypeLine>(shape, *line, type);
        const std::size_t i = lineCount++;
        if (!readable) {
            reading.lines.Skip(KESTO_LIST_CHANGE_SECTIONS);
        } else if (i >= places.size()) {
            reading.lines.Refuse(
                KESTO_LIST_CHANGE_SECTIONS,
                FailLimit(KESTO_INDEX_OUT_OF_RANGE, KESTO_LIMIT_RECORD_COUNT, static_cast<double>(i), sections));
        } else if (places[i]) {
            types[*places[i]] = type;
        }
        if (readable && !IsTransition(type))
            reading.lines.Tell(reading.lines.Finding(KESTO_READING_VALUE_UNKNOWN, {}, type));
    }
    tooFew.value = static_cast<double>(lineCount);
    reading.untyped.erase({KESTO_LIST_CHANGE_SECTIONS, ReportKey(which)});
    if (lineCount < places.size()) reading.lines.Tell(tooFew);
}

bool HasMileages(RoadDesign& road) noexcept { return !road.sections.mileageIndex.empty(); }

void WriteMileages(RoadDesign& road, LineWriter& lines) {
    for (const SectionMileageIndex& entry : road.sections.mileageIndex) {
        MileageLine::Fields(lines, entry.mileage);
        lines.End();
    }
}

void ReadMileages(Reading& reading) {
    const LineShape shape = ShapeOf<MileageLine>();
    std::vector<Reading::PlacedLine>& placed = reading.LinesOf(KESTO_LIST_SECTION_MILEAGES);
    while (const std::optional<std::string_view> line = reading.lines.NextRecord()) {
        double mileage = 0;
        if (!reading.lines.Parse<MileageLine>(shape, *line, mileage)) {
            reading.lines.Skip(KESTO_LIST_SECTION_MILEAGES);
        } else if (const Outcome stored = InsertSectionMileage(reading.road, mileage); !stored) {
            reading.lines.Refuse(KESTO_LIST_SECTION_MILEAGES, stored.failure());
        } else {
            placed.push_back({mileage, reading.lines.LineNumber()});
        }
    }
}

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
            DescriptionOf<PlateChangeLine>,
            "one line for each plate of the side",
            SectionForm::Single,
            true};
}

/// Their transition types.
template <Side side, ChangeKind kind>
constexpr Section TypesSection(std::string_view keyword) noexcept {
    constexpr const ChangeTable& which = tableOf<side, kind>;
    return {keyword, HasChangesOf<which>, WriteOf<which, WriteTypes>, ReadOf<which, ReadTypes>,
            DescriptionOf<TransitionTypeLine>};
}

template <Side side>
constexpr Section PlatesSection(std::string_view keyword) noexcept {
    return {keyword, HasPlatesOf<side>, WritePlatesOf<side>, ReadPlatesOf<side>, DescriptionOf<PlateLine>};
}

// clang-format off
constexpr std::array sections{
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
    Section{"roadSectionMileage", HasMileages, WriteMileages, ReadMileages, DescriptionOf<MileageLine>, oneLine, SectionForm::Single, false, true}};
// clang-format on

}  // namespace

std::span<const Section> CrossSectionSections() noexcept { return sections; }

}  // namespace kesto
