// Exported functions of the road itself: lifecycle, failures, settings, and the lists that no algorithm orders.

#include <memory>
#include <new>
#include <optional>
#include <string>

#include "core/arguments.hpp"
#include "core/guard.hpp"
#include "core/record_lists.hpp"
#include "core/stake_text.hpp"

using kesto::AppendRecords;
using kesto::AskedRoad;
using kesto::CountRecords;
using kesto::DeleteRecord;
using kesto::EditBool;
using kesto::EditVoid;
using kesto::GetRecord;
using kesto::InsertRecord;
using kesto::Outcome;
using kesto::QueryBool;
using kesto::SetRecord;

namespace {

/// Stores a setting. Nothing is recomputed.
template <class Value>
void Store(RoadDesign* road, Value kesto::Settings::*setting, Value value) noexcept {
    if (road != nullptr && !road->frozen) road->settings.*setting = value;
}

std::int32_t Load(RoadDesign* road, std::int32_t kesto::Settings::*setting) noexcept {
    return road == nullptr ? 0 : road->settings.*setting;
}

Outcome WriteStake(const RoadDesign& road, double mileage, std::int32_t occurrence, char* text, std::int32_t capacity) {
    if (Outcome finite = kesto::RequireFinite({mileage}); !finite) return finite;
    return kesto::AssignText(text, capacity, kesto::StakeName(road.settings.stakePrefix, mileage, occurrence));
}

Outcome StakeFrom(const RoadDesign& road, const char* text, double& mileage, std::int32_t& occurrence) noexcept {
    const std::optional<kesto::WrittenStake> read = kesto::ReadStake(text, road.settings.stakePrefix);
    if (!read) return kesto::Fail(KESTO_NO_MILEAGE_IN_TEXT);
    mileage = read->mileage;
    occurrence = read->occurrence;
    return {};
}

}  // namespace

// clang-format off
RoadDesign* KESTO_CALL StartRoadDesign(void) { try { return std::make_unique<RoadDesign>().release(); } catch (...) { return nullptr; } }
void KESTO_CALL EndRoadDesign(RoadDesign* h) { delete h; }
void KESTO_CALL ClearRoad(RoadDesign* h) { EditVoid(h, kesto::Clear); }
bool KESTO_CALL GetLastFailure(RoadDesign* h, Failure* f) { return h != nullptr && f != nullptr && h->lastFailure && (*f = *h->lastFailure, true); }
const char* KESTO_CALL DescribeStatus(int32_t status) { return kesto::Describe(status); }
const char* KESTO_CALL KestoRoadVersion(void) { return KESTO_ROAD_VERSION; }

bool KESTO_CALL SetStartInformation(RoadDesign* h, double x, double y, double azimuth) { return EditBool(h, [&](RoadDesign& road) { kesto::SetStart(road, x, y, azimuth); return kesto::Outcome(); }); }
void KESTO_CALL SetStartMileage(RoadDesign* h, double mileage) { Store(h, &kesto::Settings::startMileage, mileage); }
void KESTO_CALL SetMileageInterval(RoadDesign* h, double interval) { EditVoid(h, [&](RoadDesign& road) { kesto::SetInterval(road, interval); }); }
void KESTO_CALL SetMakeStakeType(RoadDesign* h, int32_t type) { Store(h, &kesto::Settings::makeStakeType, type); }
void KESTO_CALL SetMakeStakePerfix(RoadDesign* h, const char* prefix) { EditVoid(h, [&](RoadDesign& road) { if (prefix != nullptr) road.settings.stakePrefix = std::string(prefix); }); }
const char* KESTO_CALL GetMakeStakePerfix(RoadDesign* h) { return h == nullptr ? nullptr : h->settings.stakePrefix.c_str(); }
bool KESTO_CALL FormatStake(RoadDesign* h, double m, int32_t k, char* text, int32_t capacity) { return QueryBool(h, [&](const AskedRoad& asked) { return WriteStake(asked.road, m, k, text, capacity); }, text); }
bool KESTO_CALL ParseStake(RoadDesign* h, const char* text, double* m, int32_t* k) { return QueryBool(h, [&](const AskedRoad& asked) { return StakeFrom(asked.road, text, *m, *k); }, text, m, k); }
int32_t KESTO_CALL GetMakeStakeInfo(RoadDesign* h, double* interval) { if (h != nullptr && interval != nullptr) *interval = h->settings.mileageInterval; return Load(h, &kesto::Settings::makeStakeType); }
void KESTO_CALL SetRoadDesignMode(RoadDesign* h, int32_t mode) { Store(h, &kesto::Settings::roadDesignMode, mode); }
int32_t KESTO_CALL GetRoadDesignMode(RoadDesign* h) { return Load(h, &kesto::Settings::roadDesignMode); }
void KESTO_CALL SetVerticalCurveMode(RoadDesign* h, int32_t mode) { Store(h, &kesto::Settings::verticalCurveMode, mode); }
int32_t KESTO_CALL GetVerticalCurveMode(RoadDesign* h) { return Load(h, &kesto::Settings::verticalCurveMode); }
void KESTO_CALL SetSideSlopeMode(RoadDesign* h, int32_t mode) { Store(h, &kesto::Settings::sideSlopeMode, mode); }
int32_t KESTO_CALL GetSideSlopeMode(RoadDesign* h) { return Load(h, &kesto::Settings::sideSlopeMode); }
void KESTO_CALL SetSectionMode(RoadDesign* h, int32_t mode) { Store(h, &kesto::Settings::sectionMode, mode); }
int32_t KESTO_CALL GetSectionMode(RoadDesign* h) { return Load(h, &kesto::Settings::sectionMode); }

