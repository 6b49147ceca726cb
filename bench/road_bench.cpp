// Times the questions that hosts put to the library, for roads of 10 to 10,000 elements.
// Usage: kesto_road_bench [--table=FILE] [options of Google Benchmark]

#include <benchmark/benchmark.h>

#include <string>

#include "questions.hpp"
#include "ratio_reporter.hpp"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::string table;
    const std::string option = "--table=";
    if (argc == 2 && std::string(argv[1]).rfind(option, 0) == 0) table = argv[--argc] + option.size();
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    bench::RegisterForward();
    bench::RegisterInverse();
    bench::RegisterBatches();
#if defined(KESTO_BENCH_GEOS)
    bench::RegisterGeos();
#endif
    bench::RegisterDesign();
    bench::RegisterLists();
    bench::RegisterProjects();
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return table.empty() || reporter.WriteTable(table) ? 0 : 1;
}
