/// A road computed a second time, by its own formulas in extended precision: what the library is compared with.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "curve.hpp"
#include "design.hpp"

namespace kesto::second {

struct Stake {
    Real mileage{};
    std::int32_t occurrence{};
};

struct Foot {
    bool admitted{};  // some curve has a foot, or its start, between the limits
    bool certain{};   // no other place is as near, and no curve was left open
    Real continuous{}, offset{};
    Real stretched{1};  // 1 - curvature * offset
    bool spiral{};
};

struct MainPoint {
    std::string name, label;
    Stake stake;
    Plane at;
};

/// A curve of the road with points all along it, to see how often the foot of a point passes over it.
struct Piece : Curve {
    static constexpr std::size_t steps = 16;
    std::array<Plane, steps + 1> points{}, directions{};

    explicit Piece(const Curve& curve);
    Real Step() const { return length / static_cast<Real>(steps); }
};

class SecondRoad {
public:
    explicit SecondRoad(const Design& given);

    const std::vector<Curve>& Curves() const { return curves; }  // before the broken chains
    Real Start() const { return curves.front().continuous; }
    Real End() const { return curves.back().continuous + curves.back().length; }

    Stake StakeAt(Real continuous) const;
    std::optional<Real> ContinuousAt(Stake stake) const;
    Plane PointAt(Real continuous, Real offset, Real angle = 90) const;
    Real AzimuthAt(Real continuous) const;  // degrees
    Foot FootOf(Plane point, Real lower, Real upper) const;

    Real HeightAt(Real continuous) const;
    std::optional<Real> HeightAt(Real continuous, Real offset) const;
    /// The plates of a side with the outer edges.
    std::vector<SectionPlate> SideAt(Real continuous, std::size_t side) const;

    std::vector<MainPoint> Stakes() const;

private:
    const Piece& PieceAt(Real continuous) const;
    MainPoint MakeStake(const Piece& piece, Real along, const std::string& label) const;
    Real Value(Real continuous, std::int32_t side, std::int32_t kind, std::size_t plate) const;

    const Design& design;
    std::vector<Curve> curves;
    std::vector<Piece> pieces;  // of one curve and one count of stakes each
};

}  // namespace kesto::second
