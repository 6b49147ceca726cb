"""NumPy arrays as the library's batches take them: a pointer and a stride in bytes for each."""

from __future__ import annotations

import operator
from typing import Any, Callable, Sequence, SupportsIndex

import numpy as np
from numpy.typing import ArrayLike, NDArray

ROWS_PER_CALL = 1 << 20  # so that an interrupt is heard, and counts and strides stay within 32 bits
LARGEST = 2**31 - 1
NO_OCCURRENCE = -1
Array = NDArray[Any]


def numbers(values: ArrayLike) -> Array:
    """The values as an array of float64; itself, strides and all, where it is one already."""
    return _walkable(np.asarray(values, np.float64))


def whole_numbers(values: ArrayLike) -> Array:
    """The values as an array of int32, as numbers() does. What 32 bits do not hold is no occurrence, so it stays none.
    Raises TypeError for what is not whole."""
    array = np.asarray(values)
    if array.size and array.dtype.kind not in "iub":
        raise TypeError(f"occurrences are whole numbers, not {array.dtype}")
    if array.dtype != np.int32:
        array = np.clip(array, NO_OCCURRENCE, LARGEST).astype(np.int32)
    return _walkable(array)


def whole_number(value: SupportsIndex) -> int:
    """One occurrence, as whole_numbers() takes many."""
    return max(NO_OCCURRENCE, min(operator.index(value), LARGEST))


def _walkable(array: Array) -> Array:
    """The array itself, or a copy where its strides exceed 32 bits."""
    return array if all(abs(stride) <= LARGEST for stride in array.strides) else array.copy()


def coordinates(x: ArrayLike, y: ArrayLike | None) -> tuple[Array, Array]:
    """x and y from two arrays, or from one whose last axis holds both. Raises ValueError for another shape."""
    if y is not None:
        return numbers(x), numbers(y)
    points = numbers(x)
    if points.ndim == 0 or points.shape[-1] != 2:
        raise ValueError(f"the last axis of the points must hold x and y, their shape is {points.shape}")
    return points[..., 0], points[..., 1]


def run(batch: Callable[..., None], inputs: Sequence[Array], kinds: Sequence[type]) -> list[Array]:
    """Calls a batch of the library on inputs that broadcast, in as few runs along one stride as they allow.

    Args:
        batch:  called with a count and with the address and the stride of every input and output
        inputs: arrays of any shapes that broadcast; they are not copied
        kinds:  the kinds of the outputs
    Returns: the outputs, in the inputs' common shape
    """
    inputs = np.broadcast_arrays(*inputs)
    shape = inputs[0].shape
    outputs: list[Array] = [np.empty(shape, kind) for kind in kinds]
    longest = int(np.argmax(shape))  # the innermost axis of the walk, unless more than one make a common stride
    columns = [np.moveaxis(each, longest, -1) for each in (*inputs, *outputs)]
    flags: Any = [["readonly"]] * len(inputs) + [["writeonly"]] * len(outputs)
    with np.nditer(columns, ["external_loop", "zerosize_ok"], flags, order="C") as walk:
        if walk.itersize == 0:
            return outputs
        for step in walk:
            for start in range(0, len(step[0]), ROWS_PER_CALL):
                rows = [each[start:start + ROWS_PER_CALL] for each in step]
                places = [number for each in rows for number in (each.ctypes.data, each.strides[0])]
                batch(len(rows[0]), *places)
    return outputs
