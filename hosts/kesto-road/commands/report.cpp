// kesto-road report: a summary of the road; its stakes and, where it has intersections, its curves as tables.
#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "road/conventions.hpp"
#include "road/cross_section.hpp"
#include "road/curves.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "tables/curves.hpp"
#include "tables/stakes.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"
#include "terminal/text_table.hpp"

namespace kesto::host {

namespace {

constexpr int lengthDecimals = 3;   // millimetres
constexpr int azimuthDecimals = 6;  // degrees
constexpr int gradeDecimals = 4;    // per cent
constexpr int slopeDecimals = 3;    // per cent
constexpr double percent = 100;

std::string Metres(double number) { return FormatReal(number, lengthDecimals); }

std::string Radius(double radius) { return radius < infiniteRadius ? "-" : Metres(radius); }

std::string Overview(const std::string& path, const RoadLine& line) {
    const CentrePoint last = line.At(line.Pieces().back(), line.Pieces().back().Length());
    return "Road    " + path + "\nLength  " + Metres(line.Length()) + " m\nFrom    " +
           FormatMileage(line.Road(), line.At(line.Pieces().front(), 0).stake) + "\nTo      " +
           FormatMileage(line.Road(), last.stake) + "\n";
}

std::string Elements(const RoadLine& line) {
    TextTable table({"type", "turn", "from", "length", "start radius", "end radius", "x", "y", "azimuth"});
    for (const Piece& piece : line.Pieces()) {
        const Element& it = piece.element;
        const char* turn = it.turnDirection == 0 ? "left" : "right";
        table.Add({ElementName(it), it.type == straightType ? "-" : turn,
                   FormatMileage(line.Road(), line.At(piece, 0).stake), Metres(it.length), Radius(it.startRadius),
                   it.type == arcType ? Radius(it.startRadius) : Radius(it.endRadius), Metres(it.startX),
                   Metres(it.startY), FormatReal(it.startAzimuth, azimuthDecimals)});
    }
    return table.Text("Elements");
}

std::string MainPoints(RoadDesign* road, const RoadLine& line) {
    TextTable table({"point", "mileage", "occurrence", "x", "y"});
    StakeCoordinate stake{};
    for (std::int32_t i = 0; GetStakeCoordinate(road, i, &stake); ++i) {
        if (stake.label[0] == '\0') continue;
        table.Add({stake.label, FormatMileage(line.Road(), {stake.mileage, stake.occurrence}),
                   std::to_string(stake.occurrence), Metres(stake.x), Metres(stake.y)});
    }
    return table.Text("Main points");
}

std::string BrokenChains(RoadDesign* road, const RoadLine& line) {
    TextTable table({"kind", "back", "ahead", "jump"});
    BrokenChain chain{};
    for (std::int32_t i = 0; GetBrokenChain(road, i, &chain); ++i) {
        const double jump = chain.aheadMileage - chain.backMileage;
        table.Add({jump < 0 ? "backward (overlap)" : "forward (gap)",
                   FormatMileage(line.Road(), {chain.backMileage, 0}),
                   FormatMileage(line.Road(), {chain.aheadMileage, 0}), Metres(jump)});
    }
    return table.Text("Broken chains");
}

std::string GradePoints(RoadDesign* road, const RoadLine& line) {
    TextTable table({"curve", "mileage", "occurrence", "elevation", "grade out %", "radius", "from", "to"});
    const bool byRadius = GetVerticalCurveMode(road) == radiusMode;
    VerticalCurve point{};
    for (std::int32_t i = 0; GetVerticalCurve(road, i, &point); ++i) {
        const bool curved = point.curveSign != 0 && (!byRadius || point.radius > 0);
        const char* kind = point.curveSign > 0 ? "crest" : "sag";
        const auto end = [&](double mileage, std::int32_t occurrence) {
            return curved ? FormatMileage(line.Road(), {mileage, std::max(occurrence, 0)}) : std::string("-");
        };
        table.Add({curved ? kind : "-", FormatMileage(line.Road(), {point.mileage, std::max(point.occurrence, 0)}),
                   std::to_string(point.occurrence), Metres(point.elevation),
                   FormatReal(point.gradeOut * percent, gradeDecimals), byRadius ? Radius(point.radius) : "-",
                   end(point.startMileage, point.startOccurrence), end(point.endMileage, point.endOccurrence)});
    }
    return table.Text("Grade-change points");
}

std::string Plates(RoadDesign* road, std::int32_t side) {
    TextTable table({"plate", "code", "width", "cross slope %", "step"});
    const auto text = [](const char* name) { return std::string(*name == '\0' ? "-" : name); };
    for (const SectionPlate& it : StandardPlates(road, side)) {
        table.Add({text(it.name), text(it.code), Metres(it.width), FormatReal(it.crossSlope, slopeDecimals),
                   Metres(it.step)});
    }
    return table.Text(side == leftSide ? "Plates of the left side, from the centre line outwards"
                                       : "Plates of the right side, from the centre line outwards");
}

std::string ChangeSections(RoadDesign* road, const RoadLine& line) {
    TextTable table({"side", "kind", "mileage", "occurrence", "transition to it", "values"});
    for (const std::int32_t side : bothSides) {
        for (const std::int32_t kind : bothKinds) {
            for (const Change& it : Changes(road, side, kind)) {
                std::string values;
                for (const double value : it.values) values += (values.empty() ? "" : "  ") + Metres(value);
                table.Add({sideNames[static_cast<std::size_t>(side)], kindNames[static_cast<std::size_t>(kind)],
                           it.stake ? FormatMileage(line.Road(), *it.stake) : "not on the road",
                           it.stake ? std::to_string(it.stake->occurrence) : "-", TransitionName(it.type), values});
            }
        }
    }
    return table.Text("Change sections: cross slopes (%) or widths (m), from the centre line outwards");
}

}  // namespace

ExitCode RunReport(const ReportOptions& options) {
    const RoadHandle road = OpenRoad(options.road);
    const RoadLine line(road.get());
    Output out("");
    out.Write(Overview(options.road, line));
    out.Write(Elements(line));
    out.Write(MainPoints(road.get(), line));
    const auto intersections = FiguresOfIntersections(road.get(), line);
    if (!intersections.empty()) out.Write(CurveTables(intersections, road.get()));
    out.Write(BrokenChains(road.get(), line));
    out.Write(GradePoints(road.get(), line));
    for (const std::int32_t side : bothSides) out.Write(Plates(road.get(), side));
    out.Write(ChangeSections(road.get(), line));
    const auto pathOf = [&](const char* name) { return (std::filesystem::path(options.folder) / name).string(); };
    const std::string stakes = pathOf("stakes.csv");
    const std::int32_t count = WriteStakes(road.get(), line, stakes, options.decimals);
    out.Write("\n");
    out.Write(std::to_string(count) + " stakes written to " + stakes + "\n");
    if (!intersections.empty()) {
        const std::string curves = pathOf("curves.csv");
        WriteCurves(intersections, curves, options.decimals);
        out.Write(std::to_string(intersections.size()) + " intersections written to " + curves + "\n");
    }
    out.Finish();
    return ExitCode::Ok;
}

}  // namespace kesto::host
