"""Make the wheels of all Pythons and systems that this machine can build for; check and try each.

Usage: python -m systems.make_wheels [--dist FOLDER] [--parallel N] [PATTERN...]
Each is named as its tag, such as cp313-manylinux_2_17_x86_64; patterns, shell style, say which are
meant. The last lines are a table: size, the minimal tests in an empty environment. The exit code is
0 only if every wheel was made and no test failed.
"""

from __future__ import annotations

import argparse
import fnmatch
import subprocess
import sys
from pathlib import Path

import carry_headers
from fetch_python import SUITES
from run_tests import Tally

from systems.aarch64 import aarch64_python
from systems.audit import require_platform
from systems.audit_windows import require_windows
from systems.linux import PROCESSORS, PYTHONS, Linux, interpreter
from systems.pack_wheel import pack_wheel
from systems.steps import PROJECT, SYSTEMS
from systems.try_wheel import try_in_empty_environment, try_with_folders
from systems.try_windows_wheel import try_under_wine
from systems.windows import PYTHONS as WINDOWS_PYTHONS
from systems.windows import Windows
from systems.windows_python import dll_of

CARRIED = PROJECT / "build" / "carried"
Target = Linux | Windows


def name_of(target: Target) -> str:
    return f"{target.python_tag}-{target.platform_tag}"


def build(target: Target, parallel: int) -> Path:
    """The build tree, one for all Pythons: what knows none of them is compiled once."""
    tree = SYSTEMS / "wheels" / target.platform_tag
    settings = {**target.settings, "MOX_CARRIED_DIR": CARRIED}
    subprocess.run(
        # What was found of the Python before is forgotten.
        ["cmake", "--log-level=NOTICE", "--preset", "release", "-B", tree, "-U", "*Python*",
         *(f"-D{name}={value}" for name, value in settings.items())],
        cwd=PROJECT, check=True,
    )  # fmt: skip
    subprocess.run(
        ["cmake", "--build", tree, "--parallel", str(parallel), "--target", "mox_package"],
        check=True,
    )
    return tree


def check(target: Target, wheel: Path) -> None:
    """Throw NotPortable where the wheel needs more of a system than its name says."""
    if isinstance(target, Windows):
        require_windows(wheel, dll_of(target.version))
    else:
        require_platform(wheel, target.platform_tag)


def tried(target: Target, wheel: Path) -> Tally | None:
    """Counts of the minimal tests; none where there is no such interpreter."""
    if isinstance(target, Windows):
        return try_under_wine(wheel, target)
    if target.processor == "x86_64":
        return try_in_empty_environment(wheel, interpreter(target.version))
    if target.version not in SUITES:
        return None
    python = aarch64_python(target.version)
    return try_with_folders(wheel, python, target.version, target.test_platforms)


def make_wheel(target: Target, dist: Path, parallel: int) -> tuple[Path, Tally | None]:
    tree = build(target, parallel)
    tag = f"{target.python_tag}-{target.python_tag}"
    wheel = pack_wheel(tree, f"{tag}-{target.platform_tag}", CARRIED / "licences", dist)
    check(target, wheel)
    return wheel, tried(target, wheel)


def wanted(patterns: list[str]) -> list[Target]:
    targets: list[Target] = [
        *(Linux(processor, version) for processor in PROCESSORS for version in PYTHONS),
        *(Windows(version) for version in WINDOWS_PYTHONS),
    ]
    return [
        target
        for target in targets
        if any(fnmatch.fnmatchcase(name_of(target), pattern) for pattern in patterns or ["*"])
    ]


def row(wheel: Path, tally: Tally | None) -> str:
    told = "not tried" if tally is None else f"{tally.passed} passed, {tally.failed} failed"
    return f"{wheel.name}  {wheel.stat().st_size / 1e6:.1f} MB  {told}"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--dist", type=Path, default=PROJECT / "dist")
    parser.add_argument("--parallel", type=int, default=2)
    parser.add_argument("patterns", nargs="*", metavar="PATTERN")
    options = parser.parse_args()
    deps = PROJECT / "build" / "deps"
    if code := carry_headers.main([f"--deps={deps}", f"--into={CARRIED}"]):
        return code
    made = [
        make_wheel(target, options.dist, options.parallel) for target in wanted(options.patterns)
    ]
    for wheel, tally in made:
        print(row(wheel, tally))
    return 0 if made and not any(tally and tally.failed for _, tally in made) else 1


if __name__ == "__main__":
    sys.exit(main())
