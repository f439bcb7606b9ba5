"""Real files, read, written and read again."""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.independent_readers import read_with_c3d, read_with_ezc3d
from support.repairs import without_the_broken_record
from support.sample_table import SAMPLES
from support.ways import Way
from writing.parameter_comparison import parameter_differences
from writing.store_comparison import store_differences
from writing.written import write

FindSample = Callable[[str], Path]

# What a file gets that does not say enough about its samples, or says it wrongly.
MENDED = {
    "C3DRotationExample.c3d": [
        "FORCE_PLATFORM: added", "FORCE_PLATFORM:USED: added",
    ],
    "Optotrak.c3d": ["POINT:FRAMES: values [1149] became [29]", "ANALOG:USED: added"],
    "TYPE-2.C3D": ["GROUP_7: added"],
    "TYPE-4.C3D": ["GROUP_7: added"],
    "bad_parameter_section.c3d": ["EVENT:LABELS: added", "ANALOG:OFFSET: added"],
    "basketball.c3d": ["POINT:UNITS: added"],
    "kyowadengyo.c3d": ["POINT:USED: values [12] became [11]"],
    "phasespace_sample.c3d": [
        "POINT: added", "ANALOG: added", "FORCE_PLATFORM: added", "POINT:USED: added",
        "POINT:SCALE: added", "POINT:RATE: added", "POINT:DATA_START: added",
        "POINT:FRAMES: added", "POINT:LABELS: added", "POINT:DESCRIPTIONS: added",
        "POINT:UNITS: added", "ANALOG:USED: added", "FORCE_PLATFORM:USED: added",
    ],
    "type1.C3D": ["ANALOG:RATE: added"],
}  # fmt: skip


# What is left of a list that a broken record of the source ended.
EXCUSED = ["EVENT:LABELS: 1 entries, not 6"]


def mended_places(name: str) -> list[str]:
    """The same, as patterns of places in the store."""
    paths = [text.split(": ")[0].replace(":", "@") for text in MENDED.get(name, [])]
    return [f"Format/Metadata/{path}" for path in paths] + (
        ["Format/Header@LastFrame"] if name == "Optotrak.c3d" else []
    )


def source_of(path: Path) -> bytes:
    """The file itself, but for the one with a record that is broken: without that one."""
    content = path.read_bytes()
    broken = path.name == "bad_parameter_section.c3d"
    return without_the_broken_record(content) if broken else content


every_sample = pytest.mark.parametrize("name", [entry.name for entry in SAMPLES])


@every_sample
def test_the_store_comes_back(sample: FindSample, tmp_path: Path, way: Way, name: str):
    source, path = sample(name), tmp_path / "written.c3d"
    write(way.read(source), path, source_of(source), EXCUSED)
    before, after = way.read(source), way.read(path)
    # Names, types and locks of the parameters are compared in the files themselves.
    ignored = ["Format/Header/Groups@*", "Format/Header/Parameters@*", *mended_places(name)]
    assert store_differences(before, after, ignored, as_singles=True) == []


@every_sample
def test_groups_and_parameters_come_back(sample: FindSample, tmp_path: Path, way: Way, name: str):
    source = sample(name)
    acquisition = way.read(source)
    content = write(acquisition, tmp_path / "written.c3d", source_of(source), EXCUSED)
    found = parameter_differences(source_of(source), content)
    assert sorted(found) == sorted(MENDED.get(name, []))


@every_sample
def test_a_second_writing_gives_the_same_bytes(
    sample: FindSample, tmp_path: Path, way: Way, name: str
):
    source = sample(name)
    acquisition = way.read(source)
    first = write(acquisition, tmp_path / "first.c3d", source_of(source), EXCUSED)
    again = way.read(tmp_path / "first.c3d")
    assert write(again, tmp_path / "second.c3d", first) == first


@pytest.mark.parametrize(
    ("name", "reader"),
    [
        (entry.name, reader)
        for entry in SAMPLES
        for reader in (read_with_ezc3d, read_with_c3d)
        # c3d takes the parameters of this one for a single number and stops.
        if (entry.name, reader) != ("C3DRotationExample.c3d", read_with_c3d)
    ],
)
def test_other_readers_see_the_same(
    sample: FindSample, tmp_path: Path, way: Way, name: str, reader: Any
):
    source = sample(name)
    acquisition = way.read(source)
    write(acquisition, tmp_path / "written.c3d", source_of(source), EXCUSED)
    recording = reader(tmp_path / "written.c3d")
    matrix = _moxPY.moxGetPointsValues(acquisition)
    frames = int(_moxPY.moxGetPointFrameNumber(acquisition))
    points = matrix.reshape(frames, -1, 3) if matrix.ndim else np.zeros((frames, 0, 3))
    np.testing.assert_allclose(recording.points, points, rtol=2e-7)
    analogs = _moxPY.moxGetAnalogsValues(acquisition)
    if analogs.ndim:
        np.testing.assert_allclose(recording.analogs, analogs, rtol=1e-5, atol=1e-6)
