// The index of the inverse projection against the plain walk, and the spiral's foot against the plain bisection: bit
// for bit, on roads of every kind. KESTO_INDEX_ROUNDS=100 in the environment makes it millions of points.
#include "alignment/inverse_index.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <ostream>
#include <string>

#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "geometry/spiral_foot.hpp"
#include "support/dice.hpp"
#include "support/records.hpp"

namespace {

using kesto::Candidate;
using kesto::Point;
using kesto::Stretch;
using kesto::test::Dice;
using kesto::test::MakeElement;

int Rounds() {
    const char* const wanted = std::getenv("KESTO_INDEX_ROUNDS");
    return wanted == nullptr ? 1 : std::atoi(wanted);
}

/// How a road is made.
struct RoadKind {
    const char* name;
    double mostTurn;                                       // rad on one curve: above 3 the road runs over itself
    bool ovals;                                            // spirals between radii that hardly differ
    enum Backwards { Never, OneSpiral, Often } backwards;  // negative lengths
    bool broken;                                           // gaps, kinks, unknown types, no lengths, radii of any size

    friend void PrintTo(const RoadKind& kind, std::ostream* out) { *out << kind.name; }
};

Element RandomElement(Dice& dice, const RoadKind& kind, double x, double y, double azimuth) {
    const int type = 1 + dice.Below(3);
    const double radius = dice.LogBetween(kind.broken ? 1 : 40, kind.broken ? 1e6 : 3000);
    double length = dice.Between(5, std::min(kind.mostTurn * radius, 400.0));
    double end = dice.In(2) ? 0 : radius * dice.Between(1.1, 4);
    if (kind.ovals && dice.In(2)) end = radius * (1 + dice.LogBetween(1e-4, 0.1));
    if (kind.backwards == RoadKind::Often && dice.In(3)) length = -length;
    if (kind.broken && dice.In(12)) length = dice.In(2) ? 0 : dice.LogBetween(1e-9, 1e-2);
    const bool entry = dice.In(2);
    Element element =
        MakeElement(type, dice.In(2), entry && type == 3 ? end : radius, entry ? radius : end, length, x, y, azimuth);
    if (kind.broken && dice.In(12)) element.type = dice.Below(6);
    if (kind.broken && dice.In(12)) element.startRadius = element.endRadius = dice.In(2) ? 0 : -5;
    if (kind.broken && dice.In(6)) element.startX += dice.LogBetween(1e-8, 100);
    if (kind.broken && dice.In(6)) element.startAzimuth += dice.Between(-90, 90);
    return element;
}

void FillRoad(RoadDesign& road, Dice& dice, const RoadKind& kind, int count) {
    road.settings.startMileage = dice.Between(-100, 5000);
    const bool grid = dice.In(2);
    kesto::SetStart(road, grid ? 3412345.678 : 0, grid ? 512345.678 : 0, dice.Between(0, 360));
    double x = road.elements[0].startX;
    double y = road.elements[0].startY;
    double azimuth = road.elements[0].startAzimuth;
    double mileage = road.settings.startMileage;
    road.totalLength = 0;
    const int back = kind.backwards == RoadKind::OneSpiral ? dice.Below(count) : -1;
    for (int i = 0; i < count; ++i) {
        Element element = RandomElement(dice, kind, x, y, azimuth);
        if (i == back) element = MakeElement(3, dice.In(2), 0, 300, -dice.Between(5, 200), x, y, azimuth);
        element.startMileage = mileage;
        mileage += element.length;
        road.totalLength += std::fabs(element.length);
        road.elements.Insert(element);
        if (const auto end = kesto::Evaluate(element, element.length)) {
            x = end->x;
            y = end->y;
            azimuth = end->azimuth;
        }
    }
}

/// An edit that nothing is built anew after.
void Edit(RoadDesign& road, Dice& dice, const RoadKind& kind) {
    const int index = 1 + dice.Below(road.elements.Count() - 1);
    if (dice.In(6)) {
        const Element next = road.elements[index];
        if (dice.In(2)) {
            road.elements.Insert(RandomElement(dice, kind, next.startX, next.startY, next.startAzimuth), index);
        } else if (road.elements.Count() > 2) {
            road.elements.Remove(index);
        }
        return;
    }
    Element& element = road.elements.Edit()[static_cast<std::size_t>(index)];
    switch (dice.Below(kind.broken && dice.In(4) ? 7 : 5)) {
        case 0: element.startX += dice.Between(-50, 50); break;
        case 1: element.length *= dice.Between(0.5, 1.5); break;
        case 2: element = RandomElement(dice, kind, element.startX, element.startY, element.startAzimuth); break;
        case 3: road.settings.startMileage += dice.Between(-5, 5); break;
        case 4: element.startAzimuth += dice.Between(-5, 5); break;
        case 5: element.startY = std::nan(""); break;
        default: element.startRadius = dice.In(2) ? INFINITY : 1e200; break;
    }
}

/// A point in a band, on the line, near the start of an element, or anywhere.
Point RandomPoint(const RoadDesign& road, Dice& dice) {
    const Element& element = road.elements[1 + dice.Below(road.elements.Count() - 1)];
    const double part = dice.In(8) ? dice.Below(2) : dice.Between(0, 1);
    const auto place = kesto::Evaluate(element, element.length * part);
    const kesto::Position at = place ? *place : kesto::Position{element.startX, element.startY, 0};
    const auto beside = [&](double offset) {
        const kesto::Position moved = kesto::Moved(at, {offset});
        return Point{moved.x, moved.y};
    };
    switch (dice.Below(6)) {
        case 0: return beside(dice.Between(-500, 500));
        case 1: return beside(0);
        case 2: return beside(dice.LogBetween(1e-9, 1e-2));
        case 3: return {element.startX + dice.Between(-1e-4, 1e-4), element.startY + dice.Between(-1e-4, 1e-4)};
        case 4: return dice.In(30) ? Point{std::nan(""), at.y} : beside(dice.LogBetween(1, 1e9));
        default: return beside(dice.Between(-30, 30));
    }
}

Stretch RandomStretch(const RoadDesign& road, Dice& dice) {
    const double start = road.settings.startMileage;
    const double end = start + road.totalLength;
    if (dice.In(2)) return {start, end};
    if (dice.In(10)) return {std::nan(""), end};
    const double lower = dice.Between(start - 10, end);
    return {lower, dice.In(4) ? dice.Between(start - 10, end) : lower + dice.LogBetween(1e-3, 1000)};
}

bool IsSame(const Candidate& one, const Candidate& other) {
    const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    return bits(one.mileage) == bits(other.mileage) && bits(one.offset) == bits(other.offset) &&
           bits(one.continuous) == bits(other.continuous) && one.element == other.element;
}

class OnRoads : public testing::TestWithParam<RoadKind> {};

TEST_P(OnRoads, TheIndexFindsWhatTheWalkFinds) {
    const RoadKind& kind = GetParam();
    Dice dice(20260131);
    int told = 0;
    int asked = 0;
    for (int roads = 0; roads < 40 * Rounds(); ++roads) {
        RoadDesign road;
        FillRoad(road, dice, kind, 1 + static_cast<int>(dice.LogBetween(1, 700)));
        for (int points = 0; points < 250; ++points) {
            if (dice.In(50)) Edit(road, dice, kind);
            const Point point = RandomPoint(road, dice);
            const Stretch stretch = RandomStretch(road, dice);
            const Candidate expected = kesto::WalkElements(road, point, stretch);
            const Candidate found = kesto::NearestOnRoad(road, point, stretch);
            const kesto::InverseIndex& index = kesto::CurrentInverseIndex(road);
            ++asked;
            Candidate nearest;
            if (index.usable && kesto::SearchIndex(road, index, point, stretch, nearest)) ++told;
            ASSERT_TRUE(IsSame(expected, found))
                << std::hexfloat << "road " << roads << " point " << points << " (" << point.x << ", " << point.y
                << ") from " << stretch.lower << " to " << stretch.upper << ": element " << expected.element << " at "
                << expected.offset << ", not " << found.element << " at " << found.offset;
            if (found.element < 0) continue;
            const kesto::LikelyPlace likely{found.element, found.running, found.highestBefore};
            ASSERT_EQ(kesto::StakeMileageAt(road, found.continuous, likely).occurrence,
                      kesto::StakeMileageAt(road, found.continuous).occurrence)
                << "road " << roads << " point " << points;
        }
    }
    EXPECT_GT(told, asked * (kind.broken ? 0.75 : 0.95)) << "the index must be what is tested";
}

/// A point whose foot the spiral mostly holds: on it, beside it and beyond its centre of curvature; or next to the
/// normal at its start, where what counts as the start ends.
Point PointAt(const Element& spiral, double radius, Dice& dice) {
    const double side = dice.In(2) ? 1 : -1;
    const double reach = dice.In(2) ? dice.LogBetween(1e-8, 2000) : radius * dice.LogBetween(0.01, 100);
    const bool anywhere = dice.In(4);
    const auto at = kesto::Evaluate(spiral, anywhere ? spiral.length * dice.Between(0, 1) : 0);
    const kesto::Position moved = kesto::Moved(*at, {dice.In(8) ? 0 : side * reach});
    if (anywhere) return {moved.x, moved.y};
    const double shift = (dice.In(2) ? 1 : -1) * dice.LogBetween(1e-9, 1e-5);
    const kesto::Heading heading = kesto::HeadingOf(spiral.startAzimuth);
    return {moved.x + shift * heading.cosine, moved.y + shift * heading.sine};
}

TEST(SpiralFoot, IsThatOfThePlainBisection) {
    Dice dice(7);
    int feet = 0;
    for (int spirals = 0; spirals < 400 * Rounds(); ++spirals) {
        RoadDesign road;
        kesto::SetStart(road, 0, 0, 0);
        const double radius = dice.In(2) ? dice.LogBetween(0.001, 100) : dice.LogBetween(20, 5000);
        const double other = dice.In(2) ? 0 : radius * (1 + dice.LogBetween(1e-3, 5));
        const bool entry = dice.In(2);
        const bool grid = dice.In(2);
        road.elements.Insert(MakeElement(3, dice.In(2), entry ? other : radius, entry ? radius : other,
                                         dice.LogBetween(radius * 0.005, std::min(radius, 300.0)), grid ? 4539456.4 : 0,
                                         grid ? 452413.9 : 0, dice.Between(0, 360)));
        const Element& element = road.elements[1];
        const kesto::InverseIndex& index = kesto::CurrentInverseIndex(road);
        if (index.spirals.empty()) continue;  // its end cannot be evaluated
        for (int points = 0; points < 60; ++points) {
            const Point point = PointAt(element, radius, dice);
            if (kesto::IsAtStart(kesto::StartOf(element), point)) continue;
            const auto expected = kesto::ProjectOnSpiral(element, point);
            const auto looks = kesto::LookFromEnds(index.spirals[0], point);
            const auto found = kesto::FootOnSpiral(element, index.spirals[0], looks, point);
            ASSERT_EQ(found.has_value(), expected.has_value()) << spirals << " " << points;
            if (!found) continue;
            ++feet;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(found->along), std::bit_cast<std::uint64_t>(expected->along))
                << spirals << " " << points;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(found->offset), std::bit_cast<std::uint64_t>(expected->offset))
                << spirals << " " << points;
        }
    }
    EXPECT_GT(feet, 8000 * Rounds());
}

