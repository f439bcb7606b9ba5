"""Unpack Debian packages below a folder, without root.

Usage: fetch_packages.py --into FOLDER PACKAGE=PATTERN...
The pattern is matched against the version, shell style; the first suite that has one serves.
"""

from __future__ import annotations

import argparse
import fcntl
import sys
from pathlib import Path

from private_apt import FetchError, fetch_into, require_tools

# The suite that carries today's versions first, so that usually one index is loaded.
SUITES = ("forky", "trixie", "sid")


def drop_library_targets(root: Path) -> None:
    """Remove the CMake targets of compiled libraries, which live in packages that are not fetched.

    The header-only targets, which are all that is used, stand in files of their own.
    """
    for path in root.glob("usr/lib/*/cmake/*/*-targets-none.cmake"):
        path.unlink()


def request(text: str) -> tuple[str, str]:
    """Package and pattern of PACKAGE or PACKAGE=PATTERN."""
    package, _, pattern = text.partition("=")
    return package, pattern or "*"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--into", type=Path, required=True, help="folder to unpack below")
    parser.add_argument("packages", nargs="+", metavar="PACKAGE=PATTERN")
    arguments = parser.parse_args()
    root: Path = arguments.into
    root.mkdir(parents=True, exist_ok=True)
    try:
        require_tools()
        # Two configure steps at once share the folder.
        with (root / "lock").open("w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            for fetched in fetch_into(root, dict(map(request, arguments.packages)), SUITES):
                print(fetched, flush=True)
            drop_library_targets(root)
    except FetchError as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
