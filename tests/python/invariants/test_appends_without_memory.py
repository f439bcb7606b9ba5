"""Whatever allocation fails, a change is done or not done: nothing is left half changed."""

from __future__ import annotations

import json
import os
import subprocess
import sys
from pathlib import Path
from typing import Any

import _mox_probe
import pytest
from invariants.appends_without_memory import CALLS, VIEW_CALLS
from support.memory import under_a_sanitizer

SHIM = Path(_mox_probe.__file__).with_name("mox_memory_shim.so")
PROGRAM = Path(__file__).with_name("appends_without_memory.py")

pytestmark = [
    pytest.mark.skipif(not SHIM.exists(), reason="allocations fail on demand on POSIX only"),
    pytest.mark.skipif(under_a_sanitizer(), reason="the sanitizer has its own operator new"),
]


def answer_of(name: str) -> Any:
    finished = subprocess.run(
        [sys.executable, PROGRAM, name],
        env={
            **os.environ,
            "PYTHONPATH": os.pathsep.join(filter(None, sys.path)),
            "LD_PRELOAD": str(SHIM),
        },
        capture_output=True,
        text=True,
        timeout=300,
        check=False,
    )
    assert finished.returncode == 0, finished.stderr
    return json.loads(finished.stdout)


@pytest.mark.parametrize("name", CALLS)
def test_an_append_without_memory_is_done_or_not_done(name: str) -> None:
    answer = answer_of(name)
    assert answer["half"] == 0
    assert answer["nothing"] > 20
    assert answer["all"] > 5


@pytest.mark.parametrize("name", VIEW_CALLS)
def test_a_change_of_events_without_memory_is_not_done(name: str) -> None:
    answer = answer_of(name)
    assert answer["half"] == answer["all"] == 0
    assert answer["nothing"] > 20
