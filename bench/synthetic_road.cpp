#include "synthetic_road.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace bench {

namespace {

constexpr double degree = 3.14159265358979323846 / 180;  // rad
constexpr double leastArc = 20;                          // m

}  // namespace

double Random::Between(double lower, double upper) noexcept {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return lower + (upper - lower) * static_cast<double>(state >> 11U) * 0x1p-53;
}

kesto::Road Highway(int elements) {
    Random random(20240229);
    kesto::Road road;
    road.Start(3412345.678, 512345.678, 0);
    double heading = 0;  // degrees from the main direction
    double side = 1;
    for (int i = 0; i < elements; i += 4) {
        const double turned = std::fabs(side * random.Between(10, 55) - heading) * degree;
        double radius = std::exp(random.Between(std::log(250), std::log(3000)));
        const double spiral = random.Between(60, 200);
        radius = std::max(radius, (spiral + leastArc) / turned);
        const auto turn = side > 0 ? kesto::Turn::Right : kesto::Turn::Left;
        road.Straight(random.Between(100, 900));
        if (i + 1 < elements) road.Spiral(0, radius, spiral, turn);
        if (i + 2 < elements) road.Arc(radius, radius * turned - spiral, turn);
        if (i + 3 < elements) road.Spiral(radius, 0, spiral, turn);
        heading += side * turned / degree;
        side = -side;
    }
    if (!road.Design()) throw std::runtime_error("the synthetic road cannot be designed");
    return road;
}

kesto::Road FurnishedHighway(int elements) {
    constexpr int elementsEach = 10;
    Random random(11);
    kesto::Road road = Highway(elements);
    road.Plate(kesto::Side::Right, 3.75, -2.5).Plate(kesto::Side::Right, 1.5, -4);
    const double length = GetRoadMileage(road.Handle(), nullptr);
    const int places = elements / elementsEach;
    for (int i = 0; i < places; ++i) {
        const double mileage = (i + random.Between(0, 1)) * length / places;
        road.GradePoint(mileage, random.Between(100, 900), random.Between(2000, 20000));
        road.Change(kesto::Side::Right, kesto::ChangeOf::CrossSlope, mileage, {random.Between(-6, 6), -4});
    }
    return road;
}

std::vector<Query> Queries(kesto::Road& road, double band, std::size_t count) {
    Random random(7);
    const double length = GetRoadMileage(road.Handle(), nullptr);
    std::vector<Query> queries(count);
    for (Query& query : queries) {
        query.mileage = random.Between(0, length);
        query.offset = random.Between(-band, band);
        const kesto::Position point = road.At(query.mileage, query.offset).value();
        query.x = point.x;
        query.y = point.y;
    }
    return queries;
}

}  // namespace bench
