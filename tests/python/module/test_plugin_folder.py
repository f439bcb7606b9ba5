"""What lies in the plugins folder when the module is imported, and what the log says about it."""

from __future__ import annotations

import os
import shutil
from pathlib import Path

import pytest
from support.c3d_bytes import c3d_bytes
from support.package_copy import PackageCopy
from support.systems import posix

READ = """
import sys, _moxPY
try:
    _moxPY.moxReadAcquisition(sys.argv[1])
    print("read")
except RuntimeError as error:
    print(error)
"""

NOTED = "[info] [strata] The noting plugin registers"


def refusal(path: Path, reason: str) -> str:
    return f"[error] [strata] The plugin '{path}' was not loaded: {reason}"


@pytest.fixture
def trial(tmp_path: Path) -> Path:
    path = tmp_path / "trial.c3d"
    path.write_bytes(c3d_bytes({"LASI": [[1, 2, 3], [4, 5, 6]]}))
    return path


def test_an_import_with_no_plugins_logs_two_lines(package: PackageCopy):
    assert package.output_of("import _moxPY") == ""
    assert package.log() == package.start_lines


def test_reading_without_plugins_says_that_there_are_none(package: PackageCopy, trial: Path):
    assert package.output_of(READ, trial) == (
        f"No importer accepts the file '{trial}': no importer plugin is loaded\n"
    )


def test_a_missing_plugins_folder_is_logged(package: PackageCopy, trial: Path):
    package.plugins.rmdir()
    assert "no importer plugin is loaded" in package.output_of(READ, trial)
    assert package.log() == [
        *package.start_lines,
        "[error] [tidepool] The path set to discover and load plugins is not valid. "
        f"Path : {package.plugins}",
    ]


def test_a_file_in_place_of_the_plugins_folder_is_logged(package: PackageCopy):
    package.plugins.rmdir()
    package.plugins.write_text("")
    package.output_of("import _moxPY")
    assert package.log() == [
        *package.start_lines,
        "[error] [tidepool] The path set to discover and load plugins is not valid. "
        f"Path : {package.plugins}",
    ]


def test_a_text_file_is_no_plugin(package: PackageCopy):
    path = package.plugins / "readme.so"
    path.write_text("plugins belong here\n")
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, refusal(path, "it is no shared library")]


def put_noting_plugin(package: PackageCopy, mode: int, folder_mode: int) -> Path:
    path = package.add_test_plugin("noting")
    path.chmod(mode)
    package.plugins.chmod(folder_mode)
    return path


@posix
@pytest.mark.parametrize(
    ("mode", "folder_mode", "reason"),
    [
        (0o757, 0o755, "everybody may write to it"),
        (0o666, 0o755, "everybody may write to it"),
        (0o755, 0o777, "everybody may write to its folder"),
        (0o755, 0o1777, "everybody may write to its folder"),
    ],
)
def test_a_plugin_that_everybody_may_change_does_not_run(
    package: PackageCopy, mode: int, folder_mode: int, reason: str
):
    path = put_noting_plugin(package, mode, folder_mode)
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, refusal(path, reason)]


@posix
def test_rights_are_looked_at_before_anything_of_a_file_runs(package: PackageCopy):
    """A file that could not be loaded anyway: the loader is not asked."""
    path = package.plugins / "readme.so"
    path.write_text("plugins belong here\n")
    path.chmod(0o666)
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, refusal(path, "everybody may write to it")]


@posix
def test_a_link_in_a_folder_of_everybody_is_refused(package: PackageCopy):
    path = package.add_test_plugin("noting")
    elsewhere = package.folder / "elsewhere"
    elsewhere.mkdir()
    path.rename(elsewhere / path.name)
    path.symlink_to(elsewhere / path.name)
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, NOTED]
    package.plugins.chmod(0o777)
    package.output_of("import _moxPY")
    assert package.log()[-1] == refusal(path, "everybody may write to its folder")
    package.plugins.chmod(0o755)
    elsewhere.chmod(0o777)
    package.output_of("import _moxPY")
    assert package.log()[-1] == refusal(path, "everybody may write to its folder")


@posix
@pytest.mark.parametrize(
    ("mode", "folder_mode", "what"),
    [
        (0o775, 0o755, "it"),
        (0o755, 0o775, "its folder"),
        (0o664, 0o775, "it and its folder"),
    ],
)
def test_a_plugin_that_its_group_may_change_is_named(
    package: PackageCopy, mode: int, folder_mode: int, what: str
):
    path = put_noting_plugin(package, mode, folder_mode)
    package.output_of("import _moxPY")
    assert package.log() == [
        *package.start_lines,
        f"[warning] [strata] The plugin '{path}' is loaded, but its group may write to {what}",
        NOTED,
    ]


def test_a_folder_is_offered_like_a_file(package: PackageCopy):
    path = package.plugins / "older"
    path.mkdir()
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, refusal(path, "it is a directory")]


def test_plugins_in_folders_below_are_not_loaded(package: PackageCopy):
    path = package.plugins / "older"
    path.mkdir()
    shutil.move(package.add_test_plugin("noting"), path)
    package.output_of("import _moxPY")
    assert package.log() == [*package.start_lines, refusal(path, "it is a directory")]


