"""Crop keeps a stretch of the frames, and everything of what it keeps."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.trial import Trial
from support.agreement import assert_agreement
from support.c3d_bytes import Analog, Event, HeaderEvent, c3d_bytes
from support.independent_readers import read_with_c3d, read_with_ezc3d
from support.leaks import assert_nothing_lost
from support.memory import under_a_sanitizer
from support.read_c3d import read_bytes, track
from support.small_trials import KINDS, example_trial, new_trial
from support.store_tree import node, snapshot

FRAMES, RATIO, RATE, FIRST = 40, 3, 100.0, 11
STRIKES = (0.1, 0.25, 0.3, 0.3000001, 0.37, 0.49)


def words(seed: int) -> Any:
    """The fourth word of each sample: cameras and residual, −1 where nobody saw the point."""
    random = np.random.default_rng(seed)
    content = random.integers(0, 128, FRAMES) * 256 + random.integers(0, 256, FRAMES)
    content[random.integers(0, FRAMES, 6)] = -1
    return content.astype(np.float64)


def described(**options: Any) -> bytes:
    """Forty frames from frame 11 on, which is 0.1 s."""
    random = np.random.default_rng(5)
    counts = [random.integers(-2000, 2000, FRAMES * RATIO) for _ in range(2)]
    content: dict[str, Any] = {
        "rate": RATE,
        "first_frame": FIRST,
        "residuals": {"A": words(1), "B": words(2)},
        "analogs": [
            Analog("Fz", counts[0], scale=0.37, offset=12, units="N"),
            Analog("EMG", counts[1], units="V"),
        ],
        "samples_per_frame": RATIO,
        "events": [Event("Left", "Foot Strike", time) for time in STRIKES],
        "header_events": [HeaderEvent("RTO", 0.2), HeaderEvent("LTO", 0.45)],
        "rotations": {"Pelvis": rotations(), "Thigh": rotations() + 1},
        "rotation_ratio": 2,
    }
    return c3d_bytes({"A": track(FRAMES), "B": track(FRAMES, 100.0)}, **(content | options))


def rotations() -> Any:
    """(samples, 17), every tenth one not seen."""
    content = np.arange(FRAMES * 2 * 17.0).reshape(-1, 17) / 4
    content[::10, 16] = -1
    return content


@pytest.fixture
def trial(tmp_path: Path) -> Trial:
    return Trial.of(read_bytes(tmp_path, described()))


def written(trial: Trial, folder: Path) -> Path:
    path = folder / "written.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    return path


def read_again(trial: Trial, folder: Path) -> Trial:
    return Trial.of(_moxPY.moxReadAcquisition(str(written(trial, folder))))


def frame_bytes(content: bytes, points: int, samples: int) -> list[bytes]:
    """What a file with real numbers holds of each frame."""
    begin = (int.from_bytes(content[16:18], "little") - 1) * 512
    step = 4 * (4 * points + samples)
    return [content[i : i + step] for i in range(begin, len(content) - step + 1, step)]


def assert_is_part(part: Trial, whole: Trial, first: int, last: int) -> None:
    """`part` has the frames from `first` to `last` of `whole`, bit by bit."""
    frames = slice(first - whole.first_frame, last - whole.first_frame + 1)

    def of_ratio(ratio: int) -> slice:
        return slice(frames.start * ratio, frames.stop * ratio)

    assert (part.first_frame, part.last_frame) == (first, last)
    assert part.frames == last - first + 1
    np.testing.assert_allclose(part.time, whole.time[frames], rtol=1e-12)
    assert part.points.labels == whole.points.labels
    for label, channel in whole.points.items():
        for name in ("values", "residuals", "cameras"):
            kept, held = getattr(part.points[label], name), getattr(channel, name)[frames]
            assert kept.tobytes() == held.tobytes(), (label, name)
        assert part.points[label].unit == channel.unit
    samples = of_ratio(whole.samples_per_frame)
    assert part.analogs.labels == whole.analogs.labels
    assert part.analogs.values.tobytes() == whole.analogs.values[samples].tobytes()
    if whole.analogs:
        np.testing.assert_allclose(part.analogs.time, whole.analogs.time[samples], rtol=1e-12)
    turned = of_ratio(whole.rotations.samples_per_frame)
    assert part.rotations.labels == whole.rotations.labels
    for label, values in whole.rotations.items():
        assert part.rotations[label].tobytes() == values[turned].tobytes()
    assert_agreement(part.copy().this)  # which assigns values


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
@pytest.mark.parametrize("storage", ["real", "integer"])
@pytest.mark.parametrize(("first", "last"), [(11, 50), (11, 11), (50, 50), (20, 33), (12, 49)])
def test_what_is_kept_is_kept_bit_by_bit(
    tmp_path: Path, processor: str, storage: str, first: int, last: int
) -> None:
    content = described(processor=processor, storage=storage, rotations=())
    trial = Trial.of(read_bytes(tmp_path, content))
    before = snapshot(trial)
    part = trial.crop(first, last)
    assert type(part) is Trial
    assert snapshot(trial) == before
    assert_is_part(part, trial, first, last)
    assert_is_part(read_again(part, tmp_path), read_again(trial, tmp_path), first, last)


def test_rotations_and_reliabilities_are_cut(trial: Trial, tmp_path: Path) -> None:
    part = trial.crop(20, 33)
    again = read_again(part, tmp_path)
    for shown in (part, again):
        assert_is_part(shown, trial, 20, 33)
        held = node(trial, "Format/Data/Skeleton/Segments/Pelvis")["sets"]["T_SCS"]
        kept = node(shown, "Format/Data/Skeleton/Segments/Pelvis")["sets"]["T_SCS"]
        expected = np.ravel(held["attributes"]["Reliability"][2])[18:46]
        np.testing.assert_array_equal(np.ravel(kept["attributes"]["Reliability"][2]), expected)


def test_the_frames_of_a_written_file_are_those_of_the_file(tmp_path: Path) -> None:
    """Of a sample that nobody saw files written here have zeros, so all were seen."""
    seen = {label: np.abs(words(seed)) for seed, label in enumerate("AB")}
    content = described(rotations=(), residuals=seen)
    trial = Trial.of(read_bytes(tmp_path, content))
    file = written(trial.crop(20, 33), tmp_path).read_bytes()
    kept = frame_bytes(file, 2, 2 * RATIO)[:14]
    assert kept == frame_bytes(content, 2, 2 * RATIO)[9:23]


def test_other_readers_see_the_stretch(trial: Trial, tmp_path: Path) -> None:
    path = written(trial.crop(20, 33), tmp_path)
    before = read_with_c3d(tmp_path / "trial.c3d")
    after = read_with_c3d(path)
    assert after.first_frame == 20
    np.testing.assert_array_equal(after.points, before.points[9:23])
    np.testing.assert_array_equal(after.residuals, before.residuals[9:23])
    np.testing.assert_array_equal(after.analogs, before.analogs[27:69])
    recording = read_with_ezc3d(path)
    assert recording.first_frame == 20
    assert (recording.rate, recording.analog_rate) == (100.0, 300.0)
    np.testing.assert_array_equal(recording.points, before.points[9:23])
    assert recording.rotations is not None
    assert len(recording.rotations) == 28
    assert recording.event_times is not None
    np.testing.assert_allclose(
        np.sort(recording.event_times), [0.2, 0.25, 0.3, 0.3000001], rtol=1e-6
    )


@pytest.mark.parametrize("kind", KINDS)
def test_every_kind_of_trial_can_be_cut(kind: str, tmp_path: Path) -> None:
    trial = Trial.of(KINDS[kind](tmp_path))
    if trial.frames == 0:
        with pytest.raises(ValueError, match=r"^there are no frames 1 to 0; the trial has none$"):
            trial.crop()
        return
    first, last = trial.first_frame + 1, trial.last_frame - 1
    before = snapshot(trial)
    part = trial.crop(first, last)
    assert snapshot(trial) == before
    assert_is_part(part, trial, first, last)
    again = read_again(part, tmp_path)
    assert (again.first_frame, again.last_frame) == (first, last)


def test_a_part_of_a_part_is_a_part(trial: Trial) -> None:
    assert_is_part(trial.crop(15, 45).crop(20, 33), trial, 20, 33)


# Seconds.


@pytest.mark.parametrize(
    ("stretch", "first", "last"),
    [
        ({"start": 0.25, "stop": 0.37}, 26, 38),
        ({"start": 0.251}, 27, 50),
        ({"stop": 0.2999}, 11, 30),
        ({"start": -3, "stop": 900}, 11, 50),
        ({"start": 0.3, "stop": 0.3}, 31, 31),
        ({}, 11, 50),
    ],
)
def test_seconds_choose_the_frames_inside(
    trial: Trial, stretch: dict[str, float], first: int, last: int
) -> None:
    assert_is_part(trial.crop(**stretch), trial, first, last)


def test_an_event_bounds_the_stretch_with_its_own_frame(trial: Trial) -> None:
    """As single precision has it 0.37 lies behind the instant of its frame."""
    strike = trial.events[5]
    part = trial.crop(start=strike.time, stop=trial.events[7].time)
    assert (part.first_frame, part.last_frame) == (38, 50)
    assert part.events.times().tolist() == trial.events.times().tolist()[-3:]


@pytest.mark.parametrize(
    ("range_", "kept"),
    [
        ({}, [0.1, 0.2, 0.25, 0.3, 0.3, 0.37, 0.45, 0.49]),
        ({"first": 26, "last": 38}, [0.25, 0.3, 0.3, 0.37]),
        ({"first": 27, "last": 37}, [0.3, 0.3]),
        ({"start": 0.249, "stop": 0.372}, [0.25, 0.3, 0.3, 0.37]),
        ({"first": 31, "last": 31}, [0.3]),
    ],
)
def test_events_outside_are_dropped(
    trial: Trial, tmp_path: Path, range_: dict[str, Any], kept: list[float]
) -> None:
    part = trial.crop(**range_)
    again = read_again(part, tmp_path)
    for shown in (part, again):
        np.testing.assert_allclose(shown.events.times(), kept, atol=1e-6)


def test_events_between_two_frames_stay_in_seconds_around_them(trial: Trial) -> None:
    trial.events.add("Foot Off", 0.195, "Right")
    assert trial.crop(start=0.194).events.times("Foot Off").tolist() == [np.float32(0.195)]
    assert trial.crop(21).events.times("Foot Off").tolist() == []


# Refusals.


@pytest.mark.parametrize(
    ("range_", "message"),
    [
        ({"first": 10, "last": 20}, "there are no frames 10 to 20; "),
        ({"first": 20, "last": 51}, "there are no frames 20 to 51; "),
        ({"first": 30, "last": 29}, "there are no frames 30 to 29; "),
        ({"last": 3}, "there are no frames 11 to 3; "),
        ({"start": 0.5}, "there is no frame from 0.5 s to its end; "),
        ({"stop": 0.0}, "there is no frame from its start to 0 s; "),
        ({"start": 0.301, "stop": 0.309}, "there is no frame from 0.301 s to 0.309 s; "),
        ({"start": np.nan}, "there is no frame from nan s to its end; "),
    ],
)
def test_a_range_without_frames_is_named(
    trial: Trial, range_: dict[str, Any], message: str
) -> None:
    before = snapshot(trial)
    with pytest.raises(ValueError, match="there ") as error:
        trial.crop(**range_)
    assert str(error.value) == f"{message}the trial has the frames 11 to 50, 0.1 s to 0.49 s"
    assert snapshot(trial) == before


def test_frames_and_seconds_are_not_mixed(trial: Trial) -> None:
    with pytest.raises(TypeError, match="in frames or in seconds, not in both"):
        trial.crop(20, stop=0.3)
    with pytest.raises(TypeError):
        trial.crop(20.5)  # type: ignore[arg-type]


def test_a_trial_without_rate_has_frames_alone() -> None:
    trial = Trial.of(_moxPY.moxNewAcquisition(1, 5))
    with pytest.raises(ValueError, match="a trial without a rate has no seconds; give frames"):
        trial.crop(start=0.0)
    assert trial.crop(1, 3).frames == 3


def test_the_closed_trial_is_refused() -> None:
    trial = Trial.of(new_trial())
    trial.close()
    with pytest.raises(ValueError, match="the trial was closed"):
        trial.crop()


# What else there is.


def test_platforms_measure_what_they_measured(tmp_path: Path) -> None:
    trial = Trial.of(example_trial())
    part = trial.crop(101, 300)
    samples = slice(100 * trial.samples_per_frame, 300 * trial.samples_per_frame)
    assert len(part.platforms) == len(trial.platforms)
    for whole, cut in zip(trial.platforms, part.platforms, strict=True):
        np.testing.assert_array_equal(cut.corners, whole.corners)
        np.testing.assert_array_equal(cut.wrench().force, whole.wrench().force[samples])


def test_channels_can_be_added_to_a_part(trial: Trial, tmp_path: Path) -> None:
    part = trial.crop(20, 33)
    part.markers["new"] = np.ones((14, 3))
    part.analogs["new"] = np.arange(42.0)
    again = read_again(part, tmp_path)
    np.testing.assert_array_equal(again.markers["new"].values, np.ones((14, 3)))
    np.testing.assert_array_equal(again.analogs["new"].values, np.arange(42.0))


def test_changes_of_a_part_stay_there(trial: Trial) -> None:
    before = snapshot(trial)
    part = trial.crop()
    part.markers["A"].values = np.zeros((FRAMES, 3))
    assert snapshot(trial) == before


def test_a_recording_is_cut_with_its_residuals(sample: Any, tmp_path: Path) -> None:
    for name in ("Eb015pi.c3d", "Eb015pr.c3d", "Eb015vr.c3d", "C3DRotationExample.c3d"):
        trial = Trial.of(_moxPY.moxReadAcquisition(str(sample(name))))
        first, last = trial.first_frame + 7, trial.last_frame - 11
        part = trial.crop(first, last)
        assert_is_part(part, trial, first, last)
        assert_is_part(read_again(part, tmp_path), read_again(trial, tmp_path), first, last)


@pytest.mark.skipif(under_a_sanitizer(), reason="there NumPy keeps memory of its own arithmetic")
def test_cutting_loses_no_memory() -> None:
    trial = Trial.of(new_trial())
    assert_nothing_lost(lambda: trial.crop(2, 3), trial)
