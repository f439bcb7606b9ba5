"""Rotations of segments: from the bytes of a file to matrices."""

from __future__ import annotations

import struct
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import C3DFile
from support.failures import failure_of
from support.read_c3d import read_bytes, read_c3d
from support.small_trials import new_trial, read_trial
from support.store_tree import node, snapshot

FRAMES, RATIO = 3, 2
SAMPLES = FRAMES * RATIO
NO_SEGMENTS = "Impossible to retrieve group with path : 'Format/Data/Skeleton/Segments'"


def transforms(seed: int, samples: int = SAMPLES) -> Any:
    """(samples, 4, 4): columns are the axes and the position; exact as singles."""
    values = np.random.default_rng(seed).integers(-512, 512, (samples, 4, 4)) / 8.0
    values[:, 3] = [0.0, 0.0, 0.0, 1.0]
    return values


def records(matrices: Any, reliability: float = 0.0) -> Any:
    """(samples, 17): column by column, then the reliability."""
    return np.column_stack([matrices.transpose(0, 2, 1).reshape(-1, 16),
                            np.full(len(matrices), reliability)])  # fmt: skip


@pytest.fixture
def trial(tmp_path: Path) -> Any:
    return read_c3d(
        tmp_path,
        {"A": np.zeros((FRAMES, 3))},
        rotations={"Pelvis": records(transforms(1)), "L Thigh": records(transforms(2))},
        rotation_ratio=RATIO,
    )


def test_matrices_have_the_position_in_their_last_column(trial: Any) -> None:
    rotations, nothing = _moxPY.moxGetRotations(trial)
    assert nothing is None
    assert list(rotations) == ["Pelvis", "L Thigh"]
    for seed, values in enumerate(rotations.values(), start=1):
        assert (values.shape, values.dtype) == ((SAMPLES, 4, 4), np.float64)
        assert values.flags.c_contiguous
        np.testing.assert_array_equal(values, transforms(seed))


def test_one_segment_by_its_label(trial: Any) -> None:
    values, nothing = _moxPY.moxGetRotation(trial, "L Thigh")
    assert nothing is None
    np.testing.assert_array_equal(values, transforms(2))


@pytest.mark.parametrize("processor", ["intel", "dec", "mips"])
def test_the_seventeen_numbers_of_a_sample(tmp_path: Path, processor: str) -> None:
    file = C3DFile(rotations={"S": records(transforms(3))}, rotation_ratio=RATIO,
                   processor=processor)  # fmt: skip
    content = bytearray(file.to_bytes())
    place = file.layout().rotation_offset + 2 * 68  # the third sample
    if processor != "dec":
        order = {"intel": "<", "mips": ">"}[processor]
        content[place : place + 68] = struct.pack(order + "17f", *range(1, 17), 0.0)
        expected = np.arange(1.0, 17.0).reshape(4, 4).T
    else:
        expected = transforms(3)[2]
    values, _ = _moxPY.moxGetRotation(read_bytes(tmp_path, bytes(content)), "S")
    np.testing.assert_array_equal(values[2], expected)
    np.testing.assert_array_equal(values[:2], transforms(3)[:2])


def test_invalid_samples_are_nan(tmp_path: Path) -> None:
    numbers = records(transforms(4))
    numbers[1, 16] = -1.0
    numbers[4, 16] = np.nan
    numbers[5, 16] = 7.5  # valid
    acquisition = read_c3d(tmp_path, rotations={"S": numbers}, rotation_ratio=RATIO)
    values, _ = _moxPY.moxGetRotation(acquisition, "S")
    expected = transforms(4)
    expected[[1, 4]] = np.nan
    np.testing.assert_array_equal(values, expected)


def test_one_sample_is_still_a_stack_of_matrices(tmp_path: Path) -> None:
    acquisition = read_c3d(tmp_path, rotations={"S": records(transforms(5, 1))})
    values, _ = _moxPY.moxGetRotation(acquisition, "S")
    assert values.shape == (1, 4, 4)


def test_arrays_belong_to_the_caller(trial: Any) -> None:
    for values in _moxPY.moxGetRotations(trial)[0].values():
        values[...] = 0.0
    np.testing.assert_array_equal(_moxPY.moxGetRotation(trial, "Pelvis")[0], transforms(1))


