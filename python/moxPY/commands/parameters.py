"""What several commands take, and how texts become values."""

from __future__ import annotations

from collections.abc import Callable
from typing import Any, TypeVar

import click

_Command = TypeVar("_Command", bound=Callable[..., Any])

Decorator = Callable[[_Command], _Command]


class PathType(click.Path):
    """A path, which has letters: the empty one of a script's variable would be this folder."""

    def convert(self, value: Any, param: click.Parameter | None, ctx: click.Context | None) -> Any:
        if value in ("", b""):
            self.fail("an empty text names no file and no folder.", param, ctx)
        return super().convert(value, param, ctx)


def files_argument() -> Decorator[Any]:
    """``FILE...``: files, folders and patterns."""
    return click.argument("files", metavar="FILE...", nargs=-1, required=True, type=PathType())


def jobs_option() -> Decorator[Any]:
    """``--jobs``"""
    return click.option(
        "--jobs",
        "-j",
        type=click.IntRange(min=1),
        metavar="N",
        help="Work on N files at once; by default as many as the machine has cores.",
    )


def parsed(parse: Callable[[str], Any]) -> Callable[[Any, Any, Any], Any]:
    """A callback that makes of each text of an option what it stands for."""

    def callback(ctx: click.Context, parameter: click.Parameter, typed: Any) -> Any:
        if isinstance(typed, tuple):
            return tuple(parse(text) for text in typed)
        return None if typed is None else parse(typed)

    return callback
