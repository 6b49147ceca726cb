// Cross sections: widths, cross slopes and edges of the plates, and heights off the centre line.

#include <array>
#include <cstddef>

#include "cases.hpp"
#include "cross_section.hpp"
#include "profile_data.hpp"
#include "road_data.hpp"

namespace reference {

namespace {

constexpr double margin = 1e-6;  // m: nearer to a zone's border, a change section or a plate's edge, tolerances decide

/// A change section as the set writes it.
struct Change {
    int side, kind;  // 0 left, 1 right; 0 cross slopes, 1 widths
    Stake stake;
    ChangeData data;
};

struct SectionData {
    std::array<SideData, 2> sides;
    std::vector<Change> changes;
};

SectionData DrawSections(Dice& dice, const Zones& zones) {
    constexpr std::array<int, 5> types = {0, 1, 2, 0, 7};  // 7: unknown, the standard values hold
    SectionData sections;
    for (int side = 0; side < 2; ++side) {
        SideData& here = sections.sides[static_cast<std::size_t>(side)];
        const int plates = 1 + dice.Below(4);
        for (int i = 0; i < plates; ++i) {
            PlateData plate{};
            plate.width = Millimetres(dice.Between(0.25, 8));
            plate.slope = Millimetres(dice.Between(-6, 6));
            if (dice.OneIn(3)) plate.step = Millimetres(dice.Between(-0.3, 0.3));
            here.plates.push_back(plate);
        }
        for (const int kind : {0, 1}) {
            const int count = dice.Below(5);
            for (const double place :
                 DrawAscending(dice, count, static_cast<double>(zones.Start()), static_cast<double>(zones.End()))) {
                const Stake stake = zones.StakeAt(place);
                if (zones.IsNearBorder(stake.mileage, margin)) continue;
                ChangeData change{*zones.Continuous(stake), {}, types[static_cast<std::size_t>(dice.Below(5))]};
                for (int i = 0; i < plates; ++i) {
                    const double value = kind == 0 ? dice.Between(-8, 8) : dice.Between(0.25, 10);
                    change.values.push_back(Millimetres(value));
                }
                (kind == 0 ? here.slopes : here.widths).push_back(change);
                sections.changes.push_back({side, kind, stake, change});
            }
        }
    }
    return sections;
}

void WriteSections(const SetWriter& set, const SectionData& sections) {
    for (int side = 0; side < 2; ++side) {
        for (const PlateData& plate : sections.sides[static_cast<std::size_t>(side)].plates) {
            set.Begin("plate").Whole(side).Given(plate.width).Given(plate.slope).Given(plate.step);
        }
    }
    for (const Change& it : sections.changes) {
        Line line = set.Begin("change");
        line.Whole(it.side).Whole(it.kind).Given(it.stake.mileage).Whole(it.stake.occurrence).Whole(it.data.type);
        for (const double value : it.data.values) line.Given(value);
    }
}

bool IsNearChange(const SectionData& sections, const Real& mileage) {
    for (const Change& it : sections.changes) {
        if (abs(it.data.mileage - mileage) < margin) return true;
    }
    return false;
}

/// A height off the centre line, at a distance that no plate's edge is near to.
void WriteHeight(SetWriter& set, Dice& dice, const Stake& stake, int side, const SideData& data,
                 const std::vector<Edge>& edges, const Real& centreHeight) {
    const double distance = static_cast<double>(edges.back().offset) * dice.Between(0, 1);
    bool near = distance < margin;
    for (const Edge& edge : edges) near = near || abs(edge.offset - distance) < margin;
    if (near) return set.LeaveOut("heights within 1e-6 m of a plate's edge");
    set.Kind("height off the centre line");
    set.Begin("height")
        .Given(stake.mileage)
        .Whole(stake.occurrence)
        .Given(side == 0 ? -distance : distance)
        .Exact(HeightAcross(data, edges, centreHeight, distance));
}

void WriteSides(SetWriter& set, Dice& dice, const RoadData& road, const Zones& zones, const ProfileCurve& profile,
                const SectionData& sections, int count) {
    RoadWalk walk(road);
    for (const double mileage :
         DrawAscending(dice, count, static_cast<double>(zones.Start()), static_cast<double>(zones.End()))) {
        const Stake stake = zones.StakeAt(mileage);
        if (zones.IsNearBorder(stake.mileage, margin) || IsNearChange(sections, mileage)) {
            set.LeaveOut("cross sections within 1e-6 m of a zone's border or a change section");
            continue;
        }
        const Real continuous = *zones.Continuous(stake);
        walk.GoTo(continuous);
        const int side = dice.Below(2);
        const SideData& data = sections.sides[static_cast<std::size_t>(side)];
        const Real centreHeight = profile.Height(continuous);
        const std::vector<Edge> edges = EdgesAt(data, zones.Start(), continuous, centreHeight);
        set.Kind("cross section");
        {
            Line line = set.Begin("side");
            line.Given(stake.mileage).Whole(stake.occurrence).Whole(side);
            for (const Edge& edge : edges) {
                const Place point = walk.Curve().Beside(walk.Here(), side == 0 ? -edge.offset : edge.offset);
                line.Exact(edge.width)
                    .Exact(edge.slope)
                    .Exact(edge.offset)
                    .Exact(point.x)
                    .Exact(point.y)
                    .Exact(edge.height);
            }
        }
        if (dice.Flip()) WriteHeight(set, dice, stake, side, data, edges, centreHeight);
    }
}

}  // namespace

void WriteSectionCases(SetWriter& set, Dice& dice, double share) {
    constexpr int casesEach = 50;
    const int roads = ShareOf(900, share);
    for (int i = 0; i < roads; ++i) {
        const int curves = 1 + dice.Below(2);
        RoadData road = DrawRoad(dice, dice.Flip() ? Coordinates::Local : Coordinates::Grid, curves);
        DrawBreaks(dice, road, dice.Below(5));
        const Zones zones = ZonesOf(road);
        const ProfileData profile = DrawProfile(dice, zones, dice.Below(2));
        const SectionData sections = DrawSections(dice, zones);
        WriteRoad(set, road);
        WriteProfile(set, profile);
        WriteSections(set, sections);
        WriteSides(set, dice, road, zones, CurveOf(profile, zones), sections, casesEach);
    }
}

}  // namespace reference
