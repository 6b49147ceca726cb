#include "road/curves.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <utility>

#include "road/conventions.hpp"

namespace kesto::host {

namespace {

constexpr double samePlace = 1e-6;  // m along the road: a stake as near as this to a curve's point is its main point
constexpr double degree = std::numbers::pi / 180;
constexpr double fullCircle = 360;  // degrees

/// The main-point stakes by their continuous mileages, ascending.
class MainPoints {
public:
    explicit MainPoints(RoadDesign* road) {
        StakeCoordinate stake{};
        for (std::int32_t i = 0; GetStakeCoordinate(road, i, &stake); ++i) {
            const auto continuous = ContinuousMileage(road, {stake.mileage, stake.occurrence});
            if (stake.label[0] == '\0' || !continuous) continue;
            points.push_back({*continuous, {stake.label, {stake.mileage, stake.occurrence}}});
        }
        std::stable_sort(points.begin(), points.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    }

    /// The main point at a place; without a label where there is no such stake.
    [[nodiscard]] MainPoint At(const RoadLine& line, double continuous) const {
        const auto found = std::lower_bound(points.begin(), points.end(), continuous - samePlace,
                                            [](const auto& point, double wanted) { return point.first < wanted; });
        if (found != points.end() && found->first < continuous + samePlace) return found->second;
        return {"", line.At(continuous).stake};
    }

private:
    std::vector<std::pair<double, MainPoint>> points;
};

/// The pieces of every intersection's curve, in order of travel.
std::vector<std::vector<const Piece*>> PiecesByIntersection(RoadDesign* road, const RoadLine& line, std::size_t count) {
    std::vector<std::vector<const Piece*>> pieces(count);
    for (const Piece& piece : line.Pieces()) {
        if (piece.element.type == straightType) continue;
        const Stake middle = line.At(piece, piece.Length() / 2).stake;
        const std::int32_t index = GetIntersectionIndex(road, middle.mileage, middle.occurrence);
        if (index > 0 && static_cast<std::size_t>(index) < count) {
            pieces[static_cast<std::size_t>(index)].push_back(&piece);
        }
    }
    return pieces;
}

std::optional<double> External(RoadDesign* road, const Intersection& at, const Stake& begin, const Stake& end) {
    double mileage = 0;
    double offset = 0;
    std::int32_t occurrence = 0;
    const bool found = GetMileAndOffsetInLim(road, at.x, at.y, begin.mileage, begin.occurrence, end.mileage,
                                             end.occurrence, &mileage, &offset, &occurrence);
    return found ? std::optional(std::fabs(offset)) : std::nullopt;
}

Curve CurveOf(RoadDesign* road, const RoadLine& line, const MainPoints& mainPoints, const Intersection& at,
              const std::vector<const Piece*>& pieces) {
    const auto endOf = [](const Piece* piece) { return piece->from + piece->Length(); };
    const CentrePoint begin = line.At(*pieces.front(), 0);
    const CentrePoint end = line.At(*pieces.back(), pieces.back()->Length());
    Curve curve{};
    curve.tangentIn = std::hypot(at.x - begin.x, at.y - begin.y);
    curve.tangentOut = std::hypot(at.x - end.x, at.y - end.y);
    for (const Piece* piece : pieces) curve.length += piece->Length();
    curve.external = External(road, at, begin.stake, end.stake);
    curve.points[curveBegin] = mainPoints.At(line, pieces.front()->from);
    curve.points[curveEnd] = mainPoints.At(line, endOf(pieces.back()));
    const auto isArc = [](const Piece* piece) { return piece->element.type == arcType; };
    const auto first = std::find_if(pieces.begin(), pieces.end(), isArc);
    if (first == pieces.end()) return curve;
    const auto last = std::find_if(pieces.rbegin(), pieces.rend(), isArc);
    curve.points[arcMiddle] = mainPoints.At(line, ((*first)->from + endOf(*last)) / 2);
    if (first != pieces.begin()) curve.points[arcBegin] = mainPoints.At(line, (*first)->from);
    if (last != pieces.rbegin()) curve.points[arcEnd] = mainPoints.At(line, endOf(*last));
    return curve;
}

PolygonSide SideBetween(const IntersectionFigures& from, const IntersectionFigures& to) {
    const double x = to.record.x - from.record.x;
    const double y = to.record.y - from.record.y;
    const double length = std::hypot(x, y);
    const double azimuth = std::atan2(y, x) / degree;
    const double curves = (from.curve ? from.curve->tangentOut : 0) + (to.curve ? to.curve->tangentIn : 0);
    return {length, std::max(length - curves, 0.0), azimuth < 0 ? azimuth + fullCircle : azimuth};
}

}  // namespace

std::vector<Intersection> IntersectionsOf(RoadDesign* road) {
    std::vector<Intersection> records;
    Intersection record{};
    if (GetRoadDesignMode(road) != intersectionMode) return records;
    for (std::int32_t i = 0; GetIntersection(road, i, &record); ++i) records.push_back(record);
    return records;
}

std::string IntersectionName(const Intersection& record, std::size_t index) {
    const std::string name(record.name, strnlen(record.name, sizeof record.name));
    return name.empty() ? std::to_string(index + 1) : name;
}

std::vector<IntersectionFigures> FiguresOfIntersections(RoadDesign* road, const RoadLine& line) {
    std::vector<IntersectionFigures> all;
    for (const Intersection& record : IntersectionsOf(road)) {
        all.push_back({record, IntersectionName(record, all.size()), {}, {}, {}});
    }
    const MainPoints mainPoints(road);
    const auto pieces = PiecesByIntersection(road, line, all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!pieces[i].empty()) all[i].curve = CurveOf(road, line, mainPoints, all[i].record, pieces[i]);
    }
    for (std::size_t i = 0; i + 1 < all.size(); ++i) {
        all[i].side = SideBetween(all[i], all[i + 1]);
        if (i == 0) continue;
        all[i].deflection = std::remainder(all[i].side->azimuth - all[i - 1].side->azimuth, fullCircle);
    }
    return all;
}

}  // namespace kesto::host
