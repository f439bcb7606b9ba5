"""Texts with wrong bytes: they read, or are refused with a ValueError. Nothing else happens."""

from __future__ import annotations

import contextlib
import subprocess
import sys
from typing import Any

import moxPY as mox
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from opensim.texts import signals, sto, trc, walk

CONTENTS = {
    "trc": trc(walk()),
    "blanks": trc({"A": np.ones((4, 3)), "B": np.ones((4, 3))}).replace(b"\t", b" "),
    "sto": sto(signals(), header=["nRows=6", "nColumns=3", "units=N,m"]),
    "mot": sto(signals(), header=["datacolumns 3", "datarows 6"], separator=" "),
}
PIECES = (
    b"\0", b"\n", b"\t", b" ", b"\r", b"-", b"1e999", b"-1e308", b"nan", b"inf", b"5e-324", b"",
    b"\xff", b"endheader", b"PathFileType", b"time", b"9" * 400, b"\t" * 70, b"Frame#", b"X1", b"=",
)  # fmt: skip

Mutation = tuple[int, int, bytes]
mutations = st.lists(
    st.tuples(
        st.integers(0, 600), st.integers(0, 12), st.sampled_from(PIECES) | st.binary(max_size=3)
    ),
    min_size=1,
    max_size=6,
)


def assert_whole(trial: mox.Trial) -> None:
    assert trial.markers.values.shape == (trial.frames, len(trial.markers), 3)
    assert trial.analogs.values.shape == (trial.frames, len(trial.analogs))
    assert trial.rate >= 0.0
    if trial.rate > 0.0:
        assert len(trial.time) == trial.frames
        assert np.isfinite(trial.time).all()
    assert trial.first_frame >= 1


def read_everything(content: bytes) -> None:
    with contextlib.suppress(ValueError):
        assert_whole(mox.read(content, odd="ignore"))


@settings(max_examples=600, deadline=None, derandomize=True)
@given(st.sampled_from(list(CONTENTS)), mutations)
def test_changed_bytes(name: str, changes: list[Mutation]):
    content = CONTENTS[name]
    for place, length, piece in changes:
        content = content[:place] + piece + content[place + length :]
    read_everything(content)


@pytest.mark.parametrize("name", CONTENTS)
def test_every_length(name: str):
    for length in range(len(CONTENTS[name])):
        read_everything(CONTENTS[name][:length])


@settings(max_examples=200, deadline=None, derandomize=True)
@given(
    st.sampled_from([b"PathFileType\t4\n", b"x\nendheader\n", b"x\nendheader\ntime\ta\n"]),
    st.binary(max_size=300) | st.lists(st.sampled_from(PIECES), max_size=60).map(b"".join),
)
def test_any_bytes_behind_a_beginning(start: bytes, rest: bytes):
    read_everything(start + rest)


IN_LITTLE_MEMORY = """
import resource, sys
import moxPY as mox
content = {content}
limit = {limit} << 20
with open("/proc/self/statm") as file:
    used = int(file.read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (used + limit, used + limit))
try:
    mox.read(content, odd="ignore")
except ValueError as error:
    print(error)
else:
    print("read")
"""


@pytest.mark.skipif(sys.platform != "linux", reason="limits the address space")
@pytest.mark.parametrize(
    ("content", "text"),
    [
        # Counts that are not there.
        ("b'PathFileType\\n' + b'DataRate NumFrames NumMarkers\\n100 999999999 999999999\\n'"
         " + b'Frame# Time A\\n1 0 1 2 3\\n'", "read"),
        ("b'x\\nnRows=99999999999\\nnColumns=99999999\\nendheader\\ntime a\\n0 1\\n0.1 2\\n'",
         "read"),
        # Short rows below a great many labels.
        ("b'PathFileType\\nDataRate\\n100\\nFrame#\\tTime' + b'\\tA\\t\\t' * 60000 + b'\\n'"
         " + b''.join(b'%d\\t%.2f\\n' % (i, i / 100) for i in range(2000))",
         "'<bytes>': line 6: the row, expected 180002 cells, got 2"),
        # A line without an end.
        ("b'x\\nendheader\\ntime\\ta\\n' + b'1' * (40 << 20)",
         "'<bytes>': line 4: the length of the line, expected at most 16777216 bytes, got more"),
    ],
)  # fmt: skip
def test_nothing_is_believed_that_takes_memory(content: str, text: str):
    code = IN_LITTLE_MEMORY.format(content=content, limit=256)
    run: Any = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    assert run.stdout.strip() == text, run.stderr
