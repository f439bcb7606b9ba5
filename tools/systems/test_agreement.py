"""The same files, read and written on several systems, give the same numbers and the same bytes.

Usage: python -m systems.test_agreement RELEASE [aarch64=BUILD] [windows=BUILD]
RELEASE is a build for this machine, the others those for the systems beside it. The files are the
example, the recordings in MOXPY_SAMPLES and 200 random ones. What another system makes of one is a
test; the last line counts: "N passed, N failed". The exit code is 0 only if none failed.
"""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import sys
from collections.abc import Callable, Mapping
from pathlib import Path

from run_tests import PROJECT, Tally

from systems import test_aarch64, test_windows
from systems.aarch64 import aarch64_python
from systems.agreement import Said, compare
from systems.steps import SYSTEMS
from systems.windows import windows
from systems.wine import Wine, windows_path

RANDOM_FILES = 200
TESTS = PROJECT / "tests" / "python"
FOLDER = SYSTEMS / "agreement"
FILES = FOLDER / "files"


def make_files() -> None:
    shutil.rmtree(FILES, ignore_errors=True)
    words = ["-m", "support.random_files", str(FILES), str(RANDOM_FILES)]
    environment = {**os.environ, "PYTHONPATH": str(TESTS)}
    subprocess.run([sys.executable, *words], env=environment, check=True)
    shutil.copy(PROJECT / "examples" / "gait_trial.c3d", FILES)
    if samples := os.environ.get("MOXPY_SAMPLES"):
        for path in Path(samples).iterdir():
            if path.suffix.lower() == ".c3d":
                shutil.copy(path, FILES)


def said_by(words: list[str | Path], variables: Mapping[str, str]) -> Said:
    # Through pipes: a program under Wine cannot use a file for what it prints.
    told = subprocess.run(
        words, cwd=PROJECT, env={**os.environ, **variables}, stdin=subprocess.DEVNULL,
        capture_output=True, check=False,
    )  # fmt: skip
    sys.stderr.buffer.write(told.stderr)
    told.check_returncode()
    lines = [json.loads(line) for line in told.stdout.splitlines()]
    return {line.pop("file"): line for line in lines}


def program(system: str, path: Callable[[Path], str] = str) -> list[str | Path]:
    return ["-m", "support.fingerprints", path(FILES), path(FOLDER / system)]


def here(build: Path) -> Said:
    folders = [build / "package", TESTS, PROJECT / "python"]
    variables = {"PYTHONPATH": ":".join(map(str, folders))}
    return said_by([sys.executable, *program("here")], variables)


def aarch64(build: Path) -> Said:
    variables = test_aarch64.variables(build, test_aarch64.packages(test_aarch64.ALL))
    variables["PYTHONPATH"] += f":{TESTS}"
    return said_by([aarch64_python(test_aarch64.VERSION), *program("aarch64")], variables)


def windows_64(build: Path) -> Said:
    wine = Wine()
    words = [windows().python / "python.exe", *program("windows", windows_path)]
    variables = test_windows.variables(build)
    variables["PYTHONPATH"] += f";{windows_path(TESTS)}"
    return said_by(list(wine.command(words)), wine.environment(variables))


OTHERS: dict[str, Callable[[Path], Said]] = {"aarch64": aarch64, "windows": windows_64}


def main(words: list[str]) -> int:
    make_files()
    expected = here(Path(words[0]).resolve())
    tally = Tally()
    for word in words[1:]:
        system, _, build = word.partition("=")
        tally += compare(expected, OTHERS[system](Path(build).resolve()), system)
    print(f"{tally.passed} passed, {tally.failed} failed", flush=True)
    return 0 if tally.passed and not tally.failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
