#include "geometry/projection.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "support/quadrature.hpp"

using kesto::Foot;
using kesto::Point;
using kesto::test::MakeElement;

namespace {

struct FootCase {
    const char* name;
    Element element;
    Point point;
    std::optional<Foot> expected;
};

const double pi = std::acos(-1.0);

TEST(Projection, StraightsAndArcs) {
    const Element north = MakeElement(1, false, 0, 0, 100);
    const Element left = MakeElement(2, false, 50, 0, 25 * pi);  // from (0, 0) north, centre (0, -50), to (50, -50)
    const Element right = MakeElement(2, true, 50, 0, 25 * pi);  // its mirror image
    const Element circle = MakeElement(2, true, 50, 0, 100 * pi);
    const FootCase cases[] = {
        {"right of a straight", north, {30, 7}, Foot{30, 7}},
        {"left of a straight", north, {30, -7}, Foot{30, -7}},
        {"start, by the sum of differences", north, {6e-5, 3e-5}, Foot{0, 0}},
        {"no longer the start", north, {6e-5, 5e-5}, Foot{6e-5, 5e-5}},
        {"behind a straight", north, {-1, 3}, std::nullopt},
        {"beyond a straight", north, {100.001, 3}, std::nullopt},
        {"straight without a length", MakeElement(1, false, 0, 0, 0), {3, 4}, std::nullopt},
        {"straight run backwards", MakeElement(1, false, 0, 0, -100), {-30, 4}, std::nullopt},
        {"outside a left arc", left, {60 * std::sqrt(0.5), -50 + 60 * std::sqrt(0.5)}, Foot{12.5 * pi, 10}},
        {"inside a left arc", left, {40 * std::sqrt(0.5), -50 + 40 * std::sqrt(0.5)}, Foot{12.5 * pi, -10}},
        {"outside a right arc", right, {60 * std::sqrt(0.5), 50 - 60 * std::sqrt(0.5)}, Foot{12.5 * pi, -10}},
        {"inside a right arc", right, {40 * std::sqrt(0.5), 50 - 40 * std::sqrt(0.5)}, Foot{12.5 * pi, 10}},
        {"beyond an arc", right, {60, 100}, std::nullopt},
        {"on the radius through an arc's start", right, {0, 10}, std::nullopt},
        {"the same on a full circle", circle, {0, 10}, Foot{100 * pi, 10}},
        {"arc without a radius", MakeElement(2, true, 0, 0, 100), {30, 7}, Foot{30, 7}},
        {"unknown type", MakeElement(8, true, 0, 0, 100), {30, 7}, std::nullopt},
        {"start record", MakeElement(0, true, 0, 0, 0), {0, 0}, std::nullopt},
    };
    for (const FootCase& it : cases) {
        const std::optional<Foot> foot = kesto::Project(it.element, it.point);
        ASSERT_EQ(foot.has_value(), it.expected.has_value()) << it.name;
        if (!foot) continue;
        EXPECT_NEAR(foot->along, it.expected->along, 1e-10) << it.name;
        EXPECT_NEAR(foot->offset, it.expected->offset, 1e-10) << it.name;
    }
}

TEST(Projection, SpiralsWithoutAFoot) {
    EXPECT_FALSE(kesto::Project(MakeElement(3, true, 100, 100, 50), {10, 3}));
    EXPECT_FALSE(kesto::Project(MakeElement(3, true, 0, 100, 50), {-10, 3})) << "behind the start";
    EXPECT_TRUE(kesto::Project(MakeElement(3, true, 0, 100, 50), {std::nan(""), 3})) << "must end";
}

}  // namespace
