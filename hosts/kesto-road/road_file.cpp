#include "road_file.hpp"

#include <cerrno>
#include <filesystem>

#include "failure_text.hpp"
#include "output.hpp"

namespace kesto::host {

Problem OpenProblem(const std::string& path, std::int32_t status) {
    std::error_code ignored;
    if (status == KESTO_FILE_NOT_OPENED && !std::filesystem::exists(path, ignored)) {
        return FileProblem(path, "read", ENOENT);
    }
    if (status == KESTO_FILE_NOT_OPENED) return FileProblem(path, "read", 0);
    return {ExitCode::File, "'" + path + "' cannot be read: " + DescribeStatus(status)};
}

RoadHandle NewRoad() {
    RoadHandle road(StartRoadDesign());
    if (!road) throw Problem(ExitCode::Road, "memory ran out");
    return road;
}

void CheckRoadExtension(const std::string& path) {
    if (std::filesystem::path(path).extension() == ".road") return;
    throw Problem(ExitCode::File, "'" + path + "' has the wrong extension: a project file ends in \".road\"");
}

RoadHandle OpenRoad(const std::string& path) {
    CheckRoadExtension(path);
    RoadHandle road = NewRoad();
    const std::int32_t status = OpenProject2(road.get(), path.c_str());
    const Failure failure = LastFailure(road.get());
    if (status >= KESTO_NULL_HANDLE_OR_PATH) throw OpenProblem(path, status);
    if (status != KESTO_SUCCESS) {
        throw Problem(ExitCode::Road,
                      "'" + path + "': no road can be built: " + DescribeFailure(road.get(), status, failure));
    }
    if (failure.status == KESTO_RECORDS_SKIPPED) {
        PrintWarning("'" + path + "' line " + std::to_string(failure.record) + ": " +
                     DescribeFailure(road.get(), KESTO_RECORDS_SKIPPED, failure));
    }
    return road;
}

}  // namespace kesto::host
