// Exported functions of the cross section: plates, mileage index, change sections, road side, and what stands on them:
// the design height, and freezing a road for all queries.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "core/guard.hpp"
#include "section/change_sections.hpp"
#include "section/mileage_index.hpp"
#include "section/plates.hpp"
#include "section/road_side.hpp"

using kesto::ChangeTable;
using kesto::GuardBool;
using kesto::GuardFrozen;
using kesto::HeightBase;
using kesto::Outcome;

namespace {

/// A caller's array as a span: empty without records. Nothing where records are promised and none are there.
template <class Record>
std::optional<std::span<const Record>> ArrayOf(const Record* items, std::int32_t count) noexcept {
    if (count <= 0) return std::span<const Record>();
    if (items == nullptr) return std::nullopt;
    return std::span<const Record>(items, static_cast<std::size_t>(count));
}

/// Whether an array given for output has room; when not, its count tells how much is needed.
template <class Array>
bool HasRoom(Array* array, std::size_t needed) noexcept {
    const bool room = array->capacity >= 0 && needed <= static_cast<std::size_t>(array->capacity) &&
                      (array->items != nullptr || needed == 0);
    if (!room) array->count = static_cast<std::int32_t>(needed);
    return room;
}

template <class Array, class Values>
void CopyInto(Array* array, const Values& values) noexcept {
    std::copy(values.begin(), values.end(), array->items);
    array->count = static_cast<std::int32_t>(values.size());
}

Outcome TooSmall(std::size_t needed, std::int32_t capacity) noexcept {
    return kesto::FailLimit(KESTO_ARRAY_TOO_SMALL, KESTO_LIMIT_RECORD_COUNT, static_cast<double>(needed), capacity);
}

template <class Array, class Values>
Outcome WriteArray(Array* array, const Values& values) noexcept {
    if (!HasRoom(array, values.size())) return TooSmall(values.size(), array->capacity);
    CopyInto(array, values);
    return {};
}

Outcome AddPlates(RoadDesign& road, const SectionPlate* plates, std::int32_t count, std::int32_t side) {
    const auto array = ArrayOf(plates, count);
    return array ? kesto::AppendPlates(road, *array, side) : kesto::Fail(KESTO_NULL_ARGUMENT);
}

Outcome CopyPlate(const RoadDesign& road, std::int32_t side, std::int32_t index, SectionPlate* plate) noexcept {
    const kesto::Result<SectionPlate> found = kesto::PlateAt(road, side, index);
    if (!found) return found.failure();
    *plate = *found;
    return {};
}

std::int32_t PlateCount(const RoadDesign& road, std::int32_t side) noexcept {
    const auto plates = kesto::PlatesOf(road, side);
    return plates ? static_cast<std::int32_t>(plates->size()) : 0;
}

Outcome CopySection(const RoadDesign& road, std::int32_t side, SectionPlateArray* plates) noexcept {
    const auto found = kesto::PlatesOf(road, side);
    if (!found) return found.failure();
    if (found->empty()) return kesto::Fail(KESTO_NO_CROSS_SECTION);
    return WriteArray(plates, *found);
}

Outcome CopyMileage(const RoadDesign& road, std::int32_t index, SectionMileageIndex* entry) noexcept {
    const kesto::Result<SectionMileageIndex> found = kesto::SectionMileageAt(road, index);
    if (!found) return found.failure();
    *entry = *found;
    return {};
}

/// A change section as a caller hands it over. Without flags every flag is 1.
struct GivenChange {
    double mileage;
    std::int32_t occurrence;
    const double* values;
    std::int32_t valueCount;
    const std::int32_t* flags = nullptr;
    std::int32_t flagCount = 0;
    bool hasFlags = false;
};

kesto::Result<kesto::PlacedChange> Placed(const RoadDesign& road, ChangeTable which, const GivenChange& given) {
    const auto values = ArrayOf(given.values, given.valueCount);
    const auto flags = ArrayOf(given.flags, given.flagCount);
    if (!values || !flags) return kesto::Fail(KESTO_NULL_ARGUMENT);
    const std::size_t flagCount = given.hasFlags ? flags->size() : values->size();
    // Before anything is read: a count that is wrong may be larger than what the caller has.
    if (const Outcome complete = kesto::RequireValuePerPlate(road, which, values->size(), flagCount); !complete) {
        return complete.failure();
    }
    kesto::PlacedChange change{{given.mileage, given.occurrence}, {}};
    change.section.values.assign(values->begin(), values->end());
    change.section.flags.assign(flags->begin(), flags->end());
    if (!given.hasFlags) change.section.flags.assign(values->size(), 1);
    return change;
}

Outcome AddChange(RoadDesign& road, ChangeTable which, const GivenChange& given, std::int32_t type) {
    kesto::Result<kesto::PlacedChange> change = Placed(road, which, given);
    return change ? kesto::InsertChange(road, which, std::move(*change), type) : change.failure();
}

Outcome SetChange(RoadDesign& road, ChangeTable which, std::int32_t index, const GivenChange& given,
                  std::int32_t type) {
    kesto::Result<kesto::PlacedChange> change = Placed(road, which, given);
    return change ? kesto::ReplaceChange(road, which, index, std::move(*change), type) : change.failure();
}

/// Copies a change section out, all of it or nothing. The flags are optional.
Outcome CopyChange(RoadDesign& road, ChangeTable which, std::int32_t index, double* mileage, DoubleArray* values,
                   Int32Array* flags, std::int32_t* occurrence) {
    const kesto::Result<kesto::PlacedChange> change = kesto::ChangeAt(road, which, index);
    if (!change) return change.failure();
    const kesto::ChangeSection& section = change->section;
    const bool valuesFit = HasRoom(values, section.values.size());
    if (flags != nullptr && !(HasRoom(flags, section.flags.size()) && valuesFit)) {
        values->count = flags->count = static_cast<std::int32_t>(section.values.size());
        return TooSmall(section.values.size(), std::min(values->capacity, flags->capacity));
    }
    if (!valuesFit) return TooSmall(section.values.size(), values->capacity);
    CopyInto(values, section.values);
    if (flags != nullptr) CopyInto(flags, section.flags);
    *mileage = change->stake.mileage;
    *occurrence = change->stake.occurrence;
    return {};
}

template <class Road>
Outcome CopySide(Road& road, kesto::StakeMileage stake, std::int32_t side, HeightBase base, SectionPlateArray* plates) {
    if (Outcome finite = kesto::RequireFinite({stake.mileage}); !finite) return finite;
    const auto found = kesto::RoadSide(road, stake, side, base);
    if (!found) return found.failure();
    return WriteArray(plates, *found);
}

Outcome HeightInto(const FrozenRoad& frozen, kesto::StakeMileage stake, double offset, double* height) noexcept {
    std::optional<double> found;
    Outcome known = kesto::HeightOf(frozen.road, stake, offset, found);
    if (found) *height = *found;
    return known;
}

}  // namespace

