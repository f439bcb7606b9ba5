"""What building and testing for Windows needs.

Usage: python -m systems.windows [VERSION]
Makes it all and prints the settings for CMake's preset "windows".
"""

from __future__ import annotations

import sys
from dataclasses import dataclass
from pathlib import Path

from systems.linux import interpreter
from systems.steps import PROJECT, SYSTEMS, made_once
from systems.wheels import recipe_of, unpack
from systems.windows_python import PLATFORM, VERSION, import_library_of, windows_python
from systems.wine_complex import OURS, change_packages

PYTHONS = ("3.11", "3.12", "3.13", "3.14")
PACKAGES = "windows_tests.txt"


def unpack_packages(name: str, folder: Path, version: str) -> None:
    """What a requirements file names, made fit for Wine."""
    unpack(name, folder, python=version, platforms=[PLATFORM])
    change_packages(folder)


@dataclass(frozen=True)
class Windows:
    """A Python by its version ("3.13")."""

    version: str = VERSION

    @property
    def python_tag(self) -> str:
        return f"cp{self.version.replace('.', '')}"

    @property
    def platform_tag(self) -> str:
        return PLATFORM

    @property
    def toolchain(self) -> Path:
        return PROJECT / "cmake" / "toolchains" / "windows_x86_64.cmake"

    @property
    def python(self) -> Path:
        """The folder of the interpreter, made if it is not there."""
        return windows_python(self.version)

    @property
    def packages(self) -> Path:
        """The folder of those that the tests need, which run with one Python; made likewise."""
        return made_once(
            SYSTEMS / "windows" / "packages",
            f"{recipe_of(PACKAGES)}{OURS}",
            lambda folder: unpack_packages(PACKAGES, folder, VERSION),
        )

    @property
    def settings(self) -> dict[str, str | Path]:
        """Settings of CMake."""
        return {
            "CMAKE_TOOLCHAIN_FILE": self.toolchain,
            "MOX_SYSTEMS_DIR": SYSTEMS,
            "MOX_PYTHON_SOABI": f"{self.python_tag}-{self.platform_tag}",
            # Of the same version as the headers, or CMake finds that they do not belong together.
            "Python_EXECUTABLE": interpreter(self.version),
            "Python_INCLUDE_DIR": self.python / "include",
            "Python_LIBRARY": self.python / import_library_of(self.version),
            # Its headers tell systems apart, but no Pythons.
            "Python_NumPy_INCLUDE_DIR": self.packages / "numpy" / "_core" / "include",
        }


def windows() -> Windows:
    """With all that the tests need."""
    system = Windows()
    _ = system.python, system.packages
    return system


if __name__ == "__main__":
    system = Windows(sys.argv[1] if sys.argv[1:] else VERSION)
    print(*(f"-D{name}={value}" for name, value in system.settings.items()))
