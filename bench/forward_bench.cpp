// Positions, conversions and heights at a mileage.

#include <cmath>

#include "plain_reference.hpp"
#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

constexpr double forwardBand = 5;  // m
constexpr std::size_t queryCount = 1U << 14U;
constexpr double sameAnswer = 1e-6;  // m: both ways give one answer
constexpr int elementsPerGradePoint = 10;

kesto::Road RoadOf(const State& state) { return Highway(static_cast<int>(state.range(0))); }

void PositionLibrary(State& state) {
    kesto::Road road = RoadOf(state);
    const auto queries = Queries(road, forwardBand, queryCount);
    ForEachQuery(state, queries, [&](const Query& it) { return road.At(it.mileage, it.offset)->x; });
}

void PositionPlain(State& state) {
    kesto::Road road = RoadOf(state);
    const auto elements = road.Elements();
    const auto queries = Queries(road, forwardBand, queryCount);
    for (const Query& it : queries) {
        const kesto::Position at = WalkToPosition(road.Handle(), elements, it.mileage, it.offset);
        if (!(std::hypot(at.x - it.x, at.y - it.y) < sameAnswer)) return state.SkipWithError("another position");
    }
    ForEachQuery(state, queries,
                 [&](const Query& it) { return WalkToPosition(road.Handle(), elements, it.mileage, it.offset).x; });
}

/// A host that changes an element before every question: whatever is kept for fast answers is stale each time.
void EditLibrary(State& state) {
    kesto::Road road = RoadOf(state);
    const Element element = road.Elements().at(1);
    const auto queries = Queries(road, forwardBand, queryCount);
    ForEachQuery(state, queries, [&](const Query& it) {
        SetElement(road.Handle(), 1, &element);
        return road.At(it.mileage, it.offset)->x;
    });
}

void ConversionLibrary(State& state) {
    kesto::Road road = RoadOf(state);
    const auto queries = Queries(road, 0, queryCount);
    ForEachQuery(state, queries, [&](const Query& it) { return *road.ContinuousMileage(it.mileage); });
}

void ConversionPlain(State& state) {
    kesto::Road road = RoadOf(state);
    const auto elements = road.Elements();
    const auto queries = Queries(road, 0, queryCount);
    for (const Query& it : queries) {
        const double continuous = WalkToContinuous(elements, 0, it.mileage);
        if (!(std::fabs(continuous - *road.ContinuousMileage(it.mileage)) < sameAnswer)) {
            return state.SkipWithError("another mileage");
        }
    }
    ForEachQuery(state, queries, [&](const Query& it) { return WalkToContinuous(elements, 0, it.mileage); });
}

/// A highway with grade points, evenly along it.
kesto::Road HillyRoad(const State& state) {
    kesto::Road road = RoadOf(state);
    const double length = GetRoadMileage(road.Handle(), nullptr);
    const int points = 2 + static_cast<int>(state.range(0)) / elementsPerGradePoint;
    for (int i = 0; i < points; ++i) road.GradePoint(length * i / (points - 1), i % 2 == 0 ? 100 : 120, 5000);
    return road;
}

void HeightLibrary(State& state) {
    kesto::Road road = HillyRoad(state);
    const auto queries = Queries(road, 0, queryCount);
    ForEachQuery(state, queries, [&](const Query& it) { return *road.Height(it.mileage); });
}

void HeightPlain(State& state) {
    kesto::Road road = HillyRoad(state);
    const auto queries = Queries(road, 0, queryCount);
    if (!road.Height(0)) return state.SkipWithError("no height");
    std::vector<VerticalCurve> curves(static_cast<std::size_t>(GetVerticalCurveCount(road.Handle())));
    for (std::size_t i = 0; i < curves.size(); ++i) {
        GetVerticalCurve(road.Handle(), static_cast<std::int32_t>(i), &curves[i]);
    }
    for (const Query& it : queries) {
        if (!(std::fabs(WalkToHeight(curves, it.mileage) - *road.Height(it.mileage)) < sameAnswer)) {
            return state.SkipWithError("another height");
        }
    }
    ForEachQuery(state, queries, [&](const Query& it) { return WalkToHeight(curves, it.mileage); });
}

}  // namespace

void RegisterForward() {
    benchmark::RegisterBenchmark("position at a mileage/library", PositionLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("position at a mileage/plain", PositionPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("edit, then position/library", EditLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("edit, then position/plain", PositionPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("continuous mileage/library", ConversionLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("continuous mileage/plain", ConversionPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("height/library", HeightLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("height/plain", HeightPlain)->Apply(Sizes);
}

}  // namespace bench
