// Exported functions that ask many things at once: batches, and freezing a road for many threads.

#include <memory>

#include "alignment/position.hpp"
#include "bulk/batch.hpp"
#include "bulk/freeze.hpp"
#include "bulk/height_batch.hpp"
#include "core/guard.hpp"

using kesto::AskedRoad;
using kesto::HeightRows;
using kesto::PlaceRows;
using kesto::PointRows;
using kesto::QueryBool;
using kesto::QueryValue;

namespace {

kesto::Result<RoadDesign*> FreezeOut(const AskedRoad& asked) {
    kesto::Result<std::unique_ptr<RoadDesign>> frozen = kesto::Freeze(asked);
    if (!frozen) return frozen.failure();
    return (*frozen).release();
}

}  // namespace

// clang-format off
bool KESTO_CALL GetMileageAndOffsetBatch(RoadDesign* h, int32_t n, const double* x, int32_t xStep, const double* y, int32_t yStep, double* m, int32_t mStep, double* offset, int32_t offsetStep, int32_t* k, int32_t kStep, uint8_t* status, int32_t statusStep) {
    return QueryBool(h, [&](const AskedRoad& asked) { return kesto::RunBatch(asked, PointRows{n, {x, xStep}, {y, yStep}, {m, mStep}, {offset, offsetStep}, {k, kStep}, {status, statusStep}}); });
}
bool KESTO_CALL GetPositionAndAzimuthBatch(RoadDesign* h, int32_t n, const double* m, int32_t mStep, const int32_t* k, int32_t kStep, const double* offset, int32_t offsetStep, const double* angle, int32_t angleStep, double* x, int32_t xStep, double* y, int32_t yStep, double* a, int32_t aStep, uint8_t* status, int32_t statusStep) {
    return QueryBool(h, [&](const AskedRoad& asked) { return kesto::RunBatch(asked, PlaceRows{n, {m, mStep}, {k, kStep}, {offset, offsetStep}, {angle, angleStep, kesto::squareAngle}, {x, xStep}, {y, yStep}, {a, aStep}, {status, statusStep}}); });
}
bool KESTO_CALL GetHeightBatch(RoadDesign* h, int32_t n, const double* m, int32_t mStep, const int32_t* k, int32_t kStep, const double* offset, int32_t offsetStep, double* height, int32_t heightStep, uint8_t* status, int32_t statusStep) {
    return QueryBool(h, [&](const AskedRoad& asked) { return kesto::RunBatch(asked, HeightRows{n, {m, mStep}, {k, kStep}, {offset, offsetStep}, {height, heightStep}, {status, statusStep}}); });
}
RoadDesign* KESTO_CALL FreezeRoad(RoadDesign* h) { return QueryValue<RoadDesign*>(h, {nullptr}, FreezeOut); }
bool KESTO_CALL IsFrozenRoad(RoadDesign* h) { return h != nullptr && h->frozen; }
// clang-format on
