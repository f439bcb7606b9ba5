"""Workers of a Dask scheduler, where one machine is not enough."""

from __future__ import annotations

from collections.abc import Iterator
from contextlib import contextmanager
from typing import Any

import click

from ..trial.extras import require

# Seconds to wait for a scheduler.
_PATIENCE = 10


@contextmanager
def workers(address: str | None) -> Iterator[Any]:
    """An executor whose work is done by the workers of a scheduler; None without an address.

    Raises
    ------
    click.ClickException
        Dask is not installed, or nobody answers.
    """
    if address is None:
        yield None
        return
    try:
        client = require("distributed").Client(address, timeout=_PATIENCE)
    except ImportError as error:
        raise click.ClickException(str(error)) from None
    except (OSError, ValueError) as error:
        raise click.ClickException(f"no Dask scheduler answers at '{address}': {error}") from None
    with client:
        yield client.get_executor()
