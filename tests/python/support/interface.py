"""Every Python function of the module with its prototypes, as messages spell them.

`interface.txt` holds one prototype a line, in the order in which the functions are registered;
the overloads of a function follow each other in the order of its overload message.
"""

from __future__ import annotations

from dataclasses import dataclass
from itertools import groupby
from pathlib import Path
from typing import Any

import _moxPY

OUTPUT = "PyObject *&"


@dataclass(frozen=True)
class Function:
    name: str
    prototypes: tuple[str, ...]  # each with the function's name

    @property
    def parameters(self) -> list[list[str]]:
        """Declared types of each prototype, outputs included."""
        lists = [prototype.partition("(")[2].removesuffix(")") for prototype in self.prototypes]
        return [text.split(",") if text else [] for text in lists]

    @property
    def overloaded(self) -> bool:
        return len(self.prototypes) > 1

    @property
    def outputs(self) -> int:
        return self.parameters[0].count(OUTPUT)

    @property
    def argument_counts(self) -> list[int]:
        return [len(types) - self.outputs for types in self.parameters]

    @property
    def overload_message(self) -> str:
        lines = "".join(f"    {prototype}\n" for prototype in self.prototypes)
        return (
            f"Wrong number or type of arguments for overloaded function '{self.name}'.\n"
            f"  Possible C/C++ prototypes are:\n{lines}"
        )

    def __call__(self, *arguments: Any) -> Any:
        return getattr(_moxPY, self.name)(*arguments)

    def __str__(self) -> str:
        return self.name


def _read_functions() -> list[Function]:
    lines = Path(__file__).with_suffix(".txt").read_text(encoding="utf-8").splitlines()
    by_name = groupby(lines, key=lambda line: line.partition("(")[0])
    return [Function(name, tuple(prototypes)) for name, prototypes in by_name]


FUNCTIONS = _read_functions()
REGISTERED = [function for function in FUNCTIONS if hasattr(_moxPY, function.name)]
