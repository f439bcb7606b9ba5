"""`moxpy convert --dask`: workers elsewhere, of which one may die."""

from __future__ import annotations

import json
import os
import subprocess
import sys
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import Any, NamedTuple

import pytest
from support.command_line import environment, piped, started

Call = Callable[..., Any]


class Cluster(NamedTuple):
    """A scheduler on this machine, and two workers."""

    address: str
    workers: list[subprocess.Popen[bytes]]


@pytest.fixture
def cluster(tmp_path: Path) -> Iterator[Cluster]:
    place = tmp_path / "scheduler.json"
    scheduler = begun("scheduler", "--port", "0", "--host", "127.0.0.1", "--scheduler-file", place)
    try:
        while not place.exists() or not place.read_text():
            assert scheduler.poll() is None
            time.sleep(0.05)
        words = ["--nthreads", "1", "--no-nanny", "--scheduler-file", place]
        workers = [begun("worker", *words, "--name", f"worker{n}") for n in range(2)]
        try:
            yield Cluster(json.loads(place.read_text())["address"], workers)
        finally:
            for worker in workers:
                worker.kill()
                worker.wait()
    finally:
        scheduler.kill()
        scheduler.wait()


def begun(program: str, *words: str | Path) -> subprocess.Popen[bytes]:
    command = [sys.executable, "-m", f"distributed.cli.dask_{program}", "--no-dashboard", *words]
    return subprocess.Popen(
        command, env=environment(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
    )


def many(walk: Path, count: int) -> Path:
    folder = walk.parent / "many"
    folder.mkdir()
    for number in range(count):
        os.link(walk, folder / f"{number:04}.c3d")
    return folder


def test_no_file_is_lost_or_done_twice_when_a_worker_dies(
    walk: Path, tmp_path: Path, cluster: Cluster
):
    folder, out = many(walk, 300), tmp_path / "out"
    process = started(
        "convert", folder, "-o", out, "--to", "json", "--dask", cluster.address,
        stdout=subprocess.PIPE, stderr=subprocess.PIPE,
    )  # fmt: skip
    with process:
        assert process.stdout
        assert process.stderr
        first = process.stdout.readline()
        cluster.workers[0].kill()
        # Not communicate, which would lose what came along with the first line.
        rest, err = process.stdout.read(), process.stderr.read()
    assert process.returncode == 0, err
    expected = [str(out / f"{number:04}.json") for number in range(300)]
    assert (first + rest).splitlines() == expected
    assert sorted(path for path in map(str, out.glob("*.json"))) == expected
    for path in expected:
        assert json.loads(Path(path).read_text("utf-8"))


def test_results_that_were_there_before_stay(walk: Path, tmp_path: Path, cluster: Cluster):
    folder, out = many(walk, 3), tmp_path / "out"
    out.mkdir()
    (out / "0001.json").write_text("mine")
    words = ["convert", "many", "-o", "out", "--to", "json", "--dask", cluster.address]
    finished = piped(*words, cwd=tmp_path)
    assert finished.returncode == 1
    text = (
        f"{folder / '0001.c3d'}: '{out / '0001.json'}': there is such a file; --force replaces it"
    )
    assert text in finished.stderr
    assert finished.stdout.splitlines() == [str(out / "0000.json"), str(out / "0002.json")]
    assert (out / "0001.json").read_text() == "mine"


def test_a_scheduler_that_does_not_answer_is_told(
    call: Call, walk: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    monkeypatch.setattr("moxPY.commands.workers._PATIENCE", 0.2)
    words = ["-o", tmp_path / "out", "--to", "json", "--dask", "tcp://127.0.0.1:1"]
    code, out, err = call("convert", walk, *words)
    assert (code, out) == (2, "")
    assert err.splitlines()[-1].startswith(
        "moxpy: no Dask scheduler answers at 'tcp://127.0.0.1:1'"
    )
