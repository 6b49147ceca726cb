#include "drawing/profile.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "drawing/broken_chains.hpp"
#include "drawing/label_placer.hpp"
#include "drawing/length_axis.hpp"
#include "drawing/scales.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double bandHeight = 6;       // mm
constexpr int bands = 3;               // stakes, heights, plan
constexpr double pointRoom = 31;       // mm above the graph, for the labels of grade-change points
constexpr double pointSpacing = 6.4;   // mm between two of those labels
constexpr double furthestShift = 30;   // mm that such a label may stand beside its point
constexpr double sampleOnSheet = 0.5;  // mm between two drawn points of the design line
constexpr double gridOnSheet = 7;      // mm, least distance of height lines
constexpr double stakeOnSheet = 15;    // mm, least distance of labelled stakes
constexpr double leastRange = 1;       // m of height that the graph shows at least
constexpr double breakWidth = 3;       // mm of a broken chain's line with the text at its left
constexpr double percent = 100;

struct GradePoint {
    VerticalCurve record;
    double at, curveFrom, curveTo;  ///< continuous mileages (m)
    bool curved;
};

double Continuous(RoadDesign* road, double mileage, std::int32_t occurrence) {
    return ContinuousMileage(road, {mileage, occurrence}).value_or(mileage);
}

std::vector<GradePoint> GradePoints(RoadDesign* road) {
    std::vector<GradePoint> points;
    const bool byRadius = GetVerticalCurveMode(road) == radiusMode;
    VerticalCurve it{};
    for (std::int32_t i = 0; GetVerticalCurve(road, i, &it); ++i) {
        points.push_back(
            {it, Continuous(road, it.mileage, it.occurrence), Continuous(road, it.startMileage, it.startOccurrence),
             Continuous(road, it.endMileage, it.endOccurrence), it.curveSign != 0 && (!byRadius || it.radius > 0)});
    }
    return points;
}

class Profile {
public:
    Profile(Canvas& sheet, RoadDesign* designed, const RoadLine& walked, const Box& box)
        : canvas(sheet), line(walked), points(GradePoints(designed)), frame(box), axis(box, walked) {
        graph = {axis.left, box.top + pointRoom, axis.right, box.bottom - bands * bandHeight};
        Sample();
        FitHeights();
    }

    void DrawGrid() {
        const auto lines = static_cast<int>(graph.Height() * vertical / millimetresPerMetre / heightStep + 1e-6);
        for (int i = 0; i <= lines; ++i) {
            const double height = base + i * heightStep;
            canvas.Line({graph.left, Y(height)}, {X(line.End()), Y(height)}, {.colour = colours::faint, .width = 0.15});
            const double lift = height > base ? 0.5 : -0.4;  // the lowest stands on the line of the band
            canvas.Text({graph.left - 1.5, Y(height)}, FormatReal(height, heightStep < 1 ? 1 : 0),
                        {.anchorX = 1, .anchorY = lift});
        }
        canvas.Line({graph.left, graph.top}, {graph.left, frame.bottom}, {.width = 0.3});
        canvas.Text({graph.left - 1.5, graph.top - 3}, "height (m)", {.size = 2, .anchorX = 1, .anchorY = 0.5});
    }

    void DrawBands() {
        const char* names[] = {"stake", "height (m)", "plan"};
        for (int i = 0; i <= bands; ++i) {
            const double y = graph.bottom + i * bandHeight;
            canvas.Line({frame.left, y}, {X(line.End()), y}, {.width = i == 0 ? 0.3 : 0.15});
            if (i < bands) {
                canvas.Text({frame.left + 0.5, y + bandHeight / 2}, names[i], {.size = 2.1, .anchorY = 0.5});
            }
        }
        canvas.Line({X(line.End()), graph.bottom}, {X(line.End()), frame.bottom}, {.width = 0.15});
        DrawStakes();
        for (const Piece& piece : line.Pieces()) DrawCurvature(piece);
    }

