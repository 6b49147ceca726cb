#include "drawing/plan.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "drawing/broken_chains.hpp"
#include "drawing/label_placer.hpp"
#include "drawing/plan_view.hpp"
#include "drawing/scales.hpp"
#include "road/curves.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr double curveChord = 1.5;        // mm between two drawn points of a curve
constexpr double straightChord = 12;      // mm between two drawn points of a straight
constexpr double mostChords = 2000;       // of one element
constexpr double leastStakeSpacing = 13;  // mm between two labelled stakes
constexpr double gridOnSheet = 30;        // mm, least distance of grid crosses
constexpr double lineClearance = 1.2;     // mm kept free about the road
constexpr double labelHeight = 2.7;       // mm from one label to the next
constexpr int mostShifts = 40;            // places tried along the road for a label
constexpr double steepestLeader = 4;      // shift of a label along the road, in distances from it
constexpr double kilometre = 1000;        // m

Place Moved(Place place, double direction, double distance) noexcept {
    return {place.x + distance * std::cos(direction), place.y + distance * std::sin(direction)};
}

double DirectionTo(Place from, Place to) noexcept { return std::atan2(to.y - from.y, to.x - from.x); }

class Plan {
public:
    Plan(Canvas& sheet, const RoadLine& walked, const View& fitted, const Box& box)
        : canvas(sheet), line(walked), view(fitted), placer(box) {}

    /// The tangent polygon, as far as the sheet reaches.
    void DrawPolygon(const std::vector<Intersection>& polygon, const Box& box) {
        for (const Intersection& it : polygon) corners.push_back(view(it.x, it.y));
        if (corners.empty()) return;
        canvas.ClipTo(box);
        canvas.Polyline(corners, {.colour = colours::polygon, .width = 0.18});
        canvas.EndClip();
    }

