// Threads that ask one frozen road at once: each gets the answers that one thread gets, whatever others try to edit.
// Run under ThreadSanitizer too.
#include <atomic>
#include <optional>
#include <thread>

#include "support/random_road.hpp"

namespace kesto::test {
namespace {

/// Tries one edit of every kind.
/// @return how many succeeded
int TryEdits(RoadDesign* road) {
    const Element element{};
    const BrokenChain chain{10, 20};
    const VerticalCurve point = GradePoint(40, 1);
    const SectionPlate plate = Plate(1, 0);
    const double widths[] = {1, 1};
    SetStartMileage(road, 77);
    SetMakeStakePerfix(road, "X");
    SetRoadDesignMode(road, 3);
    ClearRoad(road);
    return AddElement(road, &element, -1) + DeleteElement(road, 1) + SetElement(road, 1, &element) +
           AddBrokenChain(road, &chain) + AddVerticalCurve(road, &point) +
           AddStandardSectionPlate(road, &plate, left, 0) + AddChangeSectionList(road, 300, left, 1, widths, 2, 0, 0) +
           SetStartInformation(road, 1, 2, 3) + DesignRoad(road) + UpdateData(road) +
           (OpenProjectFromMemory(road, "", 0) != KESTO_ROAD_IS_FROZEN ? 1 : 0);
}

TEST(FrozenThreads, ReadOneRoadAtOnce) {
    Dice dice(3);
    const Road road = RandomRoad(dice);
    const auto questions = RandomQuestions(road, dice, 200);
    const Road shared(FreezeRoad(road));
    std::vector<std::optional<EverythingAsked>> told(8);
    std::atomic<bool> over = false;
    std::vector<std::thread> threads;  // the first to ask a road of which nothing has been asked before
    for (auto& mine : told) threads.emplace_back([&] { mine.emplace(shared, questions); });
    std::thread editor([&] {
        do EXPECT_EQ(TryEdits(shared), 0);
        while (!over);
    });
    EXPECT_TRUE(DesignRoad(road));  // its own thread goes on meanwhile
    for (std::thread& thread : threads) thread.join();
    over = true;
    editor.join();
    const EverythingAsked alone(shared, questions);
    for (const auto& each : told) EXPECT_TRUE(*each == alone);
    EXPECT_GT(alone.Answered(), 1500U);
}

}  // namespace
}  // namespace kesto::test
