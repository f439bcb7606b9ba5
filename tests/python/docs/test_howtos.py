"""The how-to pages show what happens."""

from __future__ import annotations

import doctest
import re
import shutil
from pathlib import Path

import pytest

REPOSITORY = Path(__file__).resolve().parents[3]
PAGES = [
    "analogs.md",
    "checks.md",
    "batches.md",
    "conventions.md",
    "cookbook.md",
    "errors.md",
    "events.md",
    "exports.md",
    "force_platforms.md",
    "gait.md",
    "metadata.md",
    "opensim.md",
    "points.md",
    "quirks.md",
    "start.md",
    "writing.md",
]


def examples_of(page: str) -> doctest.DocTest:
    """All fenced examples of a page, in order and in one namespace."""
    text = (REPOSITORY / "docs" / page).read_text("utf-8")
    blocks = re.findall(r"^```(?:python|pycon)\n(.*?)^```", text, re.DOTALL | re.MULTILINE)
    return doctest.DocTestParser().get_doctest("\n".join(blocks), {}, page, page, 0)


@pytest.mark.parametrize("page", PAGES)
def test_every_example_prints_what_the_page_shows(
    page: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    (tmp_path / "examples").mkdir()
    shutil.copy(REPOSITORY / "examples" / "gait_trial.c3d", tmp_path / "examples")
    monkeypatch.chdir(tmp_path)
    report: list[str] = []
    results = doctest.DocTestRunner().run(examples_of(page), out=report.append)
    assert results.attempted >= 10
    assert results.failed == 0, "".join(report)
