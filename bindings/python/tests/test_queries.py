"""Arrays of every shape against single numbers."""

from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest
from numpy.testing import assert_array_equal

from kesto_road import KestoError, Road, Side, Status

MISSING = 1e6  # m: a mileage that no road here has


def test_there_and_back(road):
    stakes = road.stakes
    assert {0, 1} == set(stakes["occurrence"])  # mileages that come twice
    inner = stakes[1:-1]
    at = road.at(inner["mileage"], 4.5, inner["occurrence"])
    back = road.locate(np.stack([at.x, at.y], axis=-1))
    np.testing.assert_allclose(back.mileage, inner["mileage"], atol=1e-6)
    np.testing.assert_allclose(back.offset, 4.5, atol=1e-6)
    assert_array_equal(back.occurrence, inner["occurrence"])


def shapes(values):
    """The values as arrays of other memory layouts: what they are named for, and whether they may be read in place."""
    table = np.zeros((len(values), 3))
    table[:, 1] = values
    record = np.zeros(len(values), [("before", "u1"), ("value", "f8")])  # packed: not aligned
    record["value"] = values
    yield table[:, 1]
    yield values[::-1].copy()[::-1]
    yield record["value"]
    yield values.astype(">f8")
    yield list(values)


def test_arrays_are_single_numbers_one_by_one(road):
    mileages = np.append(np.linspace(27210, 28000, 40), MISSING)
    offsets = np.array([-3.5, 0, 2])
    at = road.at(mileages[:, None], offsets)
    height = road.height(mileages, 0)
    assert at.x.shape == (41, 3) and at.status.dtype == np.uint8
    for i, mileage in enumerate(mileages[:-1]):
        assert height.height[i] == road.height(mileage)
        for j, offset in enumerate(offsets):
            assert tuple(each[i, j] for each in at[:3]) == road.at(mileage, offset)
            place = road.locate(at.x[i, j], at.y[i, j])
            assert tuple(each[i, j] for each in road.locate(at.x, at.y)[:3]) == place == road.locate(
                (at.x[i, j], at.y[i, j]))
    for failed in (at.status[-1], height.status[-1:]):
        assert (failed == Status.MILEAGE_OFF_ROAD).all()
    assert np.isnan(at.x[-1]).all() and np.isnan(height.height[-1])
    for each in shapes(mileages):
        for got, want in zip((*road.at(each), *road.height(each, angleless())),
                             (*road.at(mileages), *height)):
            assert_array_equal(got, want)


def angleless():
    """Offset 0 as an array of one: broadcasts like a number."""
    return np.zeros(1)


@pytest.mark.parametrize("shape", [(0,), (3, 0, 2), (2, 1, 3), (5, 4)])
def test_shapes(road, shape):
    mileages = np.full(shape, 27300.0)
    assert road.at(mileages).x.shape == road.height(mileages).status.shape == shape
    single = road.at(27300.0)
    assert (road.at(mileages).x == single.x).all()
    turned = road.locate(np.full(shape, single.x).T, np.full(shape[::-1], single.y))
    assert turned.mileage.shape == shape[::-1] and (turned.status == 0).all()


def test_arrays_are_read_in_place(road):
    table = np.full((1000, 1000), 27300.0)  # 8 MB
    tracemalloc = pytest.importorskip("tracemalloc")
    view = table[::2, ::4]  # no common stride
    tracemalloc.start()
    got = road.height(view)
    peak = tracemalloc.get_traced_memory()[1]
    tracemalloc.stop()
    assert (got.status == 0).all()
    assert peak < view.size * 8 * 1.7  # heights, statuses and their test, but no copy of the view


def test_rows_fail_alone(road):
    points = np.array([[6721759.67, 160888.19], [np.nan, 0], [6721759.67, 160888.19]])
    found = road.locate(points)
    assert_array_equal(found.status, [0, Status.ARGUMENT_NOT_FINITE, 0])
    assert np.isnan(found.mileage[1]) and found.occurrence[1] == -1 and found.mileage[0] == found.mileage[2]
    with pytest.raises(KestoError) as caught:
        road.locate(np.nan, 0)
    assert caught.value.status == Status.ARGUMENT_NOT_FINITE


