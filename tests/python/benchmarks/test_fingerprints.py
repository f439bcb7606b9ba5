"""The benchmarks notice a reader that gives other values than the file holds."""

from __future__ import annotations

import json
import os
import subprocess
import sys
from pathlib import Path
from typing import Any

import numpy as np
import pytest

REPOSITORY = Path(__file__).resolve().parents[3]
BENCHMARKS = REPOSITORY / "benchmarks"

MATRIX = np.arange(60.0).reshape(20, 3) + 1.0


@pytest.fixture
def sums(monkeypatch: pytest.MonkeyPatch) -> Any:
    monkeypatch.syspath_prepend(str(BENCHMARKS))
    import column_sums

    return column_sums


def run(program: str, *arguments: str | Path) -> str:
    path = os.pathsep.join(filter(None, [*sys.path, str(REPOSITORY / "examples")]))
    return subprocess.run(
        [sys.executable, BENCHMARKS / program, *arguments],
        env={**os.environ, "PYTHONPATH": path},
        stdout=subprocess.PIPE,
        text=True,
        check=True,
    ).stdout


def test_equal_matrices_agree(sums: Any):
    assert sums.agree(sums.column_sums(MATRIX), sums.column_sums(MATRIX.astype(np.float32)))


@pytest.mark.parametrize(
    "other",
    [
        np.roll(MATRIX, 1, axis=0),
        MATRIX[:, ::-1],
        np.where(MATRIX == 7.0, np.nan, MATRIX),
        np.where(MATRIX == 7.0, 7.1, MATRIX),
        np.vstack([MATRIX, np.zeros((1, 3))]),
    ],
    ids=["shifted by a row", "columns reversed", "a gap", "another value", "another row"],
)
def test_other_matrices_do_not_agree(sums: Any, other: Any):
    assert not sums.agree(sums.column_sums(other), sums.column_sums(MATRIX))


def test_matrices_of_many_rows_are_summed_in_blocks(sums: Any, monkeypatch: pytest.MonkeyPatch):
    at_once = sums.column_sums(MATRIX)
    monkeypatch.setattr(sums, "ROWS_AT_ONCE", 6)
    assert sums.agree(sums.column_sums(MATRIX), at_once)


@pytest.mark.parametrize("writer", ["moxPY", "moxPY, edited", "ezc3d", "c3d"])
def test_a_writer_writes_what_it_read(sums: Any, tmp_path: Path, writer: str):
    run("make_trial.py", "small", tmp_path)
    written = json.loads((tmp_path / "small.json").read_text())["sums"]
    answer = run("write_trial.py", writer, tmp_path / "small.c3d", tmp_path / "new.c3d", "2")
    assert len(json.loads(answer)["seconds"]) == 2
    read = json.loads(run("read_trial.py", "moxPY", tmp_path / "new.c3d", "1"))["sums"]
    assert sums.agree(read["points"], written["points"])
    assert sums.agree(read["analogs"], written["analogs"])


def test_the_module_reads_what_was_written(sums: Any, tmp_path: Path):
    run("make_trial.py", "small", tmp_path)
    written = json.loads((tmp_path / "small.json").read_text())["sums"]
    read = json.loads(run("read_trial.py", "moxPY", tmp_path / "small.c3d", "1"))["sums"]
    assert sums.agree(read["points"], written["points"])
    assert sums.agree(read["analogs"], written["analogs"])
