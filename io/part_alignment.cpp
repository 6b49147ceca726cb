#include "io/part_alignment.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/element_cut.hpp"
#include "alignment/element_generation.hpp"
#include "alignment/element_geometry.hpp"
#include "core/status.hpp"
#include "core/tolerances.hpp"
#include "io/number_text.hpp"

namespace kesto {

namespace {

// A column of the project file holds radii below 1e9 m. A spiral that begins or ends flatter is cut where its radius
// comes to half of that; what lies beyond is so short that the difference to an infinite radius is below 1e-12 m.
inline constexpr double largestRadius = 0.5e9;  // m
inline constexpr double shortestPiece = 1e-3;   // m: a shorter piece at the flat end would be lost in the decimals

/// An element of the part, and the continuous mileage (m) of its start in the whole road.
struct PartPiece {
    Element element;
    double whole;
};

double EndInWhole(const PartPiece& piece) noexcept { return piece.whole + std::fabs(piece.element.length); }

// --------------------------------------------------------------------------------------------------------- the breaks

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

/// Adds a broken chain for every jump. A rebuild takes them in the order of their back mileages, each at the first
/// element that holds it. Where the end of a piece would come out of order, a place right behind its start does: a
/// break there acts behind the whole piece.
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
        if (Outcome added = InsertBrokenChain(part, {back, back + jump}); !added) return added;
        next = back;
    }
    return {};
}

// ------------------------------------------------------------------------------------------------------ the assembly

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
    if (!(to - from > tolerance::mileage)) return Fail(KESTO_NOTHING_TO_SAVE);
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
    if (pieces.empty()) return Fail(KESTO_NOTHING_TO_SAVE);
    return pieces;
}

// ------------------------------------------------------------------------------------------------------- the decimals

double Curvature(double radius) noexcept { return IsInfiniteRadius(radius) ? 0 : 1 / radius; }

bool IsTooFlat(double radius) noexcept { return !IsInfiniteRadius(radius) && !(radius < largestRadius); }

void MakeStraight(Element& element) noexcept {
    element.type = static_cast<std::int32_t>(ElementType::Straight);
    element.startRadius = element.endRadius = 0;
}

/// A piece as two or three, so that no radius is too large for a file.
Outcome AppendWritable(const PartPiece& piece, std::vector<PartPiece>& pieces) {
    const Element& element = piece.element;
    const bool flatStart = IsTooFlat(element.startRadius);
    const bool flatEnd = IsTooFlat(element.endRadius);
    const double length = std::fabs(element.length);
    if (!IsType(element, ElementType::Spiral) || !(flatStart || flatEnd)) {
        pieces.push_back(piece);
        if (IsType(element, ElementType::Arc) && flatStart) MakeStraight(pieces.back().element);
        return {};
    }
    const double start = Curvature(element.startRadius);
    const double end = Curvature(element.endRadius);
    const double share = (1 / largestRadius - std::min(start, end)) / std::fabs(end - start);
    const double flat = std::max(share * length, shortestPiece);
    if (!(flat + shortestPiece < length)) {
        pieces.push_back(piece);
        MakeStraight(pieces.back().element);
        return {};
    }
    const double cut = flatStart ? flat : length - flat;
    const Result<Element> first = CutElement(element, 0, cut);
    const Result<Element> second = CutElement(element, cut, length);
    if (!first) return first.failure();
    if (!second) return second.failure();
    pieces.push_back({*first, piece.whole});
    if (flatStart) pieces.back().element.startRadius = 0;
    pieces.push_back({*second, piece.whole + cut});
    if (flatEnd) pieces.back().element.endRadius = 0;
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
    }
    return Assemble(whole, pieces, running);
}

}  // namespace kesto
