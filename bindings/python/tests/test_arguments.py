"""Arguments that C would cut, wrap or misread are refused; both forms of a question agree on every road."""

import numpy as np
import pytest

from kesto_road import (ChangeOf, DesignMode, Element, KestoError, Road, Side, Status, Transition, VerticalCurve,
                        _records)
from kesto_road._native import _check_records, library

BEYOND = 2**32  # 0 in the 32 bits of C


@pytest.mark.parametrize("beyond", [BEYOND, -BEYOND, BEYOND + 1])
def test_whole_numbers_never_wrap(road, tmp_path, beyond):
    none = [lambda: road.continuous_mileage(27300, beyond), lambda: road.road_side(27300, Side.LEFT, beyond),
            lambda: road.save_part(tmp_path / "part.road", 27300, 27400, beyond),
            lambda: road.intersection_at(27300, beyond)]
    for call in none:
        with pytest.raises(KestoError):
            call()
    refused = [lambda: Element(turn_direction=257).row(), lambda: Element(type=beyond).row(),
               lambda: VerticalCurve(occurrence=beyond).row(),
               lambda: road.add_grade_point(27300, 1, occurrence=beyond),
               lambda: road.elements.append(Element(flag=beyond)), lambda: road.road_side(27300, beyond),
               lambda: setattr(road, "design_mode", beyond), lambda: setattr(road, "stake_type", beyond),
               lambda: road.add_change_section(beyond, ChangeOf.WIDTH, 27300, []),
               lambda: road.delete_change_section(Side.LEFT, beyond, 0),
               lambda: road.set_transition_type(Side.LEFT, ChangeOf.WIDTH, 0, beyond)]
    for call in refused:
        with pytest.raises(OverflowError):
            call()
    for call in (lambda: road.continuous_mileage(27300, 0.5), lambda: Element(type=1.5).row(),
                 lambda: setattr(road, "section_mode", 1.5)):
        with pytest.raises(TypeError):
            call()


def test_paths_and_texts_with_a_zero_are_refused(road, tmp_path):
    path = str(tmp_path / "cut.road\0.watx")
    for call in (lambda: road.save(path), lambda: road.save_part(path, 27300, 27400), lambda: Road.open(path),
                 lambda: road.export_landxml(path), lambda: setattr(road, "stake_prefix", "K\0M")):
        with pytest.raises(ValueError, match="null"):
            call()
    assert not list(tmp_path.iterdir())
    road.save(bytes(tmp_path / "bytes.WATX"))
    assert [each.name for each in tmp_path.iterdir()] == ["bytes.watx"]


@pytest.mark.parametrize("values", [np.ma.masked_array([27300.0], [True]), np.array(["2020-01-01"], "M8[D]"), ["27300"],
                                    [1j]])
def test_what_are_no_numbers_is_refused(road, values):
    for call in (road.at, road.height, lambda it: road.locate(it, it), lambda it: road.at(27300, occurrence=it)):
        with pytest.raises(TypeError):
            call(values)


def test_one_and_many_agree_before_a_design():
    built = Road().start(0, 0, 0).straight(100).straight(100)
    assert built.at(150) == (150, 0, 0) and built.at([150]).x[0] == 150
    for call in (lambda it: Road().at(it), lambda it: Road().height(it)):
        for mileage in (0.0, [0.0]):
            with pytest.raises(KestoError) as caught:
                call(mileage)
            assert caught.value.status == Status.TOO_FEW_ELEMENTS
    built.clear()  # what was built is gone
    with pytest.raises(KestoError):
        built.at(150)


def test_curves_change_sections_and_spirals():
    road = Road().add_intersection(0, 0).add_intersection(300, 0, 200).add_intersection(300, 300)
    road.design_mode = DesignMode.INTERSECTIONS
    road.design()
    assert [road.intersection_at(each) for each in (99, 101, 99 + 200 * np.pi / 2, 102 + 200 * np.pi / 2)] == [
        None, 1, 1, None]
    spiral = road.ease_parameters(0, 200, 50)
    assert spiral.parameter_squared == pytest.approx(200 * 50) and spiral.deflection == pytest.approx(
        np.degrees(50 / 400))
    assert spiral.shift == pytest.approx(50**2 / (24 * 200), rel=1e-2)
    road.add_plate(Side.LEFT, 3, 2).add_change_section(Side.LEFT, ChangeOf.WIDTH, 100, [4], flags=[7])
    road.set_change_section(Side.LEFT, ChangeOf.WIDTH, 0, 200, [5], Transition.CUBIC)
    assert road.change_sections(Side.LEFT, ChangeOf.WIDTH) == [(200, 0, (5,), (1,))]
    types = [road.transition_type(Side.LEFT, ChangeOf.WIDTH, index) for index in range(2)]
    assert types == [Transition.LINEAR, Transition.CUBIC]
    road.set_transition_type(Side.LEFT, ChangeOf.WIDTH, 1, Transition.LINEAR)
    assert road.road_side(100, Side.LEFT)[0].width == pytest.approx(4)
    with pytest.raises(KestoError) as caught:
        road.add_change_section(Side.LEFT, ChangeOf.WIDTH, 300, [1], flags=[1, 2])
    assert caught.value.status == Status.VALUE_COUNT_DIFFERS


def swapped(record, one, other):
    """The record's dtype with two fields of one kind in each other's place."""
    names = [{one: other, other: one}.get(name, name) for name in record.dtype.names]
    formats, offsets = zip(*(record.dtype.fields[name][:2] for name in record.dtype.names))
    return np.dtype({"names": names, "formats": formats, "offsets": offsets, "itemsize": record.dtype.itemsize})


@pytest.mark.parametrize("record, one, other", [(_records.Element, "start_x", "start_y"),
                                                (_records.Stake, "mileage", "x"), (_records.Stake, "x", "y"),
                                                (_records.VerticalCurve, "mileage", "elevation"),
                                                (_records.Plate, "cross_slope", "width"),
                                                (_records.Failure, "value", "bound")])
def test_exchanged_fields_are_told_on_import(monkeypatch, record, one, other):
    _check_records(library)
    monkeypatch.setattr(record, "dtype", swapped(record, one, other))
    with pytest.raises(ImportError, match=record.__name__):
        _check_records(library)
