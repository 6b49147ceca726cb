#include "failure_text.hpp"

#include <cmath>

#include "mileage_text.hpp"
#include "numbers.hpp"

namespace kesto::host {

namespace {

constexpr int lengthDecimals = 3;  // millimetres, in messages

std::string Metres(double metres) { return FormatReal(metres, lengthDecimals) + " m"; }

std::string Whole(double number) { return FormatReal(number, 0); }

/// "element 7 (...)": elements are counted without the start record, grade points and broken chains from 1.
std::string RecordName(const Failure& failure) {
    switch (failure.list) {
        case KESTO_LIST_ELEMENTS: return "element " + std::to_string(failure.record);
        case KESTO_LIST_BROKEN_CHAINS: return "broken chain " + std::to_string(failure.record + 1);
        case KESTO_LIST_VERTICAL_CURVES: return "grade-change point " + std::to_string(failure.record + 1);
        case KESTO_LIST_STAKES: return "stake " + std::to_string(failure.record + 1);
        case KESTO_LIST_INTERSECTIONS: return "intersection " + std::to_string(failure.record + 1);
        case KESTO_LIST_COORDINATES: return "coordinate point " + std::to_string(failure.record + 1);
        case KESTO_LIST_PLATES: return "plate " + std::to_string(failure.record + 1);
        case KESTO_LIST_CHANGE_SECTIONS: return "change section " + std::to_string(failure.record + 1);
        default: return "record " + std::to_string(failure.record + 1);
    }
}

std::string OffRoad(const std::string& prefix, const Failure& failure) {
    const bool start = failure.limit == KESTO_LIMIT_ROAD_START;
    return "it lies " + Metres(failure.excess) +
           (start ? " before the road's start at " : " beyond the road's end at ") +
           FormatMileage(prefix, {failure.bound, 0});
}

std::string Occurrences(const Failure& failure) {
    if (failure.bound < 1) return "no stake carries it: it lies in the gap of a broken chain";
    return "it occurs " + (failure.bound < 2 ? std::string("once") : Whole(failure.bound) + " times") +
           ", there is no occurrence " + Whole(failure.value) + " (they count from 0)";
}

}  // namespace

Failure LastFailure(RoadDesign* road) {
    Failure failure{};
    if (!GetLastFailure(road, &failure)) failure.status = KESTO_SUCCESS;
    return failure;
}

std::string DescribeFailure(RoadDesign* road, std::int32_t status, const Failure& failure) {
    const char* prefix = GetMakeStakePerfix(road);
    if (failure.status != status) return DescribeStatus(status);
    switch (status) {
        case KESTO_MILEAGE_OFF_ROAD: return OffRoad(prefix == nullptr ? "" : prefix, failure);
        case KESTO_NO_SUCH_OCCURRENCE: return Occurrences(failure);
        case KESTO_RECORDS_SKIPPED:
            return Whole(failure.value) + (std::fabs(failure.value - 1) < 0.5 ? " record" : " records") +
                   " could not be read and were skipped, this line the first: correct or remove it";
        case KESTO_TOO_FEW_ELEMENTS:
            return "it has " + Whole(failure.value) + " elements with the start record, a road needs " +
                   Whole(failure.bound);
        default: break;
    }
    std::string text = DescribeStatus(status);
    if (failure.record >= 0) text += " (" + RecordName(failure) + ")";
    if (failure.excess != 0) text += ", by " + Metres(failure.excess);
    return text;
}

std::string DescribeLastFailure(RoadDesign* road) {
    const Failure failure = LastFailure(road);
    return DescribeFailure(road, failure.status, failure);
}

}  // namespace kesto::host
