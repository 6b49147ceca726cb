/// Keeps the labels of a drawing apart from one another and from its lines.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drawing/canvas.hpp"

namespace kesto::host {

/// A rectangle at any angle, by its corners in order.
using Quad = std::array<Place, 4>;

/// The rectangle of a text line.
/// @param start  middle of the text's left edge
/// @param angle  radians, clockwise on the sheet
/// @param height mm, over both halves
Quad TextQuad(Place start, double angle, double width, double height);

/// Remembers what is taken on the sheet.
class LabelPlacer {
public:
    explicit LabelPlacer(const Box& frame) : area(frame) {}

    /// True when the quad lies inside the area and touches nothing that is taken.
    [[nodiscard]] bool IsFree(const Quad& quad) const;
    void Take(const Quad& quad);
    /// Takes a line with half its clearance on either side.
    void TakeLine(Place from, Place to, double clearance);

private:
    template <class Visit>
    static void ForEachCell(const Quad& quad, Visit&& visit);

    Box area;
    std::vector<Quad> taken;
    std::unordered_map<std::int64_t, std::vector<std::size_t>> cells;
};

/// Horizontal stretches of a band that are taken by texts.
class TextRow {
public:
    /// False when the stretch, in mm, meets one that is taken.
    bool Take(double from, double to);

private:
    std::vector<std::pair<double, double>> taken;
};

}  // namespace kesto::host
