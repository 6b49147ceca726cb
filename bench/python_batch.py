#!/usr/bin/env python3
"""Time per point through Python: one array against one call for each point.

Usage: python_batch.py ROAD.road [points]   prints a table in Markdown; the best of five rounds
"""

import os
import sys
import time

import numpy as np

from kesto_road import Road

ROUNDS = 5


def best(question) -> float:
    """The shortest time of a few rounds (s)."""
    times = []
    for _ in range(ROUNDS):
        begin = time.perf_counter()
        question()
        times.append(time.perf_counter() - begin)
    return min(times)


def main(path: str, count: int = int(os.environ.get("KESTO_BULK_POINTS", "100000"))) -> None:
    road, random = Road.open(path), np.random.default_rng(1)
    mileage = random.permutation(np.linspace(road.start_mileage, road.end_mileage, count))
    mileage = mileage[road.at(mileage).status == 0]  # without gaps
    offset = random.uniform(-10, 10, len(mileage))
    at = road.at(mileage, offset)
    questions = {"at": (road.at, (mileage, offset)), "locate": (road.locate, (at.x, at.y)),
                 "height": (road.height, (mileage,))}
    print("| question | one array, ns a point | a call for each, ns a point | ratio |\n|---|---|---|---|")
    for name, (ask, columns) in questions.items():
        rows = list(zip(*(each.tolist() for each in columns)))
        many, single = best(lambda: ask(*columns)), best(lambda: [ask(*row) for row in rows])
        many, single = (each / len(rows) * 1e9 for each in (many, single))
        print(f"| `{name}` | {many:.0f} | {single:.0f} | {single / many:.0f} |")


if __name__ == "__main__":
    main(sys.argv[1], *map(int, sys.argv[2:]))
