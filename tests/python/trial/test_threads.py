"""Threads that read, and what they leave to others meanwhile."""

from __future__ import annotations

import io
import pickle
import subprocess
import sys
import threading
from collections.abc import Callable, Iterator, Sequence
from contextlib import contextmanager, suppress
from functools import partial
from pathlib import Path
from typing import Any

import _moxPY
import moxPY as mox
import numpy as np
import pytest
from support.c3d_bytes import Analog, Event, c3d_bytes
from support.read_c3d import track
from support.sample_table import SAMPLES
from support.store_tree import snapshot

FORMS = [
    (processor, storage)
    for processor in ("intel", "dec", "mips")
    for storage in ("real", "integer")
]
EXAMPLE = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"


@contextmanager
def switches_every(seconds: float) -> Iterator[None]:
    """For how long a thread may run while another one waits for its turn."""
    before = sys.getswitchinterval()
    sys.setswitchinterval(seconds)
    try:
        yield
    finally:
        sys.setswitchinterval(before)


@pytest.fixture
def no_switches() -> Iterator[None]:
    """Threads run only where another one lets them: by waiting, or by releasing the lock."""
    with switches_every(1000):
        yield


@pytest.fixture
def many_switches() -> Iterator[None]:
    """Threads take turns all the time."""
    with switches_every(1e-5):
        yield


def runs_meanwhile(action: Callable[[], object]) -> bool:
    """Whether another thread comes to run while `action` does, within many calls of it."""
    gate = threading.Lock()
    gate.acquire()
    ran = []

    def run() -> None:
        gate.acquire()
        ran.append(True)

    thread = threading.Thread(target=run)
    thread.start()
    gate.release()  # never waits, so nothing but the action lets the other one run
    calls = 0
    while not ran and calls < 5_000:
        action()
        calls += 1
    outcome = bool(ran)
    thread.join()
    return outcome


@pytest.mark.usefixtures("no_switches")
def test_other_threads_run_while_a_file_is_read():
    content = EXAMPLE.read_bytes()
    assert runs_meanwhile(lambda: _moxPY.moxReadAcquisition(str(EXAMPLE)))
    assert runs_meanwhile(lambda: mox.read(EXAMPLE))
    assert runs_meanwhile(lambda: mox.read(content))


@pytest.mark.usefixtures("no_switches")
def test_other_threads_run_while_a_trial_is_written(tmp_path: Path):
    trial = mox.read(EXAMPLE)
    assert runs_meanwhile(lambda: trial.write(tmp_path / "walk.c3d"))
    assert runs_meanwhile(lambda: trial.write(io.BytesIO()))


def test_what_is_written_is_the_trial_as_it_was(tmp_path: Path):
    """One thread writes, one makes all values of the markers the same again and again."""
    trial = mox.read(EXAMPLE)
    shape = trial.markers.values.shape
    trial.markers.values = np.zeros(shape)
    done = threading.Event()

    def change() -> None:
        number = 0
        while not done.is_set():
            number += 1
            trial.markers.values = np.full(shape, float(number))

    thread = threading.Thread(target=change)
    thread.start()
    seen = set()
    try:
        for i in range(40):
            trial.write(tmp_path / f"{i}.c3d")
            seen.add(frozenset(np.unique(mox.read(tmp_path / f"{i}.c3d").markers.values)))
    finally:
        done.set()
        thread.join()
    assert {len(values) for values in seen} == {1}
    assert len(seen) > 1


