/// The console report, and the table of all ways side by side: ratios say more than times, which belong to one machine.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// Collects "question/way/N" for the ways "library", "plain" and "GEOS".
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints the table.
    void Finalize() override;

    /// Puts the table into a Markdown file, between the lines "<!-- table -->" and "<!-- end of table -->".
    /// @return false when the file has no such lines or cannot be written
    bool WriteTable(const std::string& path) const;

private:
    enum Way : std::uint8_t { Library, Plain, Geos, wayCount };
    struct Measured {
        double time = 0;    // ns; 0 where nothing was measured
        double error = -1;  // m: how far from the exact answer; negative where it is not known
    };
    using Row = std::array<Measured, wayCount>;

    std::string Table() const;

    std::vector<std::pair<std::string, std::map<std::int64_t, Row>>> questions;  // in the order of their runs
};

}  // namespace bench
