"""What a type checker says of scripts that use the package."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import _moxPY
import moxPY
import pytest
from support.memory import under_a_sanitizer

SCRIPT = """\
import moxPY
from moxPY import *

with moxReadAcquisition("walk.c3d") as trial:
    values, info = moxGetMarkers(trial)
    moxSetFrequency(trial, 100.0)
    moxPY.moxSetFrequency(trial, 100.0)
reveal_type(trial)
reveal_type(moxPY.moxGetPointNumber(trial))
moxSetFrequency(trial, "fast")
"""


@pytest.mark.skipif(under_a_sanitizer(), reason="nothing of the module runs here")
def test_a_star_import_is_typed_like_the_package(tmp_path: Path):
    script = tmp_path / "script.py"
    script.write_text(SCRIPT)
    folders = {str(Path(module.__file__ or "").parents[1]) for module in (moxPY, _moxPY)}
    finished = subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--no-error-summary", script.name],
        cwd=tmp_path,
        env={**os.environ, "MYPYPATH": os.pathsep.join(folders)},
        capture_output=True,
        text=True,
        check=False,
    )
    assert finished.stdout.splitlines() == [
        'script.py:8: note: Revealed type is "moxPY.acquisition.data_store"',
        'script.py:9: note: Revealed type is "float"',
        'script.py:10: error: Argument 2 to "moxSetFrequency" has incompatible type "str"; '
        'expected "float"  [arg-type]',
    ]
