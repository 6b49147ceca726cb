"""Building, records, settings, files and failures."""

import pickle
import re

import numpy as np
import pytest
from conftest import DATA, ROOT

import kesto_road
from kesto_road import (BrokenChain, ChangeOf, Intersection, KestoError, Limit, ListOf, Plate, ReadingReason,
                        RecordsSkippedWarning, Road, Side, Status, Turn)
from kesto_road import Record, _native


@pytest.fixture
def small():
    """100 m of straight and 50 m of arc, with a profile and a lane on each side."""
    road = Road().start(5000, 2000, 60, 1000).straight(100).arc(200, 50, Turn.RIGHT)
    road.add_grade_point(1000, 50).add_grade_point(1150, 53)
    for side in Side:
        road.add_plate(side, 3.5, -2.5, name="lane")
    road.design()
    return road


def test_a_built_road_answers(small):
    x, y, azimuth = small.at(1100, 2)  # by hand: 100 m in azimuth 60, then 2 m to its right
    assert (x, y) == pytest.approx((5050 - 2 * np.sin(np.pi / 3), 2000 + 100 * np.sin(np.pi / 3) + 1), abs=1e-9)
    assert azimuth == pytest.approx(60) and small.at(1150).azimuth == pytest.approx(60 + np.degrees(50 / 200))
    assert small.height(1075, -2) == pytest.approx(50 + 75 * 0.02 - 2 * 0.025)
    small.add_change_section(Side.LEFT, ChangeOf.WIDTH, 1050, [4])
    assert small.change_sections(Side.LEFT, ChangeOf.WIDTH) == [(1050, 0, (4.0,), (1,))]
    edge = small.road_side(1050, Side.LEFT)[0]
    assert (edge.name, edge.width, edge.height) == ("lane", 4, pytest.approx(51 - 4 * 0.025))
    assert small.continuous_mileage(1040) == 1040 and small.end_mileage == 1150
    assert small.nearest_stake(5049, 2087).name == small.stakes["name"][1].decode()


def test_lists_are_sequences(small):
    assert [each.type for each in small.elements] == [0, 1, 2]
    assert np.asarray(small.elements)["length"].tolist() == [0, 100, 50]
    small.intersections.extend([Intersection("b", 1, 2), Intersection("c", 3, 4)])
    small.intersections.insert(0, Intersection("a", radius=9))
    small.intersections[-1] = Intersection("ü" * 40, reserved=b"12345678")  # cut where a character ends
    assert [each.name for each in small.intersections] == ["a", "b", "ü" * 15]
    assert small.intersections[2].reserved == b"12345678"
    del small.intersections[1:]
    assert len(small.intersections) == 1 and small.intersections[0].radius == 9
    small.broken_chains.extend([BrokenChain(1100, 1000), BrokenChain(1050, 2000)])
    assert [each.back_mileage for each in small.broken_chains] == [1050, 1100]
    small.plates[Side.RIGHT].insert(0, Plate("kerb", width=0.3))
    assert [each.name for each in small.plates[Side.RIGHT]] == ["kerb", "lane"]
    for wrong, error in ((lambda: small.elements[3], IndexError), (lambda: small.elements.append("x"), TypeError)):
        with pytest.raises(error):
            wrong()


def test_settings_are_properties():
    road = Road()
    for name, value in (("design_mode", 2), ("start_mileage", 12.5), ("stake_interval", 20.0), ("stake_type", 1),
                        ("stake_prefix", "KM"), ("vertical_curve_mode", 1), ("side_slope_mode", 3),
                        ("section_mode", 4)):
        setattr(road, name, value)
        assert getattr(road, name) == value
    road.clear()
    assert road.stake_prefix == "K" and road.design_mode == 0


def test_files_bytes_and_pickles(small, tmp_path):
    small.save(tmp_path / "small.road")
    data = (tmp_path / "small.road").read_bytes()
    assert small.to_bytes() == data
    for each in (Road.open(str(tmp_path / "small.road")), Road.from_bytes(data), pickle.loads(pickle.dumps(small))):
        assert each.at(1130) == pytest.approx(small.at(1130), abs=1e-6)
    small.save(tmp_path / "small.watx")
    assert Road.open(tmp_path / "small.watx").height(1075) == pytest.approx(51.5)
    small.save_part(tmp_path / "part.road", 1020, 1060)
    assert Road.open(tmp_path / "part.road").end_mileage == pytest.approx(1060)
    small.export_landxml(tmp_path / "small.xml")
    assert b"<LandXML" in (tmp_path / "small.xml").read_bytes()


