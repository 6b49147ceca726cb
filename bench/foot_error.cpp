#include "foot_error.hpp"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

constexpr double sameDistance = 1e-2;  // m: a foot that is so much nearer is another one

double Distance(PlanePoint one, PlanePoint other) { return std::hypot(one.x - other.x, one.y - other.y); }

PlanePoint CentrePoint(kesto::Road& road, double mileage) {
    const kesto::Position at = road.At(mileage).value();
    return {at.x, at.y};
}

}  // namespace

double WorstError(kesto::Road& road, const std::vector<Query>& queries,
                  const std::function<PlanePoint(const Query&)>& foot) {
    double worst = 0;
    for (const Query& it : queries) {
        const PlanePoint found = foot(it);
        if (Distance(found, {it.x, it.y}) < std::fabs(it.offset) - sameDistance) continue;
        worst = std::max(worst, Distance(found, CentrePoint(road, it.mileage)));
    }
    return worst;
}

double WorstLibraryError(kesto::Road& road, const std::vector<Query>& queries) {
    return WorstError(road, queries,
                      [&](const Query& it) { return CentrePoint(road, road.Locate(it.x, it.y).value().mileage); });
}

}  // namespace bench
