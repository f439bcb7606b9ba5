"""Bring a CPython to a Debian machine that has none of its version, without root.

Usage: fetch_python.py --into FOLDER [--version 3.13]
Debian's own build is unpacked together with the C library and the other libraries that it was
linked to, and its program is told to use those: the machine's own may be older. Prints the path of
the interpreter.
"""

from __future__ import annotations

import argparse
import platform
import shutil
import subprocess
import sys
from pathlib import Path

from private_apt import FetchError, PrivateApt, machine_mirror, require_tools, unpack

# Each in the suite whose own Python it is; 3.12 is in none.
SUITES = {"3.11": "bookworm", "3.13": "trixie", "3.14": "forky"}
DEFAULT = "3.13"


def one_of(root: Path, pattern: str) -> Path:
    """The file below root that the pattern names."""
    found = sorted(root.glob(pattern))
    if not found:
        raise FetchError(f"The fetched packages hold no {pattern}.")
    return found[0]


def use_own_libraries(program: Path, root: Path) -> None:
    """Write the unpacked loader and library folder into the program."""
    loader = one_of(root, "usr/lib*/ld-linux-*.so.*")
    libraries = one_of(root, "usr/lib/*/libc.so.6").parent
    patched = program.with_name(program.name + ".patched")
    shutil.copy2(program, patched)
    # patchelf comes from the same suite, so it needs the unpacked libraries as well.
    patchelf: list[str | Path] = [
        loader,
        "--library-path",
        libraries,
        root / "usr/bin/patchelf",
    ]
    # RPATH, not RUNPATH: it counts for the libraries of libraries too. Both changes in one run, or
    # the loader first, give a program that crashes at its start.
    subprocess.run([*patchelf, "--force-rpath", "--set-rpath", libraries, patched], check=True)
    subprocess.run([*patchelf, "--set-interpreter", loader, patched], check=True)
    patched.replace(program)


def use_own_headers(root: Path, version: str) -> None:
    """Replace the pyconfig.h that points into /usr/include by the real one."""
    real = one_of(root, f"usr/include/*-linux-gnu/python{version}/pyconfig.h")
    shutil.copyfile(real, root / f"usr/include/python{version}/pyconfig.h")


def fetch_python(root: Path, version: str) -> Path:
    """Unpack the interpreter, its headers and pip below root."""
    if version not in SUITES:
        raise FetchError(f"No suite of Debian has it; those that there are: {', '.join(SUITES)}.")
    apt = PrivateApt(root / "apt", SUITES[version], machine_mirror())
    apt.update()
    archives = apt.download_with_dependencies([f"python{version}", "python3-pip-whl", "patchelf"])
    headers = root / "apt/headers"
    headers.mkdir(exist_ok=True)
    # Without their dependencies: programs are compiled against the machine's own C library.
    archives += apt.download([f"libpython{version}-dev"], headers)
    unpack(archives, root)
    use_own_headers(root, version)
    interpreter = root / f"usr/bin/python{version}"
    use_own_libraries(interpreter, root)
    return interpreter


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--into", type=Path, required=True, help="folder to unpack below")
    parser.add_argument("--version", default=DEFAULT, help=f"of CPython (default: {DEFAULT})")
    arguments = parser.parse_args()
    root: Path = arguments.into.resolve()
    version: str = arguments.version
    interpreter = root / f"usr/bin/python{version}"
    finished = root / "complete"
    try:
        if not finished.exists():
            if platform.system() != "Linux":
                raise FetchError(f"Install CPython {version} and put it on the PATH.")
            require_tools()
            fetch_python(root, version)
            subprocess.run([interpreter, "-c", "import ssl, ctypes, sqlite3"], check=True)
            finished.touch()
    except (FetchError, subprocess.CalledProcessError) as error:
        print(f"CPython {version} could not be fetched: {error}", file=sys.stderr)
        return 1
    print(interpreter)
    return 0


if __name__ == "__main__":
    sys.exit(main())
