// Exported functions of the vertical profile.

#include <cstddef>

#include "core/guard.hpp"
#include "core/record_lists.hpp"
#include "profile/vertical_curves.hpp"

using kesto::EditBool;
using kesto::Outcome;

namespace {

Outcome AddCurves(RoadDesign& road, const VerticalCurve* curves, std::int32_t count) {
    if (count < 0 || count > kesto::recordsPerCall) {
        return kesto::FailLimit(KESTO_RECORD_COUNT_REFUSED, KESTO_LIMIT_RECORDS_PER_CALL, count, kesto::recordsPerCall);
    }
    if (count == 0) return {};
    if (curves == nullptr) return kesto::Fail(KESTO_NULL_ARGUMENT);
    return kesto::InsertVerticalCurves(road, {curves, static_cast<std::size_t>(count)});
}

}  // namespace

// clang-format off
int32_t KESTO_CALL GetVerticalCurveCount(RoadDesign* h) { return kesto::CountRecords(h, &RoadDesign::verticalCurves); }
bool KESTO_CALL AddVerticalCurve(RoadDesign* h, const VerticalCurve* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::InsertVerticalCurve(road, *r); }, r); }
bool KESTO_CALL AddVerticalCurveList(RoadDesign* h, const VerticalCurve* r, int32_t n) { return EditBool(h, [&](RoadDesign& road) { return AddCurves(road, r, n); }); }
bool KESTO_CALL DeleteVerticalCurve(RoadDesign* h, int32_t i) { return kesto::DeleteRecord(h, &RoadDesign::verticalCurves, i); }
bool KESTO_CALL GetVerticalCurve(RoadDesign* h, int32_t i, VerticalCurve* r) { return kesto::GetRecord(h, &RoadDesign::verticalCurves, i, r); }
bool KESTO_CALL SetVerticalCurve(RoadDesign* h, int32_t i, const VerticalCurve* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::ReplaceVerticalCurve(road, i, *r); }, r); }
// clang-format on
