"""CPython for Windows, for tests: what the standard installer would lay down, less its tools.

Usage: python -m systems.windows_python [VERSION]
Its libraries come from a wheel that carries the standard build along, the standard library and the
headers from Debian's source of the same version. The program itself is three lines.
"""

from __future__ import annotations

import shutil
import subprocess
import sys
import tarfile
import tempfile
from pathlib import Path

import pefile
from fetch_python import SUITES
from private_apt import PrivateApt, machine_mirror

from systems import wine_complex
from systems.linux import folder_of, interpreter
from systems.steps import SYSTEMS, made_once
from systems.wheels import recipe_of, unpack
from systems.zig import zig

VERSION = "3.13"
PLATFORM = "win_amd64"
TARGET = "x86_64-windows-gnu"
# A change of what is done below makes the folders anew.
RECIPE = "3"
# Headers tell of a system in one file alone, which has hardly changed. It is this version's where
# Debian has no source.
PYCONFIG_VERSION = "3.11"
# Loaded with the program itself, besides python3XX.dll; everything else lies in DLLs.
BESIDE_PROGRAM = {"VCRUNTIME140.dll", "VCRUNTIME140_1.dll"}

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

# Modules for every Python 3 are linked with python3.dll, which passes all on to its version's own.
# The wheel does without.
PASSING_ON = "int DllMainCRTStartup(void) { return 1; }\n"

# A library of Windows that Wine 8 has not; what is written in Rust asks it for random numbers.
RANDOM = """\
#include <stddef.h>
unsigned char __stdcall SystemFunction036(void* buffer, unsigned long size);
__declspec(dllexport) int __stdcall ProcessPrng(unsigned char* buffer, size_t size) {
    return SystemFunction036(buffer, (unsigned long)size);
}
"""


def dll_of(version: str) -> str:
    return f"python{version.replace('.', '')}.dll"


def import_library_of(version: str) -> Path:
    """Where the linker finds it, below the interpreter's folder."""
    return Path("libs", dll_of(version)).with_suffix(".lib")


def is_wanted(library: Path) -> bool:
    """Of the libraries that the wheel carries.

    The system has the api-ms-*; "cp313t" is another interpreter; `_wmi` needs more of Windows than
    Wine has, and Python does without it.
    """
    name = library.name
    return not (name.startswith(("api-ms-", "_wmi.", "_test")) or ".cp" in name)


def take_libraries(root: Path, version: str) -> None:
    with tempfile.TemporaryDirectory() as wheel:
        unpack("windows_python.txt", Path(wheel), python=version, platforms=[PLATFORM])
        (root / "DLLs").mkdir()
        for library in sorted(Path(wheel, "deploy_libs").iterdir()):
            if is_wanted(library):
                beside = library.name in {*BESIDE_PROGRAM, dll_of(version)}
                shutil.copy(library, root if beside else root / "DLLs")


def source(version: str, folder: Path, systems: Path) -> Path:
    """Debian's source of a version, unpacked in the folder."""
    apt = PrivateApt(systems / "apt-source", SUITES[version], machine_mirror(), "deb-src")
    apt.update()
    files = apt.download_source(f"python{version}", folder)
    (archive,) = (file for file in files if ".orig.tar." in file.name and file.suffix != ".asc")
    with tarfile.open(archive) as tar:
        tar.extractall(folder / "source", filter="data")
    (unpacked,) = (folder / "source").iterdir()
    return unpacked


def take_source(root: Path, version: str, systems: Path) -> None:
    """Standard library and headers."""
    with tempfile.TemporaryDirectory() as folder:
        known = source(version if version in SUITES else PYCONFIG_VERSION, Path(folder), systems)
        if version in SUITES:
            library, headers = known / "Lib", known / "Include"
        else:
            python = interpreter(version)
            library, headers = folder_of(python, "stdlib"), folder_of(python, "include")
        unwanted = shutil.ignore_patterns("test", "site-packages", "lib-dynload", "__pycache__")
        shutil.copytree(library, root / "Lib", ignore=unwanted)
        shutil.copytree(headers, root / "include")
        (configuration,) = known.glob("PC/pyconfig.h*")
        shutil.copy(configuration, root / "include" / "pyconfig.h")


