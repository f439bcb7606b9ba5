"""Opening files: `moxPY.read`."""

from __future__ import annotations

import os
import warnings
from typing import Any, Literal, Protocol, TypeAlias

from _moxPY import trial as calls

from .foreign_content import looks_like
from .partial import Only, kinds_asked
from .trial import Trial

PathLike: TypeAlias = str | os.PathLike[str] | os.PathLike[bytes]
BytesLike: TypeAlias = bytes | bytearray | memoryview

ODD = ("warn", "ignore", "raise")
# No file is known to be another one after more bytes than these.
START = 4096


class Readable(Protocol):
    """A binary file object, at least as far as reading needs it."""

    def read(self) -> bytes: ...


class TrialWarning(UserWarning):
    """Something odd about a file, and how it was read all the same."""


def read(
    source: PathLike | BytesLike | Readable,
    *,
    odd: Literal["warn", "ignore", "raise"] = "warn",
    only: Only | None = None,
) -> Trial:
    """Open a C3D file, or a TRC, MOT or STO file of OpenSim.

    The content tells which it is, whatever the file is called.

    Parameters
    ----------
    source : str, os.PathLike, bytes-like or binary file object
        The path of a file, the content of one, or an open file, which is read from where it is to
        its end.
    odd : {"warn", "ignore", "raise"}
        What happens when something about the file is odd, though it can be read: it was cut short,
        say, or header and parameters contradict each other. `Trial.warnings` has the texts in any
        case.
    only : kind or iterable of kinds, optional
        The channels that are read: ``"markers"``, ``"angles"``, ``"forces"``, ``"moments"``,
        ``"powers"``, ``"points"`` (these five), ``"analogs"``, ``"rotations"``; ``()`` for none.
        Everything else is there in any case: rates, frames, metadata, events, the geometry of
        force platforms. All channels without it.

    Returns
    -------
    Trial
        The recording; as a context manager it frees the memory when the block is left.

    Raises
    ------
    FileNotFoundError, IsADirectoryError, PermissionError, OSError
        The system does not let the file be read.
    ValueError
        It is none of these files, or one that is damaged beyond reading. The text says what the
        content looks like, or at which byte or in which line what was expected. Also for another
        `odd`, and for another kind in `only`.
    TypeError
        `source` is nothing that a trial could be read from, or `only` is no kind.
    TrialWarning
        Something is odd and `odd` is "raise".
    MemoryError
        The samples do not fit into memory.

    Notes
    -----
    Threads that read files do not wait for each other.

    With `only`, the samples that are read are bit for bit those of the whole file, and the others
    are not decoded. `Trial.unread` has the labels and units of the channels that were left out.
    They are none of the trial; whoever asks for one by its label is told that it was not read.
    Such a trial, its copies, and what verbs make of it are not written as C3D: ValueError, and
    RuntimeError by `moxWriteAcquisition`.

    The markers of a TRC file are points; the columns of a MOT or an STO file are analog channels
    with one sample a frame, without units unless a line ``units=`` of the header tells them. Their
    times have to be even as far as they are written, and the first frame follows from them.

    Examples
    --------
    >>> import moxPY as mox
    >>> trial = mox.read(path)
    >>> trial.frames, trial.rate
    (360, 100.0)
    >>> with open(path, "rb") as file:
    ...     len(mox.read(file).markers)
    40
    >>> mox.read(path, only=("markers", "angles"))
    <Trial: gait_trial.c3d, 360 frames at 100 Hz (3.6 s), 40 markers, 8 angles, 13 events, \
2 platforms; not read: 8 forces, 6 moments, 6 powers, 20 analogs>
    """
    if odd not in ODD:
        raise ValueError(f"odd is 'warn', 'ignore' or 'raise', not {odd!r}")
    trial, name = _opened(source, kinds_asked(only))
    if odd != "ignore" and (texts := trial.warnings):
        _tell(texts, name, odd)
    return trial


def _opened(source: Any, kinds: list[str] | None) -> tuple[Trial, str]:
    """The trial and what messages call its source."""
    if isinstance(source, str | os.PathLike):
        name = os.fsdecode(source)
        handle = calls.read_file(source, kinds)
        if handle is None:
            with open(source, "rb") as file:  # noqa: PTH123 -- bytes are paths too
                raise _foreign(name, file.read(START))
        return Trial.of(handle), name
    content, name = _content_of(source)
    handle = calls.read_bytes(content, name, kinds)
    if handle is None:
        raise _foreign(name, bytes(memoryview(content).cast("B")[:START]))
    return Trial.of(handle), name


def _content_of(source: Any) -> tuple[BytesLike, str]:
    read_all = getattr(source, "read", None)
    if read_all is not None:
        content = read_all()
        if isinstance(content, str):
            raise TypeError("a trial is read from a binary file object, this one gives text")
        name = getattr(source, "name", None)
        source, shown = content, name if isinstance(name, str) else "<file>"
    else:
        shown = "<bytes>"
    try:
        view = memoryview(source)
    except TypeError:
        raise TypeError(
            "a trial is read from a path, from bytes or from a binary file object, not from "
            f"{type(source).__name__}"
        ) from None
    return (view if view.c_contiguous else bytes(view)), shown


def _foreign(name: str, start: bytes) -> ValueError:
    return ValueError(f"'{name}': not a C3D file: {looks_like(start)}")


def _tell(texts: list[str], name: str, odd: str) -> None:
    if odd == "raise":
        raise TrialWarning("\n".join(f"'{name}': {text}" for text in texts))
    for text in texts:
        warnings.warn(f"'{name}': {text}", TrialWarning, stacklevel=3)