    void DrawLines() {
        std::vector<Place> tangents;
        for (const auto& point : points) tangents.push_back({X(point.at), Y(point.record.elevation)});
        canvas.Polyline(tangents, {.colour = colours::dim, .width = 0.18, .dashed = true});
        canvas.Polyline(samples, {.colour = colours::straight, .width = 0.5});
        for (const auto& point : points) {
            if (point.curved) DrawCurve(point);
        }
        for (std::size_t i = 0; i + 1 < points.size(); ++i) DrawGrade(points[i], points[i + 1]);
    }

    void DrawBreaks() {
        for (const Break& it : line.Breaks()) {
            const double x = axis.X(it.continuous);
            DrawBreak(canvas, x, graph.top, graph.bottom + bandHeight);
            TextStyle style = breakStyle;
            style.angle = -std::numbers::pi / 2;
            canvas.Text({x - 0.8, graph.bottom - 1.5}, BreakText(line, it), style);
        }
    }

    /// Labels above the graph, pushed apart from left to right.
    void DrawPoints() {
        double last = graph.left - pointSpacing + 2;
        for (const auto& point : points) {
            const Place mark{X(point.at), Y(point.record.elevation)};
            canvas.Fill({{mark.x, mark.y - 0.9}, {mark.x + 0.8, mark.y + 0.5}, {mark.x - 0.8, mark.y + 0.5}},
                        colours::ink);
            const double x = std::max(mark.x, last + pointSpacing);
            if (x - mark.x > furthestShift || x > frame.right - 1) continue;
            last = x;
            const double foot = graph.top - 2;
            canvas.Polyline({{mark.x, mark.y - 1.2}, {mark.x, graph.top + 2}, {x, foot}, {x, foot - 1}},
                            {.colour = colours::dim, .width = 0.13});
            const TextStyle style{.size = 2.1, .angle = -std::numbers::pi / 2};
            canvas.Text({x - 0.5, foot - 1.6},
                        FormatMileage(line.Road(), {point.record.mileage, std::max(point.record.occurrence, 0)}) +
                            "  " + FormatReal(point.record.elevation, 3),
                        style);
            canvas.Text({x + 2.3, foot - 1.6}, CurveText(point), style);
        }
    }

    [[nodiscard]] std::string Scales() const { return ScaleText(axis.denominator) + " / " + ScaleText(vertical); }

private:
    [[nodiscard]] double X(double continuous) const { return axis.X(continuous); }
    [[nodiscard]] double Y(double height) const {
        return graph.bottom - (height - base) * millimetresPerMetre / vertical;
    }

    [[nodiscard]] double HeightAt(double continuous) const {
        return line.HeightAt(line.At(continuous).stake).value_or(0);
    }

    void Sample() {
        const double step = sampleOnSheet * axis.denominator / millimetresPerMetre;
        const auto count = static_cast<int>(std::ceil(line.Length() / step));
        for (int i = 0; i <= count; ++i) {
            const double at = std::min(line.Start() + i * step, line.End());
            samples.push_back({at, HeightAt(at)});
        }
    }

    /// The smallest usual scale and the base height with which line and grade-change points fit the graph.
    void FitHeights() {
        double low = 1e300;
        double high = -1e300;
        for (const Place& sample : samples) {
            low = std::min(low, sample.y);
            high = std::max(high, sample.y);
        }
        for (const auto& point : points) {
            low = std::min(low, point.record.elevation);
            high = std::max(high, point.record.elevation);
        }
        const double range = std::max(high - low, leastRange);
        vertical = UsualScale(range * millimetresPerMetre / graph.Height());
        const auto settle = [&] {
            heightStep = UsualStep(gridOnSheet * vertical / millimetresPerMetre);
            base = std::floor((low - 0.05 * range) / heightStep) * heightStep;
            return Y(high) >= graph.top;
        };
        while (!settle()) vertical = UsualScale(vertical * 1.01);
        for (Place& sample : samples) sample = {X(sample.x), Y(sample.y)};
    }

