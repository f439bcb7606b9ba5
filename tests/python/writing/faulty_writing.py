"""Write an acquisition again and again while calls of the system fail; see fault_shim.cpp.

Usage: faulty_writing.py '{"source": FILE, "destination": FILE, "faults": [[CALL, NUMBER, KIND]],
                           "file_limit": BYTES}'
The answer is a line of JSON, one element for each fault: the text of the error (null: none), how
often the call was made, and the names and the content (a digest) of the files in the folder.
"""

from __future__ import annotations

import ctypes
import hashlib
import json
import os
import resource
import sys
from pathlib import Path
from typing import Any

import _moxPY


def digests(folder: Path) -> dict[str, str]:
    return {
        path.name: hashlib.sha256(path.read_bytes()).hexdigest()
        for path in sorted(folder.iterdir())
    }


def attempt(acquisition: Any, destination: Path, fault: list[Any]) -> dict[str, Any]:
    shim = ctypes.CDLL(None)
    for name, value in zip(("CALL", "NUMBER", "KIND"), fault, strict=True):
        os.environ[f"MOX_FAULT_{name}"] = str(value)
    shim.mox_fault_reset()
    error = None
    try:
        _moxPY.moxWriteAcquisition(acquisition, str(destination))
    except RuntimeError as raised:
        error = str(raised)
    del os.environ["MOX_FAULT_CALL"]
    moved = destination.parent.with_name(destination.parent.name + ".moved")
    if moved.exists():
        moved.rename(destination.parent)
    return {
        "error": error,
        "calls": shim.mox_fault_calls(),
        "files": digests(destination.parent),
    }


def main() -> None:
    task = json.loads(sys.argv[1])
    destination = Path(task["destination"])
    os.environ["MOX_FAULT_FOLDER"] = str(destination.parent)
    acquisition = _moxPY.moxReadAcquisition(task["source"])
    if "file_limit" in task:
        resource.setrlimit(resource.RLIMIT_FSIZE, (task["file_limit"], resource.RLIM_INFINITY))
    answers = []
    for fault in task["faults"]:
        answers.append(attempt(acquisition, destination, fault))
    print(json.dumps(answers))


if __name__ == "__main__":
    main()
