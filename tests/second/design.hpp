/// What a road is designed from, as both implementations are given it.
#pragma once

#include <array>
#include <vector>

#include "kesto_road/kesto_road.h"

namespace kesto::second {

/// The input that the library makes its elements from.
enum class Form { Elements, Intersections, Coordinates, Polygon };

/// Grade-change point by its continuous mileage, with the ends of its curve for the mode that wants them.
struct Grade {
    double continuous, elevation, radius, from, to;
};

struct Change {
    std::int32_t side, kind;
    double continuous;
    std::vector<double> values;
    std::int32_t type;
};

struct Design {
    Form form{};
    double x{}, y{}, azimuth{}, mileage{};  // of the start
    std::vector<Element> curves;            // types, turns, radii and lengths are read
    std::vector<double> kinks;              // degrees to the right, before each curve
    std::vector<BrokenChain> breaks;        // ascending
    std::int32_t stakeType{}, curveMode{};
    double interval{};
    std::vector<Grade> grades;
    std::array<std::vector<SectionPlate>, 2> plates;
    std::vector<Change> changes;  // ascending
};

}  // namespace kesto::second
