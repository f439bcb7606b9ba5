"""What holds for all commands: help, exit codes, terminals, pipes, Ctrl-C."""

from __future__ import annotations

import os
import subprocess
import sys
from collections.abc import Callable
from importlib import import_module
from pathlib import Path
from typing import Any

import moxPY
import pytest
from moxPY.commands.program import COMMANDS
from support.command_line import PROGRAM, environment, on_terminal, piped
from support.systems import posix

Call = Callable[..., Any]


def test_importing_the_package_imports_no_click():
    code = "import sys, moxPY; print({'click', 'rich'} & set(sys.modules))"
    finished = subprocess.run(
        [sys.executable, "-c", code], env=environment(), capture_output=True, text=True, check=True
    )
    assert finished.stdout == "set()\n"


def test_the_list_of_commands_imports_none_of_them():
    code = (
        "import sys; from moxPY.commands import main; main(['--help']);"
        f"print([name for name in {list(COMMANDS)} if 'moxPY.commands.' + name in sys.modules])"
    )
    finished = subprocess.run(
        [sys.executable, "-c", code], env=environment(), capture_output=True, text=True, check=True
    )
    assert finished.stdout.endswith("\n[]\n")


@pytest.mark.parametrize("name", COMMANDS)
def test_a_command_says_of_itself_what_the_list_says(name: str):
    command = import_module(f"moxPY.commands.{name}").command
    assert command.name == name
    assert command.get_short_help_str(80) == COMMANDS[name]


@pytest.mark.parametrize("name", COMMANDS)
def test_help_fits_a_terminal_and_is_ascii(name: str, call: Call):
    code, out, err = call(name, "--help")
    assert (code, err) == (0, "")
    assert max(map(len, out.splitlines())) <= 80
    assert out.isascii()
    assert "Examples:\n" in out


def test_a_terminal_of_80_columns_shows_the_same_help_as_a_pipe():
    code, shown = on_terminal("--help")
    assert code == 0
    assert shown == piped("--help").stdout


def test_the_version_is_shown(call: Call):
    assert call("--version") == (0, f"{moxPY.__version__}\n", "")


@pytest.mark.parametrize(
    ("words", "text"),
    [
        (["inform"], "No such command 'inform'"),
        (["info"], "Missing argument 'FILE...'"),
        (["info", "--jsn", "walk.c3d"], "No such option '--jsn'"),
        (["info", "--jobs", "0", "walk.c3d"], "0 is not in the range x>=1"),
        # What a shell makes of a variable without a value is not the current folder.
        (["info", ""], "'FILE...': an empty text names no file"),
        (["diff", "", "walk.c3d"], "'A': an empty text names no file"),
        (["edit", "walk.c3d", "-o", "", "--up", "y"], "'--output': an empty text names no file"),
        (["index", "walk.c3d", "-o", ""], "'--output': an empty text names no file"),
    ],
)
def test_a_call_that_makes_no_sense_is_refused(words: list[str], text: str, call: Call):
    code, out, err = call(*words)
    assert (code, out) == (2, "")
    assert err.startswith("Usage: ")
    assert text in err


def test_without_words_the_commands_are_listed(call: Call):
    code, out, err = call()
    assert (code, out) == (2, "")
    assert "  info  " in err


def test_errors_of_other_processes_do_not_repeat_the_name_of_the_file(walk: Path):
    # So many files go to processes, which know them by their whole paths.
    names = [str(Path("..", walk.parent.name, f"cut{number}.c3d")) for number in range(16)]
    for name in names:
        (walk.parent / name).write_bytes(walk.read_bytes()[:100])
    names.append("missing.c3d")
    finished = piped("check", *names, "--jobs", "2", cwd=walk.parent)
    wanted = [
        f"{name}: byte 100: a header of 512 bytes expected, but the file ends here"
        for name in names[:-1]
    ]
    wanted.append("missing.c3d: No such file or directory")
    assert (finished.returncode, finished.stdout) == (1, "")
    assert finished.stderr.splitlines() == wanted


def test_a_reader_that_has_enough_ends_a_command_silently(walk: Path):
    process = subprocess.Popen(
        [*PROGRAM, "info", *[str(walk)] * 2, str(walk.parent)],
        env=environment(),
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
    )
    assert process.stdout
    assert process.stderr
    process.stdout.close()
    with process.stderr as stderr:
        err = stderr.read()
    assert (process.wait(), err) == (141, b"")


@pytest.mark.skipif(not Path("/dev/full").exists(), reason="there is no full device")
def test_output_that_cannot_be_written_is_an_error(walk: Path):
    with Path("/dev/full").open("w") as full:
        finished = subprocess.run(
            [*PROGRAM, "info", walk],
            env=environment(),
            stdout=full,
            stderr=subprocess.PIPE,
            text=True,
            check=False,
        )
    assert (finished.returncode, finished.stderr) == (2, "moxpy: No space left on device\n")


@posix
@pytest.mark.parametrize("closed", [(1,), (2,), (1, 2)])
def test_a_stream_that_is_closed_takes_what_is_printed(
    closed: tuple[int, ...], walk: Path, tmp_path: Path
):
    outputs = ["stdout" if number == 1 else "stderr" for number in closed]
    finished = subprocess.run(
        [*PROGRAM, "convert", walk, "missing.c3d", "-o", tmp_path, "--to", "json"],
        env=environment(),
        capture_output=True,
        text=True,
        check=False,
        preexec_fn=lambda: [os.close(number) for number in closed],
    )
    wanted = {"stdout": f"{tmp_path / 'walk.json'}\n"}
    wanted["stderr"] = "missing.c3d: No such file or directory\n"
    wanted |= dict.fromkeys(outputs, "")
    assert (finished.returncode, finished.stdout, finished.stderr) == (1, *wanted.values())
    assert (tmp_path / "walk.json").exists()


# What the installed program does.
INSTALLED = "import sys; sys.argv[0] = 'moxpy'; from moxPY.commands import main; sys.exit(main())"


def test_completion_knows_commands_options_and_words():
    def printed(**variables: str) -> str:
        env = environment(**variables)
        words = [sys.executable, "-c", INSTALLED]
        return subprocess.run(words, env=env, capture_output=True, text=True, check=False).stdout

    assert "complete" in printed(_MOXPY_COMPLETE="bash_source")
    for typed, offered in {
        "moxpy inf": ["plain,info"],
        "moxpy info --j": ["plain,--json", "plain,--jobs"],
        "moxpy info w": ["file,w"],
    }.items():
        at = str(len(typed.split()) - 1)
        text = printed(_MOXPY_COMPLETE="bash_complete", COMP_WORDS=typed, COMP_CWORD=at)
        assert text.split() == offered
