// kesto-road make: a project file from tables.
#include <algorithm>
#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "road/conventions.hpp"
#include "road/cross_section.hpp"
#include "road/failure_text.hpp"
#include "road/road_file.hpp"
#include "road/road_line.hpp"
#include "tables/plan.hpp"
#include "tables/profile.hpp"
#include "tables/sections.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

constexpr double joinTolerance =
    0.01;  // m: farther apart, an element's start and the end before it are worth a warning

struct Tables {
    std::int32_t mode = elementMode;
    StartRow start;
    std::vector<ElementRow> elements;  ///< one of the three forms of plan is filled
    std::vector<FromLine<Intersection>> intersections;
    std::vector<FromLine<Coordinate>> points;
    std::vector<FromLine<BrokenChain>> brokenChains;
    ProfileTable profile;
    std::vector<FromLine<PlateRow>> plates;
    std::vector<FromLine<ChangeRow>> changes;
};

/// Prints every message but the last, which ends the run.
void RefuseProblems(const std::vector<std::string>& problems) {
    if (problems.empty()) return;
    for (std::size_t i = 0; i + 1 < problems.size(); ++i) PrintError(problems[i]);
    throw Problem(ExitCode::Data, problems.back());
}

/// The form of plan that the options name.
std::int32_t ModeOf(const MakeOptions& options) {
    const int plans = static_cast<int>(!options.elements.empty()) + static_cast<int>(!options.intersections.empty()) +
                      static_cast<int>(!options.points.empty());
    if (plans != 1) {
        throw Problem(ExitCode::Usage, "a road has one plan: give START and ELEMENTS, --intersections, or --points");
    }
    if (options.straights && options.points.empty()) throw Problem(ExitCode::Usage, "--straights goes with --points");
    if (!options.intersections.empty()) return intersectionMode;
    if (options.points.empty()) return elementMode;
    return options.straights ? straightsMode : pointMode;
}

Tables ReadTables(RoadDesign* road, const MakeOptions& options) {
    std::vector<std::string> problems;
    Tables tables;
    tables.mode = ModeOf(options);
    if (!options.start.empty()) tables.start = ReadStart(road, options.start, problems);
    if (!options.elements.empty()) tables.elements = ReadElements(options.elements, problems);
    if (!options.intersections.empty()) tables.intersections = ReadIntersections(options.intersections, problems);
    if (!options.points.empty()) tables.points = ReadPlanPoints(options.points, options.straights, problems);
    if (!options.broken.empty()) tables.brokenChains = ReadBrokenChains(road, options.broken, problems);
    if (!options.profile.empty()) tables.profile = ReadProfile(road, options.profile, problems);
    if (!options.plates.empty()) tables.plates = ReadPlates(options.plates, problems);
    if (!options.changes.empty()) tables.changes = ReadChanges(road, options.changes, problems);
    RefuseProblems(problems);
    return tables;
}

/// What the table of the start leaves empty comes from the first element, and the other way round.
void CompleteStart(StartRow& start, ElementRow& first) {
    const auto share = [&](std::optional<double>& mine, std::optional<double>& other, const char* column) {
        if (!mine) mine = other;
        if (!mine) {
            throw Problem(ExitCode::Data, start.where + ": column '" + column +
                                              "' is empty, and so it is in the first element: give one of them");
        }
        if (!other) other = mine;
    };
    share(start.x, first.x, "start_x");
    share(start.y, first.y, "start_y");
    share(start.azimuth, first.azimuth, "start_azimuth_deg");
}