// clang-format off
int32_t KESTO_CALL GetStandardSectionPlateCount(RoadDesign* h, int32_t side) { return h == nullptr ? 0 : PlateCount(*h, side); }
bool KESTO_CALL AddStandardSectionPlate(RoadDesign* h, const SectionPlate* r, int32_t side, int32_t i) { return GuardBool(h, [&](RoadDesign& road) { return kesto::InsertPlate(road, *r, side, i); }, r); }
bool KESTO_CALL AddStandardSectionPlateList(RoadDesign* h, const SectionPlate* r, int32_t n, int32_t side) { return GuardBool(h, [&](RoadDesign& road) { return AddPlates(road, r, n, side); }); }
bool KESTO_CALL DeleteStandardSectionPlate(RoadDesign* h, int32_t side, int32_t i) { return GuardBool(h, [&](RoadDesign& road) { return kesto::RemovePlate(road, side, i); }); }
bool KESTO_CALL GetStandardSectionPlate(RoadDesign* h, int32_t side, int32_t i, SectionPlate* r) { return GuardBool(h, [&](RoadDesign& road) { return CopyPlate(road, side, i, r); }, r); }
bool KESTO_CALL SetStandardSectionPlate(RoadDesign* h, int32_t side, int32_t i, const SectionPlate* r) { return GuardBool(h, [&](RoadDesign& road) { return kesto::ReplacePlate(road, side, i, *r); }, r); }
bool KESTO_CALL GetStandardSection(RoadDesign* h, int32_t side, SectionPlateArray* r) { return GuardBool(h, [&](RoadDesign& road) { return CopySection(road, side, r); }, r); }

int32_t KESTO_CALL GetSectionMileageIndexCount(RoadDesign* h) { return h == nullptr ? 0 : static_cast<int32_t>(h->sections.mileageIndex.size()); }
bool KESTO_CALL AddSectionMileageIndex(RoadDesign* h, const SectionMileageIndex* r) { return GuardBool(h, [&](RoadDesign& road) { return kesto::InsertSectionMileage(road, r->mileage); }, r); }
bool KESTO_CALL DeleteSectionMileageIndex(RoadDesign* h, int32_t i) { return GuardBool(h, [&](RoadDesign& road) { return kesto::RemoveSectionMileage(road, i); }); }
bool KESTO_CALL GetSectionMileageIndex(RoadDesign* h, int32_t i, SectionMileageIndex* r) { return GuardBool(h, [&](RoadDesign& road) { return CopyMileage(road, i, r); }, r); }
bool KESTO_CALL SetSectionMileageIndex(RoadDesign* h, int32_t i, const SectionMileageIndex* r) { return GuardBool(h, [&](RoadDesign& road) { return kesto::ReplaceSectionMileage(road, i, r->mileage); }, r); }

