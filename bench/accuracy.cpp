// Measures how exact the positions and feet are, against integration in extended precision, and prints the table of
// docs/accuracy.md. The points come from a fixed seed.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <random>

#include "alignment/element_geometry.hpp"
#include "alignment/projection.hpp"
#include "quadrature.hpp"

namespace {

using kesto_test::Integrate;
using kesto_test::Integrated;
using kesto_test::MakeElement;

constexpr int samples = 1000;

/// Uniform and log-uniform numbers from one generator.
class Dice {
public:
    double Between(double low, double high) { return low + (high - low) * unit(random); }
    double LogBetween(double low, double high) { return std::exp(Between(std::log(low), std::log(high))); }
    bool Flip() { return unit(random) < 0.5; }

private:
    std::mt19937_64 random{20250301};
    std::uniform_real_distribution<double> unit{0, 1};
};

/// A spiral that starts at the origin of coordinates or at a point of grid size.
Element Spiral(Dice& dice, double startRadius, double endRadius, double length, bool grid) {
    return MakeElement(3, dice.Flip(), startRadius, endRadius, length, grid ? 3400000 + dice.Between(0, 1000) : 0,
                       grid ? 500000 + dice.Between(0, 1000) : 0, dice.Between(0, 360));
}

double ForwardError(const Element& element, double distance) {
    const auto position = kesto::Evaluate(element, distance);
    const Integrated exact = Integrate(element, distance);
    return std::hypot(static_cast<double>(position->x - exact.x), static_cast<double>(position->y - exact.y));
}

/// Largest forward error of spirals from a straight whose turn lies between two angles (rad).
double SpiralForward(Dice& dice, double leastTurn, double mostTurn, bool grid) {
    double worst = 0;
    for (int i = 0; i < samples; ++i) {
        const double length = dice.Between(20, 300);
        const double radius = length / (2 * dice.Between(leastTurn, mostTurn));
        const Element spiral = Spiral(dice, 0, radius, length, grid);
        worst = std::max(worst, ForwardError(spiral, dice.Between(0, length)));
    }
    return worst;
}

/// Largest forward error of spirals between two radii that differ by a share of 1e-3 to 1e-2.
double OvalForward(Dice& dice) {
    double worst = 0;
    for (int i = 0; i < samples; ++i) {
        const double radius = dice.LogBetween(200, 2000);
        const double ratio = 1 + dice.LogBetween(5e-3, 2e-2);
        const double length = dice.Between(20, 150);
        const Element spiral = dice.Flip() ? Spiral(dice, radius, radius * ratio, length, true)
                                           : Spiral(dice, radius * ratio, radius, length, true);
        if (kesto::Evaluate(spiral, length)) worst = std::max(worst, ForwardError(spiral, dice.Between(0, length)));
    }
    return worst;
}

double ArcForward(Dice& dice) {
    double worst = 0;
    for (int i = 0; i < samples; ++i) {
        const double radius = dice.LogBetween(10, 1e6);
        const double length = dice.Between(1, std::min(6 * radius, 3000.0));
        Element arc = Spiral(dice, radius, radius, length, true);
        arc.type = 2;
        worst = std::max(worst, ForwardError(arc, dice.Between(0, length)));
    }
    return worst;
}

/// Largest error of the foot's place on elements of a type, for points at an offset.
double FootError(Dice& dice, int type, double offset) {
    double worst = 0;
    for (int i = 0; i < samples; ++i) {
        const double radius = dice.LogBetween(std::max(250.0, 3 * offset), 3000);
        const double length = dice.Between(60, 200);
        Element element = Spiral(dice, type == 3 ? 0 : radius, radius, length, true);
        element.type = type;
        const double along = dice.Between(1, length - 1);
        const Integrated at = Integrate(element, along);
        const double side = dice.Flip() ? offset : -offset;
        const kesto::Point point{static_cast<double>(at.x - side * std::sin(at.azimuth)),
                                 static_cast<double>(at.y + side * std::cos(at.azimuth))};
        const std::optional<kesto::Foot> foot = kesto::Project(element, point);
        if (foot) worst = std::max(worst, std::fabs(foot->along - along));
    }
    return worst;
}

}  // namespace

int main() {
    Dice dice;
    std::printf("| query | largest error (m) |\n|---|---|\n");
    std::printf("| position on arcs, radius 10 m to 1000 km | %.1e |\n", ArcForward(dice));
    std::printf("| position on spirals turning up to 1.6 rad, local coordinates | %.1e |\n",
                SpiralForward(dice, 0.01, 1.6, false));
    std::printf("| position on spirals turning 1.6 to 3 rad, local coordinates | %.1e |\n",
                SpiralForward(dice, 1.6, 3, false));
    std::printf("| position on spirals turning 3 to 30 rad, local coordinates | %.1e |\n",
                SpiralForward(dice, 3, 30, false));
    std::printf("| position on spirals turning up to 1.6 rad, grid coordinates | %.1e |\n",
                SpiralForward(dice, 0.01, 1.6, true));
    std::printf("| position on spirals between nearly equal radii, grid coordinates | %.1e |\n", OvalForward(dice));
    constexpr std::array<const char*, 4> names = {"", "straights", "arcs", "spirals"};
    for (const int type : {1, 2, 3}) {
        for (const double offset : {0.0, 1.0, 10.0, 100.0}) {
            std::printf("| foot on %s, offset %.0f m | %.1e |\n", names[static_cast<std::size_t>(type)], offset,
                        FootError(dice, type, offset));
        }
    }
    return 0;
}
