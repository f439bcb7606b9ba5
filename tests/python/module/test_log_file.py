"""Where the log file lies, and what becomes of it."""

from __future__ import annotations

import os
import re
from pathlib import Path

import _mox_probe
import pytest
from support.log_file import lines_of
from support.package_copy import PackageCopy

IMPORT = "import _moxPY"

forking = pytest.mark.skipif(not hasattr(os, "fork"), reason="the platform does not fork")


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


def test_without_the_variable_the_log_lies_in_the_state_folder(package: PackageCopy):
    package.output_of(IMPORT, ORVANE_STATE_DIR=None, XDG_STATE_HOME=str(package.folder / "xdg"))
    assert lines_of(package.folder / "xdg/Tarvex/Orvane/trace.log") == package.start_lines


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
    folders = [package.folder / "site", Path(_mox_probe.__file__).parent]
    package.output_of(
        "import _moxPY, _mox_probe; _mox_probe.log_line('last words')",
        PYTHONPATH=os.pathsep.join(map(str, folders)),
    )
    assert package.log() == [*package.start_lines, "[info] [strata] last words"]


def test_the_folder_is_chosen_once(package: PackageCopy):
    package.output_of(
        "import os, _moxPY; os.environ['ORVANE_STATE_DIR'] = '/nowhere'; _moxPY.unload()"
    )
    assert package.log() == [*package.start_lines, "[info] [tidepool] Plugins unloaded."]


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
