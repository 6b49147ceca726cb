// The list that a road keeps its records in.
#include "core/counted_list.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "core/road_design.hpp"

namespace kesto {
namespace {

struct Sample {
    int number;
};

std::vector<int> Numbers(const CountedList<Sample>& list) {
    std::vector<int> numbers;
    for (const Sample& each : list.Records()) numbers.push_back(each.number);
    return numbers;
}

TEST(CountedList, CapacityGrowsInSteps) {
    struct Case {
        const char* name;
        std::int32_t step, spare;
        std::vector<std::int32_t> grownAt;  // counts whose reaching needed the next step
    };
    for (const Case& each : {Case{"records", 16, 0, {1, 17, 33}}, Case{"stakes", stakeListStep, 0, {1, 33, 65}},
                             Case{"broken chains", 16, brokenChainListSpare, {1, 16, 32}}}) {
        CountedList<Sample> list(each.step, each.spare);
        EXPECT_EQ(list.Capacity(), 0) << each.name;
        std::int32_t steps = 0;
        for (std::int32_t count = 1; count <= 66; ++count) {
            list.Insert({count});
            if (steps < 3 && count == each.grownAt[static_cast<std::size_t>(steps)]) ++steps;
            if (steps < 3) {
                EXPECT_EQ(list.Capacity(), steps * each.step) << each.name << ", " << count;
            }
        }
        while (list.Count() > 0) list.Remove(0);
        EXPECT_GE(list.Capacity(), 66) << "removal never shrinks";
        list.Clear();
        EXPECT_EQ(list.Capacity(), 0);
    }
}

TEST(CountedList, AppendingKeepsMoreThanAStepFree) {
    const std::vector<Sample> some(15, Sample{7});
    CountedList<Sample> list;
    list.Insert({1});
    list.Append(std::span(some).first(2));  // 15 free: grows to 32 first
    EXPECT_EQ(list.Capacity(), 32);
    list.Append(std::span(some).first(1));  // 29 free: does not grow
    EXPECT_EQ(list.Capacity(), 32);
    list.Append(some);
    EXPECT_EQ(list.Count(), 19);
    EXPECT_EQ(list.Capacity(), 32);
    list.Append({});
    EXPECT_EQ(list.Capacity(), 32);
}

TEST(CountedList, NewRoomIsZero) {
    CountedList<Sample> list;
    for (int i = 1; i <= 17; ++i) list.Insert({i});
    for (std::int32_t i = list.Count(); i < list.Capacity(); ++i) EXPECT_EQ(list[i].number, 0) << i;
}

TEST(CountedList, ReservedRoomShowsInNoCapacity) {
    CountedList<Sample> list;
    list.Reserve(100);
    EXPECT_EQ(list.Capacity(), 0);
    list.Insert({1});
    EXPECT_EQ(list.Capacity(), 16);
    EXPECT_THROW(list.Reserve(std::int64_t{1} << 31), std::bad_alloc);
    EXPECT_EQ(Numbers(list), std::vector<int>{1});
}

TEST(CountedList, InsertsARecordOfItsOwn) {
    CountedList<Sample> list;
    for (int i = 0; i < 16; ++i) list.Insert({i});
    list.Insert(list[15], 0);  // grows and moves what is inserted
    list.Insert(list[16], 1);
    EXPECT_EQ(list[0].number, 15);
    EXPECT_EQ(list[1].number, 15);
    EXPECT_EQ(list[2].number, 0);
    EXPECT_EQ(list.Count(), 18);
}

TEST(CountedList, EveryEditRaisesTheRevision) {
    CountedList<Sample> list;
    CountedList<Sample> other;
    for (int i = 0; i < 9; ++i) other.Insert({i});
    std::uint64_t last = list.Revision();
    const auto raised = [&] { return list.Revision() > std::exchange(last, list.Revision()); };
    const std::vector<Sample> two = {{1}, {2}};
    list.Insert({1});
    EXPECT_TRUE(raised());
    list.Append(two);
    EXPECT_TRUE(raised());
    list.Edit();
    EXPECT_TRUE(raised());
    list.Remove(0);
    EXPECT_TRUE(raised());
    const std::uint64_t others = other.Revision();
    list.Swap(other);
    EXPECT_TRUE(raised());
    EXPECT_GT(list.Revision(), others);
    EXPECT_GT(other.Revision(), others);
    EXPECT_EQ(Numbers(other), (std::vector<int>{1, 2}));
    list.Clear();
    EXPECT_TRUE(raised());
    list.Reserve(50);
    EXPECT_FALSE(raised()) << "no edit";
}

}  // namespace
}  // namespace kesto
