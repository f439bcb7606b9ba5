"""Write the stub of the extension module from the annotations of its Python face.

Usage: make_stub.py STUB

A function of the extension module that is for people has a namesake in `python/moxPY`, which calls
it and says its types. The others are in `module/handle_functions.pyi`. Building a wheel runs this
too, so it reads sources only and needs no package.
"""

from __future__ import annotations

import argparse
import ast
import builtins
import sys
from collections.abc import Iterator
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
FACE = PROJECT / "python" / "moxPY"
HANDLE_FUNCTIONS = PROJECT / "module" / "handle_functions.pyi"

TITLE = '"""Types of the extension module; the functions are documented in moxPY."""'
ANYTHING = ast.Name("Any")
IMPORT_OF_ANYTHING = "from typing import Any"
# A default of the face that stands for an argument that the extension module is not given.
NOT_GIVEN = {"None": "None", "...": "EllipsisType"}


def stub_of(face: Path, handle_functions: Path) -> str:
    """The text of the stub: the hand-written functions, then those of the face, file by file."""
    hand_written = ast.parse(handle_functions.read_text("utf-8"))
    imports = set(imports_of(hand_written).values()) | {IMPORT_OF_ANYTHING}
    functions = [line_of(function) for function in functions_of(hand_written)]
    for path in sorted(face.rglob("*.py")):
        module = ast.parse(path.read_text("utf-8"))
        known = outside_imports_of(module)
        for function in filter(calls_namesake, functions_of(module)):
            in_stub = as_in_extension(function, set(known))
            imports |= {known[name] for name in names_in(in_stub) & set(known)}
            functions.append(line_of(in_stub))
    return "\n".join([TITLE, "", *sorted(imports), "", *functions, ""])


def functions_of(module: ast.Module) -> Iterator[ast.FunctionDef]:
    return (node for node in module.body if isinstance(node, ast.FunctionDef))


def calls_namesake(function: ast.FunctionDef) -> bool:
    """Whether this is the face of a function of the extension module."""
    namesake = ast.dump(ast.parse(f"_moxPY.{function.name}", mode="eval").body)
    return any(ast.dump(node) == namesake for node in ast.walk(function))


def imports_of(module: ast.Module) -> dict[str, str]:
    """For each name that a file imports, the statement that imports it alone."""
    statements = {}
    for node in ast.walk(module):
        if not isinstance(node, ast.Import | ast.ImportFrom):
            continue
        for alias in node.names:
            alone: ast.stmt = ast.Import([alias])
            if isinstance(node, ast.ImportFrom):
                alone = ast.ImportFrom(node.module, [alias], node.level)
            statements[alias.asname or alias.name] = ast.unparse(alone)
    return statements


def outside_imports_of(module: ast.Module) -> dict[str, str]:
    """The imports of a file of the face, without those from the face."""
    own = ("from .", "from moxPY", "import moxPY")
    imports = imports_of(module)
    return {name: text for name, text in imports.items() if not text.startswith(own)}


def as_in_extension(function: ast.FunctionDef, known: set[str]) -> ast.FunctionDef:
    """The function as the extension module offers it: positional, and without classes of the face.

    `known` names what annotations may use besides the builtins.
    """
    parameters = [*function.args.posonlyargs, *function.args.args]
    defaults = function.args.defaults
    no_defaults = [None] * (len(parameters) - len(defaults))
    positional = [
        ast.arg(parameter.arg, type_in_extension(parameter.annotation, default, known))
        for parameter, default in zip(parameters, [*no_defaults, *defaults], strict=True)
    ]
    return ast.FunctionDef(
        function.name,
        args=ast.arguments(
            posonlyargs=positional,
            args=[],
            kwonlyargs=[],
            kw_defaults=[],
            defaults=[default_in_extension(default) for default in defaults],
        ),
        returns=type_in_extension(function.returns, None, known),
        body=[],
        decorator_list=[],
    )


def type_in_extension(
    annotation: ast.expr | None, default: ast.expr | None, known: set[str]
) -> ast.expr | None:
    """What the extension module takes for a parameter of the face."""
    if annotation is None:
        return None
    left_out = NOT_GIVEN.get(ast.unparse(default)) if default else None
    alternatives = [part for part in members(annotation) if ast.unparse(part) != left_out]
    if any(names_in(part) - known - set(dir(builtins)) for part in alternatives):
        # A class or an alias of the face: the extension module knows neither. An acquisition, for
        # one, may be any object with a handle.
        return ANYTHING
    return ast.parse(" | ".join(map(ast.unparse, alternatives)), mode="eval").body


def members(annotation: ast.expr) -> list[ast.expr]:
    """The alternatives of a union."""
    if isinstance(annotation, ast.BinOp) and isinstance(annotation.op, ast.BitOr):
        return [*members(annotation.left), *members(annotation.right)]
    return [annotation]


def default_in_extension(default: ast.expr) -> ast.expr:
    return ast.Constant(...) if ast.unparse(default) in NOT_GIVEN else default


def names_in(node: ast.AST) -> set[str]:
    return {part.id for part in ast.walk(node) if isinstance(part, ast.Name)}


def line_of(function: ast.FunctionDef) -> str:
    result = f" -> {ast.unparse(function.returns)}" if function.returns else ""
    return f"def {function.name}({ast.unparse(function.args)}){result}: ..."


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("stub", type=Path)
    stub: Path = parser.parse_args().stub
    stub.parent.mkdir(parents=True, exist_ok=True)
    stub.write_text(stub_of(FACE, HANDLE_FUNCTIONS), "utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
