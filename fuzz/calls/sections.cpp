// The calls of the cross sections: plates, section mileages, change sections, the road side.

#include <memory>

#include "call_run.hpp"

namespace kesto::fuzz {

namespace {

/// So many records in memory of just their size.
template <class Value>
class Room {
public:
    explicit Room(std::int32_t count) : values(std::make_unique<Value[]>(static_cast<std::size_t>(count))) {}
    Value* Data() { return values.get(); }
    Value& operator[](std::int32_t i) { return values[static_cast<std::size_t>(i)]; }

private:
    std::unique_ptr<Value[]> values;
};

constexpr std::int32_t someValues = 5;

/// An array that a call fills: its room is what is needed, or less.
template <class Array, class Value>
struct OutArray {
    explicit OutArray(Bytes& in, std::int32_t needed)
        : capacity(in.Rarely() ? in.Byte() % 3 : std::max(needed, 0)),
          room(capacity),
          array{room.Data(), -3, capacity} {}

    void RequireFilled(bool filled, std::int32_t needed) const {
        if (filled) Require(array.count == needed && needed <= capacity, "a filled array holds what it counts");
    }

    std::int32_t capacity;
    Room<Value> room;
    Array array;
};

// ------------------------------------------------------------------------------------------------------------- plates

void Fill(Bytes& in, SectionPlate& plate) {
    in.Field(plate.name);
    in.Field(plate.code);
    for (double* number : {&plate.width, &plate.crossSlope, &plate.step, &plate.extra}) *number = in.Number();
}

void CountPlates(CallRun& it) {
    Require(it.Ask(KESTO_NAMED(GetStandardSectionPlateCount), it.in.Whole()) >= 0, "a count is never negative");
}

void AddPlate(CallRun& it) {
    SectionPlate plate{};
    Fill(it.in, plate);
    const std::int32_t side = it.in.Whole();
    const std::int32_t before = GetStandardSectionPlateCount(it.Road(), side);
    const bool added = it.Edit(KESTO_NAMED(AddStandardSectionPlate), it.OrNull(&plate), side, it.in.Index(before));
    Require(GetStandardSectionPlateCount(it.Road(), side) == before + (added ? 1 : 0), "an added plate counts");
}

void AddPlates(CallRun& it) {
    const std::int32_t count = it.in.Byte() % someValues;
    Room<SectionPlate> plates(count);
    for (std::int32_t i = 0; i < count; ++i) Fill(it.in, plates[i]);
    const std::int32_t side = it.in.Whole();
    const std::int32_t before = GetStandardSectionPlateCount(it.Road(), side);
    const bool added = it.Edit(KESTO_NAMED(AddStandardSectionPlateList), it.OrNull(plates.Data()), count, side);
    Require(GetStandardSectionPlateCount(it.Road(), side) == before + (added ? count : 0), "added plates count");
}

void DeletePlate(CallRun& it) {
    const std::int32_t side = it.in.Whole();
    const std::int32_t before = GetStandardSectionPlateCount(it.Road(), side);
    const bool deleted = it.Edit(KESTO_NAMED(DeleteStandardSectionPlate), side, it.in.Index(before));
    Require(GetStandardSectionPlateCount(it.Road(), side) == before - (deleted ? 1 : 0), "a deleted plate is gone");
}

void ReadPlate(CallRun& it) {
    const std::int32_t side = it.in.Whole();
    const std::int32_t count = GetStandardSectionPlateCount(it.Road(), side);
    SectionPlate plate{};
    it.Ask(KESTO_NAMED(GetStandardSectionPlate), side, it.in.Index(count), it.OrNull(&plate));
}

void WritePlate(CallRun& it) {
    const std::int32_t side = it.in.Whole();
    SectionPlate plate{};
    Fill(it.in, plate);
    const std::int32_t count = GetStandardSectionPlateCount(it.Road(), side);
    it.Edit(KESTO_NAMED(SetStandardSectionPlate), side, it.in.Index(count), it.OrNull(&plate));
}

void ReadPlates(CallRun& it) {
    const std::int32_t side = it.in.Whole();
    const std::int32_t count = GetStandardSectionPlateCount(it.Road(), side);
    OutArray<SectionPlateArray, SectionPlate> plates(it.in, count);
    plates.RequireFilled(it.Ask(KESTO_NAMED(GetStandardSection), side, it.OrNull(&plates.array)), count);
}

// --------------------------------------------------------------------------------------------------- section mileages

SectionMileageIndex EntryFrom(Bytes& in) {
    SectionMileageIndex entry{};
    in.Field(entry.stakeText);
    entry.mileage = in.Number();
    return entry;
}

void AddEntry(CallRun& it) {
    const SectionMileageIndex entry = EntryFrom(it.in);
    const std::int32_t before = it.Ask(KESTO_NAMED(GetSectionMileageIndexCount));
    const bool added = it.Edit(KESTO_NAMED(AddSectionMileageIndex), it.OrNull(&entry));
    Require(GetSectionMileageIndexCount(it.Road()) == before + (added ? 1 : 0), "an added entry counts");
}

void DeleteEntry(CallRun& it) {
    it.Edit(KESTO_NAMED(DeleteSectionMileageIndex), it.in.Index(GetSectionMileageIndexCount(it.Road())));
}

void ReadEntry(CallRun& it) {
    SectionMileageIndex entry{};
    const std::int32_t index = it.in.Index(GetSectionMileageIndexCount(it.Road()));
    if (it.Ask(KESTO_NAMED(GetSectionMileageIndex), index, it.OrNull(&entry))) {
        RequireFiniteNumbers(entry.mileage);
    }
}

void WriteEntry(CallRun& it) {
    const SectionMileageIndex entry = EntryFrom(it.in);
    const std::int32_t index = it.in.Index(GetSectionMileageIndexCount(it.Road()));
    it.Edit(KESTO_NAMED(SetSectionMileageIndex), index, it.OrNull(&entry));
}

// ---------------------------------------------------------------------------------------------------- change sections

/// The arguments of the calls that add or set a change section: mostly one value for each plate.
struct Change {
    explicit Change(CallRun& it)
        : side(it.in.Whole()),
          kind(it.in.Whole()),
          count(it.in.Rarely() ? it.in.Byte() % someValues : GetStandardSectionPlateCount(it.Road(), side)),
          values(count),
          flags(count) {
        for (std::int32_t i = 0; i < count; ++i) values[i] = it.in.Number();
        for (std::int32_t i = 0; i < count; ++i) flags[i] = it.in.Whole();
        mileage = it.in.Number();
        occurrence = it.in.Whole();
        type = it.in.Whole();
        valueArray = {it.OrNull(values.Data()), count, 0};
        flagArray = {flags.Data(), it.in.Rarely() ? 0 : count, 0};
        before = GetChangeSectionCount(it.Road(), side, kind);
    }

