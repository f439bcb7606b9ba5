"""`moxpy info`: what each file holds, whatever the others are like."""

from __future__ import annotations

import json
import os
import re
import sys
from collections.abc import Callable
from pathlib import Path
from typing import Any

import moxPY
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes
from support.command_line import on_terminal, piped
from support.systems import is_superuser, posix

BEGINNING = """\
  frames     360 at 100 Hz (3.60 s), 1 to 360
  subject    Walker
  markers    40 in mm, 7 with gaps
             LFHD, LBHD, RFHD, RBHD, C7, T10, CLAV, STRN, LSHO, LUPA, LELB, LFRM, LWRA, LWRB, \
LFIN, RSHO, RUPA, RELB, RFRM, RWRA, RWRB, RFIN, LASI, LPSI, RASI, RPSI, LTHI, LKNE, LTIB, LANK, \
LHEE, LTOE, LMT5, RTHI, RKNE, RTIB, RANK, RHEE, RTOE, RMT5
"""

END = """\
  analogs    20 in N, Nmm, V; 1000 Hz, 10 per frame
             Fx1, Fy1, Fz1, Mx1, My1, Mz1, Fx2, Fy2, Fz2, Mx2, My2, Mz2, LRectFem, LBicFem, \
LTibAnt, LGastroc, RRectFem, RBicFem, RTibAnt, RGastroc
  events     Right Foot Strike: 0.200, 1.300, 2.400, 3.500 s
             Left Foot Off: 0.310, 1.410, 2.510 s
             Left Foot Strike: 0.750, 1.850, 2.950 s
             Right Foot Off: 0.860, 1.960, 3.060 s
  platforms  type 2, 600 by 400 mm: Fx1, Fy1, Fz1, Mx1, My1, Mz1
             type 2, 600 by 400 mm: Fx2, Fy2, Fz2, Mx2, My2, Mz2
"""

Call = Callable[..., Any]


def test_what_is_in_a_file_is_named(call: Call, walk: Path):
    code, out, err = call("info", walk)
    assert (code, err) == (0, "")
    assert out.startswith(f"{walk}\n{BEGINNING}  angles     8 in deg\n")
    assert END in out


def test_without_samples_all_but_the_gaps_is_shown(call: Call, walk: Path):
    code, quick, err = call("info", "--quick", walk)
    assert (code, err) == (0, "")
    whole = call("info", walk).out
    before_gaps = whole.partition("  gaps  ")[0]
    assert quick == re.sub(r", \d with gaps", "", before_gaps)


def test_without_samples_json_has_no_gaps_and_all_else(call: Call, walk: Path):
    quick, whole = (
        json.loads(call("info", *more, walk).out) for more in (["--json", "--quick"], ["--json"])
    )
    assert quick[0].pop("gaps") is None
    assert whole[0].pop("gaps") != []
    assert quick == whole


def test_gaps_of_markers_are_named_with_their_frames(call: Call, walk: Path):
    trial = moxPY.read(walk)
    for label in trial.markers:
        trial.markers[label] = np.ones((360, 3))
    values = np.ones((360, 3))
    values[[0, 99, 100, 101]] = np.nan
    trial.markers["C7"] = values
    trial.write(walk)
    assert "  gaps       C7: 4 frames, 1, 100-102\n" in call("info", walk).out


def test_a_file_that_fails_does_not_stop_the_rest(call: Call, walk: Path, tmp_path: Path):
    foreign, damaged, missing = tmp_path / "notes.c3d", tmp_path / "cut.c3d", tmp_path / "no.c3d"
    foreign.write_text("This is no trial.")
    damaged.write_bytes(walk.read_bytes()[:700])
    code, out, err = call("info", missing, foreign, damaged, tmp_path / "none", walk)
    assert code == 1
    assert out.startswith(f"{walk}\n")
    lines = err.splitlines()
    assert lines[0] == f"{missing}: No such file or directory"
    assert lines[1] == f"{foreign}: not a C3D file: it looks like text"
    assert lines[2].startswith(f"{damaged}: ")
    assert str(damaged) not in lines[2].removeprefix(f"{damaged}: ")
    assert lines[3:] == [f"{tmp_path / 'none'}: No such file or directory"]


def test_folders_and_patterns_stand_for_the_trials_in_them(call: Call, walk: Path, tmp_path: Path):
    below = tmp_path / "session" / "day 2"
    below.mkdir(parents=True)
    for name in ("b.C3D", "a.c3d"):
        (below / name).write_bytes(walk.read_bytes())
    (below / "notes.txt").write_text("")
    titles = [f"{below / 'a.c3d'}", f"{below / 'b.C3D'}"]
    for named in (tmp_path / "session", f"{tmp_path}/*/day*/[ab].*"):
        code, out, _ = call("info", named, below / "a.c3d")
        assert code == 0
        assert [line for line in out.splitlines() if not line.startswith(" ")] == titles


