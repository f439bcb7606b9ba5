"""The page about reports says what is true of them."""

from __future__ import annotations

import doctest
import re
import shutil
from pathlib import Path

import pytest
from moxPY.report import SECTIONS

REPOSITORY = Path(__file__).resolve().parents[3]
PAGE = (REPOSITORY / "docs" / "reports.md").read_text("utf-8")


def test_the_examples_do_what_the_page_shows(tmp_path: Path, monkeypatch: pytest.MonkeyPatch):
    (tmp_path / "examples").mkdir()
    shutil.copy(REPOSITORY / "examples" / "gait_trial.c3d", tmp_path / "examples")
    monkeypatch.chdir(tmp_path)
    blocks = re.findall(r"^```pycon\n(.*?)^```", PAGE, re.DOTALL | re.MULTILINE)
    examples = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, "reports.md", None, 0)
    report: list[str] = []
    assert doctest.DocTestRunner().run(examples, out=report.append).failed == 0, "".join(report)
    assert {path.name for path in tmp_path.glob("*.*")} == {
        "walk.html", "walk.pdf", "poor.html", "both.pdf",
    }  # fmt: skip


def test_the_table_has_every_section():
    table = re.findall(r"^\| (`[^|]*) \|", PAGE, re.MULTILINE)
    assert tuple(re.findall(r"`(\w+)`", " ".join(table))) == SECTIONS


def test_the_picture_is_small():
    assert (REPOSITORY / "docs" / "pictures" / "report.png").stat().st_size < 150_000
