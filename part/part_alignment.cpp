#include "part/part_alignment.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/element_generation.hpp"
#include "core/status.hpp"
#include "core/tolerances.hpp"
#include "geometry/element_cut.hpp"
#include "geometry/element_geometry.hpp"
#include "io/number_text.hpp"

namespace kesto {

namespace {

inline constexpr double unwritableRadius = 1e9;   // m: a column of the project file holds radii below this
inline constexpr double flatPieceRadius = 0.5e9;  // m: where a spiral that begins or ends flatter than that is cut
inline constexpr double shortestPiece = 1e-3;     // m: a shorter piece at the flat end would be lost in the decimals
inline constexpr double arcBeside = 1e-8;         // m: how far an arc may end beside the spiral that it replaces

/// An element of the part, and the continuous mileage (m) of its start in the whole road.
struct PartPiece {
    Element element;
    double whole;
};

double EndInWhole(const PartPiece& piece) noexcept { return piece.whole + std::fabs(piece.element.length); }

// The breaks

/// Jump of the stake mileage behind a piece (m).
double JumpBehind(std::span<const PartPiece> pieces, std::size_t i) noexcept {
    if (i + 1 == pieces.size()) return 0;
    const double jump = pieces[i + 1].element.startMileage - EndMileage(pieces[i].element);
    return std::fabs(jump) > tolerance::jump ? jump : 0;
}

/// Whether a break would already act behind a piece, or the start record, before the one that it is meant for.
bool ActsBefore(std::span<const PartPiece> pieces, std::size_t meant, double back) noexcept {
    for (std::size_t i = meant; i-- > 0;) {
        if (JumpBehind(pieces, i) != 0) return false;
        if (HoldsBreak(pieces[i].element, back)) return true;
    }
    return std::fabs(pieces.front().element.startMileage - back) < tolerance::mileage;
}

/// A jump of the stake mileage (m) that no list of broken chains gives.
Failure NoBreakFor(double mileage) noexcept {
    Failure failure = FailValue(KESTO_NOTHING_TO_SAVE, mileage);
    failure.list = KESTO_LIST_BROKEN_CHAINS;
    return failure;
}

/// Adds a broken chain for every jump. A rebuild takes them in the order of their back mileages, each at the first
/// element that holds it. Where the end of a piece would come out of order, a place right behind its start does: a
/// break there acts behind the whole piece. Not every order can be had: RequirePieces() tells.
Outcome AddBreaks(std::span<const PartPiece> pieces, RoadDesign& part) {
    double next = std::numeric_limits<double>::infinity();
    for (std::size_t i = pieces.size(); i-- > 0;) {
        const double jump = JumpBehind(pieces, i);
        if (jump == 0) continue;
        const Element& element = pieces[i].element;
        double back = EndMileage(element);
        if (!(next - back > tolerance::duplicateMileage) || ActsBefore(pieces, i, back)) {
            back = element.startMileage + tolerance::splitAtStart / 2;
        }
        if (!InsertBrokenChain(part, {back, back + jump})) return NoBreakFor(EndMileage(element));
        next = back;
    }
    return {};
}

/// Fails unless a rebuild gave the pieces as they were: every broken chain acts where it is meant to.
Outcome RequirePieces(std::span<const PartPiece> pieces, const RoadDesign& part) {
    const std::span<const Element> built = part.elements.Records().subspan(1);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Element& meant = pieces[i].element;
        const bool same = std::fabs(built[i].startMileage - meant.startMileage) < tolerance::mileage &&
                          std::fabs(built[i].length - meant.length) < tolerance::mileage;
        if (!same) return NoBreakFor(meant.startMileage);
    }
    return {};
}

// The assembly

/// A road of its own from pieces that lie behind each other.
/// @param end continuous mileage of their end in the whole road (m)
Result<FramedPart> Assemble(const RoadDesign& whole, std::span<const PartPiece> pieces, double end) {
    auto part = std::make_unique<RoadDesign>();
    RoadDesign& road = *part;
    const Element& first = pieces.front().element;
    road.settings = whole.settings;
    road.settings.roadDesignMode = static_cast<std::int32_t>(DesignMode::Elements);
    road.settings.startMileage = first.startMileage;
    SetStart(road, first.startX, first.startY, first.startAzimuth);
    for (const PartPiece& piece : pieces) road.elements.Insert(piece.element);
    if (Outcome added = AddBreaks(pieces, road); !added) return added.failure();
    if (Outcome built = BuildChain(road); !built) return built.failure();
    if (Outcome same = RequirePieces(pieces, road); !same) return same.failure();
    PartFrame frame;
    double running = road.settings.startMileage;
    for (const PartPiece& piece : pieces) {
        frame.AddPlace(piece.whole, running);
        running += std::fabs(piece.element.length);
    }
    frame.AddPlace(end, road.settings.startMileage + road.totalLength);
    return FramedPart{std::move(part), std::move(frame)};
}

/// The elements of a road between two continuous mileages, the first and the last one cut there.
Result<std::vector<PartPiece>> PiecesBetween(const RoadDesign& whole, double from, double to) {
    const Failure nothing = FailLimit(KESTO_NOTHING_TO_SAVE, KESTO_LIMIT_NONE, to, from);
    if (!(to - from > tolerance::mileage)) return nothing;
    std::vector<PartPiece> pieces;
    double running = whole.settings.startMileage;
    for (std::int32_t i = 1; i < whole.elements.Count(); ++i) {
        running += std::fabs(whole.elements[i - 1].length);
        const double length = std::fabs(whole.elements[i].length);
        const double end = running + length;
        if (!(end - from > tolerance::mileage) || !(to - running > tolerance::mileage)) continue;
        const double first = from - running > tolerance::mileage ? from - running : 0;
        const double last = end - to > tolerance::mileage ? to - running : length;
        const Result<Element> piece = CutElement(whole.elements[i], first, last);
        if (!piece) return FailRecord(KESTO_ELEMENT_NOT_EVALUABLE, KESTO_LIST_ELEMENTS, i);
        pieces.push_back({*piece, running + first});
    }
    if (pieces.empty()) return nothing;
    return pieces;
}

// The decimals

double Curvature(double radius) noexcept { return IsInfiniteRadius(radius) ? 0 : 1 / radius; }

bool IsTooFlat(double radius) noexcept { return !(radius < unwritableRadius); }

/// Gives a piece whose radii are too large for a file infinite ones: an arc or spiral without any other becomes a
/// straight.
PartPiece Flattened(PartPiece piece) noexcept {
    Element& element = piece.element;
    if (IsTooFlat(element.startRadius)) element.startRadius = 0;
    if (IsTooFlat(element.endRadius)) element.endRadius = 0;
    if (IsInfiniteRadius(element.startRadius) && IsInfiniteRadius(element.endRadius)) {
        element.type = static_cast<std::int32_t>(ElementType::Straight);
    }
    return piece;
}

/// A piece with radii that a file can hold. A spiral is cut near its flat end, so that hardly any of it changes.
Outcome AppendWritable(const PartPiece& piece, std::vector<PartPiece>& pieces) {
    const Element& element = piece.element;
    const bool isSpiral = IsType(element, ElementType::Spiral);
    const bool flatStart = IsTooFlat(element.startRadius);
    const bool flatEnd = IsTooFlat(element.endRadius);
    if (!(flatStart || flatEnd)) {
        pieces.push_back(piece);
        return {};
    }
    const double length = std::fabs(element.length);
    const double start = Curvature(element.startRadius);
    const double end = Curvature(element.endRadius);
    const double share = (1 / flatPieceRadius - std::min(start, end)) / std::fabs(end - start);
    const double flat = std::max(share * length, shortestPiece);
    if (!isSpiral || !(flat + shortestPiece < length)) {
        pieces.push_back(Flattened(piece));
        return {};
    }
    const double cut = flatStart ? flat : length - flat;
    const Result<Element> first = CutElement(element, 0, cut);
    const Result<Element> second = CutElement(element, cut, length);
    if (!first) return first.failure();
    if (!second) return second.failure();
    pieces.push_back(Flattened({*first, piece.whole}));
    pieces.push_back(Flattened({*second, piece.whole + cut}));
    return {};
}

/// Makes sure that what is read back can be evaluated. Decimals leave too little of the difference between the radii of
/// a very short spiral: it becomes an arc.
/// @return fails where that ends elsewhere, and for an element that cannot be evaluated anyway
Outcome KeepEvaluable(Element& element) noexcept {
    Element read = element;
    read.length = WrittenReal(element.length);
    read.startRadius = WrittenReal(element.startRadius);
    read.endRadius = WrittenReal(element.endRadius);
    if (Evaluate(read, read.length)) return {};
    const double curvature = (Curvature(element.startRadius) + Curvature(element.endRadius)) / 2;
    read.type = static_cast<std::int32_t>(ElementType::Arc);
    read.startRadius = read.endRadius = 1 / curvature;
    const Result<Position> end = Evaluate(element, element.length);
    const Result<Position> arcEnd = Evaluate(read, read.length);
    if (!end || !arcEnd) return Fail(KESTO_ELEMENT_NOT_EVALUABLE);
    if (!(std::hypot(end->x - arcEnd->x, end->y - arcEnd->y) < arcBeside)) return Fail(KESTO_ELEMENT_NOT_EVALUABLE);
    element = read;
    return {};
}

}  // namespace

