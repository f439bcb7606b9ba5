"""`Trial.report`: the file, what is asked for, and what cannot be."""

from __future__ import annotations

import os
from pathlib import Path

import matplotlib as mpl
import moxPY
import pytest
from moxPY.report import SECTIONS

DRAWN = ("gaps", "gait", "angles", "moments", "powers", "forces", "emg", "player")


def test_the_file_is_made_where_it_is_wanted(walk: moxPY.Trial, tmp_path: Path):
    for name, begin in (("a.html", b"<!DOCTYPE html>"), ("a.HTM", b"<!DOC"), ("a.pdf", b"%PDF-")):
        path = walk.report(tmp_path / name, without=DRAWN)
        assert path == tmp_path / name
        assert path.read_bytes().startswith(begin)
    assert walk.report(os.fsencode(tmp_path / "b.html"), without=DRAWN) == tmp_path / "b.html"


@pytest.mark.parametrize("name", ["walk.txt", "walk", "html"])
def test_another_ending_is_refused(walk: moxPY.Trial, tmp_path: Path, name: str):
    suffix = Path(name).suffix
    with pytest.raises(ValueError, match=rf"^a report ends on \.html or \.pdf, not '{suffix}'$"):
        walk.report(tmp_path / name)
    assert not list(tmp_path.iterdir())


def test_a_section_that_there_is_not_is_refused(walk: moxPY.Trial, tmp_path: Path):
    with pytest.raises(ValueError, match=r"^there is no section 'angels'.*angles"):
        walk.report(tmp_path / "walk.html", without=["angels"])
    with pytest.raises(ValueError, match=r"^there is no section 'film'"):
        walk.report(tmp_path / "walk.html", without="film")
    assert not list(tmp_path.iterdir())


def test_others_are_trials(walk: moxPY.Trial, tmp_path: Path):
    with pytest.raises(TypeError, match=r"^others are trials, not str$"):
        walk.report(tmp_path / "walk.html", others=["walk.c3d"])  # type: ignore[list-item]
    assert not list(tmp_path.iterdir())
    one = walk.report(tmp_path / "one.html", others=walk.copy(), without=DRAWN)
    several = walk.report(tmp_path / "several.html", others=[walk.copy()], without=DRAWN)
    assert one.read_bytes() == several.read_bytes()


def test_what_was_there_stays_until_the_new_one_is_complete(
    walk: moxPY.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    path = tmp_path / "walk.html"
    path.write_text("old")

    def fail(*_: object) -> None:
        raise OSError("no space")

    with monkeypatch.context() as patched:
        patched.setattr(Path, "write_bytes", fail)
        with pytest.raises(OSError, match="no space"):
            walk.report(path, without=SECTIONS)
    assert path.read_text() == "old"
    assert [each.name for each in tmp_path.iterdir()] == ["walk.html"]
    walk.report(path, without=SECTIONS)
    assert path.read_text("utf-8") != "old"


@pytest.mark.parametrize("suffix", [".html", ".pdf"])
def test_the_same_trial_gives_the_same_file(walk: moxPY.Trial, tmp_path: Path, suffix: str):
    files = [
        walk.report(tmp_path / f"{name}{suffix}", without=set(DRAWN) - {"gait", "powers"})
        for name in "ab"
    ]
    assert files[0].read_bytes() == files[1].read_bytes()


def test_neither_trial_nor_settings_change(walk: moxPY.Trial, tmp_path: Path):
    before = walk.copy()
    with mpl.rc_context({"axes.facecolor": "black", "font.size": 31.0}):
        styled = walk.report(tmp_path / "styled.html", without=set(DRAWN) - {"powers"})
        assert mpl.rcParams["font.size"] == 31.0
    assert not walk.differences(before)
    plain = walk.report(tmp_path / "plain.html", without=set(DRAWN) - {"powers"})
    assert styled.read_bytes() == plain.read_bytes()


@pytest.mark.parametrize("suffix", [".html", ".pdf"])
def test_a_trial_of_nothing_has_a_report(tmp_path: Path, suffix: str):
    path = moxPY.Trial.new(frames=0).report(tmp_path / f"bare{suffix}")
    assert path.stat().st_size > 2000


@pytest.mark.parametrize("suffix", [".html", ".pdf"])
def test_a_name_of_any_bytes(walk: moxPY.Trial, tmp_path: Path, suffix: str):
    file = tmp_path / os.fsdecode(b"w\xe4lk.c3d")
    try:
        walk.write(file)
    except OSError:
        pytest.skip("the file system takes no such name")
    trial = moxPY.read(file)
    trial.metadata["SUBJECTS"]["NAMES"] = ["$x_1$ <b>&"]
    path = trial.report(tmp_path / f"walk{suffix}", without=DRAWN)
    if suffix == ".html":
        page = path.read_text("utf-8")
        assert "<h1>$x_1$ &lt;b&gt;&amp;</h1><p>w?lk.c3d</p>" in page
