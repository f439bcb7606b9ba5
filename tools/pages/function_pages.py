"""The reference of the functions: a page a family, and one of each function.

What a function does stands in the face; how error messages spell its prototypes, in the list that
the tests of the calling convention go by.
"""

from __future__ import annotations

import importlib
import inspect
import pkgutil
from collections import defaultdict
from pathlib import Path
from types import ModuleType

from moxPY import functions

from pages.contents import PROJECT

PROTOTYPES = PROJECT / "tests" / "python" / "support" / "interface.txt"

# Families in the order in which one meets them. All others follow.
_ORDER = ("acquisition", "points", "analogs", "events", "metadata", "devices", "plugins")


def prototypes() -> dict[str, list[str]]:
    """The prototypes of each function, as error messages spell them."""
    found = defaultdict(list)
    for line in PROTOTYPES.read_text("utf-8").splitlines():
        found[line.partition("(")[0]].append(line)
    return dict(found)


def families() -> dict[str, ModuleType]:
    """The packages of the face by their names; of a family without one, its module."""
    names = [module.name for module in pkgutil.iter_modules(functions.__path__)]
    names.sort(key=lambda name: _ORDER.index(name) if name in _ORDER else len(_ORDER))
    return {name: importlib.import_module(f"{functions.__name__}.{name}") for name in names}


def write(folder: Path) -> None:
    """Write the pages into a folder."""
    lines = [
        *_title("Functions"),
        inspect.cleandoc(_what_is_true_of_all()),
        "",
        ":doc:`/quirks` has those ways of theirs that scripts rely on, :doc:`/errors` what their",
        "messages are about.",
        "",
        ".. toctree::",
        "   :maxdepth: 1",
        "",
        *(f"   functions_{name}" for name in families()),
        "",
    ]
    (folder / "functions.rst").write_text("\n".join(lines), "utf-8")
    for name, family in families().items():
        (folder / f"functions_{name}.rst").write_text(_family(name, family), "utf-8")


def _what_is_true_of_all() -> str:
    import moxPY

    _, found, rest = (moxPY.__doc__ or "").partition("Every function is the one")
    if not found:
        raise ValueError("the documentation of moxPY does not say what is true of every function")
    return found + rest


def _family(name: str, family: ModuleType) -> str:
    lines = _title(name.capitalize())
    for module in modules_of(family):
        heading, _, rest = (inspect.getdoc(module) or "").partition("\n")
        if module is not family:
            heading = heading.rstrip(".")
            lines += [heading, "-" * len(heading)]
        else:
            lines += [heading]
        lines += ["", rest.strip(), "", ".. currentmodule:: moxPY", ""]
        lines += [".. autosummary::", "   :toctree: functions", ""]
        lines += [f"   {function}" for function in module.__all__] + [""]
    return "\n".join(lines)


def modules_of(family: ModuleType) -> list[ModuleType]:
    if not hasattr(family, "__path__"):
        return [family]
    names = [f"{family.__name__}.{each.name}" for each in pkgutil.iter_modules(family.__path__)]
    return [importlib.import_module(name) for name in names]


def _title(text: str) -> list[str]:
    return [text, "=" * len(text), ""]