/// Gives every element its start: what a row leaves empty follows from the end of the element before.
void CompleteElements(RoadDesign* road, Tables& tables) {
    CompleteStart(tables.start, tables.elements.front());
    double x = *tables.start.x;
    double y = *tables.start.y;
    double azimuth = *tables.start.azimuth;
    for (auto& row : tables.elements) {
        const double gap = std::hypot(row.x.value_or(x) - x, row.y.value_or(y) - y);
        if (gap > joinTolerance) {
            PrintWarning(row.where + ": the start point lies " + FormatReal(gap, 3) +
                         " m from the end of the element before; the road goes on from that end");
        }
        Element& element = row.element;
        element.startX = row.x.value_or(x);
        element.startY = row.y.value_or(y);
        element.startAzimuth = row.azimuth.value_or(azimuth);
        Element joined = element;
        joined.startX = x;
        joined.startY = y;
        if (!GetElementPositionAndAzimuth(road, &joined, element.length, &x, &y, &azimuth)) {
            throw Problem(ExitCode::Data, row.where + ": " + DescribeLastFailure(road));
        }
    }
}

[[noreturn]] void RefuseRecord(RoadDesign* road, const std::string& where) {
    throw Problem(ExitCode::Data, where + ": " + DescribeLastFailure(road));
}

void AddElements(RoadDesign* road, const Tables& tables) {
    if (!SetStartInformation(road, *tables.start.x, *tables.start.y, *tables.start.azimuth)) {
        RefuseRecord(road, tables.start.where);
    }
    for (const auto& row : tables.elements) {
        if (!AddElement(road, &row.element, -1)) RefuseRecord(road, row.where);
    }
}

void AddPlan(RoadDesign* road, const Tables& tables) {
    if (tables.mode == elementMode) AddElements(road, tables);
    for (const auto& row : tables.intersections) {
        if (!AddIntersection(road, &row.record, -1)) RefuseRecord(road, row.where);
    }
    for (const auto& row : tables.points) {
        if (!AddCoordinate(road, &row.record, -1)) RefuseRecord(road, row.where);
    }
}

/// Runs the design; where it fails, the message begins with the line that is to blame.
void Design(RoadDesign* road, const Tables& tables) {
    if (DesignRoad(road)) return;
    const Failure failure = LastFailure(road);
    const auto record = static_cast<std::size_t>(failure.record);
    std::string where;
    if (failure.list == KESTO_LIST_INTERSECTIONS && record < tables.intersections.size()) {
        where = tables.intersections[record].where + ": ";
    } else if (failure.list == KESTO_LIST_COORDINATES && record < tables.points.size()) {
        where = tables.points[record].where + ": ";
    }
    throw Problem(ExitCode::Road, where + "no road can be built: " + DescribeLastFailure(road));
}

void Fill(RoadDesign* road, const Tables& tables, const MakeOptions& options) {
    SetStartMileage(road, tables.start.mileage);
    SetMileageInterval(road, options.interval);
    SetRoadDesignMode(road, tables.mode);
    AddPlan(road, tables);
    for (const auto& chain : tables.brokenChains) {
        if (!AddBrokenChain(road, &chain.record)) RefuseRecord(road, chain.where);
    }
    SetVerticalCurveMode(road, tables.profile.mode);
    for (const auto& point : tables.profile.points) {
        if (!AddVerticalCurve(road, &point.record)) RefuseRecord(road, point.where);
    }
    Design(road, tables);
}

void AddChange(RoadDesign* road, const FromLine<ChangeRow>& row) {
    const ChangeRow& it = row.record;
    std::vector<double> values;
    for (const SectionPlate& plate : StandardPlates(road, it.side)) {
        values.push_back(it.kind == widening ? plate.width : plate.crossSlope);
    }
    for (std::size_t i = 0; i < it.values.size(); ++i) {
        if (!it.values[i]) continue;
        if (i >= values.size()) {
            throw Problem(ExitCode::Data,
                          row.where + ": value_" + std::to_string(i + 1) + " is given, but plates of the " +
                              sideNames[static_cast<std::size_t>(it.side)] + " side: " + std::to_string(values.size()));
        }
        values[i] = *it.values[i];
    }
    if (!AddChangeSectionList(road, it.mileage, it.side, it.kind, values.data(),
                              static_cast<std::int32_t>(values.size()), it.occurrence, it.type)) {
        RefuseRecord(road, row.where);
    }
}

