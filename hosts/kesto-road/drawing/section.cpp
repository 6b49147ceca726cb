#include "drawing/section.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

#include "drawing/scales.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double axisRoom = 20;        // mm left of the graph, for heights and the names of the bands
constexpr double sideRoom = 14;        // mm between the outermost edges and the ends of the graph
constexpr double topRoom = 12;         // mm above the graph, for left, centre line, right
constexpr double bandHeight = 6;       // mm, least
constexpr double fanHeight = 5;        // mm in which the lines of crowded edges spread
constexpr double edgeBandHeight = 12;  // mm: room for "12345.678" upright
constexpr double edgeSpacing = 3.2;    // mm between two upright numbers
constexpr double furthestShift = 25;   // mm that such a number may stand beside its edge
constexpr double leastCell = 2.2;      // mm: a narrower plate takes no upright text
constexpr double leastArrow = 17;      // mm: a narrower plate takes no slope arrow
constexpr double gridOnSheet = 8;      // mm, least distance of height lines
constexpr double pavementDepth = 2;    // mm
constexpr double surfaceShare = 0.45;  // of the graph's height that the surface may fill when exaggerated
constexpr double leastSpan = 1;        // m that the graph is wide at least
constexpr double sameValue = 1e-9;     // m or per cent: a smaller number counts as 0
constexpr double upright = -std::numbers::pi / 2;
constexpr double textSize = 2.3;   // mm
constexpr int heightDecimals = 3;  // millimetres
constexpr int slopeDecimals = 3;   // per cent
constexpr double exaggerations[] = {10, 5, 2, 1};

/// A plate as it lies in the section: offsets positive to the right.
struct Strip {
    const SectionPlate* plate;
    std::int32_t side;
    double inner, outer;                            ///< offsets (m)
    double innerHeight, raisedHeight, outerHeight;  ///< before and after the step, and at the outer edge (m)
};

std::vector<Strip> Strips(const CrossSection& section) {
    std::vector<Strip> strips;
    for (const std::int32_t side : bothSides) {
        double inner = 0;
        double height = section.height.value_or(0);
        for (const SectionPlate& it : section.plates[static_cast<std::size_t>(side)]) {
            const double outer = SideSign(side) * it.offset;
            strips.push_back({&it, side, inner, outer, height, height + it.step, it.height});
            inner = outer;
            height = it.height;
        }
    }
    return strips;
}

std::string Signed(double number, int decimals) {
    std::string text = number > sameValue ? "+" : "";
    return text += FormatReal(number, decimals);
}

/// One band of texts below the graph, a cell for each plate.
struct Band {
    const char* name;
    std::function<std::string(const Strip&)> text;
};

class SectionGraph {
public:
    SectionGraph(Canvas& sheet, const CrossSection& shown, const Box& box)
        : canvas(sheet), section(shown), strips(Strips(shown)), frame(box) {
        bands = {{"plate", [](const Strip& it) { return std::string(it.plate->name); }},
                 {"width (m)", [](const Strip& it) { return FormatReal(it.plate->width, heightDecimals); }},
                 {"slope (%)", [](const Strip& it) { return Signed(it.plate->crossSlope, slopeDecimals); }}};
        const bool stepped = std::any_of(strips.begin(), strips.end(),
                                         [](const Strip& it) { return std::fabs(it.plate->step) > sameValue; });
        if (stepped) {
            bands.push_back({"step (m)", [](const Strip& it) { return Signed(it.plate->step, heightDecimals); }});
        }
        graph = {box.left + axisRoom, box.top + topRoom, box.right, 0};
        FitWidths();
        double below = fanHeight + 2 * edgeBandHeight;
        for (const Band& band : bands) below += HeightOf(band);
        graph.bottom = box.bottom - below;
        FitHeights();
    }

    void Draw() {
        DrawGrid();
        DrawSurface();
        DrawCentreLine();
        for (const Strip& strip : strips) DrawSlope(strip);
        double top = graph.bottom;
        for (const Band& band : bands) {
            DrawBand(band, top);
            top += HeightOf(band);
        }
        DrawEdges(top);
    }

