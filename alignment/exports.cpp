// Exported functions of the alignment: broken chains, mileages, positions, inverse projection.

#include <cstddef>
#include <optional>

#include "alignment/broken_chains.hpp"
#include "alignment/chain_builder.hpp"
#include "alignment/intersection_method.hpp"
#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "core/arguments.hpp"
#include "core/guard.hpp"
#include "core/record_lists.hpp"

using kesto::AskedRoad;
using kesto::EditBool;
using kesto::Outcome;
using kesto::QueryBool;
using kesto::QueryValue;
using kesto::RequireFinite;

namespace {

Outcome PositionInto(const kesto::ChainView& chain, kesto::StakeMileage stake, kesto::Offset offset, double* x,
                     double* y, double* azimuth) noexcept {
    if (Outcome finite = RequireFinite({stake.mileage, offset.distance}); !finite) return finite;
    std::optional<kesto::Position> position;
    Outcome found = kesto::FindPosition(chain, stake, offset, position);
    if (position) {
        *x = position->x;
        *y = position->y;
        *azimuth = position->azimuth;
    }
    return found;
}

Outcome MileageInto(const AskedRoad& asked, double* mileage, std::int32_t occurrence) {
    if (Outcome finite = RequireFinite({*mileage}); !finite) return finite;
    return kesto::Assign(mileage, kesto::ContinuousMileage(asked, {*mileage, occurrence}));
}

kesto::Result<std::int32_t> IndexAt(const AskedRoad& asked, kesto::StakeMileage stake) {
    if (const Outcome finite = RequireFinite({stake.mileage}); !finite) return finite.failure();
    return kesto::IntersectionIndexAt(asked, stake);
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

Outcome LocateInto(const AskedRoad& asked, kesto::Point point, const Found& out) {
    if (Outcome finite = RequireFinite({point.x, point.y}); !finite) return finite;
    std::optional<kesto::Located> located;
    Outcome found = kesto::Locate(asked, point, located);
    out.Take(located);
    return found;
}

Outcome LocateBetweenInto(const AskedRoad& asked, kesto::Point point, kesto::StakeMileage lower,
                          kesto::StakeMileage upper, const Found& out) {
    if (Outcome finite = RequireFinite({point.x, point.y, lower.mileage, upper.mileage}); !finite) return finite;
    std::optional<kesto::Located> located;
    Outcome found = kesto::LocateBetween(asked, point, lower, upper, located);
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
int32_t KESTO_CALL GetIntersectionIndex(RoadDesign* h, double m, int32_t k) { return QueryValue<int32_t>(h, {0, -1}, [&](const AskedRoad& asked) { return IndexAt(asked, {m, k}); }); }

int32_t KESTO_CALL GetBrokenChainCount(RoadDesign* h) { return kesto::CountRecords(h, &RoadDesign::brokenChains); }
bool KESTO_CALL AddBrokenChain(RoadDesign* h, const BrokenChain* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::InsertBrokenChain(road, *r); }, r); }
bool KESTO_CALL AddBrokenChainList(RoadDesign* h, const BrokenChain* r, int32_t n) { return EditBool(h, [&](RoadDesign& road) { return AddChains(road, r, n); }); }
bool KESTO_CALL DeleteBrokenChain(RoadDesign* h, int32_t i) { return kesto::DeleteRecord(h, &RoadDesign::brokenChains, i); }
bool KESTO_CALL GetBrokenChain(RoadDesign* h, int32_t i, BrokenChain* r) { return kesto::GetRecord(h, &RoadDesign::brokenChains, i, r); }
bool KESTO_CALL SetBrokenChain(RoadDesign* h, int32_t i, const BrokenChain* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::ReplaceBrokenChain(road, i, *r); }, r); }

bool KESTO_CALL MakeCurrent(RoadDesign* h) { return QueryBool(h, kesto::EnsureCurrent); }
bool KESTO_CALL GetSrcMileage(RoadDesign* h, double* m, int32_t k) { return QueryBool(h, [&](const AskedRoad& asked) { return MileageInto(asked, m, k); }, m); }
double KESTO_CALL GetRoadMileage(RoadDesign* h, double* start) { return QueryValue<double>(h, {0.0}, [&](const AskedRoad& asked) { return RoadMileage(asked.road, start); }); }

bool KESTO_CALL GetPositionAndAzimuth(RoadDesign* h, double m, double offset, double angle, double* x, double* y, double* a, int32_t k) { return QueryBool(h, [&](const AskedRoad& asked) { return PositionInto(asked, {m, k}, {offset, angle}, x, y, a); }, x, y, a); }

bool KESTO_CALL GetMileageAndOffset(RoadDesign* h, double x, double y, double* m, double* offset, int32_t* k) { return QueryBool(h, [&](const AskedRoad& asked) { return LocateInto(asked, {x, y}, {m, offset, k}); }, m, offset, k); }
bool KESTO_CALL GetMileAndOffsetInLim(RoadDesign* h, double x, double y, double lower, int32_t lowerK, double upper, int32_t upperK, double* m, double* offset, int32_t* k) { return QueryBool(h, [&](const AskedRoad& asked) { return LocateBetweenInto(asked, {x, y}, {lower, lowerK}, {upper, upperK}, {m, offset, k}); }, m, offset, k); }
// clang-format on
