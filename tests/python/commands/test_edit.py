"""`moxpy edit`: changed copies of files, beside which nothing changes."""

from __future__ import annotations

import os
import shutil
import signal
import subprocess
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from moxPY.commands.parse import Stretch, stretch
from support.command_line import piped, started

Call = Callable[..., Any]


@pytest.fixture
def edited(call: Call, walk: Path, tmp_path: Path) -> Callable[..., moxPY.Trial]:
    """The example trial as a call makes it; the file that it began with stays."""

    def edit(*words: str) -> moxPY.Trial:
        before = walk.read_bytes()
        path = tmp_path / "out" / "walk.c3d"
        assert call("edit", walk, "-o", tmp_path / "out", *words) == (0, f"{path}\n", "")
        assert walk.read_bytes() == before
        return moxPY.read(path)

    return edit


def test_channels_get_other_labels(edited: Callable[..., moxPY.Trial], walk: Path):
    words = ["--rename", "LASI=RASI", "--rename", "RASI=LASI", "--rename", "RGastroc=Calf"]
    trial, original = edited(*words), moxPY.read(walk)
    assert np.array_equal(
        trial.markers["LASI"].values, original.markers["RASI"].values, equal_nan=True
    )
    assert np.array_equal(
        trial.markers["RASI"].values, original.markers["LASI"].values, equal_nan=True
    )
    assert np.array_equal(trial.analogs["Calf"].values, original.analogs["RGastroc"].values)


def test_channels_are_removed_by_label_and_by_pattern(edited: Callable[..., moxPY.Trial]):
    trial = edited("--remove", "LFIN", "--remove", "?Gas*", "--remove", "*Angles", "--remove", "X*")
    assert len(trial.markers) == 39
    assert "LFIN" not in trial.markers
    assert not any("Gastroc" in label for label in trial.analogs)
    assert len(trial.analogs) == 18
    assert len(trial.angles) == 0


def test_a_label_that_looks_like_a_pattern_means_itself(
    edited: Callable[..., moxPY.Trial], walk: Path
):
    trial = moxPY.read(walk)
    trial.markers.rename({"LFIN": "*1", "RFIN": "*12"})
    trial.write(walk)
    changed = edited("--remove", "*1")
    assert "*1" not in changed.markers
    assert len(changed.markers) == 39


def test_a_removed_label_is_free_for_another_channel(
    edited: Callable[..., moxPY.Trial], walk: Path
):
    trial = edited("--rename", "RASI=LASI", "--remove", "LASI")
    assert np.array_equal(
        trial.markers["LASI"].values, moxPY.read(walk).markers["RASI"].values, equal_nan=True
    )


@pytest.mark.parametrize(
    ("typed", "frames"),
    [("f100:f250", (100, 250)), (":f9", (1, 9)), ("0.5:1.0", (51, 101)), ("3.5:", (351, 360))],
)
def test_a_stretch_is_in_frames_or_in_seconds(
    typed: str, frames: tuple[int, int], edited: Callable[..., moxPY.Trial]
):
    trial = edited("--crop", typed)
    assert (trial.first_frame, trial.last_frame) == frames


def test_open_ends_are_those_of_the_trial():
    assert stretch("f7:") == Stretch(first=7)
    assert stretch(":f7") == Stretch(last=7)
    assert stretch(":-0.5") == Stretch(stop=-0.5)


def test_what_trials_do_is_done_in_the_order_of_the_help(
    edited: Callable[..., moxPY.Trial], walk: Path
):
    words = ["--up", "y", "--units", "m,N,Nm", "--resample", "50"]
    trial = edited(*words, "--crop", "f101:f200", "--fill-gaps", "5")
    expected = moxPY.read(walk).fill_gaps(5).crop(101, 200).resample(50).in_units().y_up()
    assert trial.rate == 50
    assert trial.markers.unit == "m"
    np.testing.assert_array_equal(trial.markers.values, expected.markers.values.astype(np.float32))
    np.testing.assert_array_equal(
        trial.platforms[0].corners, expected.platforms[0].corners.astype(np.float32)
    )


