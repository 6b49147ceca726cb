// kesto-road check: what is wrong or doubtful in a project file.
#include <optional>
#include <string>

#include "checks/checked.hpp"
#include "checks/findings.hpp"
#include "checks/opened_file.hpp"
#include "commands/commands.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

ExitCode RunCheck(const CheckOptions& options) {
    const RoadHandle road = NewRoad();
    if (const std::int32_t status = ReadProject(road.get(), options.road); status != KESTO_SUCCESS) {
        throw OpenProblem(options.road, status);
    }
    const OpenedFile file(road.get());
    std::optional<RoadLine> line;
    if (DesignRoad(road.get())) line.emplace(road.get());
    const Failure failure = LastFailure(road.get());
    const std::string why = DescribeLastFailure(road.get());
    Findings findings;
    const Checked checked{file, road.get(), line, findings};
    TellOfReading(checked);
    CheckAlignment(checked);
    if (!line) TellOfNoRoad(checked, failure, why);
    CheckChains(checked);
    CheckProfile(checked);
    CheckSections(checked);
    Output out("");
    out.Write(options.json ? findings.Json(options.road) : findings.Text(options.road));
    out.Finish();
    if (!line) return ExitCode::Road;
    if (findings.Count(Severity::Error) > 0) return ExitCode::Data;
    return findings.Count(Severity::Warning) > 0 ? ExitCode::Warnings : ExitCode::Ok;
}

}  // namespace kesto::host
