"""What importers and units report reaches the caller, and nothing of the file is kept."""

from __future__ import annotations

from pathlib import Path

import pytest
from support.c3d_bytes import c3d_bytes
from support.package_copy import PackageCopy
from support.read_c3d import track

READ = """
import sys, _moxPY
try:
    _moxPY.moxReadAcquisition(sys.argv[1])
    print("read")
except Exception as error:
    print(type(error).__name__, str(error), sep=": ", end="")
"""


@pytest.mark.parametrize(
    ("problems", "text"),
    [
        (["first"], "first"),
        (["first", "second"], "first\n\t - second"),
        (["first", "second", "third"], "first\n\t - second\n\t - third"),
    ],
)
def test_every_problem_has_a_line_of_its_own(
    package: PackageCopy, tmp_path: Path, problems: list[str], text: str
) -> None:
    package.add_test_plugin("noting")
    file = tmp_path / "file.probe"
    file.write_text("\n".join(["PROBE", *problems]) + "\n")
    assert package.output_of(READ, file) == f"RuntimeError: {text}"


def test_an_importer_that_leaves_no_points_is_refused(package: PackageCopy, tmp_path: Path) -> None:
    package.add_test_plugin("noting")
    file = tmp_path / "file.probe"
    file.write_text("PROBE\n")
    text = "The importer gave no set 'Format/Data/Points'"
    assert package.output_of(READ, file) == f"RuntimeError: {text}"


@pytest.mark.parametrize("left_out", ["c3d", "data_modifier"])
def test_a_file_reads_or_is_refused_without_one_of_the_plugins(
    package: PackageCopy, tmp_path: Path, left_out: str
) -> None:
    package.add_own_plugins()
    for plugin in package.plugins.glob(f"{left_out}.*"):
        plugin.unlink()
    file = tmp_path / "trial.c3d"
    file.write_bytes(c3d_bytes({"A": track(3)}))
    expected = {
        "c3d": f"RuntimeError: No importer accepts the file '{file}'",
        # Points that nothing distributes: the groups stay empty.
        "data_modifier": "read\n",
    }
    assert package.output_of(READ, file) == expected[left_out]
