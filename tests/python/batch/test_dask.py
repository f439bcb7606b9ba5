"""Batches on workers of Dask: processes of their own, which may die."""

from __future__ import annotations

import os
import signal
import time
from collections.abc import Iterator
from concurrent.futures import ThreadPoolExecutor
from contextlib import contextmanager
from pathlib import Path
from typing import Any

import moxPY as mox
import pyarrow.parquet as pq
import pytest
from support import batch_functions as functions
from support.c3d_bytes import c3d_bytes
from support.read_c3d import track

COUNT = 40


@pytest.fixture(scope="module")
def client() -> Iterator[Any]:
    """A scheduler and two workers on loopback; a worker that dies is replaced."""
    distributed = pytest.importorskip("distributed")
    options = {"n_workers": 2, "threads_per_worker": 1, "dashboard_address": ":0"}
    with (
        distributed.LocalCluster(host="127.0.0.1", **options) as cluster,
        distributed.Client(cluster) as client,
    ):
        yield client


@pytest.fixture
def trials(tmp_path: Path) -> Path:
    """As many files; the number in the name is that of the frames."""
    for number in range(1, COUNT + 1):
        content = c3d_bytes({"LASI": track(number)})
        (tmp_path / f"walk_{number:02}.c3d").write_bytes(content)
    return tmp_path


def test_results_come_in_the_order_of_the_files(client: Any, trials: Path):
    (trials / "walk_03.c3d").write_bytes(b"this is no trial")
    results = list(mox.map_files(functions.frames, trials, executor=client.get_executor()))
    assert [result.value for result in results] == [1, 2, None, *range(4, COUNT + 1)]
    assert [result.file for result in results] == sorted(trials.iterdir())
    assert isinstance(results[2].error, ValueError)


def test_functions_of_a_script_go_to_the_workers(client: Any, trials: Path):
    numbers = mox.map_files(lambda trial: trial.frames * 2, trials, executor=client.get_executor())
    assert [result.value for result in numbers] == list(range(2, 2 * COUNT + 1, 2))


def test_trials_come_back(client: Any, trials: Path):
    results = mox.map_files(functions.itself, trials, executor=client.get_executor())
    assert [result.value.frames for result in results if result.value] == list(range(1, COUNT + 1))


def test_a_file_that_changed_is_read_again(client: Any, trials: Path):
    path = trials / "walk_01.c3d"
    executor = client.get_executor()
    first = mox.map_files(functions.frames, path, executor=executor)
    assert [result.value for result in first] == [1]
    path.write_bytes(c3d_bytes({"LASI": track(9)}))
    again = mox.map_files(functions.frames, path, executor=executor)
    assert [result.value for result in again] == [9]


def test_a_batch_that_is_left_cancels_what_waits(client: Any, trials: Path):
    with mox.map_files(
        functions.marks_the_file, trials, executor=client.get_executor(), jobs=8
    ) as results:
        next(results)
    assert client.submit(abs, -1).result(timeout=60) == 1
    assert len(list(trials.glob("*.begun"))) < COUNT


def begun(trials: Path) -> dict[Path, list[int]]:
    """The processes that began each file, of those that were begun."""
    marks = {path: path.read_text().split() for path in trials.glob("*.begun")}
    return {path: [int(process) for process in found] for path, found in marks.items() if found}


@contextmanager
def worker_killed_half_way(trials: Path) -> Iterator[None]:
    """As soon as half of the files were begun, the process that began the next one is killed."""

    def kill() -> None:
        deadline = time.monotonic() + 60
        while len(before := begun(trials)) < COUNT / 2 and time.monotonic() < deadline:
            time.sleep(0.01)
        while len(after := begun(trials)) == len(before) and time.monotonic() < deadline:
            time.sleep(0.005)
        (victim, *_) = [after[path][0] for path in after.keys() - before.keys()]
        os.kill(victim, signal.SIGKILL)

    with ThreadPoolExecutor(1) as thread:
        killing = thread.submit(kill)
        yield
        killing.result()


def rows_of(client: Any, trials: Path, to: str) -> list[tuple[str, int]]:
    """File and frames of each row of the result."""
    files, executor = trials / "*.c3d", client.get_executor()
    if to == "map":
        results = list(mox.map_files(functions.marks_the_file, files, executor=executor))
        assert [result.error for result in results] == [None] * COUNT
        return [(str(file), value["frames"]) for file, value, _ in results if value]
    place = mox.collect(functions.marks_the_file, files, to=trials / to, executor=executor)
    columns = pq.read_table(place).to_pydict()
    return list(zip(columns["file"], columns["frames"], strict=True))


@pytest.mark.parametrize("to", ["map", "all.parquet"])
def test_no_file_is_lost_or_there_twice_when_a_worker_is_killed(client: Any, trials: Path, to: str):
    client.wait_for_workers(2, timeout=60)
    with worker_killed_half_way(trials):
        rows = rows_of(client, trials, to)
    files = [str(path) for path in sorted(trials.glob("*.c3d"))]
    assert rows == list(zip(files, range(1, COUNT + 1), strict=True))
    repeated = [processes for processes in begun(trials).values() if len(processes) > 1]
    assert repeated, "nothing was lost with the worker"