    void DrawStakes() {
        TextRow stakes;
        TextRow heights;
        const double step = UsualStep(std::max(stakeOnSheet * axis.denominator / millimetresPerMetre, 1.0));
        const CentrePoint ends[] = {line.At(line.Start()),
                                    line.At(line.Pieces().back(), line.Pieces().back().Length())};
        for (const auto& end : ends) DrawStake(end, 3, stakes, heights);
        for (const Break& it : line.Breaks()) stakes.Take(X(it.continuous) - 0.8, X(it.continuous) + 0.8);
        line.ForEachMultiple(step, [&](const CentrePoint& point) {
            if (point.continuous > line.Start() && point.continuous < line.End()) {
                DrawStake(point, step < 1 ? 1 : 0, stakes, heights);
            }
        });
    }

    void DrawStake(const CentrePoint& point, int decimals, TextRow& stakes, TextRow& heights) {
        const double x = X(point.continuous);
        const TextStyle style{.size = 2, .anchorX = 0.5, .anchorY = 0.5};
        const auto write = [&](const std::string& text, TextRow& row, double y) {
            const double half = canvas.TextWidth(text, style) / 2 + 0.6;
            // At the ends of the graph the text moves inwards.
            const double middle = std::clamp(x, graph.left + half, std::max(X(line.End()) - half, graph.left + half));
            if (row.Take(middle - half, middle + half)) canvas.Text({middle, y}, text, style);
        };
        canvas.Line({x, graph.bottom - 0.8}, {x, graph.bottom + 0.8}, {.width = 0.2});
        write(FormatMileage(line.Road(), point.stake, decimals), stakes, graph.bottom + bandHeight / 2);
        const auto height = line.HeightAt(point.stake);
        if (height) write(FormatReal(*height, 3), heights, graph.bottom + bandHeight * 1.5);
    }

    /// The curvature of an element: straights on the middle line, right turns above it, left turns below; spirals lead
    /// from one to the other.
    void DrawCurvature(const Piece& piece) {
        const Element& it = piece.element;
        const double middle = graph.bottom + (bands - 0.5) * bandHeight;
        const double left = X(piece.from);
        const double right = X(piece.from + piece.Length());
        const double side = it.turnDirection == 0 ? 1 : -1;
        const auto rise = [&](double radius) {
            return radius < infiniteRadius ? middle : middle + side * bandHeight * 0.36;
        };
        const double end = it.type == arcType ? it.startRadius : it.endRadius;
        const double from = it.type == straightType ? middle : rise(it.startRadius);
        const double to = it.type == straightType ? middle : rise(end);
        const Pen pen{.colour = ElementColour(it), .width = 0.35};
        canvas.Polyline({{left, curvature.value_or(middle)}, {left, from}, {right, to}}, pen);
        curvature = to;
        const TextStyle style{.size = 1.9, .anchorX = 0.5, .anchorY = 0.5, .colour = pen.colour};
        const std::string text = "R " + FormatReal(it.startRadius, 0);
        if (it.type == arcType && canvas.TextWidth(text, style) + 1 < right - left) {
            canvas.Text({(left + right) / 2, middle - side * 1.1}, text, style);
        }
    }

    void DrawCurve(const GradePoint& point) {
        std::vector<Place> places;
        constexpr int steps = 60;
        const double from = std::max(point.curveFrom, line.Start());
        const double to = std::min(point.curveTo, line.End());
        for (int i = 0; i <= steps; ++i) {
            const double at = from + (to - from) * i / steps;
            places.push_back({X(at), Y(HeightAt(at))});
        }
        canvas.Polyline(places, {.colour = colours::verticalCurve, .width = 0.75});
        for (const Place& end : {places.front(), places.back()}) {
            canvas.Line({end.x, end.y - 1}, {end.x, end.y + 1}, {.colour = colours::verticalCurve, .width = 0.25});
        }
    }

    /// The share of a tangent's length at which its label keeps clear of the broken chains, as near to the middle as
    /// can be; the middle itself when there is no such place.
    [[nodiscard]] double ShareWithoutBreak(double left, double right, double half) const {
        const auto breaks = line.Breaks();
        const auto clear = [&](double at) {
            return at - half > left && at + half < right &&
                   std::none_of(breaks.begin(), breaks.end(), [&](const Break& it) {
                       return std::fabs(X(it.continuous) - breakWidth / 2 - at) < half + breakWidth / 2;
                   });
        };
        constexpr double middle = 0.5;
        constexpr int steps = 25;
        for (int i = 0; i < steps; ++i) {
            const double shift = middle * i / steps;
            for (const double share : {middle - shift, middle + shift}) {
                if (clear(left + share * (right - left))) return share;
            }
        }
        return middle;
    }

