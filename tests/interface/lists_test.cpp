// The families of list functions: the three indexed lists alike, then broken chains and grade-change points.
#include <cstring>
#include <limits>
#include <numeric>

#include "support/road.hpp"

namespace kesto::test {
namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

template <class Stored, double Stored::*Mark, auto Count, auto Add, auto AddList, auto Remove, auto Get, auto Set>
struct Family {
    using Record = Stored;
    static constexpr auto mark = Mark;
    static constexpr auto count = Count;
    static constexpr auto add = Add;
    static constexpr auto addList = AddList;
    static constexpr auto remove = Remove;
    static constexpr auto get = Get;
    static constexpr auto set = Set;
};

using Families = testing::Types<Family<Intersection, &Intersection::x, GetIntersectionCount, AddIntersection,
                                       AddIntersectionList, DeleteIntersection, GetIntersection, SetIntersection>,
                                Family<Element, &Element::startX, GetElementCount, AddElement, AddElementList,
                                       DeleteElement, GetElement, SetElement>,
                                Family<Coordinate, &Coordinate::x, GetCoordinateCount, AddCoordinate, AddCoordinateList,
                                       DeleteCoordinate, GetCoordinate, SetCoordinate>>;

template <class Family>
class IndexedList : public testing::Test {
protected:
    using Record = typename Family::Record;

    static Record Marked(double mark) {
        Record record{};
        record.*Family::mark = mark;
        return record;
    }

    bool Add(double mark, std::int32_t index = -1) {
        const Record record = Marked(mark);
        return Family::add(road, &record, index);
    }

    bool AddMany(double firstMark, int count) {
        std::vector<Record> records;
        for (int i = 0; i < count; ++i) records.push_back(Marked(firstMark + i));
        return Family::addList(road, records.data(), count);
    }

    std::vector<double> Marks() {
        std::vector<double> marks;
        for (const Record& record : AllRecords<Record>(road, Family::count, Family::get)) {
            marks.push_back(record.*Family::mark);
        }
        return marks;
    }

