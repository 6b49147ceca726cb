// Laws that hold on every road: forward and back again, mirrored roads, and breaks that move no point.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "road.hpp"

namespace kesto::test {
namespace {

constexpr double mostHeading = 60;  // degrees from the road's axis: such a road never comes near itself again

/// Random roads of straights, arcs and spirals, tangents continuous, radii from 100 m.
class RandomRoads : public testing::TestWithParam<unsigned> {
protected:
    RandomRoads() { RecordProperty("seed", static_cast<int>(GetParam())); }

    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine); }
    int Pick(int choices) { return std::uniform_int_distribution<int>(0, choices - 1)(engine); }

    std::vector<Element> RandomElements() {
        std::vector<Element> elements = {Straight(Between(20, 200))};
        double heading = 0;  // degrees, positive to the right
        for (int i = 0; i < 6; ++i) {
            const std::uint8_t turn = heading > 0 ? left : right;
            std::vector<Element> curve = RandomCurve(turn);
            double angle = 0;
            for (const Element& element : curve) angle += TurnOf(element);
            const double after = heading + (turn == right ? angle : -angle);
            if (std::fabs(after) > mostHeading) continue;
            heading = after;
            elements.insert(elements.end(), curve.begin(), curve.end());
            if (Pick(2) == 0) elements.push_back(Straight(Between(5, 150)));
        }
        return elements;
    }

    static double Curvature(double radius) { return radius > 0 ? 1 / radius : 0; }

    static double TurnOf(const Element& element) {
        if (element.type == 1) return 0;
        const double mean = (Curvature(element.startRadius) + Curvature(element.endRadius)) / 2;
        return mean * element.length * 180 / std::numbers::pi;
    }

    Start RandomStart() { return {Between(-5000, 5000), Between(-5000, 5000), Between(0, 360), Between(-500, 500)}; }

    std::mt19937 engine{GetParam()};

private:
    std::vector<Element> RandomCurve(std::uint8_t turn) {
        const double radius = Between(100, 900);
        const double other = Between(100, 900);
        switch (Pick(3)) {
            case 0: return {Arc(turn, radius, Between(10, 0.8 * radius))};
            case 1:
                return {Spiral(turn, 0, radius, Between(20, 80)), Arc(turn, radius, Between(5, 0.5 * radius)),
                        Spiral(turn, radius, 0, Between(20, 80))};
            default:
                return {Spiral(turn, 0, radius, Between(20, 60)), Spiral(turn, radius, other, Between(20, 60)),
                        Spiral(turn, other, 0, Between(20, 60))};
        }
    }
};

/// How closely the projection of a point at `along` and `offset` comes back (m). The spiral's foot is found by an angle
/// test in single precision, and a point within 1e-7 of a bracket's end counts as that end.
double ClosingTolerance(const Element& element, double along, double offset) {
    constexpr double plainTolerance = 1e-7;    // m
    constexpr double spiralAngle = 1.5e-7;     // rad
    constexpr double spiralDistance = 1.1e-7;  // m
    if (element.type != 3) return plainTolerance;
    const auto curvature = [](double radius) { return radius > 0 ? 1 / radius : 0; };
    const double share = along / element.length;
    const double here = (1 - share) * curvature(element.startRadius) + share * curvature(element.endRadius);
    const double towardsCentre = element.turnDirection == left ? -offset : offset;
    return spiralAngle * std::fabs(offset) / std::fabs(1 - here * towardsCentre) + spiralDistance;
}

TEST_P(RandomRoads, ForwardThenInverseCloses) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    const Road road = MakeRoad(RandomElements(), RandomStart());
    ASSERT_TRUE(DesignRoad(road));
    for (const Element& element : Elements(road)) {
        if (element.type == 0) continue;
        for (int i = 0; i < 20; ++i) {
            const double along = Between(0.001, element.length - 0.001);
            const double mileage = element.startMileage + along;
            const double offset = i == 0 ? 0 : Between(-25, 25);
            const Point point = PointAt(road, mileage, offset);
            ASSERT_TRUE(point.found);
            const Foot foot = FootOf(road, point.x, point.y);
            SCOPED_TRACE("type " + std::to_string(element.type) + ", along " + std::to_string(along) + ", offset " +
                         std::to_string(offset));
            const double tolerance = ClosingTolerance(element, along, offset);
            ASSERT_TRUE(foot.found);
            EXPECT_NEAR(foot.mileage, mileage, tolerance);
            EXPECT_NEAR(foot.offset, offset, tolerance);
            EXPECT_EQ(foot.occurrence, 0);
        }
    }
}

