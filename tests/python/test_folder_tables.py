"""The first header of a folder says what each of its files is about, and forgets none."""

from __future__ import annotations

import re
from pathlib import Path

import pytest

REPOSITORY = Path(__file__).resolve().parents[2]
PUBLIC_HEADERS = ["platform/anvil/include/anvil", "platform/strata/include/strata"]
SOURCES = [
    path
    for part in ("schema", "store", "acquisition", "api", "module", "plugins")
    for path in (REPOSITORY / part).rglob("*.hpp")
]
FOLDERS = sorted({path.parent.relative_to(REPOSITORY).as_posix() for path in SOURCES})
FOLDERS += PUBLIC_HEADERS

ROW = re.compile(r"// \| ([\w/]+) +\| \S.* \|")


def rows_of(header: Path) -> list[str]:
    """The names in the table before everything else of a header; none without a table."""
    top = header.read_text("utf-8").partition("#pragma once")[0]
    return [match[1] for match in map(ROW.fullmatch, top.splitlines()) if match]


def members_of(folder: Path) -> set[str]:
    """The files of a folder, a header and its source being one, and the folders in it."""
    names = {path.stem for path in folder.iterdir() if path.suffix in {".cpp", ".hpp"}}
    return names | {f"{path.name}/" for path in folder.iterdir() if any(path.glob("*.hpp"))}


@pytest.mark.parametrize("name", FOLDERS)
def test_one_header_of_a_folder_names_all_files(name: str):
    folder = REPOSITORY / name
    tables = [rows for header in folder.glob("*.hpp") if (rows := rows_of(header))]
    assert len(tables) == 1
    assert sorted(tables[0]) == sorted(members_of(folder))


TABLES = sorted(
    path.parent.relative_to(REPOSITORY).as_posix()
    for path in (REPOSITORY / "python/moxPY").rglob("__init__.py")
    if "functions" not in path.parts and path.parent.name != "moxPY"
)


@pytest.mark.parametrize("name", TABLES)
def test_the_docstring_of_a_python_folder_names_all_files(name: str):
    folder = REPOSITORY / name
    docstring = (folder / "__init__.py").read_text("utf-8").split('"""')[1]
    rows = re.findall(r"^(\w+)  +\S", docstring, re.MULTILINE)
    files = {path.stem for path in folder.glob("*.py")} - {"__init__"}
    assert sorted(rows) == sorted(
        files | {path.parent.name for path in folder.glob("*/__init__.py")}
    )


def test_rows_are_found_only_where_a_phrase_is_behind_the_name(tmp_path: Path):
    header = tmp_path / "points.hpp"
    header.write_text("// | file   |   |\n// | points |   |\n// | kinds  | of points |\n", "utf-8")
    assert rows_of(header) == ["kinds"]
