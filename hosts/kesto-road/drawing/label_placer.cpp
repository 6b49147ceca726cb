#include "drawing/label_placer.hpp"

#include <algorithm>
#include <cmath>

namespace kesto::host {

namespace {

constexpr double cellSize = 10;             // mm: about a label's length
constexpr std::int64_t cellsPerRow = 4096;  // more than any sheet has

struct Span {
    double low, high;
};

Span Project(const Quad& quad, double x, double y) noexcept {
    Span span{1e30, -1e30};
    for (const Place& corner : quad) {
        const double at = corner.x * x + corner.y * y;
        span = {std::min(span.low, at), std::max(span.high, at)};
    }
    return span;
}

/// Two convex shapes are apart when a side of one of them separates them.
bool SideSeparates(const Quad& a, const Quad& b) noexcept {
    for (std::size_t i = 0; i < a.size(); ++i) {
        const Place& from = a[i];
        const Place& to = a[(i + 1) % a.size()];
        const Span first = Project(a, from.y - to.y, to.x - from.x);
        const Span second = Project(b, from.y - to.y, to.x - from.x);
        if (first.high < second.low || second.high < first.low) return true;
    }
    return false;
}

bool Overlap(const Quad& a, const Quad& b) noexcept { return !SideSeparates(a, b) && !SideSeparates(b, a); }

}  // namespace

Quad TextQuad(Place start, double angle, double width, double height) {
    const double alongX = std::cos(angle) * width;
    const double alongY = std::sin(angle) * width;
    const double halfX = -std::sin(angle) * height / 2;
    const double halfY = std::cos(angle) * height / 2;
    return {Place{start.x - halfX, start.y - halfY}, Place{start.x + alongX - halfX, start.y + alongY - halfY},
            Place{start.x + alongX + halfX, start.y + alongY + halfY}, Place{start.x + halfX, start.y + halfY}};
}

template <class Visit>
void LabelPlacer::ForEachCell(const Quad& quad, Visit&& visit) {
    const Span x = Project(quad, 1, 0);
    const Span y = Project(quad, 0, 1);
    const auto cell = [](double at) { return static_cast<std::int64_t>(std::floor(at / cellSize)); };
    for (auto row = cell(y.low); row <= cell(y.high); ++row) {
        for (auto column = cell(x.low); column <= cell(x.high); ++column) visit(row * cellsPerRow + column);
    }
}

bool LabelPlacer::IsFree(const Quad& quad) const {
    const Span x = Project(quad, 1, 0);
    const Span y = Project(quad, 0, 1);
    if (x.low < area.left || x.high > area.right || y.low < area.top || y.high > area.bottom) return false;
    bool free = true;
    ForEachCell(quad, [&](std::int64_t cell) {
        const auto found = cells.find(cell);
        if (!free || found == cells.end()) return;
        free = std::none_of(found->second.begin(), found->second.end(),
                            [&](std::size_t i) { return Overlap(taken[i], quad); });
    });
    return free;
}

void LabelPlacer::Take(const Quad& quad) {
    taken.push_back(quad);
    ForEachCell(quad, [&](std::int64_t cell) { cells[cell].push_back(taken.size() - 1); });
}

void LabelPlacer::TakeLine(Place from, Place to, double clearance) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    Take(TextQuad(from, std::atan2(to.y - from.y, to.x - from.x), length, clearance));
}

bool TextRow::Take(double from, double to) {
    const bool meets = std::any_of(taken.begin(), taken.end(),
                                   [&](const auto& other) { return from < other.second && other.first < to; });
    if (!meets) taken.emplace_back(from, to);
    return !meets;
}

}  // namespace kesto::host
