#include "tables/curves.hpp"

#include <cmath>
#include <optional>
#include <utility>

#include "road/conventions.hpp"
#include "tables/csv.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"
#include "terminal/text_table.hpp"

namespace kesto::host {

namespace {

constexpr int lengthDecimals = 3;      // millimetres
constexpr int angleDecimals = 6;       // degrees
constexpr double smallestTurn = 1e-7;  // degrees: less is no turn

std::string Metres(double number) { return FormatReal(number, lengthDecimals); }
std::string MetresOrNone(double number) { return number < infiniteRadius ? "-" : Metres(number); }
std::string Degrees(double angle) { return FormatReal(angle, angleDecimals); }

const char* TurnName(double deflection) {
    if (std::fabs(deflection) < smallestTurn) return "-";
    return deflection < 0 ? "left" : "right";
}

std::string CurveRows(const std::vector<IntersectionFigures>& intersections) {
    TextTable table({"intersection", "x", "y", "turn", "deflection", "radius", "spiral in", "spiral out", "T1", "T2",
                     "curve", "external"});
    for (const auto& it : intersections) {
        const Intersection& record = it.record;
        std::vector<std::string> row{it.name,
                                     Metres(record.x),
                                     Metres(record.y),
                                     TurnName(it.deflection.value_or(0)),
                                     it.deflection ? Degrees(std::fabs(*it.deflection)) : "-",
                                     MetresOrNone(record.radius),
                                     MetresOrNone(record.spiralIn),
                                     MetresOrNone(record.spiralOut)};
        if (it.curve) {
            row.insert(row.end(), {Metres(it.curve->tangentIn), Metres(it.curve->tangentOut), Metres(it.curve->length),
                                   it.curve->external ? Metres(*it.curve->external) : "-"});
        } else {
            row.insert(row.end(), 4, "-");
        }
        table.Add(std::move(row));
    }
    return table.Text("Straights, curves and turning angles");
}

std::string PointRows(const std::vector<IntersectionFigures>& intersections, RoadDesign* road) {
    TextTable table({"intersection", "begin", "arc from", "arc middle", "arc to", "end", "straight to next",
                     "distance to next", "azimuth to next"});
    for (const auto& it : intersections) {
        std::vector<std::string> row{it.name};
        for (std::size_t i = 0; i < curvePointCount; ++i) {
            const auto point = it.curve ? it.curve->points[i] : std::nullopt;
            const std::string label = point && !point->label.empty() ? point->label + " " : "";
            row.push_back(point ? label + FormatMileage(road, point->stake) : "-");
        }
        if (it.side) {
            row.insert(row.end(), {Metres(it.side->straight), Metres(it.side->length), Degrees(it.side->azimuth)});
        } else {
            row.insert(row.end(), 3, "-");
        }
        table.Add(std::move(row));
    }
    return table.Text("Main points of the curves, and the straights behind them");
}

}  // namespace

std::string CurveTables(const std::vector<IntersectionFigures>& intersections, RoadDesign* road) {
    return CurveRows(intersections) + PointRows(intersections, road);
}

void WriteCurves(const std::vector<IntersectionFigures>& intersections, const std::string& path, int decimals) {
    std::string header =
        "name,x,y,deflection,radius,spiral_in,spiral_out,radius_in,radius_out,tangent_in,tangent_out,curve_length,"
        "external";
    for (const char* point : {"begin", "arc_begin", "arc_middle", "arc_end", "end"}) {
        for (const char* field : {"label", "mileage", "occurrence"}) header += std::string(",") + point + "_" + field;
    }
    Output out(path);
    out.Write(header + ",straight,distance,azimuth\n");
    for (const auto& it : intersections) {
        std::string row = CsvField(it.name);
        const auto field = [&](const std::string& text) { (row += ',') += text; };
        const auto metres = [&](const std::optional<double>& number) {
            field(number ? FormatReal(*number, decimals) : "");
        };
        const Intersection& record = it.record;
        metres(record.x);
        metres(record.y);
        field(it.deflection ? Degrees(*it.deflection) : "");
        for (const double given :
             {record.radius, record.spiralIn, record.spiralOut, record.radiusIn, record.radiusOut}) {
            metres(given);
        }
        const Curve none{};
        const Curve& curve = it.curve ? *it.curve : none;
        for (const double length : {curve.tangentIn, curve.tangentOut, curve.length}) {
            metres(it.curve ? std::optional(length) : std::nullopt);
        }
        metres(curve.external);
        for (const auto& point : curve.points) {
            field(point ? CsvField(point->label) : "");
            metres(point ? std::optional(point->stake.mileage) : std::nullopt);
            field(point ? std::to_string(point->stake.occurrence) : "");
        }
        metres(it.side ? std::optional(it.side->straight) : std::nullopt);
        metres(it.side ? std::optional(it.side->length) : std::nullopt);
        field(it.side ? Degrees(it.side->azimuth) : "");
        out.Write(row + "\n");
    }
    out.Finish();
}

}  // namespace kesto::host
