"""A CPython for Windows, for tests: what the standard installer would lay down, less its tools.

Its libraries come from a wheel that carries the standard build along, the standard library and the
headers from Debian's source of the same version. The program itself is three lines.
"""

from __future__ import annotations

import shutil
import subprocess
import tarfile
import tempfile
from pathlib import Path

import pefile
from private_apt import PrivateApt, machine_mirror

from systems.steps import SYSTEMS, made_once
from systems.wheels import recipe_of, unpack
from systems.zig import zig

VERSION = "3.13"
SUITE = "trixie"
PLATFORM = "win_amd64"
# A change of what is done below makes the folder anew.
RECIPE = "1"
DLL = f"python{VERSION.replace('.', '')}.dll"
# Loaded with the program itself; everything else lies in DLLs.
BESIDE_PROGRAM = {DLL, "VCRUNTIME140.dll", "VCRUNTIME140_1.dll"}

# Run at each start of the interpreter.
CUSTOMIZATION = """\
# Wine 8 stops a program that calls CopyFile2; without it shutil copies as it does elsewhere.
import _winapi

if hasattr(_winapi, "CopyFile2"):
    del _winapi.CopyFile2
"""

PROGRAM = """\
#include <Python.h>
int wmain(int count, wchar_t** words) { return Py_Main(count, words); }
"""


def is_wanted(library: Path) -> bool:
    """Of the libraries that the wheel carries.

    The system has the api-ms-*; "cp313t" is another interpreter; `_wmi` needs more of Windows than
    Wine has, and Python does without it.
    """
    name = library.name
    return not (name.startswith(("api-ms-", "_wmi.", "_test")) or ".cp" in name)


def take_libraries(root: Path) -> None:
    with tempfile.TemporaryDirectory() as wheel:
        unpack("windows_python.txt", Path(wheel), python=VERSION, platforms=[PLATFORM])
        (root / "DLLs").mkdir()
        for library in sorted(Path(wheel, "deploy_libs").iterdir()):
            if is_wanted(library):
                place = root if library.name in BESIDE_PROGRAM else root / "DLLs"
                shutil.copy(library, place)


def take_source(root: Path, systems: Path) -> None:
    """Standard library and headers."""
    apt = PrivateApt(systems / "apt-source", SUITE, machine_mirror(), "deb-src")
    apt.update()
    with tempfile.TemporaryDirectory() as folder:
        files = apt.download_source(f"python{VERSION}", Path(folder))
        (archive,) = (file for file in files if file.name.endswith(".orig.tar.xz"))
        with tarfile.open(archive) as tar:
            tar.extractall(folder, filter="data")
        (source,) = (path for path in Path(folder).iterdir() if path.is_dir())
        shutil.copytree(source / "Lib", root / "Lib", ignore=shutil.ignore_patterns("test"))
        shutil.copytree(source / "Include", root / "include")
        shutil.copy(source / "PC" / "pyconfig.h.in", root / "include" / "pyconfig.h")


def customize(root: Path) -> None:
    (root / "Lib" / "sitecustomize.py").write_text(CUSTOMIZATION, encoding="utf-8")
    # The packages of the tests lie beside the interpreter; each of its processes finds them.
    (root / "Lib" / "site-packages").mkdir(exist_ok=True)
    (root / "Lib" / "site-packages" / "packages.pth").write_text("../../../packages\n")


def exports_of(library: Path) -> list[str]:
    """The names that a DLL gives to others."""
    image = pefile.PE(str(library), fast_load=True)
    image.parse_data_directories(pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_EXPORT"])
    return [entry.name.decode() for entry in image.DIRECTORY_ENTRY_EXPORT.symbols if entry.name]


def make_import_library(root: Path, programs: Path) -> None:
    libs = root / "libs"
    libs.mkdir()
    definition = libs / f"{Path(DLL).stem}.def"
    definition.write_text(
        f"LIBRARY {DLL}\nEXPORTS\n" + "".join(f"{name}\n" for name in exports_of(root / DLL)),
        encoding="utf-8",
    )
    subprocess.run(
        [programs / "dlltool", "-m", "i386:x86-64", "-D", DLL, "-d", definition,
         "-l", definition.with_suffix(".lib")],
        check=True,
    )  # fmt: skip


def make_program(root: Path, programs: Path) -> None:
    with tempfile.TemporaryDirectory() as folder:
        source = Path(folder, "python.c")
        source.write_text(PROGRAM, encoding="utf-8")
        subprocess.run(
            [programs / "cc", "-target", "x86_64-windows-gnu", "-municode", "-O2",
             "-I", root / "include", source, root / "libs" / f"{Path(DLL).stem}.lib",
             "-o", root / "python.exe"],
            check=True,
        )  # fmt: skip
    (root / "python.pdb").unlink(missing_ok=True)


def windows_python(systems: Path = SYSTEMS) -> Path:
    """The folder of the interpreter, made if it is not there."""
    programs = zig(systems)

    def make(root: Path) -> None:
        take_libraries(root)
        take_source(root, systems)
        customize(root)
        make_import_library(root, programs)
        make_program(root, programs)

    recipe = f"{recipe_of('windows_python.txt')}{RECIPE}"
    return made_once(systems / "windows" / "python", recipe, make)


if __name__ == "__main__":
    print(windows_python())
