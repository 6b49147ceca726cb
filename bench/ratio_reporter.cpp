#include "ratio_reporter.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

namespace bench {

namespace {

constexpr double nanosecondsPerSecond = 1e9;

std::string Formatted(const char* format, double number) {
    char text[32];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

/// A time (ns) in a unit that leaves few digits; nothing for 0.
std::string TimeText(double time) {
    if (!(time > 0)) return "";
    constexpr std::pair<double, const char*> units[] = {{1e6, " ms"}, {1e3, " µs"}, {1, " ns"}};
    const auto unit = std::ranges::find_if(units, [&](const auto& it) { return time >= it.first || it.first <= 1; });
    const double number = time / unit->first;
    return Formatted(number < 10 ? "%.1f" : "%.0f", number) + unit->second;
}

std::string RatioText(double one, double other) {
    if (!(one > 0 && other > 0)) return "";
    return Formatted(one / other < 10 ? "%.1f" : "%.0f", one / other);
}

std::string ErrorText(double error) { return error < 0 ? "" : Formatted("%.0e m", error); }

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
        auto found = std::ranges::find(questions, question, [](const auto& it) { return it.first; });
        if (found == questions.end()) found = questions.insert(found, {question, {}});
        Measured& measured =
            found->second[std::stoll(run.run_name.args)][way == "library" ? Library : (way == "plain" ? Plain : Geos)];
        measured.time =
            run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * nanosecondsPerSecond;
        if (const auto error = run.counters.find("error"); error != run.counters.end()) {
            measured.error = error->second.value;
        }
    }
}

std::string RatioReporter::Table() const {
    std::string text =
        "| question | size | library | growth | plain | plain / library | GEOS | GEOS / library | error, library | "
        "error, "
        "GEOS |\n|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n";
    for (const auto& [question, sizes] : questions) {
        double before = 0;
        for (const auto& [size, row] : sizes) {
            const double library = row[Library].time;
            std::string line;
            for (const std::string& cell :
                 {question, std::to_string(size), TimeText(library), RatioText(library, before),
                  TimeText(row[Plain].time), RatioText(row[Plain].time, library), TimeText(row[Geos].time),
                  RatioText(row[Geos].time, library), ErrorText(row[Library].error), ErrorText(row[Geos].error)}) {
                line += "| " + cell + (cell.empty() ? "" : " ");
            }
            text += line + "|\n";
            before = library;
        }
    }
    return text;
}

void RatioReporter::Finalize() { std::printf("\n%s", Table().c_str()); }

bool RatioReporter::WriteTable(const std::string& path) const {
    std::ifstream in(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    const std::string startMark = "<!-- table -->\n";
    const std::size_t start = text.find(startMark);
    const std::size_t end = text.find("<!-- end of table -->");
    if (start == std::string::npos || end == std::string::npos || end < start) return false;
    const std::size_t from = start + startMark.size();
    text.replace(from, end - from, Table());
    in.close();
    std::ofstream out(path, std::ios::binary);
    out << text;
    return static_cast<bool>(out.flush());
}

}  // namespace bench
