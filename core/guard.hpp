/// The boundary: every exported function runs inside one of these guards and is one line.
///
/// A guard tests the handle and the needed pointers, runs the body, turns an exception into the function's failure
/// value and keeps the reason of a failure in the road. It is the only place that writes RoadDesign::lastFailure, so a
/// failure inside a call that succeeds leaves no trace. Query guards hand the body an AskedRoad; edit guards hand it
/// the road itself and refuse a frozen one, in which nothing is ever written, the reason of a failure included.
#pragma once

#include <memory>
#include <new>

#include "core/asked_road.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"

namespace kesto {

/// What a call gives back when it fails: for a null handle and for every other reason.
template <class Value>
struct Failing {
    Value null;
    Value other = null;
};

namespace guard {

/// Runs a body that returns a Result and hands a failure, its own or an exception's, to `fail`.
template <class Value, class Body, class OnFailure>
Value Run(Body&& body, OnFailure&& fail, KestoStatus outOfMemory) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return fail(Fail(outOfMemory));
    } catch (...) {
        return fail(Fail(KESTO_INTERNAL_ERROR));
    }
}

/// Keeps the reason of a failure; a frozen road keeps none.
inline void Note(RoadDesign& road, const Failure& failure) noexcept {
    if (!road.frozen) road.lastFailure = failure;
}

/// The result of a file function that failed. Skipped records are told in the last failure only, the call succeeds.
inline std::int32_t FileStatus(RoadDesign& road, const Failure& failure) noexcept {
    Note(road, failure);
    return failure.status == KESTO_RECORDS_SKIPPED ? std::int32_t{KESTO_SUCCESS} : failure.status;
}

/// What file functions share: the body takes the road.
template <class Path, class Body>
std::int32_t RunFile(RoadDesign* road, Path* path, Body&& body) noexcept {
    if (road == nullptr) return KESTO_NULL_HANDLE_OR_PATH;
    const auto fail = [&](const Failure& failure) { return FileStatus(*road, failure); };
    if (path == nullptr) return fail(Fail(KESTO_NULL_HANDLE_OR_PATH));
    return Run<std::int32_t>(
        [&]() -> std::int32_t {
            const Outcome outcome = body(*road);
            return outcome ? std::int32_t{KESTO_SUCCESS} : fail(outcome.failure());
        },
        fail, KESTO_FILE_OUT_OF_MEMORY);
}

}  // namespace guard

/// Guard of a query with a value. The body takes an AskedRoad and returns a Result<Value>.
template <class Value, class Body, class... Required>
Value QueryValue(RoadDesign* road, Failing<Value> failing, Body&& body, const Required*... required) noexcept {
    if (road == nullptr) return failing.null;
    const auto fail = [&](const Failure& failure) {
        guard::Note(*road, failure);
        return failing.other;
    };
    if ((... || !required)) return fail(Fail(KESTO_NULL_ARGUMENT));
    return guard::Run<Value>(
        [&]() -> Value {
            Result<Value> result = body(AskedRoad(*road));
            return result ? *result : fail(result.failure());
        },
        fail, KESTO_OUT_OF_MEMORY);
}

/// Guard of a query that succeeds or not. The body takes an AskedRoad and returns an Outcome.
template <class Body, class... Required>
bool QueryBool(RoadDesign* road, Body&& body, const Required*... required) noexcept {
    return QueryValue<bool>(
        road, {false},
        [&](const AskedRoad& asked) -> Result<bool> {
            const Outcome outcome = body(asked);
            if (!outcome) return outcome.failure();
            return true;
        },
        required...);
}

/// Guard of an edit that succeeds or not. The body takes the road and returns an Outcome.
template <class Body, class... Required>
bool EditBool(RoadDesign* road, Body&& body, const Required*... required) noexcept {
    if (road == nullptr || road->frozen) return false;
    return QueryBool(
        road, [&](const AskedRoad& asked) { return body(*asked.live); }, required...);
}

/// Guard of an edit without a result. The body takes the road.
template <class Body>
void EditVoid(RoadDesign* road, Body&& body) noexcept {
    EditBool(road, [&](RoadDesign& it) {
        body(it);
        return Outcome();
    });
}

/// Guard of a function that reads a file (or bytes) into the road: its result is the status of the failure. The body
/// takes the road and the path and returns an Outcome.
template <class Path, class Body>
std::int32_t ReadIntoRoad(RoadDesign* road, Path* path, Body&& body) noexcept {
    return guard::RunFile(road, path, [&](RoadDesign& it) -> Outcome {
        if (it.frozen) return Fail(KESTO_ROAD_IS_FROZEN);
        return body(it, path);
    });
}

/// Guard of a function that writes the road into a file (or bytes); otherwise as ReadIntoRoad(). Writing may bring the
/// road up to date or run its design, so a frozen road is written from a live copy.
template <class Path, class Body>
std::int32_t WriteFromRoad(RoadDesign* road, Path* path, Body&& body) noexcept {
    return guard::RunFile(road, path, [&](RoadDesign& it) -> Outcome {
        if (!it.frozen) return body(it, path);
        const auto copy = std::make_unique<RoadDesign>(it);
        copy->frozen = false;
        return body(*copy, path);
    });
}

}  // namespace kesto
