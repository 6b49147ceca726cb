"""Lists of records inside a road, as Python sequences."""

from __future__ import annotations

from collections.abc import MutableSequence
from functools import wraps
from typing import TYPE_CHECKING, Any, Callable, Generic, Iterable, Iterator, TypeVar, overload

import numpy as np

from ._layout import Record

if TYPE_CHECKING:
    from .road import Road

R = TypeVar("R", bound=Record)
Method = TypeVar("Method", bound=Callable[..., Any])


def whole_call(method: Method) -> Method:
    """Makes a method of a road, or of one of its lists, one call: other threads wait until all of it is done."""
    @wraps(method)
    def alone(self: Any, *arguments: Any, **named: Any) -> Any:
        with self._lock:
            return method(self, *arguments, **named)
    return alone  # type: ignore[return-value]  # the signature is the method's own


class RecordList(MutableSequence[R], Generic[R]):
    """The records of one list of a road. Reading gives copies: assign a record back to change it.

    `numpy.asarray(list)` gives all of them as one structured array. Editing never recomputes: call `Road.design()` or
    `Road.update()` afterwards. Every method is one call to other threads; an iteration goes through the records as
    they were at its begin.
    """

    def __init__(self, road: Road, record: type[R], family: str, *before: int):
        self._road, self._record, self._family, self._before = road, record, family, before
        self._lock = road._lock

    def __iter__(self) -> Iterator[R]:
        return iter([self._record.of(row) for row in np.asarray(self)])

    def __len__(self) -> int:
        return int(self._road._ask(f"Get{self._family}Count", *self._before))

    @overload
    def __getitem__(self, index: int) -> R: ...
    @overload
    def __getitem__(self, index: slice) -> list[R]: ...
    @whole_call
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
    @whole_call
    def __setitem__(self, index: int | slice, value: R | Iterable[R]) -> None:
        if isinstance(index, slice) or not isinstance(value, self._record):
            raise TypeError(f"one {self._record.__name__} at a time is assigned to an index")
        row = value.row()
        self._road._call(f"Set{self._family}", *self._before, self._place(index), row.ctypes.data)

    @whole_call
    def __delitem__(self, index: int | slice) -> None:
        places = range(len(self))[index] if isinstance(index, slice) else [self._place(index)]
        for each in sorted(places, reverse=True):
            self._road._call(f"Delete{self._family}", *self._before, each)

    @whole_call
    def insert(self, index: int, value: R) -> None:
        """Inserts a record before the index. Raises KestoError where the library refuses it."""
        place = slice(index, None).indices(len(self))[0]
        row = self._row(value)
        self._road._call(f"Add{self._family}", row.ctypes.data, *self._before, place)

    def extend(self, values: Iterable[R]) -> None:
        """Appends records; those before one that is refused stay."""
        given = list(values)  # they may come from another road, whose lock is not to be waited for inside of this one
        with self._lock:
            for each in given:
                self.append(each)

    @whole_call
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


for _name in ("append", "pop", "remove", "clear", "reverse", "index", "count"):
    setattr(RecordList, _name, whole_call(getattr(MutableSequence, _name)))


class SortedRecordList(RecordList[R]):
    """Records that the library keeps in order along the road."""

    def insert(self, index: int, value: R) -> None:
        """Adds a record in its place; the index is not used. Raises KestoError where the library refuses it."""
        row = self._row(value)
        self._road._call(f"Add{self._family}", row.ctypes.data)