def test_a_folder_or_pattern_without_trials_is_a_failure(call: Call, walk: Path, tmp_path: Path):
    empty = tmp_path / "empty"
    empty.mkdir()
    code, out, err = call("info", empty, tmp_path / "*.mot", walk)
    assert code == 1
    assert out.startswith(f"{walk}\n")
    wanted = [f"{name}: there is no trial" for name in (empty, tmp_path / "*.mot")]
    assert err.splitlines() == wanted


@posix
@pytest.mark.skipif(is_superuser(), reason="root may read everything")
def test_a_file_without_rights_is_named(call: Call, walk: Path):
    walk.chmod(0)
    assert call("info", walk) == (1, "", f"{walk}: Permission denied\n")


def test_memory_that_runs_out_is_named(call: Call, walk: Path, monkeypatch: pytest.MonkeyPatch):
    def without_memory(_: moxPY.Trial) -> None:
        raise MemoryError

    monkeypatch.setattr("moxPY.commands.info.summary", without_memory)
    assert call("info", walk) == (1, "", f"{walk}: MemoryError\n")


def test_what_was_odd_about_a_file_is_told(call: Call, walk: Path):
    walk.write_bytes(walk.read_bytes()[:-100_000])
    code, out, err = call("info", walk)
    assert (code, err) == (0, "")
    assert f"  odd        {moxPY.read(walk, odd='ignore').warnings[0]}\n" in out


def test_an_empty_trial_has_a_summary(call: Call, tmp_path: Path):
    empty = tmp_path / "empty.c3d"
    empty.write_bytes(c3d_bytes())
    assert call("info", empty).out.startswith(f"{empty}\n  frames  0 at 100 Hz\n")


def test_json_is_an_array_of_what_python_gives(call: Call, walk: Path, tmp_path: Path):
    other = tmp_path / "cut.c3d"
    moxPY.read(walk).crop(10, 20).write(other)
    code, out, err = call("info", "--json", walk, other)
    assert (code, err) == (0, "")
    whole, part = json.loads(out)
    trial = moxPY.read(walk)
    assert (whole["file"], part["file"]) == (str(walk), str(other))
    assert (part["first_frame"], part["last_frame"], part["frames"]) == (10, 20, 11)
    assert whole["channels"]["markers"]["labels"] == trial.markers.labels
    assert whole["channels"]["moments"]["units"] == ["Nmm/kg"] * 6
    assert whole["channels"]["analogs"]["rate"] == 1000.0
    assert [event["time"] for event in whole["events"]] == [e.time for e in trial.events]
    assert whole["platforms"][1]["corners"] == trial.platforms[1].corners.tolist()
    gaps = [gap for gap in whole["gaps"] if gap["kind"] == "markers"]
    assert [(g["label"], g["first"], g["last"]) for g in gaps] == trial.markers.gaps()


def test_json_of_nothing_is_an_array(call: Call, tmp_path: Path):
    code, out, _ = call("info", "--json", tmp_path / "missing.c3d")
    assert (code, json.loads(out)) == (1, [])


def test_text_of_a_file_cannot_steer_the_terminal(call: Call, walk: Path):
    trial = moxPY.read(walk)
    trial.markers.rename({"C7": "C7\x1b[2J\n"})
    trial.write(walk)
    out = call("info", walk).out
    assert "\x1b" not in out
    assert r"C7\x1b[2J\n" in out


def test_a_terminal_gets_lines_that_fit(walk: Path):
    code, shown = on_terminal("info", walk.name, folder=walk.parent)
    assert code == 0
    assert max(map(len, shown.splitlines())) <= 80
    assert "\n             LFRM, LWRA, LWRB, LFIN, RSHO," in shown


def test_lines_for_a_pipe_are_not_wrapped(walk: Path):
    finished = piped("info", walk, env={"COLUMNS": "40"})
    assert finished.returncode == 0
    assert f"{walk}\n{BEGINNING}" in finished.stdout


@pytest.mark.skipif(sys.platform != "linux", reason="file names are bytes on Linux alone")
def test_a_name_that_is_no_text_is_shown_all_the_same(walk: Path):
    name = os.fsencode(walk.parent) + b"/walk\xff.c3d"
    os.rename(walk, name)  # noqa: PTH104 a name of bytes
    for encoding in ("utf-8", "ascii", "latin-1"):
        finished = piped("info", name, env={"PYTHONIOENCODING": encoding})
        assert finished.returncode == 0, finished.stderr
        assert "walk\\xff.c3d\n  frames     360" in finished.stdout
