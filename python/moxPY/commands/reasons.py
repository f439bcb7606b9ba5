"""Why a file failed, in one line."""

from __future__ import annotations

import os
from pathlib import Path

# Errors whose text says it all; of any other the name is part of what there is to say.
_PLAIN = (ValueError, KeyError, RuntimeError, TypeError, OSError, ImportError)

# What is said of a result that is there, whoever refuses to replace it.
THERE = "there is such a file; --force replaces it"


def reason(error: BaseException, file: Path) -> str:
    """What to print behind the name of a file, which the text does not repeat."""
    if isinstance(error, OSError) and error.strerror:
        return _of_the_system(error, file)
    text = " ".join(str(error.args[0] if error.args else "").split())
    for name in _names(file):
        text = text.removeprefix(f"'{name}': ")
    if isinstance(error, _PLAIN) and text:
        return text
    name = type(error).__name__
    return f"{name}: {text}" if text else name


def _of_the_system(error: OSError, file: Path) -> str:
    if isinstance(error, FileExistsError):
        error = FileExistsError(error.errno, THERE, error.filename)
    other = os.fsdecode(error.filename) if isinstance(error.filename, str | bytes) else ""
    is_other = other and other not in _names(file)
    return f"'{other}': {error.strerror}" if is_other else str(error.strerror)


def _names(file: Path) -> tuple[str, str]:
    """What errors call a file: as it was given, and as other processes are given it."""
    return str(file), os.path.abspath(file)  # noqa: PTH100 -- as they are, without ".."
