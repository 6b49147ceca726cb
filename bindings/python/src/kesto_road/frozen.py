"""Frozen roads: copies that never change, for any number of threads."""

from __future__ import annotations

import weakref
from contextlib import AbstractContextManager, nullcontext
from typing import Any, NoReturn

import numpy as np
from numpy.typing import NDArray

from ._failures import KestoError
from ._native import call, library
from ._queries import Number, Queries, Whole
from ._records import Stake


class FrozenRoad(Queries):
    """An immutable copy of a road, made by `Road.freeze()`, with the same answers to the last bit.

    Any number of threads may ask it at once, and they run side by side: a call holds no lock of Python's. A frozen road
    keeps no failure: its errors carry a status where an array of the same question tells one (`locate`, `at`, `height`),
    and none otherwise. A copy is the frozen road itself. It cannot be pickled: a
    project file would round its numbers; pickle the road, or send its bytes, and freeze it on the other side.
    """

    def __init__(self, handle: int):
        self._handle = handle
        weakref.finalize(self, library.EndRoadDesign, handle).atexit = False

    def __copy__(self) -> FrozenRoad:
        return self

    def __deepcopy__(self, known: dict[int, Any]) -> FrozenRoad:
        return self

    def __reduce__(self) -> NoReturn:
        raise TypeError("a frozen road cannot be pickled: pickle the road, or its to_bytes(), and freeze the copy")

    def _alone(self) -> AbstractContextManager[Any]:
        return nullcontext()

    def _make_current(self) -> None:
        """A frozen road is."""

    @property
    def stakes(self) -> NDArray[Any]:
        """The stakes that the road had when it was frozen, as a structured array with the fields of Stake."""
        rows = np.zeros(call("GetStakeCoordinateCount", self._handle), Stake.dtype)
        for index in range(len(rows)):
            self._call("GetStakeCoordinate", index, rows.ctypes.data + index * rows.itemsize)
        return rows

    def intersection_at(self, mileage: Number, occurrence: Whole = 0) -> int | None:
        """As `Road.intersection_at()`."""
        self.continuous_mileage(mileage, occurrence)  # raises where there is no such place
        index = int(call("GetIntersectionIndex", self._handle, mileage, occurrence))
        return index if index >= 0 else None

    def _call(self, name: str, *arguments: Any) -> None:
        if not call(name, self._handle, *arguments):
            raise KestoError(self._reason(name, *arguments))

    def _reason(self, name: str, *given: Any) -> int | None:
        """Why a question has no answer, where a batch of one row answers the very same one; its status tells it."""
        if name == "GetMileageAndOffset":
            return int(self.locate([given[0]], [given[1]]).status[0])
        if name == "GetHeight":
            return int(self.height([given[0]], given[2], given[1]).status[0])
        if name == "GetPositionAndAzimuth":
            return int(self.at([given[0]], given[1], given[6], given[2]).status[0])
        return None