def test_occurrences_are_whole_and_never_wrap(road):
    stake = road.stakes[-1]
    assert road.at(stake["mileage"], 0, stake["occurrence"]).x == pytest.approx(stake["x"])
    for one in (road.at, road.height):
        for beyond in (2**32, -2**32):
            with pytest.raises(KestoError) as caught:
                one(27300.0, 0, beyond)
            assert caught.value.status == Status.NO_SUCH_OCCURRENCE
            assert (one([27300.0, 27300.0], 0, [0, beyond]).status == [0, Status.NO_SUCH_OCCURRENCE]).all()
        for fraction in (0.5, [0.5]):
            with pytest.raises(TypeError):
                one(27300.0, 0, fraction)


@pytest.mark.parametrize("points", [5.0, np.zeros((4, 3)), np.zeros(3)])
def test_points_of_another_shape_are_refused(road, points):
    with pytest.raises(ValueError, match="last axis"):
        road.locate(points)


def test_limits(road):
    first, second = (28000.3, 0), (28000.3, 1)  # one mileage, two places
    for mileage, occurrence in (first, second):
        x, y, _ = road.at(mileage, 1, occurrence)
        place = road.locate_between(x, y, (28000.0, occurrence), (28000.6, occurrence))
        assert place.occurrence == occurrence and place.mileage == pytest.approx(mileage, abs=1e-6)


def test_a_frozen_road_has_stakes_and_sections(road):
    for width in range(1, 12):
        road.add_plate(Side.LEFT, width / 10, 2)
    frozen = road.freeze()
    assert_array_equal(frozen.stakes, road.stakes)
    assert len(frozen.road_side(27300, Side.LEFT)) == 11
    for ask in (lambda it: it.road_side(27300, Side.LEFT), lambda it: it.road_side(27300, Side.LEFT, profile=False),
                lambda it: it.nearest_stake(6721759.67, 160888.19), lambda it: it.continuous_mileage(28000.3, 1),
                lambda it: it.intersection_at(27300)):
        assert ask(frozen) == ask(road)
    undesigned = Road().start(0, 0, 0).straight(9).add_plate(Side.LEFT, 1, 1).freeze()
    for fails in (lambda: frozen.road_side(27300, Side.RIGHT), lambda: frozen.continuous_mileage(MISSING),
                  lambda: undesigned.road_side(5, Side.LEFT)):
        with pytest.raises(KestoError):
            fails()


def test_a_frozen_road_answers_the_same(road):
    frozen, mileages = road.freeze(), np.append(np.linspace(27210, 28000, 40), MISSING)
    want = road.at(mileages, 3), road.height(mileages), road.locate(*road.at(mileages, 3)[:2])
    road.elements.clear()  # does not reach the copy
    for got, each in zip((frozen.at(mileages, 3), frozen.height(mileages), frozen.locate(*want[0][:2])), want):
        for mine, its in zip(got, each):
            assert_array_equal(mine, its)
    assert frozen.at(27300.0, 3).x == frozen.at([27300.0], 3).x[0]
    assert frozen.locate_between(want[0].x[0], want[0].y[0], (27205.5, 0), (27300.0, 0)).mileage == want[2].mileage[0]
    with pytest.raises(KestoError) as caught:
        frozen.height(MISSING)
    assert caught.value.status == Status.MILEAGE_OFF_ROAD
    with pytest.raises(KestoError) as caught:
        road.freeze()
    assert caught.value.status == Status.TOO_FEW_ELEMENTS


@pytest.mark.parametrize("frozen", [False, True])
def test_threads_share_a_road(road, frozen):
    road = road.freeze() if frozen else road
    mileages = np.linspace(27210, 27900, 500)
    want = road.at(mileages).x

    def failures(thread):  # each call gets the reason of its own
        for mileage in MISSING + thread + np.arange(500) / 1000:
            with pytest.raises(KestoError) as caught:
                road.at(mileage)
            assert caught.value.status == Status.MILEAGE_OFF_ROAD and caught.value.value in (None, mileage)

    with ThreadPoolExecutor(8) as pool:
        answers = [pool.submit(lambda: road.at(mileages).x) for _ in range(40)]
        failing = [pool.submit(failures, thread) for thread in range(8)]
    assert all((each.result() == want).all() for each in answers)
    for each in failing:
        each.result()
