"""Channels of a trial: mappings of labels, and what a channel says of itself."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pandas
import pytest
from moxPY.trial import Channel, Gap, Trial
from support.read_c3d import read_c3d, track
from support.same_readings import reading_differences, readings
from support.small_trials import ANALOGS, POINTS, labels_of_type, new_trial, signal, trajectory
from support.store_tree import snapshot

KINDS = {
    "marker": "markers", "angle": "angles", "force": "forces", "moment": "moments",
    "power": "powers",
}  # fmt: skip


@pytest.fixture
def trial() -> Trial:
    return Trial.of(new_trial())


CLOSED = "^the trial was closed$"
REMOVED = "the channel 'LASI' was removed from the trial"

# Labels.


def test_each_kind_has_its_labels_in_the_order_of_the_file(rich_trial: Any) -> None:
    trial = Trial.of(rich_trial)
    for word, kind in KINDS.items():
        assert getattr(trial, kind).labels == list(getattr(trial, kind)) == labels_of_type(word)
    assert trial.points.labels == list(POINTS)
    assert trial.analogs.labels == list(ANALOGS)


def test_samples_are_those_of_the_functions(any_trial: Any) -> None:
    trial = Trial.of(any_trial)
    for label, values in _moxPY.moxGetPoints(any_trial)[0].items():
        np.testing.assert_array_equal(trial.points[label].values, values)
    for label, values in _moxPY.moxGetAnalogs(any_trial)[0].items():
        np.testing.assert_array_equal(trial.analogs[label].values, np.ravel(values))
        assert trial.analogs[label].values.shape == (trial.frames * trial.samples_per_frame,)


def test_a_label_that_a_file_repeats_is_numbered(tmp_path: Path) -> None:
    labels = [("A", track(3, 10)), ("B", track(3, 20)), ("A", track(3, 30)), ("A", track(3, 40))]
    trial = Trial.of(read_c3d(tmp_path, labels))
    assert trial.markers.labels == ["A", "B", "A_2", "A_3"]
    assert {key: (c.label, c.x[0]) for key, c in trial.markers.items()} == {
        "A": ("A", 10.0), "B": ("B", 20.0), "A_2": ("A", 30.0), "A_3": ("A", 40.0),
    }  # fmt: skip
    del trial.markers["A"]
    assert {key: c.x[0] for key, c in trial.markers.items()} == {"B": 20.0, "A": 30.0, "A_2": 40.0}


def test_points_number_a_label_that_two_kinds_share_as_the_functions_do(trial: Trial) -> None:
    trial.angles["LASI"] = np.full((trial.frames, 3), 7.0)
    stored = _moxPY.moxGetPoints(trial)[0]
    assert set(trial.points.labels) == set(stored)
    assert {"LASI", "LASI_2"} <= set(trial.points)
    for label, channel in trial.points.items():
        np.testing.assert_array_equal(channel.values, stored[label])
    assert trial.markers["LASI"].label == trial.angles["LASI"].label == "LASI"
    shared = {trial.points["LASI"].kind, trial.points["LASI_2"].kind}
    assert shared == {"markers", "angles"}


@pytest.mark.parametrize(
    ("label", "message"),
    [
        ("LKneeAngles", "no channel 'LKneeAngles' among the angles; nearest: LKneeAngle"),
        ("lkneeangle", "no channel 'lkneeangle' among the angles; nearest: LKneeAngle"),
        ("µ", "no channel 'µ' among the angles"),
        ("LKneeAngle\0", "no channel 'LKneeAngle\0' among the angles; nearest: LKneeAngle"),
    ],
)
def test_a_missing_label_names_the_nearest(trial: Trial, label: str, message: str) -> None:
    assert label not in trial.angles
    assert trial.angles.get(label) is None
    with pytest.raises(KeyError) as failure:
        trial.angles[label]
    assert failure.value.args == (message,)
    with pytest.raises(KeyError) as failure:
        del trial.angles[label]
    assert failure.value.args == (message,)


def test_what_is_no_text_is_no_label(trial: Trial) -> None:
    markers: Any = trial.markers
    assert 0 not in markers
    with pytest.raises(TypeError, match=r"^channels are found by labels, not by int$"):
        markers[0]
    with pytest.raises(TypeError, match=r"^channels are found by labels, not by tuple$"):
        del markers["LASI", "RASI"]
    with pytest.raises(TypeError, match=r"^a label is a str, not int$"):
        markers[0] = trajectory(0)
    with pytest.raises(ValueError, match=r"^a label has no NUL character: 'a\\x00b'$"):
        markers["a\0b"] = trajectory(0)
    with pytest.raises(TypeError, match=r"^a unit is a str, not NoneType$"):
        trial.markers["LASI"].unit = None  # type: ignore[assignment]
    with pytest.raises(ValueError, match=r"^a description has no NUL character: '\\x00'$"):
        trial.markers["LASI"].description = "\0"


# Renaming.


@pytest.mark.parametrize(
    ("change", "labels"),
    [
        ({"LASI": "Left"}, ["Left", "RASI"]),
        ({"LASI": "RASI", "RASI": "LASI"}, ["RASI", "LASI"]),
        ({"LASI": "LASI"}, ["LASI", "RASI"]),
        ({}, ["LASI", "RASI"]),
        (str.lower, ["lasi", "rasi"]),
        (lambda label: f"Ann:{label}", ["Ann:LASI", "Ann:RASI"]),
        ({"LASI": "Fußgelenk µ"}, ["Fußgelenk µ", "RASI"]),
    ],
)  # fmt: skip
def test_rename(rich_trial: Any, change: Any, labels: list[str]) -> None:
    trial = Trial.of(rich_trial)
    left, right = trial.markers["LASI"], trial.markers["RASI"]
    before = [left.values, right.values]
    trial.markers.rename(change)
    assert trial.markers.labels == labels == [left.label, right.label]
    for label, values in zip(labels, before, strict=True):
        np.testing.assert_array_equal(_moxPY.moxGetPoint(rich_trial, label)[0], values)
    for channel, values in zip([left, right], before, strict=True):
        np.testing.assert_array_equal(channel.values, values)


@pytest.mark.parametrize(
    ("change", "kind", "message"),
    [
        ({"LASI": "RASI"}, ValueError, "two channels would have the label 'RASI'"),
        ({"RASI": "X", "LASI": "X"}, ValueError, "two channels would have the label 'X'"),
        (lambda _: "X", ValueError, "two channels would have the label 'X'"),
        ({"LASI": "X", "LAS": "Y"}, KeyError, "no channel 'LAS' among the markers; nearest: LASI"),
        ({"LASI": "X", "RASI": 3}, TypeError, "a label is a str, not int"),
        ({"LASI": "X", "RASI": "a\0"}, ValueError, "a label has no NUL character: 'a\\x00'"),
    ],
)  # fmt: skip
def test_a_rename_that_is_refused_changes_nothing(
    trial: Trial, change: Any, kind: type[Exception], message: str
) -> None:
    before = snapshot(trial)
    with pytest.raises(kind) as failure:
        trial.markers.rename(change)
    assert failure.value.args == (message,)
    assert snapshot(trial) == before


def test_a_rename_keeps_what_belongs_to_the_channel(tmp_path: Path) -> None:
    trial = Trial.of(fourth_words(tmp_path))
    before = readings(trial)
    channel = trial.markers["A"]
    residuals, cameras = channel.residuals, channel.cameras
    trial.markers.rename({"A": "other"})
    np.testing.assert_array_equal(trial.markers["other"].residuals, residuals)
    np.testing.assert_array_equal(trial.markers["other"].cameras, cameras)
    trial.markers.rename({"other": "A"})
    assert reading_differences(before, trial) == []


# A channel.


def test_a_channel_follows_its_renames(trial: Trial) -> None:
    channel = trial.markers["LASI"]
    before = channel.values
    _moxPY.moxSetPointLabel(trial, "LASI", "one")
    assert channel.label == "one"
    channel.label = "two"
    assert trial.markers.labels == ["two", "RASI"]
    trial.points.rename({"two": "three"})
    assert channel.label == "three"
    np.testing.assert_array_equal(channel.values, before)
    channel.values = before + 1
    np.testing.assert_array_equal(_moxPY.moxGetPoint(trial, "three")[0], before + 1)


def test_values_are_read_anew(trial: Trial) -> None:
    channel = trial.analogs["EMG1"]
    before = channel.values
    _moxPY.moxSetAnalogValues(trial, "EMG1", signal(8))
    np.testing.assert_array_equal(channel.values, signal(8).ravel())
    np.testing.assert_array_equal(before, signal(1).ravel())


def delete(trial: Trial) -> None:
    del trial.markers["LASI"]


REMOVALS: list[Callable[[Trial], Any]] = [
    delete,
    lambda trial: trial.markers.pop("LASI"),
    lambda trial: trial.markers.clear(),
    lambda trial: _moxPY.moxRemovePoint(trial, "LASI"),
    lambda trial: _moxPY.moxClearPoints(trial),
]
QUESTIONS = [
    "kind", "values", "x", "y", "z", "time", "rate", "index", "label", "unit", "description",
    "residuals", "cameras", "shape", "ndim",
]  # fmt: skip


@pytest.mark.parametrize("remove", REMOVALS)
@pytest.mark.parametrize("question", QUESTIONS)
def test_a_channel_that_was_removed(
    trial: Trial, remove: Callable[[Trial], Any], question: str
) -> None:
    channel = trial.markers["LASI"]
    remove(trial)
    with pytest.raises(KeyError, match=REMOVED):
        getattr(channel, question)
    trial.markers["LASI"] = trajectory(0)  # another channel
    with pytest.raises(KeyError, match=REMOVED):
        getattr(channel, question)


def test_nothing_can_be_done_to_a_channel_that_was_removed(trial: Trial) -> None:
    channel = trial.markers["LASI"]
    del trial.markers["LASI"]
    before = snapshot(trial)
    changes: list[Callable[[], Any]] = [
        lambda: setattr(channel, "values", trajectory(0)),
        lambda: setattr(channel, "label", "x"),
        lambda: setattr(channel, "unit", "x"),
        lambda: setattr(channel, "description", "x"),
        lambda: channel.carry(trial.markers["RASI"]),
        lambda: trial.markers["RASI"].carry(channel),
        lambda: trial.markers.update(new=channel),
        lambda: np.asarray(channel),
        lambda: len(channel),
        lambda: channel + 1,
    ]
    for change in changes:
        with pytest.raises(KeyError, match=REMOVED):
            change()
    assert repr(channel) == "<channel: the channel 'LASI' was removed from the trial>"
    assert snapshot(trial) == before


def test_a_channel_of_a_closed_trial(trial: Trial) -> None:
    channel, markers = trial.markers["LASI"], trial.markers
    values = channel.values
    trial.close()
    for question in QUESTIONS:
        with pytest.raises(ValueError, match=CLOSED):
            getattr(channel, question)
    for question in ("labels", "values", "unit", "units"):
        with pytest.raises(ValueError, match=CLOSED):
            getattr(markers, question)
    with pytest.raises(ValueError, match=CLOSED):
        markers["LASI"]
    with pytest.raises(ValueError, match=CLOSED):
        markers["LASI"] = values
    np.testing.assert_array_equal(values, trajectory(0))


def test_components(trial: Trial) -> None:
    channel = trial.markers["LASI"]
    for axis, component in enumerate([channel.x, channel.y, channel.z]):
        np.testing.assert_array_equal(component, trajectory(0)[:, axis])
    with pytest.raises(AttributeError, match=r"^the analog channel 'EMG1' has no components$"):
        _ = trial.analogs["EMG1"].x


def test_results_of_channels_go_into_arrays(trial: Trial) -> None:
    lasi = trial.markers["LASI"]
    values = lasi.values.copy()
    total = np.zeros_like(values)
    total += lasi
    np.add(total, lasi, out=total)
    np.testing.assert_array_equal(total, 2 * values)
    np.add.at(total, 0, lasi[0])
    np.testing.assert_array_equal(total[0], 3 * values[0])
    quotient, remainder = np.empty_like(values), np.empty_like(values)
    np.divmod(lasi, 7.0, out=(quotient, remainder))
    np.testing.assert_array_equal(quotient, values // 7.0)


def test_in_numpy_a_channel_is_its_array(trial: Trial) -> None:
    left, right = trial.markers["LASI"], trial.markers["RASI"]
    a, b = trajectory(0), trajectory(2)
    np.testing.assert_array_equal(left, a)
    np.testing.assert_array_equal(left[1:3, 0], a[1:3, 0])
    np.testing.assert_array_equal((left + right) / 2, (a + b) / 2)
    np.testing.assert_array_equal(
        np.linalg.norm(left - right, axis=1), np.linalg.norm(a - b, axis=1)
    )
    np.testing.assert_array_equal(np.mean(left, axis=0), a.mean(axis=0))
    np.testing.assert_array_equal(np.asarray(left, dtype=np.float32), a.astype(np.float32))
    assert (len(left), left.shape, left.ndim) == (trial.frames, a.shape, 2)
    assert np.array(left).flags.writeable
    with pytest.raises(ValueError, match="the samples of a channel are always a copy"):
        np.asarray(left, copy=False)


@pytest.mark.parametrize(("kind", "label"), [("markers", "LASI"), ("analogs", "Fz1")])
def test_operators_in_place_change_the_trial(trial: Trial, kind: str, label: str) -> None:
    channels = getattr(trial, kind)
    before, channel = channels[label].values, channels[label]
    channels[label] += 10.0
    np.testing.assert_array_equal(channel.values, before + 10)
    same = channel
    same /= 2
    assert same is channel
    channel -= channel
    np.testing.assert_array_equal(channels[label].values, np.zeros_like(before))


def test_operators_in_place_do_what_assigned_values_do(tmp_path: Path) -> None:
    trials = [Trial.of(fourth_words(tmp_path)) for _ in range(2)]
    for trial in trials:
        trial.markers["A"].unit, trial.markers["A"].description = "m", "hip"
    trials[0].markers["A"] += 1
    trials[1].markers["A"].values = trials[1].markers["A"].values + 1
    assert snapshot(trials[0]) == snapshot(trials[1])


def test_functions_put_results_into_channels_and_arrays(trial: Trial) -> None:
    channel, total = trial.markers["LASI"], np.zeros((4, 3))
    before = channel.values
    total += channel
    np.testing.assert_array_equal(total, before)
    assert np.add(channel, channel, out=total) is total
    np.testing.assert_array_equal(total, 2 * before)
    chosen = np.array([True, False, False])
    assert np.negative(channel, out=channel, where=chosen) is channel
    np.testing.assert_array_equal(channel.values, np.where(chosen, -before, before))
    whole = np.zeros((4, 3))
    np.modf(channel, out=(channel, whole))
    np.testing.assert_array_equal(channel.values + whole, np.where(chosen, -before, before))


def test_what_does_not_fit_in_place_changes_nothing(trial: Trial) -> None:
    channel, before = trial.markers["LASI"], snapshot(trial)
    with pytest.raises(ValueError, match="broadcast"):
        channel += np.ones((5, 3))
    with pytest.raises(TypeError, match="Cannot cast"):
        channel += 1j
    assert snapshot(trial) == before


def test_arrays_are_read_only(trial: Trial) -> None:
    channel, analog = trial.markers["LASI"], trial.analogs["EMG1"]
    arrays = [
        channel.values, channel.x, channel.y, channel.z, channel.time, channel.residuals,
        channel.cameras, analog.values, analog.time, trial.markers.values, trial.analogs.values,
        trial.time, trial.powers.values, Trial.new().markers.values,
    ]  # fmt: skip
    for array in arrays:
        with pytest.raises(ValueError, match="read-only"):
            array[...] = 0
    with pytest.raises(TypeError, match="does not support item assignment"):
        channel[0] = 0  # type: ignore[index]


# Shapes.


@pytest.mark.parametrize("frames", [0, 1, 2])
def test_nothing_is_squeezed(frames: int) -> None:
    trial = Trial.new(frames=frames, samples_per_frame=3)
    samples = 3 * frames
    assert trial.markers.values.shape == (frames, 0, 3)
    assert trial.points.values.shape == (frames, 0, 3)
    assert trial.analogs.values.shape == (samples, 0)
    points, analogs = np.arange(3.0 * frames).reshape(frames, 3), np.arange(float(samples))
    trial.markers["A"] = points
    trial.analogs["E"] = analogs
    trial.markers["A"] = points + 1
    trial.analogs["E"] = analogs + 1
    trial.markers["A"].values = trial.markers["A"].values + 1
    trial.analogs["E"].values = trial.analogs["E"].values + 1
    np.testing.assert_array_equal(trial.markers["A"].values, points + 2, strict=True)
    np.testing.assert_array_equal(trial.analogs["E"].values, analogs + 2, strict=True)
    assert trial.markers["A"].x.shape == (frames,)
    assert trial.markers["A"].residuals.shape == (frames,)
    assert trial.markers["A"].cameras.shape == (frames, 7)
    assert trial.markers["A"].time.shape == (frames,)
    assert trial.markers.values.shape == trial.points.values.shape == (frames, 1, 3)
    assert trial.analogs.values.shape == (samples, 1)
    trial.markers.values = trial.markers.values
    trial.analogs.values = trial.analogs.values
    np.testing.assert_array_equal(trial.markers["A"].values, points + 2)


def test_values_of_a_kind(rich_trial: Any) -> None:
    trial = Trial.of(rich_trial)
    for channels in (trial.markers, trial.powers, trial.points, trial.analogs):
        stacked = np.stack([channel.values for _, channel in channels.items()], axis=1)
        np.testing.assert_array_equal(channels.values, stacked, strict=True)
        channels.values = stacked + 0.5
        for position, (_, channel) in enumerate(channels.items()):
            np.testing.assert_array_equal(channel.values, stacked[:, position] + 0.5)


# Assignment.


@pytest.mark.parametrize(
    "given",
    [
        [[1, 2, 3]] * 4,
        np.array([[1, 2, 3]] * 4, dtype=np.int16),
        np.array([[1, 2, 3]] * 4, dtype=np.float32, order="F"),
        pandas.DataFrame([[1.0, 2.0, 3.0]] * 4, columns=["x", "y", "z"]),
        pandas.DataFrame([[1, 2, 3]] * 4, dtype=object),
        np.broadcast_to([1.0, 2.0, 3.0], (4, 3)),
    ],
    ids=lambda given: type(given).__name__,
)
def test_what_is_taken_as_samples(trial: Trial, given: Any) -> None:
    for label in ("LASI", "new"):
        trial.markers[label] = given
        np.testing.assert_array_equal(
            trial.markers[label].values, [[1.0, 2.0, 3.0]] * 4, strict=True
        )


def test_masked_samples_are_not_seen(trial: Trial) -> None:
    mask = [[False] * 3, [True, False, False], [True] * 3, [False] * 3]
    trial.markers["LASI"] = np.ma.masked_array(np.ones((4, 3)), mask)
    expected = np.where(mask, np.nan, 1.0)
    np.testing.assert_array_equal(trial.markers["LASI"].values, expected)
    frame = pandas.DataFrame(np.ones((4, 3)), dtype="Float64").mask(np.array(mask))
    trial.markers["RASI"] = frame
    np.testing.assert_array_equal(trial.markers["RASI"].values, expected)


def shaped(what: str, axes: str, got: str) -> str:
    return f"the {what}: expected an array of shape {axes}, got {got}"


FRAMES, SAMPLES = "(frames, 3) = (4, 3)", "(samples,) = (8,)"
REFUSED = [
    ("markers", "LASI", 5.0, ValueError, shaped("channel 'LASI'", FRAMES, "()")),
    ("markers", "LASI", None, ValueError, shaped("channel 'LASI'", FRAMES, "()")),
    ("markers", "LASI", np.ones((3, 3)), ValueError, shaped("channel 'LASI'", FRAMES, "(3, 3)")),
    ("markers", "N", np.ones((4, 2)), ValueError, shaped("new channel 'N'", FRAMES, "(4, 2)")),
    ("markers", "N", [1, 2, 3], ValueError, shaped("new channel 'N'", FRAMES, "(3,)")),
    ("markers", "N", [], ValueError, shaped("new channel 'N'", FRAMES, "(0,)")),
    ("analogs", "EMG1", np.ones((8, 1)), ValueError, shaped("channel 'EMG1'", SAMPLES, "(8, 1)")),
    ("analogs", "N", np.ones(4), ValueError, shaped("new channel 'N'", SAMPLES, "(4,)")),
    (
        "markers", "N", [["a", "b", "c"]] * 4, TypeError,
        "the new channel 'N': expected real numbers, got str32",
    ),
    (
        "markers", "LASI", np.ones((4, 3), dtype=complex), TypeError,
        "the channel 'LASI': expected real numbers, got complex128",
    ),
    ("markers", "", np.ones((4, 3)), ValueError, "A new channel needs a label"),
]  # fmt: skip


@pytest.mark.parametrize(("kind", "label", "given", "error", "message"), REFUSED)
def test_what_is_refused_changes_nothing(
    trial: Trial, kind: str, label: str, given: Any, error: type[Exception], message: str
) -> None:
    before = snapshot(trial)
    with pytest.raises(error) as failure:
        getattr(trial, kind)[label] = given
    assert str(failure.value) == message
    assert snapshot(trial) == before


def test_values_of_a_kind_that_are_refused(trial: Trial) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError) as failure:  # noqa: PT011 -- the whole text follows
        trial.markers.values = np.ones((4, 3, 3))
    assert str(failure.value) == (
        "the markers: expected an array of shape (frames, channels, 3) = (4, 2, 3), got (4, 3, 3)"
    )
    with pytest.raises(ValueError) as failure:  # noqa: PT011
        trial.analogs.values = 1.0
    assert str(failure.value) == (
        "the analogs: expected an array of shape (samples, channels) = (8, 3), got ()"
    )
    assert snapshot(trial) == before


def test_a_new_channel_has_the_unit_of_its_kind(trial: Trial) -> None:
    for word, kind in KINDS.items():
        channels = getattr(trial, kind)
        channels.unit = f"{word} unit"
        channels["new"] = trajectory(9)
        assert channels["new"].unit == channels.unit == f"{word} unit"
        assert channels.units == dict.fromkeys(channels, f"{word} unit")
    trial.analogs.unit = "mV"
    trial.analogs["new"] = signal(9).ravel()
    assert trial.analogs["new"].unit == "mV"


def test_a_new_analog_channel_has_the_unit_that_all_agree_on(trial: Trial) -> None:
    samples = signal(9).ravel()
    for units, unit in [
        (["N", "N", "Unknown"], "N"),
        (["", "Nm", "Nm"], "Nm"),
        (["N", "Nm", "N"], "V"),
        (["", "Unknown", ""], "V"),
    ]:
        changed = trial.copy()
        for channel, given in zip(
            [changed.analogs[label] for label in changed.analogs], units, strict=True
        ):
            channel.unit = given
        changed.analogs["new"] = samples
        assert changed.analogs["new"].unit == unit
        changed.analogs["new"].unit = "mV"
        changed.analogs["newer"] = samples
        assert changed.analogs["newer"].unit == ("mV" if unit == "V" and "N" not in units else "V")


def test_a_channel_without_label_is_called_by_its_name(trial: Trial) -> None:
    first, second = list(trial.markers)[:2]
    channels = trial.markers[first], trial.markers[second]
    one, other = (channel.index for channel in channels)
    for channel in channels:
        channel.label = ""
    assert [trial.markers[label].index for label in (first, second)] == [one, other]
    channels[1].label = first
    assert trial.markers[first].index == one
    assert trial.markers[f"{first}_2"].index == other
    assert second not in trial.markers
    channels[0].label = "other"
    assert trial.markers[first].index == other
    channels[1].label = ""
    channels[0].label = second
    assert trial.markers[second].index == one
    assert first not in trial.markers


def test_labels_may_go_round_among_many_channels() -> None:
    trial = Trial.new(frames=2)
    for number in range(300):
        trial.markers[f"M{number}"] = np.full((2, 3), float(number))
    for number in range(300):
        trial.markers.rename({f"M{number}": f"N{number}"})
        assert trial.markers[f"N{number}"].x[0] == number
        assert f"M{number}" not in trial.markers
    del trial.markers["N7"]
    assert trial.markers["N8"].x[0] == 8.0
    assert _moxPY.moxGetPoint(trial, 7)[1]["label"] == "N8"
    copy = trial.copy()
    copy.markers.rename({"N8": "N9", "N9": "N8"})
    assert (copy.markers["N8"].x[0], trial.markers["N8"].x[0]) == (9.0, 8.0)


def test_units_that_differ(trial: Trial) -> None:
    trial.analogs.unit = "V"
    trial.analogs["Fz1"].unit = "N"
    assert trial.analogs.unit is None
    assert trial.analogs.units == {"Fx1": "V", "EMG1": "V", "Fz1": "N"}
    assert Trial.new().analogs.unit is None


def test_a_new_channel_of_points_is_a_marker_or_of_the_kind_of_the_channel(trial: Trial) -> None:
    trial.points["new"] = trajectory(9)
    trial.points["copy"] = trial.moments["LKneeMoment"]
    assert trial.points["new"].kind == "markers"
    assert trial.moments.labels == ["LKneeMoment", "copy"]


def fourth_words(folder: Path, scale: float = 0.1) -> Any:
    """A: cameras 1 and 2 with five steps of the scale, computed, not seen, camera 7 alone."""
    words = [0x0305, 0x0000, -1, 0x4000]
    points = {"A": track(4, 1.0), "B": track(4, 50.0)}
    return read_c3d(
        folder,
        points,
        scale=scale,
        residuals={"A": words},
        point_descriptions=["the hip", ""],
    )


def test_residuals_and_cameras_of_the_fourth_word(tmp_path: Path) -> None:
    channel = Trial.of(fourth_words(tmp_path)).markers["A"]
    np.testing.assert_allclose(channel.residuals, [0.5, 0.0, -1.0, 0.0], rtol=1e-6)
    cameras = np.zeros((4, 7), dtype=bool)
    cameras[0, :2] = cameras[3, 6] = True
    np.testing.assert_array_equal(channel.cameras, cameras, strict=True)
    assert np.isnan(channel.values[2]).all()
    assert np.isfinite(channel.values[[0, 1, 3]]).all()
    assert channel.description == "the hip"


def test_an_assigned_channel_carries_what_belongs_to_it(tmp_path: Path) -> None:
    source = Trial.of(fourth_words(tmp_path, scale=1.0)).markers["A"]
    source.unit, source.description = "m", "carried"
    trial = Trial.of(new_trial())
    for label in ("LASI", "new"):
        trial.markers[label] = source
        channel = trial.markers[label]
        assert (channel.label, channel.unit, channel.description) == (label, "m", "carried")
        np.testing.assert_array_equal(channel.values, source.values)
        np.testing.assert_array_equal(channel.residuals, source.residuals)
        np.testing.assert_array_equal(channel.cameras, source.cameras)
    trial.markers["RASI"] = source.values
    assert trial.markers["RASI"].unit == "Unknown"
    assert not trial.markers["RASI"].cameras.any()


def test_carried_residuals_are_those_that_they_were(tmp_path: Path) -> None:
    """One file counts them in steps of 0.1, the other one in steps of 0.05."""
    source = Trial.of(fourth_words(tmp_path, scale=0.1))
    trial = Trial.of(fourth_words(tmp_path, scale=0.05))
    trial.markers["carried"] = source.markers["A"]
    carried = trial.markers["carried"]
    np.testing.assert_allclose(carried.residuals, source.markers["A"].residuals, rtol=1e-6)
    np.testing.assert_array_equal(carried.cameras, source.markers["A"].cameras)


def test_a_channel_may_be_assigned_to_itself(tmp_path: Path) -> None:
    trial = Trial.of(fourth_words(tmp_path))
    before = readings(trial)
    residuals = trial.markers["A"].residuals
    trial.markers["A"] = trial.markers["A"]
    assert reading_differences(before, trial) == []
    np.testing.assert_array_equal(trial.markers["A"].residuals, residuals)


def test_mappings_are_dictionaries_in_everything_else(trial: Trial) -> None:
    trial.markers.update({"A": trajectory(0), "B": trajectory(1)}, C=trajectory(2))
    assert trial.markers.labels == ["LASI", "RASI", "A", "B", "C"]
    popped = trial.markers.pop("A")
    assert isinstance(popped, Channel)
    assert trial.markers.pop("A", None) is None
    assert trial.markers.setdefault("B", trajectory(3)).x[0] == trajectory(1)[0, 0]
    appended = trial.markers.setdefault("D", trajectory(3))
    assert isinstance(appended, Channel)
    np.testing.assert_array_equal(appended.values, trajectory(3))
    del trial.markers["D"]
    assert len(trial.markers) == 4
    assert list(reversed(trial.markers.labels)) == ["C", "B", "RASI", "LASI"]
    trial.markers.clear()
    assert trial.markers.labels == []
    assert len(trial.angles) == 1


def test_equal_channels(trial: Trial) -> None:
    values = np.array(trajectory(0))
    values[1] = np.nan
    trial.markers["LASI"] = values
    other = trial.copy()
    assert trial.markers == other.markers
    assert trial.markers != trial.angles
    assert trial.markers != {"LASI": values}
    other.markers["LASI"] = trajectory(0)
    assert trial.markers != other.markers
    assert trial.analogs == other.analogs


# Gaps.


def test_gaps_at_the_ends_and_between() -> None:
    trial = Trial.new(frames=8)
    trial.first_frame = 101
    for label, missing in {"A": [0, 1, 4, 7], "B": [], "C": range(8)}.items():
        values = np.arange(24.0).reshape(8, 3)
        values[list(missing)] = np.nan
        trial.markers[label] = values
    assert trial.markers.gaps() == [
        Gap("A", 101, 102), Gap("A", 105, 105), Gap("A", 108, 108), Gap("C", 101, 108),
    ]  # fmt: skip
    assert [gap.frames for gap in trial.markers.gaps()] == [2, 1, 1, 8]
    assert trial.analogs.gaps() == trial.powers.gaps() == Trial.new().markers.gaps() == []


# Completion.


def test_keys_complete(trial: Trial) -> None:
    for channels in (trial.markers, trial.points, trial.analogs):
        assert channels._ipython_key_completions_() == channels.labels
