"""Failures as exceptions that carry the library's reason."""

from __future__ import annotations

import warnings
from enum import IntEnum
from typing import Any

from ._native import library
from ._records import Failure


class Status(IntEnum):
    """Every status of the library, as `KestoStatus` in kesto_road.h describes them."""

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


class ListOf(IntEnum):
    """Which list a failure speaks of (`KestoList`)."""

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
    """Which limit a failure speaks of (`KestoLimit`)."""

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


def describe(status: int) -> str:
    """A status as an English sentence."""
    text: bytes = library.DescribeStatus(status)
    return text.decode()


class RecordsSkippedWarning(UserWarning):
    """A project file was opened, but for records that could not be read."""


class KestoError(Exception):
    """A call that failed, with the reason that the library gives.

    What does not apply is None, or 0 where it is a real number. What the numbers mean is told beside each status in
    kesto_road.h.

    Attributes:
        status: why the call failed
        list:   the list concerned
        record: 0-based index of the record concerned
        limit:  the limit that was passed
        value:  the value that did not hold
        bound:  the bound that it did not keep
        excess: by how much, in the unit of value
    """

    status: Status
    list: ListOf | None
    record: int | None
    limit: Limit | None
    value: float | None
    bound: float | None
    excess: float | None

    def __init__(self, status: int, failure: Failure | None = None):
        super().__init__(status, failure)  # what pickle makes it from again
        self.status = Status(status)
        known = failure if failure and failure.status == status else None
        self.list = ListOf(known.list) if known and known.list >= 0 else None
        self.record = known.record if known and known.record >= 0 else None
        self.limit = Limit(known.limit) if known and known.limit >= 0 else None
        self.value = known.value if known else None
        self.bound = known.bound if known else None
        self.excess = known.excess if known else None

    def __str__(self) -> str:
        enums = (("list", self.list), ("limit", self.limit))
        parts: list[tuple[str, Any]] = [(name, each.name.lower()) for name, each in enums if each is not None]
        if self.record is not None:
            parts.append(("record", self.record))
        if self.value or self.bound or self.excess:
            parts += [(name, f"{getattr(self, name):.10g}") for name in ("value", "bound", "excess")]
        told = ", ".join(f"{name} {value}" for name, value in parts)
        return describe(self.status) + (f" ({told})" if told else "")


def warn_of_skipped_records(failure: Failure | None) -> None:
    """Warns where the last call, a successful opening, left records out."""
    if failure and failure.status == Status.RECORDS_SKIPPED:
        warnings.warn(f"{failure.value:.0f} records could not be read, the first one in line {failure.record}",
                      RecordsSkippedWarning, stacklevel=4)
