"""A function over many files: order, errors, what is begun ahead, what is left behind."""

from __future__ import annotations

import gc
import multiprocessing
import os
import signal
import subprocess
import sys
import threading
import time
import warnings
from collections.abc import Callable
from concurrent.futures import BrokenExecutor, Future, ProcessPoolExecutor, ThreadPoolExecutor
from functools import partial
from pathlib import Path
from typing import Any
from weakref import ref

import moxPY as mox
import pytest
from moxPY.batch.results import AHEAD
from support import batch_functions as functions
from support.c3d_bytes import c3d_bytes
from support.read_c3d import track
from support.systems import interruptible

FOREIGN = b"this is no trial"
FORMS = ["threads", "processes"]
COUNT = 12


def values(results: Any) -> list[Any]:
    return [result.value for result in results]


def own_threads() -> list[threading.Thread]:
    return [each for each in threading.enumerate() if each.name.startswith("moxPY")]


def environment() -> dict[str, str]:
    """Processes of their own find the package where this one does."""
    return {**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))}


# What comes back.


@pytest.mark.parametrize("executor", [None, *FORMS])
def test_results_come_in_the_order_of_the_files(folder: Path, executor: Any):
    results = list(mox.map_files(functions.waits_at_one_frame, folder, executor=executor, jobs=2))
    assert [result.value for result in results] == list(range(1, COUNT + 1))
    assert [result.file for result in results] == sorted(folder.iterdir())
    assert [result.error for result in results] == [None] * COUNT


def test_files_come_in_the_order_they_are_given(folder: Path):
    files = sorted(folder.iterdir(), reverse=True)
    assert values(mox.map_files(functions.frames, files)) == list(range(COUNT, 0, -1))


def test_a_pattern_means_what_it_matches(folder: Path):
    assert values(mox.map_files(functions.frames, folder / "walk_1*.c3d")) == [10, 11, 12]


def test_one_path_is_one_file(folder: Path):
    (result,) = mox.map_files(functions.frames, str(folder / "walk_07.c3d"))
    assert result == (folder / "walk_07.c3d", 7, None)


def test_a_relative_path_stays_one(folder: Path, monkeypatch: pytest.MonkeyPatch):
    monkeypatch.chdir(folder)
    for executor in FORMS:
        (result,) = mox.map_files(functions.frames, "walk_07.c3d", executor=executor)
        assert result == (Path("walk_07.c3d"), 7, None)


def test_no_files_give_no_results():
    assert list(mox.map_files(functions.frames, [])) == []


# Files that are wrong.


@pytest.mark.parametrize("executor", FORMS)
def test_bad_files_stop_nothing(folder: Path, executor: Any):
    (folder / "walk_03.c3d").write_bytes(FOREIGN)
    missing = folder / "walk_99.c3d"
    results = mox.map_files(functions.frames, [folder, missing], executor=executor)
    found = list(results)
    assert [result.value for result in found] == [1, 2, None, *range(4, COUNT + 1), None]
    assert isinstance(found[2].error, ValueError)
    assert "walk_03.c3d': not a C3D file" in str(found[2].error)
    assert isinstance(found[-1].error, FileNotFoundError)
    assert found[-1].error.filename == str(missing)
    assert results.errors == [found[2], found[-1]]


def test_errors_are_those_met_so_far(folder: Path):
    for number in (2, 4):
        (folder / f"walk_{number:02}.c3d").write_bytes(FOREIGN)
    results = mox.map_files(functions.frames, folder)
    seen = []
    for _ in results:
        seen.append(len(results.errors))
    assert seen == [0, 1, 1, *[2] * (COUNT - 3)]


@pytest.mark.parametrize("executor", FORMS)
def test_errors_of_the_function_are_results(folder: Path, executor: Any):
    results = list(mox.map_files(functions.refused, folder, executor=executor))
    assert [(type(result.error), str(result.error)) for result in results] == [
        (KeyError, "'LASI'")
    ] * COUNT


