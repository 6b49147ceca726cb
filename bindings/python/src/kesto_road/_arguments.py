"""Arguments that ctypes alone would cut, wrap or misread."""

from __future__ import annotations

import operator
from ctypes import c_char_p, c_int32
from typing import Any

import numpy as np

from ._layout import whole

NO_OCCURRENCE, LARGEST = -1, 2**31 - 1


class Int32:
    """A whole number as an argument. ctypes alone would cut off what 32 bits do not hold."""

    @classmethod
    def from_param(cls, value: Any) -> c_int32:
        return c_int32(whole(value, np.int32))


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
