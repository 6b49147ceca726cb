"""Loads the shared library inside the package, states its functions' types and checks its records."""

from __future__ import annotations

import ctypes
import operator
import sys
from ctypes import POINTER, Structure, c_bool, c_char_p, c_double, c_int32, c_int64, c_void_p
from pathlib import Path
from typing import Any

import numpy as np

from . import _records

NAMES = {"win32": "kesto_road.dll", "darwin": "libkesto_road.dylib"}
LOADER = "WinDLL" if sys.platform == "win32" else "CDLL"  # both release the interpreter during a call


class DoubleArray(Structure):
    """Numbers across the boundary."""

    _fields_ = [("items", POINTER(c_double)), ("count", c_int32), ("capacity", c_int32)]


class Int32Array(Structure):
    """Whole numbers across the boundary."""

    _fields_ = [("items", POINTER(c_int32)), ("count", c_int32), ("capacity", c_int32)]


class PlateArray(Structure):
    """Plates across the boundary."""

    _fields_ = [("items", c_void_p), ("count", c_int32), ("capacity", c_int32)]


class Int32:
    """A whole number as an argument. ctypes alone would cut off what 32 bits do not hold."""

    @classmethod
    def from_param(cls, value: Any) -> c_int32:
        return c_int32(_records.whole(value, np.int32))


class Occurrence:
    """An occurrence as an argument. What 32 bits do not hold is no occurrence, and stays none."""

    @classmethod
    def from_param(cls, value: Any) -> c_int32:
        return c_int32(max(NO_OCCURRENCE, min(operator.index(value), LARGEST)))


class Text:
    """Bytes that end with a zero as an argument. ctypes alone would cut them at a zero inside."""

    @classmethod
    def from_param(cls, value: Any) -> Any:
        if isinstance(value, bytes) and b"\0" in value:
            raise ValueError("embedded null byte")
        return c_char_p.from_param(value)


NO_OCCURRENCE, LARGEST = -1, 2**31 - 1
NEAR = 1e-6  # far below the differences between the known values of a record
_ROAD = _OUT = _RECORD = _ARRAY = c_void_p
_KIND = _INDEX = Int32
_STRIDE = _COUNT = c_int32
_POINT = [c_double, c_double]
_VALUES = [POINTER(DoubleArray), POINTER(Int32Array)]

# Result, then arguments behind the road. What edits, saves or asks is listed as in kesto_road.h.
SIGNATURES: dict[str, list[Any]] = {
    "EndRoadDesign": [None],
    "ClearRoad": [None],
    "GetLastFailure": [c_bool, _RECORD],
    "SetStartInformation": [c_bool, c_double, c_double, c_double],
    "SetStartMileage": [None, c_double],
    "SetMileageInterval": [None, c_double],
    "SetMakeStakeType": [None, _KIND],
    "SetMakeStakePerfix": [None, Text],
    "GetMakeStakePerfix": [c_char_p],
    "GetMakeStakeInfo": [c_int32, _OUT],
    "GetElementPositionAndAzimuth": [c_bool, _RECORD, c_double, _OUT, _OUT, _OUT],
    "GetSrcMileage": [c_bool, _OUT, Occurrence],
    "GetRoadMileage": [c_double, _OUT],
    "GetPositionAndAzimuth": [c_bool, c_double, c_double, c_double, _OUT, _OUT, _OUT, Occurrence],
    "GetMileageAndOffset": [c_bool, *_POINT, _OUT, _OUT, _OUT],
    "GetMileAndOffsetInLim": [c_bool, *_POINT, c_double, Occurrence, c_double, Occurrence, _OUT, _OUT, _OUT],
    "GetNearbyStakeCoordinate": [c_bool, *_POINT, _RECORD, _OUT],
    "GetHeight": [c_bool, c_double, Occurrence, c_double, _OUT],
    "GetIntersectionIndex": [c_int32, c_double, Occurrence],
    "CalcEaseParam": [c_bool, c_double, c_double, c_double, _RECORD],
    "UpdateData": [c_bool],
    "DesignRoad": [c_bool],
    "GetStakeCoordinateCount": [c_int32],
    "GetStakeCoordinate": [c_bool, _INDEX, _RECORD],
    "GetStandardSectionPlateCount": [c_int32, _KIND],
    "AddStandardSectionPlate": [c_bool, _RECORD, _KIND, _INDEX],
    "DeleteStandardSectionPlate": [c_bool, _KIND, _INDEX],
    "GetStandardSectionPlate": [c_bool, _KIND, _INDEX, _RECORD],
    "SetStandardSectionPlate": [c_bool, _KIND, _INDEX, _RECORD],
    "GetChangeSectionCount": [c_int32, _KIND, _KIND],
    "AddChangeSectionList2": [c_bool, c_double, _KIND, _KIND, _ARRAY, _ARRAY, _COUNT, Occurrence, _KIND],
    "DeleteChangeSection": [c_bool, _KIND, _KIND, _INDEX],
    "GetChangeSection2": [c_bool, _KIND, _KIND, _INDEX, _OUT, *_VALUES, _OUT],
    "SetChangeSection2": [c_bool, _KIND, _KIND, _INDEX, c_double, *_VALUES, Occurrence, _KIND],
    "GetChangeSectionType": [c_bool, _KIND, _KIND, _INDEX, _OUT],
    "SetChangeSectionType": [c_bool, _KIND, _KIND, _INDEX, _KIND],
    "GetRoadSide": [c_bool, c_double, Occurrence, _KIND, POINTER(PlateArray)],
    "GetRoadSideNoHeight": [c_bool, c_double, Occurrence, _KIND, POINTER(PlateArray)],
    "SavePartProject": [c_int32, Text, c_double, c_double, Occurrence, Occurrence],
    "OpenProjectFromMemory": [c_int32, c_char_p, c_int64],
    "SaveProjectToMemory": [c_int32, _ARRAY, c_int64, _OUT],
    "GetMileageAndOffsetBatch": [c_bool, _COUNT, *[_ARRAY, _STRIDE] * 6],
    "GetPositionAndAzimuthBatch": [c_bool, _COUNT, *[_ARRAY, _STRIDE] * 8],
    "GetHeightBatch": [c_bool, _COUNT, *[_ARRAY, _STRIDE] * 5],
    "FreezeRoad": [c_void_p],
    "ReleaseFrozenRoad": [None],
}
for _name in ("RoadDesignMode", "VerticalCurveMode", "SideSlopeMode", "SectionMode"):
    SIGNATURES[f"Get{_name}"] = [c_int32]
    SIGNATURES[f"Set{_name}"] = [None, _KIND]
