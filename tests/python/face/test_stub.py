"""The stub, which is made from the face's annotations, against the module and its prototypes."""

from __future__ import annotations

import ast
import os
import shutil
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path

import _moxPY
import pytest
from make_stub import FACE, HANDLE_FUNCTIONS, stub_of
from support.interface import FUNCTIONS, OUTPUT, Function
from support.memory import under_a_sanitizer

PACKAGE = Path(_moxPY.__file__).parent
ALLOWLIST = Path(__file__).with_name("stubtest_allowlist.txt")

# What a declared type takes. All others take objects, of which the prototype does not say more.
PYTHON_TYPES = {
    "int": "int",
    "float": "float",
    "double": "float",
    "double const &": "float",
    "std::string &": "str",
    "std::string const &": "str",
}


def functions_of(stub: str) -> dict[str, ast.FunctionDef]:
    return {node.name: node for node in ast.parse(stub).body if isinstance(node, ast.FunctionDef)}


def deviations_of(stub: str) -> list[str]:
    """Where a stub says something else than the prototypes."""
    functions = functions_of(stub)
    return [
        f"{function}: {text}"
        for function in FUNCTIONS
        for text in deviations_from(function, functions[function.name])
    ]


def deviations_from(function: Function, stub: ast.FunctionDef) -> Iterator[str]:
    most = len(stub.args.posonlyargs)
    least = most - len(stub.args.defaults)
    if {*range(least, most + 1)} != {*function.argument_counts}:
        yield f"takes {least} to {most} arguments"
    for position, argument in enumerate(stub.args.posonlyargs):
        annotation = ast.unparse(argument.annotation) if argument.annotation else "nothing"
        types = types_at(position, function)
        if types and {*annotation.split(" | ")} != types:
            yield f"{argument.arg} is {annotation}"
    result = ast.unparse(stub.returns) if stub.returns else "nothing"
    if function.outputs and not result.startswith(("list[", "NoReturn")):
        yield f"gives {result}"


def types_at(position: int, function: Function) -> set[str]:
    """The Python types that the overloads take there; empty when one takes objects."""
    lists = [[text for text in types if text != OUTPUT] for types in function.parameters]
    declared = {types[position] for types in lists if position < len(types)}
    known = declared <= set(PYTHON_TYPES)
    return {PYTHON_TYPES[text] for text in declared} if known else set()


def test_the_stub_names_every_function_of_the_module():
    stub = (PACKAGE / "__init__.pyi").read_text("utf-8")
    assert sorted(functions_of(stub)) == sorted(function.name for function in FUNCTIONS)


def test_the_stub_takes_and_gives_what_the_prototypes_say():
    assert deviations_of((PACKAGE / "__init__.pyi").read_text("utf-8")) == []


@pytest.mark.parametrize(
    ("annotated", "mistaken", "found"),
    [
        ("rate: float", "rate: int", ["moxSetFrequency: rate is int"]),
        ("rate: float", "rate: float | str", ["moxSetFrequency: rate is float | str"]),
        ("rate: float", "rate: float = 0.0", ["moxSetFrequency: takes 1 to 2 arguments"]),
        ("rate: float", "rate: float, more: str", ["moxSetFrequency: takes 3 to 3 arguments"]),
        (", rate: float", "", ["moxSetFrequency: takes 1 to 1 arguments"]),
    ],
)
def test_a_mistaken_annotation_is_found(
    tmp_path: Path, annotated: str, mistaken: str, found: list[str]
):
    shutil.copytree(FACE, tmp_path / "moxPY")
    (file,) = [path for path in tmp_path.rglob("*.py") if "def moxSetFrequency" in path.read_text()]
    right = "def moxSetFrequency(acquisition: Acquisition, rate: float)"
    text = file.read_text("utf-8")
    assert right in text
    file.write_text(text.replace(right, right.replace(annotated, mistaken)), "utf-8")
    assert deviations_of(stub_of(tmp_path, HANDLE_FUNCTIONS)) == found


@pytest.mark.skipif(under_a_sanitizer(), reason="the type checker runs, and has no use for it")
def test_stubtest_finds_nothing(tmp_path: Path):
    paths = dict.fromkeys(["PYTHONPATH", "MYPYPATH"], str(PACKAGE.parent))
    finished = subprocess.run(
        [sys.executable, "-m", "mypy.stubtest", "_moxPY", "--allowlist", str(ALLOWLIST)],
        cwd=tmp_path,
        env=os.environ | paths,
        capture_output=True,
        text=True,
    )
    assert finished.returncode == 0, finished.stdout + finished.stderr
    assert finished.stdout.startswith("Success")
