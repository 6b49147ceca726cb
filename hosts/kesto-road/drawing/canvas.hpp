/// A sheet of paper to draw on, in millimetres, over Cairo.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/colours.hpp"

namespace kesto::host {

/// A place on the sheet: mm from its upper left corner, y down.
struct Place {
    double x = 0, y = 0;
};

struct Box {
    double left = 0, top = 0, right = 0, bottom = 0;  ///< mm
    [[nodiscard]] double Width() const noexcept { return right - left; }
    [[nodiscard]] double Height() const noexcept { return bottom - top; }
};

struct Pen {
    Colour colour = colours::ink;
    double width = 0.25;  ///< mm
    bool dashed = false;
};

struct TextStyle {
    double size = 2.2;   ///< mm
    double angle = 0;    ///< radians, clockwise on the sheet
    double anchorX = 0;  ///< 0 the text begins at its place, 0.5 is centred, 1 ends there
    double anchorY = 0;  ///< 0 the place is on the base line, 0.5 at half the height of capitals, 1 above them
    Colour colour = colours::ink;
    bool bold = false;
    bool halo = false;  ///< with a white rim, to stand out from lines below
};

/// A landscape sheet that is written as SVG, PDF or PNG, by the file's extension.
class Canvas {
public:
    /// @throws Problem for another extension, or when the file cannot be made
    Canvas(std::string filePath, double widthMm, double heightMm);

    /// Draws only inside the box until EndClip().
    void ClipTo(const Box& box);
    void EndClip();

    void Line(Place from, Place to, const Pen& pen);
    void Polyline(const std::vector<Place>& places, const Pen& pen);
    void Fill(const std::vector<Place>& corners, const Colour& colour);
    void Rectangle(const Box& box, const Pen& pen);
    void Dot(Place centre, double radius, const Colour& edge, bool filled);
    void Text(Place place, std::string_view text, const TextStyle& style);
    /// Width of a text (mm).
    double TextWidth(std::string_view text, const TextStyle& style);

    /// Writes the file. @throws Problem when that fails
    void Finish();

private:
    struct Release {
        void operator()(cairo_t* drawing) const noexcept;
        void operator()(cairo_surface_t* drawn) const noexcept;
    };
    void Use(const Pen& pen);
    void Use(const TextStyle& style);

    std::string path;
    bool raster = false;
    std::unique_ptr<cairo_surface_t, Release> surface;
    std::unique_ptr<cairo_t, Release> context;
};

}  // namespace kesto::host
