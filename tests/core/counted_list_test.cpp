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
