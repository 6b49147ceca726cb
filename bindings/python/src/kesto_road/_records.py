"""The library's records, as dataclasses and as NumPy dtypes of the same layout."""

from __future__ import annotations

import operator
from dataclasses import dataclass, fields
from typing import Any, ClassVar, TypeVar

import numpy as np

TEXT = "S32"  # NUL-terminated, UTF-8
SOME = TypeVar("SOME", bound="Record")


def _layout(size: int, **formats: str) -> np.dtype[Any]:
    """The dtype of a record in C: every number at a multiple of its own size, on every platform."""
    offsets, end = [], 0
    for form in formats.values():
        width = np.dtype(form).itemsize
        alignment = 1 if form.startswith("S") else width
        offsets.append(-(-end // alignment) * alignment)
        end = offsets[-1] + width
    if end > size:
        raise ImportError(f"a record of {size} bytes has fields of {end}")
    return np.dtype({"names": list(formats), "formats": list(formats.values()), "offsets": offsets, "itemsize": size})


def whole(value: Any, kind: Any) -> int:
    """A whole number that a kind of NumPy's holds. Raises TypeError for what is not whole, OverflowError beyond it."""
    number, held = operator.index(value), np.iinfo(kind)
    if not held.min <= number <= held.max:
        raise OverflowError(f"{number} is not within {held.min} and {held.max}")
    return number


@dataclass
class Record:
    """A record: values with the names of its dtype's fields."""

    dtype: ClassVar[np.dtype[Any]]

    @classmethod
    def of(cls: type[SOME], row: Any) -> SOME:
        """Makes it from one row of a structured array."""
        texts = {each.name for each in fields(cls) if str(each.type) == "str"}
        return cls(**{name: value.decode("utf-8", "surrogateescape") if name in texts else value
                      for name, value in zip(cls.dtype.names or (), row.item())})

    def row(self) -> np.ndarray[Any, np.dtype[Any]]:
        """The record as a structured array without dimensions. Texts beyond their 31 bytes are cut by the library.
        Raises OverflowError or TypeError for a number that is not one of the field's."""
        row = np.zeros((), self.dtype)
        for name in self.dtype.names or ():
            value, kind = getattr(self, name), self.dtype[name]
            if isinstance(value, str):
                value = value.encode("utf-8", "surrogateescape")
            row[name] = whole(value, kind) if kind.kind in "iu" else value
        return row


@dataclass
class Intersection(Record):
    """Intersection point of two tangents with its curve: entry spiral, arc, exit spiral.

    Attributes:
        x:          northing (m)
        y:          easting (m)
        radius:     of the arc (m), 0 for no curve
        spiral_in:  length of the entry spiral (m), 0 for none
        spiral_out: length of the exit spiral (m), 0 for none
        radius_in:  at the outer end of the entry spiral (m), 0 for infinite
        radius_out: at the outer end of the exit spiral (m), 0 for infinite
        reserved:   carried, never read
    """

    name: str = ""
    x: float = 0.0
    y: float = 0.0
    radius: float = 0.0
    spiral_in: float = 0.0
    spiral_out: float = 0.0
    radius_in: float = 0.0
    radius_out: float = 0.0
    reserved: bytes = b""
    dtype: ClassVar = _layout(96, name=TEXT, x="f8", y="f8", radius="f8", spiral_in="f8", spiral_out="f8",
                              radius_in="f8", radius_out="f8", reserved="S8")


@dataclass
class Element(Record):
    """Element of the horizontal alignment.

    Attributes:
        type:           0 start record, 1 straight, 2 circular arc, 3 clothoid spiral
        turn_direction: 0 turns left, any other value right
        start_mileage:  stake mileage of the start point (m), set when the chain is built
        start_x:        northing of the start point (m)
        start_y:        easting of the start point (m)
        start_azimuth:  tangent azimuth at the start (degrees)
        flag:           set by element generation
        second_azimuth: repeats the azimuth in a start record, never read
        start_radius:   arc: radius; spiral: radius at the start (m), 0 for infinite
        end_radius:     spiral: radius at the end (m), 0 for infinite
        length:         signed (m)
    """

    type: int = 0
    turn_direction: int = 0
    start_mileage: float = 0.0
    start_x: float = 0.0
    start_y: float = 0.0
    start_azimuth: float = 0.0
    flag: int = 0
    second_azimuth: float = 0.0
    start_radius: float = 0.0
    end_radius: float = 0.0
    length: float = 0.0
    dtype: ClassVar = _layout(80, type="i4", turn_direction="u1", start_mileage="f8", start_x="f8", start_y="f8",
                              start_azimuth="f8", flag="i4", second_azimuth="f8", start_radius="f8", end_radius="f8",
                              length="f8")


@dataclass
class Coordinate(Record):
    """Coordinate point of the alignment: the begin of an element that leads to the next point.

    Attributes:
        type:           of the element that starts here: 1 straight, 2 arc, 3 spiral
        turn_direction: 0 left, any other value right
        x:              northing (m)
        y:              easting (m)
        radius:         at this point (m), 0 for infinite
    """

    type: int = 1
    turn_direction: int = 0
    x: float = 0.0
    y: float = 0.0
    radius: float = 0.0
    name: str = ""
    dtype: ClassVar = _layout(64, type="i4", turn_direction="i4", x="f8", y="f8", radius="f8", name=TEXT)


@dataclass
class BrokenChain(Record):
    """A point where the stake mileage jumps.

    Attributes:
        back_mileage:  stake mileage before the break (m)
        ahead_mileage: stake mileage of the same point after it (m)
    """

    back_mileage: float = 0.0
    ahead_mileage: float = 0.0
    dtype: ClassVar = _layout(16, back_mileage="f8", ahead_mileage="f8")


@dataclass
class VerticalCurve(Record):
    """Grade-change point with its vertical curve. Derived values are those of the last derivation.

    Attributes:
        curve_sign:       derived: +1 crest, -1 sag, 0 none
        start_mileage:    stake mileage of the curve's start (m)
        start_occurrence: its occurrence, -1 when not set
        end_mileage:      stake mileage of the curve's end (m)
        end_occurrence:   its occurrence, -1 when not set
        mileage:          stake mileage of the grade-change point (m)
        occurrence:       its occurrence; -1: the mileage is a continuous one
        elevation:        of the grade-change point (m)
        grade_out:        derived: grade to the next point (ratio)
        radius:           of the curve (m)
        distance_to_next: derived: horizontal distance to the next point (m)
        tangent_length:   derived: half the curve's length (m)
    """

    curve_sign: int = 0
    start_mileage: float = 0.0
    start_occurrence: int = -1
    end_mileage: float = 0.0
    end_occurrence: int = -1
    mileage: float = 0.0
    occurrence: int = 0
    elevation: float = 0.0
    grade_out: float = 0.0
    radius: float = 0.0
    distance_to_next: float = 0.0
    tangent_length: float = 0.0
    dtype: ClassVar = _layout(96, curve_sign="i4", start_mileage="f8", start_occurrence="i4", end_mileage="f8",
                              end_occurrence="i4", mileage="f8", occurrence="i4", elevation="f8", grade_out="f8",
                              radius="f8", distance_to_next="f8", tangent_length="f8")


@dataclass
class Stake(Record):
    """Stake of the design stake list.

    Attributes:
        name:       main points: their label; others: the stake text, "K12+345.678"
        label:      main-point code, empty for a regular stake
        mileage:    stake mileage (m)
        occurrence: its occurrence
        x:          northing of the point on the centre line (m)
        y:          easting of the point on the centre line (m)
    """

    name: str = ""
    label: str = ""
    reserved: bytes = b""
    mileage: float = 0.0
    occurrence: int = 0
    x: float = 0.0
    y: float = 0.0
    extra: bytes = b""
    dtype: ClassVar = _layout(136, name=TEXT, label=TEXT, reserved="S8", mileage="f8", occurrence="i4", x="f8", y="f8",
                              extra="S32")


@dataclass
class Plate(Record):
    """Plate of a cross section: a strip of carriageway, shoulder or verge.

    Attributes:
        code:        type keyword, free text on road plates
        width:       horizontal width (m)
        offset:      output: distance of the outer edge from the centre line (m)
        cross_slope: per cent, positive when the outer edge is higher
        step:        vertical step at the inner edge (m)
        x:           output: northing of the outer edge (m)
        y:           output: easting of the outer edge (m)
        height:      output: design height of the outer edge (m)
        extra:       carried and saved, never read
    """

    name: str = ""
    code: str = ""
    width: float = 0.0
    offset: float = 0.0
    cross_slope: float = 0.0
    step: float = 0.0
    x: float = 0.0
    y: float = 0.0
    height: float = 0.0
    extra: float = 0.0
    dtype: ClassVar = _layout(128, name=TEXT, code=TEXT, width="f8", offset="f8", cross_slope="f8", step="f8", x="f8",
                              y="f8", height="f8", extra="f8")


@dataclass
class SectionMileage(Record):
    """Entry of the section mileage index.

    Attributes:
        stake_text: made by the library
        mileage:    stake mileage (m)
    """

    stake_text: str = ""
    mileage: float = 0.0
    dtype: ClassVar = _layout(40, stake_text=TEXT, mileage="f8")


@dataclass
class EaseParameters(Record):
    """What a spiral's radii and length make of it.

    Attributes:
        parameter_squared: A squared, the clothoid parameter (square metres)
        deflection:        angle that the whole spiral turns (degrees)
        shift:             from the tangent to the circle of the smaller radius (m)
        tangent_offset:    along the tangent to the foot of that circle's centre (m)
        chord:             between the spiral's ends (m)
    """

    parameter_squared: float = 0.0
    deflection: float = 0.0
    shift: float = 0.0
    tangent_offset: float = 0.0
    chord: float = 0.0
    dtype: ClassVar = _layout(40, parameter_squared="f8", deflection="f8", shift="f8", tangent_offset="f8", chord="f8")


@dataclass
class Failure(Record):
    """Why the last failed call failed; see KestoError."""

    status: int = 0
    list: int = -1
    record: int = -1
    limit: int = -1
    value: float = 0.0
    bound: float = 0.0
    excess: float = 0.0
    dtype: ClassVar = _layout(40, status="i4", list="i4", record="i4", limit="i4", value="f8", bound="f8", excess="f8")
