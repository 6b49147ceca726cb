#include "road/road_file.hpp"

#include <cerrno>
#include <filesystem>

#include "road/failure_text.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

namespace {

constexpr const char* roadExtension = ".road";
constexpr const char* waterExtension = ".watx";

bool HasExtension(const std::string& path, const char* extension) {
    return std::filesystem::path(path).extension() == extension;
}

/// Reads a project file and runs the design.
/// @param failure out: why it failed, or which records had to be skipped
/// @return as OpenProject2()
std::int32_t OpenAndDesign(RoadDesign* road, const std::string& path, Failure& failure) {
    const std::int32_t status = ReadProject(road, path);
    failure = LastFailure(road);
    if (status != KESTO_SUCCESS || DesignRoad(road)) return status;
    failure = LastFailure(road);
    return failure.status;
}

}  // namespace

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
    if (HasExtension(path, roadExtension)) return;
    throw Problem(ExitCode::File, "'" + path + "' has the wrong extension: a project file ends in \".road\"");
}

std::int32_t ReadProject(RoadDesign* road, const std::string& path) {
    if (HasExtension(path, waterExtension)) return OpenWaterProject(road, path.c_str());
    CheckRoadExtension(path);
    return OpenProject(road, path.c_str());
}

RoadHandle OpenRoad(const std::string& path) {
    RoadHandle road = NewRoad();
    Failure failure{};
    const std::int32_t status = OpenAndDesign(road.get(), path, failure);
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
