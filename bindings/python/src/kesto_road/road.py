"""Roads: their data, their design run and their files."""

from __future__ import annotations

import os
import threading
import weakref
from contextlib import AbstractContextManager, suppress
from ctypes import byref, c_double, c_int32, c_int64, create_string_buffer
from enum import IntEnum
from typing import Any, NamedTuple, Sequence, Union

import numpy as np
from numpy.typing import NDArray

from ._codes import ListOf, Status
from ._failures import KestoError, warn_of_skipped_records
from ._layout import whole
from ._lists import RecordList, SortedRecordList, whole_call
from ._native import call, library
from ._queries import Number, Queries, Side, Whole
from ._records import (BrokenChain, Coordinate, EaseParameters, Element, Failure, Intersection, Plate, ReadingFinding,
                       SectionMileage, Stake, VerticalCurve)
from ._signatures import DoubleArray, Int32Array
from .frozen import FrozenRoad


class DesignMode(IntEnum):
    """The form of input that the elements are made from."""

    INTERSECTIONS = 0
    ELEMENTS = 1
    COORDINATES = 2
    BROKEN_LINE = 3


class Turn(IntEnum):
    """Side to which an arc or a spiral turns, looking along it."""

    LEFT = 0
    RIGHT = 1


class ChangeOf(IntEnum):
    """What a change section alters."""

    CROSS_SLOPE = 0  # the values are cross slopes (per cent)
    WIDTH = 1  # the values are widths (m)


class Transition(IntEnum):
    """How values pass from the change section before to this one."""

    LINEAR = 0
    CUBIC = 1
    FOURTH_DEGREE = 2


class ChangeSection(NamedTuple):
    """A place where plates take other widths or cross slopes."""

    mileage: float  # stake mileage (m)
    occurrence: int  # which of the equal stake mileages, 0-based
    values: tuple[float, ...]  # one for each plate, from the centre line outwards
    flags: tuple[int, ...]  # one for each plate, carried, never read


Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
_WATER = b".watx"


