/// A road of the set: its elements end to end, its broken chains, and places along it.
#pragma once

#include <cstddef>
#include <vector>

#include "dice.hpp"
#include "element_curve.hpp"
#include "set_writer.hpp"
#include "zones.hpp"

namespace reference {

struct RoadData {
    double startMileage = 0;
    std::vector<ElementData> elements;
    std::vector<Break> breaks;
};

/// How large the coordinates are: up to 1 km, or those of a national grid (m).
enum class Coordinates { Local, Grid };

/// A start point and azimuth for an element; some azimuths are those of the axes.
ElementData DrawStart(Dice& dice, Coordinates coordinates);
double DrawStartMileage(Dice& dice);

/// A road of straights, arcs and spirals that join without a kink and turn to and fro, never back on themselves.
RoadData DrawRoad(Dice& dice, Coordinates coordinates, int curves);
/// Draws broken chains for a road: within its elements, at least a metre from their ends, or exactly at an end.
void DrawBreaks(Dice& dice, RoadData& road, int count);

Zones ZonesOf(const RoadData& road);
/// Continuous mileages of the ends of the elements, in their order, and of the broken chains (m).
std::vector<Real> BordersOf(const RoadData& road);

/// Writes the lines that begin a road.
void WriteRoad(const SetWriter& set, const RoadData& road);
void WriteElement(const SetWriter& set, const ElementData& element);

/// Walks along a road: places must be asked for in their order.
class RoadWalk {
public:
    explicit RoadWalk(const RoadData& road);

    /// Goes to a continuous mileage (m).
    void GoTo(const Real& mileage);
    const Place& Here() const { return place; }  // along the element
    const ElementCurve& Curve() const { return curve; }
    int Type() const { return road.elements[element].type; }
    /// Continuous mileage of the element's start (m).
    const Real& ElementStart() const { return start; }

private:
    const RoadData& road;
    std::size_t element = 0;
    Real start;
    ElementCurve curve;
    Place place;
};

}  // namespace reference
