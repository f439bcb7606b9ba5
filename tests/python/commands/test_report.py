"""`moxpy report`: reports of trials."""

from __future__ import annotations

import shutil
import sys
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import pytest
from moxPY.report import SECTIONS

Call = Callable[..., Any]

# All but what says who it is, so that it does not take long.
SHORT = [word for name in SECTIONS if name != "recording" for word in ("--without", name)]


@pytest.fixture(autouse=True)
def without_pyplot(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.delitem(sys.modules, "matplotlib.pyplot", raising=False)


@pytest.fixture
def other(walk: Path, tmp_path: Path) -> Path:
    """Another trial."""
    return Path(shutil.copyfile(walk, tmp_path / "other.c3d"))


def test_each_file_has_its_report(call: Call, walk: Path, other: Path, tmp_path: Path):
    folder = tmp_path / "a" / "b"
    code, out, err = call("report", walk, other, "-o", folder, "--jobs", 1, *SHORT)
    assert (code, out, err) == (0, f"{folder / 'walk.html'}\n{folder / 'other.html'}\n", "")
    assert "<h1>Walker</h1><p>other.c3d</p>" in (folder / "other.html").read_text("utf-8")


def test_the_report_is_that_of_the_trial(call: Call, walk: Path, tmp_path: Path):
    words = ["--without", "angles", "--without", "emg", "--without", "moments"]
    assert call("report", walk, "-o", tmp_path / "out", *words).code == 0
    with moxPY.read(walk) as trial:
        expected = trial.report(tmp_path / "walk.html", without=words[1::2])
    assert (tmp_path / "out" / "walk.html").read_bytes() == expected.read_bytes()


def test_several_processes_make_the_same(call: Call, walk: Path, other: Path, tmp_path: Path):
    for folder, jobs in (("one", 1), ("two", 2)):
        words = ["-o", tmp_path / folder, "--jobs", jobs, *SHORT]
        assert call("report", walk, other, *words).code == 0
    for name in ("walk.html", "other.html"):
        one, two = ((tmp_path / folder / name).read_bytes() for folder in ("one", "two"))
        assert one == two


def test_paper(call: Call, walk: Path, tmp_path: Path):
    code, out, _ = call("report", walk, "-o", tmp_path, "--to", "pdf", *SHORT)
    assert (code, out) == (0, f"{tmp_path / 'walk.pdf'}\n")
    assert (tmp_path / "walk.pdf").read_bytes().startswith(b"%PDF-")


def test_trials_of_one_subject_together(call: Call, walk: Path, other: Path, tmp_path: Path):
    code, out, _ = call("report", walk, other, "-o", tmp_path, "--together", *SHORT)
    assert (code, out) == (0, f"{tmp_path / 'walk.html'}\n")
    assert "<p>1. walk.c3d, 2. other.c3d</p>" in (tmp_path / "walk.html").read_text("utf-8")
    assert not (tmp_path / "other.html").exists()


def test_together_means_all_of_them(call: Call, walk: Path, tmp_path: Path):
    (tmp_path / "notes.c3d").write_text("no trial")
    words = [walk, tmp_path / "notes.c3d", "-o", tmp_path / "out", "--together", *SHORT]
    code, out, err = call("report", *words)
    assert (code, out) == (1, "")
    assert err.startswith(f"{tmp_path / 'notes.c3d'}: not a C3D file")
    assert not (tmp_path / "out").exists()


def test_a_file_that_fails_is_one_line(call: Call, walk: Path, tmp_path: Path):
    (tmp_path / "notes.c3d").write_text("no trial")
    words = [tmp_path / "notes.c3d", walk, "-o", tmp_path / "out", "--jobs", 1, *SHORT]
    code, out, err = call("report", *words)
    assert (code, out) == (1, f"{tmp_path / 'out' / 'walk.html'}\n")
    assert err.startswith(f"{tmp_path / 'notes.c3d'}: not a C3D file")
    assert err.count("\n") == 1


@pytest.mark.parametrize("together", [[], ["--together"]])
def test_nothing_is_replaced_unasked(call: Call, walk: Path, tmp_path: Path, together: list[str]):
    there = tmp_path / "walk.html"
    there.write_text("mine")
    words = ["report", walk, "-o", tmp_path, *together, *SHORT]
    code, out, err = call(*words)
    text = f"{walk}: '{there}': there is such a file; --force replaces it\n"
    assert (code, out, err) == (1, "", text)
    assert there.read_text() == "mine"
    assert call(*words, "--force").code == 0
    assert there.read_text("utf-8").startswith("<!DOCTYPE html>")


def test_two_files_of_one_name_are_refused(call: Call, walk: Path, tmp_path: Path):
    (tmp_path / "more").mkdir()
    shutil.copyfile(walk, tmp_path / "more" / "walk.c3d")
    code, _, err = call("report", walk, tmp_path / "more", "-o", tmp_path / "out", *SHORT)
    assert code == 2
    assert "would both become walk" in err
    assert not (tmp_path / "out").exists()


def test_a_section_that_there_is_not(call: Call, walk: Path, tmp_path: Path):
    code, _, err = call("report", walk, "-o", tmp_path / "out", "--without", "film")
    assert code == 2
    assert "'film' is not one of 'recording', 'checks'" in err