int32_t KESTO_CALL GetIntersectionCount(RoadDesign* h) { return CountRecords(h, &RoadDesign::intersections); }
bool KESTO_CALL AddIntersection(RoadDesign* h, const Intersection* r, int32_t i) { return InsertRecord(h, &RoadDesign::intersections, r, i); }
bool KESTO_CALL AddIntersectionList(RoadDesign* h, const Intersection* r, int32_t n) { return AppendRecords(h, &RoadDesign::intersections, r, n); }
bool KESTO_CALL DeleteIntersection(RoadDesign* h, int32_t i) { return DeleteRecord(h, &RoadDesign::intersections, i); }
bool KESTO_CALL GetIntersection(RoadDesign* h, int32_t i, Intersection* r) { return GetRecord(h, &RoadDesign::intersections, i, r); }
bool KESTO_CALL SetIntersection(RoadDesign* h, int32_t i, const Intersection* r) { return SetRecord(h, &RoadDesign::intersections, i, r); }

int32_t KESTO_CALL GetElementCount(RoadDesign* h) { return CountRecords(h, &RoadDesign::elements); }
bool KESTO_CALL AddElement(RoadDesign* h, const Element* r, int32_t i) { return InsertRecord(h, &RoadDesign::elements, r, i); }
bool KESTO_CALL AddElementList(RoadDesign* h, const Element* r, int32_t n) { return AppendRecords(h, &RoadDesign::elements, r, n); }
bool KESTO_CALL DeleteElement(RoadDesign* h, int32_t i) { return DeleteRecord(h, &RoadDesign::elements, i); }
bool KESTO_CALL GetElement(RoadDesign* h, int32_t i, Element* r) { return GetRecord(h, &RoadDesign::elements, i, r); }
bool KESTO_CALL SetElement(RoadDesign* h, int32_t i, const Element* r) { return SetRecord(h, &RoadDesign::elements, i, r); }

int32_t KESTO_CALL GetCoordinateCount(RoadDesign* h) { return CountRecords(h, &RoadDesign::coordinates); }
bool KESTO_CALL AddCoordinate(RoadDesign* h, const Coordinate* r, int32_t i) { return InsertRecord(h, &RoadDesign::coordinates, r, i); }
bool KESTO_CALL AddCoordinateList(RoadDesign* h, const Coordinate* r, int32_t n) { return AppendRecords(h, &RoadDesign::coordinates, r, n); }
bool KESTO_CALL DeleteCoordinate(RoadDesign* h, int32_t i) { return DeleteRecord(h, &RoadDesign::coordinates, i); }
bool KESTO_CALL GetCoordinate(RoadDesign* h, int32_t i, Coordinate* r) { return GetRecord(h, &RoadDesign::coordinates, i, r); }
bool KESTO_CALL SetCoordinate(RoadDesign* h, int32_t i, const Coordinate* r) { return SetRecord(h, &RoadDesign::coordinates, i, r); }
// clang-format on
