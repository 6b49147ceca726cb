// Exported functions of the alignment: element evaluation, broken chains, mileages, positions, inverse projection.

#include <cstddef>
#include <optional>

#include "alignment/broken_chains.hpp"
#include "alignment/intersection_method.hpp"
#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "core/guard.hpp"

using kesto::GuardBool;
using kesto::GuardFrozen;
using kesto::Outcome;
using kesto::RequireFinite;

namespace {

/// Writes a position to a caller's three outputs.
void Write(const kesto::Position& position, double* x, double* y, double* azimuth) noexcept {
    *x = position.x;
    *y = position.y;
    *azimuth = position.azimuth;
}

Outcome PositionInto(const kesto::ChainView& chain, kesto::StakeMileage stake, kesto::Offset offset, double* x,
                     double* y, double* azimuth) noexcept {
    if (Outcome finite = RequireFinite({stake.mileage, offset.distance}); !finite) return finite;
    std::optional<kesto::Position> position;
    Outcome found = kesto::FindPosition(chain, stake, offset, position);
    if (position) Write(*position, x, y, azimuth);
    return found;
}

template <class Road>
Outcome MileageInto(Road& road, double* mileage, std::int32_t occurrence) {
    if (Outcome finite = RequireFinite({*mileage}); !finite) return finite;
    const kesto::Result<double> continuous = kesto::ContinuousMileage(road, {*mileage, occurrence});
    if (!continuous) return continuous.failure();
    *mileage = *continuous;
    return {};
}

template <class Road>
kesto::Result<std::int32_t> IndexAt(Road& road, kesto::StakeMileage stake) {
    if (const Outcome finite = RequireFinite({stake.mileage}); !finite) return finite.failure();
    return kesto::IntersectionIndexAt(road, stake);
}

Outcome IndexInto(const FrozenRoad& frozen, kesto::StakeMileage stake, std::int32_t* index) {
    const kesto::Result<std::int32_t> found = IndexAt(frozen, stake);
    if (!found) return found.failure();
    *index = *found;
    return {};
}

/// Where the outputs of a search go.
struct Found {
    double* mileage;
    double* offset;
    std::int32_t* occurrence;

    /// A search may have found something in spite of a failure.
    void Take(const std::optional<kesto::Located>& located) const noexcept {
        if (!located) return;
        *mileage = located->stake.mileage;
        *offset = located->offset;
        *occurrence = located->stake.occurrence;
    }
};

template <class Road>
Outcome LocateInto(Road& road, kesto::Point point, const Found& out) {
    if (Outcome finite = RequireFinite({point.x, point.y}); !finite) return finite;
    std::optional<kesto::Located> located;
    Outcome found = kesto::Locate(road, point, located);
    out.Take(located);
    return found;
}

template <class Road>
Outcome LocateBetweenInto(Road& road, kesto::Point point, kesto::StakeMileage lower, kesto::StakeMileage upper,
                          const Found& out) {
    if (Outcome finite = RequireFinite({point.x, point.y, lower.mileage, upper.mileage}); !finite) return finite;
    std::optional<kesto::Located> located;
    Outcome found = kesto::LocateBetween(road, point, lower, upper, located);
    out.Take(located);
    return found;
}

kesto::Result<double> RoadMileage(const RoadDesign& road, double* startMileage) noexcept {
    if (startMileage != nullptr) *startMileage = road.settings.startMileage;
    const kesto::Result<kesto::RoadEnds> ends = kesto::EndsOf(road);
    if (!ends) return ends.failure();
    return ends->end;
}

Outcome AddChains(RoadDesign& road, const BrokenChain* chains, std::int32_t count) {
    if (count <= 0) return {};
    if (chains == nullptr) return kesto::Fail(KESTO_NULL_ARGUMENT);
    return kesto::InsertBrokenChains(road, {chains, static_cast<std::size_t>(count)});
}

}  // namespace

// clang-format off
int32_t KESTO_CALL GetIntersectionIndex(RoadDesign* h, double m, int32_t k) { return kesto::GuardValue<int32_t>(h, {0, -1}, [&](RoadDesign& road) { return IndexAt(road, {m, k}); }); }


