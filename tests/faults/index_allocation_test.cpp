// An index for which memory runs out: the answers are those of the walk, and it is made once there is memory again.
#include <gtest/gtest.h>

#include <bit>
#include <initializer_list>
#include <optional>
#include <vector>

#include "alignment/element_walk.hpp"
#include "alignment/position.hpp"
#include "core/road_design.hpp"
#include "failing_allocations.hpp"
#include "support/road.hpp"

namespace kesto::test {
namespace {

using Bits = std::vector<std::uint64_t>;

void Put(Bits& bits, std::initializer_list<double> numbers) {
    for (const double number : numbers) bits.push_back(std::bit_cast<std::uint64_t>(number));
}

/// Mileages, offsets and coordinates of places that are asked for often enough for every index to be built.
void Ask(RoadDesign* road, Bits& all) {
    all.clear();
    for (double along = 3; along < 900; along += 70) {
        double x = 0, y = 0, azimuth = 0, mileage = 0, offset = 0;
        std::int32_t occurrence = -7;
        EXPECT_TRUE(GetPositionAndAzimuth(road, along, 4, 90, &x, &y, &azimuth, 0));
        EXPECT_TRUE(GetMileageAndOffset(road, x + 1, y, &mileage, &offset, &occurrence));
        Put(all, {x, y, azimuth, mileage, offset});
    }
}

/// The same by walks along the elements.
Bits Walked(const RoadDesign& road) {
    Bits all;
    for (double along = 3; along < 900; along += 70) {
        std::optional<Position> place;
        EXPECT_TRUE(FindPosition(road, {along, 0}, {4}, place));
        const Candidate foot = WalkElements(road, {place->x + 1, place->y}, {0, road.totalLength});
        Put(all, {place->x, place->y, place->azimuth, foot.mileage, foot.offset});
    }
    return all;
}

TEST(IndexAllocation, ThatFailsIsMadeUpForLater) {
    std::vector<Element> elements;
    for (int i = 0; i < 5; ++i) {
        for (const Element& element :
             {Straight(50), Spiral(left, 0, 90, 50), Arc(left, 90, 50), Spiral(left, 90, 0, 50)})
            elements.push_back(element);
    }
    int allowed = 0;
    for (bool failed = true; failed; ++allowed) {
        const Road owner = MakeRoad(elements);
        ASSERT_TRUE(DesignRoad(owner));
        RoadDesign& road = *static_cast<RoadDesign*>(owner);
        road.chainIndex = {};
        road.inverseIndex = {};
        const Bits expected = Walked(road);
        Bits got;
        got.reserve(expected.size());
        FailAllocations(allowed, Failing::ForGood);
        Ask(owner, got);
        failed = StopFailing().failed > 0;
        EXPECT_EQ(got, expected) << "allocation " << allowed + 1 << " fails";
        Ask(owner, got);
        EXPECT_EQ(got, expected);
        EXPECT_TRUE(road.inverseIndex.usable && road.chainIndex.filled) << "once there is memory again";
    }
    EXPECT_GT(allowed, 8) << "both indexes have four lists and more";
}

}  // namespace
}  // namespace kesto::test
