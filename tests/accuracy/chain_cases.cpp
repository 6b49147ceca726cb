// Roads with broken chains: stake and continuous mileages, feet, and stations there and back.

#include <algorithm>
#include <string>
#include <vector>

#include "cases.hpp"
#include "road_data.hpp"

namespace reference {

namespace {

constexpr double zoneMargin = 1e-6;  // m: closer to a zone's border, tolerances decide

/// Stake mileages to continuous ones: within zones, at their very borders, in gaps, and asked for too often.
void WriteConversions(SetWriter& set, Dice& dice, const RoadData& road, const Zones& zones, int count) {
    set.Kind("continuous mileage of a stake mileage");
    const auto write = [&](const Stake& stake) {
        const auto continuous = zones.Continuous(stake);
        Line line = set.Begin("continuous");
        line.Given(stake.mileage).Whole(stake.occurrence);
        continuous ? line.Exact(*continuous) : line.Word("none");
    };
    for (int i = 0; i < count; ++i) {
        const Stake stake = zones.StakeAt(zones.Start() + (zones.End() - zones.Start()) * dice.Between(0, 1));
        if (zones.IsNearBorder(stake.mileage, zoneMargin)) {
            set.LeaveOut("stake mileages within 1e-6 m of a zone's border, but for the border itself");
            continue;
        }
        write(stake);
        if (dice.OneIn(8)) write({stake.mileage, zones.Occurrences(stake.mileage)});
    }
    for (const Break& it : road.breaks) {
        for (const double mileage : {it.back, it.ahead, (it.back + it.ahead) / 2}) write({mileage, dice.Below(2)});
    }
}

/// Distance of a place to the nearest end of an element or zone (m).
Real ToBorder(const std::vector<Real>& borders, const Real& mileage) {
    Real least = abs(borders.front() - mileage);
    for (const Real& border : borders) least = fmin(least, abs(border - mileage));
    return least;
}

void WriteStations(SetWriter& set, Dice& dice, const RoadData& road, const Zones& zones, int count) {
    constexpr double startZone = 1.1e-4;  // m: within 0.1 mm of an element's start, the start is the answer
    const std::vector<Real> borders = BordersOf(road);
    set.Kind("station to point to station");
    for (int i = 0; i < count; ++i) {
        const bool close = dice.OneIn(4);
        const Real& border = borders[static_cast<std::size_t>(dice.Below(static_cast<int>(borders.size())))];
        const double sense = dice.Flip() ? 1 : -1;
        const Real near = border + sense * dice.Between(startZone, 1e-2);
        const Real place = close ? near : zones.Start() + (zones.End() - zones.Start()) * dice.Between(0, 1);
        if (place < zones.Start() || place > zones.End()) continue;
        if (ToBorder(borders, place) < startZone) {
            set.LeaveOut("stations within 0.11 mm of an element's start");
            continue;
        }
        const Stake stake = zones.StakeAt(place);
        if (zones.IsNearBorder(stake.mileage, zoneMargin)) {
            set.LeaveOut("stake mileages within 1e-6 m of a zone's border, but for the border itself");
            continue;
        }
        set.Begin("station").Given(stake.mileage).Whole(stake.occurrence);
    }
}

/// Points beside the road, with the stake of their foot.
void WriteFeet(SetWriter& set, Dice& dice, const RoadData& road, const Zones& zones, int count) {
    constexpr double fromBorders = 1e-3;  // m
    constexpr double farthest = 20;       // m: the road comes nowhere as near to itself
    const std::vector<Real> borders = BordersOf(road);
    RoadWalk walk(road);
    for (const double mileage :
         DrawAscending(dice, count, static_cast<double>(zones.Start()), static_cast<double>(zones.End()))) {
        if (ToBorder(borders, mileage) < fromBorders) {
            set.LeaveOut("points whose foot lies within 1 mm of an element's end");
            continue;
        }
        walk.GoTo(mileage);
        const Place exact = walk.Curve().Beside(walk.Here(), dice.OneIn(4) ? 0 : dice.Between(-farthest, farthest));
        const auto x = static_cast<double>(exact.x);
        const auto y = static_cast<double>(exact.y);
        const Foot foot = walk.Curve().FootNear(walk.Here(), x, y);
        const Real continuous = walk.ElementStart() + foot.along;
        const Stake stake = zones.StakeAt(continuous);
        if (zones.IsNearBorder(stake.mileage, fromBorders)) {
            set.LeaveOut("points whose stake mileage lies within 1 mm of a zone's border");
            continue;
        }
        // The stake's own mileage is rounded; the exact one is where its zone puts the foot.
        const Real exactMileage = stake.mileage + (continuous - *zones.Continuous(stake));
        set.Kind(walk.Type() == 3 ? "foot on spirals of broken roads" : "foot on straights and arcs of broken roads");
        set.Begin("foot")
            .Given(x)
            .Given(y)
            .Whole(walk.Type())
            .Exact(exactMileage)
            .Whole(stake.occurrence)
            .Exact(foot.offset)
            .Exact(foot.slope);
    }
}

}  // namespace

void WriteChainCases(SetWriter& set, Dice& dice, double share) {
    constexpr int casesEach = 50;
    const int roads = ShareOf(1000, share);
    for (int i = 0; i < roads; ++i) {
        const int curves = 1 + dice.Below(4);
        RoadData road = DrawRoad(dice, dice.Flip() ? Coordinates::Local : Coordinates::Grid, curves);
        DrawBreaks(dice, road, dice.Below(8));
        WriteRoad(set, road);
        const Zones zones = ZonesOf(road);
        WriteConversions(set, dice, road, zones, casesEach);
        WriteStations(set, dice, road, zones, casesEach);
        WriteFeet(set, dice, road, zones, casesEach);
    }
}

}  // namespace reference
