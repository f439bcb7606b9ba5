"""Writes a file with one writer, alone in its process, and says what that cost.

    python write_trial.py WRITER SOURCE.c3d DESTINATION.c3d REPETITIONS    WRITER: one of WRITERS

The source is read before; neither that nor starting the interpreter is counted. The answer is one
line of JSON: the seconds of each repetition, which makes a new file, and by how much the memory
peaked meanwhile.
"""

from __future__ import annotations

import importlib
import json
import sys
import time
import warnings
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path
from typing import Any

from read_trial import peak_memory, reset_peak_memory


@dataclass(frozen=True)
class Writer:
    """What a user of the package would write; `write` is what is measured."""

    module: str
    read: Callable[[Any, str], Any]
    write: Callable[[Any, Any, str], Any]


def read_and_set(module: Any, path: str) -> Any:
    acquisition = module.moxReadAcquisition(path)
    module.moxSetPointsValues(acquisition, module.moxGetPointsValues(acquisition))
    module.moxSetAnalogsValues(acquisition, module.moxGetAnalogsValues(acquisition))
    return acquisition


def read_with_c3d(module: Any, path: str) -> Any:
    """A writer that holds all frames of the file."""
    with Path(path).open("rb") as file:
        return module.Writer.from_reader(module.Reader(file), conversion="copy")


def write_with_c3d(_: Any, writer: Any, path: str) -> None:
    with Path(path).open("wb") as file:
        writer.write(file)


WRITERS = {
    "moxPY": Writer(
        "_moxPY",
        lambda module, path: module.moxReadAcquisition(path),
        lambda module, read, path: module.moxWriteAcquisition(read, path),
    ),
    # Every value was set anew, as float64: nothing is left of the numbers as the file has them.
    "moxPY, edited": Writer(
        "_moxPY",
        read_and_set,
        lambda module, read, path: module.moxWriteAcquisition(read, path),
    ),
    "ezc3d": Writer(
        "ezc3d",
        lambda module, path: module.c3d(path),
        lambda _, read, path: read.write(path),
    ),
    "c3d": Writer("c3d", read_with_c3d, write_with_c3d),
}


def measure(writer: Writer, source: str, destination: str, repetitions: int) -> dict[str, Any]:
    module = importlib.import_module(writer.module)
    read = writer.read(module, source)
    seconds: list[float] = []
    reset_peak_memory()
    before = peak_memory()
    for _ in range(repetitions):
        Path(destination).unlink(missing_ok=True)
        start = time.perf_counter()
        writer.write(module, read, destination)
        seconds.append(time.perf_counter() - start)
    return {"seconds": seconds, "peak": peak_memory() - before}


if __name__ == "__main__":
    name, source, destination, repetitions = sys.argv[1:]
    warnings.simplefilter("ignore")
    print(json.dumps(measure(WRITERS[name], source, destination, int(repetitions))))
