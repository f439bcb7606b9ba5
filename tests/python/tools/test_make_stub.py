import ast
import shutil

import pytest
from make_stub import FACE, HANDLE_FUNCTIONS, stub_of

POINTS = '''\
"""One family of functions."""

from __future__ import annotations

from types import EllipsisType
from typing import Any

import _moxPY
import numpy as np
from numpy.typing import NDArray

from ..acquisition import data_store

Names = list[str]
'''


@pytest.fixture
def stub_with(tmp_path):
    """Gives the stub of a face of one file, which holds functions besides its imports."""

    def stub(functions):
        folder = tmp_path / "face" / "functions" / "points"
        folder.mkdir(parents=True)
        (folder / "points.py").write_text(POINTS + functions, "utf-8")
        hand_written = tmp_path / "by_hand.pyi"
        hand_written.write_text("from typing import NoReturn\ndef fail() -> NoReturn: ...\n")
        return stub_of(tmp_path / "face", hand_written)

    return stub


def lines_of_functions(stub):
    return [line for line in stub.splitlines() if line.startswith("def ")]


@pytest.mark.parametrize(
    ("in_face", "in_stub"),
    [
        ("f(at: int | str, id: int = -1) -> float", "(at: int | str, id: int=-1, /) -> float"),
        ("f() -> list[dict[str, Any]]", "() -> list[dict[str, Any]]"),
        ("f(values: NDArray[np.float64]) -> None", "(values: NDArray[np.float64], /) -> None"),
        ("f(ratio: int | None = None) -> None", "(ratio: int=..., /) -> None"),
        ("f(unit: str | EllipsisType = ...) -> None", "(unit: str=..., /) -> None"),
        ("f(value: Any = ...) -> None", "(value: Any=..., /) -> None"),
        ("f(value: int | None) -> int | None", "(value: int | None, /) -> int | None"),
        ("f(acquisition: data_store) -> data_store", "(acquisition: Any, /) -> Any"),
        ("f(names: int | Names | None = None) -> None", "(names: Any=..., /) -> None"),
    ],
)  # fmt: skip
def test_a_function_has_the_types_of_its_face(stub_with, in_face, in_stub):
    stub = stub_with(f"def {in_face}:\n    return _moxPY.f()\n")
    assert lines_of_functions(stub) == ["def fail() -> NoReturn: ...", f"def f{in_stub}: ..."]


def test_what_calls_no_namesake_is_left_out(stub_with):
    stub = stub_with("def summary(path: str) -> str:\n    return _moxPY.moxReadAcquisition(path)\n")
    assert lines_of_functions(stub) == ["def fail() -> NoReturn: ..."]


def test_names_are_imported_where_they_are_used(stub_with):
    stub = stub_with("def f(a: data_store) -> NDArray[np.int64]:\n    return _moxPY.f(a)\n")
    imports = {line for line in stub.splitlines() if "import" in line}
    assert imports == {
        "import numpy as np",
        "from numpy.typing import NDArray",
        "from typing import Any",
        "from typing import NoReturn",
    }


def test_functions_are_found_in_every_folder_of_the_face(tmp_path):
    shutil.copytree(FACE, tmp_path / "one" / "folder" / "down")
    there = stub_of(tmp_path, HANDLE_FUNCTIONS)
    assert there == stub_of(FACE, HANDLE_FUNCTIONS)
    assert "moxGetPointsUnit" in {
        node.name for node in ast.parse(there).body if isinstance(node, ast.FunctionDef)
    }
