/// The sheet that is printed: paper, frame, title, and the parts that it is divided into.
#pragma once

#include <functional>
#include <string>

#include "drawing/canvas.hpp"

namespace kesto::host {

struct Paper {
    double width, height;  ///< mm
};

/// Paper in landscape.
/// @param name "A4"; any other name is A3
Paper PaperOf(const std::string& name);

/// A sheet with frame, title and a column for legends at its right. It is filled part by part from top to bottom.
class Sheet {
public:
    /// Draws a part into a box and its legend into a box in the column.
    using Draw = std::function<void(Canvas& canvas, const Box& box, const Box& column)>;

    /// @param path    picture to write, as Canvas takes it
    /// @param subject stands at the right of the title
    /// @throws Problem as Canvas does
    Sheet(const std::string& path, const Paper& paper, const std::string& title, const std::string& subject);

    /// Height that is left (mm).
    [[nodiscard]] double Room() const noexcept { return frame.bottom - top; }

    /// Takes the next part of the sheet and lets it be drawn, with its part of the column. On a small sheet a legend
    /// may reach further down than its drawing; the next legend then begins below it.
    /// @param height mm
    /// @param legend mm that the part needs in the column
    void Part(double height, double legend, const Draw& draw);

    /// Writes the file. @throws Problem when that fails
    void Finish() { canvas.Finish(); }

private:
    void DrawTitle(const std::string& title, const std::string& subject);
    [[nodiscard]] double ColumnLeft() const noexcept;

    Canvas canvas;
    Box frame;
    double top = 0;        ///< of the next part (mm)
    double columnTop = 0;  ///< of its legend (mm)
};

}  // namespace kesto::host
