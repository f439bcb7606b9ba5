"""The recipe of the page on force platforms that takes a baseline off."""

from __future__ import annotations

import doctest
import re
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, Platform
from support.read_c3d import read_c3d

PAGE = Path(__file__).resolve().parents[3] / "docs" / "force_platforms.md"
CORNERS = np.array([[600.0, -200, 0], [0, -200, 0], [0, 200, 0], [600, 200, 0]])
NAMES = ("FX", "FY", "FZ", "MX", "MY", "MZ")
UNLOADED, SAMPLES = [1, 4], 10  # frames, the last one included


def take_baseline_off(trial: Any, zero: list[int]) -> None:
    """Runs the examples of the page, from the frames in `zero` to the writing of the channels."""
    moxPY.moxAppendMetaData(trial, "FORCE_PLATFORM", "ZERO", {"format": "Integer", "values": zero})
    section = PAGE.read_text("utf-8").split("\n## Baselines\n")[1].split("\n## ")[0]
    blocks = re.findall(r"^```pycon\n(.*?)^```", section, re.DOTALL | re.MULTILINE)
    # The short way, with a trial of its own, comes first.
    blocks = [block for block in blocks if "walk." not in block]
    (last,) = [n for n, block in enumerate(blocks) if "moxSetAnalogValues" in block]
    namespace = {
        "mox": moxPY,
        "np": np,
        "trial": trial,
        "ratio": int(moxPY.moxGetAnalogSampleNumberPerFrame(trial)),
    }
    for block in blocks[: last + 1]:
        for example in doctest.DocTestParser().get_examples(block):
            exec(example.source, namespace)


def test_each_platform_gets_its_own_baseline_where_labels_repeat(tmp_path: Path) -> None:
    # One channel before the platforms, and one between them; the second table row is in its order.
    baselines = [50.0, *range(1, 7), 60.0, *range(11, 17)]
    labels = ["EMG", *NAMES, "EMG", *NAMES]
    ramp = np.concatenate([np.zeros(4), np.arange(6.0)])
    trial = read_c3d(
        tmp_path,
        analogs=[Analog(name, ramp + base) for name, base in zip(labels, baselines, strict=True)],
        frames=SAMPLES,
        platforms=[
            Platform(2, CORNERS, (0.0, 0.0, -40.0), (2, 3, 4, 5, 6, 7)),
            Platform(2, np.add(CORNERS, [700.0, 0, 0]), (0.0, 0.0, -40.0), (11, 10, 9, 14, 13, 12)),
        ],
    )
    take_baseline_off(trial, UNLOADED)
    left = [50.0, *[0.0] * 6, 60.0, *[0.0] * 6]
    assert moxPY.moxGetAnalogsValues(trial).T.tolist() == [(ramp + base).tolist() for base in left]


def test_a_table_that_is_wider_than_a_platform(tmp_path: Path) -> None:
    analogs = [Analog(name, np.full(SAMPLES, 3.0)) for name in (*NAMES, "EMG")]
    platform = Platform(2, CORNERS, (0.0, 0.0, -40.0), (1, 2, 3, 4, 5, 6, 0, 0))
    trial = read_c3d(tmp_path, analogs=analogs, frames=SAMPLES, platforms=[platform])
    take_baseline_off(trial, UNLOADED)
    assert moxPY.moxGetAnalogsValues(trial)[0].tolist() == [0.0] * 6 + [3.0]


def one_platform(folder: Path, samples_per_frame: int = 1) -> Any:
    """Each of its channels is 0 in the first frame, 1 in the second and so on."""
    ramp = np.repeat(np.arange(float(SAMPLES)), samples_per_frame)
    return read_c3d(
        folder,
        {"LASI": np.ones((SAMPLES, 3))},
        analogs=[Analog(name, ramp) for name in NAMES],
        samples_per_frame=samples_per_frame,
        platforms=[Platform(2, CORNERS, (0.0, 0.0, -40.0), (1, 2, 3, 4, 5, 6))],
    )


def test_a_window_that_begins_before_the_first_frame_begins_with_it(tmp_path: Path) -> None:
    trial = one_platform(tmp_path, samples_per_frame=2)
    take_baseline_off(trial, [0, 5])
    assert (
        moxPY.moxGetAnalogsValues(trial)[:, 0].tolist()
        == np.repeat(np.arange(10.0) - 2.0, 2).tolist()
    )


@pytest.mark.parametrize("zero", [[0, 0], [1, 0], [0, -1], [-5, -2], [5, 4], [11, 20]])
def test_channels_stay_as_they_are_where_no_frame_is_in_the_window(
    tmp_path: Path, zero: list[int]
) -> None:
    trial = one_platform(tmp_path)
    before = moxPY.moxGetAnalogsValues(trial)
    take_baseline_off(trial, zero)
    assert np.array_equal(moxPY.moxGetAnalogsValues(trial), before)
