"""`moxpy plot`: pictures of any number of trials."""

from __future__ import annotations

import shutil
import sys
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import pytest
from moxPY.commands.pictures import PICTURES

Call = Callable[..., Any]
BEGINNINGS = {"png": b"\x89PNG\r\n", "svg": b"<?xml", "pdf": b"%PDF-"}


@pytest.fixture(autouse=True)
def without_pyplot(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.delitem(sys.modules, "matplotlib.pyplot", raising=False)


def test_every_picture_lies_in_the_folder_and_is_named_after_the_file(
    call: Call, walk: Path, tmp_path: Path
):
    words = [word for name in PICTURES for word in ("--what", name)]
    code, out, err = call("plot", walk, "-o", tmp_path / "a" / "b", *words)
    paths = [tmp_path / "a" / "b" / f"walk_{name}.png" for name in PICTURES]
    assert (code, out, err) == (0, "".join(f"{path}\n" for path in paths), "")
    assert sorted(paths[0].parent.iterdir()) == sorted(paths)
    assert all(path.read_bytes().startswith(BEGINNINGS["png"]) for path in paths)
    assert "matplotlib.pyplot" not in sys.modules


@pytest.mark.parametrize("suffix", BEGINNINGS)
def test_formats_hold_the_same_whenever_they_are_made(
    call: Call, walk: Path, tmp_path: Path, suffix: str
):
    contents = []
    for folder in ("one", "other"):
        words = ("--what", "events", "--format", suffix)
        assert call("plot", walk, "-o", tmp_path / folder, *words).code == 0
        contents.append((tmp_path / folder / f"walk_events.{suffix}").read_bytes())
    assert contents[0].startswith(BEGINNINGS[suffix])
    if suffix != "svg":  # whose ids are random
        assert contents[0] == contents[1]


def test_channels_are_drawn_by_their_labels(call: Call, walk: Path, tmp_path: Path):
    words = ("--channel", "LKneeAngles", "--channel", "Fz1")
    code, out, _ = call("plot", walk, "-o", tmp_path, *words)
    names = [tmp_path / f"walk_channel_{label}.png" for label in ("LKneeAngles", "Fz1")]
    assert (code, out) == (0, "".join(f"{name}\n" for name in names))


def test_a_label_of_a_folder_stays_in_the_folder(call: Call, tmp_path: Path):
    trial = moxPY.Trial.new(frames=3)
    trial.markers["../up a"] = [[0.0, 0.0, 0.0]] * 3
    trial.write(tmp_path / "odd.c3d")
    assert (
        call("plot", tmp_path / "odd.c3d", "-o", tmp_path / "out", "--channel", "../up a").code == 0
    )
    assert [path.name for path in (tmp_path / "out").iterdir()] == ["odd_channel_.._up_a.png"]


def test_what_a_trial_lacks_is_one_line_and_leaves_nothing(call: Call, walk: Path, tmp_path: Path):
    moxPY.Trial.new(frames=5).write(tmp_path / "bare.c3d")
    words = ("--what", "gaps", "--what", "events")
    code, out, err = call("plot", walk, tmp_path / "bare.c3d", "-o", tmp_path / "out", *words)
    assert (code, err) == (1, f"{tmp_path / 'bare.c3d'}: the trial has no markers\n")
    assert len(out.splitlines()) == 2
    assert {path.name for path in (tmp_path / "out").iterdir()} == {
        "walk_gaps.png", "walk_events.png",
    }  # fmt: skip


def test_nothing_is_replaced_unasked(call: Call, walk: Path, tmp_path: Path):
    there = tmp_path / "walk_events.png"
    there.write_text("mine")
    code, out, err = call("plot", walk, "-o", tmp_path, "--what", "gaps", "--what", "events")
    assert (code, out) == (1, "")
    assert err == f"{walk}: '{there}': there is such a file; --force replaces it\n"
    assert there.read_text() == "mine"
    assert not (tmp_path / "walk_gaps.png").exists()
    assert call("plot", walk, "-o", tmp_path, "--what", "events", "--force").code == 0
    assert there.read_bytes().startswith(BEGINNINGS["png"])


def test_calls_that_make_no_sense(call: Call, walk: Path, tmp_path: Path):
    code, _, err = call("plot", walk, "-o", tmp_path)
    assert code == 2
    assert "nothing is to be drawn; say what, for example --what angles" in err
    code, _, err = call("plot", walk, "-o", tmp_path, "--channel", "a b", "--channel", "a_b")
    assert code == 2
    assert "two channels would have one picture" in err
    (tmp_path / "more").mkdir()
    shutil.copyfile(walk, tmp_path / "more" / "walk.c3d")
    code, _, err = call("plot", walk, tmp_path / "more", "-o", tmp_path, "--what", "gaps")
    assert code == 2
    assert "would both become walk" in err


def test_without_matplotlib_it_says_what_to_install(
    call: Call, walk: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    def missing(package: str, part: str | None = None) -> None:
        raise ImportError(f"this needs {package}")

    monkeypatch.setattr("moxPY.commands.plot.require", missing)
    code, _, err = call("plot", walk, "-o", tmp_path, "--what", "gaps")
    assert (code, err) == (2, "moxpy: this needs matplotlib\n")
