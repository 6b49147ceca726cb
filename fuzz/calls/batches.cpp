// The calls for many points and for frozen roads. Each row and each frozen answer is compared, to the bit, with what
// the function for one point says.

#include <array>
#include <cstdlib>
#include <memory>
#include <vector>

#include "call_run.hpp"

namespace kesto::fuzz {

namespace {

constexpr std::uint8_t unwritten = 0xA5;  // fills outputs before a call: no status is 165
constexpr std::int32_t mostRows = 40;

/// A column of a batch in memory of just its size, with any step and alignment.
template <class Value>
class Column {
public:
    Column(Bytes& in, std::int32_t rows, bool isInput) : count(std::max(rows, 0)) {
        constexpr auto size = static_cast<std::int32_t>(sizeof(Value));
        const std::uint8_t kind = in.Byte();
        step = kind < 128 ? size : static_cast<std::int32_t>(kind % 64) - 32;
        if (!isInput && std::abs(step) < size) step = step < 0 ? -size : size;  // or rows would overwrite each other
        const auto span = static_cast<std::size_t>(std::abs(step)) * static_cast<std::size_t>(std::max(count - 1, 0));
        const std::size_t shift = kind % 2;
        bytes.assign(span + sizeof(Value) + shift, unwritten);
        first = bytes.data() + shift + (step < 0 ? span : 0);
        given = in.Rarely() ? nullptr : first;
    }

    Value* Given() const { return reinterpret_cast<Value*>(given); }
    std::int32_t Step() const { return step; }
    Value operator[](std::int32_t row) const {
        Value value;
        std::memcpy(&value, first + std::ptrdiff_t{step} * row, sizeof value);
        return value;
    }
    void Set(std::int32_t row, Value value) { std::memcpy(first + std::ptrdiff_t{step} * row, &value, sizeof value); }