class Road(Queries):
    """A road. Lengths in metres, azimuths in degrees clockwise from north; x is the northing, y the easting.

    Entering data computes nothing: `design()` does, and queries answer after it. One road may be used from several
    threads, whose calls then wait for one another, each of them whole; see `freeze()` for queries side by side. Copies
    and pickles carry the project file, whose numbers have eight decimals, and run the design where the road had
    stakes. The memory of a road is released with its last reference.
    """

    def __init__(self) -> None:
        """An empty road with default settings."""
        self._handle = library.StartRoadDesign()
        if not self._handle:
            raise MemoryError("no memory for a road")
        self._current = False
        self._lock = threading.RLock()  # one call at a time, and its failure read before the next
        weakref.finalize(self, library.EndRoadDesign, self._handle).atexit = False

    @classmethod
    def open(cls, path: Path, design: bool = True) -> Road:
        """Opens a project file (".road", or ".watx" of a water project).

        Args:
            design: runs the design; without it the data are there to be mended even where no road can be built
        Raises KestoError where the file cannot be read or no road can be built; warns with RecordsSkippedWarning where
        records could not be read.
        """
        name, road = os.fsencode(path), cls()
        road._file("OpenWaterProject" if _is_water(name) else "OpenProject", name)
        return road._opened(design)

    @classmethod
    def from_bytes(cls, data: bytes | bytearray | memoryview, design: bool = True) -> Road:
        """A road from the bytes of a project file; see `open()`."""
        road, content = cls(), bytes(data)
        road._file("OpenProjectFromMemory", content, len(content))
        return road._opened(design)

    def _opened(self, design: bool) -> Road:
        skipped = self._failure()
        if design:
            self.design()
        warn_of_skipped_records(skipped)
        return self

    def reading_findings(self) -> list[ReadingFinding]:
        """What the opening skipped or doubted, in the order of the file; of more than 1000 the first ones."""
        findings: list[ReadingFinding] = []
        row = np.zeros((), ReadingFinding.dtype)
        with self._lock:
            while library.GetReadingFinding(self._handle, len(findings), row.ctypes.data):
                findings.append(ReadingFinding.of(row))
        return findings

    def record_line(self, which: ListOf, index: Whole, key: Whole = 0) -> int | None:
        """The line of the file that a record stood in when the road was opened; None where it was not read.

        Args:
            index: 0-based index of the record after the opening
            key:   the side of plates, 2 * side + kind of change sections, 0 for all other lists
        """
        line = c_int32()
        return line.value if self._ask("GetRecordLine", which, key, index, byref(line)) else None

    def save(self, path: Path) -> None:
        """Saves the project file; an earlier file stays whole until the new one is complete.

        Args:
            path: ends in ".road", or in ".watx" for a water project, in any case of letters, and is then written with
                  small ones; any other path gets ".road" appended
        """
        name = os.fsencode(path)
        self._file("SaveWaterProject" if _is_water(name) else "SaveProject", name)

    def to_bytes(self) -> bytes:
        """The bytes of the project file."""
        size = c_int64(0)
        with self._lock:
            status = library.SaveProjectToMemory(self._handle, None, 0, byref(size))
            if status == Status.ARRAY_TOO_SMALL:
                memory = create_string_buffer(size.value)
                self._file("SaveProjectToMemory", memory, size.value, byref(size))
                return memory.raw[:size.value]
            raise KestoError(status, self._failure())

    def save_part(self, path: Path, start: Number, end: Number, start_occurrence: Whole = 0,
                  end_occurrence: Whole = 0) -> None:
        """Saves the stretch between two stake mileages (m) as a road of its own."""
        self._file("SavePartProject", os.fsencode(path), start, end, start_occurrence, end_occurrence)

    def export_landxml(self, path: Path) -> None:
        """Runs the design and writes alignment and profile as a LandXML 1.1 document."""
        self._file("ExportLandXMLFile", os.fsencode(path))

    def __reduce__(self) -> tuple[Any, ...]:
        with self._lock:
            return _copied, (self.to_bytes(), len(self.stakes) > 0)

    def clear(self) -> None:
        """Empties the design data and resets all settings."""
        self._ask("ClearRoad")

    def alone(self) -> AbstractContextManager[Any]:
        """Within `with road.alone():` other threads wait, so that several calls are one to them."""
        return self._lock

    # ------------------------------------------------------------------------------------------------ design and stakes

    def design(self) -> None:
        """The design run: builds the chain, makes and names the stakes, derives the profile."""
        self._call("DesignRoad")

    def update(self) -> None:
        """Builds the element chain anew and keeps the stakes."""
        self._call("UpdateData")

    @property
    def stakes(self) -> NDArray[Any]:
        """The stakes of the last design run, as a structured array with the fields of Stake."""
        return np.asarray(RecordList(self, Stake, "StakeCoordinate"))

    @whole_call
    def intersection_at(self, mileage: Number, occurrence: Whole = 0) -> int | None:
        """Index of the intersection whose curve covers a stake mileage (m): both its ends belong to it, the later of
        two curves that touch is told. None where no curve does, and in other design modes."""
        self.continuous_mileage(mileage, occurrence)  # raises where there is no such place
        index = int(self._ask("GetIntersectionIndex", mileage, occurrence))
        return index if index >= 0 else None

    def ease_parameters(self, start_radius: Number, end_radius: Number, length: Number) -> EaseParameters:
        """What a spiral is like between two radii, 0 for infinite, over a length (m); the road itself plays no part."""
        row = np.zeros((), EaseParameters.dtype)
        self._call("CalcEaseParam", start_radius, end_radius, length, row.ctypes.data)
        return EaseParameters.of(row)

    @property
    def end_mileage(self) -> float:
        """Stake mileage at the road's end (m) after a design run, the start mileage before."""
        return float(self._ask("GetRoadMileage", None))

    def freeze(self) -> FrozenRoad:
        """An immutable copy of the road as it is now, for any number of threads at once."""
        with self._lock:
            handle = library.FreezeRoad(self._handle)
            if not handle:
                raise self._error()
            return FrozenRoad(handle)

    # ---------------------------------------------------------------------------------------------------------- lists

    @property
    def intersections(self) -> RecordList[Intersection]:
        """Intersection points of the tangents."""
        return RecordList(self, Intersection, "Intersection")

    @property
    def elements(self) -> RecordList[Element]:
        """Elements, the start record first."""
        return RecordList(self, Element, "Element")

    @property
    def coordinates(self) -> RecordList[Coordinate]:
        """Coordinate points."""
        return RecordList(self, Coordinate, "Coordinate")

    @property
    def broken_chains(self) -> RecordList[BrokenChain]:
        """Broken chains, by back mileage."""
        return SortedRecordList(self, BrokenChain, "BrokenChain")

    @property
    def vertical_curves(self) -> RecordList[VerticalCurve]:
        """Grade-change points, along the road."""
        return SortedRecordList(self, VerticalCurve, "VerticalCurve")

    @property
    def section_mileages(self) -> RecordList[SectionMileage]:
        """The section mileage index."""
        return SortedRecordList(self, SectionMileage, "SectionMileageIndex")

    @property
    def plates(self) -> tuple[RecordList[Plate], RecordList[Plate]]:
        """The plates of the left and of the right side, from the centre line outwards: `road.plates[Side.LEFT]`."""
        return self._plates(Side.LEFT), self._plates(Side.RIGHT)

    def _plates(self, side: int) -> RecordList[Plate]:
        return RecordList(self, Plate, "StandardSectionPlate", side)

    # ----------------------------------------------------------------------------------------------- building a road

    @whole_call
    def start(self, x: float, y: float, azimuth: float, mileage: float = 0) -> Road:
        """Begins the alignment: drops every element there is and takes elements as the design mode.

        Args:
            x, y:    start point (m)
            azimuth: start azimuth (degrees)
            mileage: stake mileage of the start (m)
        """
        _require_finite(x, y, azimuth, mileage)
        del self.elements[:]
        self.design_mode = DesignMode.ELEMENTS
        self.start_mileage = mileage
        self._call("SetStartInformation", x, y, azimuth)
        return self

    def straight(self, length: float) -> Road:
        """Appends a straight (m) to the end of the last element."""
        return self._append(Element(type=1, length=length))

    def arc(self, radius: float, length: float, turn: Turn) -> Road:
        """Appends a circular arc of a radius and a length (m), tangent to the last element."""
        if not radius > 0:
            raise KestoError(Status.ELEMENT_NOT_EVALUABLE)
        return self._append(Element(type=2, turn_direction=turn, start_radius=radius, length=length))

    def spiral(self, start_radius: float, end_radius: float, length: float, turn: Turn) -> Road:
        """Appends a clothoid spiral (m) between two radii, 0 for infinite, tangent to the last element."""
        if not (start_radius >= 0 and end_radius >= 0):
            raise KestoError(Status.ELEMENT_NOT_EVALUABLE)
        return self._append(Element(type=3, turn_direction=turn, start_radius=start_radius, end_radius=end_radius,
                                    length=length))

    def add_intersection(self, x: float, y: float, radius: float = 0, spiral_in: float = 0, spiral_out: float = 0,
                         name: str = "") -> Road:
        """Appends an intersection of tangents with its curve (m); the first and the last one are the road's ends."""
        self.intersections.append(Intersection(name, x, y, radius, spiral_in, spiral_out))
        return self

    def add_coordinate(self, x: float, y: float, type: int = 1, radius: float = 0, turn: Turn = Turn.LEFT,
                       name: str = "") -> Road:
        """Appends a coordinate point (m): the begin of a straight (1), an arc (2) or a spiral (3)."""
        self.coordinates.append(Coordinate(type, turn, x, y, radius, name))
        return self

    def add_broken_chain(self, back: float, ahead: float) -> Road:
        """Adds a broken chain: stake mileages (m) of one point before and after the break."""
        _require_finite(back, ahead)
        self.broken_chains.append(BrokenChain(back, ahead))
        return self

    def add_grade_point(self, mileage: float, elevation: float, radius: float = 0, occurrence: int = 0) -> Road:
        """Adds a grade-change point (m) with its curve's radius (m). Add elements and broken chains first."""
        _require_finite(mileage, elevation, radius)
        self.vertical_curves.append(VerticalCurve(mileage=mileage, occurrence=occurrence, elevation=elevation,
                                                  radius=radius))
        return self

    @whole_call
    def add_plate(self, side: Side, width: float, cross_slope: float, step: float = 0, name: str = "") -> Road:
        """Adds a plate outside those that the side has.

        Args:
            width:       horizontal width (m)
            cross_slope: per cent, positive when the outer edge is higher
            step:        vertical step at its inner edge (m)
            name:        shown, never interpreted
        """
        _require_finite(width, cross_slope, step)
        self._plates(side).append(Plate(name, width=width, cross_slope=cross_slope, step=step))
        return self

    def add_change_section(self, side: Side, kind: ChangeOf, mileage: Number, values: Sequence[float],
                           transition: Transition = Transition.LINEAR, occurrence: Whole = 0,
                           flags: Sequence[int] | None = None) -> Road:
        """Adds a change section. Add elements, broken chains and plates first.

        Args:
            mileage:    stake mileage (m)
            values:     one for each plate of the side, from the centre line outwards: per cent or m
            transition: how values pass over from the change section before
            occurrence: which of the equal stake mileages, 0-based
            flags:      one for each plate, carried in files and never read; all 1 where none are given
        """
        numbers, marks = _change(values, flags)
        self._call("AddChangeSectionList2", mileage, side, kind, numbers, marks, len(values), occurrence, transition)
        return self

    def set_change_section(self, side: Side, kind: ChangeOf, index: int, mileage: Number, values: Sequence[float],
                           transition: Transition = Transition.LINEAR, occurrence: Whole = 0,
                           flags: Sequence[int] | None = None) -> None:
        """Replaces the change section at an index, which may move; see `add_change_section()`."""
        numbers, marks = _change(values, flags)
        size = len(values)
        self._call("SetChangeSection2", side, kind, index, mileage, byref(DoubleArray(numbers, size, size)),
                   byref(Int32Array(marks, size, size)), occurrence, transition)

    @whole_call
    def change_sections(self, side: Side, kind: ChangeOf) -> list[ChangeSection]:
        """The change sections of a side and kind, along the road."""
        plates = len(self._plates(side))
        numbers, marks = (c_double * plates)(), (c_int32 * plates)()
        values, flags = DoubleArray(numbers, 0, plates), Int32Array(marks, 0, plates)
        mileage, occurrence, found = c_double(), c_int32(), []
        for index in range(self._ask("GetChangeSectionCount", side, kind)):
            self._call("GetChangeSection2", side, kind, index, byref(mileage), byref(values), byref(flags),
                       byref(occurrence))
            found.append(ChangeSection(mileage.value, occurrence.value, tuple(numbers[:values.count]),
                                       tuple(marks[:flags.count])))
        return found

    def delete_change_section(self, side: Side, kind: ChangeOf, index: int) -> None:
        """Removes the change section at an index."""
        self._call("DeleteChangeSection", side, kind, index)

    def transition_type(self, side: Side, kind: ChangeOf, index: int) -> int:
        """The transition (see Transition) at an index of the type table, which keeps those of places whose change
        section is gone; 0 behind its end."""
        found = c_int32()
        self._call("GetChangeSectionType", side, kind, index, byref(found))
        return found.value

    def set_transition_type(self, side: Side, kind: ChangeOf, index: int, transition: Transition) -> None:
        """Changes the transition at an index of the type table."""
        self._call("SetChangeSectionType", side, kind, index, transition)

    # -------------------------------------------------------------------------------------------------------- settings

    @property
    def design_mode(self) -> int:
        """The form of input that elements are made from, a DesignMode."""
        return int(self._ask("GetRoadDesignMode"))

    @design_mode.setter
    def design_mode(self, mode: int) -> None:
        self._ask("SetRoadDesignMode", mode)

    @property
    def start_mileage(self) -> float:
        """Stake mileage of the road's start (m)."""
        start = c_double()
        self._ask("GetRoadMileage", byref(start))
        return start.value

    @start_mileage.setter
    def start_mileage(self, mileage: float) -> None:
        self._ask("SetStartMileage", mileage)

    @property
    def stake_interval(self) -> float:
        """Spacing of regular stakes (m), at least 1."""
        interval = c_double()
        self._ask("GetMakeStakeInfo", byref(interval))
        return interval.value

    @stake_interval.setter
    def stake_interval(self, interval: float) -> None:
        self._ask("SetMileageInterval", interval)

    @property
    def stake_type(self) -> int:
        """How regular stakes are made: 0 at whole multiples of the interval, 1 from each element's start."""
        return int(self._ask("GetMakeStakeInfo", None))

    @stake_type.setter
    def stake_type(self, kind: int) -> None:
        self._ask("SetMakeStakeType", kind)

    @property
    def stake_prefix(self) -> str:
        """Text before stake mileages."""
        with self._lock:
            prefix: bytes = self._ask("GetMakeStakePerfix")
        return prefix.decode("utf-8", "surrogateescape")

    @stake_prefix.setter
    def stake_prefix(self, prefix: str) -> None:
        self._ask("SetMakeStakePerfix", prefix.encode("utf-8", "surrogateescape"))

    @property
    def vertical_curve_mode(self) -> int:
        """How vertical curves are given: 0 by radius, 1 by their two ends."""
        return int(self._ask("GetVerticalCurveMode"))

    @vertical_curve_mode.setter
    def vertical_curve_mode(self, mode: int) -> None:
        self._ask("SetVerticalCurveMode", mode)

    @property
    def side_slope_mode(self) -> int:
        """The side slope mode."""
        return int(self._ask("GetSideSlopeMode"))

    @side_slope_mode.setter
    def side_slope_mode(self, mode: int) -> None:
        self._ask("SetSideSlopeMode", mode)

    @property
    def section_mode(self) -> int:
        """The section mode."""
        return int(self._ask("GetSectionMode"))

    @section_mode.setter
    def section_mode(self, mode: int) -> None:
        self._ask("SetSectionMode", mode)

    # ------------------------------------------------------------------------------------------------------- the handle

    @whole_call
    def _append(self, element: Element) -> Road:
        if len(self.elements) == 0:
            raise KestoError(Status.NO_START_ELEMENT)
        last = self.elements[-1]
        element.start_x, element.start_y, element.start_azimuth = self._end_of(last)
        self._end_of(element)  # what cannot be evaluated must not enter the road
        self.elements.append(element)
        return self

    def _end_of(self, element: Element) -> tuple[float, float, float]:
        x, y, azimuth, row = c_double(), c_double(), c_double(), element.row()
        self._call("GetElementPositionAndAzimuth", row.ctypes.data, element.length, byref(x), byref(y), byref(azimuth))
        return x.value, y.value, azimuth.value

    def __repr__(self) -> str:
        with self._lock:
            return f"<Road of {max(len(self.elements) - 1, 0)} elements, {len(self.stakes)} stakes>"

    _alone = alone

    def _make_current(self) -> None:
        if not self._current:
            self._call("MakeCurrent")
            self._current = True

    def _note(self, name: str) -> None:
        """What is not a question may leave the road without its chain."""
        if not name.startswith(("Get", "Format", "Parse")):
            self._current = False

    def _failure(self) -> Failure | None:
        row = np.zeros((), Failure.dtype)
        return Failure.of(row) if library.GetLastFailure(self._handle, row.ctypes.data) else None

    def _error(self) -> KestoError:
        """The reason of the call that has just failed."""
        failure = self._failure()
        return KestoError(failure.status if failure else Status.INTERNAL_ERROR, failure)

    def _ask(self, name: str, *arguments: Any) -> Any:
        """Calls a function that does not fail."""
        with self._lock:
            self._note(name)
            return call(name, self._handle, *arguments)

    def _call(self, name: str, *arguments: Any) -> None:
        with self._lock:
            self._note(name)
            if not call(name, self._handle, *arguments):
                raise self._error()

    def _file(self, name: str, *arguments: Any) -> None:
        """Calls a function that gives a status. Raises KestoError where it is not 0."""
        with self._lock:
            self._note(name)
            status = call(name, self._handle, *arguments)
            if status != Status.SUCCESS:
                raise KestoError(status, self._failure())


def _require_finite(*numbers: float) -> None:
    if not np.isfinite(numbers).all():
        raise KestoError(Status.ARGUMENT_NOT_FINITE)


def _is_water(name: bytes) -> bool:
    return name.lower().endswith(_WATER)


def _copied(data: bytes, designed: bool) -> Road:
    """A road as it comes out of a pickle: designed where it was, if it can be by what has been edited since."""
    road = Road.from_bytes(data, design=False)
    if designed:
        with suppress(KestoError):
            road.design()
    return road


def _change(values: Sequence[float], flags: Sequence[int] | None) -> tuple[Any, Any]:
    """The values and flags of a change section as arrays of C."""
    _require_finite(*values)
    marks = [1] * len(values) if flags is None else [whole(each, np.int32) for each in flags]
    if len(marks) != len(values):
        raise KestoError(Status.VALUE_COUNT_DIFFERS)
    return (c_double * len(values))(*values), (c_int32 * len(marks))(*marks)
