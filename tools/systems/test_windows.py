"""Run the C++ and the Python tests of a build for Windows under Wine.

Usage: python -m systems.test_windows BUILD [--minimal] [PYTEST-ARGUMENT...]
With --minimal, the Python tests that show that a system is fit alone; with arguments for pytest,
those that they name. The last line counts: "N passed, N failed". The exit code is 0 only if
something passed and nothing failed.
"""

from __future__ import annotations

import argparse
import os
import sys
from pathlib import Path

from run_tests import PROJECT, Tally, tally_of

from systems.windows import Windows, windows
from systems.wine import Wine, windows_path

MINIMAL = "tests/python/minimal"
# What would say nothing about Windows, or what Wine has nothing for, with the reason.
LEFT_OUT = {
    "tests/python/test_documents.py": "it looks at the sources",
    "tests/python/test_folder_tables.py": "it looks at the sources",
    "tests/python/test_includes.py": "it looks at the sources",
    "tests/python/test_names.py": "it looks at the sources",
    "tests/python/face/test_codebase.py": "it looks at the sources",
    "tests/python/docs/test_site.py": "it looks at the sources",
    "tests/python/docs/test_command_line_page.py": "the page's commands are those of a POSIX shell",
    "tests/python/tools": "the tools of development run on Linux",
    "tests/python/benchmarks": "the benchmarks run on Linux",
    "tests/python/player/test_browser_wanted.py": "there is no browser",
    "tests/python/player/test_in_browser.py": "there is no browser",
    "tests/python/report/test_in_browser.py": "there is no browser",
    "tests/python/batch/test_dask.py": "Wine's processes are too slow for a cluster of them",
    "tests/python/commands/test_dask.py": "Wine's processes are too slow for a cluster of them",
    "tests/python/module/test_leaks.py": "it counts memory as the C library of Linux does",
    "tests/python/invariants/test_references.py": "it takes an hour, and counts what Python counts",
}


def run(wine: Wine, words: list[str | Path], variables: dict[str, str], report: Path) -> Tally:
    """Run a test program that writes a JUnit report."""
    report.unlink(missing_ok=True)
    return tally_of(report, wine.run(words, variables, PROJECT))


def run_cpp_tests(wine: Wine, build: Path) -> Tally:
    tally = Tally()
    # Where the system looks for the libraries that the programs are linked with.
    variables = {"WINEPATH": windows_path(build / "package" / "_moxPY")}
    for program in sorted((build / "tests" / "cpp").glob("*/*_tests.exe")):
        report = build / "test-results" / f"{program.stem}.xml"
        words: list[str | Path] = [
            program,
            f"--gtest_output=xml:{windows_path(report)}",
            "--gtest_brief=1",
        ]
        tally += run(wine, words, variables, report)
    return tally


def variables(build: Path) -> dict[str, str]:
    """Those by which Python finds the build's module and the recordings."""
    folders = [build / "package", build / "tests" / "python", PROJECT / "python"]
    found = {
        "PYTHONPATH": ";".join(map(windows_path, folders)),
        # This system's Python keeps its own beside the sources.
        "PYTHONPYCACHEPREFIX": windows_path(build / "pycache"),
        "PYTHONUTF8": "1",
    }
    if samples := os.environ.get("MOXPY_SAMPLES"):
        found["MOXPY_SAMPLES"] = windows_path(Path(samples))
    return found


def run_python_tests(wine: Wine, build: Path, system: Windows, arguments: list[str]) -> Tally:
    report = build / "test-results" / "python.xml"
    words: list[str | Path] = [
        system.python / "python.exe", "-m", "pytest", "-q", "-p", "no:cacheprovider",
        f"--junit-xml={windows_path(report)}", *(f"--ignore={path}" for path in LEFT_OUT),
        *arguments,
    ]  # fmt: skip
    return run(wine, words, variables(build), report)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=Path)
    parser.add_argument("--minimal", action="store_true", help="the tests of a system alone")
    options, arguments = parser.parse_known_args()
    build: Path = options.build.resolve()
    (build / "test-results").mkdir(exist_ok=True)
    system = windows()
    wine = Wine()

    tally = Tally()
    if options.minimal:
        arguments.append(MINIMAL)
    if not arguments:
        tally += run_cpp_tests(wine, build)
    tally += run_python_tests(wine, build, system, arguments)
    if tally.skipped:
        print(f"{tally.skipped} skipped")
    print(f"{tally.passed} passed, {tally.failed} failed", flush=True)
    return 0 if tally.passed and not tally.failed else 1


if __name__ == "__main__":
    sys.exit(main())
