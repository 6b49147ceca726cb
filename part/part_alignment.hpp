/// The alignment of a part of a road: the elements between two places, and the broken chains between them.
#pragma once

#include <memory>
#include <vector>

#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// A stretch of a road and the same stretch in the part that is made of it. Everything in continuous mileage (m).
class PartFrame {
public:
    /// Notes a place of both roads, in order of travel: the starts of the part's pieces, and its end.
    void AddPlace(double whole, double part) { places.push_back({whole, part}); }

    /// Ends of the stretch in the whole road.
    double Start() const noexcept { return places.front().whole; }
    double End() const noexcept { return places.back().whole; }

    /// Where a place of the whole road lies in the part. Before and behind the part the mileage goes on without breaks.
    double ToPart(double whole) const noexcept;

private:
    struct Pair {
        double whole;
        double part;
    };
    std::vector<Pair> places;
};

/// A part with its alignment, and where it comes from.
struct FramedPart {
    std::unique_ptr<RoadDesign> road;
    PartFrame frame;
};

/// Makes the part between two continuous mileages of a road: its settings in the element method, the elements cut at
/// both places, a start record, and a broken chain wherever the stake mileage jumps in between. A place within 1e-7 m
/// of an element's end is that end. The part is built; a rebuild gives the same chain.
/// @param whole    a road whose chain is built
/// @param from, to continuous mileages on the road (m)
/// @return fails where there is nothing between them (KESTO_NOTHING_TO_SAVE; value and bound = the continuous mileages)
///         and where an element cannot be cut (KESTO_ELEMENT_NOT_EVALUABLE). A break that acts an element later than it
///         stands may come in an order that no list of a part gives: KESTO_NOTHING_TO_SAVE with the list of broken
///         chains and the stake mileage where the first one is missed
Result<FramedPart> CutAlignment(const RoadDesign& whole, double from, double to);

/// The same road with an alignment that survives the decimals of a project file: stake mileages are rounded where the
/// elements meet, so that the lengths still add up to the breaks, spirals too short for their radii to differ become
/// arcs, and radii of 1e9 m and more, which have no room in their column, become infinite. Beside the flat end of a cut
/// spiral that is far less than rounding; an arc or a long spiral of L m ends up to L^2 / 2e9 m beside.
/// @param whole a road whose chain is built, of elements split at the breaks
/// @return fails as CutAlignment(), and for an element that could not be evaluated when read
///         (KESTO_ELEMENT_NOT_EVALUABLE)
Result<FramedPart> RoundAlignment(const RoadDesign& whole);

}  // namespace kesto
