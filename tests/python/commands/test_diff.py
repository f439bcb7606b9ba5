"""`moxpy diff`: what tells two files apart, and an exit code as of other programs that compare."""

from __future__ import annotations

import contextlib
import io
import json
import tempfile
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import pytest
from hypothesis import given, settings
from moxPY.commands import main
from support.any_trials import trials

Call = Callable[..., Any]


@pytest.fixture
def slower(walk: Path) -> Path:
    """The example trial with another rate and another first frame."""
    trial = moxPY.read(walk)
    trial.rate = 50.0
    trial.first_frame = 11
    path = walk.with_name("slower.c3d")
    trial.write(path)
    return path


def test_a_file_is_as_itself(call: Call, walk: Path):
    assert call("diff", walk, walk) == (0, "", "")


def test_differences_are_shown_by_family_and_channel(call: Call, walk: Path, slower: Path):
    code, out, err = call("diff", walk, slower, "--only", "clock")
    assert (code, err) == (1, "")
    assert out == "clock\n  rate         values: 100 and 50\n  first_frame  values: 1 and 11\n"


def test_all_that_python_finds_is_shown(call: Call, walk: Path, slower: Path):
    found = moxPY.read(walk).differences(moxPY.read(slower))
    lines = call("diff", walk, slower).out.splitlines()
    assert [line for line in lines if not line.startswith(" ")] == list(
        dict.fromkeys(each.family for each in found)
    )
    assert len([line for line in lines if line.startswith(" ")]) == len(found)


def test_families_are_left_out(call: Call, walk: Path, slower: Path):
    found = moxPY.read(walk).differences(moxPY.read(slower), without="clock")
    code, out, _ = call("diff", walk, slower, "--without", "clock")
    assert code == (1 if found else 0)
    assert "clock" not in out.splitlines()


def test_tolerances_are_for_all_families_or_for_one(call: Call, walk: Path, slower: Path):
    words = ["diff", walk, slower, "--only", "clock"]
    assert "rate" not in call(*words, "-t", "50").out
    assert "rate" in call(*words, "-t", "50", "-t", "clock=1").out
    assert "rate" not in call(*words, "-t", "clock=50").out


def test_json_has_the_fields_of_differences(call: Call, walk: Path, slower: Path):
    code, out, _ = call("diff", "--json", walk, slower, "--only", "clock")
    assert code == 1
    first, _ = json.loads(out)
    assert (first["family"], first["channel"], first["largest"]) == ("clock", "rate", 50.0)
    assert json.loads(call("diff", "--json", walk, walk).out) == []


def test_every_file_that_fails_is_told(call: Call, walk: Path, tmp_path: Path):
    missing, bad = tmp_path / "missing.c3d", tmp_path / "bad.c3d"
    bad.write_bytes(b"")
    code, out, err = call("diff", missing, bad)
    assert (code, out) == (2, "")
    assert err == (f"{missing}: No such file or directory\n{bad}: not a C3D file: it is empty\n")
    assert call("diff", walk, missing).code == 2


@pytest.mark.parametrize(
    ("words", "text"),
    [
        (["-t", "close"], "'close' is no number such as 0.5, nor one for a family"),
        (["-t", "markers=close"], "'markers=close' is no number such as 0.5, nor one for"),
        (["-t", "clok=1"], "there is no family 'clok'; nearest: clock"),
        (["-t", "-1"], "a tolerance is a number from 0 upwards, not -1"),
        (["-t", "nan"], "a tolerance is a number from 0 upwards, not nan"),
        (["--only", "clok"], "'clok' is not"),
    ],
)
def test_what_makes_no_sense_is_refused(words: list[str], text: str, call: Call):
    code, out, err = call("diff", "a.c3d", "b.c3d", *words)
    assert (code, out) == (2, "")
    assert text in " ".join(err.split())


@settings(deadline=None, max_examples=40)
@given(first=trials(), second=trials())
def test_comparing_is_reflexive_and_symmetric(first: moxPY.Trial, second: moxPY.Trial):
    def found(one: Path, other: Path) -> tuple[int, set[tuple[str, ...]]]:
        with contextlib.redirect_stdout(io.StringIO()) as out:
            code = main(["diff", "--json", str(one), str(other)])
        swapped = {"only first": "only one", "only second": "only other"}
        return code, {
            (each["family"], each["channel"], swapped.get(each["aspect"], each["aspect"]))
            for each in json.loads(out.getvalue())
        }

    with tempfile.TemporaryDirectory() as folder:
        one, other = Path(folder) / "one.c3d", Path(folder) / "other.c3d"
        first.write(one)
        second.write(other)
        assert found(one, one) == found(other, other) == (0, set())
        code, there = found(one, other)
        back_code, back = found(other, one)
    turned = {"only one": "only other", "only other": "only one"}
    assert code == back_code == (1 if there else 0)
    assert there == {(family, channel, turned.get(what, what)) for family, channel, what in back}
