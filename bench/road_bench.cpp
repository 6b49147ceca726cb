// Position, inverse projection, design run, opening and saving a project, for roads of 10 to 10,000 elements.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>

#include "plain_reference.hpp"
#include "ratio_reporter.hpp"
#include "synthetic_road.hpp"

namespace {

using benchmark::State;

constexpr double near = 30;                // m: band of points as they are measured on a site
constexpr double far = 500;                // m
constexpr double forwardBand = 5;          // m
constexpr double chordLength = 20;         // m
constexpr double samePlace = 1e-6;         // m: both ways give one answer
constexpr double nearChord = chordLength;  // m: a foot on a chord is this near to the road's own

/// Goes round a list of queries for ever.
template <class Action>
void ForEachQuery(State& state, const std::vector<bench::Query>& queries, Action&& action) {
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(action(queries[i]));
        i = i + 1 < queries.size() ? i + 1 : 0;
    }
}

int Elements(const State& state) { return static_cast<int>(state.range(0)); }

void PositionLibrary(State& state) {
    kesto::Road road = bench::Highway(Elements(state));
    const auto queries = bench::Queries(road, forwardBand);
    ForEachQuery(state, queries, [&](const bench::Query& it) { return road.At(it.mileage, it.offset)->x; });
}

void PositionPlain(State& state) {
    kesto::Road road = bench::Highway(Elements(state));
    const auto elements = road.Elements();
    const auto queries = bench::Queries(road, forwardBand);
    for (const bench::Query& it : queries) {
        const kesto::Position at = bench::WalkToPosition(road.Handle(), elements, it.mileage, it.offset);
        if (!(std::hypot(at.x - it.x, at.y - it.y) < samePlace)) return state.SkipWithError("another position");
    }
    ForEachQuery(state, queries, [&](const bench::Query& it) {
        return bench::WalkToPosition(road.Handle(), elements, it.mileage, it.offset).x;
    });
}

void LocateLibrary(State& state, double band) {
    kesto::Road road = bench::Highway(Elements(state));
    const auto queries = bench::Queries(road, band);
    ForEachQuery(state, queries, [&](const bench::Query& it) { return road.Locate(it.x, it.y)->mileage; });
}

void LocatePlain(State& state, double band) {
    kesto::Road road = bench::Highway(Elements(state));
    const bench::Chords chords(road, chordLength);
    const auto queries = bench::Queries(road, band);
    std::size_t off = 0;
    for (const bench::Query& it : queries) {
        const auto at = road.Locate(it.x, it.y);
        if (!at || !(std::fabs(chords.Nearest(it.x, it.y) - at->mileage) < nearChord)) ++off;
    }
    state.counters["elsewhere"] = static_cast<double>(off);  // far points may have two feet that are about as near
    ForEachQuery(state, queries, [&](const bench::Query& it) { return chords.Nearest(it.x, it.y); });
}

void DesignLibrary(State& state) {
    kesto::Road road = bench::Highway(Elements(state));
    for (auto _ : state) {
        if (!road.Design()) return state.SkipWithError("no design");
    }
    state.counters["stakes"] = GetStakeCoordinateCount(road.Handle());
}

void DesignPlain(State& state) {
    kesto::Road road = bench::Highway(Elements(state));
    const auto elements = road.Elements();
    const auto stakes = road.Stakes();
    for (auto _ : state) benchmark::DoNotOptimize(bench::EvaluateStakes(road.Handle(), elements, stakes));
    state.counters["stakes"] = static_cast<double>(stakes.size());
}

/// A project file that is removed again.
class ProjectFile {
public:
    explicit ProjectFile(int elements)
        : path((std::filesystem::temp_directory_path() / ("kesto_bench_" + std::to_string(elements) + ".road"))
                   .string()) {
        bench::FurnishedHighway(elements).Save(path);
    }
    ProjectFile(const ProjectFile&) = delete;
    ProjectFile& operator=(const ProjectFile&) = delete;
    ~ProjectFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    const std::string& Path() const { return path; }

private:
    std::string path;
};

void OpenLibrary(State& state) {
    const ProjectFile file(Elements(state));
    kesto::Road road;
    for (auto _ : state) {
        if (OpenProject(road.Handle(), file.Path().c_str()) != KESTO_SUCCESS) return state.SkipWithError("not opened");
    }
    state.counters["elements"] = GetElementCount(road.Handle());
}

void OpenPlain(State& state) {
    const ProjectFile file(Elements(state));
    for (auto _ : state) benchmark::DoNotOptimize(bench::ConvertNumbers(file.Path()));
}

void SaveLibrary(State& state) {
    const ProjectFile file(Elements(state));
    kesto::Road road = bench::FurnishedHighway(Elements(state));
    for (auto _ : state) {
        if (road.Save(file.Path()) != KESTO_SUCCESS) return state.SkipWithError("not saved");
    }
}

void SavePlain(State& state) {
    const ProjectFile file(Elements(state));
    const bench::Numbers numbers = bench::NumbersOf(file.Path());
    for (auto _ : state) benchmark::DoNotOptimize(bench::WriteNumbers(numbers, file.Path()));
}

void Sizes(benchmark::internal::Benchmark* it) { it->Arg(10)->Arg(100)->Arg(1000)->Arg(10000); }

void Register() {
    benchmark::RegisterBenchmark("position/library", PositionLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("position/plain", PositionPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("locate 30 m/library", LocateLibrary, near)->Apply(Sizes);
    benchmark::RegisterBenchmark("locate 30 m/plain", LocatePlain, near)->Apply(Sizes);
    benchmark::RegisterBenchmark("locate 500 m/library", LocateLibrary, far)->Apply(Sizes);
    benchmark::RegisterBenchmark("locate 500 m/plain", LocatePlain, far)->Apply(Sizes);
    benchmark::RegisterBenchmark("design/library", DesignLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("design/plain", DesignPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("open/library", OpenLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("open/plain", OpenPlain)->Apply(Sizes);
    benchmark::RegisterBenchmark("save/library", SaveLibrary)->Apply(Sizes);
    benchmark::RegisterBenchmark("save/plain", SavePlain)->Apply(Sizes);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    Register();
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
