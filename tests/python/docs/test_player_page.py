"""The page about the player says what is true of it."""

from __future__ import annotations

import doctest
import re
import shutil
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from moxPY.player.page import source
from PIL import Image
from player_picture import PICTURE, make
from support.chromium import programs

REPOSITORY = Path(__file__).resolve().parents[3]
PAGE = (REPOSITORY / "docs" / "player.md").read_text("utf-8")


def test_the_example_does_what_the_page_shows(tmp_path: Path, monkeypatch: pytest.MonkeyPatch):
    (tmp_path / "examples").mkdir()
    shutil.copy(REPOSITORY / "examples" / "gait_trial.c3d", tmp_path / "examples")
    monkeypatch.chdir(tmp_path)
    blocks = re.findall(r"^```pycon\n(.*?)^```", PAGE, re.DOTALL | re.MULTILINE)
    examples = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, "player.md", None, 0)
    report: list[str] = []
    assert doctest.DocTestRunner().run(examples, out=report.append).failed == 0, "".join(report)
    assert (tmp_path / "walk.html").stat().st_size == pytest.approx(0.5e6, rel=0.2)


def test_the_keys_are_those_of_the_script():
    switches = re.findall(r'^ +\["\w+", "[\w, ]+", "(\w)"\]', source("controls.js"), re.MULTILINE)
    actions = re.findall(r"^ +(\w): \(\) =>", source("keyboard.js"), re.MULTILINE)
    letters = {letter.upper() for letter in (*switches, *actions) if letter.isalpha()}
    assert len(letters) == 12
    table = " ".join(re.findall(r"^\| ([^|]*) \|", PAGE, re.MULTILINE))
    help_text = "".join(re.findall(r"<kbd>(\w)</kbd>", source("page.html")))
    for letter in letters:
        assert re.search(rf"\b{letter}\b", table), letter
        assert letter in help_text, letter


def test_the_picture_is_small():
    assert PICTURE.stat().st_size < 150_000


def test_the_picture_shows_the_player_as_it_is(tmp_path: Path):
    programs()  # or skip
    make(tmp_path / "player.png")
    made, kept = (image_of(path) for path in (tmp_path / "player.png", PICTURE))
    assert made.shape == kept.shape
    # Letters of another machine are others; its colours, its parts and their places are not.
    unlike = np.abs(made - kept).max(axis=2) > 40.0
    assert unlike.mean() < 0.03


def image_of(path: Path) -> Any:
    return np.asarray(Image.open(path).convert("RGB"), dtype=float)
