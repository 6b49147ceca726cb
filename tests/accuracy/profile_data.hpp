/// Profiles of the set: grade-change points as the library is given them, and the curve that they mean.
#pragma once

#include <vector>

#include "dice.hpp"
#include "profile_curve.hpp"
#include "set_writer.hpp"
#include "zones.hpp"

namespace reference {

/// A grade-change point as the set writes it. An occurrence of -1: the mileage is a continuous one, or an end not set.
struct GradeData {
    Stake point;
    double elevation, radius;  // m
    Stake start, end;          // of the curve, where both are given
};

struct ProfileData {
    int mode = 0;  // 0 curves by radius, 1 by their ends
    std::vector<GradeData> points;
};

/// Draws a profile along a road: of curves by radius, or by their ends.
ProfileData DrawProfile(Dice& dice, const Zones& zones, int mode);

ProfileCurve CurveOf(const ProfileData& profile, const Zones& zones);

void WriteProfile(const SetWriter& set, const ProfileData& profile);

}  // namespace reference
