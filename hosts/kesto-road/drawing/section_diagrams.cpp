#include "drawing/section_diagrams.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "drawing/broken_chains.hpp"
#include "drawing/label_placer.hpp"
#include "drawing/length_axis.hpp"
#include "drawing/scales.hpp"
#include "road/cross_section.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double sampleOnSheet = 0.5;  // mm between two drawn points of a line
constexpr double rowHeight = 5;        // mm of the band with the mileages of the change sections
constexpr double breakHeight = 3;      // mm above the graphs for the mileages of broken chains
constexpr double graphMargin = 3;      // mm above and below the lines of a graph, for labels
constexpr double gridOnSheet = 4;      // mm, least distance of grid lines
constexpr double leastSlopes = 1;      // per cent that the diagram shows at least
constexpr double leastWidths = 1;      // m that the diagram shows at least
constexpr double samePlace = 1e-6;     // m along the road
constexpr double sameValue = 1e-9;     // per cent or m: a smaller number counts as 0
constexpr double labelSize = 2;        // mm
constexpr int slopeDecimals = 2;       // per cent, without the zeros at the end
constexpr int widthDecimals = 3;       // m, without the zeros at the end

constexpr std::array<Colour, 2> sideColours{colours::leftSide, colours::rightSide};

/// A number without the zeros at its end.
std::string Brief(double number, int decimals) {
    std::string text = FormatReal(number, decimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

/// The same with a plus in front of what is above zero.
std::string Signed(double number, int decimals) {
    std::string text = number > sameValue ? "+" : "";
    return text += Brief(number, decimals);
}

/// The scale of a graph's values, which lie between its top and bottom edge.
class Scale {
public:
    Scale(const Box& box, double least, double most) : bottom(box.bottom - graphMargin), low(least) {
        scale = (box.Height() - 2 * graphMargin) / (most - least);
        step = UsualStep(gridOnSheet / scale);
    }
    [[nodiscard]] double Y(double value) const noexcept { return bottom - (value - low) * scale; }
    [[nodiscard]] double Step() const noexcept { return step; }

private:
    double bottom, low;
    double scale = 1;  // mm for a unit
    double step = 1;
};

struct Extremes {
    double low = 0, high = 0;
    void Include(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    [[nodiscard]] Extremes AtLeast(double range) const {
        return high - low < range ? Extremes{(low + high - range) / 2, (low + high + range) / 2} : *this;
    }
};

/// The plates of both sides at a place; empty where a side has no section.
struct Sample {
    double at;  ///< continuous mileage (m)
    std::array<std::vector<SectionPlate>, 2> plates;
};

/// A change section's place.
struct Mark {
    double at;  ///< continuous mileage (m)
    Stake stake;
    std::int32_t side, kind;
};

class Diagrams {
public:
    Diagrams(Canvas& sheet, RoadDesign* designed, const RoadLine& walked, const Box& box)
        : canvas(sheet), road(designed), line(walked), frame(box), axis(box, walked), placer(box) {
        const double top = line.Breaks().empty() ? box.top : box.top + breakHeight;
        const double divide = top + (box.bottom - top - rowHeight) / 2;
        slopes = {axis.left, top, axis.X(line.End()), divide};
        widths = {axis.left, divide + rowHeight, axis.X(line.End()), box.bottom};
        for (const std::int32_t side : bothSides) {
            for (const std::int32_t kind : bothKinds) {
                for (const Change& it : Changes(road, side, kind)) {
                    if (it.stake) marks.push_back({it.continuous, *it.stake, side, kind});
                }
            }
        }
        std::stable_sort(marks.begin(), marks.end(), [](const Mark& a, const Mark& b) { return a.at < b.at; });
        TakeSamples();
    }

    void Draw() {
        const Scale slopeScale = SlopeScale();
        const Scale widthScale = WidthScale();
        DrawGrid(slopes, slopeScale, "slope (%)");
        DrawGrid(widths, widthScale, "width (m)");
        DrawMileages();
        DrawBreaks();
        for (const std::int32_t side : bothSides) DrawSlopes(slopeScale, side);
        for (const std::int32_t side : bothSides) DrawWidths(widthScale, side);
        LabelChanges(slopeScale, widthScale);
    }

    /// Labels that found no room.
    [[nodiscard]] int LeftOut() const noexcept { return leftOut; }

private:
    void TakeSamples() {
        const double step = sampleOnSheet * axis.denominator / millimetresPerMetre;
        const auto count = static_cast<int>(std::ceil(line.Length() / step));
        std::vector<double> places;
        for (int i = 0; i <= count; ++i) places.push_back(std::min(line.Start() + i * step, line.End()));
        for (const Mark& mark : marks) {
            places.push_back(std::max(mark.at - samePlace, line.Start()));
            places.push_back(mark.at);
        }
        std::sort(places.begin(), places.end());
        for (const double at : places) samples.push_back(SampleAt(at));
    }

    [[nodiscard]] Sample SampleAt(double at) const {
        Sample sample{at, {}};
        const Stake stake = line.At(at).stake;
        for (const std::int32_t side : bothSides) {
            sample.plates[static_cast<std::size_t>(side)] =
                PlatesAt(road, side, stake).value_or(std::vector<SectionPlate>());
        }
        return sample;
    }

    [[nodiscard]] Scale SlopeScale() const {
        Extremes range;
        for (const Sample& sample : samples) {
            for (const auto& plates : sample.plates) {
                if (!plates.empty()) range.Include(plates.front().crossSlope);
            }
        }
        range = range.AtLeast(leastSlopes);
        return {slopes, range.low, range.high};
    }

    /// The left side is above the centre line, as on a plan of a road that runs from left to right.
    [[nodiscard]] Scale WidthScale() const {
        Extremes range;
        for (const Sample& sample : samples) {
            for (const std::int32_t side : bothSides) {
                for (const auto& plate : sample.plates[static_cast<std::size_t>(side)]) {
                    range.Include(-SideSign(side) * plate.offset);
                }
            }
        }
        range = range.AtLeast(leastWidths);
        return {widths, range.low, range.high};
    }

    void DrawGrid(const Box& graph, const Scale& scale, const char* name) {
        const auto draw = [&](int i) {
            const double value = i * scale.Step();
            const double y = scale.Y(value);
            if (y < graph.top || y > graph.bottom - 1) return false;  // the band below has its own line
            if (i == 0) placer.TakeLine({graph.left, y}, {graph.right, y}, 0.5);
            const Pen pen =
                i == 0 ? Pen{.colour = colours::dim, .width = 0.25} : Pen{.colour = colours::faint, .width = 0.15};
            canvas.Line({graph.left, y}, {graph.right, y}, pen);
            const std::string text =
                &graph == &slopes ? Signed(value, widthDecimals) : Brief(std::fabs(value), widthDecimals);
            canvas.Text({graph.left - 1.5, y}, text, {.size = 2, .anchorX = 1, .anchorY = 0.5});
            return true;
        };
        for (int i = 0; draw(i); ++i) {
        }
        for (int i = -1; draw(i); --i) {
        }
        canvas.Line({graph.left, graph.top}, {graph.left, graph.bottom}, {.width = 0.3});
        const double middle = (graph.top + graph.bottom) / 2;
        canvas.Text({frame.left + 0.5, middle}, name,
                    {.size = 2.1, .angle = -std::acos(0.0), .anchorX = 0.5, .anchorY = 1});
    }

    /// The mileages of the change sections, once for each place.
    void DrawMileages() {
        const double top = slopes.bottom;
        const double bottom = widths.top;
        for (const double y : {top, bottom}) canvas.Line({frame.left, y}, {slopes.right, y}, {.width = 0.15});
        canvas.Text({frame.left + 0.5, (top + bottom) / 2}, "change at", {.size = 2.1, .anchorY = 0.5});
        TextRow row;
        const TextStyle style{.size = labelSize, .anchorX = 0.5, .anchorY = 0.5};
        double last = line.Start() - 1;
        for (const Mark& mark : marks) {
            if (mark.at - last < samePlace) continue;
            last = mark.at;
            const double x = axis.X(mark.at);
            canvas.Line({x, slopes.top}, {x, top}, {.colour = colours::faint, .width = 0.15});
            canvas.Line({x, bottom}, {x, widths.bottom}, {.colour = colours::faint, .width = 0.15});
            for (const double y : {top, bottom}) canvas.Line({x, y - 0.7}, {x, y + 0.7}, {.width = 0.2});
            const std::string text = FormatMileage(line.Road(), mark.stake, 2);
            const double half = canvas.TextWidth(text, style) / 2 + 0.5;
            const double middle = std::clamp(x, slopes.left + half, std::max(slopes.left + half, slopes.right - half));
            if (row.Take(middle - half, middle + half)) {
                canvas.Text({middle, (top + bottom) / 2}, text, style);
            } else {
                ++leftOut;
            }
        }
    }

    /// Draws a value of a side wherever it is there. @param value what a sample shows, from its plates
    template <class Value>
    void DrawLine(const Scale& scale, std::int32_t side, const Pen& pen, Value&& value) {
        std::vector<Place> places;
        for (const Sample& sample : samples) {
            const std::optional<double> shown = value(sample.plates[static_cast<std::size_t>(side)]);
            if (shown) {
                places.push_back({axis.X(sample.at), scale.Y(*shown)});
                if (places.size() > 1) placer.TakeLine(places[places.size() - 2], places.back(), 0.6);
            } else if (!places.empty()) {
                canvas.Polyline(places, pen);
                places.clear();
            }
        }
        if (!places.empty()) canvas.Polyline(places, pen);
    }

    /// As in the profile, but with their mileages above the graphs, where no line crosses them.
    void DrawBreaks() {
        TextRow row;
        for (const Break& it : line.Breaks()) {
            const double x = axis.X(it.continuous);
            DrawBreak(canvas, x, slopes.top, widths.bottom);
            placer.TakeLine({x, slopes.top}, {x, widths.bottom}, 0.5);
            const std::string text = BreakText(line, it);
            const double half = canvas.TextWidth(text, breakStyle) / 2 + 0.5;
            const double middle = std::clamp(x, frame.left + half, frame.right - half);
            if (row.Take(middle - half, middle + half)) {
                TextStyle style = breakStyle;
                style.anchorX = 0.5;
                canvas.Text({middle, slopes.top - 1}, text, style);
            } else {
                ++leftOut;
            }
        }
    }

    void DrawSlopes(const Scale& scale, std::int32_t side) {
        // The right side is dashed, so that the left one shows where both have the same slope.
        const Pen pen{.colour = sideColours[static_cast<std::size_t>(side)], .width = 0.6, .dashed = side == rightSide};
        DrawLine(scale, side, pen, [](const auto& plates) {
            return plates.empty() ? std::nullopt : std::optional<double>(plates.front().crossSlope);
        });
    }

    void DrawWidths(const Scale& scale, std::int32_t side) {
        std::size_t most = 0;
        for (const Sample& sample : samples)
            most = std::max(most, sample.plates[static_cast<std::size_t>(side)].size());
        for (std::size_t i = 0; i < most; ++i) {
            const Pen pen{.colour = sideColours[static_cast<std::size_t>(side)], .width = i == 0 ? 0.6 : 0.25};
            DrawLine(scale, side, pen, [&](const auto& plates) {
                return i < plates.size() ? std::optional<double>(-SideSign(side) * plates[i].offset) : std::nullopt;
            });
        }
    }

    /// Dots and values where the change sections are: the slope, and the offset of the innermost edge that changes.
    void LabelChanges(const Scale& slopeScale, const Scale& widthScale) {
        for (const Mark& mark : marks) {
            const auto plates = SampleAt(mark.at).plates[static_cast<std::size_t>(mark.side)];
            if (plates.empty()) continue;
            const Colour colour = sideColours[static_cast<std::size_t>(mark.side)];
            const double slope = plates.front().crossSlope;
            const double offset = plates.front().offset;
            const bool sloped = mark.kind == heightening;
            const Place place{axis.X(mark.at),
                              sloped ? slopeScale.Y(slope) : widthScale.Y(-SideSign(mark.side) * offset)};
            canvas.Dot(place, 0.6, colour, true);
            const std::string text = sloped ? Signed(slope, slopeDecimals) : Brief(offset, widthDecimals);
            Label(place, text, colour, sloped ? slopes : widths);
        }
    }

    void Label(Place place, const std::string& text, const Colour& colour, const Box& graph) {
        const TextStyle style{.size = labelSize, .anchorY = 0.5, .colour = colour, .bold = true};
        const double width = canvas.TextWidth(text, style);
        for (const double distance : {2.0, 3.0, 4.2}) {
            for (const double up : {-1.0, 1.0}) {
                for (const double shift : {-width / 2, 0.8, -width - 0.8}) {
                    const Place start{place.x + shift, place.y + up * distance};
                    const Quad quad = TextQuad(start, 0, width, labelSize);
                    if (start.y - 1 < graph.top || start.y + 1 > graph.bottom || !placer.IsFree(quad)) continue;
                    placer.Take(quad);
                    canvas.Text(start, text, style);
                    return;
                }
            }
        }
        ++leftOut;
    }

    Canvas& canvas;
    RoadDesign* road;
    const RoadLine& line;
    Box frame, slopes, widths;
    LengthAxis axis;
    LabelPlacer placer;
    std::vector<Mark> marks;
    std::vector<Sample> samples;
    int leftOut = 0;
};

void DrawLegend(Canvas& canvas, Place place, int leftOut) {
    canvas.Text(place, "Cross section", {.size = 2.8, .bold = true});
    const Pen pens[] = {{.colour = colours::leftSide, .width = 0.6},
                        {.colour = colours::rightSide, .width = 0.6, .dashed = true},
                        {.colour = colours::dim, .width = 0.6},
                        {.colour = colours::dim, .width = 0.25}};
    const char* texts[] = {"slope, left side", "slope, right side", "innermost plate, edge", "other plates, edge"};
    for (int i = 0; i < 4; ++i) {
        place.y += 4.6;
        canvas.Line({place.x, place.y - 0.8}, {place.x + 9, place.y - 0.8}, pens[i]);
        canvas.Text({place.x + 11, place.y}, texts[i], {});
    }
    place.y += 4.6;
    canvas.Dot({place.x + 4.5, place.y - 0.8}, 0.6, colours::dim, true);
    canvas.Text({place.x + 11, place.y}, "change section", {});
    place.y += 6;
    for (const char* text :
         {"slope: innermost plates, positive", "where the outer edge is higher", "width: left side above"}) {
        canvas.Text(place, text, {.size = 2});
        place.y += 3.2;
    }
    if (leftOut > 0)
        canvas.Text(place, std::to_string(leftOut) + " labels left out", {.size = 2, .colour = colours::dim});
}

}  // namespace

void DrawSectionDiagrams(Canvas& canvas, RoadDesign* road, const RoadLine& line, const Box& box, const Box& column) {
    Diagrams diagrams(canvas, road, line, box);
    diagrams.Draw();
    DrawLegend(canvas, {column.left, column.top + 4}, diagrams.LeftOut());
}

}  // namespace kesto::host
