"""Roads of published alignments."""

import csv
from pathlib import Path

import pytest

from kesto_road import DesignMode, Element, Road, VerticalCurve

ROOT = Path(__file__).resolve().parents[3]
DATA = ROOT / "tests/data"


def rows(path):
    """The lines of a table, numbers as numbers, empty fields left out; none where there is no file."""
    if not path.exists():
        return []
    with open(path, newline="", encoding="utf-8") as table:
        return [{name: float(text) if name != "kind" else text for name, text in line.items() if text}
                for line in csv.DictReader(table)]


def published_road(folder):
    """The designed road of a folder, from its first start point."""
    road, begin = Road(), rows(folder / "start.csv")[0]
    road.start(begin["start_x"], begin["start_y"], begin["start_azimuth_deg"], begin["start_mileage"])
    for each in rows(folder / "elements.csv"):
        road.elements.append(Element(type=int(each["type"]), turn_direction=int(each["turn"]),
                                     start_x=begin["start_x"], start_y=begin["start_y"],
                                     start_azimuth=each["start_azimuth_deg"], start_radius=each["start_radius"],
                                     end_radius=each["end_radius"], length=each["length"]))
    for each in rows(folder / "broken_chains.csv"):
        road.add_broken_chain(each["back_mileage"], each["ahead_mileage"])
    given_ends = any("radius" not in each for each in rows(folder / "profile.csv"))
    road.vertical_curve_mode = int(given_ends)
    for each in rows(folder / "profile.csv"):
        road.vertical_curves.append(VerticalCurve(
            mileage=each["mileage"], occurrence=int(each["occurrence"]), elevation=each["elevation"],
            radius=each.get("radius", 0), start_mileage=each.get("curve_start", 0),
            start_occurrence=int(each.get("curve_start_occurrence", -1)), end_mileage=each.get("curve_end", 0),
            end_occurrence=int(each.get("curve_end_occurrence", -1))))
    assert road.design_mode == DesignMode.ELEMENTS
    road.design()
    return road


@pytest.fixture
def road():
    """A road of 1.2 km with a backward broken chain and a profile."""
    return Road.open(ROOT / "examples/roads/trafikverket-crossover.road")
