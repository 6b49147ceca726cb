#include "part/part_project.hpp"

#include <optional>
#include <utility>

#include "alignment/chain_builder.hpp"
#include "core/status.hpp"
#include "io/project_file.hpp"
#include "part/part_alignment.hpp"
#include "part/part_profile.hpp"
#include "part/part_sections.hpp"

namespace kesto {

namespace {

/// Continuous mileage of a limit (m); where it is not on the road, the reason has the status of a part.
Result<double> FindLimit(RoadDesign& whole, StakeMileage stake) noexcept {
    if (const std::optional<double> found = FindContinuous(whole, stake)) return *found;
    Failure failure = ExplainMissing(whole, stake);
    failure.status = KESTO_NOTHING_TO_SAVE;
    return failure;
}

/// Completes a part that has its alignment.
std::unique_ptr<RoadDesign> Complete(RoadDesign& whole, FramedPart part) {
    CopyProfile(whole, part);
    CopySections(whole, part);
    return std::move(part.road);
}

}  // namespace

Result<std::unique_ptr<RoadDesign>> MakePart(RoadDesign& road, StakeMileage from, StakeMileage to) {
    if (const Outcome current = EnsureCurrent(road); !current) return current.failure();
    const auto whole = std::make_unique<RoadDesign>(road);  // deriving the profile writes to it
    const Result<double> start = FindLimit(*whole, from);
    if (!start) return start.failure();
    const Result<double> end = FindLimit(*whole, to);
    if (!end) return end.failure();
    Result<FramedPart> part = CutAlignment(*whole, *start, *end);
    if (!part) return part.failure();
    return Complete(*whole, std::move(*part));
}

Result<std::unique_ptr<RoadDesign>> RoundForFile(RoadDesign& part) {
    Result<FramedPart> rounded = RoundAlignment(part);
    if (!rounded) return rounded.failure();
    return Complete(part, std::move(*rounded));
}

Outcome SavePart(RoadDesign& road, const char* path, StakeMileage from, StakeMileage to) {
    const Result<std::unique_ptr<RoadDesign>> part = MakePart(road, from, to);
    if (!part) return part.failure();
    const Result<std::unique_ptr<RoadDesign>> rounded = RoundForFile(**part);
    if (!rounded) return rounded.failure();
    return SaveRoad(**rounded, path);
}

}  // namespace kesto
