"""Files with wrong bytes: they read, or are refused with a RuntimeError. Nothing else happens."""

from __future__ import annotations

import contextlib
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st
from support.c3d_bytes import Analog, C3DFile, Event, HeaderEvent, Platform
from support.read_c3d import read_bytes, track

FILE = C3DFile(
    {"LASI": track(6), "LHip": track(6, 40)},
    analogs=[Analog("Fz", np.arange(12)), Analog("EMG", np.arange(12))],
    samples_per_frame=2,
    platforms=[Platform(channels=(1, 2, 1, 2, 1, 2))],
    events=[Event("Left", "Foot Strike", 0.05)],
    header_events=[HeaderEvent("LFS", 0.05)],
    rotations={"pelvis": np.tile(np.eye(4), (6, 1, 1))},
    parameters={"POINT:ANGLES": ["LHip"]},
)
CONTENT = FILE.to_bytes()
PARAMETERS_END = FILE.layout().data_offset


def read_everything(folder: Path, content: bytes) -> None:
    """A refusal is a fine answer; what reads has to hold together."""
    with contextlib.suppress(RuntimeError):
        assert_consistent(read_bytes(folder, content))


def assert_consistent(acquisition: Any) -> None:
    frames = int(_moxPY.moxGetPointFrameNumber(acquisition))
    values, _ = _moxPY.moxGetPoints(acquisition)
    matrix = _moxPY.moxGetPointsValues(acquisition)
    assert len(values) == _moxPY.moxGetPointNumber(acquisition)
    assert matrix.shape == ((frames, 3 * len(values)) if values else ())
    channels, _ = _moxPY.moxGetAnalogs(acquisition)
    matrix = _moxPY.moxGetAnalogsValues(acquisition)
    samples = int(_moxPY.moxGetAnalogFrameNumber(acquisition))
    assert matrix.shape == ((samples, len(channels)) if channels else ())


@pytest.mark.parametrize("value", [0x00, 0x01, 0x7F, 0x80, 0xFF])
def test_every_single_byte_of_header_and_parameters(tmp_path: Path, value: int) -> None:
    for place in range(PARAMETERS_END):
        damaged = bytearray(CONTENT)
        damaged[place] = value
        read_everything(tmp_path, bytes(damaged))


@settings(
    max_examples=500, deadline=None, derandomize=True,
    suppress_health_check=[HealthCheck.function_scoped_fixture],
)  # fmt: skip
@given(
    changes=st.dictionaries(
        st.integers(0, PARAMETERS_END - 1), st.integers(0, 255), min_size=1, max_size=30
    ),
    length=st.integers(0, len(CONTENT)),
)
def test_several_bytes_and_a_cut(tmp_path: Path, changes: dict[int, int], length: int) -> None:
    damaged = bytearray(CONTENT)
    for place, value in changes.items():
        damaged[place] = value
    read_everything(tmp_path, bytes(damaged[:length]))


@settings(
    max_examples=300, deadline=None, derandomize=True,
    suppress_health_check=[HealthCheck.function_scoped_fixture],
)  # fmt: skip
@given(noise=st.binary(max_size=3000), processor=st.sampled_from([84, 85, 86]))
def test_noise_behind_a_good_beginning(tmp_path: Path, noise: bytes, processor: int) -> None:
    header = bytearray(CONTENT[:512])
    read_everything(tmp_path, bytes(header) + bytes([1, 0x50, 4, processor]) + noise)
