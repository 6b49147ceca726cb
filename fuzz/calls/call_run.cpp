#include "call_run.hpp"

#include <algorithm>
#include <map>

#include "called.hpp"
#include "laws.hpp"
#include "support/ready_roads.hpp"

namespace kesto::fuzz {

namespace {

constexpr std::uint8_t firstCall = 32;  // bytes below stand for something else

/// Calls by the hash of their names, so that the bytes of one keep their meaning when others come.
const std::map<std::uint16_t, const Call*>& Places() {
    static const auto made = [] {
        std::map<std::uint16_t, const Call*> places;
        for (const Call& call : test::Calls()) {
            if (call.effect == test::Effect::Life) continue;
            std::uint32_t hash = 2166136261U;  // FNV-1a
            for (const char letter : call.name) hash = (hash ^ static_cast<std::uint8_t>(letter)) * 16777619U;
            auto place =
                static_cast<std::uint16_t>(firstCall * 256U + (hash ^ hash >> 16U) % ((256U - firstCall) * 256U));
            while (!places.emplace(place, &call).second) ++place;
        }
        return places;
    }();
    return made;
}

/// The kind of record that a call adds, reads, sets or deletes: "Element" of "AddElementList".
std::string RecordOf(const Call& call) {
    std::string name(call.name);
    for (const char* verb : {"Add", "Get", "Set", "Delete", "Del"}) {
        if (!name.starts_with(verb)) continue;
        name.erase(0, std::string_view(verb).size());
        while (name.ends_with('2')) name.pop_back();
        if (name.ends_with("List")) name.resize(name.size() - 4);
        return name;
    }
    return {};
}

}  // namespace

const Call& CallAt(std::uint16_t place) {
    const auto next = Places().lower_bound(place);
    return *(next == Places().end() ? Places().begin() : next)->second;
}

std::uint16_t PlaceOf(const Call& call) {
    const auto found = std::ranges::find(Places(), &call, &std::pair<const std::uint16_t, const Call*>::second);
    return found->first;
}

const Call* CountCallOf(const Call& call) {
    const auto found = std::ranges::find(test::Calls(), "Get" + RecordOf(call) + "Count", &Call::name);
    return found == test::Calls().end() ? nullptr : &*found;
}

std::int32_t CountFor(const Call& call, RoadDesign* road, const std::vector<Argument>& arguments) {
    const Call* const count = CountCallOf(call);
    if (count == nullptr) return 4;
    std::vector<Argument> given(count->parameters.size());
    for (std::size_t i = 1; i < given.size(); ++i) {
        const int same = call.Find(count->parameters[i].name);
        if (same > 0) given[i].whole = arguments[static_cast<std::size_t>(same)].whole;
    }
    return static_cast<std::int32_t>(count->run(road, given).number);
}

CallRun::CallRun(const std::uint8_t* data, std::size_t size) : in(data, size) {
    roads[0].road = StartRoadDesign();
    CalledNames().insert("StartRoadDesign");
}

CallRun::~CallRun() {
    for (current = 0; current < roads.size(); ++current) End();
}

void CallRun::Thaw() {
    EndRoadDesign(roads[current].frozen);
    roads[current].frozen = nullptr;
}

void CallRun::Freeze() {
    Thaw();
    roads[current].frozen = FreezeRoad(Road());
    if (roads[current].frozen != nullptr) CalledNames().insert("FreezeRoad");
}

void CallRun::End() {
    Thaw();
    EndRoadDesign(roads[current].road);
    roads[current].road = nullptr;
    CalledNames().insert("EndRoadDesign");
}

void CallRun::Make(const Call& call) {
    RoadSlot& slot = roads[current];
    std::vector<Argument> arguments = ArgumentsFrom(in, call, slot.road);
    const Before before(call, slot.road, arguments);
    RequireFrozen(call, slot.frozen, arguments);
    // A document is written of a road that is designed for it.
    if (call.effect == test::Effect::Edits || call.name.starts_with("Export")) Thaw();
    const Outcome outcome = call.run(slot.road, arguments);
    if (!outcome.failed && (slot.road != nullptr || !call.HasHandle())) CalledNames().insert(std::string(call.name));
    RequireLaws(call, slot.road, before, outcome, arguments);
    RequireOneAnswer(call, slot, before, outcome, arguments);
}

void CallRun::Step() {
    const std::uint8_t code = in.Byte();
    if (code >= firstCall) return Make(CallAt(static_cast<std::uint16_t>(code * 256U + in.Byte())));
    switch (code % 5) {
        case 0: current = in.Byte() % roads.size(); break;
        case 1:
            Thaw();
            test::MakeReady(Road(), in.Byte() % test::readyRoads);
            break;
        case 2: Freeze(); break;
        case 3:
            if (Road() == nullptr) roads[current].road = StartRoadDesign();
            break;
        default: End();
    }
}

}  // namespace kesto::fuzz