    [[nodiscard]] std::string Scales() const { return ScaleText(horizontal) + " / " + ScaleText(vertical); }
    [[nodiscard]] double Exaggeration() const noexcept { return horizontal / vertical; }
    [[nodiscard]] int LeftOut() const noexcept { return leftOut; }

private:
    [[nodiscard]] double X(double offset) const { return middle + offset * millimetresPerMetre / horizontal; }
    [[nodiscard]] double Y(double height) const {
        return graph.bottom - (height - base) * millimetresPerMetre / vertical;
    }

    void FitWidths() {
        double left = 0;
        double right = 0;
        for (const Strip& it : strips) {
            left = std::min(left, it.outer);
            right = std::max(right, it.outer);
        }
        const double room = graph.Width() - 2 * sideRoom;
        horizontal = std::max(horizontal, UsualScale(std::max(right - left, leastSpan) * millimetresPerMetre / room));
        middle = (graph.left + graph.right) / 2 - (left + right) / 2 * millimetresPerMetre / horizontal;
    }

    /// The largest exaggeration with which the surface stays in its share of the graph; a section that is too high
    /// even without gets a smaller scale.
    void FitHeights() {
        double low = section.height.value_or(0);
        double high = low;
        for (const Strip& it : strips) {
            low = std::min({low, it.raisedHeight, it.outerHeight});
            high = std::max({high, it.raisedHeight, it.outerHeight});
        }
        const double room = graph.Height() * surfaceShare;
        for (const double factor : exaggerations) {
            vertical = horizontal / factor;
            if ((high - low) * millimetresPerMetre / vertical <= room) break;
        }
        if ((high - low) * millimetresPerMetre / vertical > room) {
            horizontal = UsualScale((high - low) * millimetresPerMetre / room);
            FitWidths();
            vertical = horizontal;
        }
        heightStep = UsualStep(gridOnSheet * vertical / millimetresPerMetre);
        base = (low + high) / 2 - graph.Height() / 2 * vertical / millimetresPerMetre;
    }

    void DrawGrid() {
        const double top = base + graph.Height() * vertical / millimetresPerMetre;
        const auto first = static_cast<std::int64_t>(std::ceil(base / heightStep + 1e-6));
        for (std::int64_t i = first; static_cast<double>(i) * heightStep < top; ++i) {
            const double height = static_cast<double>(i) * heightStep;
            if (Y(height) > graph.bottom - textSize) continue;  // the band below has its own line
            canvas.Line({graph.left, Y(height)}, {graph.right, Y(height)}, {.colour = colours::faint, .width = 0.15});
            canvas.Text({graph.left - 1.5, Y(height)}, FormatReal(height, heightStep < 0.1 ? 2 : 1),
                        {.anchorX = 1, .anchorY = 0.5});
        }
        canvas.Line({graph.left, graph.top}, {graph.left, frame.bottom}, {.width = 0.3});
        canvas.Text({graph.left - 1.5, graph.top - 3}, "height (m)", {.size = 2, .anchorX = 1, .anchorY = 0.5});
        canvas.Text({graph.left + 4, graph.top - 8}, "left", {.size = 3, .anchorY = 0.5, .bold = true});
        canvas.Text({graph.right - 4, graph.top - 8}, "right", {.size = 3, .anchorX = 1, .anchorY = 0.5, .bold = true});
    }

    void DrawSurface() {
        for (const Strip& it : strips) {
            canvas.Fill({{X(it.inner), Y(it.raisedHeight)},
                         {X(it.outer), Y(it.outerHeight)},
                         {X(it.outer), Y(it.outerHeight) + pavementDepth},
                         {X(it.inner), Y(it.raisedHeight) + pavementDepth}},
                        colours::pavement);
        }
        for (const Strip& it : strips) {
            const Place outer{X(it.outer), Y(it.outerHeight)};
            canvas.Line({outer.x, outer.y + 1}, {outer.x, graph.bottom}, {.colour = colours::faint, .width = 0.18});
            canvas.Polyline({{X(it.inner), Y(it.innerHeight)}, {X(it.inner), Y(it.raisedHeight)}, outer},
                            {.colour = colours::straight, .width = 0.6});
            canvas.Dot(outer, 0.8, colours::straight, false);
        }
    }

