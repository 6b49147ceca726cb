"""Ten million points against a road on one core: memory stays flat, the rate is printed."""

import argparse
import resource
import sys
import time

from partition import arguments, locate_partition, read_partition, summary

ALLOWED_GROWTH = 16.0  # MiB between the first partition and the last


def peak() -> float:
    """The most memory that this process has had (MiB)."""
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024


def work(project: bytes, number: int, count: int) -> tuple[int, float, float]:
    """Answers one partition: its summary, and how long the answers took (s)."""
    points = read_partition(project, number, count)
    begin = time.perf_counter()
    places = locate_partition(project, points)
    return *summary(places), time.perf_counter() - begin


def main() -> int:
    _, project, partitions = arguments(argparse.ArgumentParser(description=__doc__))
    located, offsets, seconds, first = 0, 0.0, 0.0, 0.0
    for number, count in enumerate(partitions):
        found, total, took = work(project, number, count)
        located, offsets, seconds = located + found, offsets + total, seconds + took
        first = first or peak()
    points_in_all = sum(partitions)
    print(f"{points_in_all} points, {located} located, mean offset {offsets / located:+.3f} m")
    print(f"{points_in_all / seconds:,.0f} points a second")
    print(f"{first:.0f} MiB after the first of {len(partitions)} partitions, {peak():.0f} MiB at the end")
    return 0 if peak() - first < ALLOWED_GROWTH else 1


if __name__ == "__main__":
    sys.exit(main())
