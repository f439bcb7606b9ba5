"""Function table and Python face name the same functions; versions agree."""

from __future__ import annotations

import builtins
import inspect
import re
import tomllib
from pathlib import Path
from typing import Any

import _moxPY
import moxPY
import pytest
from moxPY import trial

REPOSITORY = Path(__file__).resolve().parents[3]

# For shadow classes and for other extension modules, not for people.
PLUMBING = {
    "SWIG_PyInstanceMethod_New",
    "anvil_to_json",
    "data_store_swiginit",
    "data_store_swigregister",
    "delete_data_store",
    "from_anvil_json",
    "metadata_from_data_set",
    "new_data_store",
    "throw_type_error",
}


def table() -> list[str]:
    return [name for name, value in vars(_moxPY).items() if inspect.isroutine(value)]


def face() -> dict[str, Any]:
    return {name: getattr(moxPY, name) for name in moxPY.__all__ if name != "data_store"}


faces = pytest.mark.parametrize("name", sorted(face()))


def test_the_face_names_every_function_of_the_table():
    assert sorted(face()) == sorted(set(table()) - PLUMBING)


def test_the_list_of_names_is_that_of_the_families():
    assert moxPY.__all__ == sorted(["data_store", *moxPY.functions.__all__])


def test_no_name_is_offered_twice():
    assert len(moxPY.__all__) == len(set(moxPY.__all__))


def test_a_star_import_gives_all_functions():
    names: dict[str, Any] = {}
    exec("from moxPY import *", names)
    assert set(moxPY.__all__) == set(names) - {"__builtins__"}


def test_a_star_import_hides_no_builtin():
    assert set(moxPY.__all__) & set(dir(builtins)) == set()


def test_the_object_view_is_offered_by_name():
    assert [moxPY.read, moxPY.Trial, moxPY.Channel, moxPY.Gap, moxPY.TrialWarning] == [
        trial.read, trial.Trial, trial.Channel, trial.Gap, trial.TrialWarning,
    ]  # fmt: skip


@faces
def test_parameters_and_results_have_types(name: str):
    signature = inspect.signature(face()[name])
    types = [parameter.annotation for parameter in signature.parameters.values()]
    assert inspect.Signature.empty not in [*types, signature.return_annotation]


def test_types_are_marked_as_published():
    assert (Path(moxPY.__file__).parent / "py.typed").is_file()


def test_versions_are_equal():
    with (REPOSITORY / "pyproject.toml").open("rb") as file:
        version = tomllib.load(file)["project"]["version"]
    newest = re.search(r"^## (\S+)", (REPOSITORY / "CHANGELOG.md").read_text("utf-8"), re.MULTILINE)
    assert newest
    assert newest[1] == version
    assert _moxPY.moxGetVersion() == version
    assert moxPY.__version__ == version
