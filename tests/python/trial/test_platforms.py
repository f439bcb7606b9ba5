"""Force platforms of a trial: what they are, what they measure, and that both interfaces agree."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from devices.plates import (
    CENTRE,
    DIRECTIONS,
    MATRIX,
    NAMES,
    ORIGINS,
    SAMPLES,
    Array,
    Load,
    Plate,
    loaded_plate,
    read_plates,
    step_on,
    walking,
)
from moxPY.trial import Channel, Platform, Trial, Wrench
from moxPY.trial.up_axis import up_axis
from support.small_trials import example_trial, read_trial
from support.store_tree import snapshot

SAMPLE_FILES = ["TYPE-2.C3D", "TYPE-3.c3d", "TYPE-4.C3D", "gait-pig.c3d", "2198928.c3d"]


def standing(plate: Plate, folder: Path, load: Load | None = None) -> tuple[Trial, Platform]:
    trial = Trial.of(loaded_plate(folder, plate, load or walking()))
    return trial, trial.platforms[0]


def assert_near(actual: Array, expected: Array) -> None:
    bound = 1e-9 * max(float(np.nanmax(np.abs(expected))), 1.0)
    np.testing.assert_allclose(actual, expected, rtol=0.0, atol=bound)


def assert_parts(wrench: Wrench, expected: dict[str, Array]) -> None:
    for part, key in {"force": "F", "moment": "M", "point": "P"}.items():
        assert_near(getattr(wrench, part), expected[key])


# What a platform is.


def test_a_platform_says_what_it_is(tmp_path: Path) -> None:
    plate = Plate(4, DIRECTIONS["tilted"])
    _, platform = standing(plate, tmp_path)
    assert (platform.type, platform.index) == (4, 0)
    np.testing.assert_array_equal(platform.corners, plate.corners)
    np.testing.assert_array_equal(platform.origin, plate.origin)
    assert platform.calibration is not None
    np.testing.assert_array_equal(platform.calibration, MATRIX)
    assert_near(platform.frame[:3, :3], plate.axes)
    assert_near(platform.frame[:3, 3], CENTRE)
    np.testing.assert_array_equal(platform.frame[3], [0, 0, 0, 1])
    for array in (platform.corners, platform.origin, platform.calibration, platform.frame):
        assert not array.flags.writeable
    assert repr(platform) == "<platform 0: type 4, O1_0 O2_0 O3_0 O4_0 O5_0 O6_0>"


def test_without_a_calibration_there_is_none(tmp_path: Path) -> None:
    assert standing(Plate(2), tmp_path)[1].calibration is None


@pytest.mark.parametrize("name", SAMPLE_FILES)
def test_the_functions_describe_the_same_platforms(sample: Any, name: str) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
    described, _ = _moxPY.moxGetForcePlatforms(trial)
    assert len(trial.platforms) == len(described) > 0
    for platform, right in zip(trial.platforms, described, strict=True):
        assert platform.type == right["type"]
        np.testing.assert_array_equal(platform.corners, right["corners"].T)
        np.testing.assert_array_equal(platform.origin, right["origin"])
        calibration = platform.calibration
        assert np.array_equal([] if calibration is None else calibration, right["cal_matrix"])
        assert len(platform.channels) == len(right["channels"])
        for channel, values in zip(platform.channels, right["channels"].values(), strict=True):
            np.testing.assert_array_equal(channel.values, values)
            same, _ = _moxPY.moxGetAnalog(trial, channel.index)
            np.testing.assert_array_equal(same, values)


def test_looking_at_platforms_changes_nothing(sample: Any) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample("TYPE-3.c3d"))))
    before = snapshot(trial)
    for plate in trial.platforms:
        assert plate.channels
        assert plate.units
        assert repr(plate).startswith("<platform ")
        assert plate.corners.shape == (4, 3)
    assert repr(trial.platforms) == "<platforms (4): types 3, 3, 2, 2>"
    assert snapshot(trial) == before


def test_platforms_are_a_sequence(tmp_path: Path) -> None:
    trial = Trial.of(read_plates(tmp_path, [Plate(2), Plate(3), Plate(1)], 5))
    assert [plate.type for plate in trial.platforms] == [2, 3, 1]
    assert [plate.type for plate in trial.platforms[1:]] == [3, 1]
    assert trial.platforms[-1].index == 2
    assert trial.platforms[2] == trial.platforms[-1] != trial.platforms[0]
    assert trial.platforms[1] in trial.platforms
    assert {trial.platforms[1]} == {trial.platforms[-2]}
    for index in (3, -4):
        with pytest.raises(IndexError, match=f"no force platform {index}: the trial has 3"):
            trial.platforms[index]


@pytest.mark.parametrize("make", [_moxPY.moxNewAcquisition, _moxPY.new_data_store, None])
def test_a_trial_without_platforms_has_an_empty_sequence(tmp_path: Path, make: Any) -> None:
    trial = Trial.of(make() if make else read_trial(tmp_path))
    assert list(trial.platforms) == []
    assert repr(trial.platforms) == "<platforms (0): none>"
    with pytest.raises(IndexError):
        trial.platforms[0]


def test_a_platform_that_the_trial_lost_says_so() -> None:
    trial = Trial.of(example_trial())
    plate = trial.platforms[1]
    _moxPY.moxRemoveMetaData(trial, "FORCE_PLATFORM")
    with pytest.raises(IndexError, match="no force platform 1: the trial has 0"):
        plate.wrench()
    assert "no force platform 1" in repr(plate)
    trial.close()
    with pytest.raises(ValueError, match="the trial was closed"):
        plate.corners  # noqa: B018


# Channels.


def test_channels_know_their_labels_and_indices(tmp_path: Path) -> None:
    plates = [Plate(2), Plate(3)]
    trial = Trial.of(read_plates(tmp_path, plates, 5))
    channels = trial.platforms[1].channels
    assert all(isinstance(channel, Channel) for channel in channels)
    assert [channel.label for channel in channels] == [f"{name}_1" for name in NAMES[3]]
    assert [channel.index for channel in channels] == list(range(6, 14))


def test_points_of_all_kinds_are_counted_in_one_sequence(tmp_path: Path) -> None:
    trial = Trial.of(read_trial(tmp_path))
    indices = {label: channel.index for label, channel in trial.points.items()}
    assert list(indices.values()) == list(range(len(indices)))
    for label, index in indices.items():
        values, _ = _moxPY.moxGetPoint(trial, index)
        np.testing.assert_array_equal(values, trial.points[label].values)


def test_renamed_and_moved_channels_stay_the_platforms(tmp_path: Path) -> None:
    plates = [Plate(2), Plate(3)]
    trial = Trial.of(read_plates(tmp_path, plates))
    step_on(trial, plates[1], walking(), 1)
    before = trial.platforms[1].wrench()
    trial.analogs.rename(lambda label: f"new {label}")
    for label in ("new Fx_0", "new EMG"):
        del trial.analogs[label]
    after = trial.platforms[1].wrench()
    assert_parts(after, {"F": before.force, "M": before.moment, "P": before.point})
    channels = trial.platforms[1].channels
    assert [channel.label for channel in channels] == [f"new {name}_1" for name in NAMES[3]]
    assert [channel.index for channel in channels] == list(range(5, 13))
    lost = trial.platforms[0]
    assert [channel.label for channel in lost.channels] == [f"new {n}_0" for n in NAMES[2][1:]]
    assert np.isnan(lost.wrench().force).all()
    assert lost.wrench().force.shape == (SAMPLES, 3)
    assert not lost.wrench().contact.any()


# Wrenches.


@pytest.mark.parametrize("type_number", NAMES)
@pytest.mark.parametrize("direction", DIRECTIONS)
@pytest.mark.parametrize("origin", ORIGINS)
def test_a_known_load_comes_back(
    tmp_path: Path, type_number: int, direction: str, origin: str
) -> None:
    plate = Plate(type_number, DIRECTIONS[direction], ORIGINS[origin])
    load = walking()
    trial, platform = standing(plate, tmp_path, load)
    free = np.zeros_like(load.force)
    free[:, 2] = load.free_moment
    below = np.tile(-plate.effective_origin, (SAMPLES, 1))
    measured = {"F": load.force, "M": plate.moment_at_origin(load), "P": below}
    assert_parts(platform.wrench(), plate.at_point(load))
    assert_parts(platform.wrench(at="origin"), plate.at_origin(load))
    assert_parts(platform.wrench(frame="plate"), {"F": load.force, "M": free, "P": load.place})
    assert_parts(platform.wrench(at="origin", frame="plate"), measured)
    assert platform.wrench().contact.all()
    np.testing.assert_array_equal(platform.wrench().time, trial.analogs.time)


@pytest.mark.parametrize("name", [*SAMPLE_FILES, "Eb015pi.c3d", "kyowadengyo.c3d"])
def test_the_functions_give_the_same_wrenches(sample: Any, name: str) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
    applied = _moxPY.moxGetGroundReactionWrenches(trial)
    measured = _moxPY.moxGetForcePlatformWrenches(trial)
    strict = _moxPY.moxGetGroundReactionWrenches(trial, 50.0)
    for number, plate in enumerate(trial.platforms):
        for wrench, right in (
            (plate.wrench(), applied[number]),
            (plate.wrench(at="origin"), measured[number]),
            (plate.wrench(50.0), strict[number]),
        ):
            np.testing.assert_array_equal(wrench.force, right["F"])
            np.testing.assert_array_equal(wrench.moment, right["M"])
            np.testing.assert_array_equal(wrench.point, right["P"])


@pytest.mark.parametrize("direction", DIRECTIONS)
@pytest.mark.parametrize("place", ["cop", "origin"])
@pytest.mark.parametrize("frame", ["lab", "plate"])
def test_contact_is_where_the_platform_carries_the_threshold(
    tmp_path: Path, direction: str, place: Any, frame: Any
) -> None:
    trial = Trial.of(read_plates(tmp_path, [Plate(2, DIRECTIONS[direction])], 6))
    trial.analogs["Fz_0"] = [30.0, -30.0, 29.999, 0.0, np.nan, -31.0]
    wrench = trial.platforms[0].wrench(30.0, at=place, frame=frame)
    assert wrench.contact.tolist() == [True, True, False, False, False, True]
    assert wrench.contact.dtype == np.bool_
    seen = wrench.contact if place == "cop" else np.ones(6, bool)
    np.testing.assert_array_equal(np.isfinite(wrench.point).all(axis=1), seen)


def test_a_wrench_is_read_only(tmp_path: Path) -> None:
    wrench = standing(Plate(2), tmp_path)[1].wrench()
    for array in (wrench.force, wrench.moment, wrench.point, wrench.time, wrench.contact):
        assert not array.flags.writeable
    with pytest.raises(AttributeError):
        wrench.force = wrench.moment  # type: ignore[misc]
    assert repr(wrench) == "<wrench: 700 samples, 700 with contact, N, N, mm>"


@pytest.mark.parametrize(
    ("options", "text"),
    [
        ({"threshold": -1.0}, "a threshold is a number that is not negative, not -1"),
        ({"threshold": float("nan")}, "a threshold is a number that is not negative, not nan"),
        ({"at": "COP"}, "at is 'cop' or 'origin', not 'COP'"),
        ({"frame": "global"}, "frame is 'lab' or 'plate', not 'global'"),
    ],
)
def test_what_a_wrench_is_not(tmp_path: Path, options: Any, text: str) -> None:
    plate = standing(Plate(2), tmp_path)[1]
    with pytest.raises(ValueError, match=text):
        plate.wrench(**options)


@pytest.mark.parametrize("threshold", ["x", None, [20.0]])
def test_a_threshold_is_a_number(tmp_path: Path, threshold: Any) -> None:
    trial, plate = standing(Plate(2), tmp_path)
    for ask in plate.wrench, plate.reaction, trial.platforms.detect_events:
        with pytest.raises(TypeError) as caught:
            ask(threshold)
        assert str(caught.value) == f"a threshold is a number, not {type(threshold).__name__}"
    assert len(plate.wrench(np.float32(20.0))) == len(plate.wrench(20))


def test_a_platform_that_was_turned_in_the_laboratory(tmp_path: Path) -> None:
    load = walking()
    trial, platform = standing(Plate(2, DIRECTIONS["z down"]), tmp_path, load)
    for direction in DIRECTIONS.values():
        turned = Plate(2, direction, centre=CENTRE + 100.0)
        info = {"format": "Real", "values": [turned.corners.tolist()]}
        _moxPY.moxSetMetaData(trial, "FORCE_PLATFORM", "CORNERS", info)
        np.testing.assert_array_equal(platform.corners, turned.corners)
        assert_parts(platform.wrench(), turned.at_point(load))


# Units.


def test_units_are_those_of_the_channels(tmp_path: Path) -> None:
    trial = Trial.of(read_plates(tmp_path, [Plate(number) for number in NAMES], 4))
    trial.markers["M"] = np.zeros((trial.frames, 3))
    trial.markers.unit = "m"
    for label in trial.analogs.labels:
        trial.analogs[label].unit = "N"
    for label in ("Mz_0", "Mx_1", "O4_3"):
        trial.analogs[label].unit = "Nm"
    assert [plate.units for plate in trial.platforms] == [("N", "Nm", "m")] * 4
    trial.analogs["O1_3"].unit = trial.analogs["O4_3"].unit = "V"
    assert trial.platforms[3].units == ("", "", "m")
    assert trial.platforms[3].wrench().units.point == "m"


def test_without_markers_the_metadata_tell_the_unit_of_places(tmp_path: Path) -> None:
    trial = Trial.of(read_plates(tmp_path, [Plate(1)], 4))
    assert not trial.markers
    trial.metadata["POINT"]["UNITS"] = "cm"
    assert trial.platforms[0].units.point == "cm"
    trial.metadata["POINT"]["UNITS"] = ["cm", "deg"]
    assert trial.platforms[0].units.point == ""


# Reactions.

# Axes of a plate as columns, and the axis of the laboratory that points upwards.
LABORATORIES: dict[str, tuple[Array, int]] = {
    "z up, plate's z down": (DIRECTIONS["z down"], 2),
    "z up, plate's z up": (DIRECTIONS["z up"], 2),
    "z up, turned": (DIRECTIONS["turned about the vertical"], 2),
    "y up, plate's z up": (np.array([[0.0, 1, 0], [0, 0, 1], [1, 0, 0]]), 1),
    "y up, plate's z down": (np.array([[1.0, 0, 0], [0, 0, -1], [0, 1, 0]]), 1),
    "x up": (DIRECTIONS["on the wall"], 0),
}


@pytest.mark.parametrize("laboratory", LABORATORIES)
@pytest.mark.parametrize("sign", [1.0, -1.0])
def test_the_reaction_pushes_the_person_upwards(
    tmp_path: Path, laboratory: str, sign: float
) -> None:
    axes, up = LABORATORIES[laboratory]
    plate = Plate(2, axes)
    load = walking()
    load.force *= sign
    load.free_moment *= sign
    right = plate.at_point(load)
    if right["F"][:, up].mean() < 0.0:
        right["F"], right["M"] = -right["F"], -right["M"]
    reaction = standing(plate, tmp_path, load)[1].reaction()
    assert reaction.force[:, up].min() > 0.0
    assert_parts(reaction, right)
    assert not reaction.force.flags.writeable
    assert not reaction.moment.flags.writeable


def test_a_slope_counts_less_than_level_platforms(tmp_path: Path) -> None:
    """The slope alone would make the x axis the upright one."""
    steep = np.array([[0.6, 0.0, 0.8], [0.0, 1.0, 0.0], [-0.8, 0.0, 0.6]])
    plates = [Plate(2, steep), Plate(2, DIRECTIONS["z down"], centre=CENTRE + 900.0)]
    trial = Trial.of(read_plates(tmp_path, plates, 3))
    assert up_axis(trial) == 2
    trial.analogs["Fx_0"] = [500.0, 500.0, 500.0]  # down the slope: along x and against z
    trial.analogs["Fz_0"] = [100.0, 100.0, 100.0]
    assert (trial.platforms[0].reaction().force[:, 2] > 0.0).all()


def test_no_axis_is_upright_without_platforms(tmp_path: Path) -> None:
    assert up_axis(Trial.of(read_trial(tmp_path))) is None
    tilted = Trial.of(read_plates(tmp_path, [Plate(2, DIRECTIONS["tilted"])], 3))
    assert up_axis(tilted) == 2


def test_each_platform_has_one_sign_of_its_own(tmp_path: Path) -> None:
    plates = [Plate(2, DIRECTIONS["z down"]), Plate(2, DIRECTIONS["z up"], centre=CENTRE + 700.0)]
    trial = Trial.of(read_plates(tmp_path, plates, 6))
    trial.analogs["Fz_0"] = [500.0, 500.0, -400.0, 500.0, 0.0, 1.0]  # force on the plate
    trial.analogs["Fx_0"] = [50.0, 0.0, 0.0, 0.0, 0.0, 0.0]
    trial.analogs["Fz_1"] = [0.0, 0.0, 600.0, 600.0, -600.0, -1.0]  # force on the person
    first, second = (plate.reaction() for plate in trial.platforms)
    np.testing.assert_array_equal(first.force[:, 2], [500.0, 500.0, -400.0, 500.0, 0.0, 1.0])
    np.testing.assert_array_equal(first.force[:, 0], [-50.0, 0.0, 0.0, 0.0, 0.0, 0.0])
    np.testing.assert_array_equal(second.force[:, 2], [0.0, 0.0, 600.0, 600.0, -600.0, -1.0])
    assert first.contact.tolist() == [True, True, True, True, False, False]
    strict = trial.platforms[0].reaction(450.0)
    assert strict.contact.tolist() == [True, True, False, True, False, False]


def test_an_unloaded_platform_keeps_its_signs(tmp_path: Path) -> None:
    trial = Trial.of(read_plates(tmp_path, [Plate(2, DIRECTIONS["z up"])], 3))
    trial.analogs["Fz_0"] = [-5.0, -4.0, -3.0]
    reaction = trial.platforms[0].reaction()
    np.testing.assert_array_equal(reaction.force[:, 2], [-5.0, -4.0, -3.0])
    assert not reaction.contact.any()


def test_platforms_without_a_plane_have_a_reaction_without_value() -> None:
    trial = Trial.of(example_trial())
    info = {"format": "Real", "values": np.zeros((2, 4, 3)).tolist()}
    _moxPY.moxSetMetaData(trial, "FORCE_PLATFORM", "CORNERS", info)
    assert np.isnan(trial.platforms[0].frame).all()
    assert np.isnan(trial.platforms[0].reaction().force).all()


@pytest.mark.parametrize("name", [*SAMPLE_FILES, "Eb015pi.c3d"])
def test_people_in_real_recordings_are_pushed_up(sample: Any, name: str) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
    carried = [plate.reaction() for plate in trial.platforms]
    carried = [reaction for reaction in carried if reaction.contact.sum() > 50]
    assert carried
    for reaction in carried:
        force = reaction.force[reaction.contact]
        assert force[:, 2].mean() > np.abs(force[:, :2].mean(axis=0)).max()


# Baselines.


@pytest.mark.parametrize("type_number", NAMES)
def test_a_baseline_is_taken_off(tmp_path: Path, type_number: int) -> None:
    plate = Plate(type_number)
    load = walking()
    load.force[:100] = load.place[:100] = load.free_moment[:100] = 0.0
    trial = Trial.of(loaded_plate(tmp_path, plate, load))
    true = {channel.label: channel.values for channel in trial.platforms[0].channels}
    measures_point = type_number == 1
    for i, label in enumerate(true):
        if not (measures_point and i in (3, 4)):
            trial.analogs[label] = true[label] + 3.0 * (i + 1)
    other = trial.analogs["EMG"].values
    time = trial.analogs.time
    assert trial.platforms[0].zero(time[0], time[99]) is None
    for label, values in true.items():
        assert_near(trial.analogs[label].values, values)
    np.testing.assert_array_equal(trial.analogs["EMG"].values, other)
    wrench = trial.platforms[0].wrench()
    for part, key in {"force": "F", "point": "P"}.items():
        assert_near(getattr(wrench, part)[100:], plate.at_point(load)[key][100:])


def test_the_stretch_has_both_ends_on_the_trials_clock(tmp_path: Path) -> None:
    trial = Trial.of(read_plates(tmp_path, [Plate(2)], 20, first_frame=31))
    assert trial.analogs.time[[0, -1]].tolist() == [0.30, 0.49]
    values = np.arange(20.0) ** 2
    trial.analogs["Fz_0"] = values
    trial.platforms[0].zero(0.32, 0.35)
    assert_near(trial.analogs["Fz_0"].values, values - (4 + 9 + 16 + 25) / 4)
    trial.platforms[0].zero(0.1 * 3, 0.3)  # 0.30000000000000004 is the first sample's instant
    assert trial.analogs["Fz_0"].values[0] == 0.0


def test_a_lost_channel_does_not_move_the_others(tmp_path: Path) -> None:
    """Px and Py of type 1 have no baseline, whichever channel before them is gone."""
    trial, plate = standing(Plate(1), tmp_path)
    trial.analogs["Mz_0"].unit = "Nmm"
    before = dict(trial.analogs)
    points = {label: before[label].values for label in ("Px_0", "Py_0")}
    moment = before["Mz_0"].values
    del trial.analogs["Fx_0"]
    assert [channel.label for channel in plate.channels] == [f"{n}_0" for n in NAMES[1][1:]]
    assert plate.units == ("N", "Nmm", "mm")
    plate.zero(0.0, 1.0)
    for label, values in points.items():
        np.testing.assert_array_equal(trial.analogs[label].values, values)
    assert_near(trial.analogs["Mz_0"].values, moment - moment[:101].mean())


@pytest.mark.parametrize(("start", "stop"), [(0.5, 0.4), (2.0, 3.0), (-1.0, -0.5), (np.nan, 1.0)])
def test_an_empty_stretch_is_refused(tmp_path: Path, start: float, stop: float) -> None:
    trial, plate = standing(Plate(2), tmp_path, walking(100))
    before = trial.analogs.values
    with pytest.raises(
        ValueError, match=r"there is no sample from .*; the trial has 0 s to 0.99 s"
    ):
        plate.zero(start, stop)
    np.testing.assert_array_equal(trial.analogs.values, before)


def test_a_channel_without_numbers_in_the_stretch_is_named(tmp_path: Path) -> None:
    trial, plate = standing(Plate(2), tmp_path, walking(100))
    values = trial.analogs["Mz_0"].values.copy()
    values[:10] = np.nan
    trial.analogs["Mz_0"] = values
    before = trial.analogs.values
    with pytest.raises(ValueError, match=r"the channel 'Mz_0' has no numbers from 0.0 s to 0.09 s"):
        plate.zero(0.0, 0.09)
    np.testing.assert_array_equal(trial.analogs.values, before)


def test_the_stored_form_of_a_channel_stays(sample: Any, tmp_path: Path) -> None:
    trial = Trial.of(_moxPY.moxReadAcquisition(str(sample("Eb015pi.c3d"))))
    offsets = _moxPY.moxGetMetaData(trial, "ANALOG", "OFFSET")["info"]["values"]
    time = trial.analogs.time
    plate = trial.platforms[0]
    channel = plate.channels[2]
    expected = channel.values - channel.values[:20].mean()
    plate.zero(time[0], time[19])
    assert_near(channel.values, expected)
    kept = _moxPY.moxGetMetaData(trial, "ANALOG", "OFFSET")["info"]["values"]
    np.testing.assert_array_equal(kept, offsets)
    path = tmp_path / "zeroed.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    again = Trial.of(_moxPY.moxReadAcquisition(str(path)))
    written = again.platforms[0].channels[2].values
    np.testing.assert_allclose(written, expected, atol=1e-6 * abs(expected).max())
    np.testing.assert_array_equal(again.analogs["CH7"].values, trial.analogs["CH7"].values)
