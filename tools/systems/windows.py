"""What building and testing for Windows needs.

Usage: python -m systems.windows
Makes it all and prints the settings for CMake's preset "windows".
"""

from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path

from systems.steps import SYSTEMS, made_once
from systems.wheels import recipe_of, unpack
from systems.windows_python import DLL, PLATFORM, VERSION, windows_python

SOABI = f"cp{VERSION.replace('.', '')}-{PLATFORM}"


@dataclass(frozen=True)
class Windows:
    """Folders: the interpreter, and the packages that the tests need."""

    python: Path
    packages: Path

    @property
    def settings(self) -> dict[str, str | Path]:
        """Settings of CMake."""
        return {
            "MOX_SYSTEMS_DIR": SYSTEMS,
            "MOX_PYTHON_SOABI": SOABI,
            "Python_INCLUDE_DIR": self.python / "include",
            "Python_LIBRARY": self.python / "libs" / f"{Path(DLL).stem}.lib",
            "Python_NumPy_INCLUDE_DIR": self.packages / "numpy" / "_core" / "include",
        }


def windows(systems: Path = SYSTEMS) -> Windows:
    """Both, made if they are not there."""
    name = "windows_tests.txt"
    return Windows(
        windows_python(systems),
        made_once(
            systems / "windows" / "packages",
            recipe_of(name),
            lambda folder: unpack(name, folder, python=VERSION, platforms=[PLATFORM]),
        ),
    )


if __name__ == "__main__":
    print(*(f"-D{name}={value}" for name, value in windows().settings.items()))