    /// Circles at the intersections, with their names on the outer side of the curve.
    void DrawIntersections(const std::vector<Intersection>& polygon, const Box& box) {
        canvas.ClipTo(box);
        for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
            const double back = DirectionTo(corners[i], corners[i - 1]);
            const double inwards = back + std::remainder(DirectionTo(corners[i], corners[i + 1]) - back, fullTurn) / 2;
            canvas.Dot(corners[i], 0.6, colours::polygon, false);
            const Quad circle = TextQuad({corners[i].x - 0.8, corners[i].y}, 0, 1.6, 1.6);
            if (placer.IsFree(circle)) placer.Take(circle);  // a kink lies on the road: its leader begins there
            LabelCorner(corners[i], inwards + fullTurn / 2, IntersectionName(polygon[i], i));
        }
        canvas.EndClip();
    }

    void DrawElements() {
        for (const Piece& piece : line.Pieces()) {
            const double chord = piece.element.type == straightType ? straightChord : curveChord;
            const double wanted = std::ceil(piece.Length() * view.scale / chord);
            const auto chords = static_cast<int>(std::clamp(wanted, 1.0, mostChords));
            std::vector<Place> places;
            for (int i = 0; i <= chords; ++i) {
                const CentrePoint point = line.At(piece, piece.Length() * i / chords);
                places.push_back(view(point.x, point.y));
                if (i > 0) placer.TakeLine(places[places.size() - 2], places.back(), lineClearance);
            }
            canvas.Polyline(places, {.colour = ElementColour(piece.element), .width = 0.55});
        }
    }

    void DrawBreaks() {
        for (const Break& it : line.Breaks()) {
            const Place place = view(it.x, it.y);
            const double direction = view.Direction(it.azimuth);
            const Pen pen{.colour = colours::brokenChain, .width = 0.5};
            canvas.Line(Moved(place, direction + rightAngle, 2.2), Moved(place, direction - rightAngle, 2.2), pen);
            Label(place, direction, -1, BreakText(line, it), {.colour = colours::brokenChain, .bold = true});
        }
    }

    void DrawMainPoints(RoadDesign* road) {
        StakeCoordinate stake{};
        for (std::int32_t i = 0; GetStakeCoordinate(road, i, &stake); ++i) {
            double x = 0;
            double y = 0;
            double azimuth = 0;
            if (stake.label[0] == '\0' ||
                !GetPositionAndAzimuth(road, stake.mileage, 0, squareOffset, &x, &y, &azimuth, stake.occurrence)) {
                continue;
            }
            const Place place = view(stake.x, stake.y);
            const std::string text =
                std::string(stake.label) + " " + FormatMileage(line.Road(), {stake.mileage, stake.occurrence});
            Label(place, view.Direction(azimuth), -1, text, {.size = 2.1});
            canvas.Dot(place, 0.45, colours::ink, false);
        }
    }

    void DrawStakes() {
        const double step = UsualStep(std::max(leastStakeSpacing / view.scale, 10.0));
        std::vector<CentrePoint> points;
        line.ForEachMultiple(step, [&](const CentrePoint& point) {
            if (std::fabs(std::remainder(point.stake.mileage, step)) < 1e-6) points.push_back(point);
        });
        const auto isKilometre = [](const CentrePoint& point) {
            return std::fabs(std::remainder(point.stake.mileage, kilometre)) < 1e-6;
        };
        std::stable_partition(points.begin(), points.end(), isKilometre);  // these get their labels first
        for (const CentrePoint& point : points) {
            const bool whole = isKilometre(point);
            const Place place = view(point.x, point.y);
            const double direction = view.Direction(point.azimuth);
            const double tick = whole ? 2.2 : 1.2;
            canvas.Line(Moved(place, direction + rightAngle, tick), Moved(place, direction - rightAngle, tick / 2),
                        {.width = whole ? 0.45 : 0.25});
            Label(place, direction, 1, FormatMileage(line.Road(), point.stake, 0),
                  {.size = 2.1, .colour = whole ? colours::ink : colours::dim, .bold = whole});
        }
    }

    /// Crosses of the coordinate grid, with their coordinates where there is room.
    void DrawGrid(const Box& box) {
        const double step = UsualStep(gridOnSheet / view.scale);
        const Place middle{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
        const double reach = std::hypot(box.Width(), box.Height()) / 2 / view.scale;
        const Place centre = view.Ground(middle);
        const double firstX = std::ceil((centre.x - reach) / step) * step;
        const double firstY = std::ceil((centre.y - reach) / step) * step;
        const auto count = static_cast<int>(2 * reach / step);
        for (int i = 0; i <= count; ++i) {
            for (int k = 0; k <= count; ++k) {
                const double x = firstX + i * step;
                const double y = firstY + k * step;
                DrawCross(view(x, y), FormatReal(x, 0), FormatReal(y, 0));
            }
        }
    }

    [[nodiscard]] int Omitted() const noexcept { return omitted; }

private:
    /// Writes a label square to the road where there is room, with a leader.
    /// @param side +1 right of the road, -1 left of it; the other side serves when this one is full
    void Label(Place place, double direction, int side, const std::string& text, const TextStyle& style) {
        const double width = canvas.TextWidth(text, style) + 0.6;
        for (const double standOff : {3.2, 6.5, 11.0, 17.0}) {
            for (const int there : {side, -side}) {
                for (int shift = 0; shift <= mostShifts; ++shift) {
                    const int steps = (shift % 2 == 0 ? 1 : -1) * ((shift + 1) / 2);  // 0, -1, 1, -2, 2, ...
                    const double along = steps * labelHeight / 2;
                    const double normal = direction + there * rightAngle;
                    const Place start = Moved(Moved(place, normal, standOff), direction, along);
                    const Place foot = Moved(place, normal, lineClearance * 0.7);
                    if (std::fabs(along) > steepestLeader * standOff || !Fits(start, foot, normal, width)) continue;
                    Write(start, place, normal, text, style);
                    return;
                }
            }
        }
        ++omitted;
    }

    /// Writes a level label about a corner of the polygon, first in the direction that leads away from the road.
    void LabelCorner(Place corner, double away, const std::string& text) {
        const TextStyle style{.size = 2.3, .anchorY = 0.5, .colour = colours::polygonName, .bold = true};
        const double width = canvas.TextWidth(text, style);
        for (const double standOff : {1.6, 3.5, 6.0}) {
            for (const double turn : {0.0, 0.5, -0.5, 1.0, -1.0, 1.5, -1.5}) {
                // The text's middle lies so far out that its frame stays off the corner.
                const Place ray{std::cos(away + turn), std::sin(away + turn)};
                const Place middle{corner.x + ray.x * (standOff + width / 2),
                                   corner.y + ray.y * (standOff + labelHeight / 2)};
                const Place start{middle.x - width / 2, middle.y};
                const Quad room = TextQuad(start, 0, width, labelHeight);
                if (!placer.IsFree(room)) continue;
                placer.Take(room);
                canvas.Text(start, text, style);
                return;
            }
        }
        ++omitted;
    }

    void DrawCross(Place place, const std::string& x, const std::string& y) {
        constexpr double arm = 1.5;  // mm
        const Pen pen{.colour = colours::dim, .width = 0.15};
        const TextStyle style{.size = 1.8, .colour = colours::dim};
        const double width = std::max(canvas.TextWidth(x, style), canvas.TextWidth(y, style)) + arm + 1;
        const Quad room = TextQuad({place.x - arm, place.y}, 0, width + arm, 6);
        if (!placer.IsFree(room)) return;
        placer.Take(room);
        for (const double direction : {view.turn, view.turn + rightAngle}) {
            canvas.Line(Moved(place, direction, -arm), Moved(place, direction, arm), pen);
        }
        canvas.Text({place.x + arm, place.y - 0.9}, x, style);
        canvas.Text({place.x + arm, place.y + 2.3}, y, style);
    }

    bool Fits(Place start, Place foot, double normal, double width) {
        const Quad label = TextQuad(start, normal, width, labelHeight);
        const double reach = std::hypot(start.x - foot.x, start.y - foot.y);
        const double direction = std::atan2(start.y - foot.y, start.x - foot.x);
        const Quad leader = TextQuad(foot, direction, reach, 0.2);
        if (!placer.IsFree(label) || !placer.IsFree(leader)) return false;
        placer.Take(label);
        placer.Take(leader);
        return true;
    }

    void Write(Place start, Place place, double normal, const std::string& text, TextStyle style) {
        canvas.Line(place, Moved(start, normal, -0.4), {.colour = style.colour, .width = 0.13});
        // Text is turned so that it is read from below or from the right of the sheet.
        const double across = std::cos(normal);
        const bool flip = across < -1e-6 || (across < 1e-6 && std::sin(normal) > 0);
        style.angle = flip ? normal + std::numbers::pi : normal;
        style.halo = !corners.empty();  // the polygon may run below
        style.anchorX = flip ? 1 : 0;
        style.anchorY = 0.5;
        canvas.Text(start, text, style);
    }

    Canvas& canvas;
    const RoadLine& line;
    View view;
    LabelPlacer placer;
    std::vector<Place> corners;  ///< of the tangent polygon (mm)
    int omitted = 0;
};

