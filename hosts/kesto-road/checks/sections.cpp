// Checks the cross sections: plates, change sections and section mileages.
#include <vector>

#include "checks/checked.hpp"
#include "road/cross_section.hpp"
#include "road/failure_text.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

namespace {

void CheckPlates(const Checked& checked, std::int32_t side) {
    const std::vector<SectionPlate> plates = StandardPlates(checked.road, side);
    for (std::size_t i = 0; i < plates.size(); ++i) {
        const std::int64_t line = checked.file.LineOf(KESTO_LIST_PLATES, side, static_cast<std::int32_t>(i));
        if (line == 0 || plates[i].width > 0) continue;
        checked.findings.Warning(line, "plate-width", "the plate is " + FormatReal(plates[i].width, 3) + " m wide");
    }
}

/// Tells of change sections that were given by continuous mileages off the road: by stake mileages they are refused.
void CheckChanges(const Checked& checked, std::int32_t side, std::int32_t kind) {
    std::vector<double> values(static_cast<std::size_t>(GetStandardSectionPlateCount(checked.road, side)));
    for (std::int32_t i = 0; i < GetChangeSectionCount(checked.road, side, kind); ++i) {
        DoubleArray array{values.data(), 0, static_cast<std::int32_t>(values.size())};
        Stake stake;
        if (GetChangeSection(checked.road, side, kind, i, &stake.mileage, &array, &stake.occurrence)) continue;
        const Failure failure = LastFailure(checked.road);
        if (failure.status != KESTO_MILEAGE_OFF_ROAD) continue;
        const FilePlace place = PlaceOf(checked, failure.value, continuousMileage);
        if (place.found) continue;
        checked.findings.Warning(checked.file.LineOf(KESTO_LIST_CHANGE_SECTIONS,
                                                     static_cast<std::int32_t>(bothKinds.size()) * side + kind, i),
                                 "change-off-road", "the change section is not on the road: " + place.why);
    }
}

void CheckMileages(const Checked& checked) {
    SectionMileageIndex entry{};
    for (std::int32_t i = 0; GetSectionMileageIndex(checked.road, i, &entry); ++i) {
        const std::int64_t line = checked.file.LineOf(KESTO_LIST_SECTION_MILEAGES, 0, i);
        const FilePlace place = PlaceOf(checked, entry.mileage, 0);
        if (line == 0 || place.found || StandsAtEnd(checked, place)) continue;
        checked.findings.Warning(line, "section-mileage-off-road",
                                 "the section mileage is not on the road: " + place.why);
    }
}

}  // namespace

void CheckSections(const Checked& checked) {
    for (const std::int32_t side : bothSides) {
        CheckPlates(checked, side);
        if (!checked.line) continue;
        for (const std::int32_t kind : bothKinds) CheckChanges(checked, side, kind);
    }
    if (checked.line) CheckMileages(checked);
}

}  // namespace kesto::host
