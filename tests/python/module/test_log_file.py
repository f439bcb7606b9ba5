"""Where the log file lies, and what becomes of it."""

from __future__ import annotations

import os
import re
import subprocess
import sys
from pathlib import Path

import _mox_probe
import pytest
from support.log_file import lines_of
from support.package_copy import PackageCopy
from support.systems import posix
from writing.people import ALICE, LABORATORY, needs_root

IMPORT = "import _moxPY"

forking = pytest.mark.skipif(not hasattr(os, "fork"), reason="the platform does not fork")


def with_probe(package: PackageCopy) -> str:
    return os.pathsep.join(map(str, [package.folder / "site", Path(_mox_probe.__file__).parent]))


def test_a_line_tells_time_severity_logger_and_process(package: PackageCopy):
    process = package.output_of("import os, _moxPY; print(os.getpid())").strip()
    first = (package.state / "trace.log").read_text().splitlines()[0]
    assert re.fullmatch(
        r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z \[info\] \[tidepool\] "
        rf"\[{process}\] Orvane bindings 2025\.3\.2 started",
        first,
    )


def test_the_variable_names_the_folder(package: PackageCopy):
    folder = package.folder / "some" / "where"
    package.output_of(IMPORT, ORVANE_STATE_DIR=str(folder))
    assert lines_of(folder / "trace.log") == package.start_lines


@posix
def test_without_the_variable_the_log_lies_in_the_state_folder(package: PackageCopy):
    package.output_of(IMPORT, ORVANE_STATE_DIR=None, XDG_STATE_HOME=str(package.folder / "xdg"))
    assert lines_of(package.folder / "xdg/Tarvex/Orvane/trace.log") == package.start_lines


@posix
@pytest.mark.parametrize("xdg", [None, "", "relative/folder"])
def test_without_a_state_folder_the_log_lies_in_the_home_folder(
    package: PackageCopy, xdg: str | None
):
    package.output_of(
        IMPORT, ORVANE_STATE_DIR=None, XDG_STATE_HOME=xdg, HOME=str(package.folder / "home")
    )
    log = package.folder / "home/.local/state/Tarvex/Orvane/trace.log"
    assert lines_of(log) == package.start_lines


def test_processes_append_to_the_same_file(package: PackageCopy):
    package.output_of(IMPORT)
    package.output_of(IMPORT)
    assert package.log() == package.start_lines * 2


def test_a_full_file_is_kept_once(package: PackageCopy):
    package.state.mkdir()
    full = "x" * (5 << 20)
    (package.state / "trace.log").write_text(full)
    package.output_of(IMPORT)
    assert package.log() == package.start_lines
    assert (package.state / "trace.log.1").read_text() == full


def test_a_folder_that_cannot_be_made_does_not_stop_the_import(package: PackageCopy):
    obstacle = package.folder / "obstacle"
    obstacle.write_text("no folder")
    code = "import _moxPY; _moxPY.reload(); print(_moxPY.moxGetVersion())"
    printed = package.output_of(code, ORVANE_STATE_DIR=str(obstacle / "state"))
    assert printed == "2025.3.2\n"
    assert obstacle.read_text() == "no folder"


def test_a_folder_in_place_of_the_file_does_not_stop_the_import(package: PackageCopy):
    (package.state / "trace.log").mkdir(parents=True)
    assert package.output_of("import _moxPY; print(_moxPY.moxGetVersion())") == "2025.3.2\n"


def test_lines_are_written_when_the_process_ends(package: PackageCopy):
    package.output_of(
        "import _moxPY, _mox_probe; _mox_probe.log_line('last words')",
        PYTHONPATH=with_probe(package),
    )
    assert package.log() == [*package.start_lines, "[info] [strata] last words"]


def test_the_folder_is_chosen_once(package: PackageCopy):
    package.output_of(
        "import os, _moxPY; os.environ['ORVANE_STATE_DIR'] = '/nowhere'; _moxPY.unload()"
    )
    assert package.log() == [*package.start_lines, "[info] [tidepool] Plugins unloaded."]


def mode_of(path: Path) -> int:
    return path.stat().st_mode & 0o7777


@posix
def test_the_log_is_its_users_alone(package: PackageCopy):
    before = os.umask(0)
    try:
        package.output_of(IMPORT, ORVANE_STATE_DIR=None, XDG_STATE_HOME=str(package.folder / "xdg"))
    finally:
        os.umask(before)
    for name in ("xdg", "xdg/Tarvex", "xdg/Tarvex/Orvane"):
        assert mode_of(package.folder / name) == 0o700
    assert mode_of(package.folder / "xdg/Tarvex/Orvane/trace.log") == 0o600


@posix
def test_a_log_that_was_open_to_others_is_closed(package: PackageCopy):
    package.state.mkdir()
    package.state.chmod(0o755)
    for name in ("trace.log", "trace.log.1"):
        (package.state / name).touch()
        (package.state / name).chmod(0o644)
    package.output_of(IMPORT)
    assert package.log() == package.start_lines
    assert mode_of(package.state) == 0o700
    assert [mode_of(path) for path in package.state.iterdir()] == [0o600, 0o600]