    void DrawCentreLine() {
        const double x = X(0);
        const Place axis{x, Y(section.height.value_or(0))};
        canvas.Line({x, graph.top}, {x, graph.bottom}, {.colour = colours::arc, .width = 0.25, .dashed = true});
        canvas.Dot(axis, 0.8, colours::arc, true);
        canvas.Text({x, graph.top - 3}, "centre line  " + FormatReal(section.height.value_or(0), heightDecimals),
                    {.size = 2.6, .anchorX = 0.5, .anchorY = 0.5, .colour = colours::arc, .bold = true});
    }

    /// The slope above its plate, with an arrow that points downhill.
    void DrawSlope(const Strip& it) {
        if (std::fabs(X(it.outer) - X(it.inner)) < leastArrow) return;
        const bool leftward = it.outer < it.inner;
        const Place left{X(std::min(it.inner, it.outer)), Y(leftward ? it.outerHeight : it.raisedHeight)};
        const Place right{X(std::max(it.inner, it.outer)), Y(leftward ? it.raisedHeight : it.outerHeight)};
        const double angle = std::atan2(right.y - left.y, right.x - left.x);
        const Place centre{(left.x + right.x) / 2, (left.y + right.y) / 2};
        const auto at = [&](double along, double above) {
            return Place{centre.x + along * std::cos(angle) + above * std::sin(angle),
                         centre.y + along * std::sin(angle) - above * std::cos(angle)};
        };
        canvas.Text(at(0, 4.2), Signed(it.plate->crossSlope, slopeDecimals) + " %",
                    {.size = textSize, .angle = angle, .anchorX = 0.5, .halo = true});
        if (std::fabs(it.plate->crossSlope) < sameValue) return;
        const double down = right.y > left.y ? 1 : -1;
        canvas.Line(at(-5 * down, 2.6), at(4 * down, 2.6), {.width = 0.25});
        canvas.Fill({at(5 * down, 2.6), at(3.2 * down, 3.2), at(3.2 * down, 2.0)}, colours::ink);
    }

    [[nodiscard]] double Cell(const Strip& it) const { return std::fabs(X(it.outer) - X(it.inner)); }

    double TextWidth(const std::string& text) { return canvas.TextWidth(text, {.size = textSize}); }

    /// Texts that do not fit across their plate stand upright and make their band higher.
    double HeightOf(const Band& band) {
        double height = bandHeight;
        for (const Strip& it : strips) {
            const double width = TextWidth(band.text(it));
            if (Cell(it) < width + 1.5 && Cell(it) >= leastCell) height = std::max(height, width + 2);
        }
        return height;
    }

    void NameBand(const char* name, double top, double height) {
        canvas.Line({frame.left, top}, {frame.right, top}, {.width = 0.2});
        canvas.Text({frame.left + 0.5, top + height / 2}, name, {.size = textSize, .anchorY = 0.5});
    }

    void DrawBand(const Band& band, double top) {
        const double height = HeightOf(band);
        NameBand(band.name, top, height);
        for (const Strip& it : strips) {
            for (const double offset : {it.inner, it.outer}) {
                canvas.Line({X(offset), top}, {X(offset), top + height}, {.width = 0.15});
            }
            const std::string text = band.text(it);
            const Place place{(X(it.inner) + X(it.outer)) / 2, top + height / 2};
            const bool lying = Cell(it) >= TextWidth(text) + 1.5;
            if (lying || Cell(it) >= leastCell) {
                canvas.Text(place, text,
                            {.size = textSize, .angle = lying ? 0 : upright, .anchorX = 0.5, .anchorY = 0.5});
            } else if (!text.empty()) {
                ++leftOut;
            }
        }
    }

