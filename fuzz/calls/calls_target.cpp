// Bytes as a sequence of calls: each begins with the bytes of its call, what follows are its arguments.

#include "call_run.hpp"
#include "saved_road.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kesto::fuzz;
    constexpr int mostCallsInARun = 120;
    CallRun run(data, size);
    for (int i = 0; i < mostCallsInARun && !run.AtEnd(); ++i) run.Step();
    for (const RoadSlot& slot : run.roads) {
        if (slot.road != nullptr) RequireFixedPoint(slot.road);
    }
    RemoveFiles();
    return 0;
}
