"""What the Python package knows of the interface: codes, records, types of functions."""
import re
import textwrap

from .c_files import MARK
from .header import Function, Header, Parameter, Record, fail
from .measure import Layout

WIDTH = 120
# Names in Python where they differ from those in C, and values of new records that are not 0.
NAMES = {"SectionPlate": "Plate", "StakeCoordinate": "Stake", "SectionMileageIndex": "SectionMileage",
         "EaseParam": "EaseParameters", "KestoStatus": "Status", "KestoList": "ListOf", "KestoLimit": "Limit",
         "KestoReadingReason": "ReadingReason"}
DEFAULTS = {"Coordinate.type": "1", "VerticalCurve.startOccurrence": "-1", "VerticalCurve.endOccurrence": "-1",
            **{f"{record}.{field}": "-1" for record in ("Failure", "ReadingFinding") for field in ("list", "record", "limit")}}
NUMBERS = {"double": ("float", "0.0", "f8"), "int32_t": ("int", "0", "i4"), "int64_t": ("int", "0", "i8"),
           "uint8_t": ("int", "0", "u1")}


def snake(name: str) -> str:
    """A C name as Python's."""
    return re.sub(r"(?<!^)([A-Z])", r"_\1", name).lower()


def docstring(text: str, indent: str = "    ") -> list[str]:
    """The begin of a docstring, wrapped."""
    return textwrap.wrap(f'"""{text}', WIDTH, initial_indent=indent, subsequent_indent=indent)


def codes(header: Header, layout: Layout) -> str:
    """The enumerations."""
    lines = [f'"""Codes of the library, as kesto_road.h describes them: {MARK}."""', "", "from enum import IntEnum"]
    prefixes = {"KestoStatus": "KESTO_", "KestoReadingReason": "KESTO_READING_"}
    for name, members in header.enumerations.items():
        prefix = prefixes.get(name, re.sub(r"([A-Z])", r"_\1", name).lstrip("_").upper() + "_")
        lines += ["", "", f"class {NAMES.get(name, name)}(IntEnum):", *docstring(header.comments[name] + '"""'), ""]
        lines += [f"    {member.removeprefix(prefix)} = {layout.wide[member]}" for member, _ in members]
    return "\n".join(lines) + "\n"


def field_of(record: Record, name: str, kind: str) -> tuple[str, str, str]:
    """Type, value of a new record and format of a field."""
    if kind in NUMBERS:
        python, default, form = NUMBERS[kind]
        return python, DEFAULTS.get(f"{record.name}.{name}", default), f'"{form}"'
    size = re.fullmatch(r"(unsigned )?char\[(\d+)\]", kind)
    if size is None:
        fail(f"no field of a Python record: {record.name}.{name} is {kind}")
    if size[1]:
        return "bytes", 'b""', f'"S{size[2]}"'
    return "str", '""', f'"S{size[2]}"'


def records(header: Header, layout: Layout) -> str:
    """The records as dataclasses."""
    lines = [f'"""The library\'s records, as dataclasses and as NumPy dtypes of the same layout: {MARK}."""', "",
             "from __future__ import annotations", "", "from dataclasses import dataclass",
             "from typing import ClassVar", "", "from ._layout import Record, layout"]
    for record in header.records.values():
        if record.is_array:
            continue
        said = re.sub(r"\s*\d+ bytes\.$", "", record.comment)
        fields = [(snake(name), *field_of(record, name, kind), text) for name, kind, text in record.fields
                  if not name.startswith("padding")]
        column = max(len(name) for name, *_ in fields) + 2
        lines += ["", "", "@dataclass", f"class {NAMES.get(record.name, record.name)}(Record):", *docstring(said), "",
                  "    Attributes:"]
        for name, _, _, _, text in fields:
            lines += textwrap.wrap(f"{name}:".ljust(column) + text, WIDTH, initial_indent=" " * 8,
                                   subsequent_indent=" " * (8 + column))
        lines += ['    """', ""]
        lines += [f"    {name}: {python} = {default}" for name, python, default, _, _ in fields]
        formats = ", ".join(f"{name}={form}" for name, _, _, form, _ in fields)
        begin = "    dtype: ClassVar = layout("
        lines += textwrap.wrap(f"{begin}{layout.wide[record.name]}, {formats})", WIDTH,
                               subsequent_indent=" " * len(begin))
    return "\n".join(lines) + "\n"


def argument(header: Header, function: Function, parameter: Parameter) -> str:
    """The type of an argument for ctypes."""
    if not parameter.pointed:
        if parameter.type == "int32_t" and re.search("occurrence$", parameter.name, flags=re.IGNORECASE):
            return "Occurrence"
        if parameter.type == "int32_t" and re.search("^count$|Step$", parameter.name):
            return "c_int32"  # of an array that is there
        return {"double": "c_double", "int32_t": "Int32", "int64_t": "c_int64"}.get(parameter.type) or fail(
            f"no argument for Python: {parameter.type} {parameter.name} of {function.name}")
    if parameter.type == "const char*":
        sized = any(other.name == "size" for other in function.parameters)
        return "c_char_p" if sized else "Text"
    if parameter.pointed in header.records and header.records[parameter.pointed].is_array:
        return f"POINTER({parameter.pointed})"
    return "c_void_p"


def signatures(header: Header) -> str:
    """Arrays across the boundary, and every function with result and arguments."""
    lines = [f'"""The types of the library\'s functions: {MARK}."""', "", "from __future__ import annotations", "",
             "from ctypes import POINTER, Structure, c_bool, c_char_p, c_double, c_int32, c_int64, c_void_p",
             "from typing import Any", "", "from ._arguments import Int32, Occurrence, Text"]
    for record in header.records.values():
        if record.is_array:
            item = {"double*": "POINTER(c_double)", "int32_t*": "POINTER(c_int32)"}.get(record.fields[0][1], "c_void_p")
            lines += ["", "", f"class {record.name}(Structure):", *docstring(record.comment.split(".")[0] + '."""'), "",
                      f'    _fields_ = [("items", {item}), ("count", c_int32), ("capacity", c_int32)]']
    results = {"None": "None", "Success": "c_bool", "Truth": "c_bool", "Status": "c_int32", "Whole": "c_int32", "Number": "c_double",
               "Text": "c_char_p", "Handle": "c_void_p"}
    lines += ["", "", "# Result, then arguments.", "SIGNATURES: dict[str, list[Any]] = {"]
    for function in header.functions.values():
        types = [results[function.gives]] + [argument(header, function, each) for each in function.parameters]
        lines += textwrap.wrap(f'"{function.name}": [{", ".join(types)}],', WIDTH, initial_indent="    ",
                               subsequent_indent="        ")
    return "\n".join(lines) + "\n}\n"
