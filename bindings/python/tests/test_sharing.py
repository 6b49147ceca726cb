"""Roads that threads edit and read, and roads that are copied and pickled."""

import copy
import pickle
import threading
import time
from dataclasses import replace

import numpy as np
import pytest

from kesto_road import ChangeOf, KestoError, Road, Side, Turn, _arrays


def test_copies_of_a_frozen_road_are_itself(road):
    frozen = road.freeze()
    assert copy.copy(frozen) is frozen and copy.deepcopy([frozen])[0] is frozen
    with pytest.raises(TypeError, match="pickle the road"):
        pickle.dumps(frozen)


@pytest.mark.parametrize("state", ["empty", "half built", "loaded", "broken later", "designed"])
def test_copies_of_a_road_are_as_far_as_it_is(state, small_file):
    road = Road()
    if state == "half built":
        road.start(0, 0, 0, 5)
    elif state != "empty":
        road = Road.open(small_file, design=state != "loaded")
    if state == "broken later":
        del road.elements[1:]
    for each in (copy.copy(road), pickle.loads(pickle.dumps(road))):
        assert each.to_bytes() == road.to_bytes()
        assert len(each.stakes) == (len(road.stakes) if state == "designed" else 0)


def test_a_road_that_cannot_be_designed_is_mended(small_file, tmp_path):
    road = Road.open(small_file)
    last = road.elements.pop()
    del road.elements[1:]
    road.save(tmp_path / "short.watx")
    for opened in (lambda design: Road.open(tmp_path / "short.watx", design),
                   lambda design: Road.from_bytes(memoryview(road.to_bytes()), design)):
        with pytest.raises(KestoError):
            opened(True)
        mended = opened(False)
        mended.elements.append(last)
        mended.design()
        assert len(mended.stakes) > 0


@pytest.fixture
def small_file(tmp_path):
    Road().start(0, 0, 0).straight(200).arc(300, 100, Turn.LEFT).save(tmp_path / "small.road")
    return tmp_path / "small.road"


def test_what_an_edit_may_not_cut_in_two(road, monkeypatch):
    """Another thread makes one road and another one of it by turns; a reader sees one of the two, never a mixture."""
    monkeypatch.setattr(_arrays, "ROWS_PER_CALL", 2)
    ask, reader_thread = Road._call, threading.current_thread()

    def call_and_pause(self, *arguments):
        ask(self, *arguments)
        if threading.current_thread() is reader_thread:
            time.sleep(1e-4)  # for the other thread, if it need not wait

    elements, mileages = list(road.elements), np.full((6, 2), 27209.0)
    change = Side.LEFT, ChangeOf.WIDTH
    readers = [lambda: np.asarray(road.elements)["length"].tolist(), lambda: [each.length for each in road.elements],
               lambda: [each.length for each in road.elements[:]], lambda: road.stakes["x"].tolist(),
               lambda: road.at(mileages).x.tolist(), lambda: [each.values for each in road.change_sections(*change)],
               lambda: [each.width for each in road.road_side(27209, Side.LEFT)]]

    def become(first):
        with road.alone():
            road.plates[Side.LEFT].clear()
            for width in (3, 4) if first else (5,):
                road.add_plate(Side.LEFT, width, 2)
            for mileage in (27207, 27208):
                road.add_change_section(*change, mileage, (3, 4) if first else (5,))
            road.elements.clear()
            for each in elements[:6] if first else elements[:4]:
                road.elements.append(replace(each, start_x=each.start_x + (0 if first else 7)))
            road.design()

    want = [(become(first), [reader() for reader in readers])[1] for first in (True, False)]
    assert all(one != other for one, other in zip(*want))
    monkeypatch.setattr(Road, "_call", call_and_pause)
    ended = threading.Event()

    def edit():
        while not ended.is_set():
            become(True)
            become(False)

    editor = threading.Thread(target=edit)
    editor.start()
    try:
        for _ in range(10):
            for number, reader in enumerate(readers):
                assert reader() in (want[0][number], want[1][number]), number
    finally:
        ended.set()
        editor.join()
