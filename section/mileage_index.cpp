#include "section/mileage_index.hpp"

#include "core/sequence.hpp"
#include "core/stake_text.hpp"
#include "core/text.hpp"

namespace kesto {

namespace {

constexpr KestoList entries = KESTO_LIST_SECTION_MILEAGES;

SectionMileageIndex MakeEntry(const RoadDesign& road, double mileage) {
    SectionMileageIndex entry{};
    entry.mileage = mileage;
    SetText(entry.stakeText, StakeText(road.settings.stakePrefix, mileage));
    return entry;
}

}  // namespace

Outcome InsertSectionMileage(RoadDesign& road, double mileage) {
    if (Outcome finite = RequireFinite({mileage}); !finite) return finite;
    InsertSorted(road.sections.mileageIndex, MakeEntry(road, mileage), &SectionMileageIndex::mileage);
    return {};
}

Outcome ReplaceSectionMileage(RoadDesign& road, std::int32_t index, double mileage) {
    std::vector<SectionMileageIndex>& all = road.sections.mileageIndex;
    if (Outcome valid = RequireIndex(entries, index, all.size()); !valid) return valid;
    if (Outcome finite = RequireFinite({mileage}); !finite) return finite;
    return ReplaceSorted(entries, all, index, MakeEntry(road, mileage), &SectionMileageIndex::mileage);
}

Outcome RemoveSectionMileage(RoadDesign& road, std::int32_t index) noexcept {
    return RemoveAt(entries, road.sections.mileageIndex, index);
}

Result<SectionMileageIndex> SectionMileageAt(const RoadDesign& road, std::int32_t index) noexcept {
    return RecordAt(entries, road.sections.mileageIndex, index);
}

}  // namespace kesto
