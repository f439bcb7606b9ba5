"""A wheel out of a build tree, for whatever system the tree was built."""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from systems.steps import PROJECT

METADATA = (
    "import sys; from scikit_build_core.build import prepare_metadata_for_build_wheel as make;"
    "print(make(sys.argv[1]))"
)


def with_tag(text: str, tag: str) -> str:
    """The file WHEEL with this tag in place of those of the machine."""
    kept = [line for line in text.splitlines() if line and not line.startswith("Tag: ")]
    return "\n".join([*kept, f"Tag: {tag}"]) + "\n"


def add_metadata(staging: Path, tag: str, licences: Path) -> None:
    told = subprocess.run(
        [sys.executable, "-c", METADATA, staging],
        cwd=PROJECT, stdout=subprocess.PIPE, text=True, check=True,
    )  # fmt: skip
    folder = staging / told.stdout.splitlines()[-1]
    wheel = folder / "WHEEL"
    wheel.write_text(with_tag(wheel.read_text(encoding="utf-8"), tag), encoding="utf-8")
    shutil.copytree(licences, folder / "licenses" / "third_party")


def pack_wheel(build: Path, tag: str, licences: Path, dist: Path) -> Path:
    """What the tree built and the Python packages, as a wheel in the folder `dist`."""
    dist.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        staging = Path(name, "staging")
        subprocess.run(
            ["cmake", "--install", build, "--component", "package", "--prefix", staging],
            stdout=subprocess.DEVNULL, check=True,
        )  # fmt: skip
        shutil.copytree(
            PROJECT / "python" / "moxPY",
            staging / "moxPY",
            ignore=shutil.ignore_patterns("__pycache__"),
        )
        add_metadata(staging, tag, licences)
        packed = Path(name, "packed")
        packed.mkdir()
        subprocess.run(
            [sys.executable, "-m", "wheel", "pack", "--dest-dir", packed, staging],
            stdout=subprocess.DEVNULL, check=True,
            # The same contents give the same file.
            env={"SOURCE_DATE_EPOCH": "1577836800", **os.environ},
        )  # fmt: skip
        (wheel,) = packed.iterdir()
        return Path(shutil.move(wheel, dist / wheel.name))
