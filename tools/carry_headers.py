"""Lay out the header-only packages that a source archive carries, with their licences.

Usage: carry_headers.py --deps FOLDER --into FOLDER [--record]
Files with the recorded hashes are carried and no others: those that are installed or in the folder
of fetched packages, else they are fetched. --record fetches, and writes down what came.
"""

from __future__ import annotations

import argparse
import hashlib
import shutil
import sys
from collections.abc import Iterable, Iterator, Mapping
from pathlib import Path

from fetch_packages import SUITES
from private_apt import FetchError, fetch_into, require_tools

PROJECT = Path(__file__).resolve().parent.parent
# In the form that sha256sum reads.
RECORD = PROJECT / "cmake" / "carried_headers.sha256"
# Where an unpacked source archive has them.
CARRIED = PROJECT / "third_party"
# The layout that is carried -> where a Debian package has it.
PLACES = {
    "include/fmt": "usr/include/fmt",
    "include/nlohmann": "usr/include/nlohmann",
    "licences/fmt.txt": "usr/share/doc/libfmt-dev/copyright",
    "licences/nlohmann-json.txt": "usr/share/doc/nlohmann-json3-dev/copyright",
}
PACKAGES = {"libfmt-dev": "11.*", "nlohmann-json3-dev": "*3.11.3*"}


def files_below(root: Path, places: Mapping[str, str]) -> dict[str, Path]:
    """Path in the archive -> file, for all that lies at the places below the root."""
    found: dict[str, Path] = {}
    for name, place in places.items():
        path = root / place
        if path.is_file():
            found[name] = path
        found |= {
            f"{name}/{file.relative_to(path).as_posix()}": file
            for file in path.rglob("*")
            if file.is_file()
        }
    return dict(sorted(found.items()))


def sha256(path: Path) -> str:
    return hashlib.sha256(path.read_bytes()).hexdigest()


def read_record(text: str) -> dict[str, str]:
    """Path in the archive -> hash."""
    pairs = (line.split(maxsplit=1) for line in text.splitlines() if line)
    return {name: digest for digest, name in pairs}


def record_of(files: Mapping[str, Path]) -> str:
    return "".join(f"{sha256(path)}  {name}\n" for name, path in files.items())


def faults(files: Mapping[str, Path], recorded: Mapping[str, str]) -> Iterator[str]:
    """What differs from the record, a line a file."""
    for name in sorted(files.keys() | recorded.keys()):
        if name not in files:
            yield f"{name} is missing"
        elif name not in recorded:
            yield f"{name} is not recorded"
        elif sha256(files[name]) != recorded[name]:
            yield f"{name} is not the recorded file"


def fetched_files(root: Path) -> dict[str, Path]:
    """Today's packages, unpacked below a folder that holds nothing else."""
    require_tools()
    shutil.rmtree(root, ignore_errors=True)
    for fetched in fetch_into(root, PACKAGES, SUITES):
        print(fetched, flush=True)
    return files_below(root, PLACES)


def files_at_hand(unpacked: Path) -> Iterator[dict[str, Path]]:
    """What may be the recorded files: those of the archive that this is, installed, fetched."""
    yield files_below(CARRIED, {name: name for name in PLACES})
    yield files_below(Path("/"), PLACES)
    yield files_below(unpacked, PLACES)


def carry(files: Mapping[str, Path], recorded: Mapping[str, str], into: Path) -> None:
    """Copy the files to their places below the folder, which is emptied before."""
    if complaints := list(faults(files, recorded)):
        raise FetchError("\n".join(["The carried headers differ from their record:", *complaints]))
    shutil.rmtree(into, ignore_errors=True)
    for name, path in files.items():
        target = into / name
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(path, target)


def main(words: Iterable[str] | None = None) -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--deps", type=Path, required=True, help="where packages are unpacked")
    parser.add_argument("--into", type=Path, required=True, help="folder to lay out")
    parser.add_argument("--record", action="store_true", help="record what is fetched now")
    arguments = parser.parse_args(None if words is None else list(words))
    packages = arguments.into.with_name(f"{arguments.into.name}-packages")
    try:
        if arguments.record:
            RECORD.write_text(record_of(fetched_files(packages)), encoding="utf-8")
        recorded = read_record(RECORD.read_text(encoding="utf-8"))
        for files in files_at_hand(arguments.deps):
            if not any(faults(files, recorded)):
                break
        else:
            files = fetched_files(packages)
        carry(files, recorded, arguments.into)
    except FetchError as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
