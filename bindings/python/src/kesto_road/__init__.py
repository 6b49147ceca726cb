"""Road alignments: stakes, positions, offsets and design heights.

    road = kesto_road.Road.open("demo.road")
    mileage, occurrence, offset, status = road.locate(points)   # an array whose last axis holds x and y
    x, y, azimuth, status = road.at(mileage, offset, occurrence)

x is the northing and y the easting (m), azimuths are degrees clockwise from north, offsets are positive to the right.
"""

from ._codes import Limit, ListOf, ReadingReason, Status
from ._failures import KestoError, RecordsSkippedWarning, describe
from ._layout import Record
from ._lists import RecordList
from ._native import library as _library
from ._queries import Heights, Place, Places, Position, Positions, Queries, Side
from ._records import (BrokenChain, Coordinate, EaseParameters, Element, Intersection, Plate, ReadingFinding,
                       SectionMileage, Stake, VerticalCurve)
from .frozen import FrozenRoad
from .road import ChangeOf, ChangeSection, DesignMode, Road, Transition, Turn

__version__: str = _library.KestoRoadVersion().decode()

__all__ = [
    "BrokenChain", "ChangeOf", "ChangeSection", "Coordinate", "DesignMode", "EaseParameters", "Element",
    "FrozenRoad", "Heights", "Intersection", "KestoError", "Limit", "ListOf", "Place", "Places", "Plate",
    "Position", "Positions", "Queries", "ReadingFinding", "ReadingReason", "Record", "RecordList",
    "RecordsSkippedWarning", "Road", "SectionMileage", "Side", "Stake", "Status", "Transition", "Turn", "VerticalCurve",
    "describe",
]