for _name in ("SaveProject", "OpenProject", "SaveWaterProject", "OpenWaterProject", "ExportLandXMLFile"):
    SIGNATURES[_name] = [c_int32, Text]
for _name in ("Intersection", "Element", "Coordinate", "BrokenChain", "VerticalCurve", "SectionMileageIndex"):
    SIGNATURES[f"Get{_name}Count"] = [c_int32]
    SIGNATURES[f"Get{_name}"] = [c_bool, _INDEX, _RECORD]
    SIGNATURES[f"Set{_name}"] = [c_bool, _INDEX, _RECORD]
    SIGNATURES[f"Delete{_name}"] = [c_bool, _INDEX]
    SIGNATURES[f"Add{_name}"] = [c_bool, _RECORD]
for _name in ("Intersection", "Element", "Coordinate"):
    SIGNATURES[f"Add{_name}"] = [c_bool, _RECORD, _INDEX]
for _name in ("GetMileageAndOffset", "GetMileAndOffsetInLim", "GetPositionAndAzimuth", "GetHeight",
              "GetMileageAndOffsetBatch", "GetPositionAndAzimuthBatch", "GetHeightBatch", "GetSrcMileage",
              "GetNearbyStakeCoordinate", "GetStakeCoordinate", "GetRoadSide", "GetRoadSideNoHeight"):
    SIGNATURES[f"Frozen{_name}"] = [c_int32, *SIGNATURES[_name][1:]]
SIGNATURES["FrozenGetStakeCoordinateCount"] = [c_int32]
SIGNATURES["FrozenGetIntersectionIndex"] = [c_int32, *SIGNATURES["GetIntersectionIndex"][1:], _OUT]


def _load() -> Any:
    """The library with every function typed. Raises ImportError where it is missing, too old or another one."""
    path = Path(__file__).parent / NAMES.get(sys.platform, "libkesto_road.so")
    try:
        loaded = getattr(ctypes, LOADER)(str(path))
        loaded.StartRoadDesign.restype, loaded.StartRoadDesign.argtypes = c_void_p, []
        loaded.DescribeStatus.restype, loaded.DescribeStatus.argtypes = c_char_p, [c_int32]
        loaded.KestoRoadVersion.restype, loaded.KestoRoadVersion.argtypes = c_char_p, []
        for name, (result, *arguments) in SIGNATURES.items():
            function = getattr(loaded, name)
            function.restype, function.argtypes = result, [_ROAD, *arguments]
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


def _check_size(record: type[_records.Record], read: Any) -> Any:
    """Lets the library write a record into marked memory: it writes the record's bytes, to the last and no further.
    Returns the record."""
    size, mark = record.dtype.itemsize, 0xA5
    memory = np.full(2 * size, mark, np.uint8)
    written = read(memory.ctypes.data)
    if not written or memory[size - 1] == mark or not (memory[size:] == mark).all():
        raise ImportError(f"kesto_road: the library's {record.__name__} is not the record of {size} bytes known here")
    return record.of(memory[:size].view(record.dtype)[0])


def _check_values(record: Any, **known: Any) -> None:
    """What the library has written into a record stands in the fields of that name."""
    for name, value in known.items():
        if abs(getattr(record, name) - value) > NEAR:
            raise ImportError(f"kesto_road: {name} of the library's {type(record).__name__} lies elsewhere")


def _check_records(loaded: Any) -> None:
    """Raises ImportError where the library lays its records out otherwise than this package."""
    road = loaded.StartRoadDesign()
    try:
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
        loaded.GetRoadSide(road, 1000, 0, 0, ctypes.byref(PlateArray(rows.ctypes.data, 0, 1)))
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
