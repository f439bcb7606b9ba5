"""Whether a written C3D file keeps the rules of the format.

`deviations(content)` lists what it does not keep, each with its place; [] is a good file. Nothing
of the module is used, so the rules judge it from outside.
"""

from __future__ import annotations

from collections.abc import Callable, Iterable, Sequence

from support.structure import (
    analog_rules,
    event_rules,
    header_rules,
    lock_rules,
    platform_rules,
    point_rules,
    record_rules,
    sample_rules,
)
from support.structure.written_file import WrittenFile

Rule = Callable[[WrittenFile], Iterable[str]]

RULES: tuple[Rule, ...] = (
    header_rules.marks,
    header_rules.copies_of_parameters,
    header_rules.frame_range,
    header_rules.events,
    header_rules.rates,
    record_rules.section_head,
    record_rules.record_chain,
    record_rules.section_end,
    record_rules.ids_and_order,
    record_rules.names,
    record_rules.types_and_dimensions,
    point_rules.parameters,
    point_rules.scale,
    point_rules.frame_counts,
    point_rules.kinds,
    analog_rules.parameters,
    analog_rules.scales,
    analog_rules.format_word,
    platform_rules.parameters,
    platform_rules.channel_numbers,
    event_rules.parameters,
    event_rules.times,
    sample_rules.places,
    sample_rules.points,
    sample_rules.rotations,
)

# A file that was read keeps what it has of these.
RULES_OF_NEW_FILES: tuple[Rule, ...] = (
    header_rules.reserved_words,
    record_rules.head_marks,
    record_rules.ids_without_gaps,
    lock_rules.locks,
)


def deviations(
    content: bytes, source: bytes | None = None, processor: int = 84, storage: str = "real"
) -> list[str]:
    """`source`: the file that was read and written again; it excuses what it does wrong itself.

    `processor` and `storage` are the form that the file should have.
    """
    file = WrittenFile(content, processor, storage)
    if source is None:
        return _broken(RULES + RULES_OF_NEW_FILES, file)
    excused = _broken(RULES, WrittenFile(source))
    return [found for found in _broken(RULES, file) if found not in excused]


def _broken(rules: Sequence[Rule], file: WrittenFile) -> list[str]:
    return [found for rule in rules for found in rule(file)]