def test_a_file_without_rotations_has_no_segments(tmp_path: Path) -> None:
    assert _moxPY.moxGetRotations(read_trial(tmp_path)) == [{}, None]


@pytest.mark.parametrize("label", ["pelvis", "Pelvis ", "", "L/Thigh", "Pelvis/T_SCS", "T_SCS"])
def test_other_labels_are_not_found(trial: Any, label: str) -> None:
    before = snapshot(trial)
    expected = f"Unable to rotation with given label :  '{label}'"
    assert failure_of(_moxPY.moxGetRotation, trial, label) == (RuntimeError, expected)
    assert snapshot(trial) == before


@pytest.mark.parametrize("make", [_moxPY.moxNewAcquisition, new_trial, _moxPY.new_data_store])
def test_an_acquisition_without_place_for_segments_says_so(make: Any) -> None:
    acquisition = make()
    assert failure_of(_moxPY.moxGetRotations, acquisition) == (RuntimeError, NO_SEGMENTS)
    assert failure_of(_moxPY.moxGetRotation, acquisition, "S") == (RuntimeError, NO_SEGMENTS)


def test_a_segment_without_its_set_is_named(trial: Any) -> None:
    import _mox_probe as probe

    segment = "Format/Data/Skeleton/Segments/L Thigh"
    probe.delete_set(trial, segment, f"{segment}/T_SCS")
    expected = (RuntimeError, f"Impossible to retrieve group with path : '{segment}/T_SCS'")
    assert failure_of(_moxPY.moxGetRotation, trial, "L Thigh") == expected
    assert failure_of(_moxPY.moxGetRotations, trial) == expected
    np.testing.assert_array_equal(_moxPY.moxGetRotation(trial, "Pelvis")[0], transforms(1))


def with_frames(values: Any, frames: int) -> Any:
    """As many samples as the frames have, NaN behind those of the file."""
    wanted = np.full((frames * RATIO, 4, 4), np.nan)
    kept = min(len(values), len(wanted))
    wanted[:kept] = values[:kept]
    return wanted


@pytest.mark.parametrize("counts", [[FRAMES + 4], [1], [0], [1, FRAMES + 2], [0, 2]])
def test_rotations_follow_the_number_of_frames(
    tmp_path: Path, trial: Any, counts: list[int]
) -> None:
    expected = [transforms(1), transforms(2)]
    for frames in counts:
        _moxPY.moxSetFrameNumber(trial, frames)
        expected = [with_frames(values, frames) for values in expected]
    for values, right in zip(_moxPY.moxGetRotations(trial)[0].values(), expected, strict=True):
        np.testing.assert_array_equal(values, right)
    if counts[-1] == 0:  # a file without frames has no rotations
        return
    path = tmp_path / "written.c3d"
    _moxPY.moxSetFrequency(trial, 100.0)
    _moxPY.moxWriteAcquisition(trial, str(path))
    again = _moxPY.moxGetRotations(_moxPY.moxReadAcquisition(str(path)))[0]
    for values, right in zip(again.values(), expected, strict=True):
        np.testing.assert_array_equal(values, right)


@pytest.mark.parametrize("factor", [0.5, 2.0])
def test_rotations_follow_the_frames_of_points_at_another_rate(
    tmp_path: Path, trial: Any, factor: float
) -> None:
    frames = int(FRAMES * factor)
    _moxPY.moxSetFrequency(trial, factor * _moxPY.moxGetPointFrequency(trial))
    _moxPY.moxSetPointsValues(trial, np.ones((frames, 3)))
    expected = [with_frames(transforms(seed), frames) for seed in (1, 2)]
    for values, right in zip(_moxPY.moxGetRotations(trial)[0].values(), expected, strict=True):
        np.testing.assert_array_equal(values, right)
    path = tmp_path / "written.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    again = _moxPY.moxGetRotations(_moxPY.moxReadAcquisition(str(path)))[0]
    for values, right in zip(again.values(), expected, strict=True):
        np.testing.assert_array_equal(values, right)


def test_new_samples_have_no_reliability(trial: Any) -> None:
    _moxPY.moxSetFrameNumber(trial, FRAMES + 1)
    rotations = node(trial, "Format/Data/Skeleton/Segments/Pelvis")["sets"]["T_SCS"]
    reliabilities = np.ravel(rotations["attributes"]["Reliability"][2])
    assert reliabilities.tolist() == [0.0] * SAMPLES + [-1.0] * RATIO
