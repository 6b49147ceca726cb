/// Roads made at random, with everything that queries read, and questions that some of them cannot answer.
#pragma once

#include <limits>

#include "support/dice.hpp"
#include "support/road.hpp"

namespace kesto::test {

/// Elements of all kinds with broken chains, backward ones among them, a profile and widened plates; designed.
inline Road RandomRoad(Dice& dice) {
    std::vector<Element> elements;
    for (int i = 0; i < 12; ++i) {
        const std::uint8_t turn = dice.In(2) ? left : right;
        const double radius = dice.Between(150, 900);
        elements.push_back(Straight(dice.Between(50, 300)));
        elements.push_back(Spiral(turn, 0, radius, dice.Between(30, 90)));
        elements.push_back(Arc(turn, radius, dice.Between(30, 250)));
        elements.push_back(Spiral(turn, radius, 0, dice.Between(30, 90)));
    }
    Road road = MakeRoad(elements, {5000, 7000, dice.Between(0, 360), 100});
    for (const double back : {700.0, 1900.0, 3100.0}) AddChain(road, back, back + dice.Between(-150, 150));
    EXPECT_TRUE(UpdateData(road));
    SetSectionMode(road, 0);
    AddGradePoints(road, {GradePoint(150, 100), GradePoint(900, 112, 4000), GradePoint(1500, 104, 3000)});
    EXPECT_TRUE(DesignRoad(road));
    AddPlates(road, left, {Plate(3.5, -2), Plate(1.5, -4, 0.1)});
    AddPlates(road, right, {Plate(3.5, -2)});
    const double widths[] = {5, 2};
    EXPECT_TRUE(AddChangeSectionList(road, 500, left, 1, widths, 2, 0, 1));
    return road;
}

/// A question in its own record, as a host may keep it: nothing is aligned to 8 bytes behind the flag.
#pragma pack(push, 1)
struct Question {
    char flag;
    double x, y, mileage, offset, angle;
    std::int32_t occurrence;
};
#pragma pack(pop)

inline std::vector<Question> RandomQuestions(RoadDesign* road, Dice& dice, std::size_t count) {
    std::vector<Question> questions(count);
    for (Question& it : questions) {
        it = {0, 0, 0, dice.Between(50, 4500), dice.Between(-9, 9), dice.Between(-20, 200), dice.In(5) ? 1 : 0};
        if (dice.In(4)) it.offset = 0;
        const Point at = PointAt(road, it.mileage, dice.Between(-60, 60));
        it.x = at.found ? at.x : dice.Between(0, 9000);
        it.y = at.found ? at.y : dice.Between(0, 9000);
        if (dice.In(20)) it.x = it.mileage = std::numeric_limits<double>::quiet_NaN();
        if (dice.In(20)) it.offset = std::numeric_limits<double>::infinity();
    }
    return questions;
}

}  // namespace kesto::test
