/// Draws one cross section.
#pragma once

#include <string>

#include "drawing/canvas.hpp"
#include "road/cross_section.hpp"

namespace kesto::host {

/// Draws the section into a box: the surface of both sides about the centre line, below it bands with names, widths,
/// slopes, offsets and heights. Heights are exaggerated where that helps.
/// @param column where the notes go
/// @return the scales, "1:40 / 1:8"
std::string DrawSection(Canvas& canvas, const CrossSection& section, const std::string& stakeText, const Box& box,
                        const Box& column);

}  // namespace kesto::host
