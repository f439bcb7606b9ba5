"""Install the newest wheel of a folder into an empty virtual environment and import it there.

Type checkers have to find the types in it, too.

Usage: check_wheel.py DIST
"""

from __future__ import annotations

import argparse
import subprocess
import sys
import tempfile
import tomllib
import venv
import zipfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent

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


def answer_of_installed(wheel: Path, folder: Path) -> list[str]:
    """Version and plugin names that the installed wheel reports."""
    environment = folder / "venv"
    venv.create(environment, with_pip=False)
    python = environment / "bin" / "python"
    pip = [sys.executable, "-m", "pip", "--python", str(python), "install", "--quiet"]
    subprocess.run([*pip, str(wheel)], check=True, cwd=folder)
    asked = subprocess.run(
        [python, "-I", "-c", QUESTION], check=True, cwd=folder, stdout=subprocess.PIPE, text=True
    )
    return asked.stdout.split()


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("dist", type=Path)
    wheel = newest_wheel(parser.parse_args().dist)
    with tempfile.TemporaryDirectory() as folder:
        version, *plugins = answer_of_installed(wheel, Path(folder))
    missing = missing_types(wheel)
    is_good = version == project_version() and bool(plugins) and not missing
    print(f"{wheel.name}: version {version}, plugins {', '.join(plugins) or 'none'}")
    if missing:
        print(f"{wheel.name}: without {', '.join(missing)}")
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main())
