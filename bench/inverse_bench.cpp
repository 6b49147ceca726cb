// Mileage and offset of a point.

#include <cmath>

#include "foot_error.hpp"
#include "plain_reference.hpp"
#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

constexpr double chordLength = 20;         // m
constexpr double nearChord = chordLength;  // m: a foot on a chord is this near to the road's own

void LocateLibrary(State& state, double band) {
    kesto::Road road = Highway(static_cast<int>(state.range(0)));
    const auto queries = Queries(road, band);
    state.counters["error"] = WorstLibraryError(road, queries);
    ForEachQuery(state, queries, [&](const Query& it) { return road.Locate(it.x, it.y)->mileage; });
}

void LocatePlain(State& state, double band) {
    kesto::Road road = Highway(static_cast<int>(state.range(0)));
    const Chords chords(road, chordLength);
    const auto queries = Queries(road, band);
    std::size_t off = 0;
    for (const Query& it : queries) {
        const auto at = road.Locate(it.x, it.y);
        if (!at || !(std::fabs(chords.Nearest(it.x, it.y) - at->mileage) < nearChord)) ++off;
    }
    state.counters["elsewhere"] = static_cast<double>(off);  // far points may have two feet that are about as near
    ForEachQuery(state, queries, [&](const Query& it) { return chords.Nearest(it.x, it.y); });
}

}  // namespace

void RegisterInverse() {
    benchmark::RegisterBenchmark("inverse, within 30 m/library", LocateLibrary, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 30 m/plain", LocatePlain, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 500 m/library", LocateLibrary, farBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 500 m/plain", LocatePlain, farBand)->Apply(Sizes);
}

}  // namespace bench
