"""Names of nodes come from files; who makes one must not know where they end up in a table."""

from __future__ import annotations

import os
import subprocess
import sys

CODE = "import _mox_probe; print(_mox_probe.hash_of_name('LASI'))"


def hash_in_a_new_process() -> str:
    path = os.pathsep.join(filter(None, sys.path))
    return subprocess.run(
        [sys.executable, "-c", CODE],
        env=os.environ | {"PYTHONPATH": path, "PYTHONHASHSEED": "0"},
        capture_output=True,
        text=True,
        check=True,
    ).stdout


def test_each_process_has_hashes_of_its_own():
    assert len({hash_in_a_new_process() for _ in range(3)}) == 3
