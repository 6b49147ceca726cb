"""The road that most tests ask."""

from pathlib import Path

import pytest

from kesto_road import Road

ROOT = Path(__file__).resolve().parents[3]
DATA = ROOT / "tests/data"


@pytest.fixture
def road():
    """A road of 1.2 km with a backward broken chain and a profile."""
    return Road.open(ROOT / "examples/roads/trafikverket-crossover.road")
