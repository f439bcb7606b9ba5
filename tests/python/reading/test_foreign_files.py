"""Files that are no C3D files, or hardly."""

from __future__ import annotations

import io
import zipfile
import zlib
from pathlib import Path

import _moxPY
import pytest
from support.c3d_bytes import c3d_bytes
from support.read_c3d import read_bytes, track


def png() -> bytes:
    def chunk(kind: bytes, data: bytes) -> bytes:
        checksum = zlib.crc32(kind + data)
        return len(data).to_bytes(4, "big") + kind + data + checksum.to_bytes(4, "big")

    head = b"\0\0\0\x01\0\0\0\x01\x08\0\0\0\0"
    rows = zlib.compress(b"\0\0")
    return b"\x89PNG\r\n\x1a\n" + b"".join(
        [chunk(b"IHDR", head), chunk(b"IDAT", rows), chunk(b"IEND", b"")]
    )


def archive() -> bytes:
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w") as file:
        file.writestr("trial.c3d", c3d_bytes({"A": track(3)}))
    return buffer.getvalue()


FOREIGN = {
    "empty": b"",
    "one byte": b"\x02",
    "the first byte of zeros": b"\0",
    "png": png(),
    "zip": archive(),
    "text": b"Frame,LASI:X,LASI:Y\n1,0.5,0.25\n" * 50,
    "text with the key": b"SPEED;POWER\n" * 100,
    "a long text with the key and a processor": b"SPEED;VU" + b"UTV POWER\n" * 10_000,
    "text with the key behind a tab": b"\tP" + b"a,b,c\n" * 200,
    "zeros": bytes(4096),
    "many zeros": bytes(1_000_000),
    "ones": b"\xff" * 4096,
    "another key": b"\x02\x51" + c3d_bytes({"A": track(3)})[2:],
    "a c3d file in capitals": b"C3D\0" * 300,
}


@pytest.mark.parametrize("content", FOREIGN.values(), ids=FOREIGN.keys())
def test_no_importer_accepts_foreign_content(tmp_path: Path, content: bytes) -> None:
    with pytest.raises(RuntimeError) as failure:
        read_bytes(tmp_path, content)
    assert str(failure.value) == f"No importer accepts the file '{tmp_path / 'trial.c3d'}'"


def test_what_begins_like_a_cut_file_is_refused_with_the_place(tmp_path: Path) -> None:
    with pytest.raises(RuntimeError) as failure:
        read_bytes(tmp_path, b"\tP" + b"a,b,c\0" * 200)
    assert str(failure.value) == (
        f"'{tmp_path / 'trial.c3d'}': byte 0: the header says that the parameter section begins in "
        "block 9 (byte 4096), but the file has 1202 bytes"
    )


def test_a_refused_file_leaves_nothing_behind(tmp_path: Path) -> None:
    for _ in range(3):
        with pytest.raises(RuntimeError):
            read_bytes(tmp_path, FOREIGN["png"])
    # The file is closed and the module reads on.
    (tmp_path / "trial.c3d").unlink()
    acquisition = read_bytes(tmp_path, c3d_bytes({"A": track(3)}))
    assert _moxPY.moxGetPointNumber(acquisition) == 1.0
