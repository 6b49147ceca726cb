// kesto-road cut: a stretch of a road as a project file of its own.
#include <filesystem>
#include <iostream>
#include <string>

#include "commands.hpp"
#include "failure_text.hpp"
#include "numbers.hpp"
#include "road_file.hpp"
#include "road_line.hpp"

namespace kesto::host {

namespace {

/// One end of the stretch, with its continuous mileage (m).
struct Limit {
    Stake stake;
    double continuous;
};

Limit FindLimit(RoadDesign* road, const std::string& prefix, const std::string& text, std::optional<int> occurrence,
                const std::string& name) {
    const Stake stake = ResolveMileage(text, prefix, occurrence, name);
    double continuous = stake.mileage;
    if (GetSrcMileage(road, &continuous, stake.occurrence)) return {stake, continuous};
    throw Problem(ExitCode::Data, name + " " + FormatMileage(prefix, stake) + " (occurrence " +
                                      std::to_string(stake.occurrence) +
                                      ") is not on the road: " + DescribeLastFailure(road));
}

}  // namespace

ExitCode RunCut(const CutOptions& options) {
    CheckRoadExtension(options.out);
    std::error_code different;
    if (std::filesystem::equivalent(options.road, options.out, different)) {
        throw Problem(ExitCode::Usage, "'" + options.out + "' is the road itself: give the part another name");
    }
    const RoadHandle road = OpenRoad(options.road);
    const std::string prefix = RoadLine(road.get()).Prefix();
    const Limit from = FindLimit(road.get(), prefix, options.from, options.fromOccurrence, "--from");
    const Limit to = FindLimit(road.get(), prefix, options.to, options.toOccurrence, "--to");
    if (from.continuous > to.continuous) {
        throw Problem(ExitCode::Usage, "--from lies after --to on the road: exchange them");
    }
    const std::int32_t status = SavePartProject(road.get(), options.out.c_str(), from.stake.mileage, to.stake.mileage,
                                                from.stake.occurrence, to.stake.occurrence);
    if (status == KESTO_NOTHING_TO_SAVE) {
        throw Problem(ExitCode::Data, "there is no road between --from and --to: they are the same place");
    }
    if (status != KESTO_SUCCESS) {
        throw Problem(ExitCode::File, "'" + options.out + "' cannot be written: " + DescribeStatus(status) +
                                          ": check the folder, its permissions and the disk");
    }
    std::cout << options.out << ": " << FormatMileage(prefix, from.stake) << " to " << FormatMileage(prefix, to.stake)
              << ", " << FormatReal(to.continuous - from.continuous, 3) << " m\n";
    return ExitCode::Ok;
}

}  // namespace kesto::host
