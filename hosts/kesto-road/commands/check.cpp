// kesto-road check: what a surveyor wants to know of a project file before trusting it.
#include <array>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "checks/checked.hpp"
#include "checks/findings.hpp"
#include "checks/outline.hpp"
#include "commands/commands.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

namespace {

constexpr std::streamsize readBlock = 65536;  // bytes
constexpr std::size_t intervalColumn = 1;     // of the header line
constexpr double lastSectionMode = 1;
constexpr double millimetres = 1e3;
constexpr int gapDecimals = 2;     // of millimetres
constexpr int lengthDecimals = 3;  // of metres

std::string ReadText(const std::string& path) {
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    std::string text;
    std::vector<char> block(readBlock);
    do {  // read() itself: an iterator would let the error of a folder escape
        stream.read(block.data(), readBlock);
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    if (!stream.is_open() || stream.bad()) throw FileProblem(path, "read", errno);
    return text;
}

/// Settings that the library takes otherwise than they stand, or takes and cannot use.
void CheckSettings(const Checked& checked) {
    double interval = 0;
    GetMakeStakeInfo(checked.road, &interval);
    const auto& header = checked.outline.header;
    if (header && header->numbers[intervalColumn] < interval) {
        checked.findings.Warning(header->line, "stake-interval",
                                 "the stake interval of " + FormatShort(header->numbers[intervalColumn]) +
                                     " m is raised to " + FormatShort(interval) + " m");
    }
    for (const RecordLine& it : checked.outline.Records("ExtInfo")) {
        if (it.cells.front() != "SectionMode" || (it.numbers[1] >= 0 && it.numbers[1] <= lastSectionMode)) continue;
        checked.findings.Warning(
            it.line, "section-mode",
            "there is no section mode " + FormatReal(it.numbers[1], 0) + ": the road has no cross sections in it");
    }
}

/// Records that the reader left out, and that no other finding explains.
void TellOfSkipped(const Failure& failure, bool hasRoad, Findings& findings) {
    if (failure.status != KESTO_RECORDS_SKIPPED) return;
    // Without a road no change section has a place: that follows from the error that tells so.
    if (!hasRoad && failure.list == KESTO_LIST_CHANGE_SECTIONS) return;
    const auto more = static_cast<std::int64_t>(failure.value) - findings.SkippedCount();
    if (!findings.HasErrorAt(failure.record)) {
        findings.Error(failure.record, "skipped-record", "the record is refused and skipped");
    } else if (hasRoad && more > 0 && findings.FirstLineOf({"swallowed-section"}) == 0) {
        findings.Error(0, "skipped-record",
                       std::to_string(more) + " more records are skipped than are named in other errors");
    }
}

/// The line that a failure of the design run speaks of; 0 where it speaks of none.
std::int64_t LineOf(const Failure& failure, RoadDesign* road, const Outline& outline, const Findings& findings) {
    constexpr std::array<std::string_view, 4> alignments{"Intersection", "Element", "Coordinate", "BrokenLine"};
    if (failure.status == KESTO_UNKNOWN_STAKE_MODE) return 1;
    if (failure.status == KESTO_ELEMENT_NOT_EVALUABLE) {  // counted behind the splits of broken chains
        const std::int64_t line = findings.FirstLineOf({"spiral-radii", "element-type", "element-shape"});
        if (line > 0) return line;
    }
    const auto mode = static_cast<std::size_t>(GetRoadDesignMode(road));
    if (mode >= alignments.size()) return 0;
    const auto records = outline.Records(alignments[mode]);
    const auto record = static_cast<std::size_t>(failure.record);
    return failure.record >= 0 && record < records.size() ? records[record].line : outline.LineOf(alignments[mode]);
}

}  // namespace

Place PlaceOf(const Checked& checked, double mileage, std::int32_t occurrence) {
    if (!checked.line) return {mileage, false, false, "there is no road"};
    const RoadLine& line = *checked.line;
    if (occurrence < 0) {
        const bool found = mileage > line.Start() - beyondTolerance && mileage < line.End() + beyondTolerance;
        return {mileage, found, !found, "this continuous mileage lies before its start or behind its end"};
    }
    Place place{mileage, false, false, {}};
    place.found = GetSrcMileage(checked.road, &place.continuous, occurrence);
    if (place.found) return place;
    place.beyond = LastFailure(checked.road).status == KESTO_MILEAGE_OFF_ROAD;
    place.why = DescribeLastFailure(checked.road);
    return place;
}

bool StandsAtEnd(const Checked& checked, const Place& place) {
    return checked.line && place.beyond &&
           (std::fabs(place.continuous - checked.line->Start()) < beyondTolerance ||
            std::fabs(place.continuous - checked.line->End()) < beyondTolerance);
}

std::string Distance(double metres) {
    constexpr double shortest = 1;   // m
    constexpr double longest = 1e9;  // m: from here on decimals mean nothing
    if (!std::isfinite(metres)) return "farther than numbers reach";
    if (metres < shortest) return FormatReal(metres * millimetres, gapDecimals) + " mm";
    return (metres < longest ? FormatReal(metres, lengthDecimals) : FormatShort(metres)) + " m";
}

ExitCode RunCheck(const CheckOptions& options) {
    const RoadHandle road = NewRoad();
    if (const std::int32_t status = ReadProject(road.get(), options.road); status != KESTO_SUCCESS) {
        throw OpenProblem(options.road, status);
    }
    Findings findings;
    const Outline outline = ReadOutline(ReadText(options.road), findings);
    const Failure skipped = LastFailure(road.get());
    std::optional<RoadLine> line;
    if (DesignRoad(road.get())) line.emplace(road.get());
    const Failure failure = LastFailure(road.get());
    const std::string why = DescribeLastFailure(road.get());
    const Checked checked{options.road, outline, road.get(), line, findings};
    CheckSettings(checked);
    CheckAlignment(checked);
    if (!line) {
        findings.Error(LineOf(failure, road.get(), outline, findings), "no-road", "no road can be built: " + why);
    }
    CheckChains(checked);
    CheckProfile(checked);
    CheckSections(checked);
    TellOfSkipped(skipped, line.has_value(), findings);
    Output out("");
    out.Write(options.json ? findings.Json(options.road) : findings.Text(options.road));
    out.Finish();
    if (!line) return ExitCode::Road;
    if (findings.Count(Severity::Error) > 0) return ExitCode::Data;
    return findings.Count(Severity::Warning) > 0 ? ExitCode::Warnings : ExitCode::Ok;
}

}  // namespace kesto::host
