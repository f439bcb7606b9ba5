"""A wheel for Windows, installed where nothing else is, runs the minimal tests under Wine."""

from __future__ import annotations

import shutil
import tempfile
from pathlib import Path

from run_tests import PROJECT, Tally, tally_of

from systems.try_wheel import MINIMAL, pip
from systems.windows import Windows, unpack_packages
from systems.windows_python import BESIDE_PROGRAM, dll_of
from systems.wine import Wine, windows_path
from systems.wine_complex import OURS

NEEDED = "windows_minimal.txt"


def make_environment(system: Windows, folder: Path) -> Path:
    """A virtual environment without packages: its program."""
    programs = folder / "Scripts"
    programs.mkdir(parents=True)
    for name in ("python.exe", dll_of(system.version), OURS, *BESIDE_PROGRAM):
        shutil.copy(system.python / name, programs)
    (folder / "pyvenv.cfg").write_text(
        f"home = {windows_path(system.python)}\ninclude-system-site-packages = false\n",
        encoding="utf-8",
    )
    return programs / "python.exe"


def try_under_wine(wheel: Path, system: Windows) -> Tally:
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        python = make_environment(system, folder / "venv")
        installed = folder / "venv" / "Lib" / "site-packages"
        # pip unpacks them here, where it cannot ask that interpreter.
        unpack_packages(NEEDED, installed, system.version)
        pip(
            "install", "--quiet", "--no-deps", "--only-binary=:all:", "--target", installed,
            f"--python-version={system.version}", "--implementation=cp",
            f"--platform={system.platform_tag}", wheel,
        )  # fmt: skip
        report = folder / "report.xml"
        words: list[str | Path] = [
            python, "-m", "pytest", "-q", "-p", "no:cacheprovider",
            f"--junit-xml={windows_path(report)}", MINIMAL,
        ]  # fmt: skip
        # Neither the environment that called nor a folder of the user may answer.
        variables = {
            "PYTHONPATH": "", "PYTHONNOUSERSITE": "1", "PYTHONDONTWRITEBYTECODE": "1",
            "PYTHONUTF8": "1",
        }  # fmt: skip
        return tally_of(report, Wine().run(words, variables, PROJECT))
