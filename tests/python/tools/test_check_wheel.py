import sys
import zipfile
from pathlib import Path

import pytest
from check_wheel import TYPES, faults_of_command_line, missing_types


def test_a_wheel_without_the_stub_is_found(tmp_path):
    wheel = tmp_path / "moxPY.whl"
    with zipfile.ZipFile(wheel, "w") as archive:
        for name in TYPES - {"_moxPY/__init__.pyi"}:
            archive.writestr(name, "")
    assert missing_types(wheel) == ["_moxPY/__init__.pyi"]


def test_a_wheel_with_all_types_is_good(tmp_path):
    wheel = tmp_path / "moxPY.whl"
    with zipfile.ZipFile(wheel, "w") as archive:
        for name in [*TYPES, "_moxPY/plugins/c3d.so"]:
            archive.writestr(name, "")
    assert missing_types(wheel) == []


def program(folder: Path, code: str) -> Path:
    path = folder / "moxpy"
    path.write_text(f"#!{sys.executable}\nimport sys\nsys.path[:] = {sys.path}\n{code}\n")
    path.chmod(0o755)
    return path


def test_a_command_line_that_works_has_no_faults(tmp_path):
    ours = program(tmp_path, "from moxPY.commands import main\nsys.exit(main())")
    assert faults_of_command_line(ours, tmp_path) == []


@pytest.mark.parametrize(
    ("code", "fault"),
    [
        ("import nothing_of_that_name", "No module named"),
        ("print(0)", "moxpy --version: exit code 0, '0\\n'"),
        ("sys.exit(3)", "moxpy info walk.c3d: exit code 3"),
    ],
)
def test_a_command_line_that_does_not_work_is_told(tmp_path, code, fault):
    faults = faults_of_command_line(program(tmp_path, code), tmp_path)
    assert len(faults) == 3
    assert fault in "\n".join(faults)


def test_a_wheel_without_the_command_line_is_told(tmp_path):
    faults = faults_of_command_line(tmp_path / "moxpy", tmp_path)
    assert faults[0] == "moxpy --version: No such file or directory"
