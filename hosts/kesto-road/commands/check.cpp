// kesto-road check: what is wrong or doubtful in a project file.
#include <cerrno>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "checks/checked.hpp"
#include "checks/findings.hpp"
#include "checks/outline.hpp"
#include "commands/commands.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

namespace {

constexpr std::streamsize readBlock = 65536;  // bytes

std::string ReadText(const std::string& path) {
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    std::string text;
    std::vector<char> block(readBlock);
    do {  // by read(), since a stream iterator does not notice the error that reading a folder gives
        stream.read(block.data(), readBlock);
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    if (!stream.is_open() || stream.bad()) throw FileProblem(path, "read", errno);
    return text;
}

}  // namespace

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
    if (!line) TellOfNoRoad(checked, failure, why);
    CheckChains(checked);
    CheckProfile(checked);
    CheckSections(checked);
    TellOfSkipped(checked, skipped);
    Output out("");
    out.Write(options.json ? findings.Json(options.road) : findings.Text(options.road));
    out.Finish();
    if (!line) return ExitCode::Road;
    if (findings.Count(Severity::Error) > 0) return ExitCode::Data;
    return findings.Count(Severity::Warning) > 0 ? ExitCode::Warnings : ExitCode::Ok;
}

}  // namespace kesto::host