@pytest.mark.parametrize(
    ("function", "text"),
    [(functions.secretive, "Secretive: one and two"), (functions.unprintable, "Unprintable")],
)
def test_errors_that_do_not_pickle_are_told(folder: Path, function: Any, text: str):
    (result,) = mox.map_files(function, folder / "walk_01.c3d", executor="processes")
    assert str(result.error) == text
    (note,) = result.error.__notes__
    assert "batch_functions.py" in note
    assert "raise" in note


def test_a_value_that_does_not_pickle_is_an_error_of_its_file(folder: Path):
    results = list(mox.map_files(functions.unpicklable, folder, executor="processes", jobs=2))
    assert [result.value for result in results] == [1, 2, None, *range(4, COUNT + 1)]
    assert "unpicklable" in str(results[2].error)


@pytest.mark.parametrize("executor", FORMS)
def test_the_first_error_is_raised_on_request(folder: Path, executor: Any):
    (folder / "walk_03.c3d").write_bytes(FOREIGN)
    results = mox.map_files(functions.frames, folder, executor=executor, on_error="raise")
    assert [next(results).value, next(results).value] == [1, 2]
    with pytest.raises(ValueError, match=r"not a C3D file") as caught:
        next(results)
    assert caught.value.__notes__[-1] == f"The file is '{folder / 'walk_03.c3d'}'."
    assert list(results) == []
    assert [result.file.name for result in results.errors] == ["walk_03.c3d"]
    assert own_threads() == []


def test_what_is_odd_about_files_is_in_their_warnings(folder: Path):
    for path in folder.iterdir():
        path.write_bytes(c3d_bytes({"LASI": track(200)})[:-1024])
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        found = values(mox.map_files(lambda trial: len(trial.warnings), folder))
    assert found == [1] * COUNT


# What cannot be asked for.


@pytest.mark.parametrize(
    ("options", "kind", "text"),
    [
        ({"on_error": "ignore"}, ValueError, "on_error is 'collect' or 'raise', not 'ignore'"),
        ({"executor": "fibers"}, ValueError, "'threads', 'processes' or an object, not 'fibers'"),
        ({"executor": 3}, TypeError, "an executor has a method submit, int has none"),
        ({"jobs": 0}, ValueError, "jobs is how many files are worked on at once, not 0"),
    ],
)
def test_other_options_are_refused(folder: Path, options: Any, kind: Any, text: str):
    with pytest.raises(kind, match=text):
        mox.map_files(functions.frames, folder, **options)


def test_a_function_without_a_module_is_refused_for_processes(folder: Path):
    with pytest.raises(TypeError, match=r"processes call functions that a module defines"):
        mox.map_files(lambda trial: 1, folder, executor="processes")


def test_an_empty_text_is_not_the_current_folder(tmp_path: Path, monkeypatch: pytest.MonkeyPatch):
    (tmp_path / "walk.c3d").write_bytes(b"")
    monkeypatch.chdir(tmp_path)
    for files in ("", ["walk.c3d", ""]):
        with pytest.raises(FileNotFoundError, match=r"No such file or directory: ''"):
            mox.map_files(functions.frames, files)


def test_a_folder_without_trials_is_refused(tmp_path: Path):
    with pytest.raises(FileNotFoundError):
        mox.map_files(functions.frames, tmp_path)


# Trials.


def test_trials_are_closed_afterwards(folder: Path):
    seen: list[mox.Trial] = []
    list(mox.map_files(seen.append, folder))
    assert [trial.closed for trial in seen] == [True] * COUNT


def test_trials_are_closed_where_the_function_fails(folder: Path):
    seen: list[mox.Trial] = []

    def fail(trial: mox.Trial) -> None:
        seen.append(trial)
        raise RuntimeError("no")

    list(mox.map_files(fail, folder))
    assert [trial.closed for trial in seen] == [True] * COUNT


