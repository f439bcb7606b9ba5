"""A source and a destination for writing while calls of the system fail; see fault_shim.cpp."""

from __future__ import annotations

import hashlib
import json
import os
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Any

import _mox_probe
import numpy as np
import pytest
from support.c3d_bytes import c3d_bytes

SHIM = Path(_mox_probe.__file__).with_name("mox_fault_shim.so")
PROGRAM = Path(__file__).with_name("faulty_writing.py")
OLD = b"an old file"
OLD_FILE_ALONE = {"trial.c3d": hashlib.sha256(OLD).hexdigest()}

needs_faults = pytest.mark.skipif(not SHIM.exists(), reason="faults are injected on POSIX only")


@dataclass
class Target:
    """A source that takes several writes, and a destination with an old file."""

    source: Path
    path: Path
    #: Whether the system has no files without a name.
    named: bool = False

    @property
    def folder(self) -> Path:
        return self.path.parent

    def start(self, faults: list[Any], **options: Any) -> subprocess.CompletedProcess[str]:
        return subprocess.run(
            **self._program(faults, options),
            capture_output=True,
            timeout=120,
            check=False,
        )

    def begin(self, *fault: Any) -> subprocess.Popen[str]:
        """The process that writes, for faults at which it halts."""
        return subprocess.Popen(**self._program([fault], {}), stdout=subprocess.PIPE)

    def _program(self, faults: list[Any], options: dict[str, Any]) -> dict[str, Any]:
        task = {"source": str(self.source), "destination": str(self.path), "faults": faults}
        loaded_before = os.environ.get("LD_PRELOAD")
        named = {"MOX_FAULT_NAMED": "1"} if self.named else {}
        return {
            "args": [sys.executable, PROGRAM, json.dumps(task | options)],
            "env": {
                **os.environ,
                **named,
                "PYTHONPATH": os.pathsep.join(filter(None, sys.path)),
                "LD_PRELOAD": ":".join(filter(None, [loaded_before, str(SHIM)])),
            },
            "text": True,
        }

    def attempts(self, faults: list[Any], **options: Any) -> list[dict[str, Any]]:
        finished = self.start(faults, **options)
        assert finished.returncode == 0, finished.stderr
        answers: list[dict[str, Any]] = json.loads(finished.stdout)
        return answers

    def attempt(self, *fault: Any, **options: Any) -> dict[str, Any]:
        (answer,) = self.attempts([fault], **options)
        return answer


def several_writes(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """A file that is written with more than one call."""
    path = tmp_path_factory.mktemp("source") / "source.c3d"
    frames = np.arange(3.0 * 5000).reshape(5000, 3)
    path.write_bytes(c3d_bytes({f"P{n}": frames + n for n in range(20)}))
    return path
