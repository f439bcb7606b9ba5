"""What a file is that is no C3D file, as far as its first bytes tell."""

from __future__ import annotations

import codecs

# First bytes -> what begins with them.
_BEGINNINGS = {
    b"PK\x03\x04": "it looks like a ZIP archive, as spreadsheets and documents are",
    b"PK\x05\x06": "it looks like an empty ZIP archive",
    b"\x1f\x8b": "it looks like a gzip archive",
    b"7z\xbc\xaf\x27\x1c": "it looks like a 7-Zip archive",
    b"Rar!\x1a\x07": "it looks like a RAR archive",
    b"MATLAB 5.0 MAT-file": "it looks like a MATLAB file",
    b"MATLAB 7.3 MAT-file": "it looks like a MATLAB file",
    b"\x89HDF\r\n\x1a\n": "it looks like an HDF5 file",
    b"%PDF-": "it looks like a PDF document",
    b"\x93NUMPY": "it looks like a NumPy array file",
    b"PAR1": "it looks like a Parquet file",
    b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1": "it looks like an Office document",
    b"\x89PNG\r\n\x1a\n": "it looks like a picture",
    b"\xff\xd8\xff": "it looks like a picture",
    b"SQLite format 3\x00": "it looks like an SQLite database",
    b"{\\rtf": "it looks like an RTF document",
}
# The second byte of every C3D file.
_KEY = 0x50


def looks_like(start: bytes) -> str:
    """What a file that begins with these bytes seems to be, to be put behind a colon."""
    if not start:
        return "it is empty"
    if not any(start):
        return f"its first {len(start)} bytes are all zero"
    for beginning, kind in _BEGINNINGS.items():
        if start.startswith(beginning):
            return kind
    if _is_text(start):
        return "it looks like text"
    if len(start) > 1 and start[1] == _KEY:
        return "it begins as one, but nothing that reads C3D files accepts it"
    return f"its second byte is 0x{start[1]:02x}, not 0x50" if len(start) > 1 else "it has one byte"


def _is_text(start: bytes) -> bool:
    """Whether the bytes are text in UTF-8 or UTF-16, perhaps cut at the end."""
    if start.startswith((codecs.BOM_UTF16_LE, codecs.BOM_UTF16_BE)):
        return True
    try:
        text = codecs.getincrementaldecoder("utf-8")().decode(start)
    except UnicodeDecodeError:
        return False
    return not any(character < " " and character not in "\t\n\r\f\x1b" for character in text)
