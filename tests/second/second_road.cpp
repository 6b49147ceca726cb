#include "second_road.hpp"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace kesto::second {

namespace {

constexpr Real same = 1e-7L;     // m: mileages that count as one
constexpr Real atJoint = 1e-5L;  // m: a break this near to a joint is one at the joint
constexpr Real margin = 1e-6L;   // m: of two feet whose distances differ by less either may be told

Real Curvature(const Element& curve, double radius) {
    return curve.type == 1 || radius == 0 ? 0 : (curve.turnDirection == 0 ? -1 : 1) / static_cast<Real>(radius);
}

bool Holds(const Curve& piece, Real stake) {
    return stake > piece.stake - same && stake < piece.stake + piece.length - same;
}

/// A quadratic curve by its control heights, at the share t of its length.
Real Bezier(Real start, Real middle, Real end, Real t) {
    return std::lerp(std::lerp(start, middle, t), std::lerp(middle, end, t), t);
}

/// The share of a change that is done: the chance that of `degree` tries at t no more than one fails.
Real Share(std::int32_t type, Real t) {
    if (type == 0) return t;
    const Real degree = static_cast<Real>(type) + 2;
    return std::pow(t, degree) + degree * std::pow(t, degree - 1) * (1 - t);
}

/// Where on a curve the point is neither ahead nor behind, by Newton's method inside a bracket.
Real FootBetween(const Curve& curve, Plane point, Real low, Real high) {
    const bool falls = curve.Seen(point, low).real() > 0;
    Real s = (low + high) / 2;
    for (int steps = 0; steps < 80; ++steps) {
        const Plane seen = curve.Seen(point, s);
        ((seen.real() > 0) == falls ? low : high) = s;
        const Real next = s + seen.real() / (1 - curve.CurvatureAt(s) * seen.imag());
        const Real better = next > low && next < high ? next : (low + high) / 2;
        if (std::fabs(better - s) < 1e-14L) break;
        s = better;
    }
    return s;
}

std::string StakeText(Stake stake) {
    const auto mileage = static_cast<double>(std::fabs(stake.mileage));
    const int kilometres = static_cast<int>(mileage / 1000);
    const double metres = mileage - 1000.0 * kilometres;
    const char* const zeros = metres < 10 - 1e-7 ? "00" : (metres < 100 - 1e-7 ? "0" : "");
    const char* const sign = stake.occurrence > 0 ? "+" : (stake.mileage < 0 ? "-" : "");
    char text[32];
    static_cast<void>(std::snprintf(text, sizeof text, "%sK%d+%s%.3f", sign, kilometres, zeros, metres));
    return text;
}

}  // namespace

Piece::Piece(const Curve& curve) : Curve(curve) {
    for (std::size_t i = 0; i <= steps; ++i) {
        points[i] = At(Step() * static_cast<Real>(i));
        directions[i] = DirectionAt(Step() * static_cast<Real>(i));
    }
}

SecondRoad::SecondRoad(const Design& given) : design(given) {
    Curve next{0, {given.x, given.y}, given.azimuth * degree, 0, 0, 0, given.mileage, given.mileage};
    for (std::size_t i = 0; i < given.curves.size(); ++i) {
        const Element& curve = given.curves[i];
        const Real end = Curvature(curve, curve.endRadius);
        next.type = curve.type;
        next.heading += given.kinks[i] * degree;
        next.curvature = Curvature(curve, curve.startRadius);
        next.length = curve.length;
        next.change = curve.type == 3 ? (end - next.curvature) / next.length : 0;
        curves.push_back(next);
        next = next.From(next.length);
    }
    std::vector<Stake> counts;  // places where the stakes are counted anew, their continuous mileage in `places`
    std::vector<Real> places;
    Real continuous = Start();
    Real stake = Start();
    for (const BrokenChain& chain : given.breaks) {
        if (chain.backMileage < stake) continue;  // in the gap that the break before leaves
        continuous += chain.backMileage - stake;
        stake = chain.aheadMileage;
        places.push_back(continuous);
        counts.push_back({stake});
    }
    std::size_t count = 0;
    stake = Start();
    for (Curve rest : curves) {
        while (true) {
            rest.stake = stake;
            const Real along = count < places.size() ? places[count] - rest.continuous : rest.length;
            if (along > rest.length - atJoint) break;
            if (along > atJoint) {
                Curve first = rest;
                first.length = along;
                pieces.emplace_back(first);
                rest = rest.From(along);
            }
            stake = counts[count++].mileage;
        }
        pieces.emplace_back(rest);
        stake += rest.length;
    }
}

