#include "section/change_sections.hpp"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "section/plates.hpp"
#include "section/roads.hpp"
#include "section/section_at.hpp"

using namespace kesto_test;

namespace {

void AddChange(RoadDesign& road, kesto::ChangeTable which, double mileage, std::vector<double> values,
               std::int32_t type, std::int32_t occurrence = 0) {
    kesto::PlacedChange change{{mileage, occurrence}, {std::move(values), {}}};
    change.section.flags.assign(change.section.values.size(), 1);
    ASSERT_TRUE(kesto::InsertChange(road, which, change, type)) << mileage;
}

double SlopeAt(RoadDesign& road, double mileage, std::int32_t occurrence = 0) {
    const auto plates = kesto::GetSectionAtMileage(road, {mileage, occurrence}, left);
    return plates ? plates->front().crossSlope : -999;
}

TEST(SectionAtMileage, WorkedTransitions) {
    struct Case {
        std::int32_t type;
        double mileage;
        double expected;
    };
    const Case cases[] = {{0, 50, 1},          {0, 100, 4},        {0, 250, 6},  {1, 25, -1.0625}, {1, 50, 1},
                          {2, 25, -1.6953125}, {2, 75, 2.4296875}, {7, 25, -2},  {-1, 99, -2},     {7, 150, 5},
                          {0, 150, 5},         {0, 199.5, 5.99},   {0, 1000, 6}, {0, 0, -2}};
    for (const Case& it : cases) {
        RoadDesign road;
        MakeStraightRoad(road);
        ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(3.5, -2), left, -1));
        AddChange(road, {left, heightening}, 100, {4}, it.type);
        AddChange(road, {left, heightening}, 200, {6}, 0);
        EXPECT_NEAR(SlopeAt(road, it.mileage), it.expected, 1e-12) << it.type << " at " << it.mileage;
    }
}

TEST(SectionAtMileage, WhereThereIsNone) {
    RoadDesign road;
    MakeStraightRoad(road);
    EXPECT_EQ(kesto::GetSectionAtMileage(road, {5, 0}, left).failure().status, KESTO_NO_CROSS_SECTION);
    ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(3, -2), left, -1));
    EXPECT_TRUE(kesto::GetSectionAtMileage(road, {1000, 0}, left));
    EXPECT_FALSE(kesto::GetSectionAtMileage(road, {1000.001, 0}, left));
    EXPECT_FALSE(kesto::GetSectionAtMileage(road, {-0.001, 0}, left));
    EXPECT_FALSE(kesto::GetSectionAtMileage(road, {5, 1}, left));
    EXPECT_EQ(kesto::GetSectionAtMileage(road, {5, 0}, 2).failure().status, KESTO_UNKNOWN_SIDE);
    for (const std::int32_t mode : {1, 5, -1}) {
        road.settings.sectionMode = mode;
        EXPECT_FALSE(kesto::GetSectionAtMileage(road, {5, 0}, left)) << mode;
    }
    road.settings.sectionMode = 0;
    road.stakes.Clear();
    EXPECT_EQ(kesto::GetSectionAtMileage(road, {5, 0}, left).failure().status, KESTO_NO_STAKES);
}

TEST(ChangeSections, Refusals) {
    RoadDesign road;
    MakeStraightRoad(road);
    ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(3, -2), left, -1));
    AddChange(road, {left, widening}, 100, {4}, 1);
    const auto status = [&](kesto::ChangeTable which, double mileage, std::vector<double> values,
                            std::vector<std::int32_t> flags) {
        const auto outcome = kesto::InsertChange(road, which, {{mileage, 0}, {std::move(values), std::move(flags)}}, 0);
        return outcome ? 0 : outcome.failure().status;
    };
    EXPECT_EQ(status({left, widening}, 100, {5}, {1}), KESTO_DUPLICATE_MILEAGE);
    EXPECT_EQ(status({left, widening}, 200, {5, 6}, {1, 1}), KESTO_VALUE_COUNT_DIFFERS);
    EXPECT_EQ(status({left, widening}, 200, {5}, {}), KESTO_VALUE_COUNT_DIFFERS);
    EXPECT_EQ(status({left, widening}, 2000, {5}, {1}), KESTO_MILEAGE_OFF_ROAD);
    EXPECT_EQ(status({2, widening}, 200, {5}, {1}), KESTO_UNKNOWN_SIDE);
    EXPECT_EQ(status({left, 2}, 200, {5}, {1}), KESTO_UNKNOWN_CHANGE_KIND);
    EXPECT_EQ(kesto::CountChanges(road, {left, widening}), 1);
    AddChange(road, {left, widening}, 300, {5}, 2);
    EXPECT_EQ(kesto::ReplaceChange(road, {left, widening}, 0, {{300, 0}, {{9}, {1}}}, 0).failure().status,
              KESTO_DUPLICATE_MILEAGE);
    EXPECT_EQ(kesto::ChangeAt(road, {left, widening}, 0)->section.values, std::vector<double>{4});
}

