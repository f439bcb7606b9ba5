"""`moxpy index`: a row a trial, and nothing read twice that is as it was."""

from __future__ import annotations

import hashlib
import os
import shutil
from collections.abc import Callable
from pathlib import Path
from typing import Any

import duckdb
import moxPY
import numpy as np
import pandas as pd
import pytest
from moxPY.commands import main
from moxPY.index import load
from moxPY.index.columns import COLUMNS
from support.command_line import on_terminal

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"

Update = Callable[..., tuple[int, str, str]]


@pytest.fixture
def session(tmp_path: Path) -> Path:
    """A folder with three different trials."""
    folder = tmp_path / "session"
    folder.mkdir()
    trial = moxPY.read(EXAMPLE)
    for number, last in enumerate((360, 300, 200)):
        trial.crop(1, last).write(folder / f"walk{number}.c3d")
    return folder


@pytest.fixture
def table(tmp_path: Path) -> Path:
    return tmp_path / "tables" / "trials.parquet"


@pytest.fixture
def update(session: Path, table: Path, capsys: pytest.CaptureFixture[str]) -> Update:
    def run(*words: str | Path) -> tuple[int, str, str]:
        code = main(["index", str(session), "-o", str(table), *map(str, words)])
        return code, *capsys.readouterr()

    return run


def told(table: Path, trials: int, read: int, kept: int, gone: int) -> tuple[int, str, str]:
    return 0, f"{table}: {trials} trials; {read} read, {kept} as before, {gone} gone\n", ""


def test_a_row_says_what_a_trial_holds(update: Update, session: Path, table: Path):
    assert update() == told(table, 3, 3, 0, 0)
    frame = pd.read_parquet(table)
    assert list(frame.columns) == list(COLUMNS)
    path = session / "walk1.c3d"
    trial, found = moxPY.read(path), frame.iloc[1]
    assert found["file"] == str(path)
    assert found["subject"] == "Walker"
    assert (found["frames"], found["first_frame"], found["duration"]) == (300, 1, 3.0)
    assert (found["rate"], found["analog_rate"]) == (100.0, 1000.0)
    assert (found["markers"], found["angles"], found["analogs"]) == (40, 8, 20)
    assert found["marker_labels"].tolist() == trial.markers.labels
    assert [event["time"] for event in found["events"]] == [e.time for e in trial.events]
    assert [each["rule"] for each in found["checks"]] == [f.rule for f in trial.check()]
    assert found["lost_frames"] == np.isnan(trial.markers.values).any(axis=2).sum()
    assert found["longest_gap"] == max(gap.frames for gap in trial.markers.gaps())
    assert found["size"] == path.stat().st_size
    assert found["modified"].value == path.stat().st_mtime_ns
    assert found["sha256"] == hashlib.sha256(path.read_bytes()).hexdigest()


def test_files_that_are_as_they_were_are_not_read_again(
    update: Update, table: Path, monkeypatch: pytest.MonkeyPatch
):
    update()
    before = pd.read_parquet(table)

    def never(_: moxPY.Trial) -> None:
        raise AssertionError("a file was read again")

    monkeypatch.setattr("moxPY.commands.index.row", never)
    assert update() == told(table, 3, 0, 3, 0)
    pd.testing.assert_frame_equal(pd.read_parquet(table), before)


def test_files_that_were_touched_or_moved_are_known_by_their_content(
    update: Update, session: Path, table: Path
):
    update()
    os.utime(session / "walk0.c3d", ns=(1, 10**18 + 1))
    (session / "below").mkdir()
    (session / "walk1.c3d").rename(session / "below" / "renamed.c3d")
    assert update() == told(table, 3, 0, 3, 1)
    frame = pd.read_parquet(table).set_index("file")
    assert frame.loc[str(session / "walk0.c3d"), "modified"].value == 10**18 + 1
    assert frame.loc[str(session / "below" / "renamed.c3d"), "frames"] == 300
    assert str(session / "walk1.c3d") not in frame.index