const Piece& SecondRoad::PieceAt(Real continuous) const {
    const auto after = std::ranges::upper_bound(pieces, continuous, {}, &Curve::continuous);
    return after == pieces.begin() ? *after : *std::prev(after);
}

Stake SecondRoad::StakeAt(Real continuous) const {
    const Piece& piece = PieceAt(continuous);
    const Real mileage = piece.stake + continuous - piece.continuous;
    const auto holds = [&](const Curve& earlier) { return Holds(earlier, mileage); };
    return {mileage, static_cast<std::int32_t>(std::count_if(&pieces.front(), &piece, holds))};
}

std::optional<Real> SecondRoad::ContinuousAt(Stake stake) const {
    for (const Curve& piece : pieces) {
        if (Holds(piece, stake.mileage) && stake.occurrence-- == 0)
            return piece.continuous + stake.mileage - piece.stake;
    }
    return std::nullopt;
}

Plane SecondRoad::PointAt(Real continuous, Real offset, Real angle) const {
    const Piece& piece = PieceAt(continuous);
    const Real along = continuous - piece.continuous;
    return piece.At(along) + offset * piece.DirectionAt(along) * std::polar(Real{1}, angle * degree);
}

Real SecondRoad::AzimuthAt(Real continuous) const {
    const Piece& piece = PieceAt(continuous);
    return piece.HeadingAt(continuous - piece.continuous) / degree;
}

Foot SecondRoad::FootOf(Plane point, Real lower, Real upper) const {
    Foot best{.certain = true, .offset = 1e30L};
    Real second = std::numeric_limits<Real>::infinity();
    const auto offer = [&](const Foot& foot) {
        const Real distance = std::fabs(foot.offset);
        second = std::min(second, std::max(distance, std::fabs(best.offset)));
        if (distance <= std::fabs(best.offset)) best = foot;
    };
    Real open = second;  // the nearest that a curve comes where the foot passes more than once
    for (const Piece& piece : pieces) {
        std::size_t passes = 0;
        std::size_t passed = 0;
        Real nearest = std::abs(point - piece.start);
        const auto isAhead = [&](std::size_t i) {
            return (std::conj(piece.directions[i]) * (point - piece.points[i])).real() > 0;
        };
        for (std::size_t i = 1; i <= Piece::steps; ++i) {
            nearest = std::min(nearest, std::abs(point - piece.points[i]));
            if (isAhead(i) == isAhead(i - 1)) continue;
            ++passes;
            passed = i;
        }
        if (passes > 1) open = std::min(open, nearest - piece.Step());
        Foot foot{true, true, piece.continuous, std::abs(point - piece.start), 1, false};
        // An arc's foot is the near one: ahead of its start, behind its end.
        if (passes == 1 && (piece.type == 3 || isAhead(0))) {
            const Real high = piece.Step() * static_cast<Real>(passed);
            const Real along = FootBetween(piece, point, high - piece.Step(), high);
            foot.offset = piece.Seen(point, along).imag();
            foot.continuous += along;
            foot.stretched = 1 - piece.CurvatureAt(along) * foot.offset;
            foot.spiral = piece.type == 3;
        }
        if (foot.continuous >= lower && foot.continuous <= upper) offer(foot);
    }
    const Real toLower = std::abs(point - PointAt(lower, 0));
    const Real toUpper = std::abs(point - PointAt(upper, 0));
    const bool admitted = best.admitted;
    const Real found = std::fabs(best.offset);
    const bool clear = std::fabs(found - toUpper) > margin && std::fabs(found - toLower) > margin;
    // The upper limit is asked first; only what beats it is compared with the lower one.
    if (found >= toUpper) {
        best = {true, true, upper, toUpper, 1, false};
    } else if (toLower < found) {
        best = {true, true, lower, toLower, 1, false};
    }
    best.admitted = admitted;
    best.certain = clear && second - found > margin && open - found > margin;
    return best;
}

