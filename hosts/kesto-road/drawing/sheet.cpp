#include "drawing/sheet.hpp"

#include <algorithm>

namespace kesto::host {

namespace {

constexpr double margin = 10;       // mm
constexpr double titleHeight = 11;  // mm
constexpr double columnWidth = 44;  // mm, for legends, north arrow and scale bar
constexpr double gap = 3;           // mm between frame and content

}  // namespace

Paper PaperOf(const std::string& name) { return name == "A4" || name == "a4" ? Paper{297, 210} : Paper{420, 297}; }

Sheet::Sheet(const std::string& path, const Paper& paper, const std::string& title, const std::string& subject)
    : canvas(path, paper.width, paper.height),
      frame{margin, margin, paper.width - margin, paper.height - margin},
      top(frame.top + titleHeight) {
    canvas.Rectangle(frame, {.width = 0.5});
    DrawTitle(title, subject);
    canvas.Line({ColumnLeft(), top}, {ColumnLeft(), frame.bottom}, {.width = 0.35});
}

double Sheet::ColumnLeft() const noexcept { return frame.right - columnWidth; }

void Sheet::DrawTitle(const std::string& title, const std::string& subject) {
    const double middle = frame.top + titleHeight / 2;
    canvas.Text({frame.left + gap, middle}, title, {.size = 4.2, .anchorY = 0.5, .bold = true});
    canvas.Text({frame.right - gap, middle}, subject, {.size = 2.8, .anchorX = 1, .anchorY = 0.5});
    canvas.Line({frame.left, top}, {frame.right, top}, {.width = 0.35});
}

void Sheet::Part(double height, double legend, const Draw& draw) {
    const double bottom = std::min(top + height, frame.bottom);
    columnTop = std::max(columnTop, top);
    if (top > frame.top + titleHeight) {
        canvas.Line({frame.left, top}, {ColumnLeft(), top}, {.width = 0.35});
        canvas.Line({ColumnLeft(), columnTop}, {frame.right, columnTop}, {.width = 0.35});
    }
    draw(canvas, Box{frame.left + gap, top + gap, ColumnLeft() - gap, bottom - gap},
         Box{ColumnLeft() + gap, columnTop + gap, frame.right - gap, std::max(bottom, columnTop + legend) - gap});
    columnTop += legend;
    top = bottom;
}

}  // namespace kesto::host
