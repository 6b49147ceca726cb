/// The questions that are measured. Each registers its benchmarks as "question/way/N": the library's way, a plain way
/// and, where it is installed, that of a geometry library.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include "synthetic_road.hpp"

namespace bench {

inline constexpr double nearBand = 30;  // m: points as they are measured on a site
inline constexpr double farBand = 500;  // m

void RegisterForward();   // positions, conversions, heights
void RegisterBatches();   // many points at once, and frozen roads
void RegisterInverse();   // mileage and offset of a point
void RegisterDesign();    // design run
void RegisterLists();     // filling the lists
void RegisterProjects();  // opening and saving a project file
void RegisterGeos();      // positions and feet on a polyline

/// Numbers of elements.
inline void Sizes(benchmark::internal::Benchmark* it) { it->Arg(10)->Arg(100)->Arg(1000)->Arg(10000); }

/// Goes round a list of queries for ever.
template <class Query, class Action>
void ForEachQuery(benchmark::State& state, const std::vector<Query>& queries, Action&& action) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(action(queries[i]));
        i = i + 1 < queries.size() ? i + 1 : 0;
    }
}

}  // namespace bench
