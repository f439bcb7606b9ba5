"""Counts that no file can keep cost no memory: at most about three times the file's length."""

from __future__ import annotations

import os
import sys
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from reading import peak_memory
from reading.fresh_process import run_python
from support.c3d_bytes import Event, Group, Parameter, c3d_bytes, integer, text
from support.read_c3d import track

pytestmark = [
    pytest.mark.skipif(sys.platform != "linux", reason="/proc tells the peak"),
    pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="the sanitizer's memory"),
]

MEGABYTE = 1 << 20
# What the interpreter and the allocator take and give while a small file is read.
SLACK = 12 * MEGABYTE
BIG = track(200_000)  # 3.2 MB of samples


def peak_of(folder: Path, content: bytes) -> int:
    good, hostile = folder / "good.c3d", folder / "hostile.c3d"
    good.write_bytes(c3d_bytes({"A": track(3)}))
    hostile.write_bytes(content)
    return int(run_python(str(peak_memory.__file__), str(good), str(hostile)))


def assert_bounded(folder: Path, content: bytes) -> None:
    peak = peak_of(folder, content)
    assert peak <= 3 * len(content) + SLACK, f"{peak / MEGABYTE:.1f} MB"


HOSTILE: dict[str, dict[str, Any]] = {
    "frames": {"POINT:FRAMES": 1e9, "POINT:LONG_FRAMES": 4e9},
    "points": {"POINT:USED": 65535},
    "points as a real": {"POINT:USED": 3e9},
    "channels": {"ANALOG:USED": 65535},
    "channels and rate": {"ANALOG:USED": 65535, "ANALOG:RATE": 6e6},
    "everything": {"POINT:USED": 65535, "POINT:FRAMES": 1e9, "ANALOG:USED": 65535},
    "events": {"EVENT:USED": 65535},
    "platforms": {"FORCE_PLATFORM:USED": 65535},
    "rotations": {"ROTATION:USED": 65535, "ROTATION:DATA_START": 4, "ROTATION:RATIO": 65535},
    "trial": {"TRIAL:ACTUAL_START_FIELD": [1, 0], "TRIAL:ACTUAL_END_FIELD": [65535, 65535]},
}
HEADERS: dict[str, dict[str, float]] = {
    "as it is": {},
    "the same lies": {"point_count": 65535, "analog_values": 65535, "samples_per_frame": 1},
    "one channel of many samples": {"analog_values": 65535, "samples_per_frame": 65535},
}


@pytest.mark.parametrize("header", HEADERS.values(), ids=HEADERS.keys())
@pytest.mark.parametrize("parameters", HOSTILE.values(), ids=HOSTILE.keys())
def test_counts_of_a_small_file(
    tmp_path: Path, parameters: dict[str, Any], header: dict[str, float]
) -> None:
    content = c3d_bytes(
        {"A": track(40)}, analogs={"B": np.arange(40)}, events=[Event("Left", "Foot Off", 0.1)],
        parameters=parameters, header=header,
    )  # fmt: skip
    assert_bounded(tmp_path, content)


BIG_LIES = {name: lies for name, lies in HOSTILE.items() if name != "everything"}


@pytest.mark.parametrize("parameters", BIG_LIES.values(), ids=BIG_LIES.keys())
def test_counts_of_a_big_file(tmp_path: Path, parameters: dict[str, Any]) -> None:
    assert_bounded(tmp_path, c3d_bytes({"A": BIG}, frame_counts=("real",), parameters=parameters))


@pytest.mark.parametrize("parameters", HOSTILE.values(), ids=HOSTILE.keys())
def test_counts_of_a_file_without_data(tmp_path: Path, parameters: dict[str, Any]) -> None:
    assert_bounded(tmp_path, c3d_bytes(parameters=parameters))


@pytest.mark.parametrize("parameters", [{}, HOSTILE["everything"]], ids=["points", "everything"])
def test_channels_that_are_in_the_file_cost_what_channels_cost(
    tmp_path: Path, parameters: dict[str, Any]
) -> None:
    # Six frames of 65,535 points: the file does hold them, and each has a set with its attributes.
    content = c3d_bytes(
        parameters={"POINT:USED": 65535, **parameters}, header={"point_count": 65535},
        frames=6, data=bytes(16 * 65535 * 6),
    )  # fmt: skip
    assert peak_of(tmp_path, content) <= 3 * len(content) + SLACK + 65535 * 3 * 1024


@pytest.mark.parametrize("dims", [(0, 255, 255, 255), (0, 255, 255, 255, 255, 255, 255)])
@pytest.mark.parametrize("path", ["MINE:TEXTS", "POINT:LABELS", "ANALOG:LABELS", "EVENT:LABELS"])
def test_texts_of_no_width_in_any_number(tmp_path: Path, path: str, dims: tuple[int, ...]) -> None:
    name = path.partition(":")[2]
    lies = {path: Parameter(name, -1, dims, b""), "EVENT:USED": 65535}
    content = c3d_bytes(
        {"A": track(40)}, analogs={"B": np.arange(40)}, events=[Event("Left", "Foot Off", 0.1)],
        parameters=lies,
    )  # fmt: skip
    assert_bounded(tmp_path, content)


@pytest.mark.parametrize("kind", [-1, 1, 2, 4])
def test_values_that_are_not_there(tmp_path: Path, kind: int) -> None:
    huge = Parameter("HUGE", kind, (255,) * 7, b"")
    assert_bounded(tmp_path, c3d_bytes({"A": track(40)}, groups=[Group("MINE", 9, [huge])]))


def test_many_lists_of_empty_texts(tmp_path: Path) -> None:
    lists = [Parameter(f"T{n}", -1, (0, 255, 255), b"") for n in range(1000)]
    assert_bounded(tmp_path, c3d_bytes({"A": track(40)}, groups=[Group("MINE", 9, lists)]))


def test_many_groups_and_parameters(tmp_path: Path) -> None:
    groups = [Group(f"G{n}", n, [integer(f"P{m}", m) for m in range(100)]) for n in range(10, 120)]
    content = c3d_bytes({"A": track(40)}, groups=groups)
    # Each parameter becomes an attribute with a name of its own: more than its bytes in the file.
    assert peak_of(tmp_path, content) <= 32 * MEGABYTE


def test_wide_texts_of_many_labels(tmp_path: Path) -> None:
    wide = [text("LABELS", ["x" * 255] * 255), text("LABELS2", ["y" * 255] * 255)]
    groups = [Group("POINT", 9, wide)]
    assert_bounded(tmp_path, c3d_bytes({"A": track(40)}, groups=groups))


def test_the_bound_is_one_that_a_big_file_comes_near(tmp_path: Path) -> None:
    # Three coordinates and a residual of 12 + 4 bytes become 24 + 4: the measure does measure.
    content = c3d_bytes({"A": np.tile(BIG, (10, 1))}, frame_counts=("real",))
    peak = peak_of(tmp_path, content)
    assert len(content) <= peak <= 3 * len(content)
