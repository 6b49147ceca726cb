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

/// The status of a question asked of a road.
std::uint8_t StatusOf(RoadDesign* road, bool answered) {
    if (answered) return KESTO_SUCCESS;
    const std::optional<Failure> told = LastFailureOf(road);
    return static_cast<std::uint8_t>(told ? told->status : unwritten);
}

/// Checks the rows of a batch that has been called.
/// @param ran   what the call returned: true when it ran through
/// @param rowAt what stands in a row; ask: what the single question gives
template <class RowAt, class Ask>
void RequireRows(CallRun& it, bool complete, bool ran, std::int32_t count, RowAt&& rowAt, Ask&& ask) {
    Require(!ran || count == 0 || (complete && count > 0), "rows without what they need fail");
    if (count <= 0 || !complete) {
        for (std::int32_t i = 0; i < count; ++i) Require(IsUnwritten(rowAt(i)), "a refused batch writes nothing");
        return;
    }
    if (IsUnwritten(rowAt(0))) {  // no road can be built, or none is there
        Require(!ran, "a batch that writes nothing fails");
        Require(FreezeRoad(it.Road()) == nullptr, "a batch runs where a road can be built");
        return;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const Row row = rowAt(i);
        RequireSameRow(row, ask(i));
    }
    Require(ran, "a batch that answers rows is true");
}

/// Points to mileages and offsets.
template <class Batch, class One>
void LocateRows(CallRun& it, RoadDesign* road, Batch&& batch, One&& one) {
    const std::int32_t count = RowsFrom(it.in);
    const Column<double> x = Numbers(it.in, count), y = Numbers(it.in, count);
    const Column<double> mileage(it.in, count, false), offset(it.in, count, false);
    const Column<std::int32_t> occurrence(it.in, count, false);
    const Column<std::uint8_t> status(it.in, count, false);
    const bool complete = road != nullptr && x.Given() && y.Given() && mileage.Given() && offset.Given() &&
                          occurrence.Given() && status.Given();
    const bool result =
        batch(count, static_cast<const double*>(x.Given()), x.Step(), static_cast<const double*>(y.Given()), y.Step(),
              mileage.Given(), mileage.Step(), offset.Given(), offset.Step(), occurrence.Given(), occurrence.Step(),
              status.Given(), status.Step());
    RequireRows(
        it, complete, result, count,
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
template <class Batch, class One>
void PlaceRows(CallRun& it, RoadDesign* road, Batch&& batch, One&& one) {
    const std::int32_t count = RowsFrom(it.in);
    const Column<double> mileage = Numbers(it.in, count), offset = Numbers(it.in, count);
    const Column<double> angle = Numbers(it.in, count);
    const Column<std::int32_t> occurrence = Wholes(it.in, count);
    const Column<double> x(it.in, count, false), y(it.in, count, false), azimuth(it.in, count, false);
    const Column<std::uint8_t> status(it.in, count, false);
    const bool complete =
        road != nullptr && mileage.Given() && x.Given() && y.Given() && azimuth.Given() && status.Given();
    const bool result = batch(count, static_cast<const double*>(mileage.Given()), mileage.Step(),
                              static_cast<const std::int32_t*>(occurrence.Given()), occurrence.Step(),
                              static_cast<const double*>(offset.Given()), offset.Step(),
                              static_cast<const double*>(angle.Given()), angle.Step(), x.Given(), x.Step(), y.Given(),
                              y.Step(), azimuth.Given(), azimuth.Step(), status.Given(), status.Step());
    RequireRows(
        it, complete, result, count,
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
template <class Batch, class One>
void HeightRows(CallRun& it, RoadDesign* road, Batch&& batch, One&& one) {
    const std::int32_t count = RowsFrom(it.in);
    const Column<double> mileage = Numbers(it.in, count), offset = Numbers(it.in, count);
    const Column<std::int32_t> occurrence = Wholes(it.in, count);
    const Column<double> height(it.in, count, false);
    const Column<std::uint8_t> status(it.in, count, false);
    const bool complete = road != nullptr && mileage.Given() && height.Given() && status.Given();
    const bool result = batch(count, static_cast<const double*>(mileage.Given()), mileage.Step(),
                              static_cast<const std::int32_t*>(occurrence.Given()), occurrence.Step(),
                              static_cast<const double*>(offset.Given()), offset.Step(), height.Given(), height.Step(),
                              status.Given(), status.Step());
    RequireRows(
        it, complete, result, count,
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

/// Freezes the road: the copy answers as the road does.
void Freeze(CallRun& it) {
    RoadDesign* const frozen = it.Ask(KESTO_NAMED(FreezeRoad));
    Require(KESTO_NAMED(IsFrozenRoad)(frozen) == (frozen != nullptr), "what FreezeRoad() makes is frozen");
    const double x = it.in.Number(), y = it.in.Number();
    Row one, other;
    const bool live = GetMileageAndOffset(it.Road(), x, y, &one.a, &one.b, &one.k);
    const bool alike = GetMileageAndOffset(frozen, x, y, &other.a, &other.b, &other.k) == live;
    if (frozen != nullptr) {
        Require(alike, "a frozen road answers where the road does");
        RequireSameRow(one, other);
    }
    EndRoadDesign(frozen);
}

template <class Function>
auto OfRoad(CallRun& it, const Named<Function>& function) {
    return [&it, function](auto... arguments) { return function(it.Road(), arguments...); };
}

void LocateRoad(CallRun& it) {
    LocateRows(it, it.Road(), OfRoad(it, KESTO_NAMED(GetMileageAndOffsetBatch)), GetMileageAndOffset);
}

void PlaceRoad(CallRun& it) {
    PlaceRows(it, it.Road(), OfRoad(it, KESTO_NAMED(GetPositionAndAzimuthBatch)), GetPositionAndAzimuth);
}

void HeightRoad(CallRun& it) { HeightRows(it, it.Road(), OfRoad(it, KESTO_NAMED(GetHeightBatch)), GetHeight); }

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

const CallGroup batchCalls{LocateRoad, PlaceRoad, HeightRoad, Freeze, OverlapRoad};

}  // namespace kesto::fuzz