// A limit that becomes the result keeps the sign of its zero.
TEST(SearchLimits, AreKeptAsTheyArePassed) {
    RoadDesign road;
    road.settings.roadDesignMode = 1;
    kesto::SetStart(road, 0, 0, 0);
    road.elements.Insert(MakeElement(1, false, 0, 0, 100, 0, 0, 0));
    for (const double upper : {0.0, -0.0}) {
        std::optional<kesto::Located> located;
        static_cast<void>(kesto::LocateBetween(road, {-5, 0}, {50, 0}, {upper, 0}, located));
        ASSERT_TRUE(located);
        EXPECT_EQ(std::signbit(located->stake.mileage), std::signbit(upper));
    }
    for (const double start : {0.0, -0.0, 0.0}) {
        road.settings.startMileage = start;
        std::optional<kesto::Located> located;
        static_cast<void>(kesto::Locate(road, {50, 5}, located));
        EXPECT_EQ(std::signbit(road.roadLimits.lower.mileage), std::signbit(start));
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, OnRoads,
                         testing::Values(RoadKind{"Designed", 1, false, RoadKind::Never, false},
                                         RoadKind{"Looping", 6, false, RoadKind::Never, false},
                                         RoadKind{"Ovals", 1, true, RoadKind::Never, false},
                                         RoadKind{"OneBackSpiral", 1, false, RoadKind::OneSpiral, false},
                                         RoadKind{"Falling", 2, true, RoadKind::Often, false},
                                         RoadKind{"HalfEdited", 6, true, RoadKind::Often, true}),
                         [](const auto& kind) { return std::string(kind.param.name); });

}  // namespace
