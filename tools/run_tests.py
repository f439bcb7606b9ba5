"""Run the C++ and the Python tests of one build.

Usage: run_tests.py BUILD [--sanitize] [PYTEST-ARGUMENT...]
The last line counts both: "N passed, N failed". The exit code is 0 only if something passed and
nothing failed.
"""

from __future__ import annotations

import argparse
import os
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path
from xml.etree import ElementTree

PROJECT = Path(__file__).resolve().parent.parent
TESTS = PROJECT / "tests" / "python"
# Tests of pictures and pages: they ask our libraries nothing that others do not, and drawing is
# slow where every access of memory is looked at.
NOT_SANITIZED = tuple(TESTS / folder for folder in ("player", "plots", "report"))


@dataclass(frozen=True)
class Tally:
    """How many tests passed, failed and were skipped."""

    passed: int = 0
    failed: int = 0
    skipped: int = 0

    def __add__(self, other: Tally) -> Tally:
        return Tally(
            self.passed + other.passed, self.failed + other.failed, self.skipped + other.skipped
        )


def tally_of(report: Path, exit_code: int) -> Tally:
    """Counts of a JUnit report.

    A run that failed without a failed test in its report counts as one failure.
    """
    tally = Tally()
    if report.exists():
        # What a failed test quotes may be no text.
        content = report.read_text(encoding="utf-8", errors="replace")
        for case in ElementTree.fromstring(content).iter("testcase"):
            if case.find("failure") is not None or case.find("error") is not None:
                tally += Tally(failed=1)
            elif case.find("skipped") is not None:
                tally += Tally(skipped=1)
            else:
                tally += Tally(passed=1)
    if exit_code != 0 and tally.failed == 0:
        tally += Tally(failed=1)
    return tally


def run(command: list[str | Path], environment: dict[str, str], report: Path) -> Tally:
    """Run a test program that writes a JUnit report."""
    report.unlink(missing_ok=True)
    finished = subprocess.run(command, cwd=PROJECT, env=environment, check=False)
    return tally_of(report, finished.returncode)


def run_cpp_tests(build: Path, environment: dict[str, str]) -> Tally:
    report = build / "test-results" / "cpp.xml"
    return run(
        [
            "ctest", "--test-dir", build, "--output-junit", report, "--output-on-failure",
            "--progress", "--timeout", "600", "--parallel", str(os.cpu_count() or 1),
            "--no-tests=error",
        ],
        environment,
        report,
    )  # fmt: skip


def run_python_tests(build: Path, environment: dict[str, str], arguments: list[str]) -> Tally:
    report = build / "test-results" / "python.xml"
    folders = [build / "package", build / "tests" / "python", PROJECT / "python"]
    search_path = os.pathsep.join(map(str, folders))
    # A process for each core; one that is done takes tests that wait for another.
    parallel = ["--numprocesses", str(os.cpu_count() or 1), "--dist", "worksteal"]
    return run(
        [sys.executable, "-m", "pytest", "-q", *parallel, f"--junit-xml={report}", *arguments],
        {**environment, "PYTHONPATH": search_path},
        report,
    )


def sanitizer_environment() -> dict[str, str]:
    """What lets an ordinary interpreter load a module that was built with sanitizers.

    The runtimes have to be the first libraries of the process. libstdc++ joins them, since the
    address sanitizer looks for the throwing function at its start. The interpreter's own
    allocations are visible with malloc only, and what it never frees is not ours; nor is how
    other extension modules, such as the readers we compare with, pair new and free.
    """
    compiler = os.environ.get("CXX", "g++")
    runtimes = []
    for library in ("libasan.so", "libubsan.so", "libstdc++.so.6"):
        found = subprocess.run(
            [compiler, f"-print-file-name={library}"], capture_output=True, text=True, check=True
        )
        runtimes.append(str(Path(found.stdout.strip()).resolve(strict=True)))
    return {
        "LD_PRELOAD": ":".join(runtimes),
        "PYTHONMALLOC": "malloc",
        "ASAN_OPTIONS": "detect_leaks=0:alloc_dealloc_mismatch=0",
        "UBSAN_OPTIONS": "print_stacktrace=1",
    }


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=Path)
    parser.add_argument("--sanitize", action="store_true", help="the build has sanitizers")
    options, pytest_arguments = parser.parse_known_args()
    build: Path = options.build.resolve()
    (build / "test-results").mkdir(exist_ok=True)

    # Log files of the module under test stay in the build folder.
    environment = {**os.environ, "XDG_STATE_HOME": str(build / "state")}
    tally = run_cpp_tests(build, environment)
    if options.sanitize:
        environment |= sanitizer_environment()
        pytest_arguments += [f"--ignore={folder}" for folder in NOT_SANITIZED]
    tally += run_python_tests(build, environment, pytest_arguments)

    if tally.skipped:
        print(f"{tally.skipped} skipped")
    print(f"{tally.passed} passed, {tally.failed} failed", flush=True)
    return 0 if tally.passed and not tally.failed else 1


if __name__ == "__main__":
    sys.exit(main())