void DrawNorthArrow(Canvas& canvas, Place centre, double turn) {
    constexpr double reach = 9;  // mm from the centre to the tip
    const double up = turn - rightAngle;
    const Place tip = Moved(centre, up, reach);
    const Place notch = Moved(centre, up, -reach * 0.35);
    const Place left = Moved(Moved(centre, up, -reach * 0.7), up - rightAngle, reach * 0.42);
    const Place right = Moved(Moved(centre, up, -reach * 0.7), up + rightAngle, reach * 0.42);
    canvas.Fill({tip, notch, right}, colours::ink);
    canvas.Polyline({notch, left, tip, notch}, {.width = 0.25});
    canvas.Text(Moved(tip, up, 2.6), "N", {.size = 3.4, .anchorX = 0.5, .anchorY = 0.5, .bold = true});
}

void DrawScaleBar(Canvas& canvas, Place start, double scale, double room) {
    double metres = UsualStep(room / scale);
    while (metres * scale > room) metres = metres / UsualStep(1.5);
    constexpr int fields = 4;
    const double field = metres * scale / fields;
    for (int i = 0; i < fields; ++i) {
        const Box box{start.x + i * field, start.y, start.x + (i + 1) * field, start.y + 1.6};
        if (i % 2 == 0) {
            canvas.Fill({{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}},
                        colours::ink);
        }
        canvas.Rectangle(box, {.width = 0.2});
    }
    const TextStyle style{.anchorX = 0.5, .anchorY = 1};
    canvas.Text({start.x, start.y + 2.6}, "0", style);
    canvas.Text({start.x + metres * scale, start.y + 2.6}, FormatShort(metres) + " m", style);
}

void DrawLegend(Canvas& canvas, Place place, bool hasBreaks, bool hasPolygon) {
    struct Entry {
        const char* text;
        Colour colour;
        double width;
    };
    std::vector<Entry> entries{
        {"straight", colours::straight, 0.55}, {"circular arc", colours::arc, 0.55}, {"spiral", colours::spiral, 0.55}};
    if (hasBreaks) entries.push_back({"broken chain", colours::brokenChain, 0.5});
    if (hasPolygon) entries.push_back({"tangent polygon", colours::polygon, 0.18});
    canvas.Text(place, "Plan", {.size = 2.8, .bold = true});
    for (const Entry& entry : entries) {
        place.y += 4.6;
        canvas.Line({place.x, place.y - 0.8}, {place.x + 9, place.y - 0.8},
                    {.colour = entry.colour, .width = entry.width});
        canvas.Text({place.x + 11, place.y}, entry.text, {});
    }
}

}  // namespace

std::string DrawPlan(Canvas& canvas, RoadDesign* road, const RoadLine& line, const Box& box, const Box& column) {
    const std::vector<Intersection> polygon = IntersectionsOf(road);
    const View view = FitView(line, polygon, box);
    Plan plan(canvas, line, view, box);
    plan.DrawPolygon(polygon, box);
    plan.DrawElements();
    plan.DrawIntersections(polygon, box);
    plan.DrawBreaks();
    plan.DrawMainPoints(road);
    plan.DrawStakes();
    plan.DrawGrid(box);
    DrawLegend(canvas, {column.left, column.top + 4}, !line.Breaks().empty(), !polygon.empty());
    DrawNorthArrow(canvas, {(column.left + column.right) / 2, column.top + 44}, view.turn);
    DrawScaleBar(canvas, {column.left, column.top + 60}, view.scale, column.Width() - 8);
    canvas.Text({column.left, column.top + 70}, ScaleText(view.denominator), {.size = 2.6, .bold = true});
    if (plan.Omitted() > 0) {
        canvas.Text({column.left, column.top + 75},
                    std::to_string(plan.Omitted()) + (plan.Omitted() == 1 ? " label" : " labels") + " left out",
                    {.size = 2});
        canvas.Text({column.left, column.top + 78}, "for want of room", {.size = 2});
    }
    return ScaleText(view.denominator);
}

}  // namespace kesto::host
