"""The page about plots says what is true of them, and its pictures are those of its examples."""

from __future__ import annotations

import doctest
import re
from pathlib import Path

import pytest
from make_pictures import make
from PIL import Image

REPOSITORY = Path(__file__).resolve().parents[3]
PAGE = REPOSITORY / "docs" / "plots.md"


def test_the_examples_do_what_the_page_shows(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(REPOSITORY)
    blocks = re.findall(r"^```pycon\n(.*?)^```", PAGE.read_text("utf-8"), re.DOTALL | re.MULTILINE)
    examples = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, PAGE.name, None, 0)
    report: list[str] = []
    results = doctest.DocTestRunner().run(examples, out=report.append)
    assert results.attempted > 12
    assert results.failed == 0, "".join(report)


def test_pictures_are_those_of_the_examples_and_small(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.chdir(REPOSITORY)
    made = {path.relative_to(tmp_path): path for path in make(PAGE, tmp_path)}
    shown = re.findall(r"^!\[.+\]\((.+)\)$", PAGE.read_text("utf-8"), re.MULTILINE)
    kept = [path.relative_to(PAGE.parent) for path in PAGE.parent.glob("pictures/plot_*.png")]
    assert [str(name) for name in made] == shown
    assert sorted(made) == sorted(kept)
    for name, path in made.items():
        # Letters look a little different from one matplotlib to the next; sizes do not.
        with Image.open(PAGE.parent / name) as shown_one, Image.open(path) as made_one:
            assert shown_one.size == made_one.size
        assert (PAGE.parent / name).stat().st_size < 150_000


def test_a_picture_that_nothing_draws_is_an_error(tmp_path: Path) -> None:
    page = tmp_path / "page.md"
    page.write_text("```pycon\n>>> number = 3\n```\n\n![A number](pictures/number.png)\n", "utf-8")
    with pytest.raises(ValueError, match=r"nothing is drawn for pictures/number\.png"):
        make(page, tmp_path)
