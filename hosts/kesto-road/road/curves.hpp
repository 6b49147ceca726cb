/// The curves of a road made from intersections, with the figures that an alignment design carries.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"
#include "road/mileage_text.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// A main point of a curve, named as the stakes name it.
struct MainPoint {
    std::string label;  ///< empty where no main-point stake stands there
    Stake stake;
};

/// The main points of a curve in order of travel. Where no spiral joins an arc, curveBegin or curveEnd is its end.
enum CurvePoint : std::size_t { curveBegin, arcBegin, arcMiddle, arcEnd, curveEnd, curvePointCount };

/// The curve of an intersection, as the built road has it.
struct Curve {
    double tangentIn;                ///< T1: from its begin to the intersection (m)
    double tangentOut;               ///< T2: from the intersection to its end (m)
    double length;                   ///< L: spirals and arc (m)
    std::optional<double> external;  ///< E: shortest distance from the intersection to the curve (m)
    std::array<std::optional<MainPoint>, curvePointCount> points;
};

/// The side of the tangent polygon that leads to the next intersection.
struct PolygonSide {
    double length;    ///< m
    double straight;  ///< what the two curves leave of it (m)
    double azimuth;   ///< degrees
};

struct IntersectionFigures {
    Intersection record;
    std::string name;                  ///< its number, counted from 1, where it has none
    std::optional<double> deflection;  ///< degrees, positive to the right; nothing at the road's ends
    std::optional<Curve> curve;        ///< nothing where the road has none
    std::optional<PolygonSide> side;   ///< nothing at the last one
};

/// The intersections that the road was made from; none for a road made from anything else.
std::vector<Intersection> IntersectionsOf(RoadDesign* road);

/// Name of an intersection; its number, counted from 1, where it has none.
std::string IntersectionName(const Intersection& record, std::size_t index);

/// The figures of every intersection, as the built road has them; none for a road made from anything else.
std::vector<IntersectionFigures> FiguresOfIntersections(RoadDesign* road, const RoadLine& line);

}  // namespace kesto::host
