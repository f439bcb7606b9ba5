"""MOT files: ground reaction forces, against loads that are known."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import numpy as np
import pytest
from devices.plates import CENTRE, Load, Plate, loaded_plate, read_plates, step_on
from formats.opensim_files import read_storage
from moxPY.trial import Trial
from numpy.typing import NDArray

Array = NDArray[np.float64]

SAMPLES = 240
NAMES = [
    *(f"ground_force_{{}}_{part}{axis}" for part in "vp" for axis in "xyz"),
    *(f"ground_torque_{{}}_{axis}" for axis in "xyz"),
]


def stance(first: int, stop: int, place: tuple[float, float]) -> Load:
    """Somebody who stands on a plate with z into the floor from one sample to another, on a
    place that drifts: what the plate feels of the person is against its z."""
    force, places, moment = np.zeros((SAMPLES, 3)), np.zeros((SAMPLES, 3)), np.zeros(SAMPLES)
    count = stop - first
    force[first:stop] = np.column_stack(
        [np.linspace(-40, 60, count), np.full(count, 25.0), np.linspace(-500, -900, count)]
    )
    places[first:stop, :2] = place
    places[first:stop, 0] += np.linspace(0.0, 40.0, count)
    moment[first:stop] = np.linspace(-3000.0, 4000.0, count)
    return Load(force, places, moment)


def named_units(trial: Trial) -> Trial:
    for label, channel in trial.analogs.items():
        channel.unit = "Nmm" if label.startswith("M") else "N"
    trial.metadata["POINT"]["UNITS"] = "mm"
    return trial


def on_one_plate(folder: Path) -> tuple[Trial, dict[str, Array]]:
    """A trial, and the wrench on the person in the laboratory, in N and mm, z up."""
    plate, load = Plate(2), stance(50, 200, (30.0, -80.0))
    trial = named_units(Trial.of(loaded_plate(folder, plate, load)))
    return trial, plate.at_point(load)


def columns(table: Any, key: str) -> Array:
    array: Array = table[[name.format(key) for name in NAMES]].to_numpy()
    return array


def y_up(vectors: Array) -> Array:
    """A right angle about x."""
    return np.column_stack([vectors[:, 0], vectors[:, 2], -vectors[:, 1]])


@pytest.mark.parametrize(("side", "sign"), [("measured", 1), ("person", 1), ("plate", -1)])
def test_a_known_load_in_metres_with_y_up(side: Any, sign: int, tmp_path: Path) -> None:
    trial, known = on_one_plate(tmp_path)
    trial.markers["A"] = np.zeros((SAMPLES, 3))
    (path,) = trial.export(
        tmp_path / "walk.mot", up="y", units=("m", "N", "Nm"), side=side, threshold=30.0
    )
    name, head, table = read_storage(path)
    assert name == "walk"
    facts = {"up": "y", "length_unit": "m", "force_unit": "N", "moment_unit": "Nm"}
    assert head.items() >= {**facts, "side": side, "threshold": "30.0", "inDegrees": "no"}.items()
    expected = np.hstack(
        [sign * y_up(known["F"]), y_up(known["P"]) / 1000, sign * y_up(known["M"]) / 1000]
    )
    expected[:50] = expected[200:] = 0.0
    # Geometry is single precision in files.
    np.testing.assert_allclose(columns(table, "1"), expected, rtol=1e-6, atol=1e-6)
    assert expected[120, 1] * sign > 500.0
    assert np.array_equal(table["time"], trial.analogs.time)


def test_channels_that_mean_the_force_on_the_plate(tmp_path: Path) -> None:
    trial, known = on_one_plate(tmp_path)
    for channel in trial.platforms[0].channels:
        channel.values = -channel.values
    read = {}
    for side in ("measured", "person", "plate"):
        (path,) = trial.export(tmp_path / f"{side}.mot", side=side)
        read[side] = columns(read_storage(path).table, "1")
    upwards = known["F"][120, 2]
    assert read["person"][120, 2] == pytest.approx(upwards)
    np.testing.assert_array_equal(read["measured"], read["plate"])
    np.testing.assert_array_equal(read["plate"][:, 3:6], read["person"][:, 3:6])
    np.testing.assert_array_equal(read["plate"][:, :3], 0.0 - read["person"][:, :3])


def test_nothing_is_turned_or_scaled_without_options(tmp_path: Path) -> None:
    trial, known = on_one_plate(tmp_path)
    (path,) = trial.export(tmp_path / "walk.mot")
    head, table = read_storage(path)[1:]
    found = columns(table, "1")
    np.testing.assert_allclose(found[50:200, 3:6], known["P"][50:200], rtol=1e-5)
    assert head["up"] == "z"
    assert (head["length_unit"], head["side"]) == ("mm", "measured")


def test_under_the_threshold_everything_is_zero(tmp_path: Path) -> None:
    trial, known = on_one_plate(tmp_path)
    (path,) = trial.export(tmp_path / "walk.mot", threshold=700.0)
    found = columns(read_storage(path).table, "1")
    loaded = known["F"][:, 2] >= 700.0
    assert 0 < np.count_nonzero(loaded) < 150
    assert (found[~loaded] == 0.0).all()
    assert (found[loaded, 2] >= 699.999).all()


def two_plates(folder: Path) -> tuple[Trial, list[dict[str, Array]]]:
    """Left on the first plate, then right on the second one and over to the first; the feet are
    where their loads are."""
    plates = [Plate(2), Plate(2, centre=np.add(CENTRE, [400.0, 0.0, 0.0]))]
    loads = [stance(20, 110, (0.0, 50.0)), stance(90, 200, (-100.0, -50.0))]
    acquisition = read_plates(folder, plates, SAMPLES)
    for number, (plate, load) in enumerate(zip(plates, loads, strict=True)):
        step_on(acquisition, plate, load, number)
    trial = named_units(Trial.of(acquisition))
    known = [plate.at_point(load) for plate, load in zip(plates, loads, strict=True)]
    for label, where in (("LHEE", known[0]), ("RHEE", known[1])):
        place = where["P"] + [0.0, 0.0, 40.0]
        trial.markers[label] = place
    return trial, known


def test_forces_by_feet(tmp_path: Path) -> None:
    trial, known = two_plates(tmp_path)
    (path,) = trial.export(tmp_path / "walk.mot", feet=True)
    table = read_storage(path).table
    assert list(table.columns) == ["time", *(n.format(k) for k in "rl" for n in NAMES)]
    for key, where, first, stop in (("l", known[0], 20, 110), ("r", known[1], 90, 200)):
        found = columns(table, key)
        expected = np.hstack([where["F"], where["P"], where["M"]])
        np.testing.assert_allclose(found[first:stop], expected[first:stop], rtol=1e-4, atol=1e-2)
        assert (found[:first] == 0.0).all()
        assert (found[stop:] == 0.0).all()


def test_a_foot_on_two_plates_has_one_force_that_does_the_same(tmp_path: Path) -> None:
    trial, known = two_plates(tmp_path)
    for label, offset in (("LHEE", -5000.0), ("RHEE", 0.0)):
        trial.markers[label] = np.tile(np.add(CENTRE, [200.0, offset, 0.0]), (SAMPLES, 1))
    (path,) = trial.export(tmp_path / "walk.mot", feet=True)
    table = read_storage(path).table
    assert (columns(table, "l") == 0.0).all()
    force, point, moment = np.split(columns(table, "r")[95:105], 3, axis=1)
    both = [{part: values[95:105] for part, values in where.items()} for where in known]
    np.testing.assert_allclose(force, both[0]["F"] + both[1]["F"], rtol=1e-6)
    about_zero = sum(where["M"] + np.cross(where["P"], where["F"]) for where in both)
    np.testing.assert_allclose(moment + np.cross(point, force), about_zero, rtol=1e-5)
    np.testing.assert_allclose(moment[:, :2], 0.0, atol=0.5)  # in Nmm: it is a free one
    np.testing.assert_allclose(point[:, 2], CENTRE[2], rtol=1e-6)


def test_whose_foot_it_is_has_to_be_known(tmp_path: Path) -> None:
    trial, _ = two_plates(tmp_path)
    del trial.markers["RHEE"]
    text = (
        "nothing tells whose foot is on force platform 1 at 0.2 s: both feet need a marker on "
        "heel, toe or ankle, such as 'LHEE' and 'RHEE'"
    )
    with pytest.raises(ValueError, match=rf"^{text}$"):
        trial.export(tmp_path / "walk.mot", feet=True)
    assert list(tmp_path.glob("*.mot")) == []


def test_the_walk_has_both_feet(walk: Trial, tmp_path: Path) -> None:
    by_plate, by_foot = (
        read_storage(walk.export(tmp_path / f"{feet}.mot", feet=feet, side="person")[0]).table
        for feet in (False, True)
    )
    # The right foot comes first, on the first platform.
    np.testing.assert_array_equal(columns(by_foot, "r")[:, :3], columns(by_plate, "1")[:, :3])
    np.testing.assert_array_equal(columns(by_foot, "l")[:, :3], columns(by_plate, "2")[:, :3])


def test_without_platforms(tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=r"^the trial has no force platforms, which MOT needs$"):
        Trial.new(frames=3).export(tmp_path / "walk.mot")


def test_a_platform_that_tells_no_force(tmp_path: Path) -> None:
    trial, _ = on_one_plate(tmp_path)
    trial.metadata["FORCE_PLATFORM"]["TYPE"] = [7]
    with pytest.raises(ValueError, match=r"^force platform 1 tells no force: its type is unknown"):
        trial.export(tmp_path / "walk.mot")
    assert list(tmp_path.glob("*.mot")) == []
