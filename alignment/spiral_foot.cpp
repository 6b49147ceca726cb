#include "alignment/spiral_foot.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "core/tolerances.hpp"

namespace kesto {

namespace {

/// A larger cosine leaves no doubt: the angles that count as right ones, in single precision and 1e-7 rad around it,
/// have cosines from -1.04e-7 to 1.36e-7.
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
/// there.
double DoubtAhead(double towards) noexcept {
    constexpr double rounding = 2.2e-7;  // m: what counts as the start, what as the point, and some 1e-8
    return static_cast<double>(noRightAngle) * std::fabs(towards) + rounding;
}

/// One end of a stretch of the spiral that holds the foot.
struct Side {
    double along;  // m from the spiral's start
    double ahead;  // m: how far the point lies ahead of it
};

/// The neighbourhood of the foot between two places by Newton's method on g(s), how far the point lies ahead of the
/// place s, with g' = -(1 - curvature x distance towards the centre).
/// @param curvature the largest between the two places (1/m)
/// @return nothing where g may fall less than 0.1 a metre somewhere between them, or the iteration does not settle
std::optional<Neighbourhood> FindNeighbourhood(const ClothoidStretch& stretch, Side lower, Side upper, double curvature,
                                               Point inClothoid) noexcept {
    constexpr int mostSteps = 5;
    constexpr double settled = 2e-4;  // m: a step after which one more changes nothing that counts
    constexpr double leastSlope = 0.1;
    const double length = upper.along - lower.along;
    double along = lower.along + length * lower.ahead / (lower.ahead - upper.ahead);
    double step = 0;
    double towards = 0;
    double slopeHere = 1;
    for (int steps = 0;; ++steps) {
        if (steps == mostSteps) return std::nullopt;
        const double l = stretch.start + stretch.sense * along;
        const ClothoidLook look = LookFromClothoid(stretch.rate, l, inClothoid.x, inClothoid.y);
        slopeHere = 1 - stretch.rate * l * look.towards;
        step = stretch.sense * look.ahead / slopeHere;
        towards = look.towards;
        along += step;
        if (!(along >= lower.along && along <= upper.along)) return std::nullopt;
        if (std::fabs(step) < settled) break;
    }
    // The distance towards the centre, h, changes by -curvature x g: that bounds h, and so the slope, everywhere.
    const double k = curvature;
    const double bend = k * length * length / 2;
    const double farthest = (std::fabs(towards) + settled + bend) / (1 - k * bend);
    const double steepest = 1 + k * farthest;
    const double slope = 1 - k * std::max(0.0, towards + settled + bend * steepest);
    if (!(slope > leastSlope)) return std::nullopt;
    const double curving = stretch.rate * farthest + k * k * steepest * length;  // of g, at most
    const double before = std::fabs(step) * steepest / slope;                    // m: error before the last step
    const double unsettled = curving / (2 * slope) * before * before;
    const double doubt = DoubtAhead(towards);
    const double slopeNear = std::max(slope, slopeHere - curving * (doubt / slope + settled));
    // The stretch that counts as the start is that long whatever the slope: on tight spirals the slope exceeds 2.
    return Neighbourhood{along, doubt / slopeNear + unsettled + tolerance::distance};
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

inline constexpr int mostHalvings = 100;

/// The bracket of a bisection (m from the spiral's start).
struct Bracket {
    std::array<double, 2> ends;  // lower, upper
    int halvings = 0;

    double Middle() const noexcept { return (ends[0] + ends[1]) * 0.5; }
    /// Goes on in the half behind the middle or before it.
    void Halve(double middle, bool behind) noexcept { ends[behind ? 0 : 1] = middle, ++halvings; }
};

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

/// Whom a bisection looks for.
struct Target {
    Point point;
    bool startsAhead;  // the start has it ahead and the end behind, or the other way round
};

/// One step of the bisection as it is written. @return the foot where the middle is it; else the bracket is halved
std::optional<Foot> EvaluateAndHalve(const SpiralSight& spiral, Bracket& bracket, double along,
                                     const Target& target) noexcept {
    const Middle middle = EvaluateMiddle(spiral, along, target.point);
    const double excess = AngleExcess(middle.look.cosine);
    if (IsAtPoint(middle.look) || IsSquare(excess) || bracket.halvings + 1 == mostHalvings) {
        return FootAt(along, middle.place, middle.heading, target.point);
    }
    bracket.Halve(along, (excess < 0) == target.startsAhead);
    return std::nullopt;
}

/// Goes on with a bisection, evaluated as written only near the foot.
Foot HalveTowards(const SpiralSight& spiral, double lower, double upper, int halvings, const Neighbourhood& near,
                  const Target& target) noexcept {
    Bracket bracket{{lower, upper}, halvings};
    double along = HalveFarFromFoot(bracket, near);
    for (;;) {
        if (!IsNear(near, along) && bracket.halvings + 1 < mostHalvings) {
            bracket.Halve(along, along < near.along);
        } else if (const auto foot = EvaluateAndHalve(spiral, bracket, along, target)) {
            return *foot;
        }
        along = bracket.Middle();
    }
}

/// The bisection, evaluated as written only where a look by short series leaves a doubt, and towards the foot once the
/// bracket is so short that its neighbourhood may be known.
Foot HalveByLooks(const SpiralSight& spiral, double length, Point inClothoid, const Target& target) noexcept {
    constexpr int firstHalvings = 3;
    const ClothoidStretch& stretch = spiral.clothoid.stretch;
    Side lower{0, 0};
    Side upper{length, 0};
    for (Bracket bracket{{0, length}};;) {
        if (bracket.halvings == firstHalvings && lower.ahead > 0 && upper.ahead < 0) {
            const double farther = std::max(stretch.sense * lower.along, stretch.sense * upper.along);
            const double curvature = stretch.rate * (stretch.start + farther);
            if (const auto near = FindNeighbourhood(stretch, lower, upper, curvature, inClothoid)) {
                return HalveTowards(spiral, lower.along, upper.along, bracket.halvings, *near, target);
            }
        }
        const double along = bracket.Middle();
        const double l = stretch.start + stretch.sense * along;
        const ClothoidLook look = LookFromClothoid(stretch.rate, l, inClothoid.x, inClothoid.y);
        const double ahead = stretch.sense * look.ahead;
        if (std::fabs(ahead) >= DoubtAhead(look.towards) && bracket.halvings + 1 < mostHalvings) {
            bracket.Halve(along, (ahead > 0) == target.startsAhead);
        } else if (const auto foot = EvaluateAndHalve(spiral, bracket, along, target)) {
            return *foot;
        }
        (bracket.ends[0] == along ? lower : upper) = {along, ahead};
    }
}

/// The bisection as it is written.
Foot HalveAsWritten(const SpiralSight& spiral, double length, const Target& target) noexcept {
    for (Bracket bracket{{0, length}};;) {
        if (const auto foot = EvaluateAndHalve(spiral, bracket, bracket.Middle(), target)) return *foot;
    }
}

/// Whether the short series suffice: moderate turns, and a moderate size.
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
    if (!IsGentle(spiral, length, point)) return HalveAsWritten(spiral, length, target);
    const Point inClothoid = InClothoid(spiral, point);
    if (target.startsAhead) {
        const Side lower{0, looks.start.ahead};
        const Side upper{length, looks.end.ahead};
        if (const auto near = FindNeighbourhood(spiral.clothoid.stretch, lower, upper, spiral.curvature, inClothoid)) {
            return HalveTowards(spiral, 0, length, 0, *near, target);
        }
    }
    return HalveByLooks(spiral, length, inClothoid, target);
}

}  // namespace kesto
