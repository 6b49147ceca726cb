"""Codes of the library, as kesto_road.h describes them: written by scripts/interface update."""

from enum import IntEnum


class Status(IntEnum):
    """Every status that a call can leave behind, in Failure::status or as the result of a file function."""

    SUCCESS = 0
    UNKNOWN_DESIGN_MODE = 1
    OUT_OF_MEMORY = 2
    TOO_FEW_ELEMENTS = 3
    CURVE_DOES_NOT_FIT = 4
    POINT_NOT_JOINED = 5
    NO_START_ELEMENT = 6
    ELEMENT_NOT_EVALUABLE = 7
    UNKNOWN_STAKE_MODE = 8
    GENERATION_MISSING = 9
    NULL_HANDLE_OR_PATH = 12
    FILE_NOT_OPENED = 13
    WRONG_EXTENSION = 14
    FILE_NOT_WRITTEN = 15
    FILE_OUT_OF_MEMORY = 16
    NOTHING_TO_SAVE = 17
    RECORDS_SKIPPED = 18
    NULL_ARGUMENT = 20
    ARGUMENT_NOT_FINITE = 21
    INDEX_OUT_OF_RANGE = 22
    RECORD_COUNT_REFUSED = 23
    DUPLICATE_MILEAGE = 24
    MILEAGE_OFF_ROAD = 25
    NO_SUCH_OCCURRENCE = 26
    DISTANCE_BEYOND_ELEMENT = 27
    NO_FOOT = 28
    NO_STAKES = 29
    RESULT_NOT_FINITE = 30
    NO_CROSS_SECTION = 31
    NO_HEIGHT = 32
    UNKNOWN_CURVE_MODE = 33
    UNKNOWN_SIDE = 34
    UNKNOWN_CHANGE_KIND = 35
    VALUE_COUNT_DIFFERS = 36
    ARRAY_TOO_SMALL = 37
    INTERNAL_ERROR = 39
    ROAD_IS_FROZEN = 50
    NO_MILEAGE_IN_TEXT = 51


class ListOf(IntEnum):
    """Which list a Failure speaks of."""

    NONE = -1
    INTERSECTIONS = 0
    ELEMENTS = 1
    COORDINATES = 2
    STAKES = 3
    BROKEN_CHAINS = 4
    VERTICAL_CURVES = 5
    PLATES = 6
    CHANGE_SECTIONS = 7
    SECTION_MILEAGES = 8


class Limit(IntEnum):
    """Which limit a Failure speaks of."""

    NONE = -1
    ROAD_START = 0
    ROAD_END = 1
    ELEMENT_LENGTH = 2
    RECORD_COUNT = 3
    RECORDS_PER_CALL = 4
    OCCURRENCES = 5
    POLYGON_SIDE = 6
    DEFLECTION = 7
    ARC_DIAMETER = 8


class ReadingReason(IntEnum):
    """What a ReadingFinding tells. Where no other field is named, only line and section are set."""

    NO_HEADER = 1
    UNKNOWN_SECTION = 2
    KEYWORD_SPELLING = 3
    SECTION_REPEATED = 4
    SECTION_SWALLOWED = 5
    SECOND_FORM = 6
    NOT_A_NUMBER = 7
    NUMBER_TOO_LARGE = 8
    FIELDS_MISSING = 9
    FIELDS_EXTRA = 10
    RECORD_REFUSED = 11
    LINE_TOO_LONG = 12
    NO_LINE_END = 13
    ZERO_BYTE = 14
    NOT_UTF8 = 15
    VALUE_RAISED = 16
    VALUE_UNKNOWN = 17
    VALUE_DIFFERS = 18
    TYPES_MISSING = 19
    LINE_TOO_SHORT = 20
