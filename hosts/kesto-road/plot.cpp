// kesto-road plot: one sheet with the plan, and the profile below it where the road has one.
#include <filesystem>
#include <iostream>
#include <string>

#include "canvas.hpp"
#include "commands.hpp"
#include "numbers.hpp"
#include "plan_drawing.hpp"
#include "profile_drawing.hpp"
#include "road_file.hpp"
#include "road_line.hpp"

namespace kesto::host {

namespace {

constexpr double margin = 10;          // mm
constexpr double titleHeight = 11;     // mm
constexpr double columnWidth = 44;     // mm, for legends, north arrow and scale bar
constexpr double gap = 3;              // mm between frame and content
constexpr double profileShare = 0.42;  // of the height below the title

struct Paper {
    double width, height;  // mm
};

Paper PaperOf(const std::string& name) { return name == "A4" || name == "a4" ? Paper{297, 210} : Paper{420, 297}; }

void DrawTitle(Canvas& canvas, const Box& sheet, const std::string& title, const RoadLine& line) {
    const std::string prefix = line.Prefix();
    const CentrePoint first = line.At(line.Pieces().front(), 0);
    const CentrePoint last = line.At(line.Pieces().back(), line.Pieces().back().Length());
    canvas.Text({sheet.left + gap, sheet.top + titleHeight / 2}, title, {.size = 4.2, .anchorY = 0.5, .bold = true});
    canvas.Text({sheet.right - gap, sheet.top + titleHeight / 2},
                FormatMileage(prefix, first.stake) + " to " + FormatMileage(prefix, last.stake) + ", " +
                    FormatReal(line.Length(), 3) + " m",
                {.size = 2.8, .anchorX = 1, .anchorY = 0.5});
    canvas.Line({sheet.left, sheet.top + titleHeight}, {sheet.right, sheet.top + titleHeight}, {.width = 0.35});
}

}  // namespace

ExitCode RunPlot(const PlotOptions& options) {
    const RoadHandle road = OpenRoad(options.road);
    const RoadLine line(road.get());
    const Paper paper = PaperOf(options.paper);
    Canvas canvas(options.out, paper.width, paper.height);
    const Box sheet{margin, margin, paper.width - margin, paper.height - margin};
    canvas.Rectangle(sheet, {.width = 0.5});
    const std::string title =
        options.title.empty() ? std::filesystem::path(options.road).stem().string() : options.title;
    DrawTitle(canvas, sheet, title, line);

    const bool hasProfile = GetVerticalCurveCount(road.get()) > 0;
    const double top = sheet.top + titleHeight;
    const double divide = hasProfile ? sheet.bottom - profileShare * (sheet.bottom - top) : sheet.bottom;
    const double columnLeft = sheet.right - columnWidth;
    canvas.Line({columnLeft, top}, {columnLeft, sheet.bottom}, {.width = 0.35});
    std::string scales =
        DrawPlan(canvas, road.get(), line, {sheet.left + gap, top + gap, columnLeft - gap, divide - gap},
                 {columnLeft + gap, top + gap, sheet.right - gap, divide - gap});
    if (hasProfile) {
        canvas.Line({sheet.left, divide}, {sheet.right, divide}, {.width = 0.35});
        const std::string profile = DrawProfile(
            canvas, road.get(), line, {sheet.left + gap, divide + gap, columnLeft - gap, sheet.bottom - gap},
            {columnLeft + gap, divide + gap, sheet.right - gap, sheet.bottom - gap});
        scales += ", profile " + profile;
    }
    canvas.Finish();
    std::cout << options.out << ": plan " << scales << "\n";
    return ExitCode::Ok;
}

}  // namespace kesto::host
