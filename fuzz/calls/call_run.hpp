/// One run of the target of calls: some roads, some frozen ones, and the rules that hold for every call.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "bytes.hpp"
#include "called.hpp"
#include "kesto_road/kesto_road.h"
#include "require.hpp"

namespace kesto::fuzz {

/// A place for a road. Without one it stands for the null handle.
struct RoadSlot {
    RoadDesign* road = nullptr;
    std::uint64_t edits = 0;  // calls that may have changed what queries answer
};

inline std::optional<Failure> LastFailureOf(RoadDesign* road) {
    Failure failure;
    if (!GetLastFailure(road, &failure)) return std::nullopt;
    return failure;
}

inline void RequireSensible(const Failure& failure) {
    Require(failure.status != KESTO_INTERNAL_ERROR, "no fault of the library itself");
    Require(failure.status != KESTO_OUT_OF_MEMORY && failure.status != KESTO_FILE_OUT_OF_MEMORY,
            "small roads need little memory");
    Require(std::string_view(DescribeStatus(failure.status)) != "unknown status", "every status has a sentence");
}

template <class Value>
bool SameBits(const Value& one, const Value& other) {
    static_assert(std::is_trivially_copyable_v<Value>);
    return std::memcmp(&one, &other, sizeof(Value)) == 0;
}

class CallRun {
public:
    CallRun(const std::uint8_t* data, std::size_t size) : in(data, size) {
        roads[0].road = KESTO_NAMED(StartRoadDesign)();
    }
    CallRun(const CallRun&) = delete;
    CallRun& operator=(const CallRun&) = delete;
    ~CallRun() {
        for (const RoadSlot& slot : roads) EndRoadDesign(slot.road);
    }

    RoadSlot& Slot() { return roads[current]; }
    RoadDesign* Road() { return roads[current].road; }

    /// A call that may change the road.
    template <class Result, class... Parameters, class... Arguments>
    Result Edit(const Named<Result(RoadDesign*, Parameters...)>& function, Arguments... arguments) {
        ++Slot().edits;
        return Ask(function, arguments...);
    }

    /// A call that at most builds derived data. A bool tells whether there is a failure to be told of: a null handle
    /// gives the failure value, a failed call leaves its reason, a successful one what was there.
    template <class Result, class... Parameters, class... Arguments>
    Result Ask(const Named<Result(RoadDesign*, Parameters...)>& function, Arguments... arguments) {
        const std::optional<Failure> before = LastFailureOf(Road());
        if constexpr (std::is_void_v<Result>) {
            function(Road(), arguments...);
            RequireNoFault();
        } else {
            const Result result = function(Road(), arguments...);
            RequireNoFault();
            if constexpr (std::is_same_v<Result, bool>) RequireReason(result, before);
            return result;
        }
    }

    /// A file call, which returns its status.
    template <class... Parameters, class... Arguments>
    std::int32_t File(const Named<std::int32_t(RoadDesign*, Parameters...)>& function, Arguments... arguments) {
        const std::int32_t status = Edit(function, arguments...);
        if (Road() == nullptr) Require(status == KESTO_NULL_HANDLE_OR_PATH, "a null handle has its status");
        const std::optional<Failure> told = LastFailureOf(Road());
        if (Road() != nullptr && status != KESTO_SUCCESS) {
            Require(told && told->status == status, "the status of a file call is that of the last failure");
        }
        return status;
    }

    /// The value itself or, rarely, null: for a pointer that a call needs or may do without.
    template <class Value>
    Value* OrNull(Value* value) {
        return in.Rarely() ? nullptr : value;
    }

    Bytes in;
    std::array<RoadSlot, 3> roads;
    std::size_t current = 0;
    std::string savedText;  // what SaveProjectToMemory gave last

private:
    void RequireNoFault() {
        if (const std::optional<Failure> told = LastFailureOf(Road())) RequireSensible(*told);
    }

    void RequireReason(bool result, const std::optional<Failure>& before) {
        if (Road() == nullptr) return Require(!result, "a null handle gives the failure value");
        const std::optional<Failure> after = LastFailureOf(Road());
        if (!result) return Require(after.has_value(), "a failed call leaves its reason");
        Require(before.has_value() == after.has_value() && (!after || SameBits(*before, *after)),
                "a successful call leaves the last failure as it is");
    }
};

template <class... Numbers>
void RequireFiniteNumbers(Numbers... numbers) {
    Require((std::isfinite(numbers) && ...), "what is found is finite");
}

/// Removes the files that the calls of a run have written: each run begins without.
void RemoveFiles();

/// One kind of call: takes its arguments from the run's bytes.
using Call = void (*)(CallRun&);

/// The calls of each group, in an order that never changes, as the corpus counts on it: new ones go to the end.
inline constexpr std::size_t mostCalls = 32;
using CallGroup = std::array<Call, mostCalls>;  // null behind the last one

extern const CallGroup settingsCalls, listCalls, queryCalls, sectionCalls, batchCalls, fileCalls;

inline constexpr std::array<const CallGroup*, 6> callGroups{&settingsCalls, &listCalls,  &queryCalls,
                                                            &sectionCalls,  &batchCalls, &fileCalls};

/// The byte that stands for a call: its group and its place there.
constexpr std::uint8_t CodeOf(std::size_t group, std::size_t place) {
    return static_cast<std::uint8_t>(group * mostCalls + place);
}

}  // namespace kesto::fuzz
