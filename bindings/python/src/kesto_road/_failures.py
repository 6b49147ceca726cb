"""Failures as exceptions that carry the library's reason."""

from __future__ import annotations

import warnings
from typing import Any

from ._codes import Limit, ListOf, Status
from ._native import library
from ._records import Failure


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
        status: why the call failed; None where a frozen road, which keeps no reasons, has no answer
        list:   the list concerned
        record: 0-based index of the record concerned
        limit:  the limit that was passed
        value:  the value that did not hold
        bound:  the bound that it did not keep
        excess: by how much, in the unit of value
    """

    status: Status | None
    list: ListOf | None
    record: int | None
    limit: Limit | None
    value: float | None
    bound: float | None
    excess: float | None

    def __init__(self, status: int | None, failure: Failure | None = None):
        super().__init__(status, failure)  # what pickle makes it from again
        self.status = None if status is None else Status(status)
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
        if self.status is None:
            return "a frozen road has no answer here; ask the road that it was made of for the reason"
        return describe(self.status) + (f" ({told})" if told else "")


def warn_of_skipped_records(failure: Failure | None) -> None:
    """Warns where the last call, a successful opening, left records out."""
    if failure and failure.status == Status.RECORDS_SKIPPED:
        warnings.warn(f"{failure.value:.0f} records could not be read, the first one in line {failure.record}",
                      RecordsSkippedWarning, stacklevel=4)
