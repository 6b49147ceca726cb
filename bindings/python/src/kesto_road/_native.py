"""Loads the shared library inside the package, states its functions' types and checks its records' sizes."""

from __future__ import annotations

import ctypes
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


class PlateArray(Structure):
    """Plates across the boundary."""

    _fields_ = [("items", c_void_p), ("count", c_int32), ("capacity", c_int32)]


_ROAD = _OUT = _RECORD = _ARRAY = c_void_p
_INDEX = _STRIDE = _COUNT = c_int32
_POINT = [c_double, c_double]
_IN_XY = [_ARRAY, _STRIDE] * 2

# Result, then arguments behind the road. What edits, saves or asks is listed as in kesto_road.h.
SIGNATURES: dict[str, list[Any]] = {
    "EndRoadDesign": [None],
    "ClearRoad": [None],
    "GetLastFailure": [c_bool, _RECORD],
    "SetStartInformation": [c_bool, c_double, c_double, c_double],
    "SetStartMileage": [None, c_double],
    "SetMileageInterval": [None, c_double],
    "SetMakeStakeType": [None, c_int32],
    "SetMakeStakePerfix": [None, c_char_p],
    "GetMakeStakePerfix": [c_char_p],
    "GetMakeStakeInfo": [c_int32, _OUT],
    "GetElementPositionAndAzimuth": [c_bool, _RECORD, c_double, _OUT, _OUT, _OUT],
    "GetSrcMileage": [c_bool, _OUT, c_int32],
    "GetRoadMileage": [c_double, _OUT],
    "GetPositionAndAzimuth": [c_bool, c_double, c_double, c_double, _OUT, _OUT, _OUT, c_int32],
    "GetMileageAndOffset": [c_bool, *_POINT, _OUT, _OUT, _OUT],
    "GetMileAndOffsetInLim": [c_bool, *_POINT, c_double, c_int32, c_double, c_int32, _OUT, _OUT, _OUT],
    "GetNearbyStakeCoordinate": [c_bool, *_POINT, _RECORD, _OUT],
    "GetHeight": [c_bool, c_double, c_int32, c_double, _OUT],
    "GetIntersectionIndex": [c_int32, c_double, c_int32],
    "UpdateData": [c_bool],
    "DesignRoad": [c_bool],
    "GetStakeCoordinateCount": [c_int32],
    "GetStakeCoordinate": [c_bool, _INDEX, _RECORD],
    "GetStandardSectionPlateCount": [c_int32, c_int32],
    "AddStandardSectionPlate": [c_bool, _RECORD, c_int32, _INDEX],
    "DeleteStandardSectionPlate": [c_bool, c_int32, _INDEX],
    "GetStandardSectionPlate": [c_bool, c_int32, _INDEX, _RECORD],
    "SetStandardSectionPlate": [c_bool, c_int32, _INDEX, _RECORD],
    "GetChangeSectionCount": [c_int32, c_int32, c_int32],
    "AddChangeSectionList": [c_bool, c_double, c_int32, c_int32, _ARRAY, _COUNT, c_int32, c_int32],
    "DeleteChangeSection": [c_bool, c_int32, c_int32, _INDEX],
    "GetChangeSection": [c_bool, c_int32, c_int32, _INDEX, _OUT, POINTER(DoubleArray), _OUT],
    "GetChangeSectionType": [c_bool, c_int32, c_int32, _INDEX, _OUT],
    "GetRoadSide": [c_bool, c_double, c_int32, c_int32, POINTER(PlateArray)],
    "GetRoadSideNoHeight": [c_bool, c_double, c_int32, c_int32, POINTER(PlateArray)],
    "SavePartProject": [c_int32, c_char_p, c_double, c_double, c_int32, c_int32],
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
    SIGNATURES[f"Set{_name}"] = [None, c_int32]
for _name in ("SaveProject", "OpenProject2", "SaveWaterProject", "OpenWaterProject", "ExportLandXMLFile"):
    SIGNATURES[_name] = [c_int32, c_char_p]
for _name in ("Intersection", "Element", "Coordinate", "BrokenChain", "VerticalCurve", "SectionMileageIndex"):
    SIGNATURES[f"Get{_name}Count"] = [c_int32]
    SIGNATURES[f"Get{_name}"] = [c_bool, _INDEX, _RECORD]
    SIGNATURES[f"Set{_name}"] = [c_bool, _INDEX, _RECORD]
    SIGNATURES[f"Delete{_name}"] = [c_bool, _INDEX]
    SIGNATURES[f"Add{_name}"] = [c_bool, _RECORD]
for _name in ("Intersection", "Element", "Coordinate"):
    SIGNATURES[f"Add{_name}"] = [c_bool, _RECORD, _INDEX]
for _name in ("GetMileageAndOffset", "GetMileAndOffsetInLim", "GetPositionAndAzimuth", "GetHeight",
              "GetMileageAndOffsetBatch", "GetPositionAndAzimuthBatch", "GetHeightBatch"):
    SIGNATURES[f"Frozen{_name}"] = [c_int32, *SIGNATURES[_name][1:]]


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


def _check_size(record: type[_records.Record], read: Any) -> None:
    """Lets the library write a record into marked memory: it writes the record's bytes, to the last and no further."""
    size, mark = record.dtype.itemsize, 0xA5
    memory = np.full(2 * size, mark, np.uint8)
    written = read(memory.ctypes.data)
    if not written or memory[size - 1] == mark or not (memory[size:] == mark).all():
        raise ImportError(f"kesto_road: the library's {record.__name__} is not the record of {size} bytes known here")


def _check_records(loaded: Any) -> None:
    """Raises ImportError where the library lays its records out otherwise than this package."""
    road = loaded.StartRoadDesign()
    try:
        loaded.SetRoadDesignMode(road, 1)
        loaded.SetStartInformation(road, 0, 0, 0)
        straight = _records.Element(type=1, length=10).row()
        loaded.AddElement(road, straight.ctypes.data, -1)
        loaded.DesignRoad(road)
        _check_size(_records.Stake, lambda memory: loaded.GetStakeCoordinate(road, 0, memory))
        lists = [("Intersection", _records.Intersection, True), ("Element", _records.Element, True),
                 ("Coordinate", _records.Coordinate, True), ("BrokenChain", _records.BrokenChain, False),
                 ("VerticalCurve", _records.VerticalCurve, False),
                 ("SectionMileageIndex", _records.SectionMileage, False)]
        for name, record, indexed in lists:
            row = record().row()
            getattr(loaded, f"Add{name}")(road, row.ctypes.data, *([0] if indexed else []))
            _check_size(record, lambda memory, name=name: getattr(loaded, f"Get{name}")(road, 0, memory))
        loaded.AddStandardSectionPlate(road, _records.Plate().row().ctypes.data, 0, 0)
        _check_size(_records.Plate, lambda memory: loaded.GetStandardSectionPlate(road, 0, 0, memory))
        loaded.DeleteElement(road, -1)
        _check_size(_records.Failure, lambda memory: loaded.GetLastFailure(road, memory))
    finally:
        loaded.EndRoadDesign(road)


library = _load()
_check_records(library)
