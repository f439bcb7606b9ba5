"""`Trial.view`: the page in a file, in a notebook, in the browser."""

from __future__ import annotations

import html
import re
import webbrowser
from pathlib import Path

import moxPY
import pytest
from moxPY.player import Player


def test_the_page_is_written_to_a_path(walk: moxPY.Trial, tmp_path: Path):
    path = tmp_path / "new" / "walk.html"
    player = walk.view(path)
    assert path.read_text("utf-8") == player.html
    assert list(path.parent.iterdir()) == [path]
    assert isinstance(player, Player)
    assert repr(player) == f"<player: gait_trial.c3d, {len(player.html) / 1e6:.2g} MB>"


def test_a_page_that_cannot_be_written_leaves_what_was_there(walk: moxPY.Trial, tmp_path: Path):
    there = tmp_path / "walk.html"
    there.mkdir()
    with pytest.raises(IsADirectoryError):
        walk.view(there)
    assert list(tmp_path.iterdir()) == [there]


def test_a_page_replaces_the_one_that_is_there(walk: moxPY.Trial, tmp_path: Path):
    path = tmp_path / "walk.html"
    path.write_text("old")
    walk.view(path)
    assert path.read_text("utf-8").startswith("<!doctype html>")


@pytest.mark.parametrize("name", ["walk.c3d", "walk", "walk.json"])
def test_a_page_replaces_no_other_kind_of_file(walk: moxPY.Trial, tmp_path: Path, name: str):
    path = tmp_path / name
    path.write_text("old")
    text = rf"^a page ends on \.html or \.htm, not '{path.suffix}'$"
    with pytest.raises(ValueError, match=text):
        walk.view(path)
    assert path.read_text() == "old"
    walk.view(tmp_path / "WALK.HTM")
    assert (tmp_path / "WALK.HTM").stat().st_size > 100_000


def test_a_notebook_keeps_the_page_in_itself(walk: moxPY.Trial):
    player = walk.view()
    cell = player._repr_html_()
    frame = re.fullmatch(r'<iframe ([^>]*?)srcdoc="([^"]*)"></iframe>', cell)
    assert frame is not None
    assert html.unescape(frame[2]) == player.html
    assert "src=" not in frame[1]
    assert 'title="gait_trial.c3d"' in frame[1]


def test_an_element_of_another_page_has_the_height_that_it_is_given(walk: moxPY.Trial):
    player = walk.view()
    assert 'style="width: 100%; height: min(50rem, 80vh); border: 0"' in player.frame(
        "min(50rem, 80vh)"
    )
    assert player.frame() == player._repr_html_()
    assert "height: 1px&quot; onload=&quot;; border" in player.frame('1px" onload="')


def test_the_page_stays_as_the_trial_was(walk: moxPY.Trial):
    player = walk.view()
    before = player.html
    del walk.markers["LASI"]
    walk.close()
    assert player.html == before


def test_the_browser_gets_a_file_of_the_name_of_the_trial(
    walk: moxPY.Trial, monkeypatch: pytest.MonkeyPatch, tmp_path: Path
):
    opened: list[str] = []
    monkeypatch.setattr("tempfile.tempdir", str(tmp_path))
    monkeypatch.setattr(webbrowser, "open", lambda url: not opened.append(url))
    player = walk.view()
    path, shown = player.open()
    assert shown
    assert opened == [path.as_uri()]
    assert path.name == "gait_trial.html"
    assert path.read_text("utf-8") == player.html


def test_a_closed_trial_has_no_player(walk: moxPY.Trial):
    walk.close()
    with pytest.raises(ValueError, match="closed"):
        walk.view()


def test_a_threshold_is_a_number_from_0_upwards(walk: moxPY.Trial):
    with pytest.raises(ValueError, match="threshold"):
        walk.view(threshold=-1.0)
