"""Queries for points and arrays of them, the same for roads and frozen roads."""

from __future__ import annotations

from abc import ABC, abstractmethod
from ctypes import byref, c_double, c_int32
from typing import Any, NamedTuple, cast, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import coordinates, numbers, run, whole_number, whole_numbers

SQUARE = 90.0  # degrees


class Place(NamedTuple):
    """Place of a point relative to the road."""

    mileage: float  # stake mileage of the foot (m)
    occurrence: int  # which of the equal stake mileages, 0-based
    offset: float  # from the centre line (m), positive to the right


class Places(NamedTuple):
    """Places of many points. A row without an answer is NaN, its occurrence -1, its status not 0."""

    mileage: NDArray[np.float64]
    occurrence: NDArray[np.int32]
    offset: NDArray[np.float64]
    status: NDArray[np.uint8]


class Position(NamedTuple):
    """Point with the direction of the centre line there."""

    x: float  # northing (m)
    y: float  # easting (m)
    azimuth: float  # tangent azimuth of the centre line (degrees, clockwise from +x)


class Positions(NamedTuple):
    """Many positions. A row without an answer is NaN, its status not 0."""

    x: NDArray[np.float64]
    y: NDArray[np.float64]
    azimuth: NDArray[np.float64]
    status: NDArray[np.uint8]


class Heights(NamedTuple):
    """Many heights. A row without an answer is NaN, its status not 0."""

    height: NDArray[np.float64]
    status: NDArray[np.uint8]


def _single(*values: Any) -> bool:
    return all(isinstance(each, (float, int)) or np.ndim(each) == 0 for each in values)


def _blank(status: NDArray[np.uint8], *columns: Any) -> None:
    """Makes failed rows NaN, or -1 where the numbers are whole."""
    failed = status != 0
    if failed.any():
        for each in columns:
            each[failed] = np.nan if each.dtype.kind == "f" else -1


class Queries(ABC):
    """What roads and frozen roads answer.

    Every question takes single numbers or arrays. Single numbers give single numbers, and raise KestoError where there
    is no answer. Arrays of any shapes that broadcast give arrays of their common shape, and a row without an answer is
    NaN with a status (see Status) of its own; KestoError is raised only where the road itself cannot be built. Arrays
    of float64 (int32 for occurrences) are read in place whatever their strides, others are converted first.
    """

    @abstractmethod
    def _call(self, name: str, *arguments: Any) -> None:
        """Calls a function on the road. Raises KestoError where it fails."""

    @overload
    def locate(self, x: tuple[float, float]) -> Place: ...  # type: ignore[misc]  # numbers are array-like too
    @overload
    def locate(self, x: float, y: float) -> Place: ...  # type: ignore[misc]
    @overload
    def locate(self, x: ArrayLike, y: ArrayLike | None = None) -> Places: ...
    def locate(self, x: ArrayLike, y: ArrayLike | None = None) -> Place | Places:
        """Stake mileage, occurrence and offset of points, searched on the whole road.

        Args:
            x: northings (m), or points: an array whose last axis holds x and y
            y: eastings (m), where x holds no points
        """
        if y is None or not _single(x, y):
            x, y = coordinates(x, y)
        if _single(x, y):
            mileage, offset, occurrence = c_double(), c_double(), c_int32()
            self._call("GetMileageAndOffset", x, y, byref(mileage), byref(offset), byref(occurrence))
            return Place(mileage.value, occurrence.value, offset.value)

        def batch(count: int, *columns: int) -> None:
            self._call("GetMileageAndOffsetBatch", count, *columns)

        mileages, offsets, occurrences, status = run(batch, [numbers(x), numbers(y)],
                                                     [np.float64, np.float64, np.int32, np.uint8])
        _blank(status, mileages, offsets, occurrences)
        return Places(mileages, occurrences, offsets, status)

    def locate_between(self, x: float, y: float, lower: tuple[float, int], upper: tuple[float, int]) -> Place:
        """Stake mileage, occurrence and offset of one point, searched between two places of the road.

        Where a limit is the nearest point it becomes the result, with the plain distance.

        Args:
            x, y:         the point (m)
            lower, upper: the limits: stake mileage (m) and occurrence; a limit off the road is replaced by its end
        """
        mileage, offset, occurrence = c_double(), c_double(), c_int32()
        self._call("GetMileAndOffsetInLim", x, y, lower[0], whole_number(lower[1]), upper[0], whole_number(upper[1]),
                   byref(mileage), byref(offset), byref(occurrence))
        return Place(mileage.value, occurrence.value, offset.value)

    @overload
    def at(self, mileage: float, offset: float = 0, occurrence: int = 0,  # type: ignore[misc]
           angle: float = SQUARE) -> Position: ...
    @overload
    def at(self, mileage: ArrayLike, offset: ArrayLike = 0, occurrence: ArrayLike = 0,
           angle: ArrayLike = SQUARE) -> Positions: ...
    def at(self, mileage: ArrayLike, offset: ArrayLike = 0, occurrence: ArrayLike = 0,
           angle: ArrayLike = SQUARE) -> Position | Positions:
        """Points at stake mileages and offsets.

        Args:
            mileage:    stake mileages (m)
            offset:     from the centre line (m), positive to the right
            occurrence: which of the equal stake mileages, 0-based
            angle:      from the tangent clockwise to the offset line (degrees); outside [0, 180] it counts as 90
        """
        if _single(mileage, offset, occurrence, angle):
            x, y, azimuth = c_double(), c_double(), c_double()
            self._call("GetPositionAndAzimuth", mileage, offset, angle, byref(x), byref(y), byref(azimuth),
                       whole_number(cast(Any, occurrence)))
            return Position(x.value, y.value, azimuth.value)

        def batch(count: int, *columns: int) -> None:
            self._call("GetPositionAndAzimuthBatch", count, *columns)

        given = [numbers(mileage), whole_numbers(occurrence), numbers(offset), numbers(angle)]
        xs, ys, azimuths, status = run(batch, given, [np.float64, np.float64, np.float64, np.uint8])
        _blank(status, xs, ys, azimuths)
        return Positions(xs, ys, azimuths, status)

    @overload
    def height(self, mileage: float, offset: float = 0, occurrence: int = 0) -> float: ...  # type: ignore[misc]
    @overload
    def height(self, mileage: ArrayLike, offset: ArrayLike = 0, occurrence: ArrayLike = 0) -> Heights: ...
    def height(self, mileage: ArrayLike, offset: ArrayLike = 0, occurrence: ArrayLike = 0) -> float | Heights:
        """Design heights (m); 0 on the centre line of a road without grade-change points.

        Args:
            mileage:    stake mileages (m)
            offset:     from the centre line (m), positive to the right
            occurrence: which of the equal stake mileages, 0-based
        """
        if _single(mileage, offset, occurrence):
            found = c_double()
            self._call("GetHeight", mileage, whole_number(cast(Any, occurrence)), offset, byref(found))
            return found.value

        def batch(count: int, *columns: int) -> None:
            self._call("GetHeightBatch", count, *columns)

        given = [numbers(mileage), whole_numbers(occurrence), numbers(offset)]
        heights, status = run(batch, given, [np.float64, np.uint8])
        _blank(status, heights)
        return Heights(heights, status)
