"""Functions for batches that other processes find."""

from __future__ import annotations

import os
import time
from pathlib import Path
from typing import Any

import moxPY as mox


class Secretive(Exception):
    """What cannot be made from its arguments again."""

    def __init__(self, first: str, second: str) -> None:
        super().__init__(f"{first} and {second}")


class Unprintable(Exception):
    def __init__(self) -> None:
        super().__init__(lambda: None)

    def __str__(self) -> str:
        raise ValueError("no text")


def frames(trial: mox.Trial) -> int:
    return trial.frames


def process(trial: mox.Trial) -> int:
    return os.getpid()


def itself(trial: mox.Trial) -> mox.Trial:
    return trial


def unpicklable(trial: mox.Trial) -> Any:
    return (lambda: None) if trial.frames == 3 else trial.frames


def secretive(trial: mox.Trial) -> None:
    raise Secretive("one", "two")


def unprintable(trial: mox.Trial) -> None:
    raise Unprintable


def refused(trial: mox.Trial) -> None:
    raise KeyError("LASI")


def dies_at_three_frames(trial: mox.Trial) -> int:
    if trial.frames == 3:
        os._exit(1)
    return trial.frames


def waits_at_one_frame(trial: mox.Trial) -> int:
    if trial.frames == 1:
        time.sleep(0.5)
    return trial.frames


def dies_once(trial: mox.Trial) -> int:
    """The process that works on three frames ends, but not the next one that does."""
    assert trial.path
    mark = trial.path.with_suffix(".done")
    if trial.frames == 3 and not mark.exists():
        Path(mark).touch()
        os._exit(1)
    return trial.frames


def markers(trial: mox.Trial) -> Any:
    return trial.markers


def marks_the_file(trial: mox.Trial) -> dict[str, int]:
    """Takes its time, and leaves beside the file which processes began it."""
    assert trial.path
    with trial.path.with_suffix(".begun").open("a") as begun:
        begun.write(f"{os.getpid()}\n")
    time.sleep(0.1)
    return {"frames": trial.frames, "process": os.getpid()}
