// kesto-road plot: one sheet with the plan, below it the profile and the diagrams of the cross sections where the road
// has them; or one cross section.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>

#include "commands/commands.hpp"
#include "drawing/plan.hpp"
#include "drawing/profile.hpp"
#include "drawing/section.hpp"
#include "drawing/section_diagrams.hpp"
#include "drawing/sheet.hpp"
#include "road/cross_section.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double profileShare = 0.42;  // of the height below the title
constexpr double sharedShare = 0.33;   // the same with diagrams below it
constexpr double leastProfile = 74;    // mm: less leaves no graph between labels and bands
constexpr double diagramShare = 0.29;  // of the height below the title
constexpr double planLegend = 83;      // mm that the column needs at least
constexpr double profileLegend = 38;   // mm
constexpr double leastDiagrams = 48;   // mm

std::string Extent(const RoadLine& line) {
    const CentrePoint first = line.At(line.Pieces().front(), 0);
    const CentrePoint last = line.At(line.Pieces().back(), line.Pieces().back().Length());
    return FormatMileage(line.Road(), first.stake) + " to " + FormatMileage(line.Road(), last.stake) + ", " +
           FormatReal(line.Length(), 3) + " m";
}

/// A sheet with the title that the options give, or else the file's name.
Sheet NewSheet(const PlotOptions& options, const std::string& subject) {
    const std::string name = std::filesystem::path(options.road).stem().string();
    return {options.out, PaperOf(options.paper), options.title.empty() ? name : options.title, subject};
}

void PlotSection(RoadDesign* road, const RoadLine& line, const PlotOptions& options) {
    const Stake stake = ResolveMileage(line.Road(), *options.section, options.occurrence, "--section");
    const CrossSection section = SectionAt(road, line, stake);
    const std::string stakeText = FormatMileage(line.Road(), stake);
    Sheet sheet = NewSheet(options, "section at " + stakeText);
    std::string scales;
    sheet.Part(sheet.Room(), 0, [&](Canvas& canvas, const Box& box, const Box& column) {
        scales = DrawSection(canvas, section, stakeText, box, column);
    });
    sheet.Finish();
    std::cout << options.out << ": section " << scales << "\n";
}

void PlotRoad(RoadDesign* road, const RoadLine& line, const PlotOptions& options) {
    Sheet sheet = NewSheet(options, Extent(line));
    const double room = sheet.Room();
    const bool hasPlates = HasPlates(road);
    const bool hasProfile = GetVerticalCurveCount(road) > 0;
    const double diagrams = hasPlates ? std::max(diagramShare * room, leastDiagrams) : 0;
    const double shared = std::max(sharedShare * room, leastProfile);
    const double profile = !hasProfile ? 0 : hasPlates ? shared : profileShare * room;
    std::string scales;
    sheet.Part(room - profile - diagrams, planLegend, [&](Canvas& canvas, const Box& box, const Box& column) {
        scales = DrawPlan(canvas, road, line, box, column);
    });
    if (hasProfile) {
        sheet.Part(profile, profileLegend, [&](Canvas& canvas, const Box& box, const Box& column) {
            scales += ", profile " + DrawProfile(canvas, road, line, box, column);
        });
    }
    if (hasPlates) {
        sheet.Part(diagrams, 0, [&](Canvas& canvas, const Box& box, const Box& column) {
            DrawSectionDiagrams(canvas, road, line, box, column);
        });
    }
    sheet.Finish();
    std::cout << options.out << ": plan " << scales << "\n";
}

}  // namespace

ExitCode RunPlot(const PlotOptions& options) {
    if (options.occurrence && !options.section) {
        throw Problem(ExitCode::Usage, "an occurrence needs its mileage: --occurrence goes with --section");
    }
    const RoadHandle road = OpenRoad(options.road);
    const RoadLine line(road.get());
    if (options.section) {
        PlotSection(road.get(), line, options);
    } else {
        PlotRoad(road.get(), line, options);
    }
    return ExitCode::Ok;
}

}  // namespace kesto::host
