"""Units change, and everything that is measured in them goes along."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import numpy as np
import pytest
from devices.plates import NAMES, Plate, loaded_plate, walking
from moxPY.trial import Trial, read
from moxPY.trial.units import parse_unit
from support.c3d_bytes import Analog, c3d_bytes
from support.independent_readers import read_with_c3d, read_with_ezc3d
from support.read_c3d import read_c3d, track
from support.small_trials import example_trial, new_trial
from support.store_tree import snapshot

FRAMES = 12
# What the channels of each type measure, in the order of the type.
MEASURED = {1: "fffppm", 2: "fffmmm", 3: "ffffffff", 4: "      "}


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    words = np.arange(FRAMES) * 256.0 + 7
    words[3:5] = -1
    poses = np.tile(np.eye(4), (FRAMES, 1, 1))
    poses[:, :3, 3] = track(FRAMES, 9.0)
    labels = {"ANGLES": "Knee", "FORCES": "Push", "MOMENTS": "Bend", "POWERS": "Work"}
    made = read_c3d(
        tmp_path,
        {name: track(FRAMES, 50.0 * i) for i, name in enumerate(["A", "B", *labels.values()])},
        residuals={"B": words},
        scale=0.5,
        analogs=[
            Analog("Load", track(FRAMES)[:, 0], units="kN"),
            Analog("EMG", track(FRAMES)[:, 1], units="V"),
            Analog("Goniometer", track(FRAMES)[:, 2], units="deg"),
            Analog("Reach", track(FRAMES)[:, 2], units="cm"),
        ],
        parameters={
            **{f"POINT:{kind}": [label] for kind, label in labels.items()},
            "POINT:UNITS": "mm",
            "POINT:FORCE_UNITS": "N",
            "POINT:MOMENT_UNITS": "Nmm/kg",
            "POINT:POWER_UNITS": "W/kg",
        },
        rotations={"Pelvis": poses},
    )
    return Trial.of(made)


FACTORS = {"A": 1e-3, "B": 1e-3, "Push": 1, "Bend": 1e-3, "Load": 1000, "Reach": 0.01}
UNITS = {"A": "m", "B": "m", "Push": "N", "Bend": "Nm/kg", "Load": "N", "Reach": "m"}


def test_samples_and_units_change_together(trial: Trial) -> None:
    before = snapshot(trial)
    converted = trial.in_units()
    assert snapshot(trial) == before
    for kind in ("points", "analogs"):
        for label, channel in getattr(trial, kind).items():
            new = getattr(converted, kind)[label]
            expected = channel.values * FACTORS.get(label, 1)
            np.testing.assert_allclose(new.values, expected, rtol=1e-14)
            assert new.unit == UNITS.get(label, channel.unit)
    pose, former = (t.rotations["Pelvis"] for t in (converted, trial))
    np.testing.assert_allclose(pose[:, :3, 3], former[:, :3, 3] * 1e-3, rtol=1e-6)
    np.testing.assert_array_equal(pose[:, :3, :3], former[:, :3, :3])
    assert converted.metadata["POINT"]["UNITS"] == "m"


def test_residuals_are_lengths_and_cameras_stay(trial: Trial) -> None:
    converted = trial.in_units("cm")
    for label, channel in trial.points.items():
        new, former = converted.points[label].residuals, channel.residuals
        np.testing.assert_array_equal(new == -1, former == -1)
        np.testing.assert_allclose(new[new > 0], former[former > 0] * 0.1, rtol=1e-6)
        np.testing.assert_array_equal(converted.points[label].cameras, channel.cameras)
    assert trial.points["B"].residuals[0] == 3.5


def test_residuals_that_are_stored_themselves_stay_residuals(tmp_path: Path) -> None:
    stored = np.array([0.0, 0.25, 0.5, 1.5, -1.0])
    made = read_c3d(tmp_path, {"A": track(5)}, residuals={"A": stored}, scale=1.0)
    converted = Trial.of(made).in_units("um")
    expected = np.where(stored < 0, -1, stored * 1000)
    np.testing.assert_allclose(converted.markers["A"].residuals, expected, rtol=1e-6)
    assert not converted.markers["A"].cameras.any()


def test_other_readers_find_the_units(trial: Trial, tmp_path: Path) -> None:
    path = tmp_path / "metres.c3d"
    converted = trial.in_units()
    converted.write(path)
    recording = read_with_c3d(path)
    for i, label in enumerate(converted.points):
        expected = converted.points[label].values
        np.testing.assert_allclose(recording.points[:, i], expected, rtol=1e-6)
    read_again = read_with_ezc3d(path).rotations
    assert read_again is not None
    np.testing.assert_allclose(read_again[:, 0], converted.rotations["Pelvis"], rtol=1e-6)
    again = read(path)
    for kind in ("markers", "forces", "moments", "powers", "analogs"):
        assert getattr(again, kind).units == getattr(converted, kind).units
    np.testing.assert_allclose(
        again.points["B"].residuals, converted.points["B"].residuals, rtol=1e-6
    )


@pytest.mark.parametrize("storage", ["integer", "real"])
def test_the_stored_samples_of_integers_stay(tmp_path: Path, storage: str) -> None:
    analogs = [Analog("Fx", np.arange(FRAMES), units="N", scale=0.25)]
    points = {"A": track(FRAMES, 5.0)}
    trial = read(c3d_bytes(points, analogs=analogs, storage=storage, scale=0.25))
    written = {}
    for name, one in {"as it was": trial, "metres": trial.in_units("m", "kN")}.items():
        one.write(tmp_path / f"{name}.c3d", storage="integer")
        written[name] = (tmp_path / f"{name}.c3d").read_bytes()
    data = FRAMES * (4 + 1) * 2
    former, new = (
        content[512 * (int.from_bytes(content[16:18], "little") - 1) :][:data]
        for content in written.values()
    )
    assert former == new


def on_plate(folder: Path, kind: int) -> Trial:
    """Somebody on a plate of a type, and a marker."""
    trial = Trial.of(loaded_plate(folder, Plate(kind), walking(40)))
    names = {"f": "N", "m": "Nmm", "p": "mm", " ": "V"}
    for name, letter in zip(NAMES[kind], MEASURED[kind], strict=True):
        trial.analogs[f"{name}_0"].unit = names[letter]
    trial.markers["A"] = np.zeros((trial.frames, 3))
    trial.markers.unit = "mm"
    return trial


@pytest.mark.parametrize(("length", "moment"), [("m", "Nm"), ("m", "Nmm"), ("mm", "Nm")])
@pytest.mark.parametrize("kind", [1, 2, 3, 4])
def test_platforms_stay_one_with_their_channels(
    tmp_path: Path, kind: int, length: str, moment: str
) -> None:
    trial = on_plate(tmp_path, kind)
    converted = trial.in_units(length, "kN", moment)
    size = {"m": 1e-3, "mm": 1.0}[length]
    old, new = trial.platforms[0], converted.platforms[0]
    np.testing.assert_allclose(new.corners, old.corners * size, rtol=1e-6)
    np.testing.assert_allclose(new.origin, old.origin * size, rtol=1e-6)
    factors = {"force": 1e-3, "moment": size * 1e-3, "point": size}
    for at in ("cop", "origin"):
        former, found = old.wrench(10.0, at), new.wrench(0.01, at)
        for part, factor in factors.items():
            expected = getattr(former, part) * factor
            bound = 1e-5 * np.nanmax(np.abs(expected))
            np.testing.assert_allclose(getattr(found, part), expected, rtol=1e-5, atol=bound)
    if kind != 4:
        assert found.units == ("kN", f"kN{length}", length)


def test_a_flattened_calibration_is_understood(tmp_path: Path) -> None:
    trial = on_plate(tmp_path, 4)
    group = trial.metadata["FORCE_PLATFORM"]
    group["CAL_MATRIX"] = np.ravel(group["CAL_MATRIX"])
    old, new = trial.platforms[0].wrench(), trial.in_units().platforms[0].wrench()
    np.testing.assert_allclose(new.force, old.force, rtol=1e-5, atol=1e-3)
    np.testing.assert_allclose(new.point, old.point * 1e-3, rtol=1e-4, atol=1e-5)


def test_calibrated_channels_with_units_turn_themselves(tmp_path: Path) -> None:
    trial = Trial.of(loaded_plate(tmp_path, Plate(4), walking(40)))
    for name, unit in zip(NAMES[4], ["N"] * 3 + ["Nmm"] * 3, strict=True):
        trial.analogs[f"{name}_0"].unit = unit
    trial.metadata["POINT"]["UNITS"] = "mm"
    converted = trial.in_units()
    assert converted.analogs["O4_0"].unit == "Nm"
    np.testing.assert_allclose(
        converted.analogs["O4_0"].values, trial.analogs["O4_0"].values * 1e-3, rtol=1e-12
    )
    old, new = trial.platforms[0].wrench(), converted.platforms[0].wrench()
    np.testing.assert_allclose(new.force, old.force, rtol=1e-5, atol=1e-3)
    np.testing.assert_allclose(new.point, old.point * 1e-3, rtol=1e-4, atol=1e-5)


def test_the_correction_of_points_keeps_its_meaning(tmp_path: Path) -> None:
    trial = Trial.of(loaded_plate(tmp_path, Plate(3), walking(40)))
    trial.metadata["POINT"]["UNITS"] = "mm"
    uncorrected = trial.platforms[0].wrench().point
    powers = np.array([6, 4, 2, 4, 2, 0] * 2)
    trial.metadata["FORCE_PLATFORM"]["FPCOPPOLY"] = (0.01 / 150.0**powers).reshape(1, 12)
    corrected = trial.platforms[0].wrench().point
    assert np.nanmax(np.abs(corrected - uncorrected)) > 1.0
    for label in trial.analogs:
        trial.analogs[label].unit = "N"
    np.testing.assert_allclose(
        trial.in_units().platforms[0].wrench().point, corrected * 1e-3, rtol=1e-4, atol=1e-6
    )


def test_there_and_back_is_where_it_was() -> None:
    trial = Trial.of(example_trial())
    back = trial.in_units().in_units("mm", "N", "Nmm")
    for kind in ("points", "analogs"):
        former, new = getattr(trial, kind).values, getattr(back, kind).values
        np.testing.assert_allclose(new, former, rtol=1e-14, equal_nan=True)
    np.testing.assert_allclose(back.platforms[0].corners, trial.platforms[0].corners, rtol=1e-6)


def test_what_is_in_the_units_already_is_a_copy() -> None:
    trial = Trial.of(new_trial())
    for label in trial.markers:
        trial.markers[label].unit = "m"
    converted = trial.in_units()
    np.testing.assert_array_equal(converted.points.values, trial.points.values)
    assert converted.this is not trial.this


@pytest.mark.parametrize(
    ("units", "message"),
    [
        ({"length": "N"}, "'N' is no known unit of a length"),
        ({"force": "Nm"}, "'Nm' is no known unit of a force"),
        ({"moment": "Nm/kg"}, "'Nm/kg' is no known unit of a moment"),
        ({"moment": "furlong"}, "'furlong' is no known unit of a moment"),
    ],
)
def test_other_units_are_refused(trial: Trial, units: Any, message: str) -> None:
    with pytest.raises(ValueError, match=f"^{message}$"):
        trial.in_units(**units)


@pytest.mark.parametrize(
    ("kind", "label", "unit", "quantity"),
    [("markers", "A", "Unknown", "length"), ("analogs", "Fy_0", "V", "force")],
)
def test_places_that_would_not_agree_are_refused(
    tmp_path: Path, kind: str, label: str, unit: str, quantity: str
) -> None:
    trial = on_plate(tmp_path, 2)
    getattr(trial, kind)[label].unit = unit
    before = snapshot(trial)
    message = (
        f"the unit '{unit}' of '{label}' among the {kind} is no known one of a {quantity}; "
        "assign the channel's unit first"
    )
    with pytest.raises(ValueError, match=f"^{message}$"):
        trial.in_units()
    assert snapshot(trial) == before


@pytest.mark.parametrize("unit", ["Unknown", "", "mm", "%BW"])
def test_results_of_another_unit_stay_with_it(trial: Trial, unit: str) -> None:
    for channel in (trial.forces["Push"], trial.moments["Bend"]):
        channel.unit = unit
        converted = getattr(trial.in_units(), channel.kind)[channel.label]
        assert converted.unit == unit
        np.testing.assert_array_equal(converted.values, channel.values)


@pytest.mark.parametrize(
    ("text", "quantity", "size", "per"),
    [
        ("mm", "length", 1e-3, ""),
        ("MM", "length", 1e-3, ""),
        (" m ", "length", 1.0, ""),
        ("in", "length", 0.0254, ""),
        ("N", "force", 1.0, ""),
        ("nt", "force", 1.0, ""),
        ("kN", "force", 1000.0, ""),
        ("lbf", "force", 4.4482216152605, ""),
        ("N/kg", "force", 1.0, "/kg"),
        ("ntmm", "moment", 1e-3, ""),
        ("NMM", "moment", 1e-3, ""),
        ("N.m", "moment", 1.0, ""),
        ("N*mm / kg", "moment", 1e-3, "/kg"),
        ("N·m", "moment", 1.0, ""),
        ("Newton-meters", "moment", 1.0, ""),
        ("kNcm", "moment", 10.0, ""),
        ("lbf in", "moment", 4.4482216152605 * 0.0254, ""),
    ],
)
def test_units_are_known_as_files_write_them(
    text: str, quantity: str, size: float, per: str
) -> None:
    unit = parse_unit(text)
    assert unit is not None
    assert (unit.quantity, unit.per) == (quantity, per)
    assert unit.size == pytest.approx(size, rel=1e-12)


@pytest.mark.parametrize("text", ["", "V", "deg", "W", "Unknown", "d.u.", "MN", "Mm", "g", "%BW"])
def test_others_are_not_guessed(text: str) -> None:
    assert parse_unit(text) is None
