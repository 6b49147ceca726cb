"""Loads the shared library inside the package and checks its records."""

from __future__ import annotations

import ctypes
import sys
from pathlib import Path
from typing import Any

import numpy as np

from . import _records
from ._layout import Record
from ._signatures import SIGNATURES, SectionPlateArray

NAMES = {"win32": "kesto_road.dll", "darwin": "libkesto_road.dylib"}
LOADER = "WinDLL" if sys.platform == "win32" else "CDLL"  # both release the interpreter during a call
NEAR = 1e-6  # far below the differences between the known values of a record


def _load() -> Any:
    """The library with every function typed. Raises ImportError where it is missing, too old or another one."""
    path = Path(__file__).parent / NAMES.get(sys.platform, "libkesto_road.so")
    try:
        loaded = getattr(ctypes, LOADER)(str(path))
        for name, (result, *arguments) in SIGNATURES.items():
            function = getattr(loaded, name)
            function.restype, function.argtypes = result, arguments
    except (OSError, AttributeError) as error:
        raise ImportError(f"kesto_road: the shared library cannot be used: {error}") from error
    return loaded


def call(name: str, *arguments: Any) -> Any:
    """Calls a function of the library. Raises TypeError, ValueError or OverflowError for what is no argument of it."""
    function = getattr(library, name)
    try:
        return function(*arguments)
    except ctypes.ArgumentError as error:
        for kind, value in zip(function.argtypes, arguments):
            kind.from_param(value)  # raises what ctypes has put into words
        raise TypeError(str(error)) from error


def _check_size(record: type[Record], read: Any) -> Any:
    """Lets the library write a record into marked memory: it writes the record's bytes, to the last and no further.
    Returns the record."""
    size, mark = record.dtype.itemsize, 0xA5
    memory = np.full(2 * size, mark, np.uint8)
    written = read(memory.ctypes.data)
    if not written or memory[size - 1] == mark or not (memory[size:] == mark).all():
        raise ImportError(f"kesto_road: the library's {record.__name__} is not the record of {size} bytes known here")
    return record.of(memory[:size].view(record.dtype)[0])


def _check_values(record: Any, /, **known: Any) -> None:
    """What the library has written into a record stands in the fields of that name."""
    for name, value in known.items():
        if abs(getattr(record, name) - value) > NEAR:
            raise ImportError(f"kesto_road: {name} of the library's {type(record).__name__} lies elsewhere")


def _check_records(loaded: Any) -> None:
    """Raises ImportError where the library lays its records out otherwise than this package."""
    road = loaded.StartRoadDesign()
    try:
        text = b"0 100 0 K\n\nBrokenChain\n7 8\n7 8\n"
        loaded.OpenProjectFromMemory(road, text, len(text))
        found = _check_size(_records.ReadingFinding, lambda memory: loaded.GetReadingFinding(road, 0, memory))
        _check_values(found, line=5, reason=11, status=24, list=4, record=0, limit=-1, value=7)
        loaded.ClearRoad(road)
        loaded.SetRoadDesignMode(road, 1)
        loaded.SetStartMileage(road, 1000)
        loaded.SetStartInformation(road, 3, 4, 90)
        begin = _check_size(_records.Element, lambda memory: loaded.GetElement(road, 0, memory))
        _check_values(begin, type=0, start_x=3, start_y=4, start_azimuth=90, length=0)
        straight = _records.Element(type=1, start_x=3, start_y=4, start_azimuth=90, length=50).row()
        loaded.AddElement(road, straight.ctypes.data, -1)
        for mileage, elevation in ((1000, 70), (1040, 72)):
            point = _records.VerticalCurve(mileage=mileage, elevation=elevation).row()
            loaded.AddVerticalCurve(road, point.ctypes.data)
        loaded.DesignRoad(road)
        last = loaded.GetStakeCoordinateCount(road) - 1
        stake = _check_size(_records.Stake, lambda memory: loaded.GetStakeCoordinate(road, last, memory))
        _check_values(stake, mileage=1050, occurrence=0, x=3, y=54)
        point = _check_size(_records.VerticalCurve, lambda memory: loaded.GetVerticalCurve(road, 0, memory))
        _check_values(point, mileage=1000, elevation=70, grade_out=0.05, distance_to_next=40)
        lists = [("Intersection", _records.Intersection, True), ("Coordinate", _records.Coordinate, True),
                 ("BrokenChain", _records.BrokenChain, False),
                 ("SectionMileageIndex", _records.SectionMileage, False)]
        for name, record, indexed in lists:
            row = record().row()
            getattr(loaded, f"Add{name}")(road, row.ctypes.data, *([0] if indexed else []))
            _check_size(record, lambda memory, name=name: getattr(loaded, f"Get{name}")(road, 0, memory))
        loaded.AddStandardSectionPlate(road, _records.Plate(width=3, cross_slope=2, step=1).row().ctypes.data, 0, 0)
        rows = np.zeros(1, _records.Plate.dtype)
        loaded.GetRoadSide(road, 1000, 0, 0, ctypes.byref(SectionPlateArray(rows.ctypes.data, 0, 1)))
        _check_values(_records.Plate.of(rows[0]), width=3, cross_slope=2, step=1, offset=3, y=4, height=71.06)
        _check_size(_records.Plate, lambda memory: loaded.GetStandardSectionPlate(road, 0, 0, memory))
        _check_size(_records.EaseParameters, lambda memory: loaded.CalcEaseParam(road, 0, 200, 50, memory))
        loaded.DeleteElement(road, 7)
        failure = _check_size(_records.Failure, lambda memory: loaded.GetLastFailure(road, memory))
        _check_values(failure, status=22, list=1, limit=3, value=7, bound=2)
    finally:
        loaded.EndRoadDesign(road)


library = _load()
_check_records(library)
