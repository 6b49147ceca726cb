// Bytes as a sequence of calls: each begins with the byte of its call, what follows are its arguments.

#include "saved_road.hpp"
#include "session.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kesto::fuzz;
    constexpr int mostCallsInARun = 120;
    Session session(data, size);
    for (int i = 0; i < mostCallsInARun && !session.in.AtEnd(); ++i) {
        const std::uint8_t code = session.in.Byte();
        const std::size_t group = code / mostCalls;
        if (group >= callGroups.size()) continue;
        if (const Call call = (*callGroups[group])[code % mostCalls]) call(session);
    }
    for (const RoadSlot& slot : session.roads) {
        if (slot.road != nullptr) RequireFixedPoint(slot.road);
    }
    RemoveFiles();
    return 0;
}
