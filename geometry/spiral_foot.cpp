#include "geometry/spiral_foot.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "core/tolerances.hpp"

namespace kesto {

namespace {

/// A larger cosine leaves no doubt: the angles that count as right ones, in single precision and 1e-7 rad around it,
/// have cosines from -1.04e-7 to 1.36e-7. The rest is needed: see DoubtAhead().
inline constexpr float noRightAngle = 1.4e-7F;

/// The angle between the tangent and the vector to the point, less a right angle (rad) - or, where the cosine is far
/// enough from 0 to leave no doubt, just a number of its sign that is not small.
double AngleExcess(float cosine) noexcept {
    if (cosine > noRightAngle) return -1;
    if (cosine < -noRightAngle) return 1;
    return static_cast<double>(ArcCosine(cosine)) - rightAngle;
}

bool IsAtPoint(const Look& look) noexcept { return look.distance < tolerance::footDistance; }

bool IsSquare(double excess) noexcept { return std::fabs(excess) < tolerance::rightAngle; }

/// A stretch of the spiral around its foot: before it the point certainly lies ahead of the tangent's normal, behind
/// it certainly behind, too far from it for a right angle.
struct Neighbourhood {
    double along;      // m from the spiral's start
    double halfWidth;  // m
};

/// The point in the clothoid's own frame, seen from a place at distance l from its origin.
struct ClothoidLook {
    double ahead;    // m: along the tangent of growing l
    double towards;  // m: towards the centre of curvature
};

inline constexpr std::size_t shortTerms = 6;  // of the series, for tangent angles up to 0.7 rad: 3e-11

/// Coefficients of the sine and cosine series.
struct TurnSeries {
    std::array<double, shortTerms> cosine{};  // (-1)^n / (2n)!
    std::array<double, shortTerms> sine{};    // (-1)^n / (2n + 1)!
};

constexpr TurnSeries MakeTurnSeries() {
    TurnSeries table;
    double factor = 1;
    for (std::size_t n = 0; n < shortTerms; ++n) {
        const auto order = static_cast<double>(n);
        table.cosine[n] = factor;
        table.sine[n] = factor / (2 * order + 1);
        factor /= -(2 * order + 1) * (2 * order + 2);
    }
    return table;
}

constexpr TurnSeries turnSeries = MakeTurnSeries();

/// The clothoid's point and tangent at distance l, both as short series: the point's are the tangent's, integrated.
ClothoidLook LookFromClothoid(double rate, double l, double x, double y) noexcept {
    const double angle = rate * l * l / 2;
    const double square = angle * angle;
    double alongX = 0;
    double alongY = 0;
    double cosine = 0;
    double sine = 0;
    for (std::size_t n = shortTerms; n-- > 0;) {
        const auto order = static_cast<double>(n);
        alongX = alongX * square + turnSeries.cosine[n] / (4 * order + 1);
        alongY = alongY * square + turnSeries.sine[n] / (4 * order + 3);
        cosine = cosine * square + turnSeries.cosine[n];
        sine = sine * square + turnSeries.sine[n];
    }
    const double dx = x - l * alongX;
    const double dy = y - l * angle * alongY;
    return {dx * cosine + dy * angle * sine, dy * cosine - dx * angle * sine};
}

/// The point in the clothoid's own frame.
Point InClothoid(const SpiralSight& spiral, Point point) noexcept {
    const Heading& heading = spiral.start.heading;
    const Heading& tangent = spiral.clothoid.tangent;
    const double dx = point.x - spiral.start.x;
    const double dy = point.y - spiral.start.y;
    const double u = spiral.clothoid.stretch.sense * (dx * heading.cosine + dy * heading.sine);
    const double right = dy * heading.cosine - dx * heading.sine;
    const double v = spiral.start.left ? -right : right;
    return {spiral.clothoid.fromX + u * tangent.cosine - v * tangent.sine,
            spiral.clothoid.fromY + u * tangent.sine + v * tangent.cosine};
}

/// How far ahead of a place or behind it (m) the point must lie to leave no doubt about it when the bisection gets
/// there. What noRightAngle exceeds the cosines of right angles by carries what grows with the distance: the error of
/// the short series, 3e-11, and azimuths that count as north, 1.75e-9 rad.
double DoubtAhead(double towards) noexcept {
    constexpr double rounding = 2.2e-7;  // m: what counts as the start, what as the point, and some 1e-8
    return static_cast<double>(noRightAngle) * std::fabs(towards) + rounding;
}

/// One end of a stretch of the spiral that holds the foot.
struct Side {
    double along;  // m from the spiral's start
    double ahead;  // m: how far the point lies ahead of it
};

/// How g, the distance that the point lies ahead of a place (m), falls along a stretch, metre by metre.
struct Fall {
    double least;
    double most;
    double curving;  // 1/m: how fast it changes, at most
};

/// The slope of g is -(1 - curvature x h), h being how far the point lies towards the centre, and h changes by
/// -curvature x g: from h at the foot follow bounds of h, and so of the slope, on all of the stretch.
/// @param curvature largest of the stretch (1/m); times its length (m) less than 1
/// @param towards   h (m), not farther from the foot than `beside` (m)
Fall BoundFall(double rate, double curvature, double length, double towards, double beside) noexcept {
    const double bend = curvature * length * length / 2;
    const double farthest = (std::fabs(towards) + beside + bend) / (1 - curvature * bend);
    const double most = 1 + curvature * farthest;
    const double least = 1 - curvature * std::max(0.0, towards + beside + bend * most);
    return {least, most, rate * farthest + curvature * curvature * most * length};
}

/// The neighbourhood of the foot between two places, of which the first has the point ahead and the second behind, by
/// Newton's method on g.
/// @param curvature the largest between the two places (1/m); times their distance less than 1
/// @return nothing where g may fall less than 0.1 a metre somewhere between them, or the iteration does not settle
std::optional<Neighbourhood> FindNeighbourhood(const ClothoidStretch& stretch, Side lower, Side upper, double curvature,
                                               Point inClothoid) noexcept {
    constexpr int mostSteps = 5;
    constexpr double settled = 2e-4;  // m: a step after which one more changes nothing that counts
    constexpr double leastFall = 0.1;
    const double length = upper.along - lower.along;
    double along = lower.along + length * lower.ahead / (lower.ahead - upper.ahead);
    double step = 0;
    double towards = 0;
    double fallHere = 1;
    for (int steps = 0;; ++steps) {
        if (steps == mostSteps) return std::nullopt;
        const double l = stretch.start + stretch.sense * along;
        const ClothoidLook look = LookFromClothoid(stretch.rate, l, inClothoid.x, inClothoid.y);
        fallHere = 1 - stretch.rate * l * look.towards;
        step = stretch.sense * look.ahead / fallHere;
        towards = look.towards;
        along += step;
        if (!(along >= lower.along && along <= upper.along)) return std::nullopt;
        if (std::fabs(step) < settled) break;
    }
    const Fall fall = BoundFall(stretch.rate, curvature, length, towards, settled);
    if (!(fall.least > leastFall)) return std::nullopt;
    const double before = std::fabs(step) * fall.most / fall.least;  // m: error before the last step
    const double unsettled = fall.curving / (2 * fall.least) * before * before;
    const double doubt = DoubtAhead(towards);
    const double reach = doubt / fall.least + settled + unsettled;
    const double fallNear = std::max(fall.least, fallHere - fall.curving * reach);
    // The stretch that counts as the start is that long however far g falls on it: on tight spirals by more than that.
    return Neighbourhood{along, doubt / fallNear + unsettled + tolerance::distance};
}

/// A place of the spiral as the bisection evaluates it.
struct Middle {
    Point place;
    Heading heading;
    Look look;
};

Middle EvaluateMiddle(const SpiralSight& spiral, double along, Point point) noexcept {
    Middle middle;
    Position at{spiral.start.x, spiral.start.y, spiral.start.azimuth};
    if (!(std::fabs(along) < tolerance::distance)) at = PlaceOn(spiral.start, SeriesPoint(spiral.clothoid, along));
    middle.place = {at.x, at.y};
    middle.heading = HeadingOf(at.azimuth);
    middle.look = LookFrom(middle.place, middle.heading, LengthOf(middle.heading), point);
    return middle;
}

/// The bracket of a bisection (m from the spiral's start).
struct Bracket {
    std::array<double, 2> ends;  // lower, upper
    int halvings = 0;