TEST(Plates, ChangeSectionOffTheRoadIsLeftAlone) {
    RoadDesign road;
    MakeStraightRoad(road);
    ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(3, -2), left, -1));
    AddChange(road, {left, heightening}, 100, {4}, 0);
    AddChange(road, {left, heightening}, 900, {6}, 0);
    road.elements.Edit()[1].length = 500;
    ASSERT_TRUE(kesto::BuildChain(road));
    ASSERT_TRUE(kesto::InsertPlate(road, MakePlate(1, -7), left, 0));
    const auto& table = road.sections.changeSections[left][heightening];
    EXPECT_EQ(table.at(100).values, (std::vector<double>{-7, 4}));
    EXPECT_EQ(table.at(900).values, (std::vector<double>{6}));
    EXPECT_FALSE(kesto::ChangeAt(road, {left, heightening}, 1));
    // Between the two only the inner plate has a value at both ends.
    const auto plates = kesto::GetSectionAtMileage(road, {500, 0}, left);
    ASSERT_TRUE(plates);
    EXPECT_DOUBLE_EQ((*plates)[0].crossSlope, -7 + 13 * 0.5);
    EXPECT_DOUBLE_EQ((*plates)[1].crossSlope, -2);
}

/// Values per plate, kept beside the road by the plainest means.
struct Model {
    std::vector<SectionPlate> plates;
    std::map<double, std::vector<double>> tables[2];
};

TEST(Plates, ValuesStayWithTheirPlatesUnderRandomEdits) {
    std::mt19937 random(77);
    RoadDesign road;
    MakeStraightRoad(road, 0, 1e5);
    Model model;
    for (int step = 0; step < 4000; ++step) {
        const auto index = static_cast<std::int32_t>(random() % 8) - 1;
        const std::size_t count = model.plates.size();
        const bool inside = index >= 0 && static_cast<std::size_t>(index) < count;
        const std::ptrdiff_t at = inside ? index : static_cast<std::ptrdiff_t>(count);
        const SectionPlate plate = MakePlate(static_cast<double>(random() % 100), static_cast<double>(random() % 100));
        switch (random() % 5) {
            case 0:
            case 1: {
                ASSERT_TRUE(kesto::InsertPlate(road, plate, right, index));
                model.plates.insert(model.plates.begin() + at, plate);
                for (auto& [mileage, values] : model.tables[heightening])
                    values.insert(values.begin() + at, plate.crossSlope);
                for (auto& [mileage, values] : model.tables[widening]) values.insert(values.begin() + at, plate.width);
                break;
            }
            case 2: {
                ASSERT_EQ(static_cast<bool>(kesto::RemovePlate(road, right, index)), inside);
                if (!inside) break;
                model.plates.erase(model.plates.begin() + at);
                for (auto& table : model.tables) {
                    for (auto& [mileage, values] : table) values.erase(values.begin() + at);
                    if (model.plates.empty()) table.clear();
                }
                break;
            }
            default: {
                const auto kind = static_cast<std::int32_t>(random() % 2);
                const auto mileage = static_cast<double>(random() % 100000);
                kesto::PlacedChange change{{mileage, 0}, {std::vector<double>(count, mileage + step), {}}};
                change.section.flags.assign(count, 1);
                const bool added = static_cast<bool>(kesto::InsertChange(road, {right, kind}, change, 0));
                ASSERT_EQ(added, model.tables[kind].emplace(mileage, change.section.values).second);
            }
        }
        if (step % 500 == 0) {
            ASSERT_TRUE(kesto::AppendPlates(road, {}, right));
            for (auto& table : model.tables) table.clear();
        }
        ASSERT_EQ(road.sections.plates[right].size(), model.plates.size());
        for (const std::int32_t kind : {heightening, widening}) {
            const auto& table = road.sections.changeSections[right][static_cast<std::size_t>(kind)];
            ASSERT_EQ(table.size(), model.tables[kind].size()) << step;
            for (const auto& [mileage, section] : table) {
                ASSERT_EQ(section.values, model.tables[kind].at(mileage)) << step;
                ASSERT_EQ(section.flags.size(), section.values.size()) << step;
            }
        }
    }
}

}  // namespace
