/// The console report, followed by a table of ratios: they say more than times, which belong to one machine.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// Pairs "Question/library/N" with "Question/plain/N" and prints, for every size, their ratio and the growth of the
/// library's time against the size before.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Times {
        double kesto = 0;  // ns
        double plain = 0;  // ns
    };
    std::map<std::string, std::map<std::int64_t, Times>> questions;
};

}  // namespace bench
