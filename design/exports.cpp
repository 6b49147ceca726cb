// Exported functions of the design run and its stake list.

#include "alignment/chain_builder.hpp"
#include "core/guard.hpp"
#include "design/design_run.hpp"
#include "design/nearest_stake.hpp"

using kesto::GuardBool;
using kesto::GuardFrozen;
using kesto::Outcome;

namespace {

template <class Road>
Outcome StakeInto(Road& road, kesto::Point point, StakeCoordinate& stake, std::int32_t& occurrence) {
    if (Outcome finite = kesto::RequireFinite({point.x, point.y}); !finite) return finite;
    return kesto::NearestStake(road, point, stake, occurrence);
}

}  // namespace

// clang-format off
bool KESTO_CALL UpdateData(RoadDesign* h) { return kesto::GuardBool(h, kesto::BuildChain); }
bool KESTO_CALL DesignRoad(RoadDesign* h) { return kesto::GuardBool(h, kesto::RunDesign); }
int32_t KESTO_CALL GetStakeCoordinateCount(RoadDesign* h) { return kesto::CountRecords(h, &RoadDesign::stakes); }
bool KESTO_CALL GetStakeCoordinate(RoadDesign* h, int32_t i, StakeCoordinate* r) { return kesto::GetRecord(h, &RoadDesign::stakes, i, r); }
int32_t KESTO_CALL FrozenGetStakeCoordinateCount(const FrozenRoad* f) { return f == nullptr ? 0 : f->road.stakes.Count(); }
int32_t KESTO_CALL FrozenGetStakeCoordinate(const FrozenRoad* f, int32_t i, StakeCoordinate* r) { return kesto::GuardFrozen(f, [&](const FrozenRoad& frozen) { return kesto::CopyRecord(frozen.road.stakes, i, r); }, r); }
bool KESTO_CALL GetNearbyStakeCoordinate(RoadDesign* h, double x, double y, StakeCoordinate* stake, int32_t* k) { return GuardBool(h, [&](RoadDesign& road) { return StakeInto(road, {x, y}, *stake, *k); }, stake, k); }
int32_t KESTO_CALL FrozenGetNearbyStakeCoordinate(const FrozenRoad* f, double x, double y, StakeCoordinate* stake, int32_t* k) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return StakeInto(frozen, {x, y}, *stake, *k); }, stake, k); }
// clang-format on
