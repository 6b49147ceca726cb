"""Lists of records inside a road, as Python sequences."""

from __future__ import annotations

from collections.abc import MutableSequence
from typing import TYPE_CHECKING, Any, Generic, Iterable, TypeVar, overload

import numpy as np

from ._records import Record

if TYPE_CHECKING:
    from .road import Road

R = TypeVar("R", bound=Record)


class RecordList(MutableSequence[R], Generic[R]):
    """The records of one list of a road. Reading gives copies: assign a record back to change it.

    `numpy.asarray(list)` gives all of them as one structured array. Editing never recomputes: call `Road.design()` or
    `Road.update()` afterwards.
    """

    def __init__(self, road: Road, record: type[R], family: str, *before: int):
        self._road, self._record, self._family, self._before = road, record, family, before

    def __len__(self) -> int:
        return int(self._road._ask(f"Get{self._family}Count", *self._before))

    @overload
    def __getitem__(self, index: int) -> R: ...
    @overload
    def __getitem__(self, index: slice) -> list[R]: ...
    def __getitem__(self, index: int | slice) -> R | list[R]:
        if isinstance(index, slice):
            return [self[each] for each in range(len(self))[index]]
        row = np.zeros((), self._record.dtype)
        self._road._call(f"Get{self._family}", *self._before, self._place(index), row.ctypes.data)
        return self._record.of(row)

    @overload
    def __setitem__(self, index: int, value: R) -> None: ...
    @overload
    def __setitem__(self, index: slice, value: Iterable[R]) -> None: ...
    def __setitem__(self, index: int | slice, value: R | Iterable[R]) -> None:
        if isinstance(index, slice) or not isinstance(value, self._record):
            raise TypeError(f"one {self._record.__name__} at a time is assigned to an index")
        row = value.row()
        self._road._call(f"Set{self._family}", *self._before, self._place(index), row.ctypes.data)

    def __delitem__(self, index: int | slice) -> None:
        places = range(len(self))[index] if isinstance(index, slice) else [self._place(index)]
        for each in sorted(places, reverse=True):
            self._road._call(f"Delete{self._family}", *self._before, each)

    def insert(self, index: int, value: R) -> None:
        """Inserts a record before the index. Raises KestoError where the library refuses it."""
        place = slice(index, None).indices(len(self))[0]
        row = self._row(value)
        self._road._call(f"Add{self._family}", row.ctypes.data, *self._before, place)

    def __array__(self, dtype: Any = None, copy: bool | None = None) -> np.ndarray[Any, np.dtype[Any]]:
        rows = np.zeros(len(self), self._record.dtype)
        begin, size = rows.ctypes.data, self._record.dtype.itemsize
        for index in range(len(rows)):
            self._road._call(f"Get{self._family}", *self._before, index, begin + index * size)
        return rows if dtype is None else rows.astype(dtype)

    def __repr__(self) -> str:
        return f"<{len(self)} records {self._record.__name__}>"

    def _place(self, index: int) -> int:
        return range(len(self))[index]

    def _row(self, value: R) -> np.ndarray[Any, np.dtype[Any]]:
        if not isinstance(value, self._record):
            raise TypeError(f"a {self._record.__name__} is needed, not {type(value).__name__}")
        return value.row()


class SortedRecordList(RecordList[R]):
    """Records that the library keeps in order along the road."""

    def insert(self, index: int, value: R) -> None:
        """Adds a record in its place; the index is not used. Raises KestoError where the library refuses it."""
        row = self._row(value)
        self._road._call(f"Add{self._family}", row.ctypes.data)
