/// The boundary: every exported function runs inside one of these guards and is one line.
///
/// A guard tests the handle and the needed pointers, runs the body, turns an exception into the function's failure
/// value and keeps the reason of a failure in the road. It is the only place that writes RoadDesign::lastFailure, so a
/// failure inside a call that succeeds leaves no trace.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <new>
#include <utility>

#include "core/counted_list.hpp"
#include "core/frozen_road.hpp"
#include "core/result.hpp"
#include "core/road_design.hpp"
#include "core/text.hpp"

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

}  // namespace guard

/// Guard of a function with a value. The body takes the road and returns a Result<Value>.
template <class Value, class Body, class... Required>
Value GuardValue(RoadDesign* road, Failing<Value> failing, Body&& body, const Required*... required) noexcept {
    if (road == nullptr) return failing.null;
    const auto fail = [&](const Failure& failure) {
        road->lastFailure = failure;
        return failing.other;
    };
    if ((... || !required)) return fail(Fail(KESTO_NULL_ARGUMENT));
    return guard::Run<Value>(
        [&]() -> Value {
            Result<Value> result = body(*road);
            return result ? *result : fail(result.failure());
        },
        fail, KESTO_OUT_OF_MEMORY);
}

/// Guard of a function that succeeds or not. The body takes the road and returns an Outcome.
template <class Body, class... Required>
bool GuardBool(RoadDesign* road, Body&& body, const Required*... required) noexcept {
    return GuardValue<bool>(
        road, {false},
        [&](RoadDesign& it) -> Result<bool> {
            const Outcome outcome = body(it);
            if (!outcome) return outcome.failure();
            return true;
        },
        required...);
}

/// Guard of a function without a result. The body takes the road.
template <class Body>
void GuardVoid(RoadDesign* road, Body&& body) noexcept {
    GuardBool(road, [&](RoadDesign& it) {
        body(it);
        return Outcome();
    });
}

/// Guard of a file function: its result is the status of the failure. The body takes the road and the path (or what
/// else it needs) and returns an Outcome. Skipped records are told in the last failure only, the call itself succeeds.
template <class Path, class Body>
std::int32_t GuardFile(RoadDesign* road, Path* path, Body&& body) noexcept {
    if (road == nullptr) return KESTO_NULL_HANDLE_OR_PATH;
    const auto fail = [&](const Failure& failure) -> std::int32_t {
        road->lastFailure = failure;
        return failure.status == KESTO_RECORDS_SKIPPED ? std::int32_t{KESTO_SUCCESS} : failure.status;
    };
    if (path == nullptr) return fail(Fail(KESTO_NULL_HANDLE_OR_PATH));
    return guard::Run<std::int32_t>(
        [&]() -> std::int32_t {
            const Outcome outcome = body(*road, path);
            return outcome ? std::int32_t{KESTO_SUCCESS} : fail(outcome.failure());
        },
        fail, KESTO_FILE_OUT_OF_MEMORY);
}

/// Guard of a query of a frozen road: its result is the status of the failure, which is kept nowhere. The body takes
/// the frozen road and returns an Outcome.
template <class Body, class... Required>
std::int32_t GuardFrozen(const FrozenRoad* frozen, Body&& body, const Required*... required) noexcept {
    if (frozen == nullptr) return KESTO_NULL_HANDLE_OR_PATH;
    if ((... || !required)) return KESTO_NULL_ARGUMENT;
    return guard::Run<std::int32_t>(
        [&]() -> std::int32_t {
            const Outcome outcome = body(*frozen);
            return outcome ? std::int32_t{KESTO_SUCCESS} : outcome.failure().status;
        },
        [](const Failure& failure) { return failure.status; }, KESTO_OUT_OF_MEMORY);
}

/// Fails unless every number of a query is finite.
inline Outcome RequireFinite(std::initializer_list<double> numbers) noexcept {
    for (const double number : numbers) {
        if (!std::isfinite(number)) return FailValue(KESTO_ARGUMENT_NOT_FINITE, number);
    }
    return {};
}

