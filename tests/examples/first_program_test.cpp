// The first programs print what plane geometry says.
//
// The expected figures use no library code: the measured point is walked to from the road's start by integrating the
// tangent azimuth, whose change is the curvature's integral, with two-point Gauss steps in long double, and the height
// is the tangent of the profile lowered by the parabola. The station follows from the length: at 300 m the stakes jump
// back by 100 m, so 352.345 m along the road is the second K0+252.345.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <regex>
#include <string>
#include <utility>

namespace {

constexpr long double distanceAlong = 352.345L;                                     // m
constexpr long double offset = -4.12L;                                              // m, to the left
constexpr std::pair<long double, long double> measured{4203362.959L, 512624.399L};  // m, as in both programs
constexpr double millimetre = 0.001;
constexpr double printed = 0.0015;  // m: the point and the printed figure are both rounded to the millimetre

struct Stretch {
    long double start, end;          // m from the road's start
    long double startBend, endBend;  // curvature (1/m), right positive
};
constexpr std::array<Stretch, 5> road{{{0, 120, 0, 0},
                                       {120, 180, 0, 1 / 300.0L},
                                       {180, 330, 1 / 300.0L, 1 / 300.0L},
                                       {330, 390, 1 / 300.0L, 0},
                                       {390, 500, 0, 0}}};

/// Tangent azimuth (rad) at a distance from the start.
long double Azimuth(long double distance) {
    long double azimuth = 30 * std::numbers::pi_v<long double> / 180;
    for (const Stretch& it : road) {
        const long double d = std::fmin(distance, it.end) - it.start;
        if (d <= 0) break;
        azimuth += it.startBend * d + (it.endBend - it.startBend) / (it.end - it.start) * d * d / 2;
    }
    return azimuth;
}

/// The point at distanceAlong and offset.
std::pair<long double, long double> Point() {
    constexpr int steps = 20000;
    const long double step = distanceAlong / steps;
    long double x = 4203100;
    long double y = 512400;
    for (int i = 0; i < steps; ++i) {
        for (const long double node : {0.5L - std::sqrt(3.0L) / 6, 0.5L + std::sqrt(3.0L) / 6}) {
            const long double azimuth = Azimuth((static_cast<long double>(i) + node) * step);
            x += step / 2 * std::cos(azimuth);
            y += step / 2 * std::sin(azimuth);
        }
    }
    const long double azimuth = Azimuth(distanceAlong);
    return {x - offset * std::sin(azimuth), y + offset * std::cos(azimuth)};
}

/// Design height at distanceAlong: grades of +2 and -2 per cent meet at 250 m and 105 m; the curve of 6000 m ends
/// 120 m behind that point.
double Height() {
    const long double toCurveEnd = 250 + 120 - distanceAlong;
    return static_cast<double>(105 - 0.02L * (distanceAlong - 250) - toCurveEnd * toCurveEnd / (2 * 6000));
}

std::string OutputOf(const std::string& command) {
    std::string output;
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return output;
    std::array<char, 256> line{};
    while (std::fgets(line.data(), static_cast<int>(line.size()), pipe) != nullptr) output += line.data();
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

TEST(MeasuredPoint, LiesWhereTheFiguresSay) {
    const auto [x, y] = Point();
    EXPECT_NEAR(static_cast<double>(x - measured.first), 0, millimetre);
    EXPECT_NEAR(static_cast<double>(y - measured.second), 0, millimetre);
}

class FirstProgram : public testing::TestWithParam<const char*> {};

TEST_P(FirstProgram, PrintsStationOccurrenceOffsetAndHeight) {
    const std::string output = OutputOf(GetParam());
    const std::regex form(
        "station     \\+K0\\+([0-9.]+)\n"
        "occurrence  1\n"
        "offset      ([0-9.]+) m left\n"
        "height      ([0-9.]+) m\n");
    std::smatch figures;
    ASSERT_TRUE(std::regex_match(output, figures, form)) << output;
    EXPECT_NEAR(std::stod(figures[1]), static_cast<double>(distanceAlong - 100), printed);
    EXPECT_NEAR(std::stod(figures[2]), static_cast<double>(-offset), printed);
    EXPECT_NEAR(std::stod(figures[3]), Height(), millimetre);
}

INSTANTIATE_TEST_SUITE_P(Both, FirstProgram, testing::Values(FIRST_PROGRAM_C, FIRST_PROGRAM_CPP),
                         [](const auto& program) { return std::string(program.index == 0 ? "C" : "Cpp"); });

}  // namespace
