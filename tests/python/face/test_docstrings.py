"""Docstrings: complete, and true as far as their examples go."""

from __future__ import annotations

import doctest
import importlib
import inspect
import pkgutil
import re
import shutil
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import moxPY
import pytest
from moxPY.trial import Trial

TRIAL = Path(__file__).resolve().parents[3] / "examples" / "gait_trial.c3d"
MODULES = [
    importlib.import_module(module.name)
    for module in pkgutil.walk_packages(moxPY.__path__, "moxPY.")
    if module.name != "moxPY.__main__"  # runs the command line
]
# Modules whose examples have a `Trial`; those of the others have the handle of the functions.
OBJECT_VIEW = (
    "moxPY.trial.",
    "moxPY.checks.",
    "moxPY.differences.",
    "moxPY.gait.",
    "moxPY.player.",
    "moxPY.plots.",
    "moxPY.report.",
    "moxPY.skeleton.",
)
FUNCTIONS = [name for name in moxPY.__all__ if name != "data_store"]


def examples() -> Iterator[Any]:
    finder = doctest.DocTestFinder(exclude_empty=True)
    for module in MODULES:
        for found in finder.find(module):
            if found.examples:
                yield pytest.param(found, id=found.name)


def sections_of(name: str) -> list[str]:
    documentation = inspect.getdoc(getattr(moxPY, name)) or ""
    return re.findall(r"^(\w+)\n-+$", documentation, re.MULTILINE)


@pytest.mark.parametrize("example", list(examples()))
def test_examples_are_true(
    example: doctest.DocTest, capsys: pytest.CaptureFixture[str], tmp_path: Path
):
    path = str(tmp_path / TRIAL.name)
    shutil.copyfile(TRIAL, path)
    example.globs |= vars(moxPY) | {"path": path}
    with moxPY.moxReadAcquisition(path) as trial:
        is_of_object_view = example.name.startswith(OBJECT_VIEW)
        example.globs["trial"] = Trial.of(trial) if is_of_object_view else trial
        with capsys.disabled():
            report: list[str] = []
            results = doctest.DocTestRunner().run(example, out=report.append)
    assert results.failed == 0, "".join(report)


@pytest.mark.parametrize("name", FUNCTIONS)
def test_functions_have_examples(name: str):
    assert sections_of(name)[-1] == "Examples"


def test_the_examples_of_every_function_are_run():
    found = {parameters.id.rpartition(".")[2] for parameters in examples()}
    assert set(FUNCTIONS) - found == set()


@pytest.mark.parametrize("name", FUNCTIONS)
def test_parameters_and_results_are_documented(name: str):
    signature = inspect.signature(getattr(moxPY, name))
    sections = sections_of(name)
    assert ("Parameters" in sections) == bool(signature.parameters)
    assert ("Returns" in sections) == (signature.return_annotation not in {"None", "NoReturn"})


@pytest.mark.parametrize("name", FUNCTIONS)
def test_every_parameter_is_described(name: str):
    function = getattr(moxPY, name)
    described = re.findall(r"^(\w+) : ", inspect.getdoc(function) or "", re.MULTILINE)
    parameters = list(inspect.signature(function).parameters)
    assert described[: len(parameters)] == parameters
