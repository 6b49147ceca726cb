#include "section/mileage_index.hpp"

#include <algorithm>

#include "core/arguments.hpp"
#include "core/stake_text.hpp"
#include "core/text.hpp"

namespace kesto {

namespace {

Outcome RequireEntry(const RoadDesign& road, std::int32_t index) noexcept {
    return RequireIndex(KESTO_LIST_SECTION_MILEAGES, index, road.sections.mileageIndex.size());
}

SectionMileageIndex MakeEntry(const RoadDesign& road, double mileage) {
    SectionMileageIndex entry{};
    entry.mileage = mileage;
    SetText(entry.stakeText, StakeText(road.settings.stakePrefix, mileage));
    return entry;
}

}  // namespace

Outcome InsertSectionMileage(RoadDesign& road, double mileage) {
    if (Outcome finite = RequireFinite({mileage}); !finite) return finite;
    std::vector<SectionMileageIndex>& index = road.sections.mileageIndex;
    const SectionMileageIndex entry = MakeEntry(road, mileage);
    index.insert(std::ranges::upper_bound(index, mileage, {}, &SectionMileageIndex::mileage), entry);
    return {};
}

Outcome ReplaceSectionMileage(RoadDesign& road, std::int32_t index, double mileage) {
    if (Outcome valid = RequireEntry(road, index); !valid) return valid;
    if (Outcome finite = RequireFinite({mileage}); !finite) return finite;
    road.sections.mileageIndex[static_cast<std::size_t>(index)] = MakeEntry(road, mileage);
    std::ranges::sort(road.sections.mileageIndex, {}, &SectionMileageIndex::mileage);
    return {};
}

Outcome RemoveSectionMileage(RoadDesign& road, std::int32_t index) noexcept {
    if (Outcome valid = RequireEntry(road, index); !valid) return valid;
    road.sections.mileageIndex.erase(road.sections.mileageIndex.begin() + index);
    return {};
}

Result<SectionMileageIndex> SectionMileageAt(const RoadDesign& road, std::int32_t index) noexcept {
    if (const Outcome valid = RequireEntry(road, index); !valid) return valid.failure();
    return road.sections.mileageIndex[static_cast<std::size_t>(index)];
}

}  // namespace kesto
