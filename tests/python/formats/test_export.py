"""What a user calls: `Trial.export`."""

from __future__ import annotations

import os
import re
import subprocess
import sys
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np
import pytest
from moxPY.formats import Format, Options, Target, formats, register, registry
from moxPY.trial import Trial, read

NAMES = ["csv", "parquet", "arrow", "xlsx", "trc", "mot", "sto", "json", "npz", "c3d"]


@pytest.fixture(autouse=True)
def no_others(monkeypatch: pytest.MonkeyPatch) -> None:
    """Only our own formats, and those that a test registers itself."""
    monkeypatch.setattr(registry, "_registered", {})


@pytest.mark.parametrize("name", NAMES)
def test_each_format_makes_files_that_begin_with_the_name(
    walk: Trial, name: str, tmp_path: Path
) -> None:
    paths = walk.export(tmp_path / f"walk.{name}")
    assert sorted(tmp_path.iterdir()) == sorted(paths)
    pattern = rf"walk(_[a-z]+)?\.{name}"
    assert all(re.fullmatch(pattern, path.name) and path.stat().st_size for path in paths)


def test_the_name_may_be_in_capitals_or_tell_no_format(walk: Trial, tmp_path: Path) -> None:
    assert walk.export(tmp_path / "WALK.TRC") == [tmp_path / "WALK.trc"]
    assert walk.export(tmp_path / "walk.v2", to="trc") == [tmp_path / "walk.v2.trc"]
    assert walk.export(tmp_path / "walk.trc", to="trc") == [tmp_path / "walk.trc"]


def test_unknown_formats_are_named(walk: Trial, tmp_path: Path) -> None:
    known = ", ".join(NAMES)
    with pytest.raises(ValueError, match=rf"^there is no format 'doc'; there are {known}$"):
        walk.export(tmp_path / "walk", to="doc")
    with pytest.raises(ValueError, match=rf"no format has files that end so; there are {known}$"):
        walk.export(tmp_path / "walk.doc")


@pytest.mark.parametrize("name", NAMES)
def test_files_are_not_replaced_without_consent(walk: Trial, name: str, tmp_path: Path) -> None:
    first = walk.export(tmp_path / f"walk.{name}")
    before = {path: path.read_bytes() for path in first}
    with pytest.raises(FileExistsError):
        walk.rotated(np.eye(3)).export(tmp_path / f"walk.{name}", replace=False)
    assert {path: path.read_bytes() for path in tmp_path.iterdir()} == before


def test_a_name_in_other_bytes(walk: Trial, tmp_path: Path) -> None:
    place = tmp_path / os.fsdecode(b"G\xfcrtel.trc")
    (path,) = walk.export(place)
    assert os.fsencode(path.name) == b"G\xfcrtel.trc"
    assert "\tGürtel.trc\n" in path.read_text("utf-8")


def test_c3d_has_axes_and_units(walk: Trial, tmp_path: Path) -> None:
    (path,) = walk.export(tmp_path / "walk.c3d", up="y", units=("m", "N", "Nm"))
    expected = walk.in_units().y_up()
    written = read(path)
    np.testing.assert_allclose(written.markers.values, expected.markers.values, rtol=1e-6)
    assert written.markers.unit == "m"


def test_a_trial_stays_as_it_was(walk: Trial, tmp_path: Path) -> None:
    before = walk.markers.values
    walk.export(tmp_path / "walk.trc", up="x", units=("cm", "N", "Ncm"))
    np.testing.assert_array_equal(walk.markers.values, before)
    assert walk.markers.unit == "mm"


@pytest.mark.parametrize("name", NAMES)
def test_an_empty_trial_works_or_says_what_it_lacks(name: str, tmp_path: Path) -> None:
    trial = Trial.new()
    if name in {"json", "c3d"}:
        assert len(trial.export(tmp_path / f"walk.{name}")) == 1
        return
    with pytest.raises(ValueError, match=r"^the trial has no "):
        trial.export(tmp_path / f"walk.{name}")
    assert list(tmp_path.iterdir()) == []


