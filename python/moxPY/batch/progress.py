"""The progress of a batch, on a terminal and with rich, if it is installed."""

from __future__ import annotations

import sys
from collections.abc import Callable, Iterator
from contextlib import contextmanager


@contextmanager
def progress_bar(total: int, wanted: bool) -> Iterator[Callable[[], None]]:
    """Gives what is called after each file. Without rich or a terminal nothing is shown, nor on one
    that cannot draw over what it shows."""
    if not (wanted and total and sys.stderr is not None and sys.stderr.isatty()):
        yield _nothing
        return
    try:
        from rich.console import Console
        from rich.progress import BarColumn, MofNCompleteColumn, Progress, TimeRemainingColumn
    except ImportError:
        yield _nothing
        return
    columns = (BarColumn(), MofNCompleteColumn(), TimeRemainingColumn())
    # What a script prints goes past the bar; into a file or a pipe it goes as ever.
    to_terminal = sys.stdout is not None and sys.stdout.isatty()
    console = Console(stderr=True)
    if console.is_dumb_terminal:
        yield _nothing
        return
    bar = Progress(*columns, console=console, transient=True, redirect_stdout=to_terminal)
    with bar:
        task = bar.add_task("", total=total)
        yield lambda: bar.advance(task)


def _nothing() -> None:
    pass
