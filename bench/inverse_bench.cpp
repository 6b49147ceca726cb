// Mileage and offset of a point, beside the library's own walk over all elements.

#include <algorithm>

#include "foot_error.hpp"
#include "plain_walk.hpp"
#include "questions.hpp"

namespace bench {

namespace {

using benchmark::State;

constexpr std::size_t queryCount = 4096;

kesto::Road RoadOf(const State& state) { return Highway(static_cast<int>(state.range(0))); }

std::vector<Query> InRoadOrder(std::vector<Query> queries) {
    std::sort(queries.begin(), queries.end(),
              [](const Query& one, const Query& other) { return one.mileage < other.mileage; });
    return queries;
}

void LocateAll(State& state, kesto::Road& road, const std::vector<Query>& queries) {
    ForEachQuery(state, queries, [&](const Query& it) {
        double mileage = 0;
        double offset = 0;
        std::int32_t occurrence = 0;
        GetMileageAndOffset(road.Handle(), it.x, it.y, &mileage, &offset, &occurrence);
        return mileage + offset;
    });
    state.counters["bytes/element"] =
        static_cast<double>(IndexBytes(road.Handle())) / static_cast<double>(state.range(0));
}

void LocateLibrary(State& state, double band) {
    kesto::Road road = RoadOf(state);
    state.counters["error"] = WorstLibraryError(road, Queries(road, band));
    LocateAll(state, road, Queries(road, band, queryCount));
}

void LocateInOrder(State& state, double band) {
    kesto::Road road = RoadOf(state);
    LocateAll(state, road, InRoadOrder(Queries(road, band, queryCount)));
}

void LocatePlain(State& state, double band) {
    kesto::Road road = RoadOf(state);
    const auto queries = Queries(road, band, queryCount);
    for (std::size_t i = 0; i < queries.size(); i += queries.size() / 16) {
        const Query& it = queries[i];
        const auto at = road.Locate(it.x, it.y);
        if (!at || at->mileage != WalkToMileage(road.Handle(), it.x, it.y)) return state.SkipWithError("not the same");
    }
    ForEachQuery(state, queries, [&](const Query& it) { return WalkToMileage(road.Handle(), it.x, it.y); });
}

void EditLibrary(State& state, double band) {
    kesto::Road road = RoadOf(state);
    const Element element = road.Elements().at(1);
    const auto queries = Queries(road, band, queryCount);
    ForEachQuery(state, queries, [&](const Query& it) {
        SetElement(road.Handle(), 1, &element);
        return road.Locate(it.x, it.y)->mileage;
    });
}

}  // namespace

void RegisterInverse() {
    benchmark::RegisterBenchmark("inverse, within 30 m/library", LocateLibrary, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 30 m/plain", LocatePlain, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, 30 m, in road order/library", LocateInOrder, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 500 m/library", LocateLibrary, farBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, within 500 m/plain", LocatePlain, farBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("inverse, 500 m, in road order/library", LocateInOrder, farBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("edit, then inverse/library", EditLibrary, nearBand)->Apply(Sizes);
    benchmark::RegisterBenchmark("edit, then inverse/plain", LocatePlain, nearBand)->Apply(Sizes);
}

}  // namespace bench