def test_changed_new_and_vanished_files_are_noticed(update: Update, session: Path, table: Path):
    update()
    moxPY.read(session / "walk0.c3d").crop(1, 100).write(session / "walk0.c3d")
    (session / "walk1.c3d").unlink()
    moxPY.read(EXAMPLE).crop(1, 50).write(session / "walk9.c3d")
    assert update() == told(table, 3, 2, 1, 1)
    assert pd.read_parquet(table)["frames"].tolist() == [100, 200, 50]


def test_content_of_the_same_size_and_another_time_is_read(
    update: Update, session: Path, table: Path
):
    update()
    trial = moxPY.read(session / "walk0.c3d")
    trial.markers.rename({"LFIN": "LXXX"})
    trial.write(session / "walk0.c3d")
    assert update() == told(table, 3, 1, 2, 0)
    assert "LXXX" in pd.read_parquet(table)["marker_labels"][0].tolist()


def test_a_file_that_fails_is_told_and_has_no_row(update: Update, session: Path, table: Path):
    (session / "bad.c3d").write_bytes(b"")
    code, out, err = update()
    assert code == 1
    assert out == f"{table}: 3 trials; 3 read, 0 as before, 0 gone\n"
    assert err == f"{session / 'bad.c3d'}: not a C3D file: it is empty\n"


def test_a_folder_without_trials_does_not_empty_the_table(
    update: Update, session: Path, table: Path
):
    update()
    before = table.read_bytes()
    shutil.rmtree(session)
    session.mkdir()
    assert update() == (1, "", f"{session}: there is no trial\n")
    assert table.read_bytes() == before


@pytest.mark.parametrize("content", [b"mine", b""])
def test_a_file_of_another_kind_is_replaced_on_request_only(
    content: bytes, update: Update, table: Path
):
    table.parent.mkdir()
    table.write_bytes(content)
    code, out, err = update()
    assert (code, out) == (2, "")
    assert "no index of trials; --force replaces it" in " ".join(err.split())
    assert table.read_bytes() == content
    assert update("--force")[0] == 0


def test_another_parquet_file_is_none_of_ours(update: Update, table: Path):
    table.parent.mkdir()
    pd.DataFrame({"a": [1]}).to_parquet(table)
    assert update()[0] == 2


def test_rows_of_another_version_are_made_again(
    update: Update, table: Path, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.setattr("moxPY.index.table.moxGetVersion", lambda: "1999.1.1")
    update()
    monkeypatch.undo()
    assert not load(table).current
    assert update() == told(table, 3, 3, 0, 0)


def test_names_and_labels_that_are_no_text_are_spelt_out(
    update: Update, session: Path, table: Path
):
    name = os.fsencode(session) + b"/walk\xff.c3d"
    os.rename(session / "walk0.c3d", name)  # noqa: PTH104 a name of bytes
    content = bytearray((session / "walk1.c3d").read_bytes())
    at = content.index(b"LFIN")
    content[at : at + 4] = b"L\xff\xfeN"
    (session / "walk1.c3d").write_bytes(content)
    assert update()[0] == 0
    assert str(session) + "/walk\\xff.c3d" in pd.read_parquet(table)["file"].tolist()
    assert update() == told(table, 3, 0, 3, 0)


def test_duckdb_reads_lists_of_events(update: Update, table: Path):
    update()
    ((count,),) = duckdb.sql(
        f"SELECT count(*) FROM '{table}', UNNEST(events) AS e(event) "
        "WHERE event.label = 'Foot Strike' AND event.context = 'Left'"
    ).fetchall()
    expected: Any = sum(
        len(moxPY.read(path).events.select("Foot Strike", "Left"))
        for path in (pd.read_parquet(table)["file"])
    )
    assert count == expected


def test_a_terminal_shows_a_bar_while_there_is_something_to_read(session: Path, table: Path):
    _, shown = on_terminal("index", session, "-o", table)
    assert "3/3" in shown
    _, shown = on_terminal("index", session, "-o", table)
    assert shown == f"{table}: 3 trials; 0 read, 3 as before, 0 gone\n"