def test_entries_are_set_as_what_they_are(edited: Callable[..., moxPY.Trial], walk: Path):
    trial = moxPY.read(walk)
    trial.metadata["LAB"] = {"ROOM": 3, "WEIGHT": 71.5, "NAMES": ["a", "b"], "ZERO": [1, 2]}
    trial.write(walk)
    pairs = {
        "lab:room": "4",
        "LAB:WEIGHT": "70",
        "LAB:NAMES": "knee,hip",
        "LAB:ZERO": "5,6,7",
        "SUBJECTS:NAMES": "Ann",
        "NEW:COUNT": "12",
        "NEW:RATIO": "0.5",
        "NEW:PLACE": "Lab 2=b",
        "NEW:RANGE": "1,2.5",
    }
    words = [word for name, text in pairs.items() for word in ("--set", f"{name}={text}")]
    changed = edited(*words).metadata
    lab, new = changed["LAB"], changed["NEW"]
    assert (lab["ROOM"], lab.entry("ROOM").type) == (4, "Integer")
    assert (lab["WEIGHT"], lab.entry("WEIGHT").type) == (70.0, "Real")
    assert lab["NAMES"] == ["knee", "hip"]
    assert lab["ZERO"].tolist() == [5, 6, 7]
    assert changed["SUBJECTS"]["NAMES"] == ["Ann"]
    assert (new["COUNT"], new["RATIO"], new["PLACE"]) == (12, 0.5, "Lab 2=b")
    assert new["RANGE"].tolist() == [1.0, 2.5]
    assert list(lab) == ["ROOM", "WEIGHT", "NAMES", "ZERO"]


def test_what_the_file_says_is_put_right_before_the_trial_is_turned(
    edited: Callable[..., moxPY.Trial], walk: Path
):
    trial = moxPY.read(walk)
    del trial.metadata["FORCE_PLATFORM"]
    del trial.metadata["POINT"]["Y_SCREEN"]
    trial.write(walk)
    changed = edited("--set", "POINT:Y_SCREEN=+X", "--up", "z")
    assert changed.metadata["POINT"]["Y_SCREEN"] == "+Z"
    np.testing.assert_array_equal(changed.markers["C7"].z, moxPY.read(walk).markers["C7"].x)


def test_the_form_of_the_file_is_chosen(edited: Callable[..., moxPY.Trial], tmp_path: Path):
    trial = edited("--storage", "integer", "--processor", "dec")
    assert trial.frames == 360
    content = (tmp_path / "out" / "walk.c3d").read_bytes()
    assert content[512 * (content[0] - 1) + 3] == 85  # DEC's numbers
    assert trial.metadata["POINT"]["SCALE"] > 0  # integers


@pytest.mark.parametrize(
    ("words", "text"),
    [
        (["--remove", "LASY"], "no channel 'LASY'; nearest: LASI\n"),
        (["--rename", "LASY=X"], "no channel 'LASY'; nearest: LASI\n"),
        (["--rename", "LASI=RASI"], "two channels would have the label 'RASI'"),
        (["--crop", "f1:f999"], "there are no frames 1 to 999; "),
        (["--crop", "9:10"], "there is no frame from 9 s to 10 s; "),
        (["--set", "POINT:RATE=fast"], "--set POINT:RATE: expected numbers, got 'fast'"),
        (["--set", "FORCE_PLATFORM:CORNERS=1,2"],
         "--set FORCE_PLATFORM:CORNERS: expected 24 numbers (2 by 4 by 3), got 2"),
        (["--set", "FORCE_PLATFORM:USED=70000"], "70000"),
    ],
)  # fmt: skip
def test_what_a_trial_refuses_is_told_and_nothing_is_written(
    words: list[str], text: str, call: Call, walk: Path, tmp_path: Path
):
    code, out, err = call("edit", walk, "-o", tmp_path / "out", *words)
    assert (code, out) == (1, "")
    assert err.startswith(f"{walk}: ")
    assert text in err
    assert err.count("\n") == 1
    assert not list((tmp_path / "out").glob("*"))


@pytest.mark.parametrize(
    ("words", "text"),
    [
        ([], "nothing is to be changed; say what"),
        (["--crop", "1.0"], "'1.0' is no stretch such as 1.0:3.5 (seconds)"),
        (["--crop", "f1:2.0"], "'f1:2.0': both ends are frames (f100:f250), or both"),
        (["--crop", "a:b"], "'a:b': a time is in seconds"),
        (["--crop", "nan:2.0"], "'nan:2.0': a time is in seconds"),
        (["--crop", "3.5:1.0"], "'3.5:1.0' ends before it begins"),
        (["--crop", "f250:f100"], "'f250:f100' ends before it begins"),
        (["--resample", "0"], "'0' is no rate such as 100"),
        (["--resample", "-50"], "'-50' is no rate such as 100"),
        (["--resample", "nan"], "'nan' is no rate such as 100"),
        (["--resample", "fast"], "'fast' is no rate such as 100"),
        (["--rename", "LASI"], "'LASI' is no pair of labels"),
        (["--rename", "LASI=A", "--rename", "LASI=B"], "a label has one new name"),
        (["--set", "POINT=1"], "'POINT=1' is no entry and value"),
        (["--units", "m,N"], "'m,N': units are three"),
        (["--units", "m,N,mm"], "'mm' is no known unit of a moment"),
        (["--storage", "text"], "'text' is not one of 'real', 'integer', 'source'"),
    ],
)
def test_what_makes_no_sense_is_refused_before_anything_is_read(
    words: list[str], text: str, call: Call, tmp_path: Path
):
    code, out, err = call("edit", "missing.c3d", "-o", tmp_path, *words)
    assert (code, out) == (2, "")
    assert text in " ".join(err.split())


