// kesto-road report: a summary of the road, and its stakes as a table.
#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "commands.hpp"
#include "csv.hpp"
#include "numbers.hpp"
#include "output.hpp"
#include "road_file.hpp"
#include "road_line.hpp"

namespace kesto::host {

namespace {

constexpr int lengthDecimals = 3;    // millimetres
constexpr int azimuthDecimals = 6;   // degrees
constexpr int gradeDecimals = 4;     // per cent
constexpr double squareOffset = 90;  // degrees
constexpr double percent = 100;

/// Columns as wide as their widest cell; the first one is left-aligned, the others right-aligned.
class Table {
public:
    explicit Table(std::vector<std::string> header) { rows.push_back(std::move(header)); }
    void Add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    [[nodiscard]] std::string Text(const std::string& title) const {
        std::string text = "\n" + title + " (" + std::to_string(rows.size() - 1) + ")\n";
        if (rows.size() == 1) return text + "  none\n";
        std::vector<std::size_t> widths(rows.front().size(), 0);
        for (const auto& row : rows) {
            for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
        }
        for (const auto& row : rows) {
            for (std::size_t i = 0; i < row.size(); ++i) {
                const std::string padding(widths[i] - row[i].size() + 2, ' ');
                text += i == 0 ? "  " + row[i] + padding.substr(2) : padding + row[i];
            }
            text += '\n';
        }
        return text;
    }

private:
    std::vector<std::vector<std::string>> rows;
};

std::string Metres(double number) { return FormatReal(number, lengthDecimals); }

std::string Radius(double radius) { return radius < 1e-7 ? "-" : Metres(radius); }

std::string Overview(const std::string& path, const RoadLine& line) {
    const std::string prefix = line.Prefix();
    const CentrePoint last = line.At(line.Pieces().back(), line.Pieces().back().Length());
    return "Road    " + path + "\nLength  " + Metres(line.Length()) + " m\nFrom    " +
           FormatMileage(prefix, line.At(line.Pieces().front(), 0).stake) + "\nTo      " +
           FormatMileage(prefix, last.stake) + "\n";
}

std::string Elements(const RoadLine& line) {
    Table table({"type", "turn", "from", "length", "start radius", "end radius", "x", "y", "azimuth"});
    for (const Piece& piece : line.Pieces()) {
        const Element& it = piece.element;
        const char* turn = it.turnDirection == 0 ? "left" : "right";
        table.Add({ElementName(it), it.type == 1 ? "-" : turn, FormatMileage(line.Prefix(), line.At(piece, 0).stake),
                   Metres(it.length), Radius(it.startRadius),
                   it.type == 2 ? Radius(it.startRadius) : Radius(it.endRadius), Metres(it.startX), Metres(it.startY),
                   FormatReal(it.startAzimuth, azimuthDecimals)});
    }
    return table.Text("Elements");
}

std::string MainPoints(RoadDesign* road, const RoadLine& line) {
    Table table({"point", "mileage", "occurrence", "x", "y"});
    StakeCoordinate stake{};
    for (std::int32_t i = 0; GetStakeCoordinate(road, i, &stake); ++i) {
        if (stake.label[0] == '\0') continue;
        table.Add({stake.label, FormatMileage(line.Prefix(), {stake.mileage, stake.occurrence}),
                   std::to_string(stake.occurrence), Metres(stake.x), Metres(stake.y)});
    }
    return table.Text("Main points");
}

std::string BrokenChains(RoadDesign* road, const RoadLine& line) {
    Table table({"kind", "back", "ahead", "jump"});
    BrokenChain chain{};
    for (std::int32_t i = 0; GetBrokenChain(road, i, &chain); ++i) {
        const double jump = chain.aheadMileage - chain.backMileage;
        table.Add({jump < 0 ? "backward (overlap)" : "forward (gap)",
                   FormatMileage(line.Prefix(), {chain.backMileage, 0}),
                   FormatMileage(line.Prefix(), {chain.aheadMileage, 0}), Metres(jump)});
    }
    return table.Text("Broken chains");
}

std::string GradePoints(RoadDesign* road, const RoadLine& line) {
    Table table({"curve", "mileage", "occurrence", "elevation", "grade out %", "radius", "from", "to"});
    const bool byRadius = GetVerticalCurveMode(road) == 0;
    VerticalCurve point{};
    for (std::int32_t i = 0; GetVerticalCurve(road, i, &point); ++i) {
        const bool curved = point.curveSign != 0 && (!byRadius || point.radius > 0);
        const char* kind = point.curveSign > 0 ? "crest" : "sag";
        const auto end = [&](double mileage, std::int32_t occurrence) {
            return curved ? FormatMileage(line.Prefix(), {mileage, std::max(occurrence, 0)}) : std::string("-");
        };
        table.Add({curved ? kind : "-", FormatMileage(line.Prefix(), {point.mileage, std::max(point.occurrence, 0)}),
                   std::to_string(point.occurrence), Metres(point.elevation),
                   FormatReal(point.gradeOut * percent, gradeDecimals), byRadius ? Radius(point.radius) : "-",
                   end(point.startMileage, point.startOccurrence), end(point.endMileage, point.endOccurrence)});
    }
    return table.Text("Grade-change points");
}

std::int32_t WriteStakes(RoadDesign* road, const RoadLine& line, const std::string& path, int decimals) {
    Output out(path);
    out.Write("name,label,mileage,occurrence,x,y,azimuth,design_height\n");
    StakeCoordinate stake{};
    std::int32_t count = 0;
    for (; GetStakeCoordinate(road, count, &stake); ++count) {
        double x = 0;
        double y = 0;
        double azimuth = 0;
        const bool placed =
            GetPositionAndAzimuth(road, stake.mileage, 0, squareOffset, &x, &y, &azimuth, stake.occurrence);
        const auto height = line.HeightAt({stake.mileage, stake.occurrence});
        out.Write(CsvField(stake.name) + "," + CsvField(stake.label) + "," + FormatReal(stake.mileage, decimals) + "," +
                  std::to_string(stake.occurrence) + "," + FormatReal(stake.x, decimals) + "," +
                  FormatReal(stake.y, decimals) + "," + (placed ? FormatReal(azimuth, azimuthDecimals) : "") + "," +
                  (height ? FormatReal(*height, decimals) : "") + "\n");
    }
    out.Finish();
    return count;
}

}  // namespace

ExitCode RunReport(const ReportOptions& options) {
    const RoadHandle road = OpenRoad(options.road);
    const RoadLine line(road.get());
    Output out("");
    out.Write(Overview(options.road, line));
    out.Write(Elements(line));
    out.Write(MainPoints(road.get(), line));
    out.Write(BrokenChains(road.get(), line));
    out.Write(GradePoints(road.get(), line));
    const std::string path = (std::filesystem::path(options.folder) / "stakes.csv").string();
    const std::int32_t count = WriteStakes(road.get(), line, path, options.decimals);
    out.Write("\n");
    out.Write(std::to_string(count) + " stakes written to " + path + "\n");
    out.Finish();
    return ExitCode::Ok;
}

}  // namespace kesto::host
