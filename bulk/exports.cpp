// Exported functions that ask many things at once: batches, and freezing a road for many threads.

#include <memory>

#include "alignment/position.hpp"
#include "bulk/batch.hpp"
#include "bulk/freeze.hpp"
#include "bulk/height_batch.hpp"
#include "core/guard.hpp"

using kesto::GuardBool;
using kesto::GuardFrozen;
using kesto::HeightRows;
using kesto::PlaceRows;
using kesto::PointRows;

namespace {

kesto::Result<const FrozenRoad*> FreezeOut(RoadDesign& road) {
    kesto::Result<std::unique_ptr<const FrozenRoad>> frozen = kesto::Freeze(road);
    if (!frozen) return frozen.failure();
    return (*frozen).release();
}

}  // namespace

// clang-format off
bool KESTO_CALL GetMileageAndOffsetBatch(RoadDesign* h, int32_t n, const double* x, int32_t xStep, const double* y, int32_t yStep, double* m, int32_t mStep, double* offset, int32_t offsetStep, int32_t* k, int32_t kStep, uint8_t* status, int32_t statusStep) {
    return GuardBool(h, [&](RoadDesign& road) { return kesto::RunBatch(road, PointRows{n, {x, xStep}, {y, yStep}, {m, mStep}, {offset, offsetStep}, {k, kStep}, {status, statusStep}}); });
}
bool KESTO_CALL GetPositionAndAzimuthBatch(RoadDesign* h, int32_t n, const double* m, int32_t mStep, const int32_t* k, int32_t kStep, const double* offset, int32_t offsetStep, const double* angle, int32_t angleStep, double* x, int32_t xStep, double* y, int32_t yStep, double* a, int32_t aStep, uint8_t* status, int32_t statusStep) {
    return GuardBool(h, [&](RoadDesign& road) { return kesto::RunBatch(road, PlaceRows{n, {m, mStep}, {k, kStep}, {offset, offsetStep}, {angle, angleStep, kesto::squareAngle}, {x, xStep}, {y, yStep}, {a, aStep}, {status, statusStep}}); });
}
int32_t KESTO_CALL FrozenGetMileageAndOffsetBatch(const FrozenRoad* f, int32_t n, const double* x, int32_t xStep, const double* y, int32_t yStep, double* m, int32_t mStep, double* offset, int32_t offsetStep, int32_t* k, int32_t kStep, uint8_t* status, int32_t statusStep) {
    return GuardFrozen(f, [&](const FrozenRoad& frozen) { return kesto::RunBatch(frozen, PointRows{n, {x, xStep}, {y, yStep}, {m, mStep}, {offset, offsetStep}, {k, kStep}, {status, statusStep}}); });
}
int32_t KESTO_CALL FrozenGetPositionAndAzimuthBatch(const FrozenRoad* f, int32_t n, const double* m, int32_t mStep, const int32_t* k, int32_t kStep, const double* offset, int32_t offsetStep, const double* angle, int32_t angleStep, double* x, int32_t xStep, double* y, int32_t yStep, double* a, int32_t aStep, uint8_t* status, int32_t statusStep) {
    return GuardFrozen(f, [&](const FrozenRoad& frozen) { return kesto::RunBatch(frozen, PlaceRows{n, {m, mStep}, {k, kStep}, {offset, offsetStep}, {angle, angleStep, kesto::squareAngle}, {x, xStep}, {y, yStep}, {a, aStep}, {status, statusStep}}); });
}
bool KESTO_CALL GetHeightBatch(RoadDesign* h, int32_t n, const double* m, int32_t mStep, const int32_t* k, int32_t kStep, const double* offset, int32_t offsetStep, double* height, int32_t heightStep, uint8_t* status, int32_t statusStep) {
    return GuardBool(h, [&](RoadDesign& road) { return kesto::RunBatch(road, HeightRows{n, {m, mStep}, {k, kStep}, {offset, offsetStep}, {height, heightStep}, {status, statusStep}}); });
}
const FrozenRoad* KESTO_CALL FreezeRoad(RoadDesign* h) { return kesto::GuardValue<const FrozenRoad*>(h, {nullptr}, FreezeOut); }
void KESTO_CALL ReleaseFrozenRoad(const FrozenRoad* f) { delete f; }
int32_t KESTO_CALL FrozenGetHeightBatch(const FrozenRoad* f, int32_t n, const double* m, int32_t mStep, const int32_t* k, int32_t kStep, const double* offset, int32_t offsetStep, double* height, int32_t heightStep, uint8_t* status, int32_t statusStep) {
    return GuardFrozen(f, [&](const FrozenRoad& frozen) { return kesto::RunBatch(frozen, HeightRows{n, {m, mStep}, {k, kStep}, {offset, offsetStep}, {height, heightStep}, {status, statusStep}}); });
}
// clang-format on
