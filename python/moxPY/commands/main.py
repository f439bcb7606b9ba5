"""A call of the command line, from its words to its exit code."""

from __future__ import annotations

import errno
import os
import sys
from collections.abc import Sequence
from contextlib import suppress
from pathlib import Path
from typing import TextIO

import click

from .lines import write_line
from .program import Interrupted, PipeClosed, program

CTRL_C = 130  # as shells say it of a program that Ctrl-C ended
PIPE_CLOSED = 141  # and of one whose reader had enough


def main(arguments: Sequence[str] | None = None) -> int:
    """Run a command.

    Parameters
    ----------
    arguments : sequence of str, optional
        The words behind the name of the program; those of the process when left out.

    Returns
    -------
    int
        The exit code: 0 when everything went well, 1 when something failed, was found or differs,
        2 when the call makes no sense; 130 after Ctrl-C, 141 after the reader of a pipe went.
    """
    for name in ("stdout", "stderr"):
        if getattr(sys, name) is None:
            setattr(sys, name, Path(os.devnull).open("w"))  # noqa: SIM115 -- as long as the process
        _show_everything(getattr(sys, name))
    try:
        code = program.main(args=arguments, standalone_mode=False)
        sys.stdout.flush()
        return int(code or 0)
    except click.UsageError as error:
        error.show(file=sys.stderr)
        return 2
    except click.ClickException as error:
        write_line(f"moxpy: {error.format_message()}", sys.stderr)
        return 2
    except (Interrupted, click.Abort, KeyboardInterrupt):
        return CTRL_C
    except (PipeClosed, BrokenPipeError):
        _drop_output()
        return PIPE_CLOSED
    except OSError as error:  # of standard output: what files bring is caught at the file
        _drop_output()
        if os.name == "nt" and error.errno == errno.EINVAL:  # how Windows says it of a pipe
            return PIPE_CLOSED
        write_line(f"moxpy: {error.strerror or error}", sys.stderr)
        return 2


def _show_everything(stream: TextIO) -> None:
    """What the stream's encoding lacks is shown by its number, such as bytes of a file name."""
    if hasattr(stream, "reconfigure"):
        stream.reconfigure(errors="backslashreplace")


def _drop_output() -> None:
    """What is left in the buffer goes nowhere, else the interpreter complains at its end."""
    with suppress(OSError, ValueError):
        nowhere = os.open(os.devnull, os.O_WRONLY)
        os.dup2(nowhere, sys.stdout.fileno())
        os.close(nowhere)