TEST_P(RandomRoads, MirroredRoadHasMirroredPoints) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    constexpr double rounding = 1e-9;  // m and degrees
    const std::vector<Element> elements = RandomElements();
    std::vector<Element> mirrored = elements;
    for (Element& element : mirrored) element.turnDirection = element.turnDirection == left ? right : left;
    const Start start = RandomStart();
    const Road road = MakeRoad(elements, start);
    const Road mirror = MakeRoad(mirrored, {start.x, -start.y, 360 - start.azimuth, start.mileage});
    ASSERT_TRUE(DesignRoad(road));
    ASSERT_TRUE(DesignRoad(mirror));
    const double end = GetRoadMileage(road, nullptr);
    EXPECT_NEAR(GetRoadMileage(mirror, nullptr), end, rounding);
    for (int i = 0; i < 100; ++i) {
        const double mileage = Between(start.mileage, end);
        const double offset = Between(-30, 30);
        const double angle = Between(0, 180);
        const Point point = PointAt(road, mileage, offset, 0, angle);
        const Point image = PointAt(mirror, mileage, -offset, 0, 180 - angle);
        ASSERT_TRUE(point.found && image.found);
        EXPECT_NEAR(image.x, point.x, rounding) << mileage;
        EXPECT_NEAR(image.y, -point.y, rounding) << mileage;
        EXPECT_NEAR(std::remainder(image.azimuth + point.azimuth, 360.0), 0, rounding) << mileage;
    }
}

/// The point at a continuous mileage, by way of the element that it lies on and the occurrence that answers to it.
Point PointAtContinuous(RoadDesign* road, const std::vector<Element>& elements, double start, double continuous) {
    double running = start;
    for (std::size_t i = 1; i < elements.size(); ++i) {
        const double along = continuous - running;
        running += elements[i].length;
        if (running < continuous) continue;
        for (std::int32_t occurrence = 0; occurrence < 6; ++occurrence) {
            const double stake = elements[i].startMileage + along;
            const auto found = Continuous(road, stake, occurrence);
            if (found && std::fabs(*found - continuous) < 1e-6) return PointAt(road, stake, 0, occurrence);
        }
    }
    return {};
}

TEST_P(RandomRoads, BreaksMoveNoPoint) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    constexpr double unmoved = 1e-9;  // m
    const std::vector<Element> elements = RandomElements();
    const Start start = RandomStart();
    const Road whole = MakeRoad(elements, start);
    const Road broken = MakeRoad(elements, start);
    ASSERT_TRUE(UpdateData(whole));
    double length = 0;
    for (const Element& element : elements) length += element.length;
    double back = start.mileage;
    double ahead = back;
    for (int i = 0; i < 3; ++i) {  // each break lies behind the place that the one before jumped to
        back = std::max(back, ahead) + Between(0.1, 0.2) * length;
        ahead = back + Between(-0.05, 0.05) * length;
        AddChain(broken, back, ahead);
    }
    ASSERT_TRUE(UpdateData(broken));
    ASSERT_GT(GetElementCount(broken), GetElementCount(whole));
    for (const bool designed : {false, true}) {
        if (designed) {
            ASSERT_TRUE(DesignRoad(broken));
        }
        const std::vector<Element> pieces = Elements(broken);
        for (int i = 0; i < 100; ++i) {
            const double continuous = start.mileage + Between(0.0001, 0.9999) * length;
            const Point expected = PointAt(whole, continuous);
            const Point point = PointAtContinuous(broken, pieces, start.mileage, continuous);
            ASSERT_TRUE(expected.found && point.found) << continuous;
            EXPECT_NEAR(point.x, expected.x, unmoved) << continuous << (designed ? " designed" : " as built");
            EXPECT_NEAR(point.y, expected.y, unmoved) << continuous << (designed ? " designed" : " as built");
            EXPECT_NEAR(std::remainder(point.azimuth - expected.azimuth, 360.0), 0, unmoved);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRoads, testing::Range(1U, 31U));

}  // namespace
}  // namespace kesto::test