int32_t KESTO_CALL GetChangeSectionCount(RoadDesign* h, int32_t side, int32_t kind) { return h == nullptr ? 0 : kesto::CountChanges(*h, {side, kind}); }
bool KESTO_CALL AddChangeSection(RoadDesign* h, double m, int32_t side, int32_t kind, const DoubleArray* v, int32_t k, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v->items, v->count}, type); }, v); }
bool KESTO_CALL AddChangeSection2(RoadDesign* h, double m, int32_t side, int32_t kind, const DoubleArray* v, const Int32Array* f, int32_t k, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v->items, v->count, f->items, f->count, true}, type); }, v, f); }
bool KESTO_CALL AddChangeSectionList(RoadDesign* h, double m, int32_t side, int32_t kind, const double* v, int32_t n, int32_t k, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v, n}, type); }); }
bool KESTO_CALL AddChangeSectionList2(RoadDesign* h, double m, int32_t side, int32_t kind, const double* v, const int32_t* f, int32_t n, int32_t k, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v, n, f, n, true}, type); }); }
bool KESTO_CALL DeleteChangeSection(RoadDesign* h, int32_t side, int32_t kind, int32_t i) { return GuardBool(h, [&](RoadDesign& road) { return kesto::RemoveChange(road, {side, kind}, i); }); }
bool KESTO_CALL GetChangeSection(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double* m, DoubleArray* v, int32_t* k) { return GuardBool(h, [&](RoadDesign& road) { return CopyChange(road, {side, kind}, i, m, v, nullptr, k); }, m, v, k); }
bool KESTO_CALL GetChangeSection2(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double* m, DoubleArray* v, Int32Array* f, int32_t* k) { return GuardBool(h, [&](RoadDesign& road) { return CopyChange(road, {side, kind}, i, m, v, f, k); }, m, v, f, k); }
bool KESTO_CALL SetChangeSection(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double m, const DoubleArray* v, int32_t k, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return SetChange(road, {side, kind}, i, {m, k, v->items, v->count}, type); }, v); }
bool KESTO_CALL SetChangeSection2(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double m, const DoubleArray* v, const Int32Array* f, int32_t k, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return SetChange(road, {side, kind}, i, {m, k, v->items, v->count, f->items, f->count, true}, type); }, v, f); }
bool KESTO_CALL GetChangeSectionType(RoadDesign* h, int32_t side, int32_t kind, int32_t i, int32_t* type) { return GuardBool(h, [&](RoadDesign& road) { return kesto::FindTransitionType(road, {side, kind}, i, *type); }, type); }
bool KESTO_CALL SetChangeSectionType(RoadDesign* h, int32_t side, int32_t kind, int32_t i, int32_t type) { return GuardBool(h, [&](RoadDesign& road) { return kesto::SetTransitionType(road, {side, kind}, i, type); }); }

bool KESTO_CALL GetRoadSide(RoadDesign* h, double m, int32_t k, int32_t side, SectionPlateArray* r) { return GuardBool(h, [&](RoadDesign& road) { return CopySide(road, {m, k}, side, HeightBase::Profile, r); }, r); }
bool KESTO_CALL GetRoadSideNoHeight(RoadDesign* h, double m, int32_t k, int32_t side, SectionPlateArray* r) { return GuardBool(h, [&](RoadDesign& road) { return CopySide(road, {m, k}, side, HeightBase::CentreLine, r); }, r); }
bool KESTO_CALL GetHeight(RoadDesign* h, double m, int32_t k, double offset, double* height) { return GuardBool(h, [&](RoadDesign& road) { return kesto::FindHeight(road, {m, k}, offset, *height); }, height); }

int32_t KESTO_CALL FrozenGetRoadSide(const FrozenRoad* f, double m, int32_t k, int32_t side, SectionPlateArray* r) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return CopySide(frozen, {m, k}, side, HeightBase::Profile, r); }, r); }
int32_t KESTO_CALL FrozenGetRoadSideNoHeight(const FrozenRoad* f, double m, int32_t k, int32_t side, SectionPlateArray* r) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return CopySide(frozen, {m, k}, side, HeightBase::CentreLine, r); }, r); }
int32_t KESTO_CALL FrozenGetHeight(const FrozenRoad* f, double m, int32_t k, double offset, double* height) { return GuardFrozen(f, [&](const FrozenRoad& frozen) { return HeightInto(frozen, {m, k}, offset, height); }, height); }
// clang-format on
