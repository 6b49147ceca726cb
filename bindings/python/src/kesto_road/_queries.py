"""Queries for points and arrays of them, the same for roads and frozen roads."""

from __future__ import annotations

from abc import ABC, abstractmethod
from contextlib import AbstractContextManager
from ctypes import byref, c_double, c_int32, create_string_buffer
from enum import IntEnum
from typing import Any, NamedTuple, Sequence, Union, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import Array, coordinates, numbers, run, whole_numbers
from ._codes import Status
from ._failures import KestoError
from ._records import Plate, Stake
from ._signatures import SectionPlateArray

USUAL_PLATES = 8  # of one side; sections with more are asked for twice
Number = Union[float, "np.floating[Any]", "np.integer[Any]"]
Whole = Union[int, "np.integer[Any]"]
SQUARE = 90.0  # degrees


class Side(IntEnum):
    """Side of the road, looking towards increasing mileage."""

    LEFT = 0
    RIGHT = 1


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
    return all(isinstance(each, (float, int, np.number)) for each in values)


def _is_point(value: Any) -> bool:
    return isinstance(value, tuple) and len(value) == 2 and _single(*value)


def _blank(status: NDArray[np.uint8], *columns: Any) -> None:
    """Makes failed rows NaN, or -1 where the numbers are whole."""
    failed = status != 0
    if failed.any():
        for each in columns:
            each[failed] = np.nan if each.dtype.kind == "f" else -1


