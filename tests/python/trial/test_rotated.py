"""Axes turn, and everything that lies in the laboratory goes along."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import Plate, loaded_plate, walking
from moxPY.trial import Trial
from moxPY.trial.up_axis import up_axis
from scipy.spatial.transform import Rotation
from support.independent_readers import read_with_c3d, read_with_ezc3d
from support.read_c3d import read_c3d, track
from support.small_trials import example_trial, new_trial
from support.store_tree import snapshot

TURNS = {
    "y to z": [[1, 0, 0], [0, 0, -1], [0, 1, 0]],
    "about z": [[0, -1, 0], [1, 0, 0], [0, 0, 1]],
    "about any axis": Rotation.from_rotvec([0.3, -1.1, 0.7]).as_matrix(),
}
each_turn = pytest.mark.parametrize("matrix", TURNS.values(), ids=TURNS)
FRAMES = 12


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    words = np.arange(FRAMES) * 256.0 + 7
    words[3:5] = -1
    poses = np.tile(np.eye(4), (FRAMES, 1, 1))
    poses[:, :3, :3] = Rotation.from_rotvec(track(FRAMES) / 40).as_matrix()
    poses[:, :3, 3] = track(FRAMES, 9.0)
    labels = {"ANGLES": "Knee", "FORCES": "Push", "MOMENTS": "Bend", "POWERS": "Work"}
    made = read_c3d(
        tmp_path,
        {name: track(FRAMES, 50.0 * i) for i, name in enumerate(["A", "B", *labels.values()])},
        residuals={"B": words},
        parameters={
            **{f"POINT:{kind}": [label] for kind, label in labels.items()},
            "POINT:X_SCREEN": "+X",
            "POINT:Y_SCREEN": "+Y",
        },
        rotations={"Pelvis": poses},
    )
    return Trial.of(made)


def written(trial: Trial, folder: Path) -> Path:
    path = folder / "written.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    return path


@each_turn
def test_what_lies_in_the_laboratory_turns(trial: Trial, tmp_path: Path, matrix: Any) -> None:
    before = snapshot(trial)
    turned = trial.rotated(matrix)
    assert snapshot(trial) == before
    for label, channel in trial.points.items():
        expected = channel.values
        if channel.kind in ("markers", "forces", "moments"):
            expected = np.einsum("ij,fj->fi", np.asarray(matrix, float), expected)
        np.testing.assert_allclose(turned.points[label].values, expected, atol=1e-12)
        assert turned.points[label].unit == channel.unit
        for name in ("residuals", "cameras"):
            held, kept = getattr(channel, name), getattr(turned.points[label], name)
            assert kept.tobytes() == held.tobytes()
    full = np.eye(4)
    full[:3, :3] = matrix
    expected = np.einsum("ij,sjk->sik", full, trial.rotations["Pelvis"])
    np.testing.assert_allclose(turned.rotations["Pelvis"], expected, atol=1e-12)

    path = written(turned, tmp_path)
    recording = read_with_c3d(path)
    for i, label in enumerate(turned.points):
        np.testing.assert_allclose(
            recording.points[:, i], turned.points[label].values, rtol=1e-6, atol=1e-4
        )
    read = read_with_ezc3d(path).rotations
    assert read is not None
    np.testing.assert_allclose(read[:, 0], expected, rtol=1e-6, atol=1e-4)


@each_turn
def test_platforms_turn_with_what_they_measure(tmp_path: Path, matrix: Any) -> None:
    trial = Trial.of(loaded_plate(tmp_path, Plate(), walking()))
    turned = trial.rotated(matrix)
    old, new = trial.platforms[0], turned.platforms[0]
    turn = np.asarray(matrix, float)
    np.testing.assert_allclose(new.corners, old.corners @ turn.T, rtol=1e-6, atol=1e-3)
    np.testing.assert_array_equal(new.origin, old.origin)
    for part in ("force", "moment", "point"):
        expected = getattr(old.wrench(), part) @ turn.T
        bound = 1e-5 * np.nanmax(np.abs(expected))
        np.testing.assert_allclose(getattr(new.wrench(), part), expected, atol=bound)
    for label, channel in trial.analogs.items():
        np.testing.assert_array_equal(turned.analogs[label].values, channel.values)
    again = Trial.of(_moxPY.moxReadAcquisition(str(written(turned, tmp_path))))
    np.testing.assert_array_equal(again.platforms[0].corners, new.corners)


@pytest.mark.parametrize("shape", [(12,), (1, 12), (4, 3)], ids=str)
def test_corners_turn_in_whatever_dimensions_they_have(
    tmp_path: Path, shape: tuple[int, ...]
) -> None:
    trial = Trial.of(loaded_plate(tmp_path, Plate(), walking()))
    old = trial.platforms[0].corners
    group = trial.metadata["FORCE_PLATFORM"]
    group["CORNERS"] = group["CORNERS"].reshape(shape)
    turned = trial.rotated(TURNS["about any axis"])
    new = turned.platforms[0].corners
    np.testing.assert_allclose(new, old @ TURNS["about any axis"].T, rtol=1e-6, atol=1e-3)
    assert turned.metadata["FORCE_PLATFORM"].entry("CORNERS").shape == shape


def test_corners_in_whole_numbers_turn_without_rounding(tmp_path: Path) -> None:
    trial = Trial.of(loaded_plate(tmp_path, Plate(), walking()))
    group = trial.metadata["FORCE_PLATFORM"]
    corners = np.rint(group["CORNERS"]).astype(int)
    del group["CORNERS"]
    group["CORNERS"] = corners
    turned = trial.rotated(TURNS["about any axis"])
    expected = corners[0] @ TURNS["about any axis"].T
    np.testing.assert_allclose(turned.platforms[0].corners, expected, rtol=1e-6, atol=1e-3)
    np.testing.assert_array_equal(trial.rotated(np.eye(3)).platforms[0].corners, corners[0])


def test_turning_back_gives_what_was(trial: Trial) -> None:
    back = trial.rotated(TURNS["y to z"]).rotated(np.transpose(TURNS["y to z"]))
    np.testing.assert_array_equal(back.points.values, trial.points.values)
    assert _moxPY.moxGetMetaData(back, "POINT", "Y_SCREEN")["info"]["values"] == "+Y"


@pytest.mark.parametrize(
    ("matrix", "screen"),
    [
        (TURNS["y to z"], ("+X", "+Z")),
        (TURNS["about z"], ("+Y", "-X")),
        (TURNS["about any axis"], ("+X", "+Y")),
    ],
)
def test_the_screen_follows_where_it_can(trial: Trial, matrix: Any, screen: Any) -> None:
    turned = trial.rotated(matrix)
    for entry, expected in zip(("X_SCREEN", "Y_SCREEN"), screen, strict=True):
        assert _moxPY.moxGetMetaData(turned, "POINT", entry)["info"]["values"] == expected


@pytest.mark.parametrize(
    ("matrix", "message"),
    [
        (np.diag([1, 1, -1]), "the matrix is no rotation: it stretches or mirrors"),
        (2 * np.eye(3), "the matrix is no rotation: it stretches or mirrors"),
        (np.eye(3) + 1e-5, "the matrix is no rotation: it stretches or mirrors"),
        (np.full((3, 3), np.nan), "the matrix is no rotation: it stretches or mirrors"),
        (np.eye(4), r"the rotation: expected an array of shape \(3, 3\) = \(3, 3\), got \(4, 4\)"),
    ],
)
def test_other_matrices_are_refused(trial: Trial, matrix: Any, message: str) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError, match=f"^{message}$"):
        trial.rotated(matrix)
    assert snapshot(trial) == before


# Upright.


def test_the_vertical_of_platforms_becomes_the_axis() -> None:
    trial = Trial.of(example_trial())
    assert up_axis(trial) == 2
    lying = trial.y_up()
    assert up_axis(lying) == 1
    label = trial.markers.labels[0]
    x, y, z = trial.markers[label].values.T
    np.testing.assert_array_equal(lying.markers[label].values, np.column_stack([x, z, -y]))
    np.testing.assert_array_equal(lying.z_up().markers[label].values, trial.markers[label].values)
    np.testing.assert_array_equal(trial.z_up().markers.values, trial.markers.values)


@pytest.mark.parametrize("axis", [0, 1, 2])
@pytest.mark.parametrize("verb", ["x_up", "y_up", "z_up"])
def test_without_platforms_the_screen_tells_the_vertical(
    trial: Trial, axis: int, verb: str
) -> None:
    _moxPY.moxSetMetaDataValue(trial, "POINT", "Y_SCREEN", "+" + "XYZ"[axis])
    target = {"x_up": 0, "y_up": 1, "z_up": 2}[verb]
    turned = getattr(trial, verb)()
    height = trial.markers["A"].values[:, axis]
    np.testing.assert_array_equal(turned.markers["A"].values[:, target], height)
    values = _moxPY.moxGetMetaData(turned, "POINT", "Y_SCREEN")["info"]["values"]
    assert values == "+" + "XYZ"[target]
    # A right-handed trial stays right-handed.
    old, new = (np.cross(t.markers["A"].values, t.markers["B"].values) for t in (trial, turned))
    np.testing.assert_allclose(new[:, target], old[:, axis], rtol=1e-12)


def test_without_a_vertical_nothing_is_guessed() -> None:
    trial = Trial.of(new_trial())
    for verb in (trial.x_up, trial.z_up, trial.y_up):
        with pytest.raises(
            ValueError, match=r"^nothing tells which axis points upwards: no force "
        ):
            verb()
