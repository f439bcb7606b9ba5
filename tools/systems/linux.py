"""What building for Linux needs, for another processor or for older systems than this one.

Usage: python -m systems.linux PROCESSOR VERSION
Makes it all and prints the settings for CMake's preset "release".
"""

from __future__ import annotations

import shutil
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

import numpy as np

from systems.steps import PROJECT, SYSTEMS, made_once
from systems.zig import zig

PYTHONS = ("3.11", "3.12", "3.13", "3.14")
PROCESSORS = ("x86_64", "aarch64")
# The C library of the toolchain files.
GLIBC = "2_17"
# Those of the wheels that tests need, the most wanted one first.
GLIBC_OF_TESTS = ("2_28", "2_27", GLIBC)


def interpreter(version: str, systems: Path = SYSTEMS) -> Path:
    """A CPython of this machine, fetched where there is none."""
    folder = systems / f"python-{version}"
    found = subprocess.run(
        ["sh", PROJECT / "tools" / "find_python.sh", folder, version],
        stdout=subprocess.PIPE, text=True, check=True,
    )  # fmt: skip
    return Path(found.stdout.strip())


def folder_of(python: Path, kind: str) -> Path:
    """One of an interpreter's folders, by the name that `sysconfig` has for it."""
    question = f"import sysconfig; print(sysconfig.get_path({kind!r}))"
    told = subprocess.run(
        [python, "-I", "-c", question], stdout=subprocess.PIPE, text=True, check=True
    )
    return Path(told.stdout.strip())


def include_folder(python: Path) -> Path:
    return folder_of(python, "include")


def headers(version: str, systems: Path = SYSTEMS) -> Path:
    """A folder of the headers of a CPython alone, with all that they include.

    Those of Debian include one that stands apart, by the name of the processor, where compilers for
    other systems do not look. On all our processors it says the same.
    """
    include = include_folder(interpreter(version, systems))

    def make(folder: Path) -> None:
        shutil.copytree(include, folder / "include")
        for apart in include.parent.glob(f"*-linux-gnu/{include.name}"):
            for processor in PROCESSORS:
                place = folder / "include" / f"{processor}-linux-gnu" / include.name
                shutil.copytree(apart, place, dirs_exist_ok=True)

    return made_once(systems / f"headers-{version}", str(include), make) / "include"


@dataclass(frozen=True)
class Linux:
    """A processor, and a Python by its version ("3.13")."""

    processor: str
    version: str

    @property
    def python_tag(self) -> str:
        return f"cp{self.version.replace('.', '')}"

    @property
    def platform_tag(self) -> str:
        return f"manylinux_{GLIBC}_{self.processor}"

    @property
    def test_platforms(self) -> list[str]:
        return [f"manylinux_{glibc}_{self.processor}" for glibc in GLIBC_OF_TESTS]

    @property
    def toolchain(self) -> Path:
        return PROJECT / "cmake" / "toolchains" / f"linux_{self.processor}.cmake"

    @property
    def settings(self) -> dict[str, str | Path]:
        """Settings of CMake.

        NumPy's headers, too, tell no processor from the other as long as both have 64 bits and the
        same byte order.
        """
        zig()
        python = interpreter(self.version)
        soabi = f"cpython-{self.version.replace('.', '')}-{self.processor}-linux-gnu"
        return {
            "CMAKE_TOOLCHAIN_FILE": self.toolchain,
            "MOX_SYSTEMS_DIR": SYSTEMS,
            "MOX_PYTHON_SOABI": soabi,
            # Of the same version as the headers, or CMake finds that they do not belong together.
            "Python_EXECUTABLE": python,
            "Python_INCLUDE_DIR": headers(self.version),
            "Python_NumPy_INCLUDE_DIR": np.get_include(),
        }


if __name__ == "__main__":
    processor, version = sys.argv[1:]
    print(*(f"-D{name}={value}" for name, value in Linux(processor, version).settings.items()))