    void DrawGrade(const GradePoint& from, const GradePoint& to) {
        const Place left{X(from.at), Y(from.record.elevation)};
        const Place right{X(to.at), Y(to.record.elevation)};
        const double room = std::hypot(right.x - left.x, right.y - left.y);
        TextStyle style{
            .size = 2.1, .angle = std::atan2(right.y - left.y, right.x - left.x), .anchorX = 0.5, .halo = true};
        std::string grade = from.record.gradeOut > 0 ? "+" : "";
        grade += FormatReal(from.record.gradeOut * percent, 3) + " %";
        const std::string full = grade + "   " + FormatReal(from.record.distanceToNext, 2) + " m";
        const bool roomForFull = canvas.TextWidth(full, style) + 6 < room;
        if (!roomForFull && canvas.TextWidth(grade, style) + 3 > room) return;
        const std::string& text = roomForFull ? full : grade;
        const double share = ShareWithoutBreak(left.x, right.x, canvas.TextWidth(text, style) / 2 + 1);
        canvas.Text({left.x + share * (right.x - left.x) + 1.2 * std::sin(style.angle),
                     left.y + share * (right.y - left.y) - 1.2 * std::cos(style.angle)},
                    text, style);
    }

    static std::string CurveText(const GradePoint& point) {
        if (!point.curved) return "";
        if (point.record.radius > 0) {
            return "R " + FormatReal(point.record.radius, 0) + "  T " +
                   FormatReal((point.curveTo - point.curveFrom) / 2, 2);
        }
        return "L " + FormatReal(point.at - point.curveFrom, 2) + " + " + FormatReal(point.curveTo - point.at, 2);
    }

    Canvas& canvas;
    const RoadLine& line;
    std::vector<GradePoint> points;
    std::vector<Place> samples;  ///< continuous mileage and height while fitting, then places on the sheet
    Box frame, graph;
    LengthAxis axis;
    std::optional<double> curvature;  ///< where the last element of the plan band ended (mm)
    double vertical = 1;              ///< scale denominator
    double base = 0;                  ///< height of the graph's lower edge (m)
    double heightStep = 1;            ///< m
};

void DrawLegend(Canvas& canvas, Place place, const std::string& scales) {
    canvas.Text(place, "Profile", {.size = 2.8, .bold = true});
    const Pen pens[] = {{.colour = colours::straight, .width = 0.5},
                        {.colour = colours::verticalCurve, .width = 0.75},
                        {.colour = colours::dim, .width = 0.18, .dashed = true}};
    const char* texts[] = {"grade", "vertical curve", "tangents"};
    for (int i = 0; i < 3; ++i) {
        place.y += 4.6;
        canvas.Line({place.x, place.y - 0.8}, {place.x + 9, place.y - 0.8}, pens[i]);
        canvas.Text({place.x + 11, place.y}, texts[i], {});
    }
    place.y += 4.6;
    canvas.Fill({{place.x + 4.5, place.y - 1.7}, {place.x + 5.3, place.y - 0.3}, {place.x + 3.7, place.y - 0.3}},
                colours::ink);
    canvas.Text({place.x + 11, place.y}, "grade-change point", {});
    canvas.Text({place.x, place.y + 6}, scales, {.size = 2.6, .bold = true});
    canvas.Text({place.x, place.y + 9.5}, "lengths / heights", {.size = 2});
}

}  // namespace

std::string DrawProfile(Canvas& canvas, RoadDesign* road, const RoadLine& line, const Box& box, const Box& column) {
    Profile profile(canvas, road, line, box);
    profile.DrawGrid();
    profile.DrawBands();
    profile.DrawBreaks();
    profile.DrawLines();
    profile.DrawPoints();
    DrawLegend(canvas, {column.left, column.top + 4}, profile.Scales());
    return profile.Scales();
}

}  // namespace kesto::host