def customize(root: Path) -> None:
    (root / "Lib" / "sitecustomize.py").write_text(CUSTOMIZATION, encoding="utf-8")
    # The packages of the tests lie beside the interpreter; each of its processes finds them.
    (root / "Lib" / "site-packages").mkdir()
    (root / "Lib" / "site-packages" / "packages.pth").write_text("../../../packages\n")


def exports_of(library: Path) -> list[str]:
    """The names that a DLL gives to others."""
    image = pefile.PE(str(library), fast_load=True)
    image.parse_data_directories(pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_EXPORT"])
    return [entry.name.decode() for entry in image.DIRECTORY_ENTRY_EXPORT.symbols if entry.name]


def definition(dll: str, exports: list[str], passed_to: str = "") -> str:
    """What a library exports, in the linker's words; each by itself or by another library."""
    lines = [f"{name}={passed_to}.{name}" if passed_to else name for name in exports]
    return "\n".join([f"LIBRARY {dll}", "EXPORTS", *lines]) + "\n"


def make_import_library(root: Path, version: str, programs: Path) -> None:
    dll = dll_of(version)
    library = root / import_library_of(version)
    library.parent.mkdir()
    described = library.with_suffix(".def")
    described.write_text(definition(dll, exports_of(root / dll)), encoding="utf-8")
    subprocess.run(
        [programs / "dlltool", "-m", "i386:x86-64", "-D", dll, "-d", described, "-l", library],
        check=True,
    )


def compile_text(
    programs: Path, text: str, result: Path, *words: str | Path, compiler: str = "cc"
) -> None:
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder, "source.c" if compiler == "cc" else "source.cpp")
        file.write_text(text, encoding="utf-8")
        subprocess.run(
            [programs / compiler, "-target", TARGET, "-O2", "-s", file, *words,
             "-o", Path(folder, result.name)],
            check=True,
        )  # fmt: skip
        # The compiler leaves more than that beside it.
        shutil.copy(Path(folder, result.name), result)


def make_programs(root: Path, version: str, programs: Path) -> None:
    library = root / import_library_of(version)
    compile_text(
        programs, PROGRAM, root / "python.exe", "-municode", "-I", root / "include", library
    )  # fmt: skip
    compile_text(programs, RANDOM, root / "bcryptprimitives.dll", "-shared", "-ladvapi32")
    dll = dll_of(version)
    described = definition("python3.dll", exports_of(root / dll), passed_to=Path(dll).stem)
    with tempfile.TemporaryDirectory() as folder:
        passing_on = Path(folder, "python3.def")
        passing_on.write_text(described, encoding="utf-8")
        compile_text(programs, PASSING_ON, root / "python3.dll", "-shared", "-nostdlib", passing_on)
        complex_functions = Path(folder, "complex.def")
        complex_functions.write_text(wine_complex.definition(programs), encoding="utf-8")
        compile_text(
            programs, wine_complex.SOURCE, root / wine_complex.OURS, "-shared", complex_functions,
            "-Wno-return-type-c-linkage", compiler="c++",
        )  # fmt: skip


def windows_python(version: str = VERSION, systems: Path = SYSTEMS) -> Path:
    """The folder of the interpreter, made if it is not there."""
    programs = zig(systems)

    def make(root: Path) -> None:
        take_libraries(root, version)
        take_source(root, version, systems)
        customize(root)
        make_import_library(root, version, programs)
        make_programs(root, version, programs)

    recipe = f"{recipe_of('windows_python.txt')}{RECIPE}{wine_complex.SOURCE}"
    return made_once(systems / "windows" / f"python-{version}", recipe, make)


if __name__ == "__main__":
    print(windows_python(sys.argv[1] if sys.argv[1:] else VERSION))
