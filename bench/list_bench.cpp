// Filling the lists of a road record by record.

#include <array>
#include <cstdint>
#include <vector>

#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

constexpr double spacing = 100;        // m
constexpr std::int32_t together = 16;  // records of one call
constexpr std::int32_t atEnd = -1;

Element Straight() {
    Element element{};
    element.type = 1;
    element.length = spacing;
    return element;
}

BrokenChain ChainAt(std::int64_t i) {
    const double mileage = spacing * static_cast<double>(i) + 50;
    return {mileage, mileage};
}

VerticalCurve GradePointAt(std::int64_t i) {
    VerticalCurve curve{};
    curve.mileage = spacing * static_cast<double>(i) + 10;
    curve.elevation = static_cast<double>(i % 2);
    curve.radius = 1000;
    return curve;
}

/// A road of as many straights as records will be added.
kesto::Road RoadFor(std::int64_t records) {
    kesto::Road road;
    road.Start(0, 0, 0);
    for (std::int64_t i = 0; i < records; ++i) road.Straight(spacing);
    road.Update();
    return road;
}

/// Times adding records 0 to N - 1 to a road that is made anew each time.
template <class MakeRoad, class Add>
void Fill(State& state, std::int64_t step, MakeRoad&& makeRoad, Add&& add) {
    for (auto _ : state) {
        state.PauseTiming();
        kesto::Road road = makeRoad();
        state.ResumeTiming();
        for (std::int64_t i = 0; i < state.range(0); i += step) {
            if (!add(road.Handle(), i)) return state.SkipWithError("not added");
        }
    }
}

kesto::Road EmptyRoad() { return {}; }

void Elements(State& state) {
    const Element element = Straight();
    Fill(state, 1, EmptyRoad, [&](RoadDesign* road, std::int64_t) { return AddElement(road, &element, atEnd); });
}

void ElementLists(State& state) {
    std::array<Element, together> elements{};
    elements.fill(Straight());
    Fill(state, together, EmptyRoad,
         [&](RoadDesign* road, std::int64_t) { return AddElementList(road, elements.data(), together); });
}

void Chains(State& state) {
    Fill(state, 1, EmptyRoad, [](RoadDesign* road, std::int64_t i) {
        const BrokenChain chain = ChainAt(i);
        return AddBrokenChain(road, &chain);
    });
}

void GradePoints(State& state) {
    Fill(
        state, 1, [&] { return RoadFor(state.range(0)); },
        [](RoadDesign* road, std::int64_t i) {
            const VerticalCurve curve = GradePointAt(i);
            return AddVerticalCurve(road, &curve);
        });
}

void ChangeSections(State& state) {
    const auto makeRoad = [&] {
        kesto::Road road = RoadFor(state.range(0));
        road.Plate(kesto::Side::Right, 4, 2);
        return road;
    };
    Fill(state, 1, makeRoad, [](RoadDesign* road, std::int64_t i) {
        const double slope = 2;
        return AddChangeSectionList(road, spacing * static_cast<double>(i) + 20, 1, 0, &slope, 1, 0, 0);
    });
}

/// The same records into a vector: what no list can go below.
template <class Make>
void Vector(State& state, Make&& make) {
    for (auto _ : state) {
        std::vector<decltype(make(0))> records;
        for (std::int64_t i = 0; i < state.range(0); ++i) records.push_back(make(i));
        benchmark::DoNotOptimize(records.data());
    }
}

void Records(benchmark::internal::Benchmark* it) { it->Arg(1000)->Arg(10000)->Arg(100000); }

}  // namespace

void RegisterLists() {
    const auto element = [](std::int64_t) { return Straight(); };
    benchmark::RegisterBenchmark("adding elements/library", Elements)->Apply(Records);
    benchmark::RegisterBenchmark("adding elements/plain", [=](State& it) { Vector(it, element); })->Apply(Records);
    benchmark::RegisterBenchmark("adding elements by 16/library", ElementLists)->Apply(Records);
    benchmark::RegisterBenchmark("adding elements by 16/plain", [=](State& it) {
        Vector(it, element);
    })->Apply(Records);
    benchmark::RegisterBenchmark("adding broken chains/library", Chains)->Apply(Records);
    benchmark::RegisterBenchmark("adding broken chains/plain", [](State& it) { Vector(it, ChainAt); })->Apply(Records);
    benchmark::RegisterBenchmark("adding grade points/library", GradePoints)->Apply(Records);
    benchmark::RegisterBenchmark("adding grade points/plain", [](State& it) {
        Vector(it, GradePointAt);
    })->Apply(Records);
    benchmark::RegisterBenchmark("adding change sections/library", ChangeSections)->Apply(Records);
}

}  // namespace bench