@pytest.mark.parametrize("executor", FORMS)
def test_trials_can_be_returned(folder: Path, executor: Any):
    for number, result in enumerate(
        mox.map_files(functions.itself, folder, executor=executor, jobs=2), 1
    ):
        assert result.value is not None
        assert result.value.markers["LASI"].values[0].tolist() == [
            number, number + 0.25, number + 0.5,
        ]  # fmt: skip


# Who works.


def test_processes_are_others(folder: Path):
    found = set(values(mox.map_files(functions.process, folder, executor="processes", jobs=2)))
    assert os.getpid() not in found


def test_an_executor_of_the_user_stays_open(folder: Path):
    spawning = partial(ProcessPoolExecutor, mp_context=multiprocessing.get_context("spawn"))
    for make in (ThreadPoolExecutor, spawning):
        with make(2) as executor:
            for _ in range(2):
                results = mox.map_files(functions.frames, folder, executor=executor)
                assert values(results) == list(range(1, COUNT + 1))
            assert executor.submit(abs, -1).result() == 1


class Bookkeeper:
    """An executor that works when it is asked for the result, and knows what was begun."""

    def __init__(self) -> None:
        self.promises: list[Promise] = []

    def submit(self, function: Callable[..., Any], *arguments: Any) -> Any:
        self.promises.append(Promise(lambda: function(*arguments)))
        return self.promises[-1]


class Promise(Future[Any]):
    def __init__(self, job: Callable[[], Any]) -> None:
        super().__init__()
        self.job = job

    def result(self, timeout: float | None = None) -> Any:
        self.set_running_or_notify_cancel()
        self.set_result(self.job())
        return super().result()


def test_few_files_are_begun_ahead(folder: Path):
    executor = Bookkeeper()
    files = sorted(folder.iterdir())
    results = mox.map_files(functions.frames, files, executor=executor, jobs=2)
    assert executor.promises == []
    next(results)
    assert len(executor.promises) == AHEAD * 2
    next(results)
    assert len(executor.promises) == AHEAD * 2 + 1
    results.close()
    assert [promise.cancelled() for promise in executor.promises] == [False] * 2 + [True] * 7


def test_results_are_not_kept(folder: Path):
    results = mox.map_files(functions.itself, folder, jobs=1)
    kept = [ref(result.value) for result in results if result.value is not None]
    del results
    gc.collect()
    assert [each() for each in kept] == [None] * COUNT


def test_a_batch_that_is_left_early_leaves_no_thread(folder: Path):
    with mox.map_files(functions.frames, folder, jobs=2) as results:
        next(results)
        assert own_threads() != []
    assert own_threads() == []
    assert list(results) == []


def test_a_batch_that_is_forgotten_leaves_no_thread(folder: Path):
    results = mox.map_files(functions.frames, folder, jobs=2)
    next(results)
    del results
    gc.collect()
    assert own_threads() == []


# Processes that die.


def test_a_file_that_ends_its_process_is_an_error_of_its_own(folder: Path):
    results = mox.map_files(functions.dies_at_three_frames, folder, executor="processes", jobs=2)
    found = list(results)
    assert [result.value for result in found] == [1, 2, None, *range(4, COUNT + 1)]
    assert isinstance(found[2].error, BrokenExecutor)
    assert str(found[2].error) == "the process ended while it worked on this file"


def test_a_process_that_ends_once_loses_nothing(folder: Path):
    results = mox.map_files(functions.dies_once, folder, executor="processes", jobs=2)
    assert [(result.value, result.error) for result in results] == [
        (number, None) for number in range(1, COUNT + 1)
    ]


SCRIPT = """
import moxPY as mox

def count(trial):
    return trial.frames

print([result.value for result in mox.map_files(count, {folder!r}, executor="processes")])
"""


def test_a_script_without_a_guard_is_told(folder: Path, tmp_path: Path):
    script = tmp_path / "script.py"
    script.write_text(SCRIPT.format(folder=str(folder)))
    done = subprocess.run(
        [sys.executable, script],
        env=environment(),
        capture_output=True,
        text=True,
        timeout=120,
    )
    assert done.returncode == 1
    assert done.stdout == ""
    assert "RuntimeError: no process can begin: a script that uses" in done.stderr


