#include "alignment/coordinate_method.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "alignment/element_generation.hpp"
#include "alignment/generated_elements.hpp"
#include "core/tolerances.hpp"
#include "geometry/angles.hpp"

namespace kesto {

namespace {

inline constexpr std::int32_t fewestPoints = 2;
inline constexpr double searchTurn = 0.05;  // rad: how much more a spiral turns from one tried length to the next
inline constexpr int mostTriedLengths = 4000;
inline constexpr int mostHalvings = 200;
inline constexpr int mostSections = 80;
inline constexpr double shortestStep = 1e-10;  // of the chord: shorter steps find nothing new

Point PointOf(const Coordinate& coordinate) noexcept { return {coordinate.x, coordinate.y}; }

Element ElementOf(const Piece& piece) noexcept {
    Element element{};
    element.type = static_cast<std::int32_t>(piece.type);
    element.turnDirection = piece.turnsRight ? 1 : 0;
    element.startRadius = piece.startRadius;
    element.endRadius = piece.endRadius;
    element.length = piece.length;
    return element;
}

/// How much longer than wanted the chord of a spiral of some length is (m); nothing where it cannot be evaluated.
std::optional<double> ChordExcess(Piece spiral, double length, double chord) noexcept {
    spiral.length = length;
    const std::optional<LocalPoint> end = EvaluateLocal(ElementOf(spiral), length);
    if (!end) return std::nullopt;
    return std::hypot(end->u, end->v) - chord;
}

/// Halves the bracket of a length until the chord is met.
std::optional<double> NarrowLength(const Piece& spiral, double chord, double lower, double upper) noexcept {
    for (int i = 0; i < mostHalvings; ++i) {
        const double middle = lower + (upper - lower) / 2;
        if (!(lower < middle && middle < upper)) break;
        const std::optional<double> excess = ChordExcess(spiral, middle, chord);
        if (!excess) return std::nullopt;
        (*excess < 0 ? lower : upper) = middle;
    }
    const std::optional<double> excess = ChordExcess(spiral, upper, chord);
    if (!excess || !(std::fabs(*excess) <= tolerance::meetsPoint)) return std::nullopt;
    return upper;
}

/// The place between two lengths where the chord is longest, by golden section.
double LongestChord(const Piece& spiral, double chord, double lower, double upper) noexcept {
    const double share = (std::sqrt(5.0) - 1) / 2;
    for (int i = 0; i < mostSections; ++i) {
        const double left = upper - share * (upper - lower);
        const double right = lower + share * (upper - lower);
        const std::optional<double> atLeft = ChordExcess(spiral, left, chord);
        const std::optional<double> atRight = ChordExcess(spiral, right, chord);
        if (!atLeft || !atRight) break;
        (*atLeft < *atRight ? lower : upper) = *atLeft < *atRight ? left : right;
    }
    return lower + (upper - lower) / 2;
}

/// A length (m) that a spiral of these radii needs at least to span a chord; infinite where no length is enough.
double LeastLength(const Piece& spiral, double chord) noexcept {
    const bool fromLine = IsInfiniteRadius(spiral.startRadius);
    const bool toLine = IsInfiniteRadius(spiral.endRadius);
    const double larger = std::max(spiral.startRadius, spiral.endRadius);
    if (fromLine && toLine) return chord;
    // The circles of curvature of a spiral lie one inside the other (Kneser), so both ends lie in the larger one.
    if (!fromLine && !toLine) {
        return chord - 2 * larger > tolerance::meetsPoint ? std::numeric_limits<double>::infinity() : chord;
    }
    // From the point of no curvature the chord is A sqrt(pi) |C + iS|, and Fresnel's integrals stay below 1 together.
    return chord * chord / (std::numbers::pi * larger);
}

/// Whether the chord may be reached at a maximum between three tried lengths evenly apart: it rises above the middle
/// one by less than from or to its neighbours, as the curve turns so little between them.
bool MayReach(double before, double middle, double after) noexcept {
    return middle + std::max(middle - before, middle - after) >= -tolerance::meetsPoint;
}

/// The shortest length at which a spiral's chord has a given length: longer lengths are tried from the chord on, as no
/// curve is shorter than its chord, until the chord is passed. Where the chord goes through a maximum between two tried
/// lengths, that one is tried too; where a spiral winds too often to be evaluated, shorter steps are taken.
std::optional<double> SpiralLength(const Piece& spiral, double chord) noexcept {
    const auto curvature = [](double radius) { return IsInfiniteRadius(radius) ? 0 : 1 / radius; };
    const double turnPerMetre = (curvature(spiral.startRadius) + curvature(spiral.endRadius)) / 2;
    double step = std::min(searchTurn / turnPerMetre, chord);
    const double least = LeastLength(spiral, chord);
    if (!std::isfinite(least)) return std::nullopt;
    double lower = chord;
    double atLower = lower < least ? -chord : ChordExcess(spiral, lower, chord).value_or(-chord);
    double before = lower;
    double atBefore = -std::numeric_limits<double>::infinity();
    bool even = true;  // whether the next tried length is as far away as the one before
    for (int i = 0; i < mostTriedLengths && step > chord * shortestStep; ++i) {
        const double upper = lower + step;
        if (upper < least) {
            lower = upper;
            continue;
        }
        const std::optional<double> atUpper = ChordExcess(spiral, upper, chord);
        if (!atUpper) {
            step /= 2;
            even = false;
            continue;
        }
        if (*atUpper >= 0) return NarrowLength(spiral, chord, lower, upper);
        if (atLower > atBefore && atLower > *atUpper && (!even || MayReach(atBefore, atLower, *atUpper))) {
            const double longest = LongestChord(spiral, chord, before, upper);
            if (ChordExcess(spiral, longest, chord).value_or(-chord) >= -tolerance::meetsPoint) {
                return NarrowLength(spiral, chord, before, longest);
            }
        }
        before = lower;
        atBefore = atLower;
        lower = upper;
        atLower = *atUpper;
        even = true;
    }
    return std::nullopt;
}

bool IsRadius(double radius) noexcept { return radius >= 0 && std::isfinite(radius); }

/// The piece that joins two points, by the type of the first one. Only the radii that it uses are looked at.
/// @return fails with the distance, for an arc with the diameter that it exceeds; the caller knows the record
Result<Piece> Join(const Coordinate& from, const Coordinate& to, double chord) noexcept {
    const Failure refused = FailValue(KESTO_POINT_NOT_JOINED, chord);
    Piece piece{.type = static_cast<ElementType>(from.type), .turnsRight = from.turnDirection != 0};
    switch (piece.type) {
        case ElementType::Straight: return Piece{.length = chord};
        case ElementType::Arc: {
            if (!IsRadius(from.radius) || IsInfiniteRadius(from.radius)) return refused;
            // A half circle may come out longer than its diameter by the rounding of its points.
            if (chord - 2 * from.radius > tolerance::meetsPoint) {
                return FailLimit(KESTO_POINT_NOT_JOINED, KESTO_LIMIT_ARC_DIAMETER, chord, 2 * from.radius);
            }
            piece.startRadius = piece.endRadius = from.radius;
            piece.length = 2 * from.radius * std::asin(std::min(chord / (2 * from.radius), 1.0));
            return piece;
        }
        case ElementType::Spiral: {
            if (!IsRadius(from.radius) || !IsRadius(to.radius)) return refused;
            piece.startRadius = from.radius;
            piece.endRadius = to.radius;
            const std::optional<double> length = SpiralLength(piece, chord);
            if (!length) return refused;
            piece.length = *length;
            return piece;
        }
        case ElementType::Start: break;
    }
    return refused;
}

/// Azimuth at a piece's start that makes its chord run in a direction (degrees).
double StartAzimuth(const Piece& piece, double chordAzimuth) noexcept {
    const std::optional<LocalPoint> end = EvaluateLocal(ElementOf(piece), piece.length);
    const double chordAngle = end ? ToDegrees(std::atan2(end->v, end->u)) : 0;
    return NormalisedAzimuth(piece.turnsRight ? chordAzimuth - chordAngle : chordAzimuth + chordAngle);
}

/// What joins a point to the next one, and the azimuth that it begins with.
struct Joint {
    Piece piece;
    double azimuth;  // degrees
};

Result<Joint> JointAt(const RoadDesign& road, std::int32_t index) noexcept {
    const Coordinate& from = road.coordinates[index];
    const Coordinate& to = road.coordinates[index + 1];
    const double chord = Distance(PointOf(from), PointOf(to));
    if (!(chord > tolerance::samePoint) || !std::isfinite(chord)) return FailValue(KESTO_POINT_NOT_JOINED, chord);
    const bool brokenLine = static_cast<DesignMode>(road.settings.roadDesignMode) == DesignMode::BrokenLine;
    const Result<Piece> piece = brokenLine ? Piece{.length = chord} : Join(from, to, chord);
    if (!piece) return piece.failure();
    return Joint{*piece, StartAzimuth(*piece, AzimuthBetween(PointOf(from), PointOf(to)))};
}

}  // namespace

Outcome GenerateFromCoordinates(const RoadDesign& road, CountedList<Element>& elements) {
    const std::int32_t count = road.coordinates.Count();
    if (count < fewestPoints) {
        Failure failure = FailLimit(KESTO_TOO_FEW_ELEMENTS, KESTO_LIMIT_RECORD_COUNT, count, fewestPoints);
        failure.list = KESTO_LIST_COORDINATES;
        return failure;
    }
    ElementWriter writer(road.settings.startMileage);
    for (std::int32_t i = 0; i + 1 < count; ++i) {
        const Result<Joint> joint = JointAt(road, i);
        if (!joint) {
            Failure failure = joint.failure();
            failure.list = KESTO_LIST_COORDINATES;
            failure.record = i;
            return failure;
        }
        const Point start = PointOf(road.coordinates[i]);
        if (i == 0) writer.Start(start, joint->azimuth);
        writer.Add(joint->piece, start, joint->azimuth);
    }
    elements.Swap(writer.Elements());
    return {};
}

}  // namespace kesto
