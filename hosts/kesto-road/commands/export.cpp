// kesto-road export: alignment and profile as a LandXML file.
#include <filesystem>
#include <iostream>

#include "commands/commands.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

ExitCode RunExport(const ExportOptions& options) {
    const RoadHandle road = OpenRoad(options.road);
    std::error_code different;
    if (std::filesystem::equivalent(options.out, options.road, different)) {
        throw Problem(ExitCode::Usage, "'" + options.out + "' is the road itself: choose another -o");
    }
    const std::int32_t status = ExportLandXMLFile(road.get(), options.out.c_str());
    if (status == KESTO_FILE_NOT_WRITTEN) {
        throw Problem(ExitCode::File, "'" + options.out + "' cannot be written: " + DescribeStatus(status) +
                                          ": check the folder, its permissions and the disk");
    }
    if (status != KESTO_SUCCESS) {
        throw Problem(ExitCode::Road, "'" + options.road + "': " + DescribeLastFailure(road.get()));
    }
    std::cout << options.out << ": LandXML 1.1, " << GetElementCount(road.get()) - 1 << " elements, "
              << GetVerticalCurveCount(road.get()) << " grade-change points\n";
    return ExitCode::Ok;
}

}  // namespace kesto::host
