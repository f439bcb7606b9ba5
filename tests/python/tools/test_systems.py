"""What building for other systems decides, without building for them."""

import subprocess
from pathlib import Path

import pytest
from systems import linux
from systems.aarch64 import script
from systems.audit import NotPortable, allowed_platform, glibc_of
from systems.audit_windows import foreign
from systems.linux import Linux
from systems.make_wheels import name_of, wanted
from systems.pack_wheel import with_tag

SHOWN = """
moxpy-1.0-cp313-cp313-manylinux_2_17_x86_64.whl is consistent with the
following platform tag: "manylinux_2_17_x86_64".

The wheel references external versioned symbols in these
system-provided shared libraries: libc.so.6 with versions
{'GLIBC_2.17'}
"""


def test_a_wheel_is_made_for_each_python_and_processor():
    assert [name_of(target) for target in wanted([])] == [
        "cp311-manylinux_2_17_x86_64",
        "cp312-manylinux_2_17_x86_64",
        "cp313-manylinux_2_17_x86_64",
        "cp314-manylinux_2_17_x86_64",
        "cp311-manylinux_2_17_aarch64",
        "cp312-manylinux_2_17_aarch64",
        "cp313-manylinux_2_17_aarch64",
        "cp314-manylinux_2_17_aarch64",
        "cp311-win_amd64",
        "cp312-win_amd64",
        "cp313-win_amd64",
        "cp314-win_amd64",
    ]


def test_a_pattern_says_which_wheels_are_meant():
    assert wanted(["cp313-*aarch64", "cp311-*x86_64"]) == [
        Linux("x86_64", "3.11"),
        Linux("aarch64", "3.13"),
    ]


def test_a_wheel_for_windows_needs_itself_its_python_and_what_every_windows_has():
    libraries = {
        "__init__.cp313-win_amd64.pyd": ["python313.dll", "libstrata_core.dll", "KERNEL32.dll"],
        "libstrata_core.dll": ["api-ms-win-crt-heap-l1-1-0.dll", "SHELL32.dll"],
    }
    assert foreign(libraries, "python313.dll") == []
    assert foreign(libraries, "python312.dll") == ["__init__.cp313-win_amd64.pyd: python313.dll"]
    libraries["libstrata_core.dll"] += ["libc++.dll"]
    assert foreign(libraries, "python313.dll") == ["libstrata_core.dll: libc++.dll"]


def test_the_compiler_keeps_to_the_c_library_that_the_names_promise():
    major, minor = glibc_of(Linux("x86_64", "3.13").platform_tag)
    shared = Linux("x86_64", "3.13").toolchain.with_name("linux.cmake").read_text(encoding="utf-8")
    assert f"-linux-gnu.{major}.{minor}" in shared


@pytest.mark.parametrize("processor", ["x86_64", "aarch64"])
def test_each_processor_has_a_toolchain(processor):
    text = Linux(processor, "3.13").toolchain.read_text(encoding="utf-8")
    assert f"set(CMAKE_SYSTEM_PROCESSOR {processor})\n" in text


def test_the_tag_of_the_machine_gives_way():
    text = "Wheel-Version: 1.0\nRoot-Is-Purelib: false\nTag: cp313-cp313-linux_x86_64\n\n"
    assert with_tag(text, "cp311-cp311-manylinux_2_17_aarch64") == (
        "Wheel-Version: 1.0\nRoot-Is-Purelib: false\nTag: cp311-cp311-manylinux_2_17_aarch64\n"
    )


def test_the_platform_of_an_audit_is_found_across_lines():
    assert allowed_platform(SHOWN) == "manylinux_2_17_x86_64"
    assert allowed_platform(SHOWN.replace("platform tag", "platform\ntag")) == (
        "manylinux_2_17_x86_64"
    )


def test_an_audit_without_a_platform_is_told_whole():
    with pytest.raises(NotPortable, match=r"^This does not look like a platform wheel$"):
        allowed_platform("This does not look like a platform wheel")


def test_c_libraries_are_compared_as_numbers():
    assert glibc_of("manylinux_2_5_x86_64") < glibc_of("manylinux_2_17_x86_64")
    with pytest.raises(NotPortable, match=r"^linux_x86_64 names no C library$"):
        glibc_of("linux_x86_64")


def test_the_emulated_program_is_told_the_name_it_was_called_by(tmp_path: Path):
    # An emulator that prints its words.
    emulator = tmp_path / "an emulator"
    emulator.write_text('#!/bin/sh\nprintf "%s\\n" "$@"\n', encoding="utf-8")
    called = tmp_path / "python"
    called.write_text(script(emulator, tmp_path, tmp_path / "python3.13"), encoding="utf-8")
    for path in (emulator, called):
        path.chmod(0o755)
    told = subprocess.run([called, "-c", "x y"], stdout=subprocess.PIPE, text=True, check=True)
    *_, root, flag, name, program, option, words = told.stdout.splitlines()
    assert (root, flag, name) == (str(tmp_path), "-0", str(called))
    assert (program, option, words) == (str(tmp_path / "python3.13"), "-c", "x y")


def test_headers_that_stand_apart_come_along_under_the_name_of_each_processor(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
):
    include = tmp_path / "usr" / "include" / "python3.11"
    apart = include.parent / "x86_64-linux-gnu" / "python3.11"
    for folder in (include, apart):
        folder.mkdir(parents=True)
        (folder / "pyconfig.h").write_text(folder.parent.name)
    monkeypatch.setattr(linux, "interpreter", lambda version, systems: Path("python"))
    monkeypatch.setattr(linux, "include_folder", lambda python: include)
    made = linux.headers("3.11", tmp_path / "systems")
    assert (made / "pyconfig.h").read_text() == "include"
    for processor in linux.PROCESSORS:
        other = made / f"{processor}-linux-gnu" / "python3.11" / "pyconfig.h"
        assert other.read_text() == "x86_64-linux-gnu"
