"""Install the newest wheel of a folder into an empty virtual environment and use it there.

The module is imported, the command line reads the example trial that the wheel carries, and type
checkers have to find the types.

Usage: check_wheel.py DIST
"""

from __future__ import annotations

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import tomllib
import venv
import zipfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
EXAMPLE = PROJECT / "examples" / "gait_trial.c3d"

# For type checkers: the stub of the extension module, and the marks of packages that publish types.
TYPES = {
    "_moxPY/__init__.pyi",
    "_moxPY/trial.pyi",
    "_moxPY/py.typed",
    "moxPY/py.typed",
}

# Run outside the checkout: only the installed files can answer.
QUESTION = """
import pathlib, _moxPY, moxPY
folder = pathlib.Path(_moxPY.__file__).parent
plugins = sorted(path.stem for path in (folder / "plugins").iterdir())
assert moxPY.read(moxPY.example()).frames == 360
print(_moxPY.moxGetVersion(), *plugins)
"""


def project_version() -> str:
    with (PROJECT / "pyproject.toml").open("rb") as file:
        return str(tomllib.load(file)["project"]["version"])


def newest_wheel(folder: Path) -> Path:
    wheels = sorted(folder.glob("*.whl"), key=lambda wheel: wheel.stat().st_mtime)
    if not wheels:
        raise SystemExit(f"{folder} holds no wheel")
    return wheels[-1].resolve()


def missing_types(wheel: Path) -> list[str]:
    with zipfile.ZipFile(wheel) as archive:
        return sorted(TYPES - set(archive.namelist()))


def installed(wheel: Path, folder: Path) -> Path:
    """The folder of programs of an environment with the wheel and what it depends on alone."""
    environment = folder / "venv"
    venv.create(environment, with_pip=False)
    programs = environment / "bin"
    pip = [sys.executable, "-m", "pip", "--python", str(programs / "python"), "install", "--quiet"]
    subprocess.run([*pip, str(wheel)], check=True, cwd=folder)
    return programs


def answer_of_module(python: Path, folder: Path) -> list[str]:
    """Version and plugin names that the installed module reports."""
    asked = subprocess.run(
        [python, "-I", "-c", QUESTION], check=True, cwd=folder, stdout=subprocess.PIPE, text=True
    )
    return asked.stdout.split()


def faults_of_command_line(program: Path, folder: Path) -> list[str]:
    """What the installed command line does not do as it should, a line a call."""
    shutil.copy(EXAMPLE, folder / "walk.c3d")
    wanted = {
        ("--version",): f"{project_version()}\n",
        ("info", "walk.c3d"): "walk.c3d\n  frames     360 at 100 Hz (3.60 s), 1 to 360\n",
        ("convert", "walk.c3d", "-o", "made", "--to", "csv", "--parts", "events"): (
            f"{Path('made', 'walk_events.csv')}\n"
        ),
    }
    env = {name: text for name, text in os.environ.items() if not name.startswith("PYTHON")}
    faults = []
    for words, beginning in wanted.items():
        call = f"moxpy {' '.join(words)}"
        try:
            told = subprocess.run(
                [program, *words], cwd=folder, env=env, capture_output=True, text=True, check=False
            )
        except OSError as error:
            faults.append(f"{call}: {error.strerror}")
            continue
        if told.returncode or told.stderr or not told.stdout.startswith(beginning):
            faults.append(f"{call}: exit code {told.returncode}, {told.stderr or told.stdout!r}")
    return faults


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("dist", type=Path)
    wheel = newest_wheel(parser.parse_args().dist)
    with tempfile.TemporaryDirectory() as folder:
        programs = installed(wheel, Path(folder))
        version, *plugins = answer_of_module(programs / "python", Path(folder))
        faults = faults_of_command_line(programs / "moxpy", Path(folder))
    if missing := missing_types(wheel):
        faults.append(f"without {', '.join(missing)}")
    print(f"{wheel.name}: version {version}, plugins {', '.join(plugins) or 'none'}")
    for fault in faults:
        print(f"{wheel.name}: {fault}")
    return 0 if version == project_version() and plugins and not faults else 1


if __name__ == "__main__":
    sys.exit(main())
