"""The page about the command line shows what happens."""

from __future__ import annotations

import doctest
import re
from pathlib import Path

import pytest
from console_blocks import rerun

PAGE = Path(__file__).resolve().parents[3] / "docs" / "command_line.md"


def test_commands_show_what_the_page_says_and_its_table_answers(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    page = PAGE.read_text("utf-8")
    assert page.count("\n$ moxpy ") > 10
    assert rerun(page, tmp_path) == page
    monkeypatch.chdir(tmp_path)
    blocks = re.findall(r"^```pycon\n(.*?)^```", page, re.DOTALL | re.MULTILINE)
    examples = doctest.DocTestParser().get_doctest("\n".join(blocks), {}, PAGE.name, PAGE.name, 0)
    report: list[str] = []
    results = doctest.DocTestRunner().run(examples, out=report.append)
    assert results.attempted > 10
    assert results.failed == 0, "".join(report)