// ------------------------------------------------------------------------------------- the families of list functions

inline constexpr std::int32_t recordsPerCall = 16;  // limit of the Add...List functions

template <class Record>
inline constexpr KestoList listOf = KESTO_LIST_NONE;
template <>
inline constexpr KestoList listOf<Intersection> = KESTO_LIST_INTERSECTIONS;
template <>
inline constexpr KestoList listOf<Element> = KESTO_LIST_ELEMENTS;
template <>
inline constexpr KestoList listOf<Coordinate> = KESTO_LIST_COORDINATES;
template <>
inline constexpr KestoList listOf<StakeCoordinate> = KESTO_LIST_STAKES;
template <>
inline constexpr KestoList listOf<BrokenChain> = KESTO_LIST_BROKEN_CHAINS;
template <>
inline constexpr KestoList listOf<VerticalCurve> = KESTO_LIST_VERTICAL_CURVES;

template <class Record>
using ListMember = CountedList<Record> RoadDesign::*;

/// A caller's record as the road stores it: its name ends within its field.
template <class Record>
Record Stored(const Record& record) noexcept {
    Record copy = record;
    if constexpr (requires { copy.name; }) CutText(copy.name);
    return copy;
}

template <class Record>
Outcome RequireIndex(const CountedList<Record>& list, std::int32_t index) noexcept {
    if (!list.Holds(index)) return FailIndex(listOf<Record>, index, list.Count());
    return {};
}

template <class Record>
Outcome CopyRecord(const CountedList<Record>& list, std::int32_t index, Record* record) noexcept {
    Outcome valid = RequireIndex(list, index);
    if (valid) *record = list[index];
    return valid;
}

template <class Record>
std::int32_t CountRecords(RoadDesign* road, ListMember<Record> list) noexcept {
    return road == nullptr ? 0 : (road->*list).Count();
}

template <class Record>
bool GetRecord(RoadDesign* road, ListMember<Record> list, std::int32_t index, Record* record) noexcept {
    return GuardBool(
        road, [&](RoadDesign& it) { return CopyRecord(it.*list, index, record); }, record);
}

template <class Record>
bool SetRecord(RoadDesign* road, ListMember<Record> list, std::int32_t index, const Record* record) noexcept {
    return GuardBool(
        road,
        [&](RoadDesign& it) {
            Outcome valid = RequireIndex(it.*list, index);
            if (valid) (it.*list).Edit()[static_cast<std::size_t>(index)] = Stored(*record);
            return valid;
        },
        record);
}

template <class Record>
bool InsertRecord(RoadDesign* road, ListMember<Record> list, const Record* record, std::int32_t index) noexcept {
    return GuardBool(
        road,
        [&](RoadDesign& it) {
            (it.*list).Insert(Stored(*record), index);
            return Outcome();
        },
        record);
}

template <class Record>
bool AppendRecords(RoadDesign* road, ListMember<Record> list, const Record* records, std::int32_t count) noexcept {
    return GuardBool(road, [&](RoadDesign& it) -> Outcome {
        if (count > recordsPerCall) {
            return FailLimit(KESTO_RECORD_COUNT_REFUSED, KESTO_LIMIT_RECORDS_PER_CALL, count, recordsPerCall);
        }
        if (count <= 0) return {};
        if (records == nullptr) return Fail(KESTO_NULL_ARGUMENT);
        Record stored[recordsPerCall];
        std::transform(records, records + count, stored, Stored<Record>);
        (it.*list).Append({stored, static_cast<std::size_t>(count)});
        return {};
    });
}

template <class Record>
bool DeleteRecord(RoadDesign* road, ListMember<Record> list, std::int32_t index) noexcept {
    return GuardBool(road, [&](RoadDesign& it) {
        Outcome valid = RequireIndex(it.*list, index);
        if (valid) (it.*list).Remove(index);
        return valid;
    });
}

}  // namespace kesto