    /// The value of a row, or what a batch takes where no column is given.
    Value ValueOr(std::int32_t row, Value otherwise) const { return given == nullptr ? otherwise : (*this)[row]; }

private:
    std::int32_t count;
    std::int32_t step = 0;
    std::vector<std::uint8_t> bytes;
    std::uint8_t* first = nullptr;
    std::uint8_t* given = nullptr;
};

Column<double> Numbers(Bytes& in, std::int32_t rows) {
    Column<double> column(in, rows, true);
    double number = 0, growth = 0;
    for (std::int32_t i = 0; i < rows; ++i) {  // some numbers each a start of a row of evenly spaced ones
        if (i % 8 == 0) number = in.Number(), growth = in.Byte() * 0.4;
        column.Set(i, number + growth * (i % 8));
    }
    return column;
}

Column<std::int32_t> Wholes(Bytes& in, std::int32_t rows) {
    Column<std::int32_t> column(in, rows, true);
    for (std::int32_t i = 0; i < rows; ++i) column.Set(i, i % 4 == 0 ? in.Whole() : 0);
    return column;
}

template <class Value>
Value Unwritten() {
    Value value;
    std::memset(&value, unwritten, sizeof value);
    return value;
}

std::int32_t RowsFrom(Bytes& in) {
    const std::uint8_t byte = in.Byte();
    return byte == 0xFF ? -1 : byte % (mostRows + 1);
}

/// What one row of any batch gives.
struct Row {
    double a = Unwritten<double>(), b = Unwritten<double>(), c = Unwritten<double>();
    std::int32_t k = Unwritten<std::int32_t>();
    std::uint8_t status = unwritten;
};

void RequireSameRow(const Row& batch, const Row& one) {
    Require(batch.status == one.status, "a row has the status of its question");
    Require(SameBits(batch.a, one.a) && SameBits(batch.b, one.b) && SameBits(batch.c, one.c) && batch.k == one.k,
            "a row has the answer of its question");
}

bool IsUnwritten(const Row& row) {
    const Row none;
    return SameBits(row.a, none.a) && SameBits(row.b, none.b) && SameBits(row.c, none.c) && row.k == none.k &&
           row.status == none.status;
}

/// The status of a question asked of a road, as the functions of frozen roads return it.
std::uint8_t StatusOf(RoadDesign* road, bool answered) {
    if (answered) return KESTO_SUCCESS;
    const std::optional<Failure> told = LastFailureOf(road);
    return static_cast<std::uint8_t>(told ? told->status : unwritten);
}

std::uint8_t StatusOf(const FrozenRoad* /*road*/, std::int32_t status) { return static_cast<std::uint8_t>(status); }

/// Checks the rows of a batch that has been called.
/// @param ran   what the call returned: true or 0 when it ran through
/// @param rowAt what stands in a row; ask: what the single question gives
template <class RowAt, class Ask>
void RequireRows(CallRun& it, bool ofFrozen, bool complete, bool ran, std::int32_t count, RowAt&& rowAt, Ask&& ask) {
    Require(!ran || count == 0 || (complete && count > 0), "rows without what they need fail");
    if (count <= 0 || !complete) {
        for (std::int32_t i = 0; i < count; ++i) Require(IsUnwritten(rowAt(i)), "a refused batch writes nothing");
        return;
    }
    if (IsUnwritten(rowAt(0))) {  // no road can be built, or none is there
        Require(!ran, "a batch that writes nothing fails");
        Require(!ofFrozen && FreezeRoad(it.Road()) == nullptr, "a batch runs where a road can be built");
        return;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const Row row = rowAt(i);
        RequireSameRow(row, ask(i));
    }
    Require(ran, "a batch that answers rows is true");
}

template <class Result>
bool Ran(Result result) {
    if constexpr (std::is_same_v<Result, bool>) return result;
    return result == KESTO_SUCCESS;
}

/// Points to mileages and offsets, by a road or by a frozen one.
template <class Road, class Batch, class One>
void LocateRows(CallRun& it, Road* road, Batch&& batch, One&& one) {
    const std::int32_t count = RowsFrom(it.in);
    const Column<double> x = Numbers(it.in, count), y = Numbers(it.in, count);
    const Column<double> mileage(it.in, count, false), offset(it.in, count, false);
    const Column<std::int32_t> occurrence(it.in, count, false);
    const Column<std::uint8_t> status(it.in, count, false);
    const bool complete = road != nullptr && x.Given() && y.Given() && mileage.Given() && offset.Given() &&
                          occurrence.Given() && status.Given();
    const auto result =
        batch(count, static_cast<const double*>(x.Given()), x.Step(), static_cast<const double*>(y.Given()), y.Step(),
              mileage.Given(), mileage.Step(), offset.Given(), offset.Step(), occurrence.Given(), occurrence.Step(),
              status.Given(), status.Step());
    RequireRows(
        it, !std::is_same_v<Road, RoadDesign>, complete, Ran(result), count,
        [&](std::int32_t i) {
            Row row;
            row.a = mileage[i];
            row.b = offset[i];
            row.k = occurrence[i];
            row.status = status[i];
            return row;
        },
        [&](std::int32_t i) {
            Row row;
            row.status = StatusOf(road, one(road, x[i], y[i], &row.a, &row.b, &row.k));
            return row;
        });
}

/// Mileages and offsets to points.
template <class Road, class Batch, class One>
void PlaceRows(CallRun& it, Road* road, Batch&& batch, One&& one) {
    const std::int32_t count = RowsFrom(it.in);
    const Column<double> mileage = Numbers(it.in, count), offset = Numbers(it.in, count);
    const Column<double> angle = Numbers(it.in, count);
    const Column<std::int32_t> occurrence = Wholes(it.in, count);
    const Column<double> x(it.in, count, false), y(it.in, count, false), azimuth(it.in, count, false);
    const Column<std::uint8_t> status(it.in, count, false);
    const bool complete =
        road != nullptr && mileage.Given() && x.Given() && y.Given() && azimuth.Given() && status.Given();
    const auto result = batch(count, static_cast<const double*>(mileage.Given()), mileage.Step(),
                              static_cast<const std::int32_t*>(occurrence.Given()), occurrence.Step(),
                              static_cast<const double*>(offset.Given()), offset.Step(),
                              static_cast<const double*>(angle.Given()), angle.Step(), x.Given(), x.Step(), y.Given(),
                              y.Step(), azimuth.Given(), azimuth.Step(), status.Given(), status.Step());
    RequireRows(
        it, !std::is_same_v<Road, RoadDesign>, complete, Ran(result), count,
        [&](std::int32_t i) {
            Row row;
            row.a = x[i];
            row.b = y[i];
            row.c = azimuth[i];
            row.status = status[i];
            return row;
        },
        [&](std::int32_t i) {
            constexpr double square = 90;  // degrees
            Row row;
            row.status = StatusOf(road, one(road, mileage[i], offset.ValueOr(i, 0), angle.ValueOr(i, square), &row.a,
                                            &row.b, &row.c, occurrence.ValueOr(i, 0)));
            return row;
        });
}

/// Mileages and offsets to heights.
template <class Road, class Batch, class One>
void HeightRows(CallRun& it, Road* road, Batch&& batch, One&& one) {
    const std::int32_t count = RowsFrom(it.in);
    const Column<double> mileage = Numbers(it.in, count), offset = Numbers(it.in, count);
    const Column<std::int32_t> occurrence = Wholes(it.in, count);
    const Column<double> height(it.in, count, false);
    const Column<std::uint8_t> status(it.in, count, false);
    const bool complete = road != nullptr && mileage.Given() && height.Given() && status.Given();
    const auto result = batch(count, static_cast<const double*>(mileage.Given()), mileage.Step(),
                              static_cast<const std::int32_t*>(occurrence.Given()), occurrence.Step(),
                              static_cast<const double*>(offset.Given()), offset.Step(), height.Given(), height.Step(),
                              status.Given(), status.Step());
    RequireRows(
        it, !std::is_same_v<Road, RoadDesign>, complete, Ran(result), count,
        [&](std::int32_t i) {
            Row row;
            row.a = height[i];
            row.status = status[i];
            return row;
        },
        [&](std::int32_t i) {
            Row row;
            row.status = StatusOf(road, one(road, mileage[i], occurrence.ValueOr(i, 0), offset.ValueOr(i, 0), &row.a));
            return row;
        });
}

// ------------------------------------------------------------------------------------------------------- frozen roads

FrozenSlot& FrozenFrom(CallRun& it) { return it.frozen[it.in.Byte() % it.frozen.size()]; }

void Freeze(CallRun& it) {
    FrozenSlot& slot = FrozenFrom(it);
    KESTO_NAMED(ReleaseFrozenRoad)(slot.road);
    slot = {it.Ask(KESTO_NAMED(FreezeRoad)), it.current, it.Slot().edits};
}

void Release(CallRun& it) {
    FrozenSlot& slot = FrozenFrom(it);
    KESTO_NAMED(ReleaseFrozenRoad)(slot.road);
    slot = {};
}

/// Asks a frozen road and, if it has not been edited since, the road that it was frozen from.
template <class AskFrozen, class AskRoad>
void AskBoth(CallRun& it, AskFrozen&& askFrozen, AskRoad&& askRoad) {
    const FrozenSlot& slot = FrozenFrom(it);
    Row frozen;
    frozen.status = static_cast<std::uint8_t>(askFrozen(slot.road, frozen));
    if (slot.road == nullptr) return Require(frozen.status == KESTO_NULL_HANDLE_OR_PATH, "no frozen road answers");
    const RoadSlot& origin = it.roads[slot.origin];
    if (origin.edits != slot.edits || origin.road == nullptr) return;
    Row live;
    live.status = StatusOf(origin.road, askRoad(origin.road, live));
    RequireSameRow(frozen, live);
}

void AskFrozenFoot(CallRun& it) {
    const double x = it.in.Number() * 4, y = it.in.Number() * 4;
    AskBoth(
        it,
        [&](const FrozenRoad* road, Row& row) {
            return KESTO_NAMED(FrozenGetMileageAndOffset)(road, x, y, &row.a, &row.b, &row.k);
        },
        [&](RoadDesign* road, Row& row) { return GetMileageAndOffset(road, x, y, &row.a, &row.b, &row.k); });
}

void AskFrozenFootBetween(CallRun& it) {
    const double x = it.in.Number() * 4, y = it.in.Number() * 4, lower = it.in.Number(), upper = it.in.Number();
    const std::int32_t lowerOccurrence = it.in.Whole(), upperOccurrence = it.in.Whole();
    AskBoth(
        it,
        [&](const FrozenRoad* road, Row& row) {
            return KESTO_NAMED(FrozenGetMileAndOffsetInLim)(road, x, y, lower, lowerOccurrence, upper, upperOccurrence,
                                                            &row.a, &row.b, &row.k);
        },
        [&](RoadDesign* road, Row& row) {
            return GetMileAndOffsetInLim(road, x, y, lower, lowerOccurrence, upper, upperOccurrence, &row.a, &row.b,
                                         &row.k);
        });
}

void AskFrozenPosition(CallRun& it) {
    const double mileage = it.in.Number(), offset = it.in.Number(), angle = it.in.Number();
    const std::int32_t occurrence = it.in.Whole();
    AskBoth(
        it,
        [&](const FrozenRoad* road, Row& row) {
            return KESTO_NAMED(FrozenGetPositionAndAzimuth)(road, mileage, offset, angle, &row.a, &row.b, &row.c,
                                                            occurrence);
        },
        [&](RoadDesign* road, Row& row) {
            return GetPositionAndAzimuth(road, mileage, offset, angle, &row.a, &row.b, &row.c, occurrence);
        });
}

void AskFrozenHeight(CallRun& it) {
    const double mileage = it.in.Number(), offset = it.in.Number();
    const std::int32_t occurrence = it.in.Whole();
    AskBoth(
        it,
        [&](const FrozenRoad* road, Row& row) {
            return KESTO_NAMED(FrozenGetHeight)(road, mileage, occurrence, offset, &row.a);
        },
        [&](RoadDesign* road, Row& row) { return GetHeight(road, mileage, occurrence, offset, &row.a); });
}

void AskFrozenContinuous(CallRun& it) {
    const double mileage = it.in.Number();
    const std::int32_t occurrence = it.in.Whole();
    AskBoth(
        it,
        [&](const FrozenRoad* road, Row& row) {
            row.a = mileage;
            return KESTO_NAMED(FrozenGetSrcMileage)(road, &row.a, occurrence);
        },
        [&](RoadDesign* road, Row& row) {
            row.a = mileage;
            return GetSrcMileage(road, &row.a, occurrence);
        });
}

/// Asks both roads for a record or records; those of the road stay as they are where it is not asked.
template <class Records, class AskFrozen, class AskRoad>
void AskBothRecords(CallRun& it, AskFrozen&& askFrozen, AskRoad&& askRoad) {
    Records frozen{}, live{};
    bool asked = false;
    AskBoth(
        it, [&](const FrozenRoad* road, Row& row) { return askFrozen(road, frozen, row); },
        [&](RoadDesign* road, Row& row) {
            asked = true;
            return askRoad(road, live, row);
        });
    Require(!asked || SameBits(frozen, live), "a frozen road has the records of its road");
}

template <class Frozen, class Live>
void AskFrozenSide(CallRun& it, const Frozen& ofFrozen, Live ofRoad) {
    constexpr std::int32_t room = 12;
    using Plates = std::array<SectionPlate, room>;
    const double mileage = it.in.Number();
    const std::int32_t occurrence = it.in.Rarely() ? it.in.Whole() : it.in.Byte() % 2;
    const std::int32_t side = it.in.Byte() % 3, capacity = it.in.Byte() % (room + 1);
    const auto ask = [&](const auto& function, auto* road, Plates& plates, Row& row) {
        SectionPlateArray array{plates.data(), 0, capacity};
        const auto answer = function(road, mileage, occurrence, side, &array);
        row.k = array.count;
        return answer;
    };
    AskBothRecords<Plates>(
        it, [&](const FrozenRoad* road, Plates& plates, Row& row) { return ask(ofFrozen, road, plates, row); },
        [&](RoadDesign* road, Plates& plates, Row& row) { return ask(ofRoad, road, plates, row); });
}

void AskFrozenStakeNearby(CallRun& it) {
    const double x = it.in.Number() * 4, y = it.in.Number() * 4;
    AskBothRecords<StakeCoordinate>(
        it,
        [&](const FrozenRoad* road, StakeCoordinate& stake, Row& row) {
            return KESTO_NAMED(FrozenGetNearbyStakeCoordinate)(road, x, y, &stake, &row.k);
        },
        [&](RoadDesign* road, StakeCoordinate& stake, Row& row) {
            return GetNearbyStakeCoordinate(road, x, y, &stake, &row.k);
        });
}

void AskFrozenStake(CallRun& it) {
    const std::int32_t count = KESTO_NAMED(FrozenGetStakeCoordinateCount)(FrozenFrom(it).road);
    const std::int32_t index = it.in.Index(count);
    AskBothRecords<StakeCoordinate>(
        it,
        [&](const FrozenRoad* road, StakeCoordinate& stake, Row&) {
            return KESTO_NAMED(FrozenGetStakeCoordinate)(road, index, &stake);
        },
        [&](RoadDesign* road, StakeCoordinate& stake, Row&) { return GetStakeCoordinate(road, index, &stake); });
}

void AskFrozenIntersection(CallRun& it) {
    const double mileage = it.in.Number();
    const std::int32_t occurrence = it.in.Whole();
    const FrozenSlot& slot = FrozenFrom(it);
    std::int32_t index = -1;
    const std::int32_t status = KESTO_NAMED(FrozenGetIntersectionIndex)(slot.road, mileage, occurrence, &index);
    const RoadSlot& origin = it.roads[slot.origin];
    if (slot.road == nullptr || origin.edits != slot.edits || origin.road == nullptr) return;
    Require(index == GetIntersectionIndex(origin.road, mileage, occurrence), "a frozen road has its road's curves");
    Require(status == KESTO_SUCCESS || index == -1, "no curve where there is no answer");
}

/// A batch as a callable without its road. Rows that fail leave no last failure.
template <class Function>
auto OfRoad(CallRun& it, const Named<Function>& function) {
    return [&it, function](auto... arguments) { return function(it.Road(), arguments...); };
}

template <class Function>
auto OfFrozen(const FrozenRoad* road, const Named<Function>& function) {
    return [road, function](auto... arguments) { return function(road, arguments...); };
}

void LocateRoad(CallRun& it) {
    LocateRows(it, it.Road(), OfRoad(it, KESTO_NAMED(GetMileageAndOffsetBatch)), GetMileageAndOffset);
}

void PlaceRoad(CallRun& it) {
    PlaceRows(it, it.Road(), OfRoad(it, KESTO_NAMED(GetPositionAndAzimuthBatch)), GetPositionAndAzimuth);
}

void HeightRoad(CallRun& it) { HeightRows(it, it.Road(), OfRoad(it, KESTO_NAMED(GetHeightBatch)), GetHeight); }

void LocateFrozen(CallRun& it) {
    const FrozenRoad* const road = FrozenFrom(it).road;
    LocateRows(it, road, OfFrozen(road, KESTO_NAMED(FrozenGetMileageAndOffsetBatch)), FrozenGetMileageAndOffset);
}

void PlaceFrozen(CallRun& it) {
    const FrozenRoad* const road = FrozenFrom(it).road;
    PlaceRows(it, road, OfFrozen(road, KESTO_NAMED(FrozenGetPositionAndAzimuthBatch)), FrozenGetPositionAndAzimuth);
}

void HeightFrozen(CallRun& it) {
    const FrozenRoad* const road = FrozenFrom(it).road;
    HeightRows(it, road, OfFrozen(road, KESTO_NAMED(FrozenGetHeightBatch)), FrozenGetHeight);
}

/// Rows whose columns lie over each other: no answers are expected, only that nothing outside is touched.
void OverlapRoad(CallRun& it) {
    constexpr std::size_t room = 512;  // bytes
    constexpr std::int32_t rows = 16, widest = 16;
    std::vector<std::uint8_t> bytes(room);
    for (std::size_t i = 0; i + sizeof(double) <= room; i += sizeof(double)) {
        const double number = it.in.AtEnd() ? static_cast<double>(i) : it.in.Number();
        std::memcpy(bytes.data() + i, &number, sizeof number);
    }
    std::int32_t steps[6];
    std::uint8_t* columns[6];
    for (std::size_t i = 0; i < 6; ++i) {
        steps[i] = it.in.Byte() % (2 * widest + 1) - widest;
        columns[i] = bytes.data() + room / 2 - sizeof(double) / 2 + it.in.Byte() % 4;
    }
    it.Ask(KESTO_NAMED(GetMileageAndOffsetBatch), it.in.Byte() % rows, reinterpret_cast<const double*>(columns[0]),
           steps[0], reinterpret_cast<const double*>(columns[1]), steps[1], reinterpret_cast<double*>(columns[2]),
           steps[2], reinterpret_cast<double*>(columns[3]), steps[3], reinterpret_cast<std::int32_t*>(columns[4]),
           steps[4], columns[5], steps[5]);
}

}  // namespace

const CallGroup batchCalls{
    LocateRoad,
    PlaceRoad,
    HeightRoad,
    Freeze,
    Release,
    AskFrozenFoot,
    AskFrozenFootBetween,
    AskFrozenPosition,
    AskFrozenHeight,
    LocateFrozen,
    PlaceFrozen,
    HeightFrozen,
    OverlapRoad,
    AskFrozenContinuous,
    [](CallRun& it) { AskFrozenSide(it, KESTO_NAMED(FrozenGetRoadSide), GetRoadSide); },
    [](CallRun& it) { AskFrozenSide(it, KESTO_NAMED(FrozenGetRoadSideNoHeight), GetRoadSideNoHeight); },
    AskFrozenStakeNearby,
    AskFrozenStake,
    AskFrozenIntersection,
};

}  // namespace kesto::fuzz
