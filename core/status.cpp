#include "core/status.hpp"

#include <cmath>

namespace kesto {

Failure Fail(KestoStatus status) noexcept {
    return {.status = status,
            .list = KESTO_LIST_NONE,
            .record = -1,
            .limit = KESTO_LIMIT_NONE,
            .value = 0,
            .bound = 0,
            .excess = 0};
}

Failure FailRecord(KestoStatus status, KestoList list, std::int32_t record) noexcept {
    Failure failure = Fail(status);
    failure.list = list;
    failure.record = record;
    return failure;
}

Failure FailValue(KestoStatus status, double value) noexcept {
    Failure failure = Fail(status);
    failure.value = value;
    return failure;
}

Failure FailLimit(KestoStatus status, KestoLimit limit, double value, double bound) noexcept {
    Failure failure = FailValue(status, value);
    failure.limit = limit;
    failure.bound = bound;
    failure.excess = std::fabs(value - bound);
    return failure;
}

Failure FailIndex(KestoList list, std::int32_t index, std::int32_t count) noexcept {
    Failure failure = FailLimit(KESTO_INDEX_OUT_OF_RANGE, KESTO_LIMIT_RECORD_COUNT, index, count);
    failure.list = list;
    failure.record = index;
    return failure;
}

const char* Describe(std::int32_t status) noexcept {
    switch (status) {
        case KESTO_SUCCESS: return "success";
        case KESTO_UNKNOWN_DESIGN_MODE: return "the road design mode is unknown";
        case KESTO_OUT_OF_MEMORY: return "memory ran out";
        case KESTO_TOO_FEW_ELEMENTS: return "the road has fewer than two elements";
        case KESTO_CURVE_DOES_NOT_FIT: return "an intersection's curve does not fit its tangents";
        case KESTO_POINT_NOT_JOINED: return "a coordinate point cannot be joined to the next";
        case KESTO_NO_START_ELEMENT: return "the first element is no start record";
        case KESTO_ELEMENT_NOT_EVALUABLE: return "an element cannot be evaluated";
        case KESTO_UNKNOWN_STAKE_MODE: return "the make-stake type is unknown";
        case KESTO_GENERATION_MISSING: return "elements cannot be made for this road design mode yet";
        case KESTO_NULL_HANDLE_OR_PATH: return "the road or the path is missing";
        case KESTO_FILE_NOT_OPENED: return "the file cannot be opened";
        case KESTO_WRONG_EXTENSION: return "the file has the wrong extension";
        case KESTO_FILE_NOT_WRITTEN: return "the file could not be written whole; an earlier file is untouched";
        case KESTO_FILE_OUT_OF_MEMORY: return "memory ran out while the file was read or written";
        case KESTO_NOTHING_TO_SAVE: return "there is no road between the two mileages";
        case KESTO_RECORDS_SKIPPED: return "some records of the file could not be read and were skipped";
        case KESTO_NULL_ARGUMENT: return "an argument is missing";
        case KESTO_ARGUMENT_NOT_FINITE: return "an argument is not a finite number";
        case KESTO_INDEX_OUT_OF_RANGE: return "the index addresses no record";
        case KESTO_RECORD_COUNT_REFUSED: return "this number of records cannot be added in one call";
        case KESTO_DUPLICATE_MILEAGE: return "a record with this mileage is there already";
        case KESTO_MILEAGE_OFF_ROAD: return "the mileage lies beyond the road";
        case KESTO_NO_SUCH_OCCURRENCE: return "the stake mileage does not occur that often on the road";
        case KESTO_DISTANCE_BEYOND_ELEMENT: return "the distance lies beyond the element";
        case KESTO_NO_FOOT: return "the point has no foot on this stretch of the road";
        case KESTO_NO_STAKES: return "the road has no stakes yet";
        case KESTO_RESULT_NOT_FINITE: return "the answer would not be a finite number";
        case KESTO_NO_CROSS_SECTION: return "no cross section holds this place";
        case KESTO_NO_HEIGHT: return "the profile has no height there";
        case KESTO_UNKNOWN_CURVE_MODE: return "the vertical curve mode is unknown";
        case KESTO_UNKNOWN_SIDE: return "the side is neither left (0) nor right (1)";
        case KESTO_UNKNOWN_CHANGE_KIND: return "the kind of change section is unknown";
        case KESTO_VALUE_COUNT_DIFFERS:
            return "a change section needs one value and one flag for each plate of its side";
        case KESTO_ARRAY_TOO_SMALL: return "the array given has too little room";
        case KESTO_ROAD_IS_FROZEN: return "the road is frozen and cannot be edited";
        case KESTO_NO_MILEAGE_IN_TEXT: return "the text is no mileage of this road";
        case KESTO_INTERNAL_ERROR: return "internal error of the library";
        default: return "unknown status";
    }
}

}  // namespace kesto