Real SecondRoad::HeightAt(Real continuous) const {
    const std::vector<Grade>& grades = design.grades;
    if (grades.empty() || continuous <= grades.front().continuous) return grades.empty() ? 0 : grades.front().elevation;
    if (continuous >= grades.back().continuous) return grades.back().elevation;
    const auto slope = [&](std::size_t i) {
        return (static_cast<Real>(grades[i + 1].elevation) - grades[i].elevation) /
               (static_cast<Real>(grades[i + 1].continuous) - grades[i].continuous);
    };
    std::size_t i = 1;
    for (; i + 1 < grades.size(); ++i) {
        const Grade& at = grades[i];
        const Real half = at.radius * std::fabs(slope(i) - slope(i - 1)) / 2;
        const Real before = design.curveMode == 0 ? half : static_cast<Real>(at.continuous) - at.from;
        const Real after = design.curveMode == 0 ? half : static_cast<Real>(at.to) - at.continuous;
        const Real from = continuous - at.continuous;
        if (from >= after) continue;
        if (from < -before) break;
        // Two parabolas with a common tangent below or above the point, each by its own control points.
        const Real first = at.elevation - slope(i - 1) * before / 2;
        const Real last = at.elevation + slope(i) * after / 2;
        const Real middle = std::lerp(first, last, before / (before + after));
        if (from < 0) return Bezier(at.elevation - slope(i - 1) * before, first, middle, 1 + from / before);
        return Bezier(middle, last, at.elevation + slope(i) * after, from / after);
    }
    return grades[i].elevation - slope(i - 1) * (grades[i].continuous - continuous);
}

Real SecondRoad::Value(Real continuous, std::int32_t side, std::int32_t kind, std::size_t plate) const {
    const SectionPlate& own = design.plates[static_cast<std::size_t>(side)][plate];
    const Real standard = kind == 0 ? own.crossSlope : own.width;
    Real at = Start();
    Real value = standard;
    for (const Change& change : design.changes) {
        if (change.side != side || change.kind != kind) continue;
        if (continuous < change.continuous) {
            if (change.type > 2) return standard;
            return std::lerp(value, change.values[plate],
                             Share(change.type, (continuous - at) / (change.continuous - at)));
        }
        at = change.continuous;
        value = change.values[plate];
    }
    return value;
}

std::vector<SectionPlate> SecondRoad::SideAt(Real continuous, std::size_t side) const {
    std::vector<SectionPlate> plates = design.plates[side];
    Real edge = 0;
    Real height = HeightAt(continuous);
    for (std::size_t i = 0; i < plates.size(); ++i) {
        const Real width = Value(continuous, static_cast<std::int32_t>(side), 1, i);
        const Real crossSlope = Value(continuous, static_cast<std::int32_t>(side), 0, i);
        edge += width;
        height += plates[i].step + width * crossSlope / 100;
        const Plane at = PointAt(continuous, side == 0 ? -edge : edge);
        plates[i].width = static_cast<double>(width);
        plates[i].crossSlope = static_cast<double>(crossSlope);
        plates[i].offset = static_cast<double>(edge);
        plates[i].x = static_cast<double>(at.real());
        plates[i].y = static_cast<double>(at.imag());
        plates[i].height = static_cast<double>(height);
    }
    return plates;
}

std::optional<Real> SecondRoad::HeightAt(Real continuous, Real offset) const {
    for (const SectionPlate& plate : SideAt(continuous, offset < 0 ? 0 : 1)) {
        const Real inwards = plate.offset - std::fabs(offset);
        if (inwards >= 0) return plate.height - inwards * plate.crossSlope / 100;
    }
    return std::nullopt;
}

MainPoint SecondRoad::MakeStake(const Piece& piece, Real along, const std::string& label) const {
    Stake stake = StakeAt(piece.continuous + along);
    if (stake.occurrence > 3) stake.occurrence = 0;  // the names know four
    return {label.empty() ? StakeText(stake) : label, label, stake, piece.At(along)};
}

std::vector<MainPoint> SecondRoad::Stakes() const {
    static const char* const junctions[3][3] = {{"ZZ", "ZY", "ZH"}, {"YZ", "YY", "YH"}, {"HZ", "HY", "HH"}};
    std::vector<MainPoint> stakes;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& piece = pieces[i];
        stakes.push_back(MakeStake(piece, 0, i == 0 ? "QD" : junctions[pieces[i - 1].type - 1][piece.type - 1]));
        const int first = design.stakeType == 1 ? 1 : static_cast<int>(std::floor(piece.stake / design.interval)) + 1;
        const Real zero = design.stakeType == 1 ? piece.stake : 0;
        bool middleToCome = piece.type == 2;
        const auto place = [&](Real along) {
            const Real middle = piece.length / 2;
            if (middleToCome && along > middle - same) {
                stakes.push_back(MakeStake(piece, middle, "QZ"));
                middleToCome = false;
                if (along < middle + same) return;
            }
            if (along > same && along < piece.length - same) stakes.push_back(MakeStake(piece, along, ""));
        };
        for (int k = first; zero + k * design.interval < piece.stake + piece.length; ++k) {
            place(zero + k * design.interval - piece.stake);
        }
        place(piece.length);
    }
    stakes.push_back(MakeStake(pieces.back(), pieces.back().length, "ZD"));
    return stakes;
}

}  // namespace kesto::second
