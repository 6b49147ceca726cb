#include "road/cross_section.hpp"

#include <algorithm>

#include "road/failure_text.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

using Query = bool(KESTO_CALL*)(RoadDesign*, double, std::int32_t, std::int32_t, SectionPlateArray*);

std::optional<std::vector<SectionPlate>> Plates(RoadDesign* road, Query query, std::int32_t side, const Stake& stake) {
    std::vector<SectionPlate> plates(static_cast<std::size_t>(GetStandardSectionPlateCount(road, side)));
    SectionPlateArray array{plates.data(), 0, static_cast<std::int32_t>(plates.size())};
    bool found = query(road, stake.mileage, stake.occurrence, side, &array);
    if (!found && array.count > array.capacity) {
        plates.resize(static_cast<std::size_t>(array.count));
        array = {plates.data(), 0, array.count};
        found = query(road, stake.mileage, stake.occurrence, side, &array);
    }
    if (!found) return std::nullopt;
    plates.resize(static_cast<std::size_t>(array.count));
    return plates;
}

}  // namespace

std::string TransitionName(std::int32_t type) {
    const bool known = type >= 0 && static_cast<std::size_t>(type) < transitionNames.size();
    return known ? transitionNames[static_cast<std::size_t>(type)] : "unknown (" + std::to_string(type) + ")";
}

bool HasPlates(RoadDesign* road) {
    return std::any_of(bothSides.begin(), bothSides.end(),
                       [&](std::int32_t side) { return GetStandardSectionPlateCount(road, side) > 0; });
}

std::vector<SectionPlate> StandardPlates(RoadDesign* road, std::int32_t side) {
    std::vector<SectionPlate> plates;
    SectionPlate plate{};
    for (std::int32_t i = 0; GetStandardSectionPlate(road, side, i, &plate); ++i) plates.push_back(plate);
    return plates;
}

std::optional<std::vector<SectionPlate>> PlatesAt(RoadDesign* road, std::int32_t side, const Stake& stake) {
    return Plates(road, GetRoadSideNoHeight, side, stake);
}

CrossSection SectionAt(RoadDesign* road, const RoadLine& line, const Stake& stake) {
    if (!HasPlates(road)) {
        throw Problem(ExitCode::Data,
                      "the road has no plates, so it has no cross section: 'make --plates' gives it some");
    }
    const auto centre = line.At(stake);
    if (!centre) {
        throw Problem(ExitCode::Data, NotOnRoad(road, stake));
    }
    CrossSection section{*centre, line.HeightAt(stake), {}};
    for (const std::int32_t side : bothSides) {
        if (GetStandardSectionPlateCount(road, side) == 0) continue;
        auto plates = Plates(road, section.height ? GetRoadSide : GetRoadSideNoHeight, side, stake);
        if (!plates) {
            throw Problem(ExitCode::Data, PlaceName(road, stake) + " has no section on the " +
                                              sideNames[static_cast<std::size_t>(side)] +
                                              " side: " + DescribeLastFailure(road));
        }
        section.plates[static_cast<std::size_t>(side)] = std::move(*plates);
    }
    return section;
}

std::vector<Change> Changes(RoadDesign* road, std::int32_t side, std::int32_t kind) {
    std::vector<Change> changes;
    const std::int32_t count = GetChangeSectionCount(road, side, kind);
    std::vector<double> values(static_cast<std::size_t>(GetStandardSectionPlateCount(road, side)));
    for (std::int32_t i = 0; i < count; ++i) {
        Change change{std::nullopt, 0, {}, 0};
        GetChangeSectionType(road, side, kind, i, &change.type);
        Stake stake;
        DoubleArray array{values.data(), 0, static_cast<std::int32_t>(values.size())};
        bool found = GetChangeSection(road, side, kind, i, &stake.mileage, &array, &stake.occurrence);
        if (!found && array.count > array.capacity) {  // more values than plates: a plate has been deleted since
            values.resize(static_cast<std::size_t>(array.count));
            array = {values.data(), 0, array.count};
            found = GetChangeSection(road, side, kind, i, &stake.mileage, &array, &stake.occurrence);
        }
        if (found) {
            change.stake = stake;
            change.values.assign(values.begin(), values.begin() + array.count);
            change.continuous = ContinuousMileage(road, stake).value_or(stake.mileage);
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

}  // namespace kesto::host