/// Adds plates and change sections. Only the built road knows where the stake mileages of change sections lie.
void AddSections(RoadDesign* road, const Tables& tables) {
    for (const auto& row : tables.plates) {
        if (!AddStandardSectionPlate(road, &row.record.plate, row.record.side, -1)) RefuseRecord(road, row.where);
    }
    for (const auto& row : tables.changes) AddChange(road, row);
}

/// Warns of what makes a road, but is probably a mistake.
void WarnOfStrays(RoadDesign* road, const RoadLine& line, const Tables& tables) {
    const Element& first = line.Pieces().front().element;
    const double gap = std::hypot(tables.start.x.value_or(first.startX) - first.startX,
                                  tables.start.y.value_or(first.startY) - first.startY);
    if (gap > joinTolerance) {
        PrintWarning(tables.start.where + ": the start point lies " + FormatReal(gap, 3) +
                     " m from the first point of the plan, where the road starts");
    }
    const auto effects = line.ChainEffects(tables.start.mileage);
    for (const auto& chain : tables.brokenChains) {
        const auto effect = effects.find(chain.record.backMileage);
        if (effect == effects.end()) {
            PrintWarning(chain.where + ": this broken chain is not on the road and has no effect");
        } else if (!effect->second.jumps) {
            PrintWarning(chain.where + ": this broken chain has no effect: the road ends there, or it does not jump");
        } else if (effect->second.late) {
            PrintWarning(
                chain.where +
                ": this broken chain stands behind an element's start and acts at that element's end only, at " +
                FormatMileage(line.Road(), {effect->second.from, 0}));
        }
    }
    for (const auto& point : tables.profile.points) {
        if (ContinuousMileage(road, {point.record.mileage, point.record.occurrence})) continue;
        const Failure failure = LastFailure(road);
        if (failure.status == KESTO_MILEAGE_OFF_ROAD && failure.excess < beyondTolerance) continue;
        PrintWarning(point.where + ": this grade-change point is not on the road: " + DescribeLastFailure(road));
    }
}

/// Puts back the elements as they were entered, for the file: the design run has cut them at the broken chains. A plan
/// of intersections or points needs nothing, since the file keeps these and not their elements.
void RestoreElements(RoadDesign* road, const Tables& tables) {
    if (tables.mode != elementMode) return;
    while (GetElementCount(road) > 0) DeleteElement(road, GetElementCount(road) - 1);
    AddElements(road, tables);
    SetStartMileage(road, tables.start.mileage);
}

/// "14 elements", "10 intersections" or "7 points".
std::string PlanSize(const Tables& tables) {
    if (!tables.intersections.empty()) return std::to_string(tables.intersections.size()) + " intersections";
    if (!tables.points.empty()) return std::to_string(tables.points.size()) + " points";
    return std::to_string(tables.elements.size()) + " elements";
}

}  // namespace

ExitCode RunMake(const MakeOptions& options) {
    CheckRoadExtension(options.road);
    const RoadHandle road = NewRoad();
    SetMakeStakePerfix(road.get(), options.prefix.c_str());
    Tables tables = ReadTables(road.get(), options);
    if (tables.mode == elementMode) CompleteElements(road.get(), tables);
    Fill(road.get(), tables, options);
    AddSections(road.get(), tables);
    const RoadLine line(road.get());
    WarnOfStrays(road.get(), line, tables);
    const std::string length = FormatReal(line.Length(), 3);
    RestoreElements(road.get(), tables);
    const std::int32_t status = SaveProject(road.get(), options.road.c_str());
    if (status != KESTO_SUCCESS) {
        throw Problem(ExitCode::File, "'" + options.road + "' cannot be written: " + DescribeStatus(status) +
                                          ": check the folder, its permissions and the disk");
    }
    std::cout << options.road << ": " << length << " m, " << PlanSize(tables) << ", " << tables.brokenChains.size()
              << " broken chains, " << tables.profile.points.size() << " grade-change points";
    if (!tables.plates.empty()) {
        std::cout << ", " << tables.plates.size() << " plates, " << tables.changes.size() << " change sections";
    }
    std::cout << "\n";
    return ExitCode::Ok;
}

}  // namespace kesto::host
