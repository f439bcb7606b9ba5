"""Without a plugin the log says what is missing, and what is left is written over no file."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.c3d_bytes import Analog, c3d_bytes
from support.package_copy import PACKAGE, PackageCopy, library
from support.read_c3d import read_c3d, track

NO_SPLIT = "The callable unit 'tarvex.data-modifier.split-set' is not loaded"
NO_EVENTS = "The callable unit 'org.c3d.events-detect' is not loaded"
NO_SUCH_SET = "A set cannot be split : The source set 'Format/Data/Analogs' does not exist"

READ_AND_WRITE = """
import sys, _moxPY
trial = _moxPY.moxReadAcquisition(sys.argv[1])
try:
    _moxPY.moxWriteAcquisition(trial, sys.argv[2])
    print("written", end="")
except RuntimeError as error:
    print(error, end="")
"""


def without(line: str) -> str:
    return f"[error] [strata] Reading goes on without {line}"


def refusal(lost: str) -> str:
    return (
        f"Export to c3d failed : {lost} of the file that was read would be lost: they did not "
        "become channels of the acquisition, as the log says; where the plugin 'data_modifier' is "
        "missing, put it back, call reload and read the file again"
    )


@pytest.fixture
def no_splits(package: PackageCopy) -> PackageCopy:
    """The package without the plugin that makes sets of channels."""
    package.add_own_plugins()
    library(package.plugins, "data_modifier").unlink()
    return package


def errors_of(package: PackageCopy) -> list[str]:
    return [line for line in package.log() if line.startswith("[error]")]


EMG = [Analog("EMG1", np.arange(3.0)), Analog("EMG2", np.arange(3.0))]

MARKERS = without(f"the points of 'Format/Data/Markers': {NO_SPLIT}")
ANGLES = without(f"the points of 'Format/Data/Angles': {NO_SPLIT}")
ANALOGS = without(f"the analog channels: {NO_SPLIT}")

# A file -> what the log says of it, and what keeps it from being written.
UNSPLIT: dict[str, tuple[dict[str, Any], list[str], str]] = {
    "points": ({"points": {"A": track(3), "B": track(3)}}, [MARKERS, ANALOGS], "2 points"),
    "one point": ({"points": {"A": track(3)}}, [MARKERS, ANALOGS], "1 point"),
    "points of two kinds": (
        {"points": {"A": track(3), "Knee": track(3)}, "parameters": {"POINT:ANGLES": ["Knee"]}},
        [ANGLES, MARKERS, ANALOGS],
        "2 points",
    ),
    "analogs": ({"analogs": EMG}, [ANALOGS], "2 analog channels"),
    "both": (
        {"points": {"A": track(3)}, "analogs": EMG},
        [MARKERS, ANALOGS],
        "1 point and 2 analog channels",
    ),
}
unsplit = pytest.mark.parametrize(
    ("content", "lines", "lost"), UNSPLIT.values(), ids=UNSPLIT.keys()
)


@unsplit
def test_the_log_says_which_channels_are_missing(
    no_splits: PackageCopy, tmp_path: Path, content: dict[str, Any], lines: list[str], lost: str
) -> None:
    file = tmp_path / "trial.c3d"
    file.write_bytes(c3d_bytes(**content))
    no_splits.output_of("import sys, _moxPY; _moxPY.moxReadAcquisition(sys.argv[1])", file)
    assert errors_of(no_splits) == lines


@unsplit
def test_channels_that_were_never_split_are_not_written_over(
    no_splits: PackageCopy, tmp_path: Path, content: dict[str, Any], lines: list[str], lost: str
) -> None:
    folder = tmp_path / "trials"
    folder.mkdir()
    file = folder / "trial.c3d"
    file.write_bytes(c3d_bytes(**content))
    before = file.read_bytes()
    assert no_splits.output_of(READ_AND_WRITE, file, file) == refusal(lost)
    assert no_splits.output_of(READ_AND_WRITE, file, folder / "other.c3d") == refusal(lost)
    assert list(folder.iterdir()) == [file]
    assert file.read_bytes() == before


def test_a_file_without_channels_has_none_to_lose(no_splits: PackageCopy, tmp_path: Path) -> None:
    file = tmp_path / "trial.c3d"
    file.write_bytes(c3d_bytes())
    assert no_splits.output_of(READ_AND_WRITE, file, tmp_path / "written.c3d") == "written"
    assert errors_of(no_splits) == [ANALOGS]


def test_the_way_out_that_the_refusal_names(no_splits: PackageCopy, tmp_path: Path) -> None:
    file = tmp_path / "trial.c3d"
    file.write_bytes(c3d_bytes({"A": track(3)}, analogs=EMG))
    code = f"""{READ_AND_WRITE}
