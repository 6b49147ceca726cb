/// The road's length across the sheet: what the profile and the diagrams below it share.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "drawing/canvas.hpp"
#include "road/road_line.hpp"

namespace kesto::host {

/// Maps continuous mileages onto the sheet. Boxes of the same left and right edge get the same axis.
struct LengthAxis {
    LengthAxis(const Box& box, const RoadLine& line);
    [[nodiscard]] double X(double continuous) const noexcept;  ///< mm

    double left, right;      ///< mm: left of it stand the names of the graph and its bands
    double start;            ///< continuous mileage of the road's start (m)
    double denominator = 1;  ///< of the scale
};

/// Horizontal stretches of a band that are taken by texts.
class TextRow {
public:
    /// False when the stretch, in mm, meets one that is taken.
    bool Take(double from, double to);

private:
    std::vector<std::pair<double, double>> taken;
};

/// Draws the line of a broken chain across a graph.
void DrawBreak(Canvas& canvas, double x, double top, double bottom);

/// Both mileages of a broken chain: "K0+490.000 = K0+480.000".
std::string BreakText(const RoadLine& line, const Break& it);

/// How that text is written.
inline const TextStyle breakStyle{.size = 2, .colour = colours::brokenChain, .bold = true, .halo = true};

}  // namespace kesto::host