@pytest.mark.parametrize("name", NAMES)
def test_a_trial_without_a_rate(name: str, tmp_path: Path) -> None:
    trial = Trial.of(_moxPY.moxNewAcquisition(2, 3))
    trial.markers.unit = "mm"
    assert trial.rate == 0.0
    if name == "json":
        assert len(trial.export(tmp_path / "walk.json")) == 1
        return
    texts = r"^the trial has no (rate, without|force platforms)|^Frequency is not set"
    with pytest.raises(ValueError, match=texts):
        trial.export(tmp_path / f"walk.{name}")


@pytest.mark.parametrize(
    ("options", "text"),
    [
        ({"up": "w"}, "there is no axis 'w'; there are x, y, z"),
        ({"side": "floor"}, "there is no side 'floor'; there are measured, person, plate"),
        ({"threshold": float("nan")}, "a threshold is a number that is not negative, not nan"),
        ({"threshold": -1.0}, "a threshold is a number that is not negative, not -1.0"),
        ({"units": "mm"}, "units are a list of texts, not the one text 'mm'"),
        ({"units": ("m", "N")}, "units are three, of lengths, forces and moments; got 2"),
        ({"parts": "markers"}, "parts are a list of texts, not the one text 'markers'"),
        (
            {"parts": ["points"]},
            "there is no part 'points'; there are trial, markers, angles, forces, moments, "
            "powers, analogs, platforms, rotations, events",
        ),
    ],
)
def test_options_that_make_no_sense(walk: Trial, options: Any, text: str, tmp_path: Path) -> None:
    with pytest.raises(ValueError, match=rf"^{text}$"):
        walk.export(tmp_path / "walk.csv", **options)
    assert list(tmp_path.iterdir()) == []


def test_one_of_your_own(walk: Trial, tmp_path: Path) -> None:
    def write(trial: Trial, target: Target, options: Options) -> None:
        target.path("size").write_text(f"{trial.frames} {options.threshold}")

    register(Format("size", ".txt", "how many frames", write))
    assert list(formats()) == [*NAMES, "size"]
    (path,) = walk.export(tmp_path / "walk.txt", threshold=3.0)
    assert path == tmp_path / "walk_size.txt"
    assert path.read_text() == "360 3.0"


def test_one_that_fails_half_way_leaves_nothing(walk: Trial, tmp_path: Path) -> None:
    def write(trial: Trial, target: Target, options: Options) -> None:
        target.path("first").write_text("done")
        target.path("second").write_text("half")
        raise RuntimeError("the disk is on fire")

    register(Format("fire", ".fire", "nothing", write))
    with pytest.raises(RuntimeError, match=r"^the disk is on fire$"):
        walk.export(tmp_path / "out" / "walk.fire")
    assert list(tmp_path.iterdir()) == []


SCRIPT = """
import sys

class Absent:
    def find_spec(self, name, path=None, target=None):
        if name in ("pandas", "pyarrow", "openpyxl", "polars", "scipy"):
            raise ModuleNotFoundError(name, name=name)

sys.meta_path.insert(0, Absent())
import moxPY as mox
trial = mox.Trial.new(frames=2)
trial.markers["A"] = [[1.0, 2.0, 3.0]] * 2
for name in ("csv", "trc", "sto", "json", "npz", "c3d"):
    trial.export(f"walk.{name}")
for name in ("parquet", "arrow", "xlsx"):
    try:
        trial.export(f"walk.{name}")
    except ImportError as error:
        print(error)
"""


def test_what_needs_a_package_says_so(tmp_path: Path) -> None:
    done = subprocess.run(
        [sys.executable, "-c", SCRIPT], cwd=tmp_path, capture_output=True, text=True, check=True
    )
    assert done.stdout.splitlines() == [
        'this needs pyarrow: pip install "moxPY[table]"',
        'this needs pyarrow: pip install "moxPY[table]"',
        'this needs openpyxl: pip install "moxPY[excel]"',
    ]
    assert not list(tmp_path.glob("*.parquet"))
