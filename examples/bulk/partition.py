"""What a worker does with one part of many points: the same on one core, on Dask and on Spark."""

from __future__ import annotations

import argparse
import os
from functools import lru_cache
from pathlib import Path

import numpy as np

from kesto_road import Places, Road


@lru_cache(maxsize=1)
def worker_road(project: bytes) -> Road:
    """The road, opened once in each worker: what travels are the bytes of its project file."""
    return Road.from_bytes(project)


def locate_partition(project: bytes, points: np.ndarray) -> Places:
    """Mileage, occurrence and offset of points (rows of x and y, m)."""
    return worker_road(project).locate(points)


def read_partition(project: bytes, number: int, count: int) -> np.ndarray:
    """Stands for reading a part of a data set: points within 25 m of the road's stakes, the same in every run."""
    stakes, random = worker_road(project).stakes, np.random.default_rng(number)
    along, beside = random.uniform(0, len(stakes) - 1, count), random.uniform(-25, 25, (count, 2))
    line = np.arange(len(stakes))
    beside[:, 0] += np.interp(along, line, stakes["x"])
    beside[:, 1] += np.interp(along, line, stakes["y"])
    return beside


def summary(places: Places) -> tuple[int, float]:
    """How many points have an answer, and the sum of their offsets (m): what is kept of a partition here."""
    return int((places.status == 0).sum()), float(np.nansum(places.offset))


def sizes(points: int, partition: int) -> list[int]:
    """The sizes of the partitions of many points."""
    return [min(partition, points - begin) for begin in range(0, points, partition)]


def count(text: str) -> int:
    """A number of points on the command line: at least one."""
    number = int(text)
    if number < 1:
        raise argparse.ArgumentTypeError(f"{text} is not a number of points")
    return number


def arguments(parser: argparse.ArgumentParser) -> tuple[argparse.Namespace, bytes, list[int]]:
    """Reads the command line: all of it, the bytes of the road's project file, and the partitions' sizes."""
    points = os.environ.get("KESTO_BULK_POINTS", "10000000")  # fewer for a quick look
    parser.add_argument("road", type=Path, help="a project file")
    parser.add_argument("--points", type=count, default=points, help=f"{points} without it (KESTO_BULK_POINTS)")
    parser.add_argument("--partition", type=count, default=500_000, help="points that are in memory at once")
    given = parser.parse_args()
    return given, given.road.read_bytes(), sizes(given.points, given.partition)