import shutil
shutil.copy(sys.argv[3], sys.argv[4])
_moxPY.reload()
trial = _moxPY.moxReadAcquisition(sys.argv[1])
_moxPY.moxWriteAcquisition(trial, sys.argv[2])
trial = _moxPY.moxReadAcquisition(sys.argv[2])
print()
print(_moxPY.moxGetPointNumber(trial), _moxPY.moxGetAnalogNumber(trial))
"""
    plugin = library(PACKAGE / "plugins", "data_modifier")
    printed = no_splits.output_of(code, file, file, plugin, no_splits.plugins)
    assert printed == refusal("1 point and 2 analog channels") + "\n1.0 2.0\n"


def remove_one_by_one(trial: Any) -> None:
    for _ in range(2):
        _moxPY.moxRemovePoint(trial, 0)
        _moxPY.moxRemoveAnalog(trial, 0)


def clear(trial: Any) -> None:
    _moxPY.moxClearPoints(trial)
    _moxPY.moxClearAnalogs(trial)


@pytest.mark.parametrize("edit", [clear, remove_one_by_one])
def test_channels_that_an_edit_removed_are_no_reason(tmp_path: Path, edit: Any) -> None:
    trial = read_c3d(tmp_path, {"A": track(3), "B": track(3)}, analogs=EMG)
    edit(trial)
    path = tmp_path / "trial.c3d"
    _moxPY.moxWriteAcquisition(trial, str(path))
    again = _moxPY.moxReadAcquisition(str(path))
    assert (_moxPY.moxGetPointNumber(again), _moxPY.moxGetAnalogNumber(again)) == (0.0, 0.0)


# Where the importer comes from another plugin: the file, whether the channels can be split, and
# what the log says.
STEPS: dict[str, tuple[str, bool, list[str]]] = {
    "events": ("points marker\nanalogs a\n", True, [without(f"the events: {NO_EVENTS}")]),
    "analogs": (
        "points marker\n",
        True,
        [without(f"the analog channels: {NO_SUCH_SET}"), without(f"the events: {NO_EVENTS}")],
    ),
    "all": (
        "points angle power marker power\nanalogs a\n",
        False,
        [
            ANGLES,
            MARKERS,
            without(f"the points of 'Format/Data/Powers': {NO_SPLIT}"),
            ANALOGS,
            without(f"the events: {NO_EVENTS}"),
        ],
    ),
    "unknown types": (
        "points marker scalar scalar\nanalogs a\n",
        True,
        [
            without("2 points: their type is none of the five kinds"),
            without(f"the events: {NO_EVENTS}"),
        ],
    ),
}


@pytest.mark.parametrize(("content", "splits", "lines"), STEPS.values(), ids=STEPS.keys())
def test_each_step_that_failed_is_logged(
    package: PackageCopy, tmp_path: Path, content: str, splits: bool, lines: list[str]
) -> None:
    package.add_own_plugins()
    for plugin in package.plugins.iterdir():
        if not (splits and plugin.name.startswith("data_modifier")):
            plugin.unlink()
    package.add_test_plugin("partial")
    file = tmp_path / "trial.partial"
    file.write_text(f"PARTIAL\n{content}")
    package.output_of("import sys, _moxPY; _moxPY.moxReadAcquisition(sys.argv[1])", file)
    assert errors_of(package) == lines