    /// Offsets and heights of the edges stand upright; crowded ones are spread outwards from the centre line.
    void DrawEdges(double top) {
        const double first = top + fanHeight;
        canvas.Line({frame.left, top}, {frame.right, top}, {.width = 0.2});
        NameBand("offset (m)", first, edgeBandHeight);
        NameBand("height (m)", first + edgeBandHeight, edgeBandHeight);
        canvas.Line({frame.left, frame.bottom}, {frame.right, frame.bottom}, {.width = 0.2});
        DrawEdge(X(0), X(0), 0, section.height.value_or(0), top);
        for (const std::int32_t side : bothSides) {
            const double sign = SideSign(side);
            double last = X(0);
            for (const Strip& it : strips) {
                if (it.side != side) continue;
                const double edge = X(it.outer);
                const double x = sign * std::max(sign * edge, sign * last + edgeSpacing);
                const bool room = x > graph.left + 2 && x < graph.right - 2 && std::fabs(x - edge) <= furthestShift;
                if (!room) {
                    leftOut += 2;
                    continue;
                }
                last = x;
                DrawEdge(edge, x, it.outer, it.outerHeight, top);
            }
        }
    }

    void DrawEdge(double edge, double x, double offset, double height, double top) {
        const double first = top + fanHeight;
        canvas.Polyline({{edge, top}, {edge, top + 1}, {x, first - 1}, {x, first}},
                        {.colour = colours::dim, .width = 0.15});
        const TextStyle style{.size = textSize, .angle = upright, .anchorX = 0.5, .anchorY = 0.5};
        canvas.Text({x, first + edgeBandHeight / 2}, FormatReal(offset, heightDecimals), style);
        canvas.Text({x, first + edgeBandHeight * 1.5}, FormatReal(height, heightDecimals), style);
    }

    Canvas& canvas;
    const CrossSection& section;
    std::vector<Strip> strips;
    std::vector<Band> bands;
    Box frame, graph;
    double horizontal = 1;  ///< scale denominator
    double vertical = 1;    ///< scale denominator
    double middle = 0;      ///< where the centre line stands (mm)
    double base = 0;        ///< height of the graph's lower edge (m)
    double heightStep = 1;  ///< m
    int leftOut = 0;
};

void DrawNotes(Canvas& canvas, const CrossSection& section, const std::string& stakeText, const SectionGraph& drawn,
               Place place) {
    canvas.Text(place, "Cross section", {.size = 2.8, .bold = true});
    const CentrePoint& centre = section.centre;
    std::vector<std::string> notes{stakeText};
    if (centre.stake.occurrence > 0) notes.push_back("occurrence " + std::to_string(centre.stake.occurrence));
    notes.push_back("x " + FormatReal(centre.x, heightDecimals));
    notes.push_back("y " + FormatReal(centre.y, heightDecimals));
    notes.push_back("azimuth " + FormatReal(centre.azimuth, 4) + " deg");
    notes.emplace_back("");
    notes.emplace_back("looking towards");
    notes.emplace_back("increasing mileage");
    if (!section.height) {
        notes.emplace_back("");
        notes.emplace_back("heights from the centre");
        notes.emplace_back("line: no profile");
    }
    for (const std::string& note : notes) canvas.Text({place.x, place.y += 4}, note, {});
    canvas.Text({place.x, place.y += 8}, drawn.Scales(), {.size = 2.6, .bold = true});
    canvas.Text({place.x, place.y += 3.5}, "widths / heights", {.size = 2});
    const double factor = drawn.Exaggeration();
    canvas.Text({place.x, place.y += 4},
                factor > 1 ? "heights exaggerated " + FormatReal(factor, 0) + " times" : "heights not exaggerated", {});
    if (drawn.LeftOut() > 0) {
        canvas.Text({place.x, place.y += 6}, std::to_string(drawn.LeftOut()) + " labels left out",
                    {.size = 2, .colour = colours::dim});
    }
}

}  // namespace

std::string DrawSection(Canvas& canvas, const CrossSection& section, const std::string& stakeText, const Box& box,
                        const Box& column) {
    SectionGraph graph(canvas, section, box);
    graph.Draw();
    DrawNotes(canvas, section, stakeText, graph, {column.left, column.top + 4});
    return graph.Scales();
}

}  // namespace kesto::host
