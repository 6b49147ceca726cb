"""The library's records, as dataclasses and as NumPy dtypes of the same layout: written by scripts/interface update."""

from __future__ import annotations

from dataclasses import dataclass
from typing import ClassVar

from ._layout import Record, layout


@dataclass
class Intersection(Record):
    """Intersection point of two tangents with its curve: entry spiral, arc, exit spiral. The first and the last one are
    the ends of the road and have no curve: only their points are read.

    Attributes:
        name:       shown, never interpreted
        x:          northing (m)
        y:          easting (m)
        radius:     arc radius (m), 0 for no curve
        spiral_in:  length of the entry spiral (m), 0 for none
        spiral_out: length of the exit spiral (m), 0 for none
        radius_in:  radius at the outer end of the entry spiral (m), 0 for infinite
        radius_out: radius at the outer end of the exit spiral (m), 0 for infinite
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
    dtype: ClassVar = layout(96, name="S32", x="f8", y="f8", radius="f8", spiral_in="f8", spiral_out="f8",
                             radius_in="f8", radius_out="f8", reserved="S8")


@dataclass
class Element(Record):
    """Element of the horizontal alignment.

    Attributes:
        type:           0 start record, 1 straight, 2 circular arc, 3 clothoid spiral
        turn_direction: 0 turns left (azimuth decreases along it), any other value right
        start_mileage:  stake mileage of the start point (m), set when the chain is built
        start_x:        northing of the start point (m)
        start_y:        easting of the start point (m)
        start_azimuth:  tangent azimuth at the start (degrees)
        flag:           set by element generation, cleared on the second piece of a split element
        second_azimuth: repeats the azimuth in a start record, never read
        start_radius:   arc: radius; spiral: radius at the start (m); below 1e-7 means infinite
        end_radius:     spiral: radius at the end (m); below 1e-7 means infinite
        length:         signed length (m), negative where the stake mileage decreases
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
    dtype: ClassVar = layout(80, type="i4", turn_direction="u1", start_mileage="f8", start_x="f8", start_y="f8",
                             start_azimuth="f8", flag="i4", second_azimuth="f8", start_radius="f8", end_radius="f8",
                             length="f8")


@dataclass
class Coordinate(Record):
    """Coordinate point of the alignment: every point begins an element that leads to the next one; arcs are the shorter
    ones. The last point ends the road, its radius is the end radius of a last spiral.

    Attributes:
        type:           type of the element that starts here: 1 straight, 2 arc, 3 spiral
        turn_direction: 0 left, any other value right
        x:              northing (m)
        y:              easting (m)
        radius:         radius at this point (m), 0 for infinite
        name:           shown, never interpreted
    """

    type: int = 1
    turn_direction: int = 0
    x: float = 0.0
    y: float = 0.0
    radius: float = 0.0
    name: str = ""
    dtype: ClassVar = layout(64, type="i4", turn_direction="i4", x="f8", y="f8", radius="f8", name="S32")


@dataclass
class BrokenChain(Record):
    """Broken chain: a point where the stake mileage jumps.

    Attributes:
        back_mileage:  stake mileage before the break (m)
        ahead_mileage: stake mileage of the same point after the break (m)
    """

    back_mileage: float = 0.0
    ahead_mileage: float = 0.0
    dtype: ClassVar = layout(16, back_mileage="f8", ahead_mileage="f8")


