// Positions and feet on a polyline of the road, by the geometry library GEOS.

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "foot_error.hpp"
#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

constexpr double sagitta = 1e-3;         // m: how far a chord may lie off the road
constexpr double infiniteRadius = 1e-7;  // m: a smaller radius stands for an infinite one
constexpr double turning = 1e300;        // m: no chord is that long

struct GeosDeleter {
    GEOSContextHandle_t context;
    void operator()(GEOSGeometry* it) const { GEOSGeom_destroy_r(context, it); }
    void operator()(const GEOSPreparedGeometry* it) const { GEOSPreparedGeom_destroy_r(context, it); }
    void operator()(GEOSCoordSequence* it) const { GEOSCoordSeq_destroy_r(context, it); }
};

/// Longest chord of an element that stays within the sagitta (m).
double LongestChord(const Element& element) {
    double curvature = 0;  // 1/m, the larger of both ends'
    if (element.type != 1) {
        for (const double radius : {element.startRadius, element.type == 3 ? element.endRadius : 0}) {
            if (radius > infiniteRadius) curvature = std::max(curvature, 1 / radius);
        }
    }
    return curvature > 0 ? std::sqrt(8 * sagitta / curvature) : turning;
}

/// The road as a polyline.
class Polyline {
public:
    explicit Polyline(kesto::Road& road) {
        std::vector<double> ordinates;
        for (const Element& element : road.Elements()) AddVertices(road.Handle(), element, ordinates);
        const auto count = static_cast<unsigned>(ordinates.size() / 2);
        GEOSCoordSequence* sequence = GEOSCoordSeq_copyFromBuffer_r(context.get(), ordinates.data(), count, 0, 0);
        line.reset(GEOSGeom_createLineString_r(context.get(), sequence));
        if (!line) throw std::runtime_error("GEOS makes no line");
        prepared.reset(GEOSPrepare_r(context.get(), line.get()));
        GEOSLength_r(context.get(), line.get(), &length);
        scale = length / GetRoadMileage(road.Handle(), nullptr);
    }

    /// Point at a mileage. The polyline is a little shorter than the road: mileages are scaled to its length.
    PlanePoint At(double mileage) const {
        const Geometry point(GEOSInterpolate_r(context.get(), line.get(), mileage * scale), {context.get()});
        PlanePoint at{};
        GEOSGeomGetX_r(context.get(), point.get(), &at.x);
        GEOSGeomGetY_r(context.get(), point.get(), &at.y);
        return at;
    }

    /// Nearest point, by the index over the line's facets.
    PlanePoint Foot(PlanePoint from) const {
        const Geometry point(GEOSGeom_createPointFromXY_r(context.get(), from.x, from.y), {context.get()});
        const std::unique_ptr<GEOSCoordSequence, GeosDeleter> pair(
            GEOSPreparedNearestPoints_r(context.get(), prepared.get(), point.get()), {context.get()});
        PlanePoint foot{};
        GEOSCoordSeq_getXY_r(context.get(), pair.get(), 0, &foot.x, &foot.y);
        return foot;
    }

private:
    using Geometry = std::unique_ptr<GEOSGeometry, GeosDeleter>;

    static void AddVertices(RoadDesign* road, const Element& element, std::vector<double>& ordinates) {
        const int parts = std::max(1, static_cast<int>(std::ceil(element.length / LongestChord(element))));
        for (int part = ordinates.empty() ? 0 : 1; part <= parts && element.type != 0; ++part) {
            double x = 0;
            double y = 0;
            double azimuth = 0;
            GetElementPositionAndAzimuth(road, &element, element.length * part / parts, &x, &y, &azimuth);
            ordinates.push_back(x);
            ordinates.push_back(y);
        }
    }

    std::unique_ptr<GEOSContextHandle_HS, decltype(&GEOS_finish_r)> context{GEOS_init_r(), GEOS_finish_r};
    Geometry line{nullptr, {context.get()}};
    std::unique_ptr<const GEOSPreparedGeometry, GeosDeleter> prepared{nullptr, {context.get()}};
    double length = 0;  // m
    double scale = 1;
};

constexpr std::size_t positionCount = 64;  // walked along the whole line each

void PositionGeos(State& state) {
    kesto::Road road = Highway(static_cast<int>(state.range(0)));
    const Polyline line(road);
    const auto queries = Queries(road, 0, positionCount);
    state.counters["error"] = WorstError(road, queries, [&](const Query& it) { return line.At(it.mileage); });
    ForEachQuery(state, queries, [&](const Query& it) { return line.At(it.mileage).x; });
}

void FootGeos(State& state, double band) {
    kesto::Road road = Highway(static_cast<int>(state.range(0)));
    const Polyline line(road);
    const auto queries = Queries(road, band);
    state.counters["error"] = WorstError(road, queries, [&](const Query& it) { return line.Foot({it.x, it.y}); });
    ForEachQuery(state, queries, [&](const Query& it) { return line.Foot({it.x, it.y}).x; });
}

}  // namespace

void RegisterGeos() {
    benchmark::RegisterBenchmark("position at a mileage/GEOS", PositionGeos)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 30 m/GEOS", FootGeos, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 500 m/GEOS", FootGeos, farBand)->Apply(Sizes);
}

}  // namespace bench
