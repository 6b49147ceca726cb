/// The built road as a chain of elements from start to end, with the places where its mileage jumps.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "road/mileage_text.hpp"

namespace kesto::host {

/// One element of the built chain.
struct Piece {
    Element element;
    double from;  ///< continuous mileage of its start (m)
    /// Length along the road (m), never negative.
    [[nodiscard]] double Length() const noexcept;
    /// Stake mileage at a distance along the road from its start (m).
    [[nodiscard]] double MileageAt(double distance) const noexcept;
};

/// A place where the stake mileage jumps.
struct Break {
    double continuous;  ///< m
    double back;        ///< stake mileage before (m)
    double ahead;       ///< stake mileage after (m)
    double x, y;        ///< m
    double azimuth;     ///< degrees
};

/// What a broken chain does to the road.
struct ChainEffect {
    bool atStart = false;  ///< it stands at the road's start: the road begins with the mileage ahead of the break
    bool late = false;     ///< it stands just behind an element's start, but the mileage jumps at that element's end
    bool jumps = false;    ///< the mileage jumps; false at the road's end and where both mileages are equal
    double from = 0;       ///< stake mileage before the jump (m)
    double to = 0;         ///< stake mileage behind the jump (m); without meaning at the road's end
};

/// A point of the centre line.
struct CentrePoint {
    Stake stake;
    double continuous;  ///< m
    double x, y;        ///< m
    double azimuth;     ///< degrees
};

/// A place on the road.
struct RoadPlace {
    Stake stake;
    double continuous;  ///< m
};

/// Continuous mileage of a stake (m); nothing when the road does not have this place.
std::optional<double> ContinuousMileage(RoadDesign* road, const Stake& stake);

/// "K12+345.678 (occurrence 0)".
std::string PlaceName(RoadDesign* road, const Stake& stake);
/// "K12+345.678 (occurrence 0) is not on the road: " with the reason of the query that has just failed.
std::string NotOnRoad(RoadDesign* road, const Stake& stake);

/// A place given as text. Arguments and failures as for ResolveMileage().
/// @throws Problem also when the road does not have this place
RoadPlace ResolvePlace(RoadDesign* road, std::string_view text, std::optional<int> occurrence, const std::string& name);

/// The elements of a designed road in order of travel, and its centre line. The road must outlive it unchanged.
class RoadLine {
public:
    explicit RoadLine(RoadDesign* designed);

    [[nodiscard]] const std::vector<Piece>& Pieces() const noexcept { return pieces; }
    [[nodiscard]] double Start() const noexcept { return start; }        ///< continuous mileage (m)
    [[nodiscard]] double End() const noexcept { return start + total; }  ///< continuous mileage (m)
    [[nodiscard]] double Length() const noexcept { return total; }       ///< m

    /// The centre line at a distance from an element's start. @throws Problem when the element has no such point
    [[nodiscard]] CentrePoint At(const Piece& piece, double distance) const;
    /// The centre line at a continuous mileage, limited to the road.
    [[nodiscard]] CentrePoint At(double continuous) const;
    /// The centre line at a stake; nothing when the road does not have this place.
    [[nodiscard]] std::optional<CentrePoint> At(const Stake& stake) const;
    [[nodiscard]] std::vector<Break> Breaks() const;
    /// The broken chains that are on the road, by the mileage before the break.
    /// @param givenStart start mileage before the design run (m): a broken chain at the start changes it
    [[nodiscard]] std::map<double, ChainEffect> ChainEffects(double givenStart) const;

    /// Visits the road's start, the places whose stake mileage is a multiple of the step (each occurrence of it) in
    /// order of travel, and the road's end.
    /// @param step m
    void ForEachMultiple(double step, const std::function<void(const CentrePoint&)>& visit) const;

    /// Design height at an offset (m, positive to the right); nothing where the road has no profile, or no section
    /// that holds the offset.
    [[nodiscard]] std::optional<double> HeightAt(const Stake& stake, double offset = 0) const;
    [[nodiscard]] RoadDesign* Road() const noexcept { return road; }

private:
    RoadDesign* road;
    std::vector<Piece> pieces;
    double start = 0;
    double total = 0;
    bool hasProfile;
};

/// "straight", "arc", "spiral"; "other" for any other type.
const char* ElementName(const Element& element) noexcept;

}  // namespace kesto::host
