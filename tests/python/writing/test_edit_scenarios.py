"""Every edit is written, and read back as it was in memory."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from support.agreement import assert_agreement
from support.c3d_bytes import Analog, c3d_bytes
from support.same_readings import reading_differences, readings
from support.small_trials import RICH
from support.stored_file import StoredFile
from support.ways import Way
from writing.edits import EDITS, call
from writing.test_new_acquisitions import new
from writing.trials import rich_file
from writing.written import source_in, write, written_again

every_edit = pytest.mark.parametrize("edit", EDITS)


@pytest.fixture(params=RICH)
def trial(request: pytest.FixtureRequest, tmp_path: Path, way: Way) -> Any:
    return way.of(RICH[request.param](tmp_path))


@pytest.fixture
def platform_trial(tmp_path: Path, way: Way) -> Any:
    """Seven channels, of which a platform uses the first six."""
    path = tmp_path / "trial.c3d"
    path.write_bytes(rich_file("intel", "real").to_bytes())
    return way.read(path)


def stored(acquisition: Any, folder: Path) -> StoredFile:
    return StoredFile(write(acquisition, folder / "written.c3d", source_in(folder)))


def reread(acquisition: Any, folder: Path) -> Any:
    return written_again(acquisition, folder, source_in(folder))


# Indices of points that change their kind: a file has one unit for all points of a kind.
RETYPED = {"retype the only angle": [1], "retype a marker": [0], "retype all forces": [3, 4]}


@every_edit
def test_an_edit_is_read_back(trial: Any, tmp_path: Path, edit: str):
    EDITS[edit](trial)
    expected = readings(trial)
    for index in RETYPED.get(edit, []):
        expected["Point"][index][1]["units"] = "Unknown"
    assert reading_differences(expected, reread(trial, tmp_path)) == []


@every_edit
def test_what_was_read_back_agrees_with_itself(trial: Any, tmp_path: Path, edit: str):
    EDITS[edit](trial)
    assert_agreement(reread(trial, tmp_path))


@every_edit
def test_writing_leaves_the_acquisition_as_it_was(trial: Any, tmp_path: Path, edit: str):
    EDITS[edit](trial)
    expected = readings(trial)
    write(trial, tmp_path / "written.c3d", source_in(tmp_path))
    assert reading_differences(expected, trial) == []


@every_edit
def test_a_second_writing_gives_the_same_bytes(trial: Any, tmp_path: Path, edit: str):
    EDITS[edit](trial)
    again = reread(trial, tmp_path)
    first = (tmp_path / "written.c3d").read_bytes()
    assert write(again, tmp_path / "second.c3d", first) == first


def test_another_frequency_is_read_back(trial: Any, tmp_path: Path):
    _moxPY.moxSetFrequency(trial, 50.0)
    after = reread(trial, tmp_path)
    assert _moxPY.moxGetPointFrequency(after) == 50.0
    assert _moxPY.moxGetAnalogFrequency(after) == 100.0
    assert _moxPY.moxGetPointFrameNumber(after) == 4.0  # the samples are the same
    np.testing.assert_array_equal(
        _moxPY.moxGetAnalogsValues(after), _moxPY.moxGetAnalogsValues(trial)
    )


@pytest.mark.parametrize(
    ("edits", "channels"),
    [
        ([], [1, 2, 3, 4, 5, 6]),
        ([call("moxSetAnalogLabel", "Fx1", "Force")], [1, 2, 3, 4, 5, 6]),
        ([call("moxRemoveAnalog", "EMG")], [1, 2, 3, 4, 5, 6]),
        ([call("moxRemoveAnalog", "Mx1")], [1, 2, 3, 0, 4, 5]),
        ([call("moxRemoveAnalog", "Fx1")], [0, 1, 2, 3, 4, 5]),
        ([call("moxSetAnalogNumber", 9)], [1, 2, 3, 4, 5, 6]),
        ([call("moxSetAnalogNumber", 4)], [1, 2, 3, 0, 0, 0]),
        ([call("moxClearAnalogs")], [0] * 6),
    ],
    ids=["nothing", "rename", "remove behind", "remove one", "remove the first", "append",
         "remove the last", "clear"],
)  # fmt: skip
def test_channels_of_a_platform_follow(
    platform_trial: Any, tmp_path: Path, edits: list[Any], channels: list[int]
):
    for edit in edits:
        edit(platform_trial)
    file = stored(platform_trial, tmp_path)
    assert file.values("FORCE_PLATFORM:CHANNEL").tolist() == channels
    assert file.parameters["FORCE_PLATFORM:CHANNEL"].dims == (6, 1)


def test_channels_behind_a_removed_one_are_renumbered(tmp_path: Path):
    file = rich_file("intel", "real", parameters={
        "FORCE_PLATFORM:CHANNEL": [[2, 3, 4, 5, 6, 7]]})  # fmt: skip
    (tmp_path / "trial.c3d").write_bytes(file.to_bytes())
    acquisition = _moxPY.moxReadAcquisition(str(tmp_path / "trial.c3d"))
    _moxPY.moxRemoveAnalog(acquisition, "Fx1")
    written = stored(acquisition, tmp_path)
    assert written.values("FORCE_PLATFORM:CHANNEL").tolist() == [1, 2, 3, 4, 5, 6]


@pytest.mark.parametrize("edit", ["remove the only angle", "retype the only angle"])
def test_a_kind_without_points_is_not_listed(trial: Any, tmp_path: Path, edit: str):
    EDITS[edit](trial)
    file = stored(trial, tmp_path)
    assert "POINT:ANGLES" not in file.parameters
    assert file.texts("POINT:FORCES") == ["LGRF", "RGRF"]


def test_a_renamed_point_is_listed_by_its_new_name(trial: Any, tmp_path: Path):
    _moxPY.moxSetPointLabel(trial, "LGRF", "Left")
    file = stored(trial, tmp_path)
    assert sorted(file.texts("POINT:FORCES")) == ["Left", "RGRF"]
    assert "LGRF" not in file.texts("POINT:LABELS")


def test_one_unit_for_all_ends_a_list_of_units_that_went_on(tmp_path: Path):
    points = {f"P{number}": np.ones((2, 3)) for number in range(300)}
    content = c3d_bytes(points, parameters={"POINT:UNITS": ["mm"] * 300})
    (tmp_path / "trial.c3d").write_bytes(content)
    acquisition = _moxPY.moxReadAcquisition(str(tmp_path / "trial.c3d"))
    _moxPY.moxSetPointsUnit(acquisition, "marker", "m")
    file = stored(acquisition, tmp_path)
    assert file.texts("POINT:UNITS") == ["m"]
    assert "POINT:UNITS2" not in file.parameters


def test_a_ratio_without_channels_is_kept(tmp_path: Path):
    content = c3d_bytes({"A": np.ones((40, 3))}, analogs=[Analog("C", np.arange(80))])
    (tmp_path / "trial.c3d").write_bytes(content)
    acquisition = _moxPY.moxReadAcquisition(str(tmp_path / "trial.c3d"))
    _moxPY.moxClearAnalogs(acquisition)
    _moxPY.moxSetAnalogSampleNumberPerFrame(acquisition, 5)
    file = stored(acquisition, tmp_path)
    assert file.scalar("ANALOG:RATE") == 500.0
    again = _moxPY.moxReadAcquisition(str(tmp_path / "written.c3d"))
    assert stored(again, tmp_path).content == file.content


def test_a_point_of_another_kind_gets_the_label_of_its_set(tmp_path: Path):
    points = [("A", np.ones((4, 3))), ("A", 2 * np.ones((4, 3)))]
    content = c3d_bytes(points, parameters={"POINT:ANGLES": ["A"]})
    (tmp_path / "trial.c3d").write_bytes(content)
    acquisition = _moxPY.moxReadAcquisition(str(tmp_path / "trial.c3d"))
    _moxPY.moxSetPointType(acquisition, 0, "force")
    before = _moxPY.moxGetPoints(acquisition)[0]
    after = _moxPY.moxGetPoints(reread(acquisition, tmp_path))[0]
    assert sorted(before) == sorted(after) == ["A", "A_2"]
    assert all((before[name] == after[name]).all() for name in before)


def test_events_of_one_name_keep_their_contexts(tmp_path: Path):
    acquisition = new(1, 200)
    _moxPY.moxAppendEvent(acquisition, "LeftFoot Strike", 0.5, "")
    _moxPY.moxAppendEvent(acquisition, "Foot Strike", 0.8, "Left")
    file = stored(acquisition, tmp_path)
    assert file.texts("EVENT:CONTEXTS") == ["", "Left"]
    assert file.texts("EVENT:LABELS") == ["LeftFoot Strike", "Foot Strike"]
    again = _moxPY.moxReadAcquisition(str(tmp_path / "written.c3d"))
    assert stored(again, tmp_path).content == file.content


def test_residuals_of_values_that_were_set_are_not_those_of_others(
    platform_trial: Any, tmp_path: Path
):
    values = _moxPY.moxGetPoint(platform_trial, "LASI")[0]
    values[:] = 1.0
    _moxPY.moxSetPointValues(platform_trial, "LASI", values)
    file = stored(platform_trial, tmp_path)
    start = 512 * (file.word(9) - 1)
    reals = np.frombuffer(file.content[start:], "<f4")[: 12 * (4 * 7 + 7 * 3)].reshape(12, -1)
    assert len(set(reals[:, 3].tolist())) == 1
    assert (reals[:, 3] >= 0).all()
