"""The types of the library's functions: written by scripts/interface update."""

from __future__ import annotations

from ctypes import POINTER, Structure, c_bool, c_char_p, c_double, c_int32, c_int64, c_void_p
from typing import Any

from ._arguments import Int32, Occurrence, Text


class DoubleArray(Structure):
    """An array of numbers across the boundary."""

    _fields_ = [("items", POINTER(c_double)), ("count", c_int32), ("capacity", c_int32)]


class Int32Array(Structure):
    """An array of integers across the boundary; see DoubleArray."""

    _fields_ = [("items", POINTER(c_int32)), ("count", c_int32), ("capacity", c_int32)]


class SectionPlateArray(Structure):
    """An array of plates across the boundary; see DoubleArray."""

    _fields_ = [("items", c_void_p), ("count", c_int32), ("capacity", c_int32)]


# Result, then arguments.
SIGNATURES: dict[str, list[Any]] = {
    "StartRoadDesign": [c_void_p],
    "EndRoadDesign": [None, c_void_p],
    "ClearRoad": [None, c_void_p],
    "GetLastFailure": [c_bool, c_void_p, c_void_p],
    "DescribeStatus": [c_char_p, Int32],
    "KestoRoadVersion": [c_char_p],
    "SetStartInformation": [c_bool, c_void_p, c_double, c_double, c_double],
    "SetStartMileage": [None, c_void_p, c_double],
    "SetMileageInterval": [None, c_void_p, c_double],
    "SetMakeStakeType": [None, c_void_p, Int32],
    "SetMakeStakePerfix": [None, c_void_p, Text],
    "GetMakeStakePerfix": [c_char_p, c_void_p],
    "FormatStake": [c_bool, c_void_p, c_double, Occurrence, c_void_p, Int32],
    "ParseStake": [c_bool, c_void_p, Text, c_void_p, c_void_p],
    "GetMakeStakeInfo": [c_int32, c_void_p, c_void_p],
    "SetRoadDesignMode": [None, c_void_p, Int32],
    "GetRoadDesignMode": [c_int32, c_void_p],
    "SetVerticalCurveMode": [None, c_void_p, Int32],
    "GetVerticalCurveMode": [c_int32, c_void_p],
    "SetSideSlopeMode": [None, c_void_p, Int32],
    "GetSideSlopeMode": [c_int32, c_void_p],
    "SetSectionMode": [None, c_void_p, Int32],
    "GetSectionMode": [c_int32, c_void_p],
    "GetIntersectionCount": [c_int32, c_void_p],
    "AddIntersection": [c_bool, c_void_p, c_void_p, Int32],
    "AddIntersectionList": [c_bool, c_void_p, c_void_p, c_int32],
    "DeleteIntersection": [c_bool, c_void_p, Int32],
    "GetIntersection": [c_bool, c_void_p, Int32, c_void_p],
    "SetIntersection": [c_bool, c_void_p, Int32, c_void_p],
    "GetIntersectionIndex": [c_int32, c_void_p, c_double, Occurrence],
    "GetElementCount": [c_int32, c_void_p],
    "AddElement": [c_bool, c_void_p, c_void_p, Int32],
    "AddElementList": [c_bool, c_void_p, c_void_p, c_int32],
    "DeleteElement": [c_bool, c_void_p, Int32],
    "GetElement": [c_bool, c_void_p, Int32, c_void_p],
    "SetElement": [c_bool, c_void_p, Int32, c_void_p],
    "GetElementPositionAndAzimuth": [c_bool, c_void_p, c_void_p, c_double, c_void_p, c_void_p, c_void_p],
    "CalcEaseParam": [c_bool, c_void_p, c_double, c_double, c_double, c_void_p],
    "GetCoordinateCount": [c_int32, c_void_p],
    "AddCoordinate": [c_bool, c_void_p, c_void_p, Int32],
    "AddCoordinateList": [c_bool, c_void_p, c_void_p, c_int32],
    "DeleteCoordinate": [c_bool, c_void_p, Int32],
    "GetCoordinate": [c_bool, c_void_p, Int32, c_void_p],
    "SetCoordinate": [c_bool, c_void_p, Int32, c_void_p],
    "GetBrokenChainCount": [c_int32, c_void_p],
    "AddBrokenChain": [c_bool, c_void_p, c_void_p],
    "AddBrokenChainList": [c_bool, c_void_p, c_void_p, c_int32],
    "DeleteBrokenChain": [c_bool, c_void_p, Int32],
    "GetBrokenChain": [c_bool, c_void_p, Int32, c_void_p],
    "SetBrokenChain": [c_bool, c_void_p, Int32, c_void_p],
    "GetSrcMileage": [c_bool, c_void_p, c_void_p, Occurrence],
    "GetRoadMileage": [c_double, c_void_p, c_void_p],
    "GetPositionAndAzimuth": [c_bool, c_void_p, c_double, c_double, c_double, c_void_p, c_void_p, c_void_p, Occurrence],
    "GetMileageAndOffset": [c_bool, c_void_p, c_double, c_double, c_void_p, c_void_p, c_void_p],
    "GetMileAndOffsetInLim": [c_bool, c_void_p, c_double, c_double, c_double, Occurrence, c_double, Occurrence,
        c_void_p, c_void_p, c_void_p],
    "GetNearbyStakeCoordinate": [c_bool, c_void_p, c_double, c_double, c_void_p, c_void_p],
    "UpdateData": [c_bool, c_void_p],
    "MakeCurrent": [c_bool, c_void_p],
    "DesignRoad": [c_bool, c_void_p],
    "GetStakeCoordinateCount": [c_int32, c_void_p],
    "GetStakeCoordinate": [c_bool, c_void_p, Int32, c_void_p],
    "GetVerticalCurveCount": [c_int32, c_void_p],
    "AddVerticalCurve": [c_bool, c_void_p, c_void_p],
    "AddVerticalCurveList": [c_bool, c_void_p, c_void_p, c_int32],
    "DeleteVerticalCurve": [c_bool, c_void_p, Int32],
    "GetVerticalCurve": [c_bool, c_void_p, Int32, c_void_p],
    "SetVerticalCurve": [c_bool, c_void_p, Int32, c_void_p],
    "GetStandardSectionPlateCount": [c_int32, c_void_p, Int32],
    "AddStandardSectionPlate": [c_bool, c_void_p, c_void_p, Int32, Int32],
    "AddStandardSectionPlateList": [c_bool, c_void_p, c_void_p, c_int32, Int32],
    "DeleteStandardSectionPlate": [c_bool, c_void_p, Int32, Int32],
    "GetStandardSectionPlate": [c_bool, c_void_p, Int32, Int32, c_void_p],
    "SetStandardSectionPlate": [c_bool, c_void_p, Int32, Int32, c_void_p],
    "GetStandardSection": [c_bool, c_void_p, Int32, POINTER(SectionPlateArray)],
    "GetSectionMileageIndexCount": [c_int32, c_void_p],
    "AddSectionMileageIndex": [c_bool, c_void_p, c_void_p],
    "DeleteSectionMileageIndex": [c_bool, c_void_p, Int32],
    "GetSectionMileageIndex": [c_bool, c_void_p, Int32, c_void_p],
    "SetSectionMileageIndex": [c_bool, c_void_p, Int32, c_void_p],
    "GetChangeSectionCount": [c_int32, c_void_p, Int32, Int32],
    "AddChangeSection": [c_bool, c_void_p, c_double, Int32, Int32, POINTER(DoubleArray), Occurrence, Int32],
    "AddChangeSection2": [c_bool, c_void_p, c_double, Int32, Int32, POINTER(DoubleArray), POINTER(Int32Array),
        Occurrence, Int32],
    "AddChangeSectionList": [c_bool, c_void_p, c_double, Int32, Int32, c_void_p, c_int32, Occurrence, Int32],
    "AddChangeSectionList2": [c_bool, c_void_p, c_double, Int32, Int32, c_void_p, c_void_p, c_int32, Occurrence, Int32],
    "DeleteChangeSection": [c_bool, c_void_p, Int32, Int32, Int32],
    "GetChangeSection": [c_bool, c_void_p, Int32, Int32, Int32, c_void_p, POINTER(DoubleArray), c_void_p],
    "GetChangeSection2": [c_bool, c_void_p, Int32, Int32, Int32, c_void_p, POINTER(DoubleArray), POINTER(Int32Array),
        c_void_p],
    "SetChangeSection": [c_bool, c_void_p, Int32, Int32, Int32, c_double, POINTER(DoubleArray), Occurrence, Int32],
    "SetChangeSection2": [c_bool, c_void_p, Int32, Int32, Int32, c_double, POINTER(DoubleArray), POINTER(Int32Array),
        Occurrence, Int32],
    "GetChangeSectionType": [c_bool, c_void_p, Int32, Int32, Int32, c_void_p],
    "SetChangeSectionType": [c_bool, c_void_p, Int32, Int32, Int32, Int32],
    "GetRoadSide": [c_bool, c_void_p, c_double, Occurrence, Int32, POINTER(SectionPlateArray)],
    "GetRoadSideNoHeight": [c_bool, c_void_p, c_double, Occurrence, Int32, POINTER(SectionPlateArray)],
    "GetHeight": [c_bool, c_void_p, c_double, Occurrence, c_double, c_void_p],
    "GetMileageAndOffsetBatch": [c_bool, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32,
        c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32],
    "GetPositionAndAzimuthBatch": [c_bool, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32,
        c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32],
    "GetHeightBatch": [c_bool, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_void_p, c_int32, c_void_p,
        c_int32, c_void_p, c_int32],
    "FreezeRoad": [c_void_p, c_void_p],
    "IsFrozenRoad": [c_bool, c_void_p],
    "SaveProject": [c_int32, c_void_p, Text],
    "SavePartProject": [c_int32, c_void_p, Text, c_double, c_double, Occurrence, Occurrence],
    "OpenProject": [c_int32, c_void_p, Text],
    "OpenProject2": [c_int32, c_void_p, Text],
    "OpenProjectFromMemory": [c_int32, c_void_p, c_char_p, c_int64],
    "GetReadingFindingCount": [c_int32, c_void_p],
    "GetReadingFinding": [c_bool, c_void_p, Int32, c_void_p],
    "GetRecordLine": [c_bool, c_void_p, Int32, Int32, Int32, c_void_p],
    "SaveProjectToMemory": [c_int32, c_void_p, c_void_p, c_int64, c_void_p],
    "SaveWaterProject": [c_int32, c_void_p, Text],
    "OpenWaterProject": [c_int32, c_void_p, Text],
    "ExportLandXMLFile": [c_int32, c_void_p, Text],
}