    double Middle() const noexcept { return (ends[0] + ends[1]) * 0.5; }
    /// Goes on in the half behind the middle or before it.
    void Halve(double middle, bool behind) noexcept { ends[behind ? 0 : 1] = middle, ++halvings; }
};

/// Whether a place lies in the neighbourhood. What is no number does too, so that the bisection goes on evaluating.
bool IsNear(const Neighbourhood& near, double along) noexcept {
    return !(std::fabs(along - near.along) > near.halfWidth);
}

/// Halves as long as the middle is far from the foot. Which half holds the foot need not be found by comparing with
/// each middle: the binary digits of its share of the length tell it beforehand, and no processor has to wait or guess.
/// @return the middle that comes near it
double HalveFarFromFoot(Bracket& bracket, const Neighbourhood& near) noexcept {
    constexpr int digits = 62;
    constexpr double lessThanWhole = 1 - std::numeric_limits<double>::epsilon();
    double middle = bracket.Middle();
    if (IsNear(near, middle)) return middle;
    auto share = static_cast<std::uint64_t>(
        std::min((near.along - bracket.ends[0]) / (bracket.ends[1] - bracket.ends[0]), lessThanWhole) * 0x1p62);
    while (!IsNear(near, middle) && bracket.halvings < digits) {
        const auto behind = static_cast<std::size_t>(share >> (digits - 1)) & 1U;
        share <<= 1U;
        bracket.ends[1 - behind] = middle;
        middle = (middle + bracket.ends[behind]) * 0.5;
        ++bracket.halvings;
    }
    return middle;
}

/// The point whose foot a bisection looks for.
struct Target {
    Point point;
    bool startsAhead;  // the start has it ahead and the end behind, or the other way round
};

/// One step of the plain bisection: the element is evaluated in the middle of the bracket.
/// @return the foot where the middle is it; nothing otherwise, and the bracket is halved
std::optional<Foot> EvaluateAndHalve(const SpiralSight& spiral, Bracket& bracket, double along,
                                     const Target& target) noexcept {
    const Middle middle = EvaluateMiddle(spiral, along, target.point);
    const double excess = AngleExcess(middle.look.cosine);
    if (IsAtPoint(middle.look) || IsSquare(excess) || bracket.halvings + 1 == mostFootHalvings) {
        return FootAt(along, middle.place, middle.heading, target.point);
    }
    bracket.Halve(along, (excess < 0) == target.startsAhead);
    return std::nullopt;
}

/// Goes on with a bisection whose lower end has the point ahead. Middles are evaluated only near the foot.
Foot HalveTowards(const SpiralSight& spiral, Bracket bracket, const Neighbourhood& near,
                  const Target& target) noexcept {
    double along = HalveFarFromFoot(bracket, near);
    for (;;) {
        if (!IsNear(near, along) && bracket.halvings + 1 < mostFootHalvings) {
            bracket.Halve(along, along < near.along);
        } else if (const auto foot = EvaluateAndHalve(spiral, bracket, along, target)) {
            return *foot;
        }
        along = bracket.Middle();
    }
}

/// The bisection by short series: a middle is evaluated only where the series leaves a doubt. Once the bracket is so
/// short that the neighbourhood of the foot can be told, it is halved towards that.
Foot HalveByLooks(const SpiralSight& spiral, Side lower, Side upper, Point inClothoid, const Target& target) noexcept {
    constexpr int firstHalvings = 3;
    const ClothoidStretch& stretch = spiral.clothoid.stretch;
    for (Bracket bracket{{lower.along, upper.along}};;) {
        if (bracket.halvings == firstHalvings && lower.ahead > 0 && upper.ahead < 0) {
            const double farther = std::max(stretch.sense * lower.along, stretch.sense * upper.along);
            const double curvature = stretch.rate * (stretch.start + farther);
            if (const auto near = FindNeighbourhood(stretch, lower, upper, curvature, inClothoid)) {
                return HalveTowards(spiral, bracket, *near, target);
            }
        }
        const double along = bracket.Middle();
        const double l = stretch.start + stretch.sense * along;
        const ClothoidLook look = LookFromClothoid(stretch.rate, l, inClothoid.x, inClothoid.y);
        const double ahead = stretch.sense * look.ahead;
        const bool isStart = along < tolerance::distance;  // it is evaluated there, however far g falls until here
        if (!isStart && std::fabs(ahead) >= DoubtAhead(look.towards) && bracket.halvings + 1 < mostFootHalvings) {
            bracket.Halve(along, (ahead > 0) == target.startsAhead);
        } else if (const auto foot = EvaluateAndHalve(spiral, bracket, along, target)) {
            return *foot;
        }
        Side& moved = bracket.ends[0] == along ? lower : upper;
        moved = {along, ahead};
    }
}

/// The plain bisection: it evaluates every middle and defines the foot.
Foot HalvePlainly(const SpiralSight& spiral, double length, const Target& target) noexcept {
    for (Bracket bracket{{0, length}};;) {
        if (const auto foot = EvaluateAndHalve(spiral, bracket, bracket.Middle(), target)) return *foot;
    }
}

/// Whether the short series suffice: moderate turns, and a size at which their error is no matter (see DoubtAhead()).
bool IsGentle(const SpiralSight& spiral, double length, Point point) noexcept {
    constexpr double mostAngle = 0.7;     // rad, from the clothoid's origin
    constexpr double mostTurn = 1.0;      // rad, with the larger curvature
    constexpr double mostDistance = 1e4;  // m
    return length > 0 && spiral.clothoid.stretch.farAngle <= mostAngle && spiral.curvature * length < mostTurn &&
           std::fabs(spiral.clothoid.stretch.start) < mostDistance && length < mostDistance &&
           std::fabs(point.x - spiral.start.x) < mostDistance && std::fabs(point.y - spiral.start.y) < mostDistance;
}

}  // namespace

EndLooks LookFromEnds(const SpiralSight& spiral, Point point) noexcept {
    return {LookFrom({spiral.start.x, spiral.start.y}, spiral.start.heading, spiral.startHeadingLength, point),
            LookFrom({spiral.endX, spiral.endY}, spiral.endHeading, spiral.endHeadingLength, point)};
}

std::optional<Foot> FootOnSpiral(const Element& element, const SpiralSight& spiral, const EndLooks& looks,
                                 Point point) noexcept {
    const Point start{spiral.start.x, spiral.start.y};
    const Point end{spiral.endX, spiral.endY};
    const double startExcess = AngleExcess(looks.start.cosine);
    const double endExcess = AngleExcess(looks.end.cosine);
    if (IsAtPoint(looks.start)) return FootAt(0, start, spiral.start.heading, point);
    if (!IsAtPoint(looks.end) && endExcess * startExcess > 0) return std::nullopt;
    if (IsSquare(startExcess)) return FootAt(0, start, spiral.start.heading, point);
    if (IsAtPoint(looks.end) || IsSquare(endExcess)) return FootAt(element.length, end, spiral.endHeading, point);
    if (!spiral.hasSeries) return ProjectOnSpiral(element, point);
    const double length = element.length;
    const Target target{point, startExcess < 0};
    if (!IsGentle(spiral, length, point)) return HalvePlainly(spiral, length, target);
    const Point inClothoid = InClothoid(spiral, point);
    const Side lower{0, looks.start.ahead};
    const Side upper{length, looks.end.ahead};
    if (target.startsAhead) {
        if (const auto near = FindNeighbourhood(spiral.clothoid.stretch, lower, upper, spiral.curvature, inClothoid)) {
            return HalveTowards(spiral, {{0, length}}, *near, target);
        }
    }
    return HalveByLooks(spiral, lower, upper, inClothoid, target);
}

}  // namespace kesto
