// kesto-road cut: a stretch of a road as a project file of its own.
#include <filesystem>
#include <iostream>
#include <string>

#include "commands/commands.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

/// What to say where the end does not lie behind the start. A later occurrence of its stake mileage may lie there.
Problem WrongOrder(RoadDesign* road, const RoadPlace& from, const RoadPlace& to) {
    if (from.continuous == to.continuous) return {ExitCode::Usage, "--from and --to are the same place"};
    Stake later = to.stake;
    for (;;) {
        ++later.occurrence;
        const auto continuous = ContinuousMileage(road, later);
        if (!continuous) break;
        if (*continuous <= from.continuous) continue;
        return {ExitCode::Usage, "--from lies after --to on the road: exchange them, or end at the " +
                                     FormatMileage(road, later) + " behind it (--to-occurrence " +
                                     std::to_string(later.occurrence) + ")"};
    }
    return {ExitCode::Usage, "--from lies after --to on the road: exchange them"};
}

}  // namespace

ExitCode RunCut(const CutOptions& options) {
    CheckRoadExtension(options.out);
    std::error_code different;
    if (std::filesystem::equivalent(options.road, options.out, different)) {
        throw Problem(ExitCode::Usage, "'" + options.out + "' is the road itself: give the part another name");
    }
    const RoadHandle road = OpenRoad(options.road);
    const RoadPlace from = ResolvePlace(road.get(), options.from, options.fromOccurrence, "--from");
    const RoadPlace to = ResolvePlace(road.get(), options.to, options.toOccurrence, "--to");
    if (from.continuous >= to.continuous) throw WrongOrder(road.get(), from, to);
    const std::int32_t status = SavePartProject(road.get(), options.out.c_str(), from.stake.mileage, to.stake.mileage,
                                                from.stake.occurrence, to.stake.occurrence);
    if (status == KESTO_NOTHING_TO_SAVE) {
        if (LastFailure(road.get()).list != KESTO_LIST_BROKEN_CHAINS) {
            throw Problem(ExitCode::Usage, "--from and --to are the same place");
        }
        throw Problem(ExitCode::Data,
                      "no broken chains give this stretch the road's stake mileages: begin or end it at another place");
    }
    if (status == KESTO_ELEMENT_NOT_EVALUABLE) {
        throw Problem(ExitCode::Road, "no road can be built from this stretch: begin or end it at another place");
    }
    if (status != KESTO_SUCCESS) {
        throw Problem(ExitCode::File, "'" + options.out + "' cannot be written: " + DescribeStatus(status) +
                                          ": check the folder, its permissions and the disk");
    }
    std::cout << options.out << ": " << FormatMileage(road.get(), from.stake) << " to "
              << FormatMileage(road.get(), to.stake) << ", " << FormatReal(to.continuous - from.continuous, 3)
              << " m\n";
    return ExitCode::Ok;
}

}  // namespace kesto::host
