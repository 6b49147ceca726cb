#include "profile_data.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace reference {

namespace {

constexpr double zoneMargin = 1e-6;  // m: closer to a zone's border, tolerances decide

/// The stake of a place on the road; where that is doubtful or off the road, the continuous mileage itself.
Stake StakeFor(Dice& dice, const Zones& zones, double continuous) {
    const Stake itself{continuous, -1};
    if (dice.OneIn(8) || continuous < zones.Start() || continuous > zones.End()) return itself;
    const Stake stake = zones.StakeAt(continuous);
    return zones.IsNearBorder(stake.mileage, zoneMargin) ? itself : stake;
}

/// An end of a curve, somewhere within the room that a point's tangent leaves it (m, below 0 before the point).
Stake EndFor(Dice& dice, const Zones& zones, double point, double room) {
    for (;;) {
        const Stake stake = zones.StakeAt(point + room * dice.Between(0.1, 0.95));
        if (!zones.IsNearBorder(stake.mileage, zoneMargin)) return stake;
    }
}

Real PlaceOf(const Zones& zones, const Stake& stake) {
    return stake.occurrence < 0 ? Real(stake.mileage) : *zones.Continuous(stake);
}

/// Radius (m) of a curve at a point whose tangents leave it some room to each side (m); 0 for no curve.
double DrawRadius(Dice& dice, const ProfileCurve& tangents, std::size_t point, double room) {
    if (dice.OneIn(6)) return 0;
    const auto change = static_cast<double>(abs(tangents.GradeBehind(point) - tangents.GradeBehind(point - 1)));
    return Millimetres(std::min(1e6, 2 * dice.Between(0.05, 0.95) * room / std::max(change, 1e-6)));
}

}  // namespace

ProfileData DrawProfile(Dice& dice, const Zones& zones, int mode) {
    ProfileData profile;
    profile.mode = mode;
    const auto start = static_cast<double>(zones.Start());
    const auto end = static_cast<double>(zones.End());
    const double overhang = mode == 0 ? 50 : 0;  // m: points may lie beyond the road
    constexpr double apart = 5;                  // m
    std::vector<double> places = DrawAscending(dice, 2 + dice.Below(12), start - overhang, end + overhang);
    const auto near = [](double one, double next) { return next - one < apart; };
    places.erase(std::unique(places.begin(), places.end(), near), places.end());
    std::vector<GradePoint> points;
    double elevation = dice.Between(-100, 3000);
    for (const double place : places) {
        const double before = points.empty() ? place : static_cast<double>(points.back().mileage);
        elevation = Millimetres(elevation + (place - before) * dice.Between(-0.1, 0.1));
        GradeData data{StakeFor(dice, zones, Millimetres(place)), elevation, 0, {0, -1}, {0, -1}};
        points.push_back({PlaceOf(zones, data.point), elevation, 0, 0});
        profile.points.push_back(data);
    }
    const ProfileCurve tangents(points);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const auto here = static_cast<double>(points[i].mileage);
        const double before = (here - static_cast<double>(points[i - 1].mileage)) / 2;
        const double behind = (static_cast<double>(points[i + 1].mileage) - here) / 2;
        if (mode == 0) profile.points[i].radius = DrawRadius(dice, tangents, i, std::min(before, behind));
        if (mode == 1) {
            profile.points[i].start = EndFor(dice, zones, here, -before);
            profile.points[i].end = EndFor(dice, zones, here, behind);
        }
    }
    return profile;
}

ProfileCurve CurveOf(const ProfileData& profile, const Zones& zones) {
    std::vector<GradePoint> points;
    for (const GradeData& data : profile.points) {
        points.push_back({PlaceOf(zones, data.point), data.elevation, 0, 0});
    }
    const ProfileCurve tangents(points);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const GradeData& data = profile.points[i];
        if (profile.mode == 0) {
            points[i].before = points[i].after =
                abs(tangents.GradeBehind(i) - tangents.GradeBehind(i - 1)) * data.radius / 2;
        } else {
            points[i].before = points[i].mileage - PlaceOf(zones, data.start);
            points[i].after = PlaceOf(zones, data.end) - points[i].mileage;
        }
    }
    return ProfileCurve(std::move(points));
}

void WriteProfile(const SetWriter& set, const ProfileData& profile) {
    set.Begin("profile").Whole(profile.mode);
    const auto write = [](Line& line, const Stake& stake) { line.Given(stake.mileage).Whole(stake.occurrence); };
    for (const GradeData& data : profile.points) {
        Line line = set.Begin("grade");
        write(line, data.point);
        line.Given(data.elevation).Given(data.radius);
        write(line, data.start);
        write(line, data.end);
    }
}

}  // namespace reference
