/// The plain ways that the library's answers are timed against.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.hpp"

namespace bench {

/// Position at a mileage by walking a copy of the elements from the first one on, until one holds the mileage.
kesto::Position WalkToPosition(RoadDesign* road, const std::vector<Element>& elements, double mileage, double offset);

/// Continuous mileage of a stake mileage by walking a copy of the elements and summing their lengths.
double WalkToContinuous(const std::vector<Element>& elements, double start, double mileage);

/// Height of a profile of grade points with parabolas, by walking the points from the first one on.
double WalkToHeight(const std::vector<VerticalCurve>& curves, double mileage);

/// Evaluates every stake on its element, whose place in the list is followed along: what a design run cannot go below.
/// @return sum of the coordinates (m), so that no evaluation can be left out
double EvaluateStakes(RoadDesign* road, const std::vector<Element>& elements,
                      const std::vector<StakeCoordinate>& stakes);

/// Reads a file whole and converts every number in it.
/// @return how many numbers there are
std::size_t ConvertNumbers(const std::string& path);

/// Numbers as a file has them: those with a decimal point, and whole ones.
struct Numbers {
    std::vector<double> reals;
    std::vector<int> integers;
};
Numbers NumbersOf(const std::string& path);

/// Converts numbers to text and writes a file of them, as plainly as can be.
/// @return the text's size
std::size_t WriteNumbers(const Numbers& numbers, const std::string& path);

}  // namespace bench
