#include "plain_reference.hpp"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace bench {

namespace {

constexpr double degree = 3.14159265358979323846 / 180;  // rad

kesto::Position Evaluate(RoadDesign* road, const Element& element, double distance) {
    kesto::Position at;
    GetElementPositionAndAzimuth(road, &element, distance, &at.x, &at.y, &at.azimuth);
    return at;
}

}  // namespace

kesto::Position WalkToPosition(RoadDesign* road, const std::vector<Element>& elements, double mileage, double offset) {
    std::size_t i = 1;
    while (i + 1 < elements.size() && mileage > elements[i].startMileage + elements[i].length) ++i;
    kesto::Position at = Evaluate(road, elements[i], mileage - elements[i].startMileage);
    at.x -= offset * std::sin(at.azimuth * degree);
    at.y += offset * std::cos(at.azimuth * degree);
    return at;
}

double WalkToContinuous(const std::vector<Element>& elements, double start, double mileage) {
    std::size_t i = 1;
    double continuous = start;
    while (i + 1 < elements.size() && mileage > elements[i].startMileage + elements[i].length) {
        continuous += std::fabs(elements[i].length);
        ++i;
    }
    return continuous + mileage - elements[i].startMileage;
}

double WalkToHeight(const std::vector<VerticalCurve>& curves, double mileage) {
    std::size_t i = 0;
    while (i + 1 < curves.size() && mileage >= curves[i + 1].startMileage) ++i;
    const VerticalCurve& curve = curves[i];
    if (i == 0 || mileage >= curve.endMileage) return curve.elevation + curve.gradeOut * (mileage - curve.mileage);
    const double gradeIn = curves[i - 1].gradeOut;
    const double fromStart = mileage - curve.startMileage;
    return curve.elevation + gradeIn * (mileage - curve.mileage) -
           curve.curveSign * fromStart * fromStart / (2 * curve.radius);
}

double EvaluateStakes(RoadDesign* road, const std::vector<Element>& elements,
                      const std::vector<StakeCoordinate>& stakes) {
    double sum = 0;
    std::size_t i = 1;
    for (const StakeCoordinate& stake : stakes) {
        while (i + 1 < elements.size() && stake.mileage > elements[i].startMileage + elements[i].length) ++i;
        const kesto::Position at = Evaluate(road, elements[i], stake.mileage - elements[i].startMileage);
        sum += at.x + at.y;
    }
    return sum;
}

std::size_t ConvertNumbers(const std::string& path) {
    std::string text(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary).read(text.data(), static_cast<std::streamsize>(text.size()));
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end;) {
        if (static_cast<unsigned char>(*at) <= ' ') {
            ++at;
            continue;
        }
        double number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error == std::errc{}) ++count;
        at = next == at ? at + 1 : next;
    }
    return count;
}

Numbers NumbersOf(const std::string& path) {
    Numbers numbers;
    std::ifstream file(path);
    for (std::string token; file >> token;) {
        char* end = nullptr;
        const double number = std::strtod(token.c_str(), &end);
        if (end == token.c_str()) continue;
        if (token.find('.') != std::string::npos) {
            numbers.reals.push_back(number);
        } else {
            numbers.integers.push_back(static_cast<int>(number));
        }
    }
    return numbers;
}

std::size_t WriteNumbers(const Numbers& numbers, const std::string& path) {
    constexpr std::size_t longest = 400;  // characters of any number
    std::string text((numbers.reals.size() + numbers.integers.size()) * 18 + longest, ' ');
    char* at = text.data();
    char* const end = at + text.size();
    for (const double real : numbers.reals) at = std::to_chars(at, end, real, std::chars_format::fixed, 8).ptr;
    for (const int integer : numbers.integers) at = std::to_chars(at, end, integer).ptr;
    std::ofstream(path, std::ios::binary).write(text.data(), at - text.data());
    return text.size();
}

}  // namespace bench