def test_failures_carry_their_reason(small, tmp_path):
    with pytest.raises(KestoError) as caught:
        small.at(1200)
    error = caught.value
    assert (error.status, error.limit) == (Status.MILEAGE_OFF_ROAD, Limit.ROAD_END)
    assert (error.value, error.bound) == (1200, 1150)
    assert kesto_road.describe(error.status) in str(error) and "limit road_end" in str(error)
    copy = pickle.loads(pickle.dumps(error))
    assert str(copy) == str(error) and copy.excess == error.excess == 50
    road = Road().add_intersection(0, 0).add_intersection(100, 0, radius=500).add_intersection(100, 100)
    cases = [(road.design, Status.CURVE_DOES_NOT_FIT), (lambda: Road().straight(5), Status.NO_START_ELEMENT),
             (lambda: small.arc(-1, 5, Turn.LEFT), Status.ELEMENT_NOT_EVALUABLE),
             (lambda: small.spiral(300, 300, 5, Turn.LEFT), Status.ELEMENT_NOT_EVALUABLE),
             (lambda: small.add_grade_point(1000, 7), Status.DUPLICATE_MILEAGE),
             (lambda: small.broken_chains.append(BrokenChain(np.nan, 1)), Status.ARGUMENT_NOT_FINITE),
             (lambda: Road.open(tmp_path / "none.road"), Status.FILE_NOT_OPENED),
             (lambda: Road.open(tmp_path / "none.txt"), Status.WRONG_EXTENSION),
             (lambda: Road.from_bytes(b""), Status.TOO_FEW_ELEMENTS),
             (lambda: Road().locate(np.zeros((2, 2))), Status.TOO_FEW_ELEMENTS),
             (lambda: small.save(tmp_path / "no" / "folder.road"), Status.FILE_NOT_WRITTEN)]
    for call, status in cases:
        with pytest.raises(KestoError) as caught:
            call()
            pytest.fail(f"nothing told {status.name}")
        assert caught.value.status == status
        if status == Status.CURVE_DOES_NOT_FIT:
            assert (caught.value.record, caught.value.list) == (1, ListOf.INTERSECTIONS)
    assert len(small.elements) == 3 and len(small.vertical_curves) == 2


def test_skipped_records_warn():
    with pytest.warns(RecordsSkippedWarning, match="2 records could not be read, the first one in line 5"):
        road = Road.open(DATA / "malformed/real_overflows.road")
    first = road.reading_findings()[0]
    assert (first.line, first.reason, first.section) == (5, ReadingReason.NUMBER_TOO_LARGE, "Element")
    assert road.record_line(ListOf.ELEMENTS, 0) == 4 and road.record_line(ListOf.PLATES, 0, key=1) is None


def test_stake_texts_come_back():
    road = Road()
    assert road.format_stake(12345.678, 1) == "+K12+345.678" and road.parse_stake(" k12+345.678") == (12345.678, 0)
    for call, status in ((lambda: road.format_stake(np.nan), Status.ARGUMENT_NOT_FINITE),
                         (lambda: road.parse_stake("Z1+000"), Status.NO_MILEAGE_IN_TEXT)):
        with pytest.raises(KestoError) as caught:
            call()
        assert caught.value.status == status


def test_numbers_are_those_of_the_header():
    header = (ROOT / "include/kesto_road/kesto_road.h").read_text(encoding="utf-8")
    for kind, prefix, ours in (("KestoStatus", "KESTO_", Status), ("KestoList", "KESTO_LIST_", ListOf),
                               ("KestoLimit", "KESTO_LIMIT_", Limit)):
        body = re.search(rf"enum {kind} {{(.*?)\n}};", header, re.DOTALL)[1]
        theirs = {name[len(prefix):]: int(value) for name, value in re.findall(r"(KESTO_\w+) = (-?\d+)", body)}
        assert theirs == {each.name: each.value for each in ours}


def test_records_are_those_of_the_header():
    layout = (ROOT / "include/kesto_road/layout.h").read_text(encoding="utf-8")
    names = {"Stake": "StakeCoordinate", "Plate": "SectionPlate", "SectionMileage": "SectionMileageIndex",
             "EaseParameters": "EaseParam"}
    for record in Record.__subclasses__():
        theirs = names.get(record.__name__, record.__name__)
        offsets = {re.sub("([A-Z])", r"_\1", field).lower(): int(offset) for field, offset in
                   re.findall(rf"KESTO_ASSERT_OFFSET\({theirs}, (\w+), (\d+)\)", layout)}
        ours = {name: offset for name, (_, offset, *_) in record.dtype.fields.items()}
        assert f"KESTO_ASSERT_SIZE({theirs}, {record.dtype.itemsize})" in layout
        assert {**ours, **offsets} == ours and set(ours.values()) - set(offsets.values()) <= {0}


@pytest.mark.parametrize("off", [-8, 8])
def test_a_record_of_another_size_is_told(monkeypatch, off):
    other = np.dtype({"names": ["back_mileage"], "formats": ["f8"], "itemsize": 16 + off})
    monkeypatch.setattr(BrokenChain, "dtype", other)
    road = Road()
    road._call("AddBrokenChain", np.zeros(2).ctypes.data)
    with pytest.raises(ImportError, match="BrokenChain"):
        _native._check_size(BrokenChain, lambda memory: road._ask("GetBrokenChain", 0, memory))