int32_t KESTO_CALL GetBrokenChainCount(RoadDesign* h) { return kesto::CountRecords(h, &RoadDesign::brokenChains); }
bool KESTO_CALL AddBrokenChain(RoadDesign* h, const BrokenChain* r) { return GuardBool(h, [&](RoadDesign& road) { return kesto::InsertBrokenChain(road, *r); }, r); }
bool KESTO_CALL AddBrokenChainList(RoadDesign* h, const BrokenChain* r, int32_t n) { return GuardBool(h, [&](RoadDesign& road) { return AddChains(road, r, n); }); }
bool KESTO_CALL DeleteBrokenChain(RoadDesign* h, int32_t i) { return kesto::DeleteRecord(h, &RoadDesign::brokenChains, i); }
bool KESTO_CALL GetBrokenChain(RoadDesign* h, int32_t i, BrokenChain* r) { return kesto::GetRecord(h, &RoadDesign::brokenChains, i, r); }
bool KESTO_CALL SetBrokenChain(RoadDesign* h, int32_t i, const BrokenChain* r) { return GuardBool(h, [&](RoadDesign& road) { return kesto::ReplaceBrokenChain(road, i, *r); }, r); }

bool KESTO_CALL GetSrcMileage(RoadDesign* h, double* m, int32_t k) { return GuardBool(h, [&](RoadDesign& road) { return MileageInto(road, m, k); }, m); }
double KESTO_CALL GetRoadMileage(RoadDesign* h, double* start) { return kesto::GuardValue<double>(h, {0.0}, [&](RoadDesign& road) { return RoadMileage(road, start); }); }

bool KESTO_CALL GetPositionAndAzimuth(RoadDesign* h, double m, double offset, double angle, double* x, double* y, double* a, int32_t k) { return GuardBool(h, [&](RoadDesign& road) { return PositionInto(road, {m, k}, {offset, angle}, x, y, a); }, x, y, a); }

bool KESTO_CALL GetMileageAndOffset(RoadDesign* h, double x, double y, double* m, double* offset, int32_t* k) { return GuardBool(h, [&](RoadDesign& road) { return LocateInto(road, {x, y}, {m, offset, k}); }, m, offset, k); }
bool KESTO_CALL GetMileAndOffsetInLim(RoadDesign* h, double x, double y, double lower, int32_t lowerK, double upper, int32_t upperK, double* m, double* offset, int32_t* k) { return GuardBool(h, [&](RoadDesign& road) { return LocateBetweenInto(road, {x, y}, {lower, lowerK}, {upper, upperK}, {m, offset, k}); }, m, offset, k); }


int32_t KESTO_CALL FrozenGetIntersectionIndex(const FrozenRoad* f, double m, int32_t k, int32_t* index) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return IndexInto(frozen, {m, k}, index); }, index); }
int32_t KESTO_CALL FrozenGetSrcMileage(const FrozenRoad* f, double* m, int32_t k) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return MileageInto(frozen, m, k); }, m); }
int32_t KESTO_CALL FrozenGetMileageAndOffset(const FrozenRoad* f, double x, double y, double* m, double* offset, int32_t* k) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return LocateInto(frozen, {x, y}, {m, offset, k}); }, m, offset, k); }
int32_t KESTO_CALL FrozenGetMileAndOffsetInLim(const FrozenRoad* f, double x, double y, double lower, int32_t lowerK, double upper, int32_t upperK, double* m, double* offset, int32_t* k) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return LocateBetweenInto(frozen, {x, y}, {lower, lowerK}, {upper, upperK}, {m, offset, k}); }, m, offset, k); }
int32_t KESTO_CALL FrozenGetPositionAndAzimuth(const FrozenRoad* f, double m, double offset, double angle, double* x, double* y, double* a, int32_t k) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return PositionInto(frozen.road, {m, k}, {offset, angle}, x, y, a); }, x, y, a); }
// clang-format on