def in_threads(jobs: Sequence[Callable[[], object]], count: int = 8) -> list[Any]:
    """What the jobs give, done by so many threads that begin at once."""
    gate = threading.Barrier(count)
    queue = list(enumerate(jobs))
    results: dict[int, Any] = {}

    def work() -> None:
        gate.wait()
        while queue:
            try:
                index, job = queue.pop()
            except IndexError:
                return
            try:
                results[index] = job()
            except BaseException as failure:  # told by the one who asked
                results[index] = failure

    threads = [threading.Thread(target=work) for _ in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return [results[index] for index in range(len(jobs))]


def various_files(folder: Path) -> list[Path]:
    """Files of every form, a cut one and one that is none."""
    paths = []
    for number, (processor, storage) in enumerate(FORMS):
        content = c3d_bytes(
            {"LASI": track(200, number), "LKneeAngle": track(200, 40 + number)},
            analogs=[Analog("Fz", np.arange(400) + number, scale=0.5)],
            samples_per_frame=2, processor=processor, storage=storage, rate=100.0 + number,
            events=[Event("Left", "Foot Strike", 0.5 + number, "Ann", "heel", 1)],
            parameters={"POINT:ANGLES": ["LKneeAngle"], "TRIAL:NAME": f"trial {number}"},
        )  # fmt: skip
        paths.append(folder / f"{number}.c3d")
        paths[-1].write_bytes(content if number else content[:-2048])
    paths.append(folder / "text.c3d")
    paths[-1].write_bytes(b"no trial")
    return [*paths, EXAMPLE]


def outcome(path: Path) -> Any:
    try:
        trial = mox.read(path, odd="ignore")
    except ValueError as failure:
        return str(failure)
    return snapshot(trial), trial.warnings


def test_eight_threads_read_what_one_reads(tmp_path: Path):
    paths = various_files(tmp_path) * 6
    expected = [outcome(path) for path in paths]
    assert in_threads([partial(outcome, path) for path in paths]) == expected


def test_samples_are_read_by_eight_threads_as_by_one(sample: Callable[[str], Path]):
    paths = [sample(each.name) for each in SAMPLES]
    expected = [outcome(path) for path in paths]
    assert in_threads([partial(outcome, path) for path in paths]) == expected


def test_threads_read_write_copy_and_pickle_trials_of_their_own(tmp_path: Path):
    """All of them begin as copies of one, so they share its samples."""
    trial = mox.read(EXAMPLE)
    expected = io.BytesIO()
    trial.write(expected)
    shape = trial.markers.values.shape
    copies = [trial.copy() for _ in range(16)]

    def work(number: int) -> bool:
        mine = copies[number]
        mine.analogs.values = np.full(mine.analogs.values.shape, float(number))
        mine = pickle.loads(pickle.dumps(mine.copy()))
        mine.markers.values = np.full(shape, float(number))
        mine.write(tmp_path / f"{number}.c3d")
        again = mox.read(tmp_path / f"{number}.c3d")
        return bool(
            (again.markers.values == number).all()
            and np.allclose(again.analogs.values, number, atol=1e-3)  # in counts in the file
            and again.angles.values.tobytes() == trial.angles.values.tobytes()
        )

    assert in_threads([partial(work, number) for number in range(16)]) == [True] * 16
    written = io.BytesIO()
    trial.write(written)
    assert written.getvalue() == expected.getvalue()


# What a thread may meet that edits what others edit: the channel or the event is gone.
GONE = (KeyError, ValueError)


@pytest.mark.usefixtures("many_switches")
def test_a_trial_that_threads_share_neither_breaks_nor_tears(tmp_path: Path):
    trial = mox.read(EXAMPLE)
    trial.markers.values = np.zeros(trial.markers.values.shape)
    frames = trial.frames
    torn: list[str] = []

    def expect_whole(values: Any, what: str) -> None:
        """Every channel was given one number for all of its samples."""
        if (values != values[:1]).any():
            torn.append(what)

    def assign(i: int) -> None:
        trial.markers["LASI"] = np.full((frames, 3), float(i))

    def assign_all(i: int) -> None:
        values = trial.markers.values
        trial.markers.values = np.full(values.shape, float(i))

    def append_and_remove(i: int) -> None:
        label = f"new {i % 3}"
        trial.markers[label] = np.full((frames, 3), float(i))
        del trial.markers[label]

    def rename(i: int) -> None:
        trial.markers.rename({"RASI": "other"} if "RASI" in trial.markers else {"other": "RASI"})

    def edit_events(i: int) -> None:
        event = trial.events.add("Foot Strike", float(i), context="Left")
        trial.events.remove(event)

    def read_one(_: int) -> None:
        expect_whole(trial.markers["LASI"].values, "channel")

    def read_all(_: int) -> None:
        expect_whole(trial.markers.values, "kind")
        assert len(trial.time) == frames

    def read_by_function(_: int) -> None:
        markers, _info = _moxPY.moxGetMarkers(trial)
        for values in markers.values():
            expect_whole(values, "function")

    def write(i: int) -> None:
        path = tmp_path / f"{threading.get_ident()}.c3d"
        trial.write(path)
        expect_whole(mox.read(path).markers.values, "file")

    def copy(_: int) -> None:
        expect_whole(trial.copy().markers.values, "copy")
        expect_whole(pickle.loads(pickle.dumps(trial)).markers.values, "pickle")

    steps = [
        assign, assign_all, append_and_remove, rename, edit_events, read_one, read_all,
        read_by_function, write, copy,
    ]  # fmt: skip

    def run(step: Callable[[int], None], i: int) -> Any:
        with suppress(*GONE):
            step(i)

    jobs = [partial(run, step, i) for i in range(40) for step in steps]
    assert in_threads(jobs) == [None] * len(jobs)
    assert torn == []
    assert trial.angles.labels == mox.read(EXAMPLE).angles.labels


@pytest.mark.usefixtures("many_switches")
def test_gaps_and_frames_are_of_one_moment():
    """Labels and samples that belong together are read together, whoever appends meanwhile."""
    trial = mox.read(EXAMPLE)
    done = threading.Event()

    def append_and_remove() -> None:
        while not done.is_set():
            trial.markers["new"] = np.zeros((trial.frames, 3))
            del trial.markers["new"]

    thread = threading.Thread(target=append_and_remove)
    expected = trial.markers.gaps()
    thread.start()
    try:
        for _ in range(100):
            assert trial.markers.gaps() == expected
            assert trial.to_pandas("markers").shape[1] % 3 == 0
    finally:
        done.set()
        thread.join()


@pytest.mark.usefixtures("many_switches")
def test_a_trial_may_be_closed_while_others_use_it():
    """Whoever began before is served; whoever comes later is told."""
    for _ in range(20):
        trial = mox.read(EXAMPLE)
        jobs: list[Callable[[], Any]] = [
            trial.copy,
            trial.close,
            partial(getattr, trial.markers, "labels"),
        ]
        for result in in_threads(jobs * 4):
            assert not isinstance(result, BaseException) or str(result) == "the trial was closed"


READING_TO_THE_END = f"""
import threading, time, _moxPY

def read():
    while True:
        _moxPY.moxReadAcquisition({str(EXAMPLE)!r})
        reads.append(1)

reads = []
for _ in range(4):
    threading.Thread(target=read, daemon=True).start()
while len(reads) < 8:
    time.sleep(0.001)
"""


def test_a_process_ends_while_its_threads_read():
    for _ in range(5):
        done = subprocess.run(
            [sys.executable, "-c", READING_TO_THE_END], capture_output=True, timeout=120
        )
        assert (done.returncode, done.stderr) == (0, b"")
