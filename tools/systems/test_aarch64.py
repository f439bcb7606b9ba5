"""Run the C++ and the Python tests of a build for 64-bit ARM under an emulator.

Usage: python -m systems.test_aarch64 BUILD [--minimal] [PYTEST-ARGUMENT...]
With --minimal, the Python tests that show that a system is fit alone. The last line counts:
"N passed, N failed". The exit code is 0 only if something passed and nothing failed.
"""

from __future__ import annotations

import argparse
import os
import subprocess
import sys
from pathlib import Path

from run_tests import PROJECT, Tally, tally_of

from systems.aarch64 import aarch64_python, emulated
from systems.linux import Linux
from systems.steps import SYSTEMS, made_once
from systems.try_wheel import MINIMAL, NEEDED
from systems.wheels import recipe_of, unpack

TARGET = Linux("aarch64", "3.13")
VERSION = TARGET.version
ALL = "aarch64_tests.txt"


def packages(name: str) -> Path:
    """The folder with what a requirements file names, for that processor."""
    return made_once(
        SYSTEMS / "aarch64" / Path(name).stem,
        recipe_of(name),
        lambda folder: unpack(name, folder, python=VERSION, platforms=TARGET.test_platforms),
    )


def run(words: list[str | Path], variables: dict[str, str], report: Path) -> Tally:
    """Run a test program that writes a JUnit report."""
    report.unlink(missing_ok=True)
    finished = subprocess.run(words, cwd=PROJECT, env={**os.environ, **variables}, check=False)
    return tally_of(report, finished.returncode)


def run_cpp_tests(build: Path) -> Tally:
    tally = Tally()
    for program in sorted((build / "tests" / "cpp").glob("*/*_tests")):
        report = build / "test-results" / f"{program.name}.xml"
        words = emulated(program, VERSION)
        tally += run([*words, f"--gtest_output=xml:{report}", "--gtest_brief=1"], {}, report)
    return tally


def variables(build: Path, installed: Path) -> dict[str, str]:
    """Those by which Python finds the build's module and the packages beside it."""
    folders = [build / "package", build / "tests" / "python", PROJECT / "python", installed]
    return {
        "PYTHONPATH": ":".join(map(str, folders)),
        "PYTHONPYCACHEPREFIX": str(build / "pycache"),
        "XDG_STATE_HOME": str(build / "state"),
    }


def run_python_tests(build: Path, installed: Path, arguments: list[str]) -> Tally:
    report = build / "test-results" / "python.xml"
    words: list[str | Path] = [
        aarch64_python(VERSION),
        "-m",
        "pytest",
        "-q",
        "-p",
        "no:cacheprovider",
    ]
    return run([*words, f"--junit-xml={report}", *arguments], variables(build, installed), report)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=Path)
    parser.add_argument("--minimal", action="store_true", help="the tests of a system alone")
    options, arguments = parser.parse_known_args()
    build: Path = options.build.resolve()
    (build / "test-results").mkdir(exist_ok=True)

    tally = Tally()
    if options.minimal:
        tally += run_python_tests(build, packages(NEEDED), [*arguments, MINIMAL])
    else:
        tally += run_cpp_tests(build)
        tally += run_python_tests(build, packages(ALL), arguments)
    if tally.skipped:
        print(f"{tally.skipped} skipped")
    print(f"{tally.passed} passed, {tally.failed} failed", flush=True)
    return 0 if tally.passed and not tally.failed else 1


if __name__ == "__main__":
    sys.exit(main())