def test_a_plugin_that_is_cut_short_is_refused(package: PackageCopy):
    path = package.add_test_plugin("noting")
    path.write_bytes(path.read_bytes()[:2000])
    package.output_of("import _moxPY")
    # A library that is too short kills a process on POSIX; Windows itself refuses it.
    reason = (
        "it is cut short: its headers speak of more than the 2000 bytes that are there"
        if os.name == "posix"
        else "it is no shared library"
    )
    assert package.log() == [*package.start_lines, refusal(path, reason)]


def test_a_library_that_is_no_plugin_is_refused(package: PackageCopy):
    (library,) = package.module_folder.glob("*strata_core*")
    path = Path(shutil.copy(library, package.plugins))
    package.output_of("import _moxPY")
    (line,) = [line for line in package.log() if str(path) in line]
    assert line == refusal(path, "it is no plugin: it has no entry point")


def test_a_plugin_of_another_interface_version_is_refused(package: PackageCopy):
    path = package.add_test_plugin("other_version")
    package.output_of("import _moxPY")
    assert package.log() == [
        *package.start_lines,
        refusal(path, "it speaks version 3 of the plugin interface, not version 2"),
    ]


def test_a_plugin_whose_id_is_taken_is_refused(package: PackageCopy):
    path = package.add_test_plugin("noting")
    shutil.copy(path, package.plugins / f"second_{path.name}")
    package.output_of("import _moxPY")
    taken = [line for line in package.log() if "was not loaded" in line]
    assert len(taken) == 1
    assert "test.probe" in taken[0]


def test_bad_plugins_do_not_keep_good_ones_out(package: PackageCopy, trial: Path):
    package.add_own_plugins()
    package.add_test_plugin("other_version")
    (package.plugins / "folder").mkdir()
    (package.plugins / "empty.so").touch()
    assert package.output_of(READ, trial) == "read\n"


def test_a_failed_import_of_a_file_gives_every_problem_a_line(package: PackageCopy, tmp_path: Path):
    package.add_test_plugin("noting")
    path = tmp_path / "bad.probe"
    path.write_bytes(b"PROBE\nno frames\nno points\n")
    assert package.output_of(READ, path) == "no frames\n\t - no points\n"


def test_a_file_that_no_importer_wants_is_named(package: PackageCopy, tmp_path: Path):
    package.add_test_plugin("noting")
    path = tmp_path / "foreign.c3d"
    path.write_bytes(b"\x02P but nothing else")
    assert package.output_of(READ, path) == f"No importer accepts the file '{path}'\n"


def test_plugins_are_unloaded_and_found_again(package: PackageCopy, trial: Path):
    package.add_own_plugins()
    code = f"""{READ}
_moxPY.unload()
try:
    _moxPY.moxReadAcquisition(sys.argv[1])
except RuntimeError as error:
    print(error)
_moxPY.reload()
handle = _moxPY.moxReadAcquisition(sys.argv[1])
print(_moxPY.moxGetPointNumber(handle))
"""
    assert package.output_of(code, trial) == (
        f"read\nNo importer accepts the file '{trial}': no importer plugin is loaded\n1.0\n"
    )


def test_an_acquisition_outlives_the_plugin_that_read_it(package: PackageCopy, trial: Path):
    package.add_own_plugins()
    code = """
import sys, _moxPY
handle = _moxPY.moxReadAcquisition(sys.argv[1])
_moxPY.unload()
print(_moxPY.moxGetMarkersValues(handle).tolist())
"""
    assert package.output_of(code, trial) == "[[1.0, 2.0, 3.0], [4.0, 5.0, 6.0]]\n"


def test_unload_returns_nothing_and_logs_a_line(package: PackageCopy):
    package.output_of("import _moxPY; assert _moxPY.unload() is None")
    assert package.log() == [*package.start_lines, "[info] [tidepool] Plugins unloaded."]


def test_reload_returns_nothing_and_logs_two_lines(package: PackageCopy):
    package.add_test_plugin("noting")
    package.output_of("import _moxPY; assert _moxPY.reload() is None")
    assert package.log() == [
        *package.start_lines,
        NOTED,
        "[info] [tidepool] Plugins unloaded.",
        NOTED,
        "[info] [tidepool] Plugins reloaded.",
    ]


def test_reload_finds_a_plugin_that_was_added(package: PackageCopy):
    code = """
import shutil, sys, _moxPY
shutil.copy(sys.argv[1], sys.argv[2])
_moxPY.reload()
"""
    added = package.add_test_plugin("noting").rename(package.folder / "added.so")
    package.output_of(code, added, package.plugins)
    assert package.log().count(NOTED) == 1


def test_reload_logs_a_folder_that_went_missing(package: PackageCopy):
    package.output_of(
        "import sys, pathlib, _moxPY; pathlib.Path(sys.argv[1]).rmdir(); _moxPY.reload()",
        package.plugins,
    )
    assert package.log() == [
        *package.start_lines,
        "[info] [tidepool] Plugins unloaded.",
        "[error] [tidepool] The path set to discover and load plugins is not valid. "
        f"Path : {package.plugins}",
        "[info] [tidepool] Plugins reloaded.",
    ]