double PartFrame::ToPart(double whole) const noexcept {
    const auto after = std::ranges::upper_bound(places, whole, {}, &Pair::whole);
    if (after == places.begin()) return after->part + (whole - after->whole);
    const Pair& before = *(after - 1);
    const double place = before.part + (whole - before.whole);
    return after == places.end() ? place : std::min(place, after->part);
}

Result<FramedPart> CutAlignment(const RoadDesign& whole, double from, double to) {
    const Result<std::vector<PartPiece>> pieces = PiecesBetween(whole, from, to);
    if (!pieces) return pieces.failure();
    return Assemble(whole, *pieces, EndInWhole(pieces->back()));
}

Result<FramedPart> RoundAlignment(const RoadDesign& whole) {
    std::vector<PartPiece> pieces;
    double running = whole.settings.startMileage;
    for (const Element& element : whole.elements.Records().subspan(1)) {
        if (Outcome added = AppendWritable({element, running}, pieces); !added) return added.failure();
        running += std::fabs(element.length);
    }
    for (PartPiece& piece : pieces) {
        const double end = WrittenReal(EndMileage(piece.element));
        piece.element.startMileage = WrittenReal(piece.element.startMileage);
        piece.element.length = end - piece.element.startMileage;
        if (Outcome kept = KeepEvaluable(piece.element); !kept) return kept.failure();
    }
    return Assemble(whole, pieces, running);
}

}  // namespace kesto
