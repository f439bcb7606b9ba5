"""The page is one file that needs nothing else, and small."""

from __future__ import annotations

import os
import re
from importlib.resources import files
from pathlib import Path

import moxPY
import numpy as np
import pytest
from moxPY.player.page import SCRIPTS, page, script, source
from support.page_content import content_in

IMPORT = re.compile(r'^import \{([^}]*)\} from "\./(\w+\.js)";$', re.MULTILINE)
DECLARED = re.compile(r"^(?:export )?(?:async )?(?:const|let|function|class) (\w+)", re.MULTILINE)


def test_the_page_names_no_address(walk: moxPY.Trial):
    html = walk.view().html
    for sign in ("://", "//cdn", "@import", "url("):
        assert sign not in html, sign
    assert re.findall(r"\b(?:src|href|action|poster)=", html) == []
    assert (
        re.findall(r"\b(?:fetch|XMLHttpRequest|WebSocket|importScripts|sendBeacon)\b", html) == []
    )


def test_the_page_forbids_itself_whatever_is_not_in_it(walk: moxPY.Trial):
    policy = re.search(r'Content-Security-Policy" content="([^"]*)"', walk.view().html)
    assert policy is not None
    assert policy[1].split("; ") == [
        "default-src 'none'",
        "style-src 'unsafe-inline'",
        "script-src 'unsafe-inline'",
    ]


def test_labels_stand_in_the_page_as_plain_text(walk: moxPY.Trial):
    walk.markers.rename({"LASI": "Becken: Stachel (links) äöü"})
    html = walk.view().html
    assert '"Becken: Stachel (links) äöü"' in html
    assert '"LKneeAngles"' in html


def test_no_label_ends_the_script(walk: moxPY.Trial):
    odd = '</script><script>alert(1)</script><!--&"'
    walk.markers.rename({"LASI": odd})
    html = walk.view().html
    assert html.count("<script") == html.count("</script>") == 2
    assert odd in [marker["label"] for marker in content_in(html)["markers"]]


def test_a_trial_of_a_name_of_any_bytes_has_a_page(walk: moxPY.Trial, tmp_path: Path):
    file = tmp_path / os.fsdecode(b"w\xe4lk.c3d")
    try:
        walk.write(file)
    except OSError:
        pytest.skip("the file system takes no such name")
    player = moxPY.read(file).view(tmp_path / "page.html")
    assert player.title == "w?lk.c3d"
    assert "<title>w?lk.c3d</title>" in (tmp_path / "page.html").read_text("utf-8")
    assert "w?lk.c3d" in repr(player)


def test_a_title_is_text():
    html = page("<b>&", {"name": "{{script}}"})
    assert "<title>&lt;b&gt;&amp;</title>" in html
    assert content_in(html) == {"name": "{{script}}"}


def test_100_markers_of_1000_frames_take_less_than_a_megabyte_and_a_half():
    random = np.random.default_rng(2)
    trial = moxPY.Trial.new(frames=1000, samples_per_frame=10)
    for number in range(100):
        trial.markers[f"M{number:03}"] = random.normal(size=(1000, 3)) * 1000.0
    bare = len(trial.view().html.encode())
    assert bare < 1_000_000
    for number in range(20):
        trial.analogs[f"EMG{number:02}"] = random.normal(size=10_000)
    assert len(trial.view().html.encode()) < 1_500_000


def test_the_example_is_small_enough_to_be_mailed(walk: moxPY.Trial):
    assert len(walk.view().html.encode()) < 600_000


def test_every_source_is_part_of_the_page():
    names = {file.name for file in files("moxPY.player").iterdir()}
    assert {name for name in names if name.endswith(".js")} == set(SCRIPTS)
    assert source("player.css") in page("", {})


@pytest.mark.parametrize("name", SCRIPTS)
def test_modules_import_from_those_before_them_what_they_declare(name: str):
    before = SCRIPTS[: SCRIPTS.index(name)]
    for names, other in IMPORT.findall(source(name)):
        assert other in before
        exported = re.findall(
            r"^export (?:const|function|class) (\w+)", source(other), re.MULTILINE
        )
        assert set(names.replace(",", " ").split()) <= set(exported)


def test_no_name_is_declared_twice():
    names = [name for module in SCRIPTS for name in DECLARED.findall(source(module))]
    assert sorted(names) == sorted(set(names))


def test_the_script_has_no_imports_left():
    assert re.findall(r"^(?:import|export)\b", script(), re.MULTILINE) == []


def test_the_sources_stand_in_the_table_of_the_package():
    import moxPY.player

    folder = Path(moxPY.player.__file__).parent
    files = {file.name.removesuffix(".py") for file in folder.iterdir() if file.is_file()}
    table = re.findall(r"^(\w\S*)  +\S", moxPY.player.__doc__ or "", re.MULTILINE)
    assert set(table) == files - {"__init__"}
