"""Users' scripts are clean for strict type checkers, stars included."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import sys
from pathlib import Path

import _moxPY
import moxPY
import pytest
from support.memory import under_a_sanitizer

SCRIPT = Path(__file__).with_name("typed_script.py")
PACKAGES = sorted({str(Path(module.__file__ or "").parents[1]) for module in (moxPY, _moxPY)})

pytestmark = pytest.mark.skipif(under_a_sanitizer(), reason="nothing of the module runs here")

# What only a checker that does not know the types would let pass.
MISTAKES = """
from moxPY import *
from moxPY.trial import Trial

trial = Trial.new(frames="many")
trial.markers["LASI"].label = 3
trial.marker
trial.to_pandas("marker")
moxGetPointFrequency("walk.c3d")
"""
LINES = [5, 6, 7, 8, 9]


def with_mypy(script: Path, folder: Path) -> tuple[list[str], str]:
    """The errors that mypy finds."""
    pytest.importorskip("mypy")
    finished = subprocess.run(
        [
            sys.executable, "-m", "mypy", "--strict", "--config-file=", "--no-error-summary",
            "--hide-error-context", "--follow-imports=silent", str(script),
        ],
        cwd=folder,
        env={**os.environ, "MYPYPATH": os.pathsep.join(PACKAGES)},
        capture_output=True, text=True, check=False,
    )  # fmt: skip
    assert finished.returncode in (0, 1), finished.stderr
    return [line for line in finished.stdout.splitlines() if ": error: " in line], finished.stdout


def with_pyright(script: Path, folder: Path) -> tuple[list[str], str]:
    """The errors that basedpyright finds."""
    beside = shutil.which("basedpyright", path=str(Path(sys.executable).parent))
    program = beside or shutil.which("basedpyright")
    if program is None:
        pytest.skip("basedpyright is not installed")
    project = {"include": [str(script)], "extraPaths": PACKAGES, "typeCheckingMode": "strict"}
    (folder / "pyrightconfig.json").write_text(json.dumps(project), encoding="utf-8")
    finished = subprocess.run(
        [program, "--outputjson", "--pythonpath", sys.executable, "--project", str(folder)],
        capture_output=True, text=True, check=False,
    )  # fmt: skip
    assert finished.returncode in (0, 1), finished.stdout + finished.stderr
    report = json.loads(finished.stdout)
    assert report["summary"]["filesAnalyzed"] == 1, finished.stdout
    return [
        f"{script.name}:{each['range']['start']['line'] + 1}: error: {each['message']}"
        for each in report["generalDiagnostics"]
        if each["severity"] == "error"
    ], finished.stdout


CHECKERS = pytest.mark.parametrize("check", [with_mypy, with_pyright])


@CHECKERS
def test_a_users_script_is_clean(check, tmp_path: Path) -> None:
    errors, output = check(SCRIPT, tmp_path)
    assert errors == [], output


@CHECKERS
def test_mistakes_are_found(check, tmp_path: Path) -> None:
    script = tmp_path / "mistakes.py"
    script.write_text(MISTAKES, encoding="utf-8")
    errors, output = check(script, tmp_path)
    assert sorted({int(error.split(":")[1]) for error in errors}) == LINES, output
