// Threads that ask one frozen road at once by every query that there is: each gets the answers that one thread gets,
// whatever others try to edit meanwhile. Run under ThreadSanitizer too.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "calls/call.hpp"
#include "calls/samples.hpp"

namespace kesto::test {
namespace {

/// Sample arguments with a path of a thread's own, for the functions that write files.
std::vector<Argument> ArgumentsOf(const Call& call, const std::string& thread) {
    std::vector<Argument> arguments = SampleArguments(call);
    const int path = call.Find("path");
    if (path < 0 || call.effect == Effect::Edits) return arguments;
    const std::string own = SamplePath(thread + std::string(call.name) + ".road");
    arguments[static_cast<std::size_t>(path)].memory.assign(own.c_str(), own.c_str() + own.size() + 1);
    return arguments;
}

/// All that the road answers, byte by byte.
std::string AskAll(RoadDesign* road, const std::string& thread) {
    std::string told;
    for (const Call& call : Calls()) {
        if (!call.HasHandle() || call.name == "EndRoadDesign" || call.effect == Effect::Edits) continue;
        std::vector<Argument> arguments = ArgumentsOf(call, thread);
        const Outcome outcome = call.run(road, arguments);
        told += std::string(call.name) + (outcome.failed ? " fails " : " ") + std::to_string(outcome.number);
        if (call.Find("path") < 0) told += BytesOf(arguments);
        if (outcome.handle != nullptr) EndRoadDesign(static_cast<RoadDesign*>(outcome.handle));
    }
    return told;
}

/// Tries every edit.
/// @return the names of those that succeeded
std::string EditAll(RoadDesign* road) {
    std::string edited;
    for (const Call& call : Calls()) {
        if (!call.HasHandle() || call.effect != Effect::Edits) continue;
        std::vector<Argument> arguments = SampleArguments(call);
        const Outcome outcome = call.run(road, arguments);
        const double refused = call.gives == Gives::Status ? std::int32_t{KESTO_ROAD_IS_FROZEN} : 0;
        if (call.gives != Gives::None && outcome.number != refused) edited += call.name;
    }
    return edited;
}

TEST(FrozenThreads, ReadOneRoadAtOnce) {
    const Road road = SampleRoad();
    const Road shared(FreezeRoad(road));
    std::vector<std::string> told(8);
    std::atomic<bool> over = false;
    std::vector<std::thread> threads;  // the first to ask a road of which nothing has been asked before
    for (std::size_t i = 0; i < told.size(); ++i) {
        threads.emplace_back([&, i] { told[i] = AskAll(shared, std::to_string(i)); });
    }
    std::thread editor([&] {
        do EXPECT_EQ(EditAll(shared), "");
        while (!over);
    });
    EXPECT_TRUE(DesignRoad(road));  // its own thread goes on meanwhile
    for (std::thread& thread : threads) thread.join();
    over = true;
    editor.join();
    const std::string alone = AskAll(shared, "alone");
    EXPECT_GT(alone.size(), 10000U);
    for (const std::string& each : told) EXPECT_TRUE(each == alone);
}

}  // namespace
}  // namespace kesto::test
