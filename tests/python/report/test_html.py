"""The page of HTML: one file, complete in itself."""

from __future__ import annotations

import html
import re
import sys
from collections import Counter
from pathlib import Path

import moxPY
import pytest
from moxPY.report import SECTIONS
from report.written import players, sections, without_players


class NoMatplotlib:
    """Finds matplotlib missing."""

    def find_spec(self, name: str, *_: object) -> None:
        if name.partition(".")[0] == "matplotlib":
            raise ModuleNotFoundError("there is none", name="matplotlib")


def test_every_section_is_there_in_order_and_linked(example_page: Path):
    page = example_page.read_text("utf-8")
    assert tuple(sections(page)) == SECTIONS
    links = re.findall(r'<a href="#([^"]*)">([^<]*)</a>', page)
    assert links == [(name, part.title) for name, part in sections(page).items()]
    assert "<title>Walker</title>" in page
    assert "<h1>Walker</h1><p>gait_trial.c3d</p>" in page


def test_the_page_needs_no_other_file(example_page: Path):
    page = without_players(example_page.read_text("utf-8"))
    addresses = set(re.findall(r"\w+://[^\s\"'<]+", page))
    assert addresses == {"http://www.w3.org/1999/xlink", "http://www.w3.org/2000/svg"}
    assert not re.findall(r"<(?:script|link|object|embed|video|base)\b", page)
    assert all(source.startswith("data:image/png;") for source in re.findall(r'src="(.{20})', page))
    assert "Content-Security-Policy\" content=\"default-src 'none';" in page


def test_what_drawings_refer_to_is_theirs(example_page: Path):
    page = without_players(example_page.read_text("utf-8"))
    names = Counter(re.findall(r'\bid="([^"]*)"', page))
    assert max(names.values()) == 1
    meant = set(re.findall(r'href="#([^"]*)"', page)) | set(re.findall(r"url\(#([^)]*)\)", page))
    assert len(meant) > 100
    assert meant <= set(names)


def test_labels_in_drawings_stay_as_they_are(walk: moxPY.Trial, tmp_path: Path):
    label = 'a id="b" href="#c" url(#d) <id="e">'
    walk.markers.rename({"LASI": label})
    left_out = [name for name in SECTIONS if name != "gaps"]
    page = walk.report(tmp_path / "walk.html", without=left_out).read_text("utf-8")
    drawing = page[page.index("<svg") : page.index("</svg>")]
    assert label in [html.unescape(text) for text in re.findall(r">([^<>]+)</text>", drawing)]


def test_the_player_is_inside(walk: moxPY.Trial, example_page: Path):
    assert players(example_page.read_text("utf-8")) == [walk.view().html]


def test_pictures_are_those_of_the_trial(example_page: Path):
    parts = sections(example_page.read_text("utf-8"))
    assert {name: part.pictures for name, part in parts.items() if part.pictures} == {
        "gaps": ["Gaps over the frames"],
        "gait": ["Events"],
        "angles": ["Angles"],
        "moments": ["Moments"],
        "powers": ["Powers"],
        "forces": [
            "Force on the person over time", "Force vectors on the person at the centre of pressure"
        ],
        "emg": ["Electromyography"],
    }  # fmt: skip
    page = example_page.read_text("utf-8")
    # Letters of drawings stay letters.
    for text in ("Knee flexion", "gait cycle (%)", "z, vertical (N)", "LRectFem"):
        assert page.count(f">{text}<") > 0, text


def test_a_drawing_of_very_many_points_is_one_of_dots(
    walk: moxPY.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.setattr("moxPY.report.html._LONGEST_SVG", 10)
    left_out = [name for name in SECTIONS if name != "gaps"]
    page = walk.report(tmp_path / "walk.html", without=left_out).read_text("utf-8")
    assert page.count('<img alt="" src="data:image/png;base64,iVBOR') == 1
    assert "<svg" not in page


def test_without_matplotlib_there_are_the_numbers_and_the_player(
    walk: moxPY.Trial, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    for name in [name for name in sys.modules if name.partition(".")[0] == "matplotlib"]:
        monkeypatch.delitem(sys.modules, name)
    monkeypatch.setattr(sys, "meta_path", [NoMatplotlib(), *sys.meta_path])
    page = walk.report(tmp_path / "walk.html").read_text("utf-8")
    parts = sections(page)
    assert list(parts) == ["recording", "checks", "gaps", "gait", "player", "not-shown"]
    assert parts["gait"].tables[0][:3] == [
        ["Events", "", ""], ["0.200 s", "Right", "Foot Strike"], ["0.310 s", "Left", "Foot Off"],
    ]  # fmt: skip
    missing = 'this needs matplotlib: pip install "moxPY[plot]".'
    assert f"Angles: {missing}" in parts["not-shown"].texts
    assert len(players(page)) == 1


def test_texts_of_a_file_are_no_html(walk: moxPY.Trial, tmp_path: Path):
    walk.markers.rename({"LFIN": "<i>&$x$"})
    left_out = [name for name in SECTIONS if name not in ("gaps", "player")]
    page = walk.report(tmp_path / "walk.html", without=left_out).read_text("utf-8")
    assert ["<i>&$x$", "22 (6 %)", "61–82"] in sections(page)["gaps"].tables[0]
    assert "<i>" not in page