@dataclass
class VerticalCurve(Record):
    """Grade-change point with its vertical curve.

    Attributes:
        curve_sign:       derived: +1 crest, -1 sag, 0 none
        start_mileage:    stake mileage of the curve's start (m): derived in mode 0, given in mode 1
        start_occurrence: its occurrence, -1 when not set
        end_mileage:      stake mileage of the curve's end (m): derived in mode 0, given in mode 1
        end_occurrence:   its occurrence, -1 when not set
        mileage:          stake mileage of the grade-change point (m)
        occurrence:       its occurrence; -1: the mileage is a continuous one
        elevation:        elevation of the grade-change point (m)
        grade_out:        derived: grade to the next point (ratio)
        radius:           curve radius (m), used in mode 0
        distance_to_next: derived: horizontal distance to the next point (m)
        tangent_length:   derived in mode 0: half the curve's length (m)
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
    dtype: ClassVar = layout(96, curve_sign="i4", start_mileage="f8", start_occurrence="i4", end_mileage="f8",
                             end_occurrence="i4", mileage="f8", occurrence="i4", elevation="f8", grade_out="f8",
                             radius="f8", distance_to_next="f8", tangent_length="f8")


@dataclass
class Stake(Record):
    """Stake of the design stake list.

    Attributes:
        name:       main points: their label; others: the stake text, "K12+345.678"
        label:      main-point code, empty for a regular stake
        reserved:   carried, never read
        mileage:    stake mileage (m)
        occurrence: its occurrence
        x:          northing of the point on the centre line (m)
        y:          easting of the point on the centre line (m)
        extra:      carried, never read
    """

    name: str = ""
    label: str = ""
    reserved: bytes = b""
    mileage: float = 0.0
    occurrence: int = 0
    x: float = 0.0
    y: float = 0.0
    extra: bytes = b""
    dtype: ClassVar = layout(136, name="S32", label="S32", reserved="S8", mileage="f8", occurrence="i4", x="f8", y="f8",
                             extra="S32")


@dataclass
class Plate(Record):
    """Plate of a cross section: a strip of carriageway, shoulder or verge.

    Attributes:
        name:        shown, never interpreted
        code:        type keyword, free text on road plates
        width:       horizontal width (m)
        offset:      output: distance of the outer edge from the centre line (m)
        cross_slope: cross slope (per cent), positive when the outer edge is higher
        step:        vertical step at the plate's inner edge (m)
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
    dtype: ClassVar = layout(128, name="S32", code="S32", width="f8", offset="f8", cross_slope="f8", step="f8", x="f8",
                             y="f8", height="f8", extra="f8")


@dataclass
class SectionMileage(Record):
    """Entry of the section mileage index.

    Attributes:
        stake_text: stake text, made by the library
        mileage:    stake mileage (m)
    """

    stake_text: str = ""
    mileage: float = 0.0
    dtype: ClassVar = layout(40, stake_text="S32", mileage="f8")


@dataclass
class EaseParameters(Record):
    """Ease parameters of a spiral.

    Attributes:
        parameter_squared: A squared, the clothoid parameter (square metres)
        deflection:        angle that the whole spiral turns (degrees)
        shift:             p: distance from the tangent to the circle of the smaller radius (m)
        tangent_offset:    q: distance along the tangent to the foot of that circle's centre (m)
        chord:             distance between the spiral's ends (m)
    """

    parameter_squared: float = 0.0
    deflection: float = 0.0
    shift: float = 0.0
    tangent_offset: float = 0.0
    chord: float = 0.0
    dtype: ClassVar = layout(40, parameter_squared="f8", deflection="f8", shift="f8", tangent_offset="f8", chord="f8")


@dataclass
class Failure(Record):
    """Why the last failed call on a road failed. Numbers that do not apply are -1 (integers) or 0.

    Attributes:
        status: a KestoStatus; DescribeStatus() gives it as a sentence
        list:   a KestoList: the list concerned
        record: 0-based index of the record concerned; a line number for KESTO_RECORDS_SKIPPED
        limit:  a KestoLimit: the limit that was passed
        value:  the value that did not hold
        bound:  the bound that it did not keep
        excess: by how much (same unit as value)
    """

    status: int = 0
    list: int = -1
    record: int = -1
    limit: int = -1
    value: float = 0.0
    bound: float = 0.0
    excess: float = 0.0
    dtype: ClassVar = layout(40, status="i4", list="i4", record="i4", limit="i4", value="f8", bound="f8", excess="f8")


@dataclass
class ReadingFinding(Record):
    """What the last opening skipped or doubted in one line of the file.

    Attributes:
        line:       1-based
        reason:     a KestoReadingReason: which of the other fields say something
        other_line: another line that it is about; 0 for none
        field:      1-based field in the line; 0 for none
        status:     the KestoStatus that refused a record; 0 for none
        list:       a KestoList: the list of the record; -1 for none
        record:     0-based index of a stored record that it is about; -1 for none
        limit:      a KestoLimit that was passed; -1 for none
        section:    keyword of the section; empty outside of sections
        text:       what stands in the file, cut to 31 bytes
        value:      see the reason
        bound:      see the reason
        excess:     how far value passes a limit (same unit)
    """

    line: int = 0
    reason: int = 0
    other_line: int = 0
    field: int = 0
    status: int = 0
    list: int = -1
    record: int = -1
    limit: int = -1
    section: str = ""
    text: str = ""
    value: float = 0.0
    bound: float = 0.0
    excess: float = 0.0
    dtype: ClassVar = layout(120, line="i4", reason="i4", other_line="i4", field="i4", status="i4", list="i4",
                             record="i4", limit="i4", section="S32", text="S32", value="f8", bound="f8", excess="f8")
