/// The built road as a chain of elements that can be walked from start to end, whatever its broken chains.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
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

/// What the road makes of a broken chain.
struct ChainEffect {
    bool atStart = false;  ///< it stands at the road's start: the road's first mileage is the one behind the break
    bool late = false;     ///< it acts on the element that it stands at the start of, so at that element's end
    bool jumps = false;    ///< the mileage jumps: not at the road's end, and not where both mileages are one
    double from = 0;       ///< stake mileage before the place where it acts (m)
    double to = 0;         ///< stake mileage behind it (m), where there is something behind
};

/// A point of the centre line.
struct CentrePoint {
    Stake stake;
    double continuous;  ///< m
    double x, y;        ///< m
    double azimuth;     ///< degrees
};

/// A walk along a designed road; the road must outlive it and stay as it is.
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
    /// The broken chains that the road comes by, by the mileage before the break.
    /// @param givenStart start mileage before the design run (m), which a broken chain at the start has moved
    [[nodiscard]] std::map<double, ChainEffect> ChainEffects(double givenStart) const;

    /// Visits the road's start, every whole multiple of the step in stake mileage in order of travel (each occurrence
    /// of it), and the road's end.
    void ForEachMultiple(double step, const std::function<void(const CentrePoint&)>& visit) const;

    /// Design height at an offset (m, positive to the right); nothing where the road has no profile, or no section
    /// that holds the offset.
    [[nodiscard]] std::optional<double> HeightAt(const Stake& stake, double offset = 0) const;
    /// The road's stake prefix.
    [[nodiscard]] std::string Prefix() const;

private:
    RoadDesign* road;
    std::vector<Piece> pieces;
    double start = 0;
    double total = 0;
    bool hasProfile;
};

/// "straight", "arc", "spiral".
const char* ElementName(const Element& element) noexcept;

}  // namespace kesto::host