# Ctrl-C.

INTERRUPTED = """
import os, signal, sys, threading, time
import moxPY as mox

# However the tests were started.
signal.signal(signal.SIGINT, signal.default_int_handler)

def slow(trial):
    os.write(1, b"begun\\n")  # print writes text and line end one after the other
    time.sleep(0.3)

try:
    for result in mox.map_files(slow, sys.argv[1], jobs=2):
        pass
except KeyboardInterrupt:
    print("threads", threading.active_count())
"""


@interruptible
def test_an_interrupt_cancels_what_waits_and_leaves_no_thread(folder: Path):
    child = subprocess.Popen(
        [sys.executable, "-c", INTERRUPTED, folder],
        env=environment(),
        stdout=subprocess.PIPE,
        text=True,
    )
    with child:
        assert child.stdout
        assert child.stdout.readline() == "begun\n"
        time.sleep(0.1)
        child.send_signal(signal.SIGINT)
        rest = child.stdout.read().splitlines()
    assert child.returncode == 0
    assert rest[-1] == "threads 1"
    assert rest.count("begun") < 6


# Whoever waits for the others goes on, in spite of Ctrl-C.
STUBBORN = """
import signal, sys
import moxPY as mox
from support import batch_functions as functions

if __name__ == "__main__":
    signal.signal(signal.SIGINT, lambda *_: None)
    print("begun", flush=True)
    results = mox.map_files(functions.frames, sys.argv[1], executor="processes", jobs=2)
    print([result.value for result in results])
"""


@interruptible
def test_an_interrupt_leaves_processes_that_begin_alone(folder: Path, tmp_path: Path):
    script = tmp_path / "stubborn.py"
    script.write_text(STUBBORN)
    child = subprocess.Popen(
        [sys.executable, script, folder],
        env=environment(),
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        text=True,
        start_new_session=True,
    )
    assert child.stdout
    assert child.stdout.readline() == "begun\n"
    while child.poll() is None:
        os.killpg(child.pid, signal.SIGINT)
        time.sleep(0.01)
    out, err = child.communicate(timeout=60)
    assert (out, err) == (f"{[*range(1, COUNT + 1)]}\n", "")


# Tables.


def test_a_data_frame_has_a_row_a_file(folder: Path):
    (folder / "walk_03.c3d").write_bytes(FOREIGN)
    frame = mox.map_files(functions.frames, folder).to_pandas()
    assert frame.columns.to_list() == ["file", "value", "error"]
    assert frame["file"].to_list() == [str(path) for path in sorted(folder.iterdir())]
    assert frame["value"].dropna().to_list() == [1, 2, *range(4, COUNT + 1)]
    assert "not a C3D file" in frame["error"][2]
    assert frame["error"].isna().sum() == COUNT - 1


def test_dictionaries_become_columns(folder: Path):
    function = lambda trial: {"frames": trial.frames, "rate": trial.rate}  # noqa: E731
    frame = mox.map_files(function, folder).to_pandas()
    assert frame.columns.to_list() == ["file", "frames", "rate", "error"]
    assert frame["frames"].to_list() == list(range(1, COUNT + 1))


def test_a_data_frame_has_what_was_not_taken(folder: Path):
    results = mox.map_files(functions.frames, folder)
    next(results)
    assert results.to_pandas()["value"].to_list() == list(range(2, COUNT + 1))


def test_no_files_give_an_empty_data_frame():
    frame = mox.map_files(functions.frames, []).to_pandas()
    assert frame.columns.to_list() == ["file", "error"]
    assert len(frame) == 0


@pytest.mark.parametrize("key", ["file", "error"])
def test_a_column_of_the_table_is_not_given_by_the_function(folder: Path, key: str):
    with pytest.raises(ValueError, match=rf"walk_01.c3d': the table has a column '{key}'"):
        mox.map_files(lambda trial: {key: 1}, folder).to_pandas()
    assert own_threads() == []
