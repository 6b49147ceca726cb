// Design heights on the centre line.

#include "cases.hpp"
#include "profile_data.hpp"
#include "road_data.hpp"

namespace reference {

void WriteHeightCases(SetWriter& set, Dice& dice, double share) {
    constexpr int casesEach = 50;
    constexpr double zoneMargin = 1e-6;  // m
    for (const int mode : {0, 1}) {
        for (int i = 0; i < ShareOf(700, share); ++i) {
            RoadData road;
            road.startMileage = DrawStartMileage(dice);
            road.elements.push_back(DrawStart(dice, Coordinates::Local));
            road.elements.front().type = 1;
            road.elements.front().length = Millimetres(dice.LogBetween(100, 20000));
            DrawBreaks(dice, road, dice.Below(5));
            const Zones zones = ZonesOf(road);
            const ProfileData profile = DrawProfile(dice, zones, mode);
            const ProfileCurve curve = CurveOf(profile, zones);
            set.Kind(mode == 0 ? "height, curves by radius" : "height, curves by their ends");
            WriteRoad(set, road);
            WriteProfile(set, profile);
            for (const double mileage :
                 DrawAscending(dice, casesEach, static_cast<double>(zones.Start()), static_cast<double>(zones.End()))) {
                const Stake stake = zones.StakeAt(mileage);
                if (zones.IsNearBorder(stake.mileage, zoneMargin)) {
                    set.LeaveOut("stake mileages within 1e-6 m of a zone's border, but for the border itself");
                    continue;
                }
                set.Begin("height")
                    .Given(stake.mileage)
                    .Whole(stake.occurrence)
                    .Given(0)
                    .Exact(curve.Height(*zones.Continuous(stake)));
            }
        }
    }
}

}  // namespace reference
