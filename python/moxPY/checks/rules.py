"""The table of all rules."""

from __future__ import annotations

from .contradictions import contradictions
from .rule import Rule

#: In the order in which findings are told.
RULES: tuple[Rule, ...] = (
    Rule("contradictions", "the file contradicts itself or lacks something", "warning",
         contradictions),
)  # fmt: skip
