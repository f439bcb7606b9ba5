"""Batches that read a part of each file."""

from __future__ import annotations

from pathlib import Path

import moxPY as mox
import pytest

EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


def count(trial: mox.Trial) -> tuple[int, int]:
    return len(trial.markers), len(trial.unread["analogs"])


@pytest.mark.parametrize("executor", ["threads", "processes"])
def test_a_function_gets_the_part_that_is_asked_for(executor: str):
    results = mox.map_files(count, [EXAMPLE], executor=executor, only=iter(["points"]))
    assert [value for _, value, _ in results] == [(40, 20)]


def test_a_table_of_what_needs_no_samples():
    table = mox.collect(
        lambda trial: {"rate": trial.rate, "missing": len(trial.unread)},
        [EXAMPLE],
        to="arrow",
        only=(),
    )
    assert table.drop_columns("file").to_pylist() == [{"rate": 100.0, "missing": 6}]


def test_an_unknown_kind_is_refused_before_any_file_is_read():
    with pytest.raises(ValueError, match="not 'platforms'"):
        mox.map_files(count, ["nowhere.c3d"], only="platforms")  # type: ignore[arg-type]
