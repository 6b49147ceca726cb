#include "drawing/canvas.hpp"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <utility>

#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr double pointsPerInch = 72;
constexpr double pixelsPerInch = 200;
constexpr double capitalHeight = 0.73;  // of the text size
constexpr double haloWidth = 0.9;       // mm
constexpr double dashLength = 1.6;      // mm

std::string Extension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return extension;
}

/// Text that Cairo takes: a byte that is no UTF-8 becomes a question mark.
std::string CleanUtf8(std::string_view text) {
    std::string clean;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : lead >> 3 == 30 ? 4 : 0;
        bool valid = length > 0 && i + length <= text.size();
        for (std::size_t k = 1; valid && k < length; ++k) valid = (static_cast<unsigned char>(text[i + k]) >> 6) == 2;
        clean += valid ? text.substr(i, length) : std::string_view("?");
        i += valid ? length : 1;
    }
    return clean;
}

}  // namespace

void Canvas::Release::operator()(cairo_t* drawing) const noexcept { cairo_destroy(drawing); }
void Canvas::Release::operator()(cairo_surface_t* drawn) const noexcept { cairo_surface_destroy(drawn); }

Canvas::Canvas(std::string filePath, double widthMm, double heightMm) : path(std::move(filePath)) {
    const std::string extension = Extension(path);
    const double points = pointsPerInch / millimetresPerInch;
    const double pixels = pixelsPerInch / millimetresPerInch;
    raster = extension == ".png";
    if (raster) {
        surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(widthMm * pixels)),
                                                 static_cast<int>(std::lround(heightMm * pixels))));
    } else if (extension == ".pdf") {
        surface.reset(cairo_pdf_surface_create(path.c_str(), widthMm * points, heightMm * points));
    } else if (extension == ".svg") {
        surface.reset(cairo_svg_surface_create(path.c_str(), widthMm * points, heightMm * points));
    } else {
        throw Problem(ExitCode::Usage, "'" + path + "': a picture ends in .svg, .pdf or .png");
    }
    context.reset(cairo_create(surface.get()));
    const double scale = raster ? pixels : points;
    cairo_scale(context.get(), scale, scale);
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
}

void Canvas::Use(const Pen& pen) {
    cairo_set_source_rgb(context.get(), pen.colour.red, pen.colour.green, pen.colour.blue);
    cairo_set_line_width(context.get(), pen.width);
    cairo_set_dash(context.get(), &dashLength, pen.dashed ? 1 : 0, 0);
}

void Canvas::Use(const TextStyle& style) {
    cairo_set_source_rgb(context.get(), style.colour.red, style.colour.green, style.colour.blue);
    cairo_select_font_face(context.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           style.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context.get(), style.size);
}

void Canvas::ClipTo(const Box& box) {
    cairo_save(context.get());
    cairo_rectangle(context.get(), box.left, box.top, box.Width(), box.Height());
    cairo_clip(context.get());
}

void Canvas::EndClip() { cairo_restore(context.get()); }

void Canvas::Line(Place from, Place to, const Pen& pen) { Polyline({from, to}, pen); }

void Canvas::Polyline(const std::vector<Place>& places, const Pen& pen) {
    Use(pen);
    for (const Place& place : places) cairo_line_to(context.get(), place.x, place.y);
    cairo_stroke(context.get());
}

void Canvas::Fill(const std::vector<Place>& corners, const Colour& colour) {
    cairo_set_source_rgb(context.get(), colour.red, colour.green, colour.blue);
    for (const Place& place : corners) cairo_line_to(context.get(), place.x, place.y);
    cairo_close_path(context.get());
    cairo_fill(context.get());
}

void Canvas::Rectangle(const Box& box, const Pen& pen) {
    Use(pen);
    cairo_rectangle(context.get(), box.left, box.top, box.Width(), box.Height());
    cairo_stroke(context.get());
}

void Canvas::Dot(Place centre, double radius, const Colour& edge, bool filled) {
    Use(Pen{.colour = filled ? edge : Colour{1, 1, 1}});
    cairo_arc(context.get(), centre.x, centre.y, radius, 0, 2 * std::numbers::pi);
    cairo_fill_preserve(context.get());
    Use(Pen{.colour = edge, .width = 0.2});
    cairo_stroke(context.get());
}

double Canvas::TextWidth(std::string_view text, const TextStyle& style) {
    Use(style);
    cairo_text_extents_t extents{};
    cairo_text_extents(context.get(), CleanUtf8(text).c_str(), &extents);
    return extents.x_advance;
}

void Canvas::Text(Place place, std::string_view text, const TextStyle& style) {
    const double width = TextWidth(text, style);
    cairo_save(context.get());
    cairo_translate(context.get(), place.x, place.y);
    cairo_rotate(context.get(), style.angle);
    cairo_move_to(context.get(), -style.anchorX * width, style.anchorY * capitalHeight * style.size);
    if (style.halo) {
        cairo_text_path(context.get(), CleanUtf8(text).c_str());
        Use(Pen{.colour = {1, 1, 1}, .width = haloWidth});
        cairo_stroke(context.get());
        Use(style);
        cairo_move_to(context.get(), -style.anchorX * width, style.anchorY * capitalHeight * style.size);
    }
    cairo_show_text(context.get(), CleanUtf8(text).c_str());
    cairo_restore(context.get());
    cairo_new_path(context.get());
}

void Canvas::Finish() {
    cairo_show_page(context.get());
    cairo_status_t status = cairo_status(context.get());
    cairo_surface_flush(surface.get());
    if (status == CAIRO_STATUS_SUCCESS && raster) status = cairo_surface_write_to_png(surface.get(), path.c_str());
    cairo_surface_finish(surface.get());
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface.get());
    if (status == CAIRO_STATUS_SUCCESS) return;
    throw Problem(ExitCode::File, "'" + path + "' cannot be written: " + cairo_status_to_string(status) +
                                      ": check the folder, its permissions and the disk");
}

}  // namespace kesto::host