class Queries(ABC):
    """What roads and frozen roads answer.

    Every question takes single numbers or arrays. Single numbers, Python's or NumPy's, give single numbers, and raise
    KestoError where there is no answer. Arrays of any shapes that broadcast (and what NumPy makes arrays of, an array
    without dimensions too) give arrays of their common shape, and a row without an answer is NaN with a status (see
    Status) of its own; KestoError is raised only where the road itself cannot be built. Arrays of float64 (int32 for
    occurrences) are read in place whatever their strides, others are converted first.
    """

    @abstractmethod
    def _call(self, name: str, *arguments: Any) -> None:
        """Calls a function on the road. Raises KestoError where it fails."""

    @abstractmethod
    def _alone(self) -> AbstractContextManager[Any]:
        """Keeps other threads from editing the road."""

    @abstractmethod
    def _make_current(self) -> None:
        """Builds what is not built yet. Raises KestoError where no road can be built."""

    def _run(self, name: str, inputs: Sequence[Array], kinds: Sequence[type]) -> list[Array]:
        """Runs a batch of the library, which is one call to other threads however many rows there are."""
        with self._alone():
            return run(lambda count, *columns: self._call(name, count, *columns), inputs, kinds)

    @overload
    def locate(self, x: tuple[Number, Number]) -> Place: ...
    @overload
    def locate(self, x: Number, y: Number) -> Place: ...  # type: ignore[misc]  # numbers are array-like too
    @overload
    def locate(self, x: ArrayLike, y: ArrayLike | None = None) -> Places: ...
    def locate(self, x: ArrayLike | tuple[Number, Number], y: ArrayLike | None = None) -> Place | Places:
        """Stake mileage, occurrence and offset of points, searched on the whole road.

        Args:
            x: northings (m), or points: one as a tuple, or an array whose last axis holds x and y
            y: eastings (m), where x holds no points
        """
        given: tuple[Any, Any] = x if y is None and _is_point(x) else (x, y)  # type: ignore[assignment]
        if _single(*given):
            mileage, offset, occurrence = c_double(), c_double(), c_int32()
            self._call("GetMileageAndOffset", *given, byref(mileage), byref(offset), byref(occurrence))
            return Place(mileage.value, occurrence.value, offset.value)
        mileages, offsets, occurrences, status = self._run("GetMileageAndOffsetBatch", coordinates(*given),
                                                           [np.float64, np.float64, np.int32, np.uint8])
        _blank(status, mileages, offsets, occurrences)
        return Places(mileages, occurrences, offsets, status)

    def locate_between(self, x: Number, y: Number, lower: tuple[Number, Whole], upper: tuple[Number, Whole]) -> Place:
        """Stake mileage, occurrence and offset of one point, searched between two places of the road.

        Where a limit is the nearest point it becomes the result, with the plain distance.

        Args:
            x, y:         the point (m)
            lower, upper: the limits: stake mileage (m) and occurrence; a limit off the road is replaced by its end
        """
        mileage, offset, occurrence = c_double(), c_double(), c_int32()
        self._call("GetMileAndOffsetInLim", x, y, lower[0], lower[1], upper[0], upper[1],
                   byref(mileage), byref(offset), byref(occurrence))
        return Place(mileage.value, occurrence.value, offset.value)

    @overload
    def at(self, mileage: Number, offset: Number = 0, occurrence: Whole = 0,  # type: ignore[misc]
           angle: Number = SQUARE) -> Position: ...
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
            with self._alone():
                self._make_current()
                self._call("GetPositionAndAzimuth", mileage, offset, angle, byref(x), byref(y), byref(azimuth),
                           occurrence)
            return Position(x.value, y.value, azimuth.value)
        given = [numbers(mileage), whole_numbers(occurrence), numbers(offset), numbers(angle)]
        xs, ys, azimuths, status = self._run("GetPositionAndAzimuthBatch", given,
                                             [np.float64, np.float64, np.float64, np.uint8])
        _blank(status, xs, ys, azimuths)
        return Positions(xs, ys, azimuths, status)

    @overload
    def height(self, mileage: Number, offset: Number = 0,  # type: ignore[misc]
               occurrence: Whole = 0) -> float: ...
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
            with self._alone():
                self._make_current()
                self._call("GetHeight", mileage, occurrence, offset, byref(found))
            return found.value
        given = [numbers(mileage), whole_numbers(occurrence), numbers(offset)]
        heights, status = self._run("GetHeightBatch", given, [np.float64, np.uint8])
        _blank(status, heights)
        return Heights(heights, status)

    def continuous_mileage(self, mileage: Number, occurrence: Whole = 0) -> float:
        """Start mileage plus distance along the road (m) of a stake mileage."""
        found = c_double(float(mileage))
        self._call("GetSrcMileage", byref(found), occurrence)
        return found.value

    def format_stake(self, mileage: Number, occurrence: Whole = 0) -> str:
        """The text of a place as the stake list writes it, with the road's prefix; "+" in front of a later occurrence."""
        room = 4096  # bytes: far beyond any prefix
        text = create_string_buffer(room)
        self._call("FormatStake", mileage, occurrence, text, room)
        return text.value.decode("utf-8", "surrogateescape")

    def parse_stake(self, text: str) -> tuple[float, int]:
        """Stake mileage (m) and occurrence of a text such as "K12+345.678": 1 for every later occurrence."""
        mileage, occurrence = c_double(), c_int32()
        self._call("ParseStake", text.encode("utf-8", "surrogateescape"), byref(mileage), byref(occurrence))
        return mileage.value, occurrence.value

    def nearest_stake(self, x: Number, y: Number) -> Stake:
        """The stake nearest to a point's foot on the road."""
        row, occurrence = np.zeros((), Stake.dtype), c_int32()
        self._call("GetNearbyStakeCoordinate", x, y, row.ctypes.data, byref(occurrence))
        return Stake.of(row)

    def road_side(self, mileage: Number, side: Side, occurrence: Whole = 0, profile: bool = True) -> list[Plate]:
        """The cross section of one side: every plate with offset, point and height of its outer edge.

        Args:
            mileage:    stake mileage (m)
            occurrence: which of the equal stake mileages, 0-based
            profile:    False counts heights from the centre line
        """
        name, room = "GetRoadSide" if profile else "GetRoadSideNoHeight", USUAL_PLATES
        with self._alone():
            while True:
                rows = np.zeros(room, Plate.dtype)
                array = SectionPlateArray(rows.ctypes.data, 0, room)
                try:
                    self._call(name, mileage, occurrence, side, byref(array))
                    return [Plate.of(row) for row in rows[:array.count]]
                except KestoError:
                    if array.count <= room:
                        raise
                room = array.count
