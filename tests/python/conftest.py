"""What all tests share: a log folder of their own, the log's new lines, the sample files."""

from __future__ import annotations

import os
import tempfile
from collections.abc import Callable
from importlib.util import find_spec
from pathlib import Path
from typing import TYPE_CHECKING

import pytest

if TYPE_CHECKING:
    from support.package_copy import PackageCopy

# Before anything imports the module, which looks for its log folder once.
_state_folder = tempfile.TemporaryDirectory(prefix="moxpy-tests-", ignore_cleanup_errors=True)
os.environ["ORVANE_STATE_DIR"] = _state_folder.name

# Windows looks for libraries beside a module and in folders that it was told of. Those of the
# probe lie beside the module under test, which a test may import after it.
if os.name == "nt" and (_module := find_spec("_moxPY")) and _module.origin:
    os.add_dll_directory(str(Path(_module.origin).parent))  # type: ignore[attr-defined, unused-ignore]


def pytest_unconfigure() -> None:
    """The folder goes with the process; a worker of a parallel run leaves nothing to its exit."""
    _state_folder.cleanup()


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
    """Gives the path of a sample file; skips the test where there is none.

    They are public recordings that are no part of the project; MOXPY_SAMPLES names their folder.
    """
    folder = Path(os.environ.get("MOXPY_SAMPLES", "no folder"))

    def path_of(name: str) -> Path:
        path = folder / name
        if not path.exists():
            pytest.skip("MOXPY_SAMPLES names no folder with the sample files")
        return path

    return path_of
