"""`moxpy view`: the page of a trial, in a file or in the browser."""

from __future__ import annotations

import webbrowser
from collections.abc import Callable
from pathlib import Path
from typing import Any
from urllib.parse import urlsplit
from urllib.request import url2pathname

import moxPY
import pytest
from support.page_content import content_in

Call = Callable[..., Any]


def test_the_page_is_that_of_the_trial(call: Call, walk: Path, tmp_path: Path):
    page = tmp_path / "pages" / "gait.html"
    assert call("view", walk, "-o", page) == (0, f"{page}\n", "")
    assert page.read_text("utf-8") == moxPY.read(walk).view().html


def test_a_page_that_is_there_is_replaced_on_request_only(call: Call, walk: Path, tmp_path: Path):
    page = tmp_path / "walk.html"
    page.write_text("mine")
    text = f"{walk}: '{page}': there is such a file; --force replaces it\n"
    assert call("view", walk, "-o", page) == (1, "", text)
    assert page.read_text() == "mine"
    assert call("view", walk, "-o", page, "--force").code == 0
    before = walk.read_bytes()
    text = f"{walk}: a page ends on .html or .htm, not '.c3d'\n"
    assert call("view", walk, "-o", walk, "--force") == (1, "", text)
    assert walk.read_bytes() == before
    assert page.read_text("utf-8").startswith("<!doctype html>")


def test_the_browser_shows_a_page_that_stays(
    call: Call, walk: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    opened: list[str] = []
    monkeypatch.setattr("tempfile.tempdir", str(tmp_path))
    monkeypatch.setattr(webbrowser, "open", lambda url: not opened.append(url))
    code, out, err = call("view", walk)
    assert (code, err) == (0, "")
    page = Path(url2pathname(urlsplit(opened[0]).path))
    assert (out, page.name) == (f"{page}\n", "walk.html")
    assert content_in(page.read_text("utf-8"))["name"] == "walk.c3d"


def test_without_a_browser_the_page_is_named(
    call: Call, walk: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.setattr("tempfile.tempdir", str(tmp_path))
    monkeypatch.setattr(webbrowser, "open", lambda url: False)
    code, out, err = call("view", walk)
    assert (code, out) == (1, "")
    page = next(tmp_path.glob("moxpy-*/walk.html"))
    assert err == f"moxpy: there is no browser to show '{page}' in\n"


def test_the_axis_upwards_can_be_given(call: Call, walk: Path, tmp_path: Path):
    call("view", walk, "-o", tmp_path / "walk.html", "--up", "-y")
    assert content_in((tmp_path / "walk.html").read_text("utf-8"))["up"] == [0, -1, 0]


def test_a_file_that_fails_is_one_line(call: Call, tmp_path: Path):
    file, page = tmp_path / "notes.c3d", tmp_path / "notes.html"
    file.write_text("no trial")
    code, out, err = call("view", file, "-o", page)
    assert (code, out) == (1, "")
    assert err.startswith(f"{file}: not a C3D file")
    assert err.count("\n") == 1
    assert not page.exists()
