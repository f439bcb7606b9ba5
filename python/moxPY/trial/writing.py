"""Making files: `Trial.write`."""

from __future__ import annotations

import io
import os
from errno import EISDIR
from pathlib import Path
from typing import TYPE_CHECKING, Any, Literal, Protocol, TypeAlias

from _moxPY import trial as calls

if TYPE_CHECKING:
    from .trial import Trial

PathLike: TypeAlias = str | os.PathLike[str] | os.PathLike[bytes]
Storage: TypeAlias = Literal["real", "integer", "source"]
Processor: TypeAlias = Literal["intel", "dec", "mips", "source"]


class Writable(Protocol):
    """A binary file object, at least as far as writing needs it."""

    def write(self, content: memoryview, /) -> Any: ...


def write(
    trial: Trial,
    path: PathLike | Writable,
    *,
    storage: Storage | None = None,
    processor: Processor | None = None,
) -> None:
    """Write the trial to a C3D file.

    A file that is there is replaced in one step once the new one is complete; whatever fails leaves
    it as it was. What is written is the trial as it was at the call, even when another thread
    changes it meanwhile.

    Parameters
    ----------
    path : str, os.PathLike or binary file object
        The name of the file, which ends in ``.c3d``, or an open file that takes bytes.
    storage : {"real", "integer", "source"}, optional
        How samples are held: as numbers of single precision, as 16-bit integers, or as in the file
        that the trial was read from. Real numbers when it is left out.
    processor : {"intel", "dec", "mips", "source"}, optional
        Whose numbers the file has; "source" is that of the file that was read. Intel's when it is
        left out.

    Raises
    ------
    FileNotFoundError, IsADirectoryError, PermissionError, OSError
        The system does not let the file be made, with path and reason.
    ValueError
        No file can hold the trial, as it is or in this form; the text says why. Also for a name
        that ends otherwise, another form, and a closed trial.
    TypeError
        `path` is neither a path nor a binary file object.
    MemoryError
        There is not enough memory.

    Examples
    --------
    >>> trial.write(path)
    >>> file = io.BytesIO()
    >>> trial.write(file)
    >>> with open(path, "rb") as written:
    ...     written.read() == file.getvalue()
    True
    """
    if isinstance(path, str | os.PathLike):
        name = os.fsdecode(path)
        if name and Path(name).is_dir():  # told first: few folders end in .c3d
            raise IsADirectoryError(EISDIR, os.strerror(EISDIR), name)
        calls.write_file(trial, path, storage or "", processor or "")
        return
    take = getattr(path, "write", None)
    if take is None or isinstance(path, io.TextIOBase):
        raise TypeError(
            f"a trial is written to a path or to a binary file object, not to {_shown(path)}"
        )
    content = memoryview(calls.write_bytes(trial, storage or "", processor or ""))
    while content:
        taken = take(content)
        # A raw file may take less than all; an object that does not say has taken all.
        content = content[len(content) if taken is None else taken :]


def _shown(path: object) -> str:
    return "a text file" if isinstance(path, io.TextIOBase) else type(path).__name__