def test_a_file_that_is_there_is_replaced_on_request_only(call: Call, walk: Path, tmp_path: Path):
    before = walk.read_bytes()
    text = f"{walk}: there is such a file; --force replaces it\n"
    assert call("edit", walk, "-o", tmp_path, "--crop", "f1:f9") == (1, "", text)
    assert walk.read_bytes() == before
    assert call("edit", walk, "-o", tmp_path, "--crop", "f1:f9", "--force").code == 0
    assert moxPY.read(walk).frames == 9


def test_another_file_that_is_there_is_named(call: Call, walk: Path, tmp_path: Path):
    there = tmp_path / "out" / "walk.c3d"
    there.parent.mkdir()
    there.write_text("mine")
    code, _, err = call("edit", walk, "-o", there.parent, "--crop", "f1:f9")
    assert code == 1
    assert err == f"{walk}: '{there}': there is such a file; --force replaces it\n"
    assert there.read_text() == "mine"


def test_two_files_with_one_name_are_refused_before_anything_is_written(
    call: Call, walk: Path, tmp_path: Path
):
    other = tmp_path / "b" / "walk.C3D"
    other.parent.mkdir()
    shutil.copyfile(walk, other)
    code, out, err = call("edit", walk, other, "-o", tmp_path / "out", "--crop", "f1:f9")
    assert (code, out) == (2, "")
    message = " ".join(err.split())
    assert f"'{walk}' and '{other}' would both become walk" in message
    assert not (tmp_path / "out").exists()


def test_a_folder_that_is_a_file_is_refused(call: Call, walk: Path):
    code, _, err = call("edit", walk, "-o", walk, "--crop", "f1:f9")
    assert code == 2
    assert "is a file" in err


def test_the_others_are_done_when_files_fail(call: Call, walk: Path, tmp_path: Path):
    bad = tmp_path / "bad.c3d"
    bad.write_bytes(walk.read_bytes()[:300])
    code, out, err = call("edit", bad, walk, "-o", tmp_path / "out", "--crop", "f1:f9")
    assert code == 1
    assert out == f"{tmp_path / 'out' / 'walk.c3d'}\n"
    assert err.startswith(f"{bad}: ")


def many(walk: Path, count: int) -> Path:
    """A folder with names for one file."""
    folder = walk.parent / "many"
    folder.mkdir()
    for number in range(count):
        os.link(walk, folder / f"{number:04}.c3d")
    return folder


def test_many_files_are_changed_in_order(walk: Path, tmp_path: Path):
    folder = many(walk, 20)  # enough for processes
    finished = piped("edit", folder, "-o", tmp_path / "out", "--crop", "f1:f9", "--jobs", "2")
    assert (finished.returncode, finished.stderr) == (0, "")
    expected = [tmp_path / "out" / f"{number:04}.c3d" for number in range(20)]
    assert finished.stdout.splitlines() == list(map(str, expected))
    assert {moxPY.read(path).frames for path in expected} == {9}


@pytest.mark.parametrize("jobs", ["1", "2"])
def test_an_interrupt_leaves_whole_files_only(jobs: str, walk: Path, tmp_path: Path):
    folder, out = many(walk, 2000), tmp_path / "out"
    process = started(
        "edit", folder, "-o", out, "--rename", "LASI=LeftHip", "--jobs", jobs,
        stdout=subprocess.PIPE, stderr=subprocess.PIPE,
    )  # fmt: skip
    assert process.stdout
    assert process.stdout.readline() == f"{out / '0000.c3d'}\n"
    process.send_signal(signal.SIGINT)
    _, err = process.communicate()
    assert (process.returncode, err) == (130, "")
    written = sorted(out.iterdir())
    assert 1 <= len(written) < 2000
    assert {path.suffix for path in written} == {".c3d"}
    for path in written:
        assert "LeftHip" in moxPY.read(path, odd="raise").markers
