"""The two ways to read and write files: with the functions, and with `moxPY.Trial`.

A test that takes the fixture `way` runs in both. Between reading and writing it is the same for
both, since every function takes a trial in place of a handle.
"""

from __future__ import annotations

from collections.abc import Callable
from pathlib import Path
from typing import Any, NamedTuple

import _moxPY
import moxPY
import pytest


class Way(NamedTuple):
    """How acquisitions are held, and how one gets them."""

    name: str
    read: Callable[[Path], Any]
    of: Callable[[Any], Any]
    """The acquisition of a handle."""


BY_FUNCTIONS = Way(
    "by functions", lambda path: _moxPY.moxReadAcquisition(str(path)), lambda handle: handle
)
BY_TRIAL = Way("by Trial", lambda path: moxPY.read(path, odd="ignore"), moxPY.Trial.of)


@pytest.fixture(params=[BY_FUNCTIONS, BY_TRIAL], ids=lambda way: way.name)
def way(request: pytest.FixtureRequest) -> Any:
    return request.param


def way_of(acquisition: Any) -> Way:
    """The way in which it is held."""
    return BY_TRIAL if isinstance(acquisition, moxPY.Trial) else BY_FUNCTIONS


def write_to(acquisition: Any, path: Path, **options: Any) -> None:
    """Writes it in the way in which it is held; only trials have options."""
    if way_of(acquisition) is BY_TRIAL:
        acquisition.write(path, **options)
    else:
        assert not options
        assert _moxPY.moxWriteAcquisition(acquisition, str(path)) is None
