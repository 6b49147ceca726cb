#include "road/road_line.hpp"

#include <algorithm>
#include <cmath>

#include "road/conventions.hpp"
#include "road/failure_text.hpp"
#include "terminal/problem.hpp"

namespace kesto::host {

namespace {

constexpr double sameResult = 1e-6;    // m: two evaluations of one point
constexpr double smallestJump = 1e-6;  // m: below it a difference of stake mileages is rounding

}  // namespace

std::optional<double> ContinuousMileage(RoadDesign* road, const Stake& stake) {
    double mileage = stake.mileage;
    return GetSrcMileage(road, &mileage, stake.occurrence) ? std::optional(mileage) : std::nullopt;
}

std::string PlaceName(RoadDesign* road, const Stake& stake) {
    return FormatMileage(road, stake) + " (occurrence " + std::to_string(stake.occurrence) + ")";
}

std::string NotOnRoad(RoadDesign* road, const Stake& stake) {
    return PlaceName(road, stake) + " is not on the road: " + DescribeLastFailure(road);
}

RoadPlace ResolvePlace(RoadDesign* road, std::string_view text, std::optional<int> occurrence,
                       const std::string& name) {
    const Stake stake = ResolveMileage(road, text, occurrence, name);
    if (const auto continuous = ContinuousMileage(road, stake)) return {stake, *continuous};
    throw Problem(ExitCode::Data, name + " " + NotOnRoad(road, stake));
}

double Piece::Length() const noexcept { return std::fabs(element.length); }

double Piece::MileageAt(double distance) const noexcept {
    return element.startMileage + (element.length < 0 ? -distance : distance);
}

RoadLine::RoadLine(RoadDesign* designed) : road(designed), hasProfile(GetVerticalCurveCount(designed) > 0) {
    GetRoadMileage(road, &start);
    Element element{};
    for (std::int32_t i = 1; GetElement(road, i, &element); ++i) {
        pieces.push_back({element, start + total});
        total += pieces.back().Length();
    }
    if (pieces.empty()) throw Problem(ExitCode::Road, "the road has no elements");
}

CentrePoint RoadLine::At(const Piece& piece, double distance) const {
    CentrePoint point{{piece.MileageAt(distance), 0}, piece.from + distance, 0, 0, 0};
    const double along = piece.element.length < 0 ? -distance : distance;
    if (!GetElementPositionAndAzimuth(road, &piece.element, along, &point.x, &point.y, &point.azimuth)) {
        throw Problem(ExitCode::Road, "the road cannot be evaluated at " + FormatMileage(road, point.stake) + ": " +
                                          DescribeLastFailure(road));
    }
    double x = 0;
    double y = 0;
    double azimuth = 0;
    for (std::int32_t k = 0; GetPositionAndAzimuth(road, point.stake.mileage, 0, squareOffset, &x, &y, &azimuth, k);
         ++k) {
        if (std::fabs(x - point.x) > sameResult || std::fabs(y - point.y) > sameResult) continue;
        point.stake.occurrence = k;
        break;
    }
    return point;
}

CentrePoint RoadLine::At(double continuous) const {
    continuous = std::clamp(continuous, Start(), End());
    auto next = std::upper_bound(pieces.begin(), pieces.end(), continuous,
                                 [](double value, const Piece& piece) { return value < piece.from; });
    if (next != pieces.begin()) --next;
    return At(*next, std::clamp(continuous - next->from, 0.0, next->Length()));
}

std::optional<CentrePoint> RoadLine::At(const Stake& stake) const {
    CentrePoint point{stake, stake.mileage, 0, 0, 0};
    const bool found = GetPositionAndAzimuth(road, stake.mileage, 0, squareOffset, &point.x, &point.y, &point.azimuth,
                                             stake.occurrence) &&
                       GetSrcMileage(road, &point.continuous, stake.occurrence);
    return found ? std::optional(point) : std::nullopt;
}

std::vector<Break> RoadLine::Breaks() const {
    std::vector<Break> breaks;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        const Piece& piece = pieces[i];
        const double back = pieces[i - 1].MileageAt(pieces[i - 1].Length());
        if (std::fabs(piece.element.startMileage - back) < smallestJump) continue;
        breaks.push_back({piece.from, back, piece.element.startMileage, piece.element.startX, piece.element.startY,
                          piece.element.startAzimuth});
    }
    return breaks;
}

std::map<double, ChainEffect> RoadLine::ChainEffects(double givenStart) const {
    std::vector<BrokenChain> chains(static_cast<std::size_t>(GetBrokenChainCount(road)));
    for (std::size_t k = 0; k < chains.size(); ++k) GetBrokenChain(road, static_cast<std::int32_t>(k), &chains[k]);
    std::map<double, ChainEffect> effects;
    for (const BrokenChain& it : chains) {
        if (std::fabs(start - givenStart) < sameMileage) continue;
        if (std::fabs(it.backMileage - givenStart) >= sameMileage) continue;
        effects[it.backMileage] = {true, false, true, givenStart, start};
    }
    // The same walk as the design run's: each element, from the start record on, takes the first chain that lies on it,
    // and the next element a later chain. The design run has cut the elements, so each ends at the chain that it took.
    auto rest = chains.cbegin();
    Element element{};
    Element next{};
    for (std::int32_t i = 0; GetElement(road, i, &element); ++i) {
        const double end = element.startMileage + element.length;
        const auto chain = std::partition_point(rest, chains.cend(), [&](const BrokenChain& it) {
            return it.backMileage <= element.startMileage - sameMileage;
        });
        if (chain == chains.cend() || chain->backMileage >= end + sameMileage) continue;
        const bool jumps =
            GetElement(road, i + 1, &next) && std::fabs(chain->aheadMileage - chain->backMileage) >= sameMileage;
        const ChainEffect effect{i == 0, end - chain->backMileage > beyondTolerance, jumps, end, next.startMileage};
        effects.insert({chain->backMileage, effect});
        rest = chain + 1;
    }
    return effects;
}

void RoadLine::ForEachMultiple(double step, const std::function<void(const CentrePoint&)>& visit) const {
    visit(At(pieces.front(), 0));
    for (const Piece& piece : pieces) {
        const double sign = piece.element.length < 0 ? -1 : 1;
        const double first = std::ceil((sign * piece.element.startMileage - sameMileage) / step);
        for (std::int64_t count = 0;; ++count) {
            const double multiple = (first + static_cast<double>(count)) * step;
            const double distance = std::max(multiple - sign * piece.element.startMileage, 0.0);
            if (distance > piece.Length() - sameMileage) break;
            const bool atStart = piece.from + distance - start < sameMileage;
            if (!atStart) visit(At(piece, distance < sameMileage ? 0 : distance));
        }
    }
    visit(At(pieces.back(), pieces.back().Length()));
}

std::optional<double> RoadLine::HeightAt(const Stake& stake, double offset) const {
    double height = 0;
    if (!hasProfile || !GetHeight(road, stake.mileage, stake.occurrence, offset, &height)) return std::nullopt;
    return height;
}

const char* ElementName(const Element& element) noexcept {
    switch (element.type) {
        case straightType: return "straight";
        case arcType: return "arc";
        case spiralType: return "spiral";
        default: return "other";
    }
}

}  // namespace kesto::host
