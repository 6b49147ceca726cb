// The calls of the design lists: intersections, elements, coordinate points, broken chains, grade-change points.

#include <memory>

#include "call_run.hpp"

namespace kesto::fuzz {

namespace {

void Fill(Bytes& in, Intersection& it) {
    in.Field(it.name);
    for (double* number : {&it.x, &it.y, &it.radius, &it.spiralIn, &it.spiralOut, &it.radiusIn, &it.radiusOut})
        *number = in.Number();
}

void Fill(Bytes& in, Element& it) {
    it.type = in.Whole();
    it.turnDirection = in.Byte();
    for (double* number : {&it.startMileage, &it.startX, &it.startY, &it.startAzimuth, &it.secondAzimuth,
                           &it.startRadius, &it.endRadius, &it.length})
        *number = in.Number();
    it.flag = in.Whole();
}

void Fill(Bytes& in, Coordinate& it) {
    it.type = in.Whole();
    it.turnDirection = in.Whole();
    it.x = in.Number();
    it.y = in.Number();
    it.radius = in.Number();
    in.Field(it.name);
}

void Fill(Bytes& in, BrokenChain& it) {
    it.backMileage = in.Number();
    it.aheadMileage = in.Number();
}

void Fill(Bytes& in, VerticalCurve& it) {
    for (std::int32_t* whole : {&it.curveSign, &it.startOccurrence, &it.endOccurrence, &it.occurrence})
        *whole = in.Whole();
    for (double* number : {&it.mileage, &it.elevation, &it.radius, &it.startMileage, &it.endMileage, &it.gradeOut,
                           &it.distanceToNext, &it.tangentLength})
        *number = in.Number();
}

/// The functions of a list. Those of broken chains and grade-change points add in order and take no index.
template <class Record, class AddOne>
struct List {
    Named<std::int32_t(RoadDesign*)> count;
    Named<AddOne> add;
    Named<bool(RoadDesign*, const Record*, std::int32_t)> addMany;
    Named<bool(RoadDesign*, std::int32_t)> remove;
    Named<bool(RoadDesign*, std::int32_t, Record*)> get;
    Named<bool(RoadDesign*, std::int32_t, const Record*)> set;
};

List<Intersection, decltype(AddIntersection)> Intersections() {
    return {KESTO_NAMED(GetIntersectionCount), KESTO_NAMED(AddIntersection), KESTO_NAMED(AddIntersectionList),
            KESTO_NAMED(DeleteIntersection),   KESTO_NAMED(GetIntersection), KESTO_NAMED(SetIntersection)};
}

List<Element, decltype(AddElement)> Elements() {
    return {KESTO_NAMED(GetElementCount), KESTO_NAMED(AddElement), KESTO_NAMED(AddElementList),
            KESTO_NAMED(DeleteElement),   KESTO_NAMED(GetElement), KESTO_NAMED(SetElement)};
}

List<Coordinate, decltype(AddCoordinate)> Coordinates() {
    return {KESTO_NAMED(GetCoordinateCount), KESTO_NAMED(AddCoordinate), KESTO_NAMED(AddCoordinateList),
            KESTO_NAMED(DeleteCoordinate),   KESTO_NAMED(GetCoordinate), KESTO_NAMED(SetCoordinate)};
}

List<BrokenChain, decltype(AddBrokenChain)> BrokenChains() {
    return {KESTO_NAMED(GetBrokenChainCount), KESTO_NAMED(AddBrokenChain), KESTO_NAMED(AddBrokenChainList),
            KESTO_NAMED(DeleteBrokenChain),   KESTO_NAMED(GetBrokenChain), KESTO_NAMED(SetBrokenChain)};
}

List<VerticalCurve, decltype(AddVerticalCurve)> VerticalCurves() {
    return {KESTO_NAMED(GetVerticalCurveCount), KESTO_NAMED(AddVerticalCurve), KESTO_NAMED(AddVerticalCurveList),
            KESTO_NAMED(DeleteVerticalCurve),   KESTO_NAMED(GetVerticalCurve), KESTO_NAMED(SetVerticalCurve)};
}

template <auto listOf>
void CountRecords(CallRun& it) {
    Require(it.Ask(listOf().count) >= 0, "a count is never negative");
}

template <class Record, class AddOne>
Record RecordFor(const List<Record, AddOne>& /*list*/, Bytes& in) {
    Record record{};
    Fill(in, record);
    return record;
}

template <auto listOf>
void AddRecord(CallRun& it) {
    const auto list = listOf();
    const auto record = RecordFor(list, it.in);
    const auto* const given = it.OrNull(&record);
    const std::int32_t before = list.count(it.Road());
    bool added = false;
    if constexpr (std::is_invocable_v<decltype(*list.add.function), RoadDesign*, decltype(given)>) {
        added = it.Edit(list.add, given);
    } else {
        added = it.Edit(list.add, given, it.in.Index(before));
    }
    Require(list.count(it.Road()) == before + (added ? 1 : 0), "an added record counts, a refused one does not");
}

template <auto listOf>
void AddRecords(CallRun& it) {
    const auto list = listOf();
    const std::int32_t mostGiven = 20;  // some more than the most that most lists take
    const std::int32_t count = it.in.Byte() % (mostGiven + 1);
    const auto records = std::make_unique<decltype(RecordFor(list, it.in))[]>(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) Fill(it.in, records[static_cast<std::size_t>(i)]);
    const std::int32_t before = list.count(it.Road());
    const bool none = it.in.Rarely();  // then the count may be any
    const bool added =
        none ? it.Edit(list.addMany, nullptr, it.in.Whole()) : it.Edit(list.addMany, records.get(), count);
    const std::int32_t more = list.count(it.Road()) - before;
    Require(added && !none ? more <= count : more == 0, "added records count, refused ones do not");
}

template <auto listOf>
void DeleteRecord(CallRun& it) {
    const auto list = listOf();
    const std::int32_t before = list.count(it.Road());
    const std::int32_t index = it.in.Index(before);
    const bool deleted = it.Edit(list.remove, index);
    Require(deleted == (index >= 0 && index < before), "a record is deleted by its index");
    Require(list.count(it.Road()) == before - (deleted ? 1 : 0), "a deleted record is gone");
}

template <auto listOf>
void ReadRecord(CallRun& it) {
    const auto list = listOf();
    const std::int32_t count = list.count(it.Road());
    const std::int32_t index = it.in.Index(count);
    auto record = RecordFor(list, it.in);
    const auto given = it.OrNull(&record);
    const bool got = it.Ask(list.get, index, given);
    Require(got == (given != nullptr && index >= 0 && index < count), "a record is read by its index");
}

template <auto listOf>
void WriteRecord(CallRun& it) {
    const auto list = listOf();
    const std::int32_t before = list.count(it.Road());
    const std::int32_t index = it.in.Index(before);
    const auto record = RecordFor(list, it.in);
    it.Edit(list.set, index, it.OrNull(&record));
    Require(list.count(it.Road()) == before, "a written record takes another one's place");
}

}  // namespace

const CallGroup listCalls{
    CountRecords<Intersections>,  AddRecord<Intersections>,    AddRecords<Intersections>,  DeleteRecord<Intersections>,
    ReadRecord<Intersections>,    WriteRecord<Intersections>,  CountRecords<Elements>,     AddRecord<Elements>,
    AddRecords<Elements>,         DeleteRecord<Elements>,      ReadRecord<Elements>,       WriteRecord<Elements>,
    CountRecords<Coordinates>,    AddRecord<Coordinates>,      AddRecords<Coordinates>,    DeleteRecord<Coordinates>,
    ReadRecord<Coordinates>,      WriteRecord<Coordinates>,    CountRecords<BrokenChains>, AddRecord<BrokenChains>,
    AddRecords<BrokenChains>,     DeleteRecord<BrokenChains>,  ReadRecord<BrokenChains>,   WriteRecord<BrokenChains>,
    CountRecords<VerticalCurves>, AddRecord<VerticalCurves>,   AddRecords<VerticalCurves>, DeleteRecord<VerticalCurves>,
    ReadRecord<VerticalCurves>,   WriteRecord<VerticalCurves>,
};

}  // namespace kesto::fuzz
