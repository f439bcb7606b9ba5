"""Which commands there are. Each is imported when it is called, or asked for its help."""

from __future__ import annotations

from importlib import import_module
from typing import Any

import click

from ..functions.plugins import moxGetVersion

#: Name -> what it does, as the list of commands says it.
COMMANDS = {
    "info": "Show what is in files.",
    "view": "Show a trial in motion, in the browser.",
    "check": "Look for what may be wrong with trials.",
    "diff": "Compare two files.",
    "convert": "Convert files to another format.",
    "edit": "Change copies of files.",
    "plot": "Draw pictures of trials.",
    "report": "Make reports of trials, with pictures and the trial in motion.",
    "index": "Make a table of many trials, or update it.",
}


class PipeClosed(Exception):
    """Whoever read the output went away."""


class Interrupted(Exception):
    """Ctrl-C."""


class Program(click.Group):
    """The commands, each in the module of its name."""

    def list_commands(self, ctx: click.Context) -> list[str]:
        return list(COMMANDS)

    def get_command(self, ctx: click.Context, name: str) -> click.Command | None:
        if name not in COMMANDS:
            return None
        command: click.Command = import_module(f"{__package__}.{name}").command
        return command

    def format_commands(self, ctx: click.Context, formatter: click.HelpFormatter) -> None:
        with formatter.section("Commands"):
            formatter.write_dl(list(COMMANDS.items()))

    def invoke(self, ctx: click.Context) -> Any:
        # Click would end the process on the one, with the code of a failed file, and print an
        # empty line on the other.
        try:
            return super().invoke(ctx)
        except BrokenPipeError as error:
            raise PipeClosed from error
        except KeyboardInterrupt as error:
            raise Interrupted from error


@click.group(
    "moxpy",
    cls=Program,
    context_settings={"help_option_names": ["-h", "--help"], "max_content_width": 80},
)
@click.version_option(moxGetVersion(), message="%(version)s")
def program() -> None:
    """Look at motion-capture trials, and convert and change them.

    FILE is the path of a trial, a folder, which stands for all trials in it and below, or a
    pattern in quotes, such as "*/walk*.c3d".

    A file that fails gets one line on standard error, and the others are done all the same. The
    exit code is 0 when everything went well, 1 when something failed, was found or differs, 2 when
    the call makes no sense.

    For completion of commands and options in bash, put this line into ~/.bashrc (in zsh:
    zsh_source and ~/.zshrc):

    \b
      eval "$(_MOXPY_COMPLETE=bash_source moxpy)"
    """
