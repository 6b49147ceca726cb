/// Element records as the generation of elements writes them.
#pragma once

#include <cstdint>

#include "core/counted_list.hpp"
#include "geometry/element_geometry.hpp"
#include "geometry/projection.hpp"

namespace kesto {

/// A piece of the alignment before it has a place.
struct Piece {
    ElementType type = ElementType::Straight;
    bool turnsRight = false;
    double startRadius = 0;  // m, 0 for infinite; arcs: both radii
    double endRadius = 0;    // m
    double length = 0;       // m
};

/// Writes a start record and elements behind it, with the stake mileages of a road without broken chains.
class ElementWriter {
public:
    /// @param mileage stake mileage of the road's start (m)
    explicit ElementWriter(double mileage) noexcept : nextMileage(mileage) {}

    /// Writes the start record; first of all.
    /// @param azimuth degrees
    void Start(Point point, double azimuth);

    /// Writes an element.
    /// @param azimuth tangent azimuth at its start (degrees)
    void Add(const Piece& piece, Point start, double azimuth);

    CountedList<Element>& Elements() noexcept { return elements; }

private:
    CountedList<Element> elements;
    double nextMileage;
};

/// Azimuth from one point to another (degrees in [0, 360)).
double AzimuthBetween(Point from, Point to) noexcept;

/// An azimuth brought into [0, 360) degrees; finite arguments only.
double NormalisedAzimuth(double degrees) noexcept;

}  // namespace kesto
