#include "geometry/clothoid.hpp"

#include <array>
#include <cmath>
#include <cstddef>

#include "core/tolerances.hpp"

namespace kesto {

namespace {

inline constexpr std::size_t seriesTerms = 12;

struct SeriesTable {
    std::array<double, seriesTerms> x{};  // (-1)^n / ((4n + 1) (2n)!)
    std::array<double, seriesTerms> y{};  // (-1)^n / ((4n + 3) (2n + 1)!)
};

constexpr SeriesTable MakeSeriesTable() {
    SeriesTable table;
    double factorial = 1;  // (2n)!
    double sign = 1;
    for (std::size_t n = 0; n < seriesTerms; ++n) {
        const auto order = static_cast<double>(n);
        table.x[n] = sign / ((4 * order + 1) * factorial);
        factorial *= 2 * order + 1;
        table.y[n] = sign / ((4 * order + 3) * factorial);
        factorial *= 2 * order + 2;
        sign = -sign;
    }
    return table;
}

constexpr SeriesTable series = MakeSeriesTable();

struct PlanePoint {
    double x;  // m, along the tangent at the origin
    double y;  // m, square to it
};

/// Clothoid coordinates by their power series (Horner's scheme over the constant tables).
PlanePoint SeriesSum(double rate, double distance) noexcept {
    const double angle = ClothoidAngle(rate, distance);
    const double square = angle * angle;
    double x = series.x[seriesTerms - 1];
    double y = series.y[seriesTerms - 1];
    for (std::size_t n = seriesTerms - 1; n-- > 0;) {
        x = x * square + series.x[n];
        y = y * square + series.y[n];
    }
    return {distance * x, distance * (angle * y)};
}

/// Whether every term of both series stays within 1e32 until the x terms have fallen to their tolerance.
bool TermsStayBounded(double angle) noexcept {
    double power = 1;  // angle^(2n) / (2n)!
    for (int n = 0;; ++n) {
        const double xTerm = power / (4 * n + 1);
        const double odd = power * angle / (2 * n + 1);
        const double yTerm = odd / (4 * n + 3);
        if (!(std::fabs(xTerm) <= tolerance::clothoidOverflow && std::fabs(yTerm) <= tolerance::clothoidOverflow)) {
            return false;
        }
        if (n + 1 >= static_cast<int>(seriesTerms) && std::fabs(xTerm) <= tolerance::clothoidTerm) return true;
        power = odd * angle / (2 * n + 2);
    }
}

// Gauss-Legendre quadrature with 16 points on [-1, 1]: positive nodes and their weights.
struct Node {
    double place;
    double weight;
};
constexpr std::array<Node, 8> gaussLegendre = {{{0.0950125098376374402, 0.1894506104550684963},
                                                {0.2816035507792589132, 0.1826034150449235889},
                                                {0.4580167776572273863, 0.1691565193950025382},
                                                {0.6178762444026437484, 0.1495959888165767321},
                                                {0.7554044083550030339, 0.1246289712555338720},
                                                {0.8656312023878317439, 0.0951585116824927848},
                                                {0.9445750230732325761, 0.0622535239386478929},
                                                {0.9894009349916499326, 0.0271524594117540949}}};
inline constexpr double panelTurn = 4.0;     // rad: a panel that turns no more is exact to the last digits
inline constexpr double largestTurn = 1000;  // rad: far above any stretch whose terms stay bounded

/// The tangent's direction integrated along the stretch.
std::optional<PlanePoint> QuadraturePoint(const ClothoidStretch& stretch, double distance) noexcept {
    const double curvature = stretch.rate * stretch.start;   // at the start of the stretch
    const double change = stretch.sense * stretch.rate / 2;  // turn = curvature t + change t^2
    const double variation = std::fabs(curvature * distance) + std::fabs(change * distance * distance);
    if (!(variation <= largestTurn)) return std::nullopt;
    const int panels = 1 + static_cast<int>(variation / panelTurn);
    const double half = distance / panels / 2;
    PlanePoint sum{0, 0};
    for (int panel = 0; panel < panels; ++panel) {
        const double middle = (2 * panel + 1) * half;
        for (const Node& node : gaussLegendre) {
            for (const double place : {middle - half * node.place, middle + half * node.place}) {
                const double turn = place * (curvature + change * place);
                sum.x += node.weight * std::cos(turn);
                sum.y += node.weight * std::sin(turn);
            }
        }
    }
    return PlanePoint{half * sum.x, half * sum.y};
}

/// Angle (rad) turned at a distance from the start of a stretch.
double TurnAfter(const ClothoidStretch& stretch, double distance) noexcept {
    return stretch.rate * distance * (stretch.start + stretch.sense * distance / 2);
}

}  // namespace

double ClothoidAngle(double rate, double distance) noexcept { return rate * distance * distance / 2; }

bool HasSeries(const ClothoidStretch& stretch) noexcept {
    return std::fabs(stretch.farAngle) <= tolerance::clothoidSeriesAngle;
}

bool SeriesReaches(const ClothoidStretch& stretch, double distance) noexcept {
    const double angle = ClothoidAngle(stretch.rate, stretch.start + stretch.sense * distance);
    return HasSeries(stretch) && std::fabs(angle) <= tolerance::clothoidSeriesAngle;
}

ClothoidFrame FrameOf(const ClothoidStretch& stretch) noexcept {
    const PlanePoint from = SeriesSum(stretch.rate, stretch.start);
    const double angle = ClothoidAngle(stretch.rate, stretch.start);
    return {stretch, from.x, from.y, {std::cos(angle), std::sin(angle)}};
}

LocalPoint SeriesPoint(const ClothoidFrame& frame, double distance) noexcept {
    const ClothoidStretch& stretch = frame.stretch;
    const PlanePoint to = SeriesSum(stretch.rate, stretch.start + stretch.sense * distance);
    const double dx = to.x - frame.fromX;
    const double dy = to.y - frame.fromY;
    // Travelled towards the origin the direction of travel is the reversed tangent; the mirror image keeps v positive
    // towards the side of the turn.
    return {stretch.sense * (dx * frame.tangent.cosine + dy * frame.tangent.sine),
            dy * frame.tangent.cosine - dx * frame.tangent.sine, TurnAfter(stretch, distance)};
}

std::optional<LocalPoint> ClothoidPoint(const ClothoidStretch& stretch, double distance) noexcept {
    if (SeriesReaches(stretch, distance)) return SeriesPoint(FrameOf(stretch), distance);
    const double end = stretch.start + stretch.sense * distance;
    if (!TermsStayBounded(ClothoidAngle(stretch.rate, stretch.start)) ||
        !TermsStayBounded(ClothoidAngle(stretch.rate, end))) {
        return std::nullopt;
    }
    const std::optional<PlanePoint> point = QuadraturePoint(stretch, distance);
    if (!point) return std::nullopt;
    return LocalPoint{point->x, point->y, TurnAfter(stretch, distance)};
}

}  // namespace kesto
