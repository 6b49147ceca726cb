// Exported functions of the cross section: plates, mileage index, change sections, road side, and what stands on them:
// the design height, and freezing a road for all queries.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "core/arguments.hpp"
#include "core/guard.hpp"
#include "section/change_sections.hpp"
#include "section/mileage_index.hpp"
#include "section/plates.hpp"
#include "section/road_side.hpp"

using kesto::AskedRoad;
using kesto::ChangeTable;
using kesto::EditBool;
using kesto::HeightBase;
using kesto::Outcome;
using kesto::QueryBool;

namespace {

Outcome AddPlates(RoadDesign& road, const SectionPlate* plates, std::int32_t count, std::int32_t side) {
    const auto array = kesto::ArrayOf(plates, count);
    return array ? kesto::AppendPlates(road, *array, side) : kesto::Fail(KESTO_NULL_ARGUMENT);
}

std::int32_t PlateCount(const RoadDesign& road, std::int32_t side) noexcept {
    const auto plates = kesto::PlatesOf(road, side);
    return plates ? static_cast<std::int32_t>(plates->size()) : 0;
}

Outcome CopySection(const RoadDesign& road, std::int32_t side, SectionPlateArray* plates) noexcept {
    const auto found = kesto::PlatesOf(road, side);
    if (!found) return found.failure();
    if (found->empty()) return kesto::Fail(KESTO_NO_CROSS_SECTION);
    return kesto::WriteArray(plates, *found);
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
    const auto values = kesto::ArrayOf(given.values, given.valueCount);
    const auto flags = kesto::ArrayOf(given.flags, given.flagCount);
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
Outcome CopyChange(const AskedRoad& asked, ChangeTable which, std::int32_t index, double* mileage, DoubleArray* values,
                   Int32Array* flags, std::int32_t* occurrence) {
    const kesto::Result<kesto::PlacedChange> change = kesto::ChangeAt(asked, which, index);
    if (!change) return change.failure();
    const kesto::ChangeSection& section = change->section;
    const bool valuesFit = kesto::HasRoom(values, section.values.size());
    if (flags != nullptr && !(kesto::HasRoom(flags, section.flags.size()) && valuesFit)) {
        values->count = flags->count = static_cast<std::int32_t>(section.values.size());
        return kesto::TooSmall(section.values.size(), std::min(values->capacity, flags->capacity));
    }
    if (!valuesFit) return kesto::TooSmall(section.values.size(), values->capacity);
    kesto::CopyInto(values, section.values);
    if (flags != nullptr) kesto::CopyInto(flags, section.flags);
    *mileage = change->stake.mileage;
    *occurrence = change->stake.occurrence;
    return {};
}

Outcome CopySide(const AskedRoad& asked, kesto::StakeMileage stake, std::int32_t side, HeightBase base,
                 SectionPlateArray* plates) {
    if (Outcome finite = kesto::RequireFinite({stake.mileage}); !finite) return finite;
    const auto found = kesto::RoadSide(asked, stake, side, base);
    if (!found) return found.failure();
    return kesto::WriteArray(plates, *found);
}

}  // namespace

// clang-format off
int32_t KESTO_CALL GetStandardSectionPlateCount(RoadDesign* h, int32_t side) { return h == nullptr ? 0 : PlateCount(*h, side); }
bool KESTO_CALL AddStandardSectionPlate(RoadDesign* h, const SectionPlate* r, int32_t side, int32_t i) { return EditBool(h, [&](RoadDesign& road) { return kesto::InsertPlate(road, *r, side, i); }, r); }
bool KESTO_CALL AddStandardSectionPlateList(RoadDesign* h, const SectionPlate* r, int32_t n, int32_t side) { return EditBool(h, [&](RoadDesign& road) { return AddPlates(road, r, n, side); }); }
bool KESTO_CALL DeleteStandardSectionPlate(RoadDesign* h, int32_t side, int32_t i) { return EditBool(h, [&](RoadDesign& road) { return kesto::RemovePlate(road, side, i); }); }
bool KESTO_CALL GetStandardSectionPlate(RoadDesign* h, int32_t side, int32_t i, SectionPlate* r) { return QueryBool(h, [&](const AskedRoad& asked) { return kesto::Assign(r, kesto::PlateAt(asked.road, side, i)); }, r); }
bool KESTO_CALL SetStandardSectionPlate(RoadDesign* h, int32_t side, int32_t i, const SectionPlate* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::ReplacePlate(road, side, i, *r); }, r); }
bool KESTO_CALL GetStandardSection(RoadDesign* h, int32_t side, SectionPlateArray* r) { return QueryBool(h, [&](const AskedRoad& asked) { return CopySection(asked.road, side, r); }, r); }

