// The design run.

#include "plain_reference.hpp"
#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

void DesignLibrary(State& state) {
    kesto::Road road = Highway(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        if (!road.Design()) return state.SkipWithError("no design");
    }
    state.counters["stakes"] = GetStakeCoordinateCount(road.Handle());
}

void DesignPlain(State& state) {
    kesto::Road road = Highway(static_cast<int>(state.range(0)));
    const auto elements = road.Elements();
    const auto stakes = road.Stakes();
    for (auto _ : state) benchmark::DoNotOptimize(EvaluateStakes(road.Handle(), elements, stakes));
    state.counters["stakes"] = static_cast<double>(stakes.size());
}

}  // namespace

void RegisterDesign() {
    benchmark::RegisterBenchmark("design run/library", DesignLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("design run/plain", DesignPlain)->Apply(Sizes);
}

}  // namespace bench
