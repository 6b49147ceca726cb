/// One run of the target of calls: some roads, and the calls that bytes make on them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bytes.hpp"
#include "calls/call.hpp"
#include "kesto_road/kesto_road.h"

namespace kesto::fuzz {

using test::Argument;
using test::Call;
using test::Outcome;
using test::Parameter;

/// A place for a road. Without one it stands for the null handle.
struct RoadSlot {
    RoadDesign* road = nullptr;
    RoadDesign* frozen = nullptr;  // a frozen copy of it, where nothing has been edited since
};

class CallRun {
public:
    CallRun(const std::uint8_t* data, std::size_t size);
    CallRun(const CallRun&) = delete;
    CallRun& operator=(const CallRun&) = delete;
    ~CallRun();

    /// Takes the next bytes: a call with its arguments, or one of the few other things that a run does.
    void Step();

    bool AtEnd() const { return in.AtEnd(); }
    RoadDesign* Road() const { return roads[current].road; }

    std::array<RoadSlot, 3> roads;

private:
    void Thaw();
    void Freeze();
    void End();
    void Make(const Call& call);

    Bytes in;
    std::size_t current = 0;
};

/// The call whose name's hash is the next one from a number on: so a new function takes few inputs from the others.
const Call& CallAt(std::uint16_t place);

/// The place of a call.
std::uint16_t PlaceOf(const Call& call);

/// The call that counts the records that a call adds, reads, sets or deletes; null where there is none.
const Call* CountCallOf(const Call& call);

/// How many such records there are, by the side and the kind among a call's arguments.
std::int32_t CountFor(const Call& call, RoadDesign* road, const std::vector<Argument>& arguments);

/// Arguments of a call, mostly ordinary ones.
std::vector<Argument> ArgumentsFrom(Bytes& in, const Call& call, RoadDesign* road);

/// Removes the files that calls have written: each run begins without.
void RemoveFiles();

}  // namespace kesto::fuzz
