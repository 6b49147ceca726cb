#include "ratio_reporter.hpp"

#include <cstdio>
#include <sstream>

namespace bench {

namespace {

constexpr double nanosecondsPerSecond = 1e9;

}  // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        // With repetitions the median counts, without them the run itself.
        const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
        const bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
        if (run.error_occurred || !(median || single)) continue;
        std::istringstream name(run.run_name.function_name);
        std::string question;
        std::string way;
        std::getline(name, question, '/');
        std::getline(name, way, '/');
        Times& times = questions[question][std::stoll(run.run_name.args)];
        const double time =
            run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * nanosecondsPerSecond;
        (way == "library" ? times.kesto : times.plain) = time;
    }
}

void RatioReporter::Finalize() {
    std::printf("\n%-14s %9s %14s %14s %9s %9s\n", "question", "elements", "library (ns)", "plain (ns)", "ratio",
                "growth");
    for (const auto& [question, sizes] : questions) {
        double before = 0;
        for (const auto& [size, times] : sizes) {
            std::printf("%-14s %9lld %14.0f %14.0f %9.2f", question.c_str(), static_cast<long long>(size), times.kesto,
                        times.plain, times.kesto / times.plain);
            if (before > 0) std::printf(" %9.2f", times.kesto / before);
            std::printf("\n");
            before = times.kesto;
        }
    }
}

}  // namespace bench
