"""What all tests share: a log folder of their own, the log's new lines, the sample files."""

from __future__ import annotations

import os
import tempfile
from collections.abc import Callable
from pathlib import Path
from typing import TYPE_CHECKING

import pytest

if TYPE_CHECKING:
    from support.package_copy import PackageCopy

REPOSITORY = Path(__file__).resolve().parents[2]

# Before anything imports the module, which looks for its log folder once.
_state_folder = tempfile.TemporaryDirectory(prefix="moxpy-tests-", ignore_cleanup_errors=True)
os.environ["ORVANE_STATE_DIR"] = _state_folder.name


@pytest.fixture
def state_folder() -> Path:
    """The folder of the log file."""
    return Path(_state_folder.name)


@pytest.fixture
def new_log_lines(state_folder: Path) -> Callable[[], list[str]]:
    """Gives the lines that were logged since the fixture was made, from their level on."""
    from support.log_file import LogReader

    return LogReader(state_folder).new_lines


@pytest.fixture
def package(tmp_path: Path) -> PackageCopy:
    """A copy of the built package without plugins, run in processes of its own."""
    from support.package_copy import PackageCopy

    return PackageCopy(tmp_path)


@pytest.fixture(scope="session")
def sample() -> Callable[[str], Path]:
    """Gives the path of a sample file; skips the test where the samples are not there."""
    beside_the_checkout = REPOSITORY.parent / "shared" / "samples"
    folder = Path(os.environ.get("MOXPY_SAMPLES", beside_the_checkout))

    def path_of(name: str) -> Path:
        path = folder / name
        if not path.exists():
            pytest.skip(f"the sample files are not on this machine: {name}")
        return path

    return path_of
