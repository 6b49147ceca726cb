"""What all records have in common: values in Python, a row of bytes in C."""

from __future__ import annotations

import operator
from dataclasses import dataclass, fields
from typing import Any, ClassVar, TypeVar

import numpy as np

SOME = TypeVar("SOME", bound="Record")


def layout(size: int, **formats: str) -> np.dtype[Any]:
    """The dtype of a record in C: every number at a multiple of its own size, on every platform."""
    offsets, end = [], 0
    for form in formats.values():
        width = np.dtype(form).itemsize
        alignment = 1 if form.startswith("S") else width
        offsets.append(-(-end // alignment) * alignment)
        end = offsets[-1] + width
    if end > size:
        raise ImportError(f"a record of {size} bytes has fields of {end}")
    return np.dtype({"names": list(formats), "formats": list(formats.values()), "offsets": offsets, "itemsize": size})


def whole(value: Any, kind: Any) -> int:
    """A whole number that a kind of NumPy's holds. Raises TypeError for what is not whole, OverflowError beyond it."""
    number, held = operator.index(value), np.iinfo(kind)
    if not held.min <= number <= held.max:
        raise OverflowError(f"{number} is not within {held.min} and {held.max}")
    return number


@dataclass
class Record:
    """A record: values with the names of its dtype's fields."""

    dtype: ClassVar[np.dtype[Any]]

    @classmethod
    def of(cls: type[SOME], row: Any) -> SOME:
        """Makes it from one row of a structured array."""
        texts = {each.name for each in fields(cls) if str(each.type) == "str"}
        return cls(**{name: value.decode("utf-8", "surrogateescape") if name in texts else value
                      for name, value in zip(cls.dtype.names or (), row.item())})

    def row(self) -> np.ndarray[Any, np.dtype[Any]]:
        """The record as a structured array without dimensions. Texts beyond their 31 bytes are cut by the library.
        Raises OverflowError or TypeError for a number that is not one of the field's."""
        row = np.zeros((), self.dtype)
        for name in self.dtype.names or ():
            value, kind = getattr(self, name), self.dtype[name]
            if isinstance(value, str):
                value = value.encode("utf-8", "surrogateescape")
            row[name] = whole(value, kind) if kind.kind in "iu" else value
        return row
