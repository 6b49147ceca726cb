// Exported functions of the design run and its stake list.

#include "alignment/chain_builder.hpp"
#include "core/arguments.hpp"
#include "core/guard.hpp"
#include "core/record_lists.hpp"
#include "design/design_run.hpp"
#include "design/nearest_stake.hpp"

using kesto::AskedRoad;
using kesto::EditBool;
using kesto::Outcome;
using kesto::QueryBool;

namespace {

Outcome StakeInto(const AskedRoad& asked, kesto::Point point, StakeCoordinate& stake, std::int32_t& occurrence) {
    if (Outcome finite = kesto::RequireFinite({point.x, point.y}); !finite) return finite;
    return kesto::NearestStake(asked, point, stake, occurrence);
}

}  // namespace

// clang-format off
bool KESTO_CALL UpdateData(RoadDesign* h) { return EditBool(h, kesto::BuildChain); }
bool KESTO_CALL DesignRoad(RoadDesign* h) { return EditBool(h, kesto::RunDesign); }
int32_t KESTO_CALL GetStakeCoordinateCount(RoadDesign* h) { return kesto::CountRecords(h, &RoadDesign::stakes); }
bool KESTO_CALL GetStakeCoordinate(RoadDesign* h, int32_t i, StakeCoordinate* r) { return kesto::GetRecord(h, &RoadDesign::stakes, i, r); }
bool KESTO_CALL GetNearbyStakeCoordinate(RoadDesign* h, double x, double y, StakeCoordinate* stake, int32_t* k) { return QueryBool(h, [&](const AskedRoad& asked) { return StakeInto(asked, {x, y}, *stake, *k); }, stake, k); }
// clang-format on
