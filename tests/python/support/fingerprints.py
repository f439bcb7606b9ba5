"""What one system makes of files, so short that it can be laid beside what another makes.

Usage: python -m support.fingerprints FILES WRITTEN
Reads each file of the first folder, asks every getter, writes it into the second and reads that
again. Prints a line of JSON for each: the digests of what the getters said and of the bytes that
were written.
"""

from __future__ import annotations

import hashlib
import json
import struct
import sys
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import _moxPY
import numpy as np

from support.same_readings import BY_NAME, readings


def parts_of(value: Any) -> Iterator[bytes]:
    """Everything that makes a value, to the bit; what differs in anything differs here."""
    if isinstance(value, dict):
        yield f"dict {len(value)}".encode()
        for key, item in value.items():
            yield from parts_of(key)
            yield from parts_of(item)
    elif isinstance(value, (list, tuple)):
        yield f"{type(value).__name__} {len(value)}".encode()
        for item in value:
            yield from parts_of(item)
    elif isinstance(value, np.ndarray) and value.dtype.kind not in "OSU":
        yield f"array {value.dtype.str} {value.shape}".encode()
        yield value.tobytes()
    elif isinstance(value, np.ndarray):
        yield f"array of texts {value.shape}".encode()
        yield from parts_of(value.tolist())
    elif isinstance(value, float):
        yield struct.pack("<d", value)
    else:
        yield f"{type(value).__name__} {value!r}".encode("utf-8", "surrogatepass")


def digest(value: Any) -> str:
    known = hashlib.sha256()
    for part in parts_of(value):
        known.update(len(part).to_bytes(8, "little"))
        known.update(part)
    return known.hexdigest()


def said_of(acquisition: Any) -> dict[str, str]:
    """Getter -> digest of what it says, or of its refusal."""
    said = readings(acquisition)
    for name in BY_NAME:
        try:
            said[name] = getattr(_moxPY, name)(acquisition)
        except Exception as error:
            said[name] = type(error), str(error)
    return {name: digest(value) for name, value in sorted(said.items())}


def fingerprint(path: Path, folder: Path) -> dict[str, Any]:
    """The digests for one file; where it cannot be read or written, the error's words."""
    try:
        acquisition = _moxPY.moxReadAcquisition(str(path))
    except Exception as error:
        return {"error": f"{type(error).__name__}: {error}".replace(str(path), path.name)}
    said = {"read": said_of(acquisition)}
    written = folder / path.with_suffix(".c3d").name
    try:
        _moxPY.moxWriteAcquisition(acquisition, str(written))
    except Exception as error:
        refusal = f"{type(error).__name__}: {error}".replace(str(written), written.name)
        return {**said, "error": refusal}
    return {
        **said,
        "written": hashlib.sha256(written.read_bytes()).hexdigest(),
        "read again": said_of(_moxPY.moxReadAcquisition(str(written))),
    }


def main(files: Path, written: Path) -> None:
    written.mkdir(parents=True, exist_ok=True)
    for path in sorted(files.iterdir()):
        # Whatever the terminal's encoding is, and whoever's paths: names alone are compared.
        line = json.dumps({"file": path.name, **fingerprint(path, written)})
        sys.stdout.write(line + "\n")


if __name__ == "__main__":
    main(*map(Path, sys.argv[1:]))
