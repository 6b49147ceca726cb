"""NumPy arrays as the library's batches take them: a pointer and a stride in bytes for each."""

from __future__ import annotations

from typing import Any, Callable, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arguments import LARGEST, NO_OCCURRENCE

ROWS_PER_CALL = 1 << 20  # so that an interrupt is heard, and counts and strides stay within 32 bits
NO_NUMBERS = "mMcSU"  # kinds of NumPy's: what would become a number without being one
Array = NDArray[Any]


def numbers(values: ArrayLike) -> Array:
    """The values as an array of float64; itself, strides and all, where it is one already. Raises TypeError for what
    are no real numbers."""
    array = _unmasked(values)
    if array.dtype.kind in NO_NUMBERS:
        raise TypeError(f"real numbers are needed, not {array.dtype}")
    return _walkable(np.asarray(array, np.float64))


def whole_numbers(values: ArrayLike) -> Array:
    """The values as an array of int32, as numbers() does. What 32 bits do not hold is no occurrence, so it stays none.
    Raises TypeError for what is not whole."""
    array = _unmasked(values)
    if array.size and array.dtype.kind not in "iub":
        raise TypeError(f"occurrences are whole numbers, not {array.dtype}")
    if array.dtype != np.int32:
        array = np.clip(array, NO_OCCURRENCE, LARGEST).astype(np.int32)
    return _walkable(array)


def _unmasked(values: ArrayLike) -> Array:
    """The values as an array. Raises TypeError where its mask would be lost."""
    if isinstance(values, np.ma.MaskedArray):
        raise TypeError("masked arrays are not taken: fill them first, with NaN for instance")
    return np.asarray(values)


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
    if not shape:
        return [each.reshape(shape) for each in run(batch, [np.atleast_1d(each) for each in inputs], kinds)]
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
