"""`moxpy convert`: files of other formats, from any number of trials."""

from __future__ import annotations

import json
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import pytest
from moxPY.formats import Format, Options, Target, formats

Call = Callable[..., Any]


@pytest.fixture
def notes(monkeypatch: pytest.MonkeyPatch) -> None:
    """A format of somebody else: one file with the options, one with the labels."""

    def write(trial: moxPY.Trial, target: Target, options: Options) -> None:
        target.path().write_text(f"{options}\n{trial.markers.unit}\n")
        target.path("labels").write_text(" ".join(trial.markers))
        if "LFIN" not in trial.markers:
            raise ValueError("there is no LFIN")

    known = {**formats(), "notes": Format("notes", ".txt", "what somebody wants to know", write)}
    monkeypatch.setattr("moxPY.formats.registry._registered", known)
    monkeypatch.setattr("moxPY.commands.convert._FORMATS", known)
    import moxPY.commands.convert as module

    (option,) = (each for each in module.command.params if each.name == "name")
    monkeypatch.setattr(option.type, "choices", tuple(known))


def test_results_lie_in_the_folder_and_are_named_after_the_file(
    call: Call, walk: Path, tmp_path: Path
):
    code, out, err = call("convert", walk, "-o", tmp_path / "a" / "b", "--to", "json")
    path = tmp_path / "a" / "b" / "walk.json"
    assert (code, out, err) == (0, f"{path}\n", "")
    assert list(path.parent.iterdir()) == [path]
    assert isinstance(json.loads(path.read_text("utf-8")), dict)


@pytest.mark.usefixtures("notes")
def test_parts_are_named_and_options_handed_on(call: Call, walk: Path, tmp_path: Path):
    words = ["--up", "y", "--units", "m,N,Nm", "--threshold", "5", "--side", "person"]
    words += ["--feet", "--long", "--parts", "markers,events"]
    code, out, _ = call("convert", walk, "-o", tmp_path, "--to", "notes", *words)
    assert (code, out) == (0, f"{tmp_path / 'walk.txt'}\n{tmp_path / 'walk_labels.txt'}\n")
    options = Options(
        up="y", units=("m", "N", "Nm"), threshold=5.0, side="person", feet=True, long=True,
        parts=("markers", "events"),
    )  # fmt: skip
    assert (tmp_path / "walk.txt").read_text() == f"{options}\nm\n"


@pytest.mark.usefixtures("notes")
def test_formats_of_others_are_listed(call: Call):
    text = " ".join(call("convert", "--help").out.split())
    assert text.endswith("notes what somebody wants to know")


@pytest.mark.usefixtures("notes")
def test_a_file_that_fails_leaves_nothing_and_the_others_are_done(
    call: Call, walk: Path, tmp_path: Path
):
    other = tmp_path / "other.c3d"
    trial = moxPY.read(walk)
    del trial.markers["LFIN"]
    trial.write(other)
    code, out, err = call("convert", other, walk, "-o", tmp_path / "out", "--to", "notes")
    assert code == 1
    assert out.splitlines() == [str(tmp_path / "out" / f"walk{end}.txt") for end in ("", "_labels")]
    assert err == f"{other}: there is no LFIN\n"
    names = sorted(path.name for path in (tmp_path / "out").iterdir())
    assert names == ["walk.txt", "walk_labels.txt"]


def test_results_that_are_there_are_replaced_on_request_only(
    call: Call, walk: Path, tmp_path: Path
):
    there = tmp_path / "walk.json"
    there.write_text("mine")
    code, out, err = call("convert", walk, "-o", tmp_path, "--to", "json")
    assert (code, out) == (1, "")
    assert err == f"{walk}: '{there}': there is such a file; --force replaces it\n"
    assert there.read_text() == "mine"
    assert call("convert", walk, "-o", tmp_path, "--to", "json", "--force").code == 0
    assert there.read_text() != "mine"


def test_two_files_with_one_name_are_refused(call: Call, walk: Path, tmp_path: Path):
    other = tmp_path / "b" / "walk.C3D"
    other.parent.mkdir()
    other.write_bytes(walk.read_bytes())
    code, out, err = call("convert", tmp_path, "-o", tmp_path / "out", "--to", "json")
    assert (code, out) == (2, "")
    message = " ".join(err.split())
    assert f"'{other}' and '{walk}' would both become walk" in message
    assert not (tmp_path / "out").exists()


@pytest.mark.parametrize(
    ("words", "text"),
    [
        (["--to", "docx"], "'docx' is not"),
        ([], "Missing option '--to'"),
        (["--to", "json", "--units", "m"], "'m': units are three"),
        (["--to", "json", "--threshold", "-1"], "-1"),
        (["--to", "json", "--side", "mine"], "'mine' is not one of"),
    ],
)
def test_what_makes_no_sense_is_refused(words: list[str], text: str, call: Call, tmp_path: Path):
    code, out, err = call("convert", "missing.c3d", "-o", tmp_path / "out", *words)
    assert (code, out) == (2, "")
    assert text in " ".join(err.split())
    assert not (tmp_path / "out").exists()


def test_a_package_that_is_missing_is_said_once(
    call: Call, walk: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    def write(trial: moxPY.Trial, target: Target, options: Options) -> None:
        raise ImportError('this needs X: pip install "moxPY[x]"')

    monkeypatch.setattr("moxPY.formats.json.write", write)
    (tmp_path / "again.c3d").write_bytes(walk.read_bytes())
    code, out, err = call("convert", tmp_path, "-o", tmp_path / "out", "--to", "json")
    assert (code, out) == (2, "")
    assert err == 'moxpy: this needs X: pip install "moxPY[x]"\n'


def test_a_trial_that_cannot_be_turned_is_told(call: Call, tmp_path: Path):
    moxPY.Trial.new(10).write(tmp_path / "empty.c3d")
    words = ["-o", tmp_path / "out", "--to", "json", "--up", "y"]
    code, _, err = call("convert", tmp_path / "empty.c3d", *words)
    assert code == 1
    assert err.startswith(f"{tmp_path / 'empty.c3d'}: nothing tells which axis points upwards")
