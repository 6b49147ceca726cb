/// The functions that lists of records share at the boundary: count, add, add several, delete, get, set.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/arguments.hpp"
#include "core/counted_list.hpp"
#include "core/guard.hpp"
#include "core/text.hpp"

namespace kesto {

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

/// A caller's record as the road stores it: its texts end within their fields.
template <class Record>
Record Stored(const Record& record) noexcept {
    Record copy = record;
    if constexpr (requires { copy.name; }) CutText(copy.name);
    if constexpr (requires { copy.code; }) CutText(copy.code);
    return copy;
}

/// Fails unless an index addresses a record of a list.
template <class Record>
Outcome RequireRecord(const CountedList<Record>& list, std::int32_t index) noexcept {
    return RequireIndex(listOf<Record>, index, static_cast<std::size_t>(list.Count()));
}

template <class Record>
std::int32_t CountRecords(RoadDesign* road, ListMember<Record> list) noexcept {
    return road == nullptr ? 0 : (road->*list).Count();
}

template <class Record>
bool GetRecord(RoadDesign* road, ListMember<Record> list, std::int32_t index, Record* record) noexcept {
    return QueryBool(
        road,
        [&](const AskedRoad& asked) {
            const CountedList<Record>& records = asked.road.*list;
            Outcome valid = RequireRecord(records, index);
            if (valid) *record = records[index];
            return valid;
        },
        record);
}

template <class Record>
bool SetRecord(RoadDesign* road, ListMember<Record> list, std::int32_t index, const Record* record) noexcept {
    return EditBool(
        road,
        [&](RoadDesign& it) {
            Outcome valid = RequireRecord(it.*list, index);
            if (valid) (it.*list).Edit()[static_cast<std::size_t>(index)] = Stored(*record);
            return valid;
        },
        record);
}

template <class Record>
bool InsertRecord(RoadDesign* road, ListMember<Record> list, const Record* record, std::int32_t index) noexcept {
    return EditBool(
        road,
        [&](RoadDesign& it) {
            (it.*list).Insert(Stored(*record), index);
            return Outcome();
        },
        record);
}

template <class Record>
bool AppendRecords(RoadDesign* road, ListMember<Record> list, const Record* records, std::int32_t count) noexcept {
    return EditBool(road, [&](RoadDesign& it) -> Outcome {
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
    return EditBool(road, [&](RoadDesign& it) {
        Outcome valid = RequireRecord(it.*list, index);
        if (valid) (it.*list).Remove(index);
        return valid;
    });
}

}  // namespace kesto
