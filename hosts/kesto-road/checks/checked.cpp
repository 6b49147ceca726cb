#include "checks/checked.hpp"

#include <array>
#include <cmath>
#include <cstddef>

#include "road/conventions.hpp"
#include "road/failure_text.hpp"
#include "terminal/numbers.hpp"

namespace kesto::host {

FilePlace PlaceOf(const Checked& checked, double mileage, std::int32_t occurrence) {
    if (!checked.line) return {mileage, false, false, "there is no road"};
    const RoadLine& line = *checked.line;
    if (occurrence < 0) {
        const bool found = mileage > line.Start() - beyondTolerance && mileage < line.End() + beyondTolerance;
        return {mileage, found, !found, "this continuous mileage lies before its start or behind its end"};
    }
    FilePlace place{mileage, false, false, {}};
    place.found = GetSrcMileage(checked.road, &place.continuous, occurrence);
    if (place.found) return place;
    place.beyond = LastFailure(checked.road).status == KESTO_MILEAGE_OFF_ROAD;
    place.why = DescribeLastFailure(checked.road);
    return place;
}

bool StandsAtEnd(const Checked& checked, const FilePlace& place) {
    return checked.line && place.beyond &&
           (std::fabs(place.continuous - checked.line->Start()) < beyondTolerance ||
            std::fabs(place.continuous - checked.line->End()) < beyondTolerance);
}

std::int64_t Checked::AlignmentLine(std::int32_t record) const noexcept {
    static constexpr std::array lists{KESTO_LIST_INTERSECTIONS, KESTO_LIST_ELEMENTS, KESTO_LIST_COORDINATES,
                                      KESTO_LIST_COORDINATES};  // by road design mode
    const auto mode = static_cast<std::size_t>(GetRoadDesignMode(road));
    if (mode >= lists.size()) return 0;
    const std::int64_t ofRecord = file.LineOf(lists[mode], 0, record);
    return ofRecord > 0 ? ofRecord : file.LineOf(lists[mode], 0, OpenedFile::keyword);
}

std::string Degrees(double angle) {
    constexpr int decimals = 5;
    return FormatReal(angle, decimals) + " degrees";
}

std::string Distance(double metres) {
    constexpr double shortest = 1;   // m
    constexpr double longest = 1e9;  // m: from here on decimals mean nothing
    constexpr double millimetres = 1e3;
    constexpr int gapDecimals = 2;     // of millimetres
    constexpr int lengthDecimals = 3;  // of metres
    if (!std::isfinite(metres)) return "farther than numbers reach";
    if (metres < shortest) return FormatReal(metres * millimetres, gapDecimals) + " mm";
    return (metres < longest ? FormatReal(metres, lengthDecimals) : FormatShort(metres)) + " m";
}

}  // namespace kesto::host
