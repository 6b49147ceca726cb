#include "checks/opened_file.hpp"

#include <algorithm>

namespace kesto::host {

OpenedFile::OpenedFile(RoadDesign* opened) : road(opened), untoldCount(GetReadingFindingCount(opened)) {
    ReadingFinding finding{};
    for (std::int32_t i = 0; i < GetReadingFindingCount(road) && GetReadingFinding(road, i, &finding); ++i) {
        told.push_back(finding);
        --untoldCount;
    }
    GetRoadMileage(road, &startMileage);
    GetMakeStakeInfo(road, &interval);
    elements = Records<Element>(KESTO_LIST_ELEMENTS, GetElement);
    gradePoints = Records<VerticalCurve>(KESTO_LIST_VERTICAL_CURVES, GetVerticalCurve);
}

std::int64_t OpenedFile::LineOf(KestoList list, std::int32_t key, std::int32_t index) const noexcept {
    std::int32_t line = 0;
    return GetRecordLine(road, list, key, index, &line) && !IsSwallowed(line) ? line : 0;
}

bool OpenedFile::IsSwallowed(std::int64_t line) const noexcept {
    return std::any_of(told.begin(), told.end(), [&](const ReadingFinding& it) {
        return it.reason == KESTO_READING_SECTION_SWALLOWED && it.line <= line && line <= it.otherLine;
    });
}

}  // namespace kesto::host
