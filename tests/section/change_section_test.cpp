#include "section/change_sections.hpp"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

#include "alignment/chain_builder.hpp"
#include "design/design_run.hpp"
#include "section/plates.hpp"
#include "section/section_at.hpp"
#include "support/records.hpp"

using namespace kesto::test;

namespace {

void AddChange(RoadDesign& road, kesto::ChangeTable which, double mileage, std::vector<double> values,
               std::int32_t type, std::int32_t occurrence = 0) {
    kesto::PlacedChange change{{mileage, occurrence}, {std::move(values), {}}};
    change.section.flags.assign(change.section.values.size(), 1);
    ASSERT_TRUE(kesto::InsertChange(road, which, change, type)) << mileage;
}

/// A designed straight road heading north from mileage 0.
void MakeStraightRoad(RoadDesign& road, double length) {
    road.settings.roadDesignMode = 1;
    kesto::SetStart(road, 0, 0, 0);
    road.elements.Insert(Straight(length));
    ASSERT_TRUE(kesto::RunDesign(road));
}

TEST(Plates, ChangeSectionOffTheRoadIsLeftAlone) {
    RoadDesign road;
    MakeStraightRoad(road, 1000);
    ASSERT_TRUE(kesto::InsertPlate(road, Plate(3, -2), left, -1));
    AddChange(road, {left, heightening}, 100, {4}, 0);
    AddChange(road, {left, heightening}, 900, {6}, 0);
    road.elements.Edit()[1].length = 500;
    ASSERT_TRUE(kesto::BuildChain(road));
    ASSERT_TRUE(kesto::InsertPlate(road, Plate(1, -7), left, 0));
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
    MakeStraightRoad(road, 1e5);
    Model model;
    for (int step = 0; step < 4000; ++step) {
        const auto index = static_cast<std::int32_t>(random() % 8) - 1;
        const std::size_t count = model.plates.size();
        const bool inside = index >= 0 && static_cast<std::size_t>(index) < count;
        const std::ptrdiff_t at = inside ? index : static_cast<std::ptrdiff_t>(count);
        const SectionPlate plate = Plate(static_cast<double>(random() % 100), static_cast<double>(random() % 100));
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
