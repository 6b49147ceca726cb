#include "drawing/scales.hpp"

#include <cmath>

#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

template <std::size_t count>
double NextOf(const double (&steps)[count], double least) {
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double step : steps) {
        if (step * decade >= least * (1 - 1e-9)) return step * decade;
    }
    return 10 * decade;
}

}  // namespace

double UsualScale(double leastDenominator) {
    constexpr double steps[] = {1, 1.25, 1.5, 2, 2.5, 3, 4, 5, 6, 7.5};
    return NextOf(steps, leastDenominator);
}

double UsualStep(double least) {
    constexpr double steps[] = {1, 2, 5};
    return NextOf(steps, least);
}

std::string ScaleText(double denominator) { return "1:" + FormatShort(denominator); }

}  // namespace kesto::host