    void RequireCounted(CallRun& it, bool added) const {
        Require(GetChangeSectionCount(it.Road(), side, kind) == before + (added ? 1 : 0), "an added section counts");
    }

    std::int32_t side, kind, count;
    Room<double> values;
    Room<std::int32_t> flags;
    double mileage;
    std::int32_t occurrence, type, before;
    DoubleArray valueArray;
    Int32Array flagArray;
};

void AddChange(CallRun& it) {
    const Change its(it);
    its.RequireCounted(it, it.Edit(KESTO_NAMED(AddChangeSection), its.mileage, its.side, its.kind,
                                   it.OrNull(&its.valueArray), its.occurrence, its.type));
}

void AddChange2(CallRun& it) {
    const Change its(it);
    its.RequireCounted(it, it.Edit(KESTO_NAMED(AddChangeSection2), its.mileage, its.side, its.kind, &its.valueArray,
                                   it.OrNull(&its.flagArray), its.occurrence, its.type));
}

void AddChangeList(CallRun& it) {
    Change its(it);
    its.RequireCounted(it, it.Edit(KESTO_NAMED(AddChangeSectionList), its.mileage, its.side, its.kind,
                                   it.OrNull(its.values.Data()), its.count, its.occurrence, its.type));
}

void AddChangeList2(CallRun& it) {
    Change its(it);
    its.RequireCounted(it,
                       it.Edit(KESTO_NAMED(AddChangeSectionList2), its.mileage, its.side, its.kind, its.values.Data(),
                               it.OrNull(its.flags.Data()), its.count, its.occurrence, its.type));
}

void WriteChange(CallRun& it) {
    const Change its(it);
    it.Edit(KESTO_NAMED(SetChangeSection), its.side, its.kind, it.in.Index(its.before), its.mileage,
            it.OrNull(&its.valueArray), its.occurrence, its.type);
    its.RequireCounted(it, false);
}

void WriteChange2(CallRun& it) {
    const Change its(it);
    it.Edit(KESTO_NAMED(SetChangeSection2), its.side, its.kind, it.in.Index(its.before), its.mileage, &its.valueArray,
            it.OrNull(&its.flagArray), its.occurrence, its.type);
    its.RequireCounted(it, false);
}

void DeleteChange(CallRun& it) {
    const std::int32_t side = it.in.Whole(), kind = it.in.Whole();
    const std::int32_t before = it.Ask(KESTO_NAMED(GetChangeSectionCount), side, kind);
    const bool deleted = it.Edit(KESTO_NAMED(DeleteChangeSection), side, kind, it.in.Index(before));
    Require(GetChangeSectionCount(it.Road(), side, kind) == before - (deleted ? 1 : 0), "a deleted section is gone");
}

void ReadChange(CallRun& it) {
    const std::int32_t side = it.in.Whole(), kind = it.in.Whole();
    const std::int32_t index = it.in.Index(GetChangeSectionCount(it.Road(), side, kind));
    OutArray<DoubleArray, double> values(it.in, someValues);
    double mileage = 0;
    std::int32_t occurrence = 0;
    it.Ask(KESTO_NAMED(GetChangeSection), side, kind, index, &mileage, it.OrNull(&values.array), &occurrence);
}

void ReadChange2(CallRun& it) {
    const std::int32_t side = it.in.Whole(), kind = it.in.Whole();
    const std::int32_t index = it.in.Index(GetChangeSectionCount(it.Road(), side, kind));
    OutArray<DoubleArray, double> values(it.in, someValues);
    OutArray<Int32Array, std::int32_t> flags(it.in, someValues);
    double mileage = 0;
    std::int32_t occurrence = 0;
    if (it.Ask(KESTO_NAMED(GetChangeSection2), side, kind, index, it.OrNull(&mileage), &values.array, &flags.array,
               &occurrence)) {
        Require(values.array.count == flags.array.count, "every value has its flag");
    }
}

void ReadType(CallRun& it) {
    const std::int32_t side = it.in.Whole(), kind = it.in.Whole(), index = it.in.Index(someValues);
    std::int32_t type = 0;
    it.Ask(KESTO_NAMED(GetChangeSectionType), side, kind, index, it.OrNull(&type));
}

void WriteType(CallRun& it) {
    const std::int32_t side = it.in.Whole(), kind = it.in.Whole(), index = it.in.Index(someValues);
    it.Edit(KESTO_NAMED(SetChangeSectionType), side, kind, index, it.in.Whole());
}

// ------------------------------------------------------------------------------------------------------ the road side

template <class Function>
void ReadSide(CallRun& it, const Named<Function>& function) {
    const double mileage = it.in.Number();
    const std::int32_t occurrence = it.in.Whole(), side = it.in.Whole();
    const std::int32_t count = GetStandardSectionPlateCount(it.Road(), side);
    OutArray<SectionPlateArray, SectionPlate> plates(it.in, count);
    const bool filled = it.Ask(function, mileage, occurrence, side, it.OrNull(&plates.array));
    plates.RequireFilled(filled, count);
    for (std::int32_t i = 0; filled && i < count; ++i) {
        const SectionPlate& plate = plates.room[i];
        RequireFiniteNumbers(plate.x, plate.y, plate.height, plate.offset);
    }
}

}  // namespace

const CallGroup sectionCalls{
    CountPlates,
    AddPlate,
    AddPlates,
    DeletePlate,
    ReadPlate,
    WritePlate,
    ReadPlates,
    AddEntry,
    DeleteEntry,
    ReadEntry,
    WriteEntry,
    AddChange,
    AddChange2,
    AddChangeList,
    AddChangeList2,
    WriteChange,
    WriteChange2,
    DeleteChange,
    ReadChange,
    ReadChange2,
    ReadType,
    WriteType,
    [](CallRun& it) { ReadSide(it, KESTO_NAMED(GetRoadSide)); },
    [](CallRun& it) { ReadSide(it, KESTO_NAMED(GetRoadSideNoHeight)); },
};

}  // namespace kesto::fuzz