int32_t KESTO_CALL GetSectionMileageIndexCount(RoadDesign* h) { return h == nullptr ? 0 : static_cast<int32_t>(h->sections.mileageIndex.size()); }
bool KESTO_CALL AddSectionMileageIndex(RoadDesign* h, const SectionMileageIndex* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::InsertSectionMileage(road, r->mileage); }, r); }
bool KESTO_CALL DeleteSectionMileageIndex(RoadDesign* h, int32_t i) { return EditBool(h, [&](RoadDesign& road) { return kesto::RemoveSectionMileage(road, i); }); }
bool KESTO_CALL GetSectionMileageIndex(RoadDesign* h, int32_t i, SectionMileageIndex* r) { return QueryBool(h, [&](const AskedRoad& asked) { return kesto::Assign(r, kesto::SectionMileageAt(asked.road, i)); }, r); }
bool KESTO_CALL SetSectionMileageIndex(RoadDesign* h, int32_t i, const SectionMileageIndex* r) { return EditBool(h, [&](RoadDesign& road) { return kesto::ReplaceSectionMileage(road, i, r->mileage); }, r); }

int32_t KESTO_CALL GetChangeSectionCount(RoadDesign* h, int32_t side, int32_t kind) { return h == nullptr ? 0 : kesto::CountChanges(*h, {side, kind}); }
bool KESTO_CALL AddChangeSection(RoadDesign* h, double m, int32_t side, int32_t kind, const DoubleArray* v, int32_t k, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v->items, v->count}, type); }, v); }
bool KESTO_CALL AddChangeSection2(RoadDesign* h, double m, int32_t side, int32_t kind, const DoubleArray* v, const Int32Array* f, int32_t k, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v->items, v->count, f->items, f->count, true}, type); }, v, f); }
bool KESTO_CALL AddChangeSectionList(RoadDesign* h, double m, int32_t side, int32_t kind, const double* v, int32_t n, int32_t k, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v, n}, type); }); }
bool KESTO_CALL AddChangeSectionList2(RoadDesign* h, double m, int32_t side, int32_t kind, const double* v, const int32_t* f, int32_t n, int32_t k, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return AddChange(road, {side, kind}, {m, k, v, n, f, n, true}, type); }); }
bool KESTO_CALL DeleteChangeSection(RoadDesign* h, int32_t side, int32_t kind, int32_t i) { return EditBool(h, [&](RoadDesign& road) { return kesto::RemoveChange(road, {side, kind}, i); }); }
bool KESTO_CALL GetChangeSection(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double* m, DoubleArray* v, int32_t* k) { return QueryBool(h, [&](const AskedRoad& asked) { return CopyChange(asked, {side, kind}, i, m, v, nullptr, k); }, m, v, k); }
bool KESTO_CALL GetChangeSection2(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double* m, DoubleArray* v, Int32Array* f, int32_t* k) { return QueryBool(h, [&](const AskedRoad& asked) { return CopyChange(asked, {side, kind}, i, m, v, f, k); }, m, v, f, k); }
bool KESTO_CALL SetChangeSection(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double m, const DoubleArray* v, int32_t k, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return SetChange(road, {side, kind}, i, {m, k, v->items, v->count}, type); }, v); }
bool KESTO_CALL SetChangeSection2(RoadDesign* h, int32_t side, int32_t kind, int32_t i, double m, const DoubleArray* v, const Int32Array* f, int32_t k, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return SetChange(road, {side, kind}, i, {m, k, v->items, v->count, f->items, f->count, true}, type); }, v, f); }
bool KESTO_CALL GetChangeSectionType(RoadDesign* h, int32_t side, int32_t kind, int32_t i, int32_t* type) { return QueryBool(h, [&](const AskedRoad& asked) { return kesto::FindTransitionType(asked.road, {side, kind}, i, *type); }, type); }
bool KESTO_CALL SetChangeSectionType(RoadDesign* h, int32_t side, int32_t kind, int32_t i, int32_t type) { return EditBool(h, [&](RoadDesign& road) { return kesto::SetTransitionType(road, {side, kind}, i, type); }); }

bool KESTO_CALL GetRoadSide(RoadDesign* h, double m, int32_t k, int32_t side, SectionPlateArray* r) { return QueryBool(h, [&](const AskedRoad& asked) { return CopySide(asked, {m, k}, side, HeightBase::Profile, r); }, r); }
bool KESTO_CALL GetRoadSideNoHeight(RoadDesign* h, double m, int32_t k, int32_t side, SectionPlateArray* r) { return QueryBool(h, [&](const AskedRoad& asked) { return CopySide(asked, {m, k}, side, HeightBase::CentreLine, r); }, r); }
bool KESTO_CALL GetHeight(RoadDesign* h, double m, int32_t k, double offset, double* height) { return QueryBool(h, [&](const AskedRoad& asked) { return kesto::FindHeight(asked, {m, k}, offset, *height); }, height); }
// clang-format on
