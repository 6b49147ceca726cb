// kesto-road plot: one sheet with the plan, below it the profile and the diagrams of the cross sections where the road
// has them; or one cross section.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>

#include "commands/commands.hpp"
#include "drawing/canvas.hpp"
#include "drawing/plan.hpp"
#include "drawing/profile.hpp"
#include "drawing/section.hpp"
#include "drawing/section_diagrams.hpp"
#include "road/cross_section.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double margin = 10;          // mm
constexpr double titleHeight = 11;     // mm
constexpr double columnWidth = 44;     // mm, for legends, north arrow and scale bar
constexpr double gap = 3;              // mm between frame and content
constexpr double profileShare = 0.42;  // of the height below the title
constexpr double sharedShare = 0.33;   // the same with diagrams below it
constexpr double leastProfile = 74;    // mm: less leaves no graph between labels and bands
constexpr double diagramShare = 0.29;  // of the height below the title
constexpr double planLegend = 83;      // mm that the column needs at least
constexpr double profileLegend = 38;   // mm
constexpr double leastDiagrams = 48;   // mm

struct Paper {
    double width, height;  // mm
};

Paper PaperOf(const std::string& name) { return name == "A4" || name == "a4" ? Paper{297, 210} : Paper{420, 297}; }

void DrawTitle(Canvas& canvas, const Box& sheet, const std::string& title, const std::string& subject) {
    canvas.Text({sheet.left + gap, sheet.top + titleHeight / 2}, title, {.size = 4.2, .anchorY = 0.5, .bold = true});
    canvas.Text({sheet.right - gap, sheet.top + titleHeight / 2}, subject, {.size = 2.8, .anchorX = 1, .anchorY = 0.5});
    canvas.Line({sheet.left, sheet.top + titleHeight}, {sheet.right, sheet.top + titleHeight}, {.width = 0.35});
}

std::string Extent(const RoadLine& line) {
    const CentrePoint first = line.At(line.Pieces().front(), 0);
    const CentrePoint last = line.At(line.Pieces().back(), line.Pieces().back().Length());
    return FormatMileage(line.Prefix(), first.stake) + " to " + FormatMileage(line.Prefix(), last.stake) + ", " +
           FormatReal(line.Length(), 3) + " m";
}

/// A sheet with frame, title and a column at its right, that is divided from top to bottom.
class Sheet {
public:
    Sheet(const PlotOptions& options, const Paper& paper, const std::string& subject)
        : canvas(options.out, paper.width, paper.height),
          frame{margin, margin, paper.width - margin, paper.height - margin} {
        canvas.Rectangle(frame, {.width = 0.5});
        const std::string name = std::filesystem::path(options.road).stem().string();
        DrawTitle(canvas, frame, options.title.empty() ? name : options.title, subject);
        top = frame.top + titleHeight;
        canvas.Line({ColumnLeft(), top}, {ColumnLeft(), frame.bottom}, {.width = 0.35});
    }

    [[nodiscard]] double Room() const noexcept { return frame.bottom - top; }

    /// Takes the next part of the sheet and lets it be drawn, with its part of the column. On a small sheet a legend
    /// may reach further down than its drawing; the next one begins below it.
    /// @param legend mm that the part needs in the column
    template <class Draw>
    void Part(double height, double legend, Draw&& draw) {
        const double bottom = std::min(top + height, frame.bottom);
        columnTop = std::max(columnTop, top);
        if (top > frame.top + titleHeight) {
            canvas.Line({frame.left, top}, {ColumnLeft(), top}, {.width = 0.35});
            canvas.Line({ColumnLeft(), columnTop}, {frame.right, columnTop}, {.width = 0.35});
        }
        draw(canvas, Box{frame.left + gap, top + gap, ColumnLeft() - gap, bottom - gap},
             Box{ColumnLeft() + gap, columnTop + gap, frame.right - gap, std::max(bottom, columnTop + legend) - gap});
        columnTop += legend;
        top = bottom;
    }

    void Finish() { canvas.Finish(); }

private:
    [[nodiscard]] double ColumnLeft() const noexcept { return frame.right - columnWidth; }

    Canvas canvas;
    Box frame;
    double top = 0;        ///< of the next part (mm)
    double columnTop = 0;  ///< of its legend (mm)
};

void PlotSection(RoadDesign* road, const RoadLine& line, const PlotOptions& options) {
    const Stake stake = ResolveMileage(*options.section, line.Prefix(), options.occurrence, "--section");
    const CrossSection section = SectionAt(road, line, stake);
    const std::string stakeText = FormatMileage(line.Prefix(), stake);
    Sheet sheet(options, PaperOf(options.paper), "section at " + stakeText);
    std::string scales;
    sheet.Part(sheet.Room(), 0, [&](Canvas& canvas, const Box& box, const Box& column) {
        scales = DrawSection(canvas, section, stakeText, box, column);
    });
    sheet.Finish();
    std::cout << options.out << ": section " << scales << "\n";
}

void PlotRoad(RoadDesign* road, const RoadLine& line, const PlotOptions& options) {
    Sheet sheet(options, PaperOf(options.paper), Extent(line));
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