    Road road;
};

TYPED_TEST_SUITE(IndexedList, Families);

TYPED_TEST(IndexedList, IndexInRangeInsertsAnyOtherAppends) {
    EXPECT_TRUE(this->Add(1, 0));  // into an empty list
    EXPECT_TRUE(this->Add(2, -1));
    EXPECT_TRUE(this->Add(3, 2));  // the count itself
    EXPECT_TRUE(this->Add(4, 0));
    EXPECT_TRUE(this->Add(5, 3));
    EXPECT_TRUE(this->Add(6, std::numeric_limits<std::int32_t>::max()));
    EXPECT_TRUE(this->Add(7, std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(this->Marks(), (std::vector<double>{4, 1, 2, 5, 3, 6, 7}));
}

TYPED_TEST(IndexedList, ListsOfSixteenAtMost) {
    EXPECT_TRUE(this->AddMany(0, 16));
    EXPECT_FALSE(this->AddMany(100, 17));
    EXPECT_TRUE(this->AddMany(100, 0));
    EXPECT_TRUE(this->AddMany(100, -3));
    EXPECT_FALSE(TypeParam::addList(this->road, nullptr, 1));
    EXPECT_TRUE(this->AddMany(16, 16));
    EXPECT_TRUE(this->Add(32));
    std::vector<double> expected(33);
    std::iota(expected.begin(), expected.end(), 0.0);
    EXPECT_EQ(this->Marks(), expected);
}

TYPED_TEST(IndexedList, EveryByteOfARecordIsKept) {
    typename TypeParam::Record given;
    std::memset(&given, 0x5A, sizeof given);
    ASSERT_TRUE(this->Add(1));
    ASSERT_TRUE(TypeParam::set(this->road, 0, &given));
    ASSERT_TRUE(TypeParam::add(this->road, &given, -1));
    ASSERT_TRUE(TypeParam::addList(this->road, &given, 1));
    if constexpr (requires { given.name; }) given.name[31] = '\0';  // a name is ended within its field
    for (std::int32_t i = 0; i < 3; ++i) {
        typename TypeParam::Record stored{};
        ASSERT_TRUE(TypeParam::get(this->road, i, &stored));
        EXPECT_EQ(Bytes(&stored), Bytes(&given)) << i;
    }
}

TYPED_TEST(IndexedList, DeleteClosesTheGap) {
    ASSERT_TRUE(this->AddMany(0, 5));
    EXPECT_TRUE(TypeParam::remove(this->road, 1));
    EXPECT_TRUE(TypeParam::remove(this->road, 3));
    EXPECT_EQ(this->Marks(), (std::vector<double>{0, 2, 3}));
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(TypeParam::remove(this->road, 0));
    EXPECT_EQ(TypeParam::count(this->road), 0);
}

TYPED_TEST(IndexedList, IndexOutOfRangeChangesNothing) {
    typename TypeParam::Record record = this->Marked(9);
    EXPECT_FALSE(TypeParam::remove(this->road, 0)) << "empty list";
    ASSERT_TRUE(this->AddMany(0, 3));
    for (const std::int32_t index : {-1, 3, 16, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_FALSE(TypeParam::remove(this->road, index)) << index;
        EXPECT_FALSE(TypeParam::set(this->road, index, &record)) << index;
        EXPECT_FALSE(TypeParam::get(this->road, index, &record)) << index;
    }
    EXPECT_EQ(record.*TypeParam::mark, 9);
    EXPECT_EQ(this->Marks(), (std::vector<double>{0, 1, 2}));
}

std::vector<double> Backs(RoadDesign* road) {
    std::vector<double> backs;
    for (const BrokenChain& chain : Chains(road)) backs.push_back(chain.backMileage);
    return backs;
}

TEST(BrokenChainList, IsSortedWithoutDuplicates) {
    const Road road;
    AddChain(road, 400, 350);
    const BrokenChain tooNear{400.00000005, 360};
    EXPECT_FALSE(AddBrokenChain(road, &tooNear));
    AddChain(road, 400.001, 360);
    AddChain(road, 100, 120);
    AddChain(road, 250, 260);
    EXPECT_EQ(Backs(road), (std::vector<double>{100, 250, 400, 400.001}));
    for (const double back : {noNumber, infinite, -infinite}) {
        const BrokenChain chain{back, 0};
        EXPECT_FALSE(AddBrokenChain(road, &chain)) << back;
        EXPECT_FALSE(AddBrokenChainList(road, &chain, 1)) << back;
        EXPECT_FALSE(SetBrokenChain(road, 0, &chain)) << back;
    }
    EXPECT_EQ(Backs(road), (std::vector<double>{100, 250, 400, 400.001}));
    EXPECT_TRUE(DeleteBrokenChain(road, 1));
    EXPECT_FALSE(DeleteBrokenChain(road, 3));
    EXPECT_EQ(Backs(road), (std::vector<double>{100, 400, 400.001}));
}

TEST(BrokenChainList, ListHasNoLimitAndIsAllOrNothingAgainstStoredOnes) {
    const Road road;
    std::vector<BrokenChain> chains;
    for (int i = 40; i > 0; --i) chains.push_back({10.0 * i, 10.0 * i + 1});
    EXPECT_TRUE(AddBrokenChainList(road, chains.data(), 40));
    ASSERT_EQ(GetBrokenChainCount(road), 40);
    EXPECT_EQ(Chains(road).front().aheadMileage, 11);
    EXPECT_EQ(Chains(road).back().aheadMileage, 401);

    const BrokenChain oneStored[] = {{1000, 1}, {100.00000005, 2}};
    EXPECT_FALSE(AddBrokenChainList(road, oneStored, 2));
    EXPECT_EQ(GetBrokenChainCount(road), 40);
    const BrokenChain twice[] = {{2000, 1}, {2000, 2}, {1500, 3}};
    EXPECT_TRUE(AddBrokenChainList(road, twice, 3));
    ASSERT_EQ(GetBrokenChainCount(road), 42);
    EXPECT_EQ(Chains(road).back().aheadMileage, 1);
    EXPECT_TRUE(AddBrokenChainList(road, twice, 0));
    EXPECT_EQ(GetBrokenChainCount(road), 42);
}

TEST(BrokenChainList, SetSortsAgainAndAllowsDuplicates) {
    const Road road;
    AddChain(road, 100, 1);
    AddChain(road, 200, 2);
    AddChain(road, 300, 3);
    const BrokenChain moved{250, 9};
    EXPECT_TRUE(SetBrokenChain(road, 0, &moved));
    EXPECT_EQ(Backs(road), (std::vector<double>{200, 250, 300}));
    const BrokenChain equal{300, 7};
    EXPECT_TRUE(SetBrokenChain(road, 1, &equal));
    ASSERT_EQ(Backs(road), (std::vector<double>{200, 300, 300}));
    EXPECT_EQ(Chains(road)[1].aheadMileage, 7);
    EXPECT_EQ(Chains(road)[2].aheadMileage, 3);
    EXPECT_FALSE(SetBrokenChain(road, 3, &equal));
    const BrokenChain first{150, 5};
    EXPECT_TRUE(SetBrokenChain(road, 2, &first));
    EXPECT_EQ(Backs(road), (std::vector<double>{150, 200, 300}));
}

std::vector<double> GradeMileages(RoadDesign* road) {
    std::vector<double> mileages;
    for (const VerticalCurve& curve : Curves(road)) mileages.push_back(curve.mileage);
    return mileages;
}

TEST(VerticalCurveList, IsAddedWholeOrNotAtAll) {
    const Road road = MakeRoad({Straight(5000)});
    std::vector<VerticalCurve> curves;
    for (int i = 0; i < 17; ++i) curves.push_back(GradePoint(100.0 * (17 - i), i));
    EXPECT_FALSE(AddVerticalCurveList(road, curves.data(), 17));
    EXPECT_FALSE(AddVerticalCurveList(road, curves.data(), -1));
    EXPECT_TRUE(AddVerticalCurveList(road, curves.data(), 0));
    EXPECT_EQ(GetVerticalCurveCount(road), 0);
    EXPECT_TRUE(AddVerticalCurveList(road, curves.data(), 16));
    const VerticalCurve oneStored[] = {GradePoint(50, 0), GradePoint(300.00000005, 0)};
    EXPECT_FALSE(AddVerticalCurveList(road, oneStored, 2));
    const VerticalCurve twice[] = {GradePoint(50, 0), GradePoint(60, 0), GradePoint(50, 1)};
    EXPECT_FALSE(AddVerticalCurveList(road, twice, 3));
    EXPECT_TRUE(AddVerticalCurveList(road, twice, 2));
    std::vector<double> expected = {50, 60};
    for (int i = 2; i <= 17; ++i) expected.push_back(100.0 * i);
    EXPECT_EQ(GradeMileages(road), expected);
}

TEST(VerticalCurveList, SetOverwritesInPlace) {
    const Road road = MakeRoad({Straight(500)});
    AddGradePoints(road, {GradePoint(0, 1), GradePoint(100, 2), GradePoint(200, 3)});
    VerticalCurve given = GradePoint(300, 9, 5000);
    EXPECT_TRUE(SetVerticalCurve(road, 1, &given));
    EXPECT_EQ(GradeMileages(road), (std::vector<double>{0, 300, 200}));
    EXPECT_FALSE(SetVerticalCurve(road, 3, &given));
    EXPECT_FALSE(GetVerticalCurve(road, -1, &given));
    given.mileage = noNumber;
    EXPECT_FALSE(SetVerticalCurve(road, 0, &given));
    EXPECT_TRUE(DeleteVerticalCurve(road, 0));
    EXPECT_FALSE(DeleteVerticalCurve(road, 2));
    EXPECT_EQ(GradeMileages(road), (std::vector<double>{300, 200}));
}

TEST(Lists, SomePointersMayBeNull) {
    const Road road = MakeRoad({Straight(100)});
    SetMakeStakePerfix(road, "DK");
    SetMakeStakePerfix(road, nullptr);
    EXPECT_STREQ(GetMakeStakePerfix(road), "DK");
    SetMakeStakeType(road, 1);
    EXPECT_EQ(GetMakeStakeInfo(road, nullptr), 1);
    EXPECT_TRUE(DesignRoad(road));
    EXPECT_EQ(GetRoadMileage(road, nullptr), 100);
    EXPECT_TRUE(AddIntersectionList(road, nullptr, 0));
    EXPECT_TRUE(AddElementList(road, nullptr, -5));
    EXPECT_TRUE(AddCoordinateList(road, nullptr, 0));
    EXPECT_TRUE(AddBrokenChainList(road, nullptr, -1));
    EXPECT_TRUE(AddVerticalCurveList(road, nullptr, 0));
    EXPECT_EQ(LastFailure(road).status, KESTO_SUCCESS);
}

}  // namespace
}  // namespace kesto::test
