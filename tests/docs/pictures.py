"""Compares pictures: PNG files of 8 bits a colour, as kesto-road plot writes them."""

import struct
import zlib
from pathlib import Path
from typing import Iterator

SLACK = 24  # of 255: how far an edge may be smoothed otherwise, by another version of Cairo
SHARE = 1e-4  # of the bytes that may differ more, and still fewer than one digit's


def nearest(left: int, up: int, corner: int) -> int:
    """The neighbour that is nearest to left + up - corner."""
    a, b, c = abs(up - corner), abs(left - corner), abs(left + up - 2 * corner)
    return left if a <= b and a <= c else up if b <= c else corner


def unfiltered(kind: int, row: bytearray, above: bytes, width: int) -> bytes:
    """A row of a PNG as colours; `width` is that of a pixel in bytes."""
    if kind == 2:
        return bytes((value + up) & 255 for value, up in zip(row, above)) if any(row) else above
    if kind:
        for i, value in enumerate(row):
            left, corner = (row[i - width], above[i - width]) if i >= width else (0, 0)
            row[i] = value + (left if kind == 1 else (left + above[i]) // 2 if kind == 3 else
                              nearest(left, above[i], corner)) & 255
    return bytes(row)


def rows_of(path: Path) -> Iterator[bytes]:
    """The rows of a picture from the top. Raises ValueError for another kind of file."""
    data, packed, at = path.read_bytes(), b"", 8
    while at < len(data):
        length, name = struct.unpack_from(">I4s", data, at)
        body = data[at + 8:at + 8 + length]
        if name == b"IHDR":
            columns, count, depth, colours, *_, interlaced = struct.unpack(">IIBBBBB", body)
        packed += body if name == b"IDAT" else b""
        at += length + 12
    if not packed or depth != 8 or interlaced or colours not in (2, 6):
        raise ValueError(f"{path} is no picture known here")
    width = 3 if colours == 2 else 4
    size, pixels = columns * width, zlib.decompress(packed)
    above = bytes(size)
    for begin in range(0, count * (size + 1), size + 1):
        above = unfiltered(pixels[begin], bytearray(pixels[begin + 1:begin + 1 + size]), above, width)
        yield above


def look_alike(one: Path, other: Path) -> bool:
    """Whether two pictures show the same."""
    if one.read_bytes() == other.read_bytes():
        return True
    ours, theirs = list(rows_of(one)), list(rows_of(other))
    if [len(row) for row in ours] != [len(row) for row in theirs]:
        return False
    apart = sum(sum(abs(a - b) > SLACK for a, b in zip(*rows)) for rows in zip(ours, theirs) if rows[0] != rows[1])
    return apart <= SHARE * sum(map(len, ours))
