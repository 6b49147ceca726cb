"""What the annotations tell is what comes back: mypy checks this file, and it runs."""

from __future__ import annotations

import numpy as np
from conftest import ROOT

from kesto_road import FrozenRoad, Heights, Place, Places, Position, Positions, Queries, Road

EXAMPLE = ROOT / "examples/roads/trafikverket-crossover.road"


def answers(road: Queries) -> None:
    """Single numbers, Python's and NumPy's, against what is an array."""
    mileage, offset = np.float64(27300.0), np.float32(0)
    position: Position = road.at(27300, 0.0, np.int64(0))
    other: Position = road.at(mileage, offset)
    place: Place = road.locate(position.x, np.float64(position.y))
    point: Place = road.locate((position.x, position.y))
    height: float = road.height(mileage, offset, 0)
    positions: tuple[Positions, ...] = (road.at(np.array(27300.0)), road.at([27300.0]), road.at(27300, [0.0]))
    places: tuple[Places, ...] = (road.locate([position.x, position.y]), road.locate(np.array(position[:2])),
                                  road.locate([position.x], [position.y]))
    heights: tuple[Heights, ...] = (road.height(np.array(27300.0)), road.height([27300.0]))
    assert position == other and point == place and isinstance(height, float)
    assert all(isinstance(each, Positions) and each.x.ravel()[0] == position.x for each in positions)
    assert all(isinstance(each, Places) and each.occurrence.ravel()[0] == place.occurrence for each in places)
    assert all(isinstance(each, Heights) and each.height.ravel()[0] == height for each in heights)
    assert positions[0].x.shape == places[0].status.shape == () and places[2].status.shape == (1,)
    assert road.at(np.array(1e6)).status == 25 and np.isnan(road.at(np.array(1e6)).x)


def test_annotations_hold() -> None:
    road = Road.open(EXAMPLE)
    frozen: FrozenRoad = road.freeze()
    answers(road)
    answers(frozen)