@posix
def test_a_folder_with_other_files_in_it_stays_open_to_others(package: PackageCopy):
    (package.state / "notes").mkdir(parents=True)
    package.state.chmod(0o755)
    package.output_of(IMPORT)
    assert package.log() == package.start_lines
    assert mode_of(package.state) == 0o755
    assert mode_of(package.state / "trace.log") == 0o600


@needs_root
def test_the_rights_of_somebody_elses_log_stay(package: PackageCopy):
    package.state.mkdir()
    (package.state / "trace.log").touch()
    (package.state / "trace.log").chmod(0o666)
    os.chown(package.state / "trace.log", ALICE.user, LABORATORY)
    package.output_of(IMPORT)
    assert package.log() == package.start_lines
    assert mode_of(package.state / "trace.log") == 0o666


@posix
def test_a_name_cannot_forge_a_line_or_its_look(package: PackageCopy):
    name = "a\u202eb\u2028c\x85d\x9b2Je\\x1B\x1b.c3d"
    code = f"""
import _moxPY
try:
    _moxPY.moxReadAcquisition({name!r})
except RuntimeError:
    pass
"""
    package.output_of(code)
    line = (package.state / "trace.log").read_bytes().decode("ascii").splitlines()[-1]
    shown = r"a\u202Eb\u2028c\u0085d\u009B2Je\\x1B\x1B.c3d"
    assert line.endswith(f"The filename '{shown}' does not exist: No such file or directory")


FORK = """
import os, sys, _moxPY
child = os.fork()
if child == 0:
    _moxPY.unload()
    print(_moxPY.moxGetPointNumber(_moxPY.moxNewAcquisition(2)), flush=True)
    {leave}
_, status = os.waitpid(child, 0)
_moxPY.reload()
print(os.waitstatus_to_exitcode(status))
"""


@forking
@pytest.mark.parametrize("leave", ["sys.exit(0)", "os._exit(0)"])
def test_a_process_that_forked_keeps_working(package: PackageCopy, leave: str):
    assert package.output_of(FORK.format(leave=leave)) == "2.0\n0\n"
    assert package.log() == [
        *package.start_lines,
        "[info] [tidepool] Plugins unloaded.",
        "[info] [tidepool] Plugins unloaded.",
        "[info] [tidepool] Plugins reloaded.",
    ]


@forking
def test_children_and_parent_log_whole_lines(package: PackageCopy):
    code = """
import os, _moxPY
children = []
for _ in range(4):
    child = os.fork()
    if child == 0:
        for _ in range(25):
            _moxPY.unload()
        os._exit(0)
    children.append(child)
for _ in range(25):
    _moxPY.unload()
assert [os.waitpid(child, 0)[1] for child in children] == [0] * 4
"""
    package.output_of(code)
    assert package.log() == package.start_lines + ["[info] [tidepool] Plugins unloaded."] * 125


LOG_AND_LEAVE = """
import ctypes, os, sys, _moxPY, _mox_probe
for number in range(200):
    _mox_probe.log_line(str(number))
{leave}
"""


def lines_from(package: PackageCopy) -> list[str]:
    """What was logged behind the first lines."""
    return package.log()[len(package.start_lines) :]


NUMBERS = [f"[info] [strata] {number}" for number in range(200)]


@forking
@pytest.mark.parametrize("ending", ["os._exit(0)", "os.kill(os.getpid(), 9)"])
def test_a_forked_process_loses_no_line_however_it_ends(package: PackageCopy, ending: str):
    code = """
import os, _moxPY, _mox_probe
child = os.fork()
if child == 0:
    for number in range(200):
        _mox_probe.log_line(str(number))
    ENDING
os.waitpid(child, 0)
"""
    package.output_of(code.replace("ENDING", ending), PYTHONPATH=with_probe(package))
    assert lines_from(package) == NUMBERS


@forking
def test_lines_before_a_fork_are_written_before_it(package: PackageCopy):
    for _ in range(5):
        code = LOG_AND_LEAVE.format(leave="os.fork(); os._exit(0)")
        package.output_of(code, PYTHONPATH=with_probe(package))
    assert len([line for line in lines_from(package) if "[strata]" in line]) == 5 * len(NUMBERS)


@forking
@pytest.mark.parametrize("leave", ["ctypes.CDLL(None).quick_exit(0)", "sys.exit(0)"])
def test_ways_to_end_that_tell_libraries_lose_no_line(package: PackageCopy, leave: str):
    package.output_of(LOG_AND_LEAVE.format(leave=leave), PYTHONPATH=with_probe(package))
    assert lines_from(package) == NUMBERS


@forking
@pytest.mark.parametrize("method", ["fork", "forkserver", "spawn"])
def test_a_worker_loses_no_line(package: PackageCopy, method: str):
    program = package.folder / "program.py"
    program.write_text(f"""
import multiprocessing

def work():
    import _moxPY, _mox_probe
    for number in range(200):
        _mox_probe.log_line(str(number))

if __name__ == "__main__":
    worker = multiprocessing.get_context({method!r}).Process(target=work)
    worker.start()
    worker.join()
""")
    subprocess.run(
        [sys.executable, program],
        env=os.environ
        | {"PYTHONPATH": with_probe(package), "ORVANE_STATE_DIR": str(package.state)},
        check=True,
        timeout=60,
    )
    assert lines_from(package) == NUMBERS
